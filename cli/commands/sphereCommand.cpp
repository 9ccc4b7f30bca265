#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>

namespace {

using cli::tr;

QString sphereText(const SphereResults &sphere)
{
    QString text =
        tr("%1, coordination number %2\n\n").arg(sphere.ion, QString::number(sphere.coordNumber));
    text += QStringLiteral(" atom  label  r/Angstrom  theta/deg    phi/deg\n");
    for (const SphereAtom &atom : sphere.atoms)
        text += QStringLiteral("%1  %2 %3 %4 %5\n")
                    .arg(QString::number(atom.atom).rightJustified(5),
                         atom.position.label.leftJustified(5),
                         QString::number(atom.position.r, 'f', 6).rightJustified(11),
                         QString::number(atom.position.theta, 'f', 4).rightJustified(10),
                         QString::number(atom.position.phi, 'f', 4).rightJustified(10));
    return text;
}

} // namespace

int sphereCommand(const QStringList &arguments)
{
    cli::OptionReader options("sphere");
    options.setDescription(
        tr("Coordination number of the lanthanide ion (atom 1) and the atoms bound to it in\n"
           "spherical coordinates: distance r in Angstrom, polar angle theta and azimuth phi in\n"
           "degrees. O and N count within 2.65, Cl and S within 2.9 and I within 3.0 Angstrom.\n\n"
           "FILE is a MOPAC output or archive (.arc) or a .mop, .zmt, .xyz, .mol2, .cif\n"
           "or .pdb file.\n\n"
           "Example: lanqor sphere eu_l2_rm1_opt.out"));
    options.addArgument(QStringLiteral("FILE"), tr("structure file"), QString(),
                        cli::structureSuffixes());
    options.addOption(cli::moleculeOption());
    options.addOption(plots::option());
    options.addOption({QStringLiteral("backbones"),
                       tr("Draw the bonds of the ligands near the ion, too, in light grey.")});
    options.addResultOptions();
    options.parse(arguments);
    const QString plot = plots::readOption(options);
    if (options.isSet("backbones") && plot.isEmpty())
        options.refuse(tr("--backbones belongs to --plot"));
    const QString fileName =
        options.files(1, tr("one FILE is needed; see \"lanqor sphere --help\"")).first();

    LanqorInputData data(nullptr, fileName);
    cli::chooseMolecule(options, data);
    cli::showWarnings(data);
    if (!data.readStructureFile())
        cli::failOf(data);
    if (!data.getIonError().isEmpty())
        throw cli::Failure{QStringLiteral("%1: %2").arg(fileName, data.getIonError())};

    const SphereResults sphere = data.getSphereResults();
    cli::showResults(options, sphereText(sphere), LanqorInputData::makeTables(sphere));
    cli::warnOfStructure(data);
    cli::noteNearAtoms(data);
    if (!data.getAtomOrderError().isEmpty())
        cli::warn(data.getAtomOrderError());
    if (!plot.isEmpty()) {
        using Backbone = plots::SphereFigure::Backbone;
        const Backbone backbone = options.isSet("backbones") ? Backbone::Faint : Backbone::LeftOut;
        plots::draw(plots::sphereFigure({sphere, data.getCoord(), backbone}), plot);
    }
    return cli::success;
}
