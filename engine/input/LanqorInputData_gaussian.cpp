#include "LanqorInputData.h"

#include "core/physicalConstants_p.h"
#include "input/LanqorInputData_p.h"
#include "input/excitedStates_p.h"
#include "input/gaussianOrbitalTable_p.h"
#include "input/lineReader_p.h"
#include "input/readerLimits_p.h"
#include "input/textFields_p.h"

#include <algorithm>
#include <cmath>

namespace {

using textFields::Fields;

/// One list of states with the geometry before it and the orbitals after it.
struct StateList
{
    ExcitedStates data;
    bool isComplete = false; // what follows the list was met; not so in a file that was cut
    bool isDamaged = false;  // by a state without energy
};

enum class OrbitalReading { Keep, Skip };

/// Reads Gaussian outputs of versions 98 to 16, of several jobs or optimisation steps.
class GaussianParser
{
public:
    GaussianParser(LineReader &reader, OrbitalReading orbitalReading)
        : reader(reader)
        , orbitalReading(orbitalReading)
    {}

    /// Reads to the end of the file and returns the last whole list of states; without any, the
    /// last geometry and orbitals.
    StateList parse();

private:
    void readGeometry();
    void readStates();
    StateTable *readState(std::string_view text, ExcitedStates &data);
    static void readExcitation(std::string_view text, StateTable &table, ExcitedStates &data);
    void keepList(StateList &next);
    bool ownsOrbitals() const;
    void readOrbitals();

    LineReader &reader;
    OrbitalReading orbitalReading;
    QVector<Coord> atoms;
    StateList list;
    bool isLatest = true;         // neither another list nor another job since the list
    bool hasSameStructure = true; // the last geometry is that of the list
    Fields fields;
};

/// True when a rigid motion may turn one structure into the other: all distances from the first
/// few atoms agree.
bool isSameStructure(const QVector<Coord> &a, const QVector<Coord> &b)
{
    constexpr double tolerance = 1e-3; // Angstrom
    constexpr int anchors = 8;
    const auto distance = [](const Coord &p, const Coord &q) {
        return std::hypot(p.x - q.x, p.y - q.y, p.z - q.z);
    };
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (a.at(i).label != b.at(i).label)
            return false;
        for (int j = 0; j < std::min(i, anchors); ++j) {
            if (std::abs(distance(a.at(i), a.at(j)) - distance(b.at(i), b.at(j))) > tolerance)
                return false;
        }
    }
    return true;
}

/// The columns are the same under every orientation.
bool isGeometryHeading(std::string_view text)
{
    return textFields::contains(text, "Coordinates (Angstroms)");
}

/// "SavETr:" ends a list from Gaussian 09 on; older versions go straight to the next part.
bool isListEnd(std::string_view text)
{
    return textFields::startsWith(text, "SavETr:") || textFields::startsWith(text, "Leave Link") ||
           textFields::startsWith(text, "*****") ||
           textFields::startsWith(text, "Population analysis") ||
           textFields::startsWith(text, "Normal termination") || isGeometryHeading(text);
}

StateList GaussianParser::parse()
{
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (text.empty() || text.front() < 'A' || text.front() > 'Z')
            continue;
        if (isGeometryHeading(text))
            readGeometry();
        else if (textFields::startsWith(text, "Excitation energies"))
            readStates();
        else if (GaussianOrbitalTable::isHeading(text))
            readOrbitals();
        else if (textFields::startsWith(text, "Normal termination of Gaussian") ||
                 textFields::startsWith(text, "Entering Link 1"))
            isLatest = false;
    }
    if (!list.data.hasStates())
        list.data.atoms = atoms;
    return std::move(list);
}

/// "      1          6           0       -0.131829   -0.000001   -0.000286" until a dashed line:
/// number, atomic number, type, coordinates. All orientations of one structure give the same
/// distances.
void GaussianParser::readGeometry()
{
    atoms.clear();
    hasSameStructure = false;
    constexpr int headLines = 2; // the second heading and a rule
    for (int i = 0; i < headLines; ++i) {
        if (!reader.next())
            return;
    }
    QVector<Coord> rows;
    bool ok = true;
    for (int number = 1; ok && reader.next(); ++number) {
        const std::string_view line = reader.line();
        textFields::split(line, fields);
        if (textFields::startsWith(textFields::trimmed(line), "-----")) {
            atoms = std::move(rows);
            hasSameStructure = isSameStructure(atoms, list.data.atoms);
            return;
        }
        int atomicNumber = 0;
        double position[3] = {};
        ok = fields.size() >= 5 && number <= maximumAtoms && textFields::toInt(fields[0]) == number;
        if (ok)
            atomicNumber = textFields::toInt(fields[1], &ok);
        for (std::size_t i = 0; ok && i < 3; ++i)
            position[i] = textFields::toDouble(fields[fields.size() - 3 + i], &ok);
        // Dummy atoms have no place in the numbering of the orbital table.
        if (ok && atomicNumber >= 0) {
            rows.append({LanqorInputData::getElementSymbol(atomicNumber), position[0], position[1],
                         position[2]});
        }
    }
    reader.unread();
}

void GaussianParser::readStates()
{
    StateList next;
    next.data.atoms = atoms;
    StateTable *table = nullptr; // of the last state
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (isListEnd(text) || textFields::startsWith(text, "Excitation energies")) {
            next.isComplete = next.data.hasStates();
            reader.unread();
            break;
        }
        if (textFields::startsWith(text, "Excited State")) {
            table = readState(text, next.data);
            next.isDamaged = table == nullptr;
            if (next.isDamaged)
                break;
        } else if (table && hasArrow(text)) {
            readExcitation(text, *table, next.data);
        }
    }
    keepList(next);
}

/// "Excited State   1:      Singlet-A      2.0353 eV  609.16 nm  f=2.4970  <S**2>=0.000"
StateTable *GaussianParser::readState(std::string_view text, ExcitedStates &data)
{
    bool ok = false;
    const double energy = lanqor::wavenumberPerEv * textFields::numberBefore(text, " eV", &ok);
    if (!ok)
        return nullptr;
    const double strength = textFields::numberAfter(text, "f=");
    const bool isSinglet = textFields::contains(text, "Singlet");
    if (isSinglet) {
        data.spectrumEnergies.append(energy);
        data.spectrumStrengths.append(strength);
    } else if (!textFields::contains(text, "Triplet")) {
        ++data.unnamedStates;
    }
    StateTable &table = isSinglet ? data.singlets : data.triplets;
    table.addState(energy, strength);
    return &table;
}

/// "103 ->108         0.16148": from orbital 100 on the arrow touches the number. Coefficients of a
/// closed shell are normalised to 1/2, for both spins are in one; those of spin orbitals to 1.
void GaussianParser::readExcitation(std::string_view text, StateTable &table, ExcitedStates &data)
{
    const auto excitation = parseExcitation(text);
    if (!excitation) {
        ++data.unreadableExcitations;
        return;
    }
    const double coefficient = textFields::toDouble(excitation->rest);
    table.addExcitation(*excitation, (excitation->hasSpin ? 1.0 : 2.0) * coefficient * coefficient);
}

/// A list cut short never displaces a whole one.
void GaussianParser::keepList(StateList &next)
{
    isLatest = next.data.hasStates() && (next.isComplete || !list.isComplete);
    if (isLatest) {
        list = std::move(next);
        hasSameStructure = true;
    }
}

/// The table belongs to the list before it when neither the structure nor the job has changed;
/// another job may use another basis.
bool GaussianParser::ownsOrbitals() const
{
    if (!list.data.hasStates())
        return true;
    return isLatest && hasSameStructure && !list.data.hasOrbitals;
}

void GaussianParser::readOrbitals()
{
    if (orbitalReading == OrbitalReading::Skip || !ownsOrbitals())
        return;
    GaussianOrbitalTable table;
    list.data.hasOrbitals = table.read(reader);
    list.data.orbitals = table.takeOrbitals();
}

QString missingGaussianStatesMessage()
{
    return LanqorInputData::tr(
        "There has been an error during read of the excited states from the GAUSSIAN output "
        "file. \n");
}

} // namespace

bool LanqorInputData::readOutputGaussian()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    const StateList list = GaussianParser(reader, OrbitalReading::Keep).parse();
    d->coord += list.data.atoms;
    d->takeExcitedStates(list.data);
    d->takeSpectrum(list.data);
    if (!list.data.hasStates() || list.isDamaged)
        return failWith(missingGaussianStatesMessage());
    if (!list.data.hasOrbitals) {
        return failWith(
            tr("LANQOR could not read the molecular orbitals from the GAUSSIAN output file: \n"));
    }
    if (list.data.atoms.isEmpty())
        return failWith(d->missingCoordinatesMessage());
    emitProgress(tr(" -> (Read Input Data) All data were successfully loaded from the Gaussian "
                    "output file. \n"));
    return true;
}

bool LanqorInputData::readAbsorptionDataGaussian()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    const StateList list = GaussianParser(reader, OrbitalReading::Skip).parse();
    d->takeSpectrum(list.data);
    if (!list.data.hasStates() || list.isDamaged)
        return failWith(missingGaussianStatesMessage());
    return true;
}
