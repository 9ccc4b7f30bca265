#include "Command.h"
#include "commands/commands.h"
#include "options/mopacKeywords.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

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
    QCommandLineParser parser;
    parser.setApplicationDescription(
        tr("Brings a structure into the order of atoms that all calculations need: the lanthanide\n"
           "ion first, then the coordinated atoms ligand by ligand (O and N within 2.65, Cl and S\n"
           "within 2.9, I within 3.0 Angstrom), then the remaining atoms ligand by ligand, and\n"
           "last counter-ions and lattice solvent.\n\n"
           "IN is a .mol2, .xyz, .mop or .zmt file or a MOPAC output; OUT a .mop, .mol2 or .xyz\n"
           "file. The ligands and the numbers of their coordinated atoms go to standard output.\n\n"
           "Example: lanqor organize crystal.mol2 complex.mop --charge 0"));
    parser.addPositionalArgument(QStringLiteral("IN"), tr("structure to read"));
    parser.addPositionalArgument(QStringLiteral("OUT"), tr("file to write"));
    parser.addOption(
        {QStringLiteral("drop-unbound"), tr("Leave out fragments that are not bound to the ion.")});
    parser.addOption({QStringLiteral("charge"),
                      tr("Charge of a .mop job, of all atoms that it keeps; by default that of the "
                         "MOPAC output, else 0."),
                      QStringLiteral("n")});
    parser.addOption({QStringLiteral("keywords"),
                      tr("Keywords of the second line of a .mop job instead of \"SPARKLE "
                         "CHARGE=n\"."),
                      QStringLiteral("text")});
    cli::parse(parser, "organize", arguments);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2)
        return cli::fail(tr("organize needs two files; see \"lanqor organize --help\""),
                         cli::usageError);
    const QString chargeText = parser.value(QStringLiteral("charge"));
    bool isChargeGiven = false;
    int charge = chargeText.toInt(&isChargeGiven);
    if (!isChargeGiven && parser.isSet(QStringLiteral("charge")))
        return cli::fail(tr("--charge %1 is not a whole number").arg(chargeText), cli::usageError);

    LanqorOrganizeMolecules structure(nullptr, files.at(0));
    cli::showMessages(structure);
    structure.setKeepUnboundFragments(!parser.isSet(QStringLiteral("drop-unbound")));
    if (!structure.organize())
        return cli::fail(structure.getLastError());
    if (!isChargeGiven && QFileInfo(files.at(1)).suffix().toLower() == QLatin1String("mop")) {
        LanqorInputData source(nullptr, files.at(0));
        source.readStructureFile(); // read before without a fault
        charge = cli::chargeOfSystem(source, files.at(0));
    }
    structure.setExtraMopacKeywords(cli::mopacKeywords(parser, structure.getCoord(), charge));
    if (!structure.createOutputFile(files.at(1)))
        return cli::fail(structure.getLastError());
    cli::print(summary(structure));
    return cli::success;
}
