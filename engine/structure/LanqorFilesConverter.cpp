#include "LanqorFilesConverter.h"

#include "core/internalCoordinates_p.h"
#include "core/reportText_p.h"
#include "input/atomRows_p.h"
#include "input/fileFormats_p.h"
#include "input/inputDataAccess_p.h"
#include "input/mopacOutput_p.h"
#include "input/structureFiles_p.h"
#include "structure/jobFiles_p.h"
#include "structure/structureText_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using structureFiles::Kind;

namespace {

/// Hartree of an electronvolt (CODATA 2010).
constexpr double hartreePerEv = 1.0 / 27.21138505;

bool isVector(const Coord &atom)
{
    return structureFiles::isTranslationVector(atom.label);
}

/// Energies of the lowest and the highest orbital, hartree, opened by a thousandth so that both
/// are inside; false when the table holds no occupied or no empty orbital.
bool orbitalWindow(const LanqorInputData &data, double &from, double &to)
{
    double lowest = std::numeric_limits<double>::max();
    double highest = std::numeric_limits<double>::lowest();
    bool hasOccupied = false;
    bool hasEmpty = false;
    for (int i = 0; i < data.getMolecularOrbitalsOccCount(); ++i) {
        const MolecularOrbitalOCC orbital = data.getMolecularOrbital(i);
        hasOccupied = hasOccupied || orbital.occupancy > 0.0;
        hasEmpty = hasEmpty || orbital.occupancy == 0.0;
        lowest = std::min(lowest, orbital.energy);
        highest = std::max(highest, orbital.energy);
    }
    constexpr double margin = 0.001; // hartree, above the rounding of the written limits
    from = lowest * hartreePerEv - margin;
    to = highest * hartreePerEv + margin;
    return hasOccupied && hasEmpty;
}

/// Suffix of the files of a kind; what is no structure file is read as a MOPAC output.
QString suffixOf(Kind kind)
{
    switch (kind) {
    case Kind::MopacArchive:
        return QStringLiteral("arc");
    case Kind::Mop:
        return QStringLiteral("mop");
    case Kind::Zmt:
        return QStringLiteral("zmt");
    case Kind::Xyz:
        return QStringLiteral("xyz");
    case Kind::Mol2:
        return QStringLiteral("mol2");
    case Kind::Cif:
        return QStringLiteral("cif");
    case Kind::Pdb:
        return QStringLiteral("pdb");
    case Kind::MopacOutput:
    case Kind::Unknown:
        break;
    }
    return QStringLiteral("out");
}

/// Number of empty orbitals to which an ORCA output cuts its last list of orbital energies ("*Only
/// the first 10 virtual orbitals were printed."); 0 when it lists all.
int listedEmptyOrbitals(const InputFile &file)
{
    LineReader reader(file);
    int number = 0;
    textFields::Fields fields;
    for (bool more = reader.open() && reader.next(); more; more = reader.next()) {
        const std::string_view line = textFields::trimmed(reader.line());
        if (line == "ORBITAL ENERGIES")
            number = 0;
        if (line.substr(0, 15) != "*Only the first")
            continue;
        textFields::split(line, fields);
        bool ok = fields.size() > 4 && fields[4] == "virtual";
        const int listed = ok ? textFields::toInt(fields[3], &ok) : 0;
        number = ok ? listed : number;
    }
    return number;
}

} // namespace

class LanqorFilesConverterPrivate
{
public:
    LanqorFilesConverterPrivate(LanqorFilesConverter &owner, LanqorInputData *structure,
                                const QString &fileName)
        : q(owner)
        , given(structure)
        , fileName(fileName)
    {}

    static QString tr(const char *text) { return LanqorFilesConverter::tr(text); }
    LanqorInputData &input(std::unique_ptr<LanqorInputData> &own) const;
    void startConversion(const QString &from, const QString &to);
    bool readStructure(LanqorInputData &data, const QString &to, bool keepTv = false);
    bool atomsRead(const QVector<Coord> &atoms);
    bool writeOutput(const QString &requestedName, const QString &extension, const QString &text);
    bool writeCoordXYZ(QString const &outputFile, QVector<Coord> const &atoms, bool keepTv);
    bool createPointChargesFile(const QString &outputFile, const QVector<Coord> &ions);
    bool readFilledLevels(const LanqorInputData &data, int &filledLevels);
    bool readOrcaOutput(LanqorInputData &data, double &windowFrom, double &windowTo);
    bool mopend(const QString &message);
    QString nameOfOutput(const QString &requestedName, const QString &extension) const;
    int chargeOfJob(const LanqorInputData &data) const;

    LanqorFilesConverter &q;
    LanqorInputData *given; // null: each conversion reads the file apart
    QString fileName;
    jobFiles::MopacJob mopacJob;
    std::optional<int> charge;
    int multiplicity = 1;
};

LanqorFilesConverter::LanqorFilesConverter()
    : LanqorFilesConverter(nullptr, QString())
{}

LanqorFilesConverter::LanqorFilesConverter(QObject *parent, QString const &fileName)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorFilesConverterPrivate>(*this, nullptr, fileName))
{}

LanqorFilesConverter::LanqorFilesConverter(QObject *parent, LanqorInputData *structure)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorFilesConverterPrivate>(
          *this, structure, structure ? structure->getFileName() : QString()))
{}

LanqorFilesConverter::~LanqorFilesConverter() = default;

QString LanqorFilesConverter::sparkleKeywords(const QVector<Coord> &atoms, const int &charge)
{
    return (jobFiles::ionsOf(atoms).isEmpty() ? QString() : QStringLiteral("SPARKLE ")) +
           QStringLiteral("CHARGE=%1").arg(charge);
}

QString LanqorFilesConverter::sparkleKeywords(const QVector<Coord> &atoms, const int &charge,
                                              const int &multiplicity)
{
    static const char *const words[] = {"DOUBLET", "TRIPLET", "QUARTET", "QUINTET",
                                        "SEXTET",  "SEPTET",  "OCTET",   "NONET"};
    const QString keywords = sparkleKeywords(atoms, charge);
    return multiplicity < 2 || multiplicity > 9
               ? keywords
               : keywords + QLatin1Char(' ') + QLatin1String(words[multiplicity - 2]);
}

int LanqorFilesConverter::chargeWithoutIon(const int &charge)
{
    return charge - jobFiles::ionCharge;
}

int LanqorFilesConverter::chargeWithoutIons(const QVector<Coord> &atoms, const int &charge)
{
    return charge - jobFiles::ionCharge * std::max(1, jobFiles::ionsOf(atoms).size());
}

std::optional<int> LanqorFilesConverter::electronCount(const QVector<Coord> &atoms,
                                                       const int &charge)
{
    return jobFiles::electronCount(atoms, charge);
}

QStringList LanqorFilesConverter::mopacMethods()
{
    return jobFiles::mopacMethods();
}

void LanqorFilesConverter::setCharge(const int &charge)
{
    d->charge = charge;
}

void LanqorFilesConverter::setExtraMopacKeywords(const QString &keywords)
{
    d->mopacJob.extraKeywords = keywords;
}

void LanqorFilesConverter::setMultiplicity(const int &multiplicity)
{
    d->multiplicity = multiplicity;
}

void LanqorFilesConverter::setMopacMethod(const QString &method)
{
    d->mopacJob.method = method;
}

void LanqorFilesConverter::setMopacJobForQdcFit(const bool &isForQdcFit)
{
    d->mopacJob.isForQdcFit = isForQdcFit;
}

void LanqorFilesConverter::setSolvent(const QString &name)
{
    d->mopacJob.solvent = name;
}

bool LanqorFilesConverter::isOrcaOutput() const
{
    if (d->fileName.endsWith(QLatin1String("orcout")))
        return true;
    std::unique_ptr<LanqorInputData> own;
    return fileFormats::formatOf(inputFileOf(d->input(own))) == fileFormats::Format::OrcaOutput;
}

bool LanqorFilesConverter::convertFromOutToMop(QString const &outputFile)
{
    if (!jobFiles::mopacMethods().contains(d->mopacJob.method))
        return failWith(jobFiles::unknownMethod(d->mopacJob.method));
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!d->readStructure(data, QStringLiteral("mop")))
        return false;
    const QString fault = jobFiles::faultOfSolvent(data.getCoord(), d->mopacJob);
    return fault.isEmpty() ? d->writeOutput(outputFile, QStringLiteral("mop"),
                                            jobFiles::mopacJob(data.getCoord(), d->mopacJob))
                           : failWith(fault);
}

bool LanqorFilesConverter::convertFromOutToMopIndo(QString const &outputFile, const int &states)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    const QString suffix = QStringLiteral("mop");
    if (!d->readStructure(data, suffix))
        return false;
    const QVector<Coord> atoms = data.getCoord();
    if (std::any_of(atoms.begin(), atoms.end(), isVector))
        return failWith(tr("An INDO job cannot be of a periodic structure (translation vectors "
                           "Tv): \n") +
                        d->fileName);
    const QVector<Coord> ions = jobFiles::ionsOf(atoms);
    if (ions.size() > 1)
        return failWith(tr("An INDO job takes yttrium for one lanthanide ion, but there are %1 "
                           "(%2, ...); write the surroundings of one of them to a file: \n")
                            .arg(QString::number(ions.size()), ions.first().label) +
                        d->fileName);
    if (states < 1)
        return failWith(tr("An INDO job needs at least one excited state."));
    const QString fault = jobFiles::faultOfSolvent(d->mopacJob.solvent);
    if (!fault.isEmpty())
        return failWith(fault);
    const QString ending = QLatin1Char('.') + suffix;
    QString base = d->nameOfOutput(outputFile, suffix);
    if (base.endsWith(ending, Qt::CaseInsensitive))
        base.chop(ending.size());
    jobFiles::MopacIndoJob job;
    job.charge = d->chargeOfJob(data);
    job.states = states;
    job.solvent = d->mopacJob.solvent;
    for (const char *kind : {"singlet", "triplet"}) {
        job.multiplicity = QString::fromLatin1(kind).toUpper();
        if (!d->writeOutput(base + QLatin1Char('_') + QLatin1String(kind) + ending, suffix,
                            jobFiles::mopacIndoJob(atoms, job)))
            return false;
    }
    return true;
}

bool LanqorFilesConverter::convertFromOutToGjf(QString const &outputFile)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!d->readStructure(data, QStringLiteral("gjf")))
        return false;
    if (jobFiles::ionsOf(data.getCoord()).isEmpty())
        return failWith(tr("There is no lanthanide ion in the structure, so the Gaussian job would "
                           "have no pseudopotential to read: \n") +
                        d->fileName);
    const QFileInfo output(d->nameOfOutput(outputFile, QStringLiteral("gjf")));
    const QString baseName = output.completeBaseName();
    if (std::any_of(baseName.begin(), baseName.end(), [](QChar c) { return c.isSpace(); }))
        return failWith(tr("The name \"%1\" has a blank, at which Gaussian ends the name of the "
                           "checkpoint file (%chk=%1.chk); write the job under a name without.")
                            .arg(baseName));
    return d->writeOutput(
        outputFile, QStringLiteral("gjf"),
        jobFiles::gaussianJob(data.getCoord(), d->chargeOfJob(data), d->multiplicity, baseName));
}

bool LanqorFilesConverter::convertFromOutToInp(QString const &outputFile)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    int filledLevels = 0;
    if (!d->readStructure(data, QStringLiteral("inp")) || !d->readFilledLevels(data, filledLevels))
        return false;
    const jobFiles::ActiveWindow window = jobFiles::activeWindow(data.getCoord(), filledLevels);
    if (window.lastEmpty == 0)
        return failWith(tr("The ZINDO job cannot be written: an element of the ligands has no "
                           "INDO/S basis, or no empty orbital is left beside %1 filled levels: \n")
                            .arg(filledLevels) +
                        d->fileName);
    return d->writeOutput(outputFile, QStringLiteral("inp"),
                          jobFiles::zindoJob(data.getCoord(), filledLevels, window));
}

bool LanqorFilesConverter::convertFromOutToInpOrca(QString const &outputFile,
                                                   const bool &pointCharges, const bool &triplets,
                                                   const int &chargeOfAtoms, const int &nroots,
                                                   const int &maxdim, const double &windowFrom,
                                                   const double &windowTo)
{
    const bool fromOrca = isOrcaOutput();
    jobFiles::OrcaJob job;
    job.windowFrom = windowFrom;
    job.windowTo = windowTo;
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!(fromOrca ? d->readOrcaOutput(data, job.windowFrom, job.windowTo)
                   : d->readStructure(data, QStringLiteral("orcinp"))))
        return false;
    if (nroots < 1 || maxdim < 1 || !(job.windowFrom < job.windowTo))
        return failWith(tr("An ORCA job needs at least one root, a dimension of at least 1 and a "
                           "window of orbital energies that opens upwards."));
    job.atoms = data.getCoord();
    job.triplets = triplets;
    job.charge = chargeOfAtoms;
    job.nroots = nroots;
    job.maxdim = maxdim;
    if (pointCharges) {
        QVector<Coord> ions = jobFiles::ionsOf(job.atoms);
        Coord ion;
        if (ions.isEmpty() && fromOrca && data.readChargePointFileOrca(ion.x, ion.y, ion.z))
            ions.append(ion);
        if (ions.isEmpty())
            return failWith(fromOrca ? data.getLastError()
                                     : tr("There is no lanthanide ion in the structure that could "
                                          "become a point charge: \n") +
                                           d->fileName);
        job.atoms = jobFiles::withoutIons(job.atoms);
        const QFileInfo output(d->nameOfOutput(outputFile, QStringLiteral("orcinp")));
        job.pointChargeFile = output.completeBaseName() + QStringLiteral(".pointcharge");
        if (!d->createPointChargesFile(output.dir().filePath(job.pointChargeFile), ions))
            return false;
    }
    return d->writeOutput(outputFile, QStringLiteral("orcinp"), jobFiles::orcaJob(job));
}

bool LanqorFilesConverter::convertFromOutToSph(QString const &outputFile)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!d->readStructure(data, QStringLiteral("sph")))
        return false;
    if (!data.createSphericalCoordinate())
        return failWith(data.getLastError());
    QVector<CoordSPH> atoms;
    for (int atom = 1; atom <= data.getCoord().size(); ++atom)
        atoms.append(data.getCoordSPH(atom));
    return d->writeOutput(outputFile, QStringLiteral("sph"), structureText::sphFile(atoms));
}

bool LanqorFilesConverter::convertFromOutToXYZ(QString const &outputFile, bool const &keepTv)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!d->readStructure(data, QStringLiteral("xyz"), keepTv))
        return false;
    const QVector<Coord> atoms = data.getCoord();
    if (keepTv && std::none_of(atoms.begin(), atoms.end(), isVector))
        emitProgress(tr(" -> (Lanqor Files Converter Module) There are no translation vectors "
                        "among the Cartesian coordinates."));
    return d->writeCoordXYZ(outputFile, atoms, keepTv);
}

bool LanqorFilesConverter::convertFromOutToZmt(QString const &outputFile)
{
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (!d->readStructure(data, QStringLiteral("zmt")))
        return false;
    const QVector<CoordZMT> rows = createZMTFromXYZCoord(data.getCoord());
    return !rows.isEmpty() &&
           d->writeOutput(outputFile, QStringLiteral("zmt"), structureText::zmtFile(rows));
}

bool LanqorFilesConverter::convertFromZmtToXYZ(QString const &outputFile)
{
    d->startConversion(QStringLiteral("zmt"), QStringLiteral("xyz"));
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (data.getCoord().isEmpty() && !data.readZmtFile())
        return failWith(data.getLastError());
    return d->atomsRead(data.getCoord()) && d->writeCoordXYZ(outputFile, data.getCoord(), false);
}

bool LanqorFilesConverter::convertFromMopToXYZ(QString const &outputFile, bool const &keepTv)
{
    d->startConversion(QStringLiteral("mop"), QStringLiteral("xyz"));
    std::unique_ptr<LanqorInputData> own;
    const structureFiles::Structure structure = structureFiles::readMop(
        inputFileOf(d->input(own)), keepTv ? structureFiles::TranslationVectors::Keep
                                           : structureFiles::TranslationVectors::Drop);
    if (!structure.error.isEmpty())
        return failWith(structure.error);
    return d->atomsRead(structure.atoms) && d->writeCoordXYZ(outputFile, structure.atoms, keepTv);
}

bool LanqorFilesConverter::convertFromMOL2ToXYZ(QString const &outputFile)
{
    d->startConversion(QStringLiteral("mol2"), QStringLiteral("xyz"));
    std::unique_ptr<LanqorInputData> own;
    LanqorInputData &data = d->input(own);
    if (data.getCoord().isEmpty() && !data.readMol2File())
        return failWith(data.getLastError());
    return d->atomsRead(data.getCoord()) && d->writeCoordXYZ(outputFile, data.getCoord(), false);
}

bool LanqorFilesConverter::convertToXYZ(QString const &outputFile, bool const &keepTv)
{
    if (keepTv)
        return convertFromOutToXYZ(outputFile, keepTv);
    std::unique_ptr<LanqorInputData> own;
    switch (structureFiles::kindOf(inputFileOf(d->input(own)))) {
    case Kind::Zmt:
        return convertFromZmtToXYZ(outputFile);
    case Kind::Mop:
        return convertFromMopToXYZ(outputFile, keepTv);
    case Kind::Mol2:
        return convertFromMOL2ToXYZ(outputFile);
    default:
        return convertFromOutToXYZ(outputFile, keepTv);
    }
}

QVector<Coord> LanqorFilesConverter::createXYZFromZMTCoord(QVector<CoordZMT> const &zMatrix)
{
    const internalCoordinates::CartesianResult result = internalCoordinates::gmetry(zMatrix);
    if (result.failedAtom == 0)
        return result.atoms;
    d->mopend(tr("\nAtom %1 of the Z-matrix cannot be placed; check its reference atoms.")
                  .arg(result.failedAtom) +
              tr(internalCoordinates::gmetryFailure));
    return {};
}

QVector<CoordZMT> LanqorFilesConverter::createZMTFromXYZCoord(QVector<Coord> const &atoms)
{
    const internalCoordinates::InternalResult result = internalCoordinates::xyzint(atoms);
    if (result.coincidentAtoms[0] == 0)
        return result.rows;
    d->mopend(tr("TWO ATOMS ARE COINCIDENT.  A FATAL ERROR.") + QLatin1Char('\n') +
              tr("ATOMS%1 AND%2 ARE COINCIDENT\n")
                  .arg(QString::number(result.coincidentAtoms[0]).rightJustified(4),
                       QString::number(result.coincidentAtoms[1]).rightJustified(4)));
    return {};
}

/// The given structure, or one of the conversion's own, whose readers share one opening.
LanqorInputData &LanqorFilesConverterPrivate::input(std::unique_ptr<LanqorInputData> &own) const
{
    if (given)
        return *given;
    own = std::make_unique<LanqorInputData>(nullptr, fileName);
    own->setKeepFileOpen(true);
    return *own;
}

void LanqorFilesConverterPrivate::startConversion(const QString &from, const QString &to)
{
    q.emitProgress(tr(" -> (Lanqor Files Converter Module) Conversion from .%1 file to .%2 file")
                       .arg(from, to));
}

/// Reads the structure that a conversion "from out" starts from.
bool LanqorFilesConverterPrivate::readStructure(LanqorInputData &data, const QString &to,
                                                bool keepTv)
{
    const QString suffix = suffixOf(structureFiles::kindOf(inputFileOf(data)));
    startConversion(suffix, to);
    const bool isRead = !data.getCoord().isEmpty() ||
                        (suffix == QLatin1String("out") ? data.readMopacOutFile(keepTv)
                                                        : data.readStructureFile(keepTv));
    if (!isRead)
        return q.failWith(data.getLastError());
    return atomsRead(data.getCoord());
}

bool LanqorFilesConverterPrivate::atomsRead(const QVector<Coord> &atoms)
{
    if (atoms.isEmpty())
        return q.failWith(tr("There are no atoms in the structure: \n") + fileName);
    q.emitProgress(
        tr(" -> (Lanqor Files Converter Module) Cartesian coordinates  read successfully. "
           "The chemical structure contains %1 atoms")
            .arg(atoms.size()));
    return true;
}

bool LanqorFilesConverterPrivate::writeOutput(const QString &requestedName,
                                              const QString &extension, const QString &text)
{
    const QString output = nameOfOutput(requestedName, extension);
    q.emitProgress(tr(" -> (Lanqor Files Converter Module) Creating output file."));
    if (QFileInfo(output) == QFileInfo(fileName))
        return q.failWith(tr("The file to write is the one that was read: \n") + output);
    QString error;
    if (!LanqorOutputFile::write(output, text.toUtf8(), error))
        return q.failWith(tr("The file %1 cannot be written: %2").arg(output, error));
    q.emitProgress(tr(" -> (Lanqor Files Converter Module) The output file created successfully."));
    return true;
}

bool LanqorFilesConverterPrivate::writeCoordXYZ(QString const &outputFile,
                                                QVector<Coord> const &atoms, bool keepTv)
{
    QVector<Coord> kept = atoms;
    if (!keepTv)
        kept.erase(std::remove_if(kept.begin(), kept.end(), isVector), kept.end());
    return writeOutput(outputFile, QStringLiteral("xyz"),
                       structureText::xyzFile(kept, QFileInfo(fileName).completeBaseName()));
}

bool LanqorFilesConverterPrivate::createPointChargesFile(const QString &outputFile,
                                                         const QVector<Coord> &ions)
{
    QString error;
    return LanqorOutputFile::write(outputFile, jobFiles::orcaPointCharges(ions).toUtf8(), error) ||
           q.failWith(tr("The file %1 cannot be written: %2").arg(outputFile, error));
}

/// Reads the count of doubly occupied orbitals of a MOPAC output.
bool LanqorFilesConverterPrivate::readFilledLevels(const LanqorInputData &data, int &filledLevels)
{
    if (const auto number = readMopacFilledLevels(inputFileOf(data))) {
        filledLevels = *number;
        return true;
    }
    return q.failWith(tr("NO. OF FILLED LEVELS was not find in mopac output"));
}

/// Reads the atoms and the orbital energies of an ORCA output.
bool LanqorFilesConverterPrivate::readOrcaOutput(LanqorInputData &data, double &windowFrom,
                                                 double &windowTo)
{
    q.emitProgress(tr(" -> (Lanqor Files Converter Module) Conversion from .orcout file to .orcinp "
                      "file"));
    if ((data.getCoord().isEmpty() && !data.readCoordFromOrcaOutFile()) ||
        (data.getMolecularOrbitalsOccCount() == 0 && !data.readMolecularOrbitalOccupancy()))
        return q.failWith(data.getLastError());
    if (!orbitalWindow(data, windowFrom, windowTo))
        return q.failWith(tr("problema na definição dos orbitais!"));
    q.emitProgress(tr(" -> (Lanqor Files Converter Module) The window of orbitals spans the %1 "
                      "orbitals whose energies the output lists.")
                       .arg(data.getMolecularOrbitalsOccCount()));
    const int emptyOrbitals = listedEmptyOrbitals(inputFileOf(data));
    if (emptyOrbitals > 0)
        q.processStatus(
            tr("%1 lists the energies of the first %2 empty orbitals only, so that the window of "
               "the job ends at %3 hartree and leaves out excitations into higher ones. Raise the "
               "upper limit of \"ewin\" in the job, or start from the MOPAC output.")
                .arg(fileName, QString::number(emptyOrbitals), reportText::fixed(windowTo, 3)));
    return atomsRead(data.getCoord());
}

/// Reports an error that ends the conversion of a geometry.
bool LanqorFilesConverterPrivate::mopend(const QString &message)
{
    return q.failWith(message);
}

QString LanqorFilesConverterPrivate::nameOfOutput(const QString &requestedName,
                                                  const QString &extension) const
{
    if (!requestedName.isEmpty())
        return requestedName;
    const QFileInfo input(fileName);
    return input.dir().filePath(input.completeBaseName() + QLatin1Char('.') + extension);
}

int LanqorFilesConverterPrivate::chargeOfJob(const LanqorInputData &data) const
{
    return charge.value_or(static_cast<int>(std::lround(data.getChargeOnSystem())));
}
