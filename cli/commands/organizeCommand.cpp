#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/mopacKeywords.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

namespace {

using cli::tr;

QString summary(const OrganizeResults &results)
{
    QString text = tr("%1, coordination number %2\n\n"
                      "  ligand            coordinated atoms\n")
                       .arg(results.ion)
                       .arg(results.coordNumber);
    for (const OrganizedLigand &ligand : results.ligands) {
        QStringList atoms;
        for (const int atom : ligand.coordinatedAtoms)
            atoms.append(QString::number(atom));
        text += QStringLiteral("  ") + ligand.name.leftJustified(18) +
                atoms.join(QLatin1Char(' ')) + QLatin1Char('\n');
    }
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
           "IN is a .mol2, .xyz, .mop or .zmt file or a MOPAC output or archive (.arc); OUT a\n"
           ".mop, .mol2 or .xyz file. The ligands and the numbers of their coordinated atoms go to "
           "standard output.\n\n"
           "Example: lanqor organize crystal.mol2 complex.mop --charge 0"));
    options.addArgument(QStringLiteral("IN"), tr("structure to read"));
    options.addArgument(QStringLiteral("OUT"), tr("file to write"));
    options.addOption(
        {QStringLiteral("drop-unbound"), tr("Leave out fragments that are not bound to the ion.")});
    options.addOption(
        {QStringLiteral("charge"),
         tr("Charge of a .mop job, of all atoms that it keeps; by default that of the "
            "MOPAC output, archive or job (CHARGE=), else 0."),
         QStringLiteral("n")});
    options.addOption({QStringLiteral("keywords"),
                       tr("Keywords of the second line of a .mop job instead of \"SPARKLE "
                          "CHARGE=n\"."),
                       QStringLiteral("text")});
    options.addResultOptions();
    options.parse(arguments);
    const QStringList files =
        options.files(2, tr("organize needs two files; see \"lanqor organize --help\""));
    const bool isChargeGiven = options.isSet("charge");
    int charge = isChargeGiven ? options.wholeNumber("charge") : 0;

    LanqorInputData source(nullptr, files.at(0));
    source.setKeepFileOpen(true);
    LanqorOrganizeMolecules structure(nullptr, &source);
    cli::showMessages(structure);
    structure.setKeepUnboundFragments(!options.isSet("drop-unbound"));
    if (!structure.organize())
        cli::failOf(structure);
    if (!isChargeGiven && QFileInfo(files.at(1)).suffix().toLower() == QLatin1String("mop"))
        charge = cli::chargeOfSystem(source);
    structure.setExtraMopacKeywords(cli::mopacKeywords(options, structure.getCoord(), charge));
    const OrganizeResults results = structure.getResults();
    cli::showResults(options, summary(results), LanqorOrganizeMolecules::makeTables(results),
                     {files.at(0)});
    if (!structure.createOutputFile(files.at(1)))
        cli::failOf(structure);
    return cli::success;
}
