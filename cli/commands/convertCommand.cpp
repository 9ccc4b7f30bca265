#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/jobOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

#include <algorithm>

namespace {

using cli::tr;

/// Numbers of the command line.
struct Numbers
{
    explicit Numbers(const cli::OptionReader &options)
        : isChargeGiven(options.isSet("charge"))
        , charge(readNumber(options, "charge"))
        , roots(readNumber(options, "roots"))
        , maxdim(readNumber(options, "maxdim"))
    {}

    bool isChargeGiven;
    int charge;
    int roots;
    int maxdim;

private:
    static int readNumber(const cli::OptionReader &options, const char *name)
    {
        return options.text(name).isEmpty() ? 0 : options.wholeNumber(name);
    }
};

/// What to write, by --program or the suffix of the file; empty when neither tells.
QString formatOf(const QString &program, const QString &file)
{
    static const QStringList formats = {QStringLiteral("mop"), QStringLiteral("gjf"),
                                        QStringLiteral("inp"), QStringLiteral("orcinp"),
                                        QStringLiteral("sph"), QStringLiteral("xyz"),
                                        QStringLiteral("zmt")};
    static const QVector<QPair<QString, QString>> programs = {
        {QStringLiteral("mopac"), QStringLiteral("mop")},
        {QStringLiteral("gaussian"), QStringLiteral("gjf")},
        {QStringLiteral("zindo"), QStringLiteral("inp")},
        {QStringLiteral("orca"), QStringLiteral("orcinp")}};
    for (const auto &known : programs) {
        if (program == known.first)
            return known.second;
    }
    const QString suffix = QFileInfo(file).suffix().toLower();
    return program.isEmpty() && formats.contains(suffix) ? suffix : QString();
}

void addOptions(cli::OptionReader &options)
{
    options.addArgument(QStringLiteral("IN"), tr("structure or output to read"), QString(),
                        cli::structureSuffixes());
    options.addArgument(QStringLiteral("OUT"), tr("file to write"));
    options.addOption({QStringLiteral("program"),
                       tr("Write a job for mopac, gaussian, zindo or orca, whatever the suffix "
                          "of OUT."),
                       QStringLiteral("name")});
    options.addOption({QStringLiteral("charge"),
                       tr("Charge of the whole system, ion included; by default that of the MOPAC "
                          "output, archive or job (CHARGE=), else derived from the ion and "
                          "known ligands."),
                       QStringLiteral("n")});
    options.addOption(cli::moleculeOption());
    cli::addJobOptions(options);
    options.addOption({QStringLiteral("roots"),
                       tr("ORCA, --indo: number of states of each multiplicity."),
                       QStringLiteral("n"), QStringLiteral("25")});
    options.addOption({QStringLiteral("indo"),
                       tr("MOPAC: two jobs of excited states by INDO/S at this geometry, Y in the "
                          "place of the ion; OUT job.mop makes job_singlet.mop and "
                          "job_triplet.mop.")});
    options.addOption({QStringLiteral("maxdim"),
                       tr("ORCA: dimension of the expansion space in multiples of the roots."),
                       QStringLiteral("n"), QStringLiteral("10")});
    options.addOption({QStringLiteral("singlets-only"), tr("ORCA: no triplet states.")});
    options.addOption({QStringLiteral("keep-ion"),
                       tr("ORCA: the ion stays among the atoms instead of becoming a point charge "
                          "of +3 in a .pointcharge file beside OUT.")});
    options.addOption({QStringLiteral("keep-tv"),
                       tr("xyz: keep the translation vectors (Tv) of a periodic structure, which "
                          ".mop jobs keep and other formats cannot hold.")});
}

/// An ORCA job; its atoms lack the charge of the ions that become point charges.
bool toOrca(LanqorFilesConverter &converter, const cli::OptionReader &options, const QString &out,
            const LanqorInputData &structure, const Numbers &numbers)
{
    const bool pointCharge = !options.isSet("keep-ion");
    const int charge =
        pointCharge ? LanqorFilesConverter::chargeWithoutIons(structure.getCoord(), numbers.charge)
                    : numbers.charge;
    return converter.convertFromOutToInpOrca(out, pointCharge, !options.isSet("singlets-only"),
                                             charge, numbers.roots, numbers.maxdim);
}

/// Reads the structure, of which MOPAC jobs keep the translation vectors.
void readStructure(const cli::OptionReader &options, const QString &format,
                   LanqorInputData &structure)
{
    const QString file = structure.getFileName();
    const bool isXyz = format == QLatin1String("xyz");
    if (!structure.readStructureFile(!isXyz || options.isSet("keep-tv")))
        cli::failOf(structure);
    if (isXyz)
        return;
    const QVector<Coord> atoms = structure.getCoord();
    const bool isPeriodic = std::any_of(atoms.begin(), atoms.end(), [](const Coord &atom) {
        return atom.label == QLatin1String("Tv");
    });
    if (isPeriodic && format != QLatin1String("mop"))
        throw cli::Failure{
            tr("%1 is a periodic structure (translation vectors Tv), which a .%2 file "
               "cannot hold; to go on with the atoms of its cell alone, write them "
               "to an .xyz file with \"lanqor convert %1 cell.xyz\" and start from "
               "that")
                .arg(file, format)};
    if (!isPeriodic && options.isSet("keep-tv"))
        cli::note(tr("%1 holds no translation vectors (Tv)").arg(file));
}

/// Reads the atoms of a job and its charge: from the command line, else from the file.
void readJob(const cli::OptionReader &options, const LanqorFilesConverter &converter,
             LanqorInputData &structure, Numbers &numbers)
{
    if (converter.isOrcaOutput()) {
        if (!numbers.isChargeGiven)
            options.refuse(tr("an ORCA output does not tell the charge of the complex; give it, "
                              "ion included, with --charge"));
        if (!structure.readCoordFromOrcaOutFile())
            cli::failOf(structure);
    }
    if (!numbers.isChargeGiven)
        numbers.charge = cli::chargeOfJob(options, structure);
    options.setInForce("charge", numbers.charge);
}

/// Refuses what the pair of INDO jobs does not take.
void checkIndo(const cli::OptionReader &options, bool isMopacJob)
{
    if (!options.isSet("indo"))
        return;
    if (!isMopacJob)
        options.refuse(tr("--indo belongs to a MOPAC job (.mop)"));
    for (const char *option : {"method", "qdc-fit", "keywords", "multiplicity"})
        if (options.isSet(option))
            options.refuse(tr("--%1 does not go with --indo, whose jobs have the keywords INDO CIS "
                              "and SINGLET or TRIPLET")
                               .arg(QLatin1String(option)));
}

int ionCount(const QVector<Coord> &atoms)
{
    return int(std::count_if(atoms.begin(), atoms.end(), [](const Coord &atom) {
        return LanqorInputData::isLanthanide(atom.label);
    }));
}

/// Charge, multiplicity and keywords of a job, with which its electrons must agree.
void settleJob(const cli::OptionReader &options, const QString &format, LanqorInputData &structure,
               LanqorFilesConverter &converter, Numbers &numbers)
{
    const bool isMopacJob = format == QLatin1String("mop");
    cli::checkJobOptions(options, isMopacJob);
    checkIndo(options, isMopacJob);
    const int multiplicity = cli::multiplicityOfJob(options);
    const bool isClosedShell = format == QLatin1String("orcinp") || format == QLatin1String("inp");
    if (isClosedShell && multiplicity > 1)
        options.refuse(tr("--multiplicity belongs to MOPAC and Gaussian jobs; ORCA and ZINDO jobs "
                          "start from a closed shell"));
    // A ZINDO job needs the output of MOPAC, which tells its charge.
    const bool isUntold = format == QLatin1String("inp") && !numbers.isChargeGiven &&
                          !structure.isChargeOnSystemTold();
    if (isUntold || (!isMopacJob && !isClosedShell && format != QLatin1String("gjf")))
        return;
    // Several ions are what the conversion refuses by itself.
    const bool isIndo = options.isSet("indo");
    if (isIndo && ionCount(structure.getCoord()) > 1)
        return;
    readJob(options, converter, structure, numbers);
    const QVector<Coord> atoms = structure.getCoord();
    const bool isIonLeftOut = format == QLatin1String("orcinp") && !options.isSet("keep-ion");
    const bool hasIon = ionCount(atoms) > 0;
    // An ORCA output of the ligands alone has the ion beside it, as a point charge.
    const bool isIonBeside = isIonLeftOut && !hasIon && converter.isOrcaOutput();
    const int chargeBeside =
        isIonBeside ? numbers.charge - LanqorFilesConverter::chargeWithoutIon(numbers.charge) : 0;
    // What the conversion refuses, and why, is told by itself.
    const bool isIonMissing =
        !hasIon && !isIonBeside && (isIonLeftOut || format == QLatin1String("gjf"));
    if (isMopacJob && !isIndo)
        cli::checkMopacElectrons(options, atoms, numbers.charge);
    else if (!isIonMissing)
        cli::checkElectrons(atoms, {numbers.charge, multiplicity,
                                    isIndo ? tr("Give it with --charge; both INDO jobs start from "
                                                "a closed shell.")
                                    : isClosedShell
                                        ? tr("Give it with --charge; ORCA and ZINDO jobs start "
                                             "from a closed shell.")
                                        : cli::chargeOrMultiplicity(),
                                    chargeBeside});
    cli::settleMopacJob(options, converter);
    converter.setExtraMopacKeywords(cli::mopacKeywords(options, atoms, numbers.charge));
    converter.setCharge(numbers.charge);
    converter.setMultiplicity(multiplicity);
}

/// What was written, of which structure.
LanqorResultTables makeTables(const QString &fileName, const QString &format,
                              const LanqorInputData &structure)
{
    const auto angstrom = QStringLiteral("Angstrom");
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("conversion"),
        {{QStringLiteral("output_file"), QString()}, {QStringLiteral("format"), QString()}},
        {fileName, format});
    QVector<QVector<QVariant>> rows;
    for (const Coord &atom : structure.getCoord())
        rows.append({rows.size() + 1, atom.label, atom.x, atom.y, atom.z});
    tables.addTable(QStringLiteral("atoms"),
                    {{QStringLiteral("atom_from_1"), QString()},
                     {QStringLiteral("element"), QString()},
                     {QStringLiteral("x"), angstrom},
                     {QStringLiteral("y"), angstrom},
                     {QStringLiteral("z"), angstrom}},
                    rows);
    return tables;
}

} // namespace

int convertCommand(const QStringList &arguments)
{
    cli::OptionReader options("convert");
    options.setDescription(
        tr("Converts a structure, or writes a job for a quantum-chemistry program.\n\n"
           "IN is a MOPAC output or archive (.arc), a .xyz, .mop, .zmt, .mol2, .cif or .pdb file,\n"
           "or (for ORCA jobs) an ORCA output. The suffix of OUT tells what to write:\n"
           "  .xyz, .zmt     Cartesian coordinates (Angstrom), Z-matrix (degrees)\n"
           "  .sph           spherical coordinates about atom 1\n"
           "  .mop           MOPAC: sparkle optimisation, by AM1 unless --method names another;\n"
           "                 with --indo two jobs of excited states by INDO/S\n"
           "  .gjf           Gaussian: TD-LC-wPBE, pseudopotential on the ion\n"
           "  .orcinp, .inp  ORCA, ZINDO: ligand states by ZINDO/S (INDO/S), the ion as a point\n"
           "                 charge; the ZINDO job needs a MOPAC output\n\n"
           "A job is refused when its electrons do not go with its multiplicity.\n\n"
           "Examples:\n"
           "  lanqor convert complex.out ligand.orcinp --roots 25\n"
           "  lanqor convert complex.xyz qdc.mop --charge -1 --method RM1 --qdc-fit"));
    addOptions(options);
    options.addResultOptions();
    options.parse(arguments);
    const QStringList files =
        options.files(2, tr("convert needs two files; see \"lanqor convert --help\""));
    Numbers numbers(options);
    const QString &out = files.at(1);
    const QString format = formatOf(options.text("program"), out);
    if (format.isEmpty())
        options.refuse(tr("what to write to %1 cannot be told; see \"lanqor convert --help\" for "
                          "the suffixes and for --program")
                           .arg(out));

    LanqorInputData structure(nullptr, files.at(0));
    cli::chooseMolecule(options, structure);
    structure.setKeepFileOpen(true);
    LanqorFilesConverter converter(nullptr, &structure);
    cli::showWarnings(structure);
    cli::showMessages(converter);
    if (!(format == QLatin1String("orcinp") && converter.isOrcaOutput()))
        readStructure(options, format, structure);
    settleJob(options, format, structure, converter, numbers);

    const bool isDone =
        options.isSet("indo")               ? converter.convertFromOutToMopIndo(out, numbers.roots)
        : format == QLatin1String("mop")    ? converter.convertFromOutToMop(out)
        : format == QLatin1String("gjf")    ? converter.convertFromOutToGjf(out)
        : format == QLatin1String("inp")    ? converter.convertFromOutToInp(out)
        : format == QLatin1String("orcinp") ? toOrca(converter, options, out, structure, numbers)
        : format == QLatin1String("sph")    ? converter.convertFromOutToSph(out)
        : format == QLatin1String("zmt")    ? converter.convertFromOutToZmt(out)
                                            : converter.convertToXYZ(out, options.isSet("keep-tv"));
    if (!isDone)
        cli::failOf(converter);
    cli::showResults(options, QString(), makeTables(out, format, structure));
    return cli::success;
}
