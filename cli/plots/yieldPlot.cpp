#include "plots/yieldPlot.h"

#include "text.h"

#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorTransferChannels.h>
#include <LanqorEngine/SpectroscopicResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

using cli::tr;
using plots::LevelDiagram;

enum ColumnIndex { SingletColumn, TripletColumn, IonColumn };

/// Ligand states further above the donor singlet than this, cm^-1, are left out.
constexpr double shownAboveDonor = 4000.0;

struct IonLevel
{
    QString name;        ///< as in the names of the channels
    double energy = 0.0; ///< cm^-1
};

/// Energies of 7F0 to 7F6, cm^-1, for the eye only; source not known.
constexpr double groundLevels[] = {0.0, 372.0, 1026.0, 1866.0, 2823.0, 3849.0, 4907.0};
/// The level that emits, and the one of the strongest emission.
constexpr char emittingLevel[] = "5D0";
constexpr int emissionTo = 2;

/// 7FJ and the acceptors of the channels, in the order of their energies.
QVector<IonLevel> ionLevels()
{
    QVector<IonLevel> levels;
    for (const double energy : groundLevels)
        levels.append({QStringLiteral("7F%1").arg(levels.size()), energy});
    for (const TransferChannel &channel : LanqorTransferChannels::getChannels())
        if (std::none_of(levels.begin(), levels.end(), [&channel](const IonLevel &level) {
                return level.name == channel.acceptor;
            }))
            levels.append({channel.acceptor, channel.acceptorEnergy});
    std::sort(levels.begin(), levels.end(),
              [](const IonLevel &a, const IonLevel &b) { return a.energy < b.energy; });
    return levels;
}

QString label(const QString &name, double energy)
{
    return QStringLiteral("%1  %2").arg(name, QString::number(energy, 'f', 0));
}

/// "S₁"
QString numbered(const QString &kind, int number)
{
    QString text = kind;
    for (const QChar digit : QString::number(number))
        text += QChar(0x2080 + digit.digitValue());
    return text;
}

/// "⁵D₀" of "5D0"
QString levelLabel(const QString &name)
{
    return plots::superscript(name.at(0).digitValue()) +
           numbered(name.mid(1, 1), name.at(2).digitValue());
}

/// "1.2×10⁸ s⁻¹"
QString textOfRate(double rate)
{
    if (rate == 0.0)
        return QStringLiteral("0");
    const QStringList parts = QString::number(rate, 'e', 1).split(QLatin1Char('e'));
    return QString::fromUtf8("%1×10%2 s⁻¹")
        .arg(parts.value(0), plots::superscript(parts.value(1).toInt()));
}

/// A donor of the scheme, and its place in the list of states.
struct NamedDonor
{
    QString name; ///< as in the names of the channels
    DonorState state;
};

/// "T (T₁)": the names of the donors that are state @p number as it was read, and its place among
/// the excited states; empty for a state that is none.
QString donorLabel(const QVector<NamedDonor> &donors, int number, double energy,
                   const QString &state)
{
    QStringList names;
    for (const NamedDonor &donor : donors)
        if (donor.state.number == number && donor.state.energy == energy)
            names.append(donor.name);
    return names.isEmpty() ? QString()
                           : QStringLiteral("%1 (%2)").arg(names.join(QStringLiteral(", ")), state);
}

/// A column of the excited states that an output lists; those of @p donors bear their names, the
/// others are drawn up to @p highest. Donors of given or shifted energy stand beside them.
LevelDiagram::Column stateColumn(const QString &title, const QString &kind,
                                 const QVector<LigandState> &states, int groundState,
                                 const QVector<NamedDonor> &donors, double highest)
{
    LevelDiagram::Column column{title, {}};
    for (int i = groundState; i < states.size(); ++i) {
        const double energy = states.at(i).energy;
        const QString name = donorLabel(donors, i + 1, energy, numbered(kind, i + 1 - groundState));
        if (!name.isEmpty())
            column.levels.append({energy, label(name, energy)});
        else if (energy <= highest)
            column.levels.append({energy, QString()});
    }
    for (const NamedDonor &donor : donors) {
        const int index = donor.state.number - 1;
        const bool isRead =
            index >= 0 && index < states.size() && states.at(index).energy == donor.state.energy;
        if (!isRead)
            column.levels.append({donor.state.energy, label(donor.name, donor.state.energy)});
    }
    return column;
}

void addLigandStates(LevelDiagram &diagram, const SpectroscopicResults &results)
{
    const QString S = tr("S");
    const QString T = tr("T");
    const double highest = results.singlet.energy + shownAboveDonor;
    const DonorStatesResults &states = results.ligandStates;
    QVector<NamedDonor> donors;
    if (results.considerTwoTriplets)
        donors.append({tr("Ta"), results.firstTriplet});
    donors.append({T, results.triplet});
    diagram.columns << stateColumn(tr("ligand singlets"), S, states.singlets, states.groundState,
                                   {{S, results.singlet}}, highest)
                    << stateColumn(tr("ligand triplets"), T, states.triplets, states.groundState,
                                   donors, highest);
    if (states.groundState > 0)
        diagram.columns[SingletColumn].levels.prepend({0.0, numbered(S, 0)});
}

double donorEnergy(const SpectroscopicResults &results, const TransferChannel &channel)
{
    if (channel.donor == QLatin1String("S"))
        return results.singlet.energy;
    return channel.donor == QLatin1String("Ta") ? results.firstTriplet.energy
                                                : results.triplet.energy;
}

LevelDiagram::Arrow transferArrow(const SpectroscopicResults &results,
                                  const TransferResult &transfer)
{
    const TransferChannel &channel = transfer.channel;
    return {channel.donor == QLatin1String("S") ? SingletColumn : TripletColumn,
            donorEnergy(results, channel),
            IonColumn,
            channel.acceptorEnergy,
            QString::fromUtf8("%1 → %2   %3")
                .arg(channel.donor, levelLabel(channel.acceptor), textOfRate(transfer.forwardRate)),
            channel.mechanism == TransferMechanism::Exchange ? LevelDiagram::ArrowKind::Exchange
                                                             : LevelDiagram::ArrowKind::Multipolar};
}

/// Calculated triplets are off by up to so much, cm^-1.
constexpr double insetReach = 2000.0;
constexpr int insetSteps = 80;

LevelDiagram::Inset yieldCurve(const SpectroscopicResults &results, const YieldInputs &inputs)
{
    LevelDiagram::Inset inset;
    inset.title = tr("yield / % against T / cm\u207b\u00b9");
    inset.mark = {results.triplet.energy, results.quantumYield};
    YieldInputs changed = inputs;
    for (int step = 0; step <= insetSteps; ++step) {
        const double offset = insetReach * (2.0 * step / insetSteps - 1.0);
        changed.triplet.energy = inputs.triplet.energy + offset;
        const YieldOutcome outcome = LanqorSpectroscopicCalculation::calcYield(changed);
        if (outcome.error.isEmpty() && std::isfinite(outcome.quantumYield))
            inset.points.append({results.triplet.energy + offset, outcome.quantumYield});
    }
    return inset;
}

} // namespace

LevelDiagram yieldDiagram(const SpectroscopicResults &results, const YieldInputs &inputs)
{
    LevelDiagram diagram;
    const QString path =
        results.inputPath.isEmpty() ? results.ligandStates.outputPath : results.inputPath;
    const QString source = path.isEmpty() ? tr("given states") : QFileInfo(path).fileName();
    diagram.title =
        tr("%1: quantum yield %2 %").arg(source, cli::textOfYield(results.quantumYield));
    addLigandStates(diagram, results);
    diagram.inset = yieldCurve(results, inputs);

    LevelDiagram::Column ion{QString::fromUtf8("Eu³⁺"), {}};
    for (const IonLevel &level : ionLevels()) {
        for (const TransferResult &transfer : results.transfers)
            if (transfer.takesPart && transfer.channel.acceptor == level.name)
                diagram.arrows.append(transferArrow(results, transfer));
        const QString name = levelLabel(level.name);
        const bool isGround = ion.levels.size() < int(std::size(groundLevels));
        ion.levels.append({level.energy, isGround ? name : label(name, level.energy)});
        if (level.name == QLatin1String(emittingLevel))
            diagram.arrows.append({IonColumn, level.energy, IonColumn, groundLevels[emissionTo],
                                   QString(), LevelDiagram::ArrowKind::Emission});
    }
    diagram.columns << ion;
    return diagram;
}
