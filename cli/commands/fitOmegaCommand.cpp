#include "Command.h"
#include "commands/commands.h"
#include "commands/intensityFit.h"
#include "options/OptionReader.h"
#include "options/intensityFitOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorParametric.h>

namespace {

using cli::tr;

using Groups = QMap<int, QStringList>;

constexpr double cm3PerCubicAngstrom = 1.0e-24;

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
QString groupTable(const QVector<OmegaFitGroup> &groups)
{
    QString text = tr("  group          g  alpha / A^3  atoms\n");
    for (const OmegaFitGroup &group : groups)
        text += cli::column(group.number, 7) + cli::column(group.donor.chargeFactor, 4, 11) +
                cli::column(group.donor.alpha / cm3PerCubicAngstrom, 4, 13) + QStringLiteral("  ") +
                group.atoms.join(QStringLiteral(", ")) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

/// A note on weights of Omega(2) and Omega(4) that a file gave.
void noteWeights(const QVector<FittedOmega> &omega)
{
    if (omega.at(0).weight != 1.0 || omega.at(1).weight != 1.0)
        cli::note(
            tr("weights %1 and %2 were read from pesos.txt")
                .arg(QString::number(omega.at(0).weight), QString::number(omega.at(1).weight)));
}

void describe(cli::OptionReader &reader)
{
    reader.setDescription(tr(
        "Fits charge factors g and polarisabilities alpha of the coordinated atoms to measured\n"
        "Omega(2) and Omega(4) of a Eu3+ complex: by simulated annealing from several starts, "
        "each\n"
        "followed by a local minimisation.\n\n"
        "FILE is a MOPAC output (.out), archive (.arc) or a structure (.mop, .zmt, .xyz, .mol2,\n"
        ".cif, .pdb) with Eu as atom 1 and the N coordinated atoms as atoms 2 to N+1; those of\n"
        "a crystal (.cif, .pdb) are brought into that order.\n"
        "Atoms of one group share g and alpha. Bounds: g 0.01 to 2 (O, S), 0.001 to 1 (F, Cl,\n"
        "Br, I), 0.01 to 3 (N, P); alpha 0.005 to 6.5 cubic Angstrom. A file \"pesos.txt\" in the\n"
        "current folder gives the weights of Omega(2) and Omega(4) on its first two lines.\n\n"
        "Many sets of g and alpha reach the same two values: a sample of them shows the ranges of\n"
        "g and alpha and of what follows from them. --plot draws it in the plane of g and alpha.\n"
        "Ctrl-C ends the fit and reports its best point (exit status 130).\n\n"
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
    cli::IntensityFitOptions options = cli::readIntensityFitOptions(reader);
    const Groups groups = reader.isSet("groups") ? parseGroups(reader.text("groups")) : Groups();

    cli::IntensityFitKind<LanqorParametric> kind;
    kind.makeFit = [&] {
        auto fit = std::make_unique<LanqorParametric>(nullptr, options.geometry.get(), 0);
        if (options.weights.isEmpty())
            cli::checkWeights(fit->getWeight(2), fit->getWeight(4));
        fit->setCoordNumber(options.coordNumber);
        fit->setGroupsAndAtoms(groups.isEmpty() ? fit->makeElementGroups() : groups);
        return fit;
    };
    kind.toSought = [](LanqorParametric &, const QVector<FitParameter> &told) { return told; };
    kind.vectorToSought = [](LanqorParametric &, const QVector<double> &told) { return told; };
    kind.vectorToTold = kind.vectorToSought;
    const auto outcome = cli::runIntensityFit(reader, options, kind);
    const OmegaFitResults &results = outcome.results;
    if (options.weights.isEmpty())
        noteWeights(results.omega);
    cli::noteMissedTargets(results.omega,
                           tr("Other groups of atoms or more starts (--starts) may come nearer; "
                              "some geometries cannot give some pairs of values."));
    cli::showIntensityFit<LanqorParametric>(reader, options, outcome, groupTable(results.groups));
    return outcome.status;
}
