#include "LanqorInputData.h"

#include "core/physicalConstants_p.h"
#include "input/LanqorInputData_p.h"
#include "input/excitedStates_p.h"
#include "input/lineReader_p.h"
#include "input/orbitalTable_p.h"
#include "input/readerLimits_p.h"
#include "input/textFields_p.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

namespace {

using textFields::Fields;

/// How far one list of states, singlets or triplets, was read.
struct ListStatus
{
    std::vector<int> numbers; // of the states, as printed
    bool isComplete = false;  // the line that ends the list was met
};

/// A row of an absorption table that is not forbidden by spin.
struct Transition
{
    int state = 0;         // number of the state within its multiplicity
    double energy = 0.0;   // cm^-1
    double strength = 0.0; // oscillator strength
    bool isSinglet = true; // from one singlet to another, where the multiplicity is printed
};

/// What an output holds for one geometry. An optimisation prints one such set per step.
struct Step
{
    ExcitedStates data;
    bool isTddft = false;
    ListStatus singlets;
    ListStatus triplets;
    std::vector<Transition> spectrum;
    bool hasSpectrum = false;

    bool hasSinglets() const { return singlets.isComplete && !data.singlets.isEmpty(); }
    bool hasTriplets() const { return triplets.isComplete && !data.triplets.isEmpty(); }
    bool isEmpty() const
    {
        return data.atoms.isEmpty() && data.orbitals.isEmpty() && spectrum.empty() &&
               !data.hasStates();
    }
    /// How much of the excited states is there: a set cut short never displaces a whole one.
    int rank() const
    {
        const int states = hasSinglets() ? (hasTriplets() ? 3 : 2) : (data.hasStates() ? 1 : 0);
        return 2 * states + (hasSpectrum ? 1 : 0);
    }
};

enum class OrbitalReading { Keep, Skip };

/// Reads ORCA outputs of versions 2.6 to 6.
class OrcaParser
{
public:
    OrcaParser(LineReader &reader, OrbitalReading orbitalReading)
        : reader(reader)
        , orbitalReading(orbitalReading)
    {}

    /// Reads to the end of the file and returns the last whole set.
    Step parse();

private:
    void startStep();
    void readGeometry();
    void readOrbitals();
    bool readOrbitalBlockHead(OrbitalTable &table);
    bool readOrbitalRow(std::string_view line, OrbitalTable &table);
    void readSinglets(std::string_view heading);
    void readStates(StateTable &table, ListStatus &status);
    bool readState(std::string_view text, StateTable &table, ListStatus &status);
    void readExcitation(std::string_view text, StateTable &table);
    void readSpectrum();
    void readTransition(std::string_view line);
    void takeSpectrum();
    int singletOf(const Transition &transition) const;

    LineReader &reader;
    OrbitalReading orbitalReading;
    Step best;
    Step current;
    Fields fields;
    std::vector<double> values;
};

/// A line of dashes or asterisks, which frames headings and ends blocks.
bool isRule(std::string_view text)
{
    return textFields::startsWith(text, "---") || textFields::startsWith(text, "***");
}

/// The plain absorption table; those of transition velocities and with spin-orbit coupling have
/// the same columns. Version 2.6 says no more than "ABSORPTION SPECTRUM".
bool isSpectrumHeading(std::string_view text)
{
    return text == "ABSORPTION SPECTRUM" ||
           textFields::startsWith(text,
                                  "ABSORPTION SPECTRUM VIA TRANSITION ELECTRIC DIPOLE MOMENTS");
}

/// Version 6 appends the kind of the wave function in brackets. Tables of localized orbitals
/// have another beginning.
bool isOrbitalHeading(std::string_view text)
{
    return text == "MOLECULAR ORBITALS" || textFields::startsWith(text, "MOLECULAR ORBITALS (");
}

Step OrcaParser::parse()
{
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        // Headings are in capitals; the echo of the input file starts with "|".
        if (text.empty() || text.front() < 'A' || text.front() > 'Z')
            continue;
        if (text == "CARTESIAN COORDINATES (ANGSTROEM)")
            readGeometry();
        else if (isOrbitalHeading(text))
            readOrbitals();
        else if (textFields::contains(text, "EXCITED STATES (SINGLETS)"))
            readSinglets(text);
        else if (textFields::contains(text, "EXCITED STATES (TRIPLETS)"))
            readStates(current.data.triplets, current.triplets);
        else if (isSpectrumHeading(text) && !current.hasSpectrum)
            readSpectrum();
    }
    startStep();
    return std::move(best);
}

/// Keeps the set read so far, unless the one before it has more of the states.
void OrcaParser::startStep()
{
    if (!current.isEmpty() && current.rank() >= best.rank())
        best = std::move(current);
    current = Step();
}

/// A blank line ends the rows; a table cut short gives no geometry.
void OrcaParser::readGeometry()
{
    startStep();
    if (!reader.next() || !isRule(reader.line()))
        reader.unread();
    QVector<Coord> atoms;
    bool ok = true;
    while (ok && reader.next()) {
        textFields::split(reader.line(), fields);
        if (fields.empty()) {
            current.data.atoms = std::move(atoms);
            return;
        }
        double position[3] = {};
        ok = fields.size() == 4 && atoms.size() < maximumAtoms;
        for (std::size_t i = 0; ok && i < 3; ++i)
            position[i] = textFields::toDouble(fields[i + 1], &ok);
        if (ok)
            atoms.append({textFields::toString(fields[0]), position[0], position[1], position[2]});
    }
    reader.unread();
}

/// A restricted table, and the alpha half of an unrestricted one, ends at a blank line.
void OrcaParser::readOrbitals()
{
    if (orbitalReading == OrbitalReading::Skip || current.data.hasOrbitals)
        return;
    if (!reader.next() || !isRule(reader.line()))
        reader.unread();
    OrbitalTable table;
    while (readOrbitalBlockHead(table)) {
        while (reader.next() && readOrbitalRow(reader.line(), table)) {
        }
        reader.unread();
    }
    const bool isEnd = reader.next() && (textFields::isBlank(reader.line()) ||
                                         isRule(textFields::trimmed(reader.line())));
    current.data.hasOrbitals = isEnd && table.finish();
    reader.unread();
    current.data.orbitals = table.takeOrbitals();
}

/// Orbital numbers, energies, occupations, dashes.
bool OrcaParser::readOrbitalBlockHead(OrbitalTable &table)
{
    if (!reader.next())
        return false;
    textFields::split(reader.line(), fields);
    const std::vector<int> numbers = textFields::toInts(fields);
    if (numbers.empty() || !table.startBlock(numbers)) {
        reader.unread();
        return false;
    }
    constexpr int headLines = 3;
    for (int i = 0; i < headLines; ++i) {
        if (!reader.next())
            return false;
    }
    return isRule(textFields::trimmed(reader.line()));
}

/// "  0N   1s         0.000588 -0.275589 ...": atom number (0-based) and element touch, and so may
/// the coefficients, all of which have six decimals.
bool OrcaParser::readOrbitalRow(std::string_view line, OrbitalTable &table)
{
    constexpr std::size_t decimals = 6;
    const auto skip = [&line](std::size_t from, auto predicate) {
        while (from < line.size() && predicate(line[from]))
            ++from;
        return from;
    };
    const auto isBlank = [](char c) { return c == ' '; };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const std::size_t number = skip(0, isBlank);
    const std::size_t element = skip(number, isDigit);
    if (element == number || element == line.size() || line[element] < 'A' || line[element] > 'Z')
        return false;
    const std::size_t elementEnd = skip(element, [](char c) { return c != ' '; });
    const std::size_t label = skip(elementEnd, isBlank);
    const std::size_t labelEnd = skip(label, [](char c) { return c != ' '; });
    std::string_view rest = line.substr(labelEnd);
    values.resize(table.columns());
    for (double &value : values) {
        if (!textFields::takeFixedDecimal(rest, decimals, value))
            return false;
    }
    const std::string_view rowText = line.substr(0, labelEnd);
    if (table.isFirstBlock()) {
        bool ok = false;
        const int atom = textFields::toInt(line.substr(number, element - number), &ok);
        if (!ok || atom >= OrbitalTable::maximumIndex)
            return false;
        table.addLabel(rowText, atom + 1, line.substr(label, labelEnd - label));
    } else if (!table.expectsRow(rowText)) {
        return false;
    }
    table.addCoefficients(values);
    return textFields::isBlank(rest);
}

/// A second list of singlets for the same geometry and orbitals starts a set of its own.
void OrcaParser::readSinglets(std::string_view heading)
{
    if (current.data.hasStates()) {
        Step next;
        next.data.atoms = current.data.atoms;
        next.data.orbitals = current.data.orbitals;
        next.data.hasOrbitals = current.data.hasOrbitals;
        startStep();
        current = std::move(next);
    }
    // Only here: "TD-DFT" stands at many places of any output.
    current.isTddft = textFields::contains(heading, "TD-DFT");
    readStates(current.data.singlets, current.singlets);
}

void OrcaParser::readStates(StateTable &table, ListStatus &status)
{
    table = StateTable();
    status = ListStatus();
    if (!reader.next() || !isRule(reader.line()))
        reader.unread();
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (isRule(text)) {
            status.isComplete = true;
            return;
        }
        if (textFields::contains(text, "EXCITED STATES (")) {
            reader.unread();
            return;
        }
        if (textFields::startsWith(text, "STATE") && textFields::contains(text, "E=")) {
            if (!readState(text, table, status))
                return;
        } else if (!table.isEmpty() && hasArrow(text)) {
            readExcitation(text, table);
        }
    }
}

/// "STATE  1:  E=   0.141737 au      3.857 eV    31107.7 cm**-1"; from version 5 on more follows.
bool OrcaParser::readState(std::string_view text, StateTable &table, ListStatus &status)
{
    bool ok = false;
    double energy = textFields::numberBefore(text, "cm**-1", &ok);
    if (!ok)
        energy = lanqor::wavenumberPerEv * textFields::numberBefore(text, "eV", &ok);
    if (!ok)
        return false;
    text.remove_prefix(std::string_view("STATE").size());
    status.numbers.push_back(textFields::toInt(text.substr(0, text.find(':'))));
    table.addState(energy);
    return true;
}

/// "149a -> 158a  :     0.016258 (c=  0.12750661)"; the weight decides that it is one.
void OrcaParser::readExcitation(std::string_view text, StateTable &table)
{
    bool ok = false;
    double weight = 0.0;
    const auto excitation = parseExcitation(text);
    if (excitation)
        weight = textFields::numberAfter(excitation->rest, ":", &ok);
    if (ok)
        table.addExcitation(*excitation, weight);
    else
        ++current.data.unreadableExcitations;
}

/// A heading of two lines between rules, then the rows, to a blank line or a rule.
void OrcaParser::readSpectrum()
{
    current.spectrum.clear();
    bool hasRows = false;
    for (int rules = 0; reader.next();) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (isRule(text)) {
            ++rules;
            if (rules <= 2)
                continue;
        }
        if (rules > 2 || (rules == 2 && text.empty())) {
            current.hasSpectrum = hasRows;
            reader.unread();
            break;
        }
        if (rules == 2) {
            hasRows = true;
            readTransition(text);
        }
    }
    takeSpectrum();
}

/// Up to version 5 a row is "1   31107.7    321.5   0.022972521 ...", or ends in "spin forbidden";
/// its number may then repeat that of a singlet (version 2.6). In version 6 it is
/// "0-1A  ->  1-3A    1.862241   15020.0   665.8   0.000000000 ...", ordered by energy, the states
/// named by their number within a multiplicity.
void OrcaParser::readTransition(std::string_view line)
{
    Transition transition;
    bool energyOk = false;
    bool strengthOk = false;
    const std::size_t arrow = line.find("->");
    if (arrow == std::string_view::npos) {
        textFields::split(line, fields);
        if (fields.size() < 4)
            return;
        transition.state = textFields::toInt(fields[0]);
        transition.energy = textFields::toDouble(fields[1], &energyOk);
        transition.strength = textFields::toDouble(fields[3], &strengthOk);
    } else {
        const auto multiplicity = [](std::string_view state) {
            const std::size_t dash = state.find('-');
            return dash < state.size() ? textFields::toInt(state.substr(dash + 1, 1)) : 0;
        };
        const std::string_view from = textFields::trimmed(line.substr(0, arrow));
        textFields::split(line.substr(arrow + 2), fields);
        if (fields.size() < 5 || multiplicity(from) != multiplicity(fields[0]))
            return;
        transition.state = textFields::toInt(fields[0].substr(0, fields[0].find('-')));
        transition.isSinglet = multiplicity(from) == 1;
        transition.energy = textFields::toDouble(fields[2], &energyOk);
        transition.strength = textFields::toDouble(fields[4], &strengthOk);
    }
    if (energyOk && strengthOk)
        current.spectrum.push_back(transition);
}

void OrcaParser::takeSpectrum()
{
    for (const Transition &transition : current.spectrum) {
        current.data.spectrumEnergies.append(transition.energy);
        current.data.spectrumStrengths.append(transition.strength);
        const int index = transition.isSinglet ? singletOf(transition) : -1;
        if (index >= 0)
            current.data.singlets.states[index].oscillatorStrength = transition.strength;
    }
}

/// The singlet with the number of the row, unless only another one has its energy.
int OrcaParser::singletOf(const Transition &transition) const
{
    // The two tables may differ in the last printed digit.
    constexpr double tolerance = 0.5; // cm^-1
    const QVector<ExcitateState> &states = current.data.singlets.states;
    const auto hasEnergy = [&](int index) {
        return std::abs(states.at(index).energy - transition.energy) <= tolerance;
    };
    int byNumber = -1;
    int byEnergy = -1;
    for (int i = 0; i < states.size(); ++i) {
        if (current.singlets.numbers[static_cast<std::size_t>(i)] == transition.state)
            byNumber = i;
        if (byEnergy < 0 && hasEnergy(i))
            byEnergy = i;
    }
    return byEnergy >= 0 && (byNumber < 0 || !hasEnergy(byNumber)) ? byEnergy : byNumber;
}

/// The rows of one table of orbital energies: number, occupation, Eh, eV.
QVector<MolecularOrbitalOCC> readOrcaOrbitalEnergies(LineReader &reader)
{
    constexpr int headLines = 5;
    QVector<MolecularOrbitalOCC> table;
    Fields fields;
    for (int i = 0; reader.next(); ++i) {
        textFields::split(reader.line(), fields);
        double row[4] = {};
        bool ok = fields.size() >= 4;
        if (ok)
            row[0] = textFields::toInt(fields[0], &ok);
        for (std::size_t column = 1; ok && column < 4; ++column)
            row[column] = textFields::toDouble(fields[column], &ok);
        if (ok)
            table.append({row[0], row[1], row[3]});
        else if (!table.isEmpty() || i >= headLines)
            break;
    }
    return table;
}

QString missingOrcaSpectrumMessage()
{
    return LanqorInputData::tr(
        "There has been an error during read of the absorption spectrum data from the ORCA "
        "output file. \n");
}

} // namespace

bool LanqorInputData::readCoordFromOrcaOutFile()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    const Step step = OrcaParser(reader, OrbitalReading::Skip).parse();
    if (step.data.atoms.isEmpty())
        return failWith(d->missingCoordinatesMessage());
    d->coord += step.data.atoms;
    return true;
}

bool LanqorInputData::readOutputOrca()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    const Step step = OrcaParser(reader, OrbitalReading::Keep).parse();
    d->isOrcaTDDFT = step.isTddft;
    d->takeExcitedStates(step.data);
    d->takeSpectrum(step.data);
    if (!step.data.hasOrbitals) {
        return failWith(
            tr("LANQOR could not read the molecular orbitals from the ORCA output file: \n"));
    }
    if (!step.hasSinglets()) {
        return failWith(tr("There has been an error during read of the SINGLET states from the "
                           "ORCA output file. \n"));
    }
    if (!step.hasTriplets()) {
        return failWith(tr("There has been an error during read of the TRIPLET states from the "
                           "ORCA output file. \n"));
    }
    if (!step.hasSpectrum)
        return failWith(missingOrcaSpectrumMessage());
    emitProgress(tr(" -> (Read Input Data) All data were successfully loaded from the ORCA output "
                    "file. \n"));
    return true;
}

bool LanqorInputData::readAbsorptionDataOrca()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    const Step step = OrcaParser(reader, OrbitalReading::Skip).parse();
    d->takeSpectrum(step.data);
    if (!step.hasSpectrum)
        return failWith(missingOrcaSpectrumMessage());
    return true;
}

/// The first line holds the number of charges, each further line a charge and its place. Of
/// several charges the most positive one is the ion.
bool LanqorInputData::readChargePointFileOrca(double &x, double &y, double &z)
{
    const QFileInfo output(d->fileName);
    LineReader reader(output.path() + QLatin1Char('/') + output.completeBaseName() +
                      QStringLiteral(".pointcharge"));
    double ion[4] = {-std::numeric_limits<double>::infinity()};
    const int count = reader.open() && reader.next() ? textFields::toInt(reader.line()) : 0;
    bool ok = count > 0;
    Fields fields;
    for (int i = 0; ok && i < count; ++i) {
        double row[4] = {};
        do {
            ok = reader.next();
            textFields::split(reader.line(), fields);
        } while (ok && fields.empty());
        ok = ok && fields.size() >= 4;
        for (std::size_t column = 0; ok && column < 4; ++column)
            row[column] = textFields::toDouble(fields[column], &ok);
        if (ok && row[0] > ion[0])
            std::copy(std::begin(row), std::end(row), std::begin(ion));
    }
    if (!ok)
        return failWith(tr("LANQOR could not read the ORCA point charge file."));
    x = ion[1];
    y = ion[2];
    z = ion[3];
    return true;
}

/// In an unrestricted calculation the list of the spin-up orbitals counts. Version 6 cuts the
/// list off after the first virtual orbitals.
bool LanqorInputData::readMolecularOrbitalOccupancy()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    QVector<MolecularOrbitalOCC> lastTable;
    while (reader.next()) {
        if (textFields::trimmed(reader.line()) == "ORBITAL ENERGIES") {
            const QVector<MolecularOrbitalOCC> table = readOrcaOrbitalEnergies(reader);
            if (!table.isEmpty())
                lastTable = table;
        }
    }
    if (lastTable.isEmpty()) {
        return failWith(
            tr("\nCannot find the molecular orbitals in the desired ORCA output file: \n") +
            d->fileName + tr("\nCheck the file to identify the possible errors."));
    }
    d->molecularOrbitalsOCC += lastTable;
    d->homoMO = -1;
    for (const MolecularOrbitalOCC &orbital : qAsConst(lastTable)) {
        if (orbital.occupancy > 0.0)
            d->homoMO = static_cast<int>(orbital.number);
    }
    d->lumoMO = d->homoMO + 1;
    return true;
}
