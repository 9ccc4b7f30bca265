#include "options/complexOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/plausibility.h"
#include "text.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

/// A section of the report by its name on the command line.
struct Section
{
    const char *name;
    bool OmegaPrintingOptions::*field;
};

constexpr Section sections[] = {
    {"coordinates", &OmegaPrintingOptions::printSphericalCoordinates},
    {"charge-factors", &OmegaPrintingOptions::printChargeFactors},
    {"omega", &OmegaPrintingOptions::printOmega},
    {"constants", &OmegaPrintingOptions::printConstants},
    {"harmonics", &OmegaPrintingOptions::printSphericalHarmonics},
    {"overlap", &OmegaPrintingOptions::printSOM},
    {"lattice-dc", &OmegaPrintingOptions::printGAMA},
    {"lattice-sums-dc", &OmegaPrintingOptions::printSumGAMA},
    {"bltp-dc", &OmegaPrintingOptions::printBltpDC},
    {"omega-dc", &OmegaPrintingOptions::printOmegaDC},
    {"lattice-ed", &OmegaPrintingOptions::printgama},
    {"lattice-sums-ed", &OmegaPrintingOptions::printSumgama},
    {"bltp-ed", &OmegaPrintingOptions::printBltpED},
    {"omega-ed", &OmegaPrintingOptions::printOmegaED},
    {"bltp", &OmegaPrintingOptions::printBltp},
    {"rates", &OmegaPrintingOptions::printArad},
    {"partition", &OmegaPrintingOptions::printAradPartition},
    {"crystal-field", &OmegaPrintingOptions::printBkq},
};

bool hasEuropium(const LanqorInputData &geometry)
{
    const QVector<Coord> atoms = geometry.getCoord();
    return std::any_of(atoms.begin(), atoms.end(),
                       [](const Coord &atom) { return atom.label == QLatin1String("Eu"); });
}

QString wayToOrder(const LanqorInputData &geometry)
{
    return tr(" \"lanqor organize %1 NEW.xyz\" writes it in the order that is needed.")
        .arg(geometry.getFileName());
}

/// How fluorine atoms near the ion can be counted, which have no bonding limit; empty when there
/// are none.
QString wayToCountFluorine(const LanqorInputData &geometry)
{
    constexpr double farthest = 2.6; // Angstrom; Eu-F bonds are 2.1 to 2.5
    const QVector<Coord> atoms = geometry.getCoord();
    const QVector<int> coordinated = geometry.getCoordinatedAtoms();
    const Coord &ion = atoms.first();
    QStringList names;
    int last = coordinated.isEmpty() ? 1 : coordinated.last();
    for (int i = 1; i < atoms.size(); ++i) {
        const Coord &atom = atoms.at(i);
        if (atom.label != QLatin1String("F") ||
            std::hypot(atom.x - ion.x, atom.y - ion.y, atom.z - ion.z) >= farthest)
            continue;
        names.append(QStringLiteral("F %1").arg(i + 1));
        last = std::max(last, i + 1);
    }
    if (names.isEmpty())
        return QString();
    const int count = coordinated.size() + names.size();
    const QString list = names.join(QStringLiteral(", "));
    return last == count + 1
               ? tr("--coordination %1 counts %2 as well").arg(QString::number(count), list)
               : tr("--coordination %1 counts %2 as well, once all counted atoms are "
                    "atoms 2 to %3")
                     .arg(QString::number(count), list, QString::number(count + 1));
}

void noteFluorine(const LanqorInputData &geometry)
{
    const QString way = wayToCountFluorine(geometry);
    if (!way.isEmpty())
        note(way);
}

} // namespace

QCommandLineOption refractiveIndexOption(const QString &description)
{
    return {QStringLiteral("n"), description, tr("index"), QStringLiteral("1.5")};
}

double readRefractiveIndex(const OptionReader &options)
{
    const double index = options.number(
        "n", [](double value) { return value >= 1.0 && value < 10.0; },
        tr("a refractive index from 1 to 10"));
    warnOfRefractiveIndex(index);
    return index;
}

QString sectionNames()
{
    QStringList names;
    for (const Section &section : sections)
        names.append(QLatin1String(section.name));
    return names.join(QStringLiteral(", "));
}

QString mainSections()
{
    return QStringLiteral("coordinates,charge-factors,omega,omega-dc,omega-ed,rates");
}

OmegaPrintingOptions sectionsOf(const QString &list)
{
    OmegaPrintingOptions chosen;
    for (const QString &entry : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString name = entry.trimmed();
        bool isKnown = false;
        for (const Section &section : sections) {
            if (name != QLatin1String(section.name) && name != QLatin1String("all"))
                continue;
            chosen.*(section.field) = true;
            isKnown = true;
        }
        if (!isKnown)
            throw UsageError{
                tr("unknown section \"%1\"; there are all, %2").arg(name, sectionNames())};
    }
    return chosen;
}

void checkSphere(const LanqorInputData &geometry)
{
    const QString error = geometry.getSphereError();
    if (error.isEmpty())
        return;
    const bool isOrderWrong =
        geometry.getIonError().isEmpty() ? geometry.getCoordNumber() > 0 : hasEuropium(geometry);
    throw Failure{isOrderWrong ? error + wayToOrder(geometry) : error};
}

void requireEuropium(const LanqorInputData &geometry)
{
    const QString ion = geometry.getAtomLabel(1);
    if (ion == QLatin1String("Eu"))
        return;
    const QString error =
        tr("%1: atom 1 is %2, but intensities and Stark levels are those of Eu3+, "
           "which must be atom 1.")
            .arg(geometry.getFileName(), ion);
    if (hasEuropium(geometry))
        throw Failure{error + wayToOrder(geometry)};
    throw Failure{error + (geometry.getIonError().isEmpty()
                               ? tr(" Give the structure of the europium complex; \"lanqor levels "
                                    "--ion %1\" gives the levels of the free ion %1.")
                                     .arg(ion)
                               : tr(" Give the structure of a europium complex."))};
}

void requireFile(const QString &option, const QString &fileName, const QString &needed)
{
    if (!QFileInfo::exists(fileName))
        throw Failure{tr("%1%2 does not exist; %3 is needed.").arg(option, fileName, needed)};
}

QCommandLineOption moleculeOption()
{
    return {QStringLiteral("molecule"),
            tr("Number of the complex of a crystal structure (.cif, .pdb) that holds several."),
            tr("K")};
}

void chooseMolecule(const OptionReader &options, LanqorInputData &structure)
{
    constexpr int most = 1000; // independent complexes of a cell
    if (options.isSet("molecule"))
        structure.setMolecule(options.count("molecule", most));
}

QCommandLineOption coordinationOption()
{
    return {QStringLiteral("coordination"),
            tr("Number N of coordinated atoms; counted by bonding distances unless given."),
            tr("N")};
}

void readStructure(LanqorInputData &geometry)
{
    requireFile(QString(), geometry.getFileName(),
                tr("a MOPAC .out or .arc or a structure (.mop, .zmt, .xyz, .mol2, .cif, .pdb)"));
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate())
        failOf(geometry);
}

int readSphere(const OptionReader &options, LanqorInputData &geometry)
{
    readStructure(geometry);
    if (!options.isSet("coordination")) {
        if (!geometry.getSphereError().isEmpty())
            noteFluorine(geometry);
        checkSphere(geometry);
        requireEuropium(geometry);
        warnOfStructure(geometry);
        noteNearAtoms(geometry);
        options.setInForce("coordination", geometry.getCoordNumber());
        return geometry.getCoordNumber();
    }
    warnOfStructure(geometry);
    const int atomsBesidesIon = geometry.getCoord().size() - 1;
    bool isNumber = false;
    const int coordNumber = options.text("coordination").toInt(&isNumber);
    // The largest number is that of the file, which is at fault as much as the option.
    if (!isNumber || coordNumber < 1 || coordNumber > atomsBesidesIon)
        throw Failure{tr("--coordination needs a number from 1 to %1").arg(atomsBesidesIon)};
    requireEuropium(geometry);
    return coordNumber;
}

QCommandLineOption overlapOption()
{
    return {QStringLiteral("ro0"),
            tr("Overlap of the nearest atom in the crystal field, 0 to below 1. The crystal-field "
               "section of \"lanqor omega\" has 0.05 unless given."),
            tr("overlap"), QStringLiteral("0.0801")};
}

double readOverlap(const OptionReader &options)
{
    return options.number(
        "ro0", [](double overlap) { return overlap >= 0.0 && overlap < 1.0; },
        tr("an overlap from 0 to below 1"));
}

QCommandLineOption magnitudesOption()
{
    return {QStringLiteral("magnitudes"),
            tr("Take the magnitudes of the reduced elements <7FJ||U(k)||7FJ>, as earlier versions "
               "did, not the elements with their signs.")};
}

ReducedElements readElements(const OptionReader &options)
{
    return options.isSet("magnitudes") ? ReducedElements::Magnitudes : ReducedElements::Signed;
}

void warnOfStructure(const LanqorInputData &geometry)
{
    for (const QString &text : geometry.getStructureWarnings())
        warn(text);
}

void noteNearAtoms(const LanqorInputData &geometry)
{
    for (const QString &text : geometry.getNearAtomNotes())
        note(text);
    noteFluorine(geometry);
}

QCommandLineOption ligandsOption()
{
    return {QStringLiteral("ligands"),
            tr("Groups of atoms for the partition of the radiative rate: one group on each line, a "
               "name, then atom numbers (\"acac 2 3\"); # starts a comment."),
            tr("file")};
}

QStringList readLigands(const OptionReader &options)
{
    if (options.text("ligands").isEmpty())
        return {};
    QString error;
    const QStringList ligands =
        LanqorAradPartition::readLigandsFile(options.text("ligands"), error);
    if (!error.isEmpty())
        options.refuse(tr("--ligands: %1 A text file with one group of atoms on each line is "
                          "needed, such as \"acac 2 3\".")
                           .arg(error));
    return ligands;
}

} // namespace cli
