#include "Command.h"
#include "commands.h"

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

/// Atoms so near the ion that a chemist may count them: donors a little beyond their limit, and
/// elements without one.
QString nearAtoms(const LanqorInputData &data)
{
    constexpr double marginOfLimit = 0.15;   // Angstrom
    constexpr double nearWithoutLimit = 2.9; // Angstrom
    QString text;
    for (int atom = 2; atom <= data.getCoord().size(); ++atom) {
        const CoordSPH spherical = data.getCoordSPH(atom);
        const double limit = LanqorInputData::getBondCutOff(spherical.label);
        const QString where =
            QStringLiteral("%1 %2 (%3)").arg(spherical.label).arg(atom).arg(spherical.r, 0, 'f', 3);
        if (limit > 0.0 && spherical.r >= limit && spherical.r < limit + marginOfLimit)
            text += tr("note: %1 is not counted: the limit of its element is %2 Angstrom\n")
                        .arg(where)
                        .arg(limit);
        else if (limit == 0.0 && spherical.label != QLatin1String("H") &&
                 spherical.r < nearWithoutLimit)
            text += tr("note: %1 is not counted: its element has no bonding limit\n").arg(where);
    }
    return text;
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
    const QString warnings = nearAtoms(data);
    if (!warnings.isEmpty())
        cli::note(warnings.trimmed());
    if (!data.getAtomOrderError().isEmpty())
        cli::note(tr("warning: ") + data.getAtomOrderError());
    return cli::success;
}
