#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

namespace {

using cli::tr;

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
    cli::OptionReader options("sphere");
    options.setDescription(
        tr("Coordination number of the lanthanide ion (atom 1) and the atoms bound to it in\n"
           "spherical coordinates: distance r in Angstrom, polar angle theta and azimuth phi in\n"
           "degrees. O and N count within 2.65, Cl and S within 2.9 and I within 3.0 Angstrom.\n\n"
           "FILE is a MOPAC output or a .mop, .zmt, .xyz or .mol2 file.\n\n"
           "Example: lanqor sphere eu_l2_rm1_opt.out"));
    options.addArgument(QStringLiteral("FILE"), tr("structure file"));
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("one FILE is needed; see \"lanqor sphere --help\"")).first();

    LanqorInputData data(nullptr, fileName);
    if (!data.readStructureFile())
        cli::failOf(data);
    if (!data.getIonError().isEmpty())
        throw cli::Failure{data.getIonError()};
    if (!data.createSphericalCoordinate())
        cli::failOf(data);

    QString text =
        tr("%1, coordination number %2\n\n").arg(data.getAtomLabel(1)).arg(data.getCoordNumber());
    text += QStringLiteral(" atom  label  r/Angstrom  theta/deg    phi/deg\n");
    const QVector<int> atoms = data.getCoordinatedAtoms();
    for (const int atom : atoms)
        text += sphereRow(data, atom);
    cli::print(text);
    cli::noteNearAtoms(data);
    if (!data.getAtomOrderError().isEmpty())
        cli::note(tr("warning: ") + data.getAtomOrderError());
    return cli::success;
}
