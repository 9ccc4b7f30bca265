#include "Command.h"
#include "commands/commands.h"
#include "options/complexOptions.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString sphereRow(const LanqorInputData &data, int atom)
{
    const CoordSPH spherical = data.getCoordSPH(atom);
    return QStringLiteral("%1  %2 %3 %4 %5\n")
        .arg(atom, 5)
        .arg(spherical.label, -5)
        .arg(spherical.r, 11, 'f', 6)
        .arg(spherical.theta, 10, 'f', 4)
        .arg(spherical.phi, 10, 'f', 4);
}

} // namespace

int sphereCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Coordination number of the lanthanide ion (atom 1) and the atoms bound to it in\n"
           "spherical coordinates: distance r in Angstrom, polar angle theta and azimuth phi in\n"
           "degrees. O and N count within 2.65, Cl and S within 2.9 and I within 3.0 Angstrom.\n\n"
           "FILE is a MOPAC output or a .mop, .zmt, .xyz or .mol2 file.\n\n"
           "Example: lanqor sphere eu_l2_rm1_opt.out"));
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("structure file"));
    cli::parse(parser, "sphere", arguments);
    if (parser.positionalArguments().size() != 1)
        return cli::fail(tr("one FILE is needed; see \"lanqor sphere --help\""), cli::usageError);

    LanqorInputData data(nullptr, parser.positionalArguments().first());
    if (!data.readStructureFile())
        return cli::fail(data.getLastError());
    if (!data.getIonError().isEmpty())
        return cli::fail(data.getIonError());
    if (!data.createSphericalCoordinate())
        return cli::fail(data.getLastError());

    QString text =
        tr("%1, coordination number %2\n\n").arg(data.getAtomLabel(1)).arg(data.getCoordNumber());
    text += QStringLiteral(" atom  label  r/Angstrom  theta/deg    phi/deg\n");
    const QVector<int> atoms = data.getCoordinatedAtoms();
    for (const int atom : atoms)
        text += sphereRow(data, atom);
    cli::print(text);
    const QString warnings = cli::nearAtomNotes(data);
    if (!warnings.isEmpty())
        cli::note(warnings.trimmed());
    if (!data.getAtomOrderError().isEmpty())
        cli::note(tr("warning: ") + data.getAtomOrderError());
    return cli::success;
}
