#include "plots/yieldPlot.h"

#include "options/yieldOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <QFileInfo>

#include <cmath>

namespace {

using Calculation = LanqorSpectroscopicCalculation;
using cli::tr;
using plots::LevelDiagram;
using yieldOptions::Request;

enum ColumnIndex { SingletColumn, TripletColumn, IonColumn };

/// Ligand states further above the donor singlet than this, cm^-1, are left out.
constexpr double shownAboveDonor = 4000.0;

struct IonLevel
{
    const char *name; ///< as in the names of the channels
    const char *label;
    double energy; ///< cm^-1
};

/// Eu3+ in LaF3 (W. T. Carnall, H. Crosswhite, H. M. Crosswhite, Argonne National Laboratory
/// report ANL-78-XX-95, 1978); for the eye only, an acceptor stands where its channel has it.
constexpr IonLevel ionLevels[] = {
    {"7F0", "⁷F₀", 0.0},     {"7F1", "⁷F₁", 372.0},   {"7F2", "⁷F₂", 1026.0},
    {"7F3", "⁷F₃", 1866.0},  {"7F4", "⁷F₄", 2823.0},  {"7F5", "⁷F₅", 3849.0},
    {"7F6", "⁷F₆", 4907.0},  {"5D0", "⁵D₀", 17293.0}, {"5D1", "⁵D₁", 19027.0},
    {"5L6", "⁵L₆", 25325.0}, {"5G6", "⁵G₆", 26752.0}, {"5D4", "⁵D₄", 27586.0},
};

QString label(const QString &name, double energy)
{
    return QStringLiteral("%1  %2").arg(name).arg(energy, 0, 'f', 0);
}

/// "S₁"
QString numbered(const QString &kind, int number)
{
    QString text = kind;
    for (const QChar digit : QString::number(number))
        text += QChar(0x2080 + digit.digitValue());
    return text;
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

/// Energies of the donor states, cm^-1.
struct Donors
{
    double singlet = 0.0;
    double triplet = 0.0;      ///< of slots 10 to 14
    double firstTriplet = 0.0; ///< of slot 5

    double ofSlot(int slot) const
    {
        return slot < 5 ? singlet : slot == 5 ? firstTriplet : triplet;
    }
};

Donors donorsOf(const Calculation &calculation, const Request &request)
{
    const LanqorRL *states = calculation.getRLCalculation();
    if (!states)
        return {request.singletEnergy, request.tripletEnergy, request.tripletEnergy};
    const double selected = states->getTripletEnergy(calculation.getSelectedTriplet());
    return {states->getSingletEnergy(calculation.getSelectedSinglet()),
            request.twoTriplets ? states->getTripletEnergy(2) : selected, selected};
}

void addLigandStates(LevelDiagram &diagram, const Calculation &calculation, const Request &request,
                     const Donors &donors)
{
    LevelDiagram::Column singlets{tr("ligand singlets"), {}};
    LevelDiagram::Column triplets{tr("ligand triplets"), {}};
    const LanqorRL *states = calculation.getRLCalculation();
    if (!states) {
        singlets.levels.append({donors.singlet, label(tr("S"), donors.singlet)});
        triplets.levels.append({donors.triplet, label(tr("T"), donors.triplet)});
        diagram.columns << singlets << triplets;
        return;
    }
    const double highest = donors.singlet + shownAboveDonor;
    const auto add = [highest](LevelDiagram::Column &column, const QString &name, int number,
                               double energy, bool isDonor) {
        if (isDonor)
            column.levels.append({energy, label(numbered(name, number), energy)});
        else if (energy <= highest)
            column.levels.append({energy, QString()});
    };
    for (int i = 1; i <= states->getSingletStatesCount(); ++i)
        add(singlets, tr("S"), i, states->getSingletEnergy(i),
            i == calculation.getSelectedSinglet());
    for (int i = 1; i <= states->getTripletStatesCount(); ++i)
        add(triplets, tr("T"), i, states->getTripletEnergy(i),
            i == calculation.getSelectedTriplet() || (request.twoTriplets && i == 2));
    diagram.columns << singlets << triplets;
}

} // namespace

LevelDiagram yieldDiagram(const Calculation &calculation, const Request &request)
{
    LevelDiagram diagram;
    const QString source = request.complexFile.isEmpty()
                               ? tr("given states")
                               : QFileInfo(request.complexFile).fileName();
    diagram.title =
        tr("%1: quantum yield %2 %").arg(source).arg(calculation.getQuantumYield(), 0, 'f', 1);
    const Donors donors = donorsOf(calculation, request);
    addLigandStates(diagram, calculation, request, donors);

    LevelDiagram::Column ion{QString::fromUtf8("Eu³⁺"), {}};
    for (const IonLevel &level : ionLevels) {
        const QString name = QString::fromUtf8(level.label);
        double energy = level.energy;
        for (const yieldOptions::Channel &channel : yieldOptions::channels) {
            if (!yieldOptions::isOpen(channel, request) ||
                !QByteArray(channel.name).endsWith(level.name))
                continue;
            const int k = channel.slot;
            energy = donors.ofSlot(k) - calculation.getEnergyMismatch(k);
            diagram.arrows.append(
                {k < 5 ? SingletColumn : TripletColumn, donors.ofSlot(k), IonColumn, energy,
                 QString::fromUtf8("%1 → %2   %3")
                     .arg(QString::fromLatin1(channel.name).section(QLatin1Char('-'), 0, 0), name,
                          textOfRate(channel.isExchange ? calculation.getExchangeForwardRate(k)
                                                        : calculation.getForwardRate(k))),
                 channel.isExchange ? LevelDiagram::ArrowKind::Exchange
                                    : LevelDiagram::ArrowKind::Multipolar});
        }
        ion.levels.append({energy, energy < 1e4 ? name : label(name, energy)});
        if (level.energy > 1e4 && QByteArray(level.name) == "5D0")
            diagram.arrows.append({IonColumn, energy, IonColumn, ion.levels.at(2).energy, QString(),
                                   LevelDiagram::ArrowKind::Emission});
    }
    diagram.columns << ion;
    return diagram;
}
