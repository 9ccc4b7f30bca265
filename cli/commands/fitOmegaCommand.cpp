#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/intensityFitOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorParametric.h>

namespace {

using cli::tr;

using Groups = QMap<int, QStringList>;

constexpr double cm3PerCubicAngstrom = 1.0e-24;

/// One group for each element, in the order of its first atom.
Groups groupsByElement(const cli::IntensityFitOptions &options)
{
    Groups groups;
    LanqorInputData geometry(nullptr, options.fileName);
    if (!geometry.readMopacOutFile(false))
        return groups;
    QStringList elements;
    for (int atom = 2; atom <= options.coordNumber + 1 && atom <= geometry.getCoord().size();
         ++atom) {
        const QString element = geometry.getAtomLabel(atom);
        if (!elements.contains(element))
            elements.append(element);
        groups[elements.indexOf(element) + 1].append(
            QStringLiteral("%1 %2").arg(element).arg(atom));
    }
    return groups;
}

/// Reads "1: O 2, O 3; 2: N 4".
Groups parseGroups(const QString &text)
{
    Groups groups;
    for (const QString &entry : text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const int colon = entry.indexOf(QLatin1Char(':'));
        bool ok = false;
        const int key = entry.left(colon).trimmed().toInt(&ok);
        QStringList atoms;
        for (const QString &atom : entry.mid(colon + 1).split(QLatin1Char(',')))
            atoms.append(atom.trimmed());
        if (colon < 0 || !ok || groups.contains(key) || atoms.contains(QString()))
            throw cli::UsageError{
                tr("--groups: \"%1\" is no group with a number of its own, such as \"1: O 2, O 3\"")
                    .arg(entry.trimmed())};
        groups.insert(key, atoms);
    }
    if (groups.isEmpty())
        throw cli::UsageError{tr("--groups names no group")};
    return groups;
}

/// Group, g and alpha of the best point.
QString groupTable(const Groups &groups, const LanqorParametric &fit)
{
    QString text = tr("  group          g  alpha / A^3  atoms\n");
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        const int atom =
            group->isEmpty() ? 0 : group->first().section(QLatin1Char(' '), -1).toInt();
        text += QString::number(group.key()).rightJustified(7) +
                QString::number(fit.getBestChargeFactor(atom), 'f', 4).rightJustified(11) +
                QString::number(fit.getBestAlpha(atom) / cm3PerCubicAngstrom, 'f', 4)
                    .rightJustified(13) +
                QStringLiteral("  ") + group->join(QStringLiteral(", ")) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

void describe(cli::OptionReader &reader)
{
    reader.setDescription(tr(
        "Fits charge factors g and polarisabilities alpha of the coordinated atoms to measured\n"
        "Omega(2) and Omega(4) of a Eu3+ complex by simulated annealing.\n\n"
        "FILE is a MOPAC output with Eu as atom 1 and the N coordinated atoms as atoms 2 to N+1.\n"
        "Atoms of one group share g and alpha. Bounds: g 0.01 to 2 (O, S), 0.001 to 1 (F, Cl,\n"
        "Br, I), 0.01 to 3 (N, P); alpha 0.005 to 6.5 cubic Angstrom. A file \"pesos.txt\" in the\n"
        "current folder gives the weights of Omega(2) and Omega(4) on its first two lines.\n\n"
        "Several sets of g and alpha reach the same two values; the annealing gives one of them,\n"
        "always the same. Ctrl-C ends the fit and reports its best point (exit status 130).\n\n"
        "Example:\n"
        "  lanqor fit omega complex.out --omega2 20.5 --omega4 8.1\n"
        "      --groups \"1: O 2, O 3; 2: N 4, N 5\" --report complex.omg"));
    cli::addIntensityFitOptions(reader);
    reader.addOption({QStringLiteral("groups"),
                      tr("Groups of atoms by number, e.g. \"1: O 2, O 3; 2: N 4, N 5\"; every "
                         "coordinated atom belongs to one. Unless given, one group per element."),
                      tr("list")});
}

} // namespace

int fitOmegaCommand(const QStringList &arguments)
{
    cli::OptionReader reader("fit omega");
    describe(reader);
    reader.parse(arguments);
    const cli::IntensityFitOptions options = cli::readIntensityFitOptions(reader);
    const Groups groups =
        reader.isSet("groups") ? parseGroups(reader.text("groups")) : groupsByElement(options);

    const auto outcome = cli::runIntensityFit<LanqorParametric>(options, [&] {
        auto made = std::make_unique<LanqorParametric>(nullptr, options.fileName, 0);
        cli::setUp(*made, options);
        made->setGroupsAndAtoms(groups);
        return made;
    });
    if (!outcome.best)
        return outcome.status;
    const LanqorParametric &fit = *outcome.best;
    if (fit.getWeight(2) != 1.0 || fit.getWeight(4) != 1.0)
        cli::note(tr("lanqor: weights %1 and %2 were read from pesos.txt")
                      .arg(fit.getWeight(2))
                      .arg(fit.getWeight(4)));
    cli::printFit(options, outcome.status,
                  cli::fittedOmegaTable(
                      options, [&](int lambda) { return fit.getBestOmega(lambda); },
                      tr("Other groups of atoms or more starts (--starts) may come nearer; some "
                         "geometries cannot give some pairs of values.")) +
                      groupTable(groups, fit) +
                      cli::responseLine(fit.getBestResponse(), outcome.points),
                  fit.getReport());
    return outcome.status;
}
