#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/jobOptions.h"
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
                       .arg(results.ion, QString::number(results.coordNumber));
    for (const OrganizedLigand &ligand : results.ligands) {
        QStringList atoms;
        for (const int atom : ligand.coordinatedAtoms)
            atoms.append(QString::number(atom));
        text += QStringLiteral("  ") + ligand.name.leftJustified(18) +
                atoms.join(QLatin1Char(' ')) + QLatin1Char('\n');
    }
    return text;
}

/// Charge of the atoms that are kept: of the whole system, less those of the fragments left out.
int chargeOfKeptAtoms(const LanqorInputData &source, const OrganizeResults &results)
{
    QStringList unknown;
    QStringList known;
    int omittedCharge = 0;
    for (const OmittedFragment &fragment : results.omittedFragments) {
        const QString number =
            fragment.count > 1 ? QStringLiteral("%1 ").arg(fragment.count) : QString();
        if (!fragment.isChargeKnown) {
            unknown.append(number + fragment.formula);
            continue;
        }
        known.append(number + fragment.formula +
                     (fragment.count > 1 ? tr(" (charge %1 each)") : tr(" (charge %1)"))
                         .arg(fragment.charge));
        omittedCharge += fragment.count * fragment.charge;
    }
    if (!unknown.isEmpty())
        throw cli::Failure{tr("--drop-unbound leaves out %1, whose charge is not known: give the "
                              "charge of the atoms that are kept with --charge.")
                               .arg(unknown.join(QStringLiteral(", ")))};
    const bool isGiven = source.isChargeOnSystemTold();
    const QString list = results.fragmentCharges.join(QStringLiteral(", "));
    if (isGiven && results.isChargeKnown && results.omittedFragments.isEmpty() &&
        qRound(source.getChargeOnSystem()) != results.charge)
        cli::warn(tr("the charge of the file is %1, but %2 (+3) and %3 add up to %4")
                      .arg(QString::number(qRound(source.getChargeOnSystem())), results.ion, list,
                           QString::number(results.charge)));
    const int whole =
        isGiven ? qRound(source.getChargeOnSystem())
                : cli::chargeOfFragments(results, tr("the atoms that are kept")) + omittedCharge;
    if (!known.isEmpty())
        cli::note(tr("left out are %1; the charge of the atoms that are kept is %2 (of the whole "
                     "%3)")
                      .arg(known.join(QStringLiteral(", ")), QString::number(whole - omittedCharge),
                           QString::number(whole)));
    return whole - omittedCharge;
}

/// Charge, method and keywords of a MOPAC job.
void settleJob(const cli::OptionReader &options, const LanqorInputData &source,
               const OrganizeResults &results, LanqorOrganizeMolecules &structure)
{
    const int charge = options.isSet("charge")     ? options.wholeNumber("charge")
                       : options.isSet("keywords") ? cli::toldCharge(options, source).value_or(0)
                                                   : chargeOfKeptAtoms(source, results);
    const QVector<Coord> atoms = structure.getCoord();
    cli::checkMopacElectrons(options, atoms, charge);
    cli::settleMopacJob(options, structure);
    structure.setExtraMopacKeywords(cli::mopacKeywords(options, atoms, charge));
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
           "IN is a crystal structure (.cif or .pdb, of which the complex that holds the ion is\n"
           "taken), a .mol2, .xyz, .mop or .zmt file or a MOPAC output or archive (.arc); OUT a\n"
           ".mop, .mol2 or .xyz file. The ligands and the numbers of their coordinated atoms go\n"
           "to standard output.\n\n"
           "Example: lanqor organize crystal.mol2 complex.mop --charge 0"));
    options.addArgument(QStringLiteral("IN"), tr("structure to read"), QString(),
                        cli::structureSuffixes());
    options.addArgument(QStringLiteral("OUT"), tr("file to write"));
    options.addOption(
        {QStringLiteral("drop-unbound"), tr("Leave out fragments that are not bound to the ion.")});
    options.addOption(
        {QStringLiteral("charge"),
         tr("Charge of a .mop job, of all atoms that it keeps; by default that of the "
            "MOPAC output, archive or job (CHARGE=), less those of fragments left out, else "
            "derived from the ion and known ligands."),
         QStringLiteral("n")});
    options.addOption(cli::moleculeOption());
    cli::addJobOptions(options);
    options.addResultOptions();
    options.parse(arguments);
    const QStringList files =
        options.files(2, tr("organize needs two files; see \"lanqor organize --help\""));
    const bool isMopacJob =
        QFileInfo(files.at(1)).suffix().compare(QLatin1String("mop"), Qt::CaseInsensitive) == 0;
    cli::checkJobOptions(options, isMopacJob);
    if (options.isSet("charge"))
        options.wholeNumber("charge");

    LanqorInputData source(nullptr, files.at(0));
    cli::chooseMolecule(options, source);
    cli::showWarnings(source);
    source.setKeepFileOpen(true);
    LanqorOrganizeMolecules structure(nullptr, &source);
    cli::showMessages(structure);
    structure.setKeepUnboundFragments(!options.isSet("drop-unbound"));
    if (!structure.organize())
        cli::failOf(structure);
    const OrganizeResults results = structure.getResults();
    if (results.coordNumber == 0)
        cli::warn(tr("%1: no atom is within bonding distance of the ion; are the coordinates in "
                     "Angstrom?")
                      .arg(files.at(0)));
    if (isMopacJob)
        settleJob(options, source, results, structure);
    cli::showResults(options, summary(results), LanqorOrganizeMolecules::makeTables(results));
    if (!structure.createOutpuFile(files.at(1)))
        cli::failOf(structure);
    return cli::success;
}
