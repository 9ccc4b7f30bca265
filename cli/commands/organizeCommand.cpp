#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/mopacKeywords.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QFileInfo>

namespace {

using cli::tr;

QString summary(const LanqorOrganizeMolecules &structure)
{
    QString text = tr("%1, coordination number %2\n\n"
                      "  ligand            coordinated atoms\n")
                       .arg(structure.getLanthanideLabel())
                       .arg(structure.getCoordNumber());
    const QStringList ligands = structure.getLigands();
    for (const QString &ligand : ligands)
        text += QStringLiteral("  ") + ligand.section(QLatin1Char(' '), 0, 0).leftJustified(18) +
                ligand.section(QLatin1Char(' '), 1) + QLatin1Char('\n');
    return text;
}

} // namespace

int organizeCommand(const QStringList &arguments)
{
    cli::OptionReader options("organize");
    options.setDescription(
        tr("Brings a structure into the order of atoms that all calculations need: the lanthanide\n"
           "ion first, then the coordinated atoms ligand by ligand (O and N within 2.65, Cl and S\n"
           "within 2.9, I within 3.0 Angstrom), then the remaining atoms ligand by ligand, and\n"
           "last counter-ions and lattice solvent.\n\n"
           "IN is a .mol2, .xyz, .mop or .zmt file or a MOPAC output; OUT a .mop, .mol2 or .xyz\n"
           "file. The ligands and the numbers of their coordinated atoms go to standard output.\n\n"
           "Example: lanqor organize crystal.mol2 complex.mop --charge 0"));
    options.addArgument(QStringLiteral("IN"), tr("structure to read"));
    options.addArgument(QStringLiteral("OUT"), tr("file to write"));
    options.addOption(
        {QStringLiteral("drop-unbound"), tr("Leave out fragments that are not bound to the ion.")});
    options.addOption(
        {QStringLiteral("charge"),
         tr("Charge of a .mop job, of all atoms that it keeps; by default that of the "
            "MOPAC output, else 0."),
         QStringLiteral("n")});
    options.addOption({QStringLiteral("keywords"),
                       tr("Keywords of the second line of a .mop job instead of \"SPARKLE "
                          "CHARGE=n\"."),
                       QStringLiteral("text")});
    options.parse(arguments);
    const QStringList files =
        options.files(2, tr("organize needs two files; see \"lanqor organize --help\""));
    const bool isChargeGiven = options.isSet("charge");
    int charge = isChargeGiven ? options.wholeNumber("charge") : 0;

    LanqorOrganizeMolecules structure(nullptr, files.at(0));
    cli::showMessages(structure);
    structure.setKeepUnboundFragments(!options.isSet("drop-unbound"));
    if (!structure.organize())
        cli::failOf(structure);
    if (!isChargeGiven && QFileInfo(files.at(1)).suffix().toLower() == QLatin1String("mop")) {
        LanqorInputData source(nullptr, files.at(0));
        source.readStructureFile(); // read before without a fault
        charge = cli::chargeOfSystem(source, files.at(0));
    }
    structure.setExtraMopacKeywords(cli::mopacKeywords(options, structure.getCoord(), charge));
    if (!structure.createOutputFile(files.at(1)))
        cli::failOf(structure);
    cli::print(summary(structure));
    return cli::success;
}
