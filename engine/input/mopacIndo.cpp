#include "input/mopacIndo_p.h"

#include "input/readerLimits_p.h"

#include <cmath>
#include <limits>
#include <utility>

// INDO/S in MOPAC: J. E. Gieseking, J. Comput. Chem. 42, 365 (2021). The columns are those of
// outputs of version 22.0.6.

namespace {

using textFields::contains;
using textFields::startsWith;

/// MOPAC's own constants: hartree in cm^-1 and in eV. Its column of wavenumbers is without
/// decimals, that of energies in eV has seven.
constexpr double wavenumberPerEv = 219475.3 / 27.2114;

/// The text in some columns of a line, as far as the line reaches.
std::string_view columns(std::string_view line, std::size_t begin, std::size_t width)
{
    return begin < line.size() ? textFields::trimmed(line.substr(begin, width))
                               : std::string_view();
}

double valueOf(std::string_view text)
{
    bool ok = false;
    const double value = textFields::toDouble(text, &ok);
    return ok ? value : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

MopacIndoJob MopacIndoReader::read()
{
    MopacIndoJob whole;
    while (reader.next()) {
        const std::string_view line = reader.line();
        if (!contains(line, "CALCULATION RESULTS")) {
            takeLine(line);
            continue;
        }
        const bool isIndo = contains(line, "INDO CALCULATION RESULTS");
        finishJob();
        if (job.isWhole)
            whole = std::move(job);
        job = MopacIndoJob();
        job.isIndo = isIndo;
        table = OrbitalTable();
        configurations.clear();
        isDamaged = false;
        describedStates = 0;
    }
    finishJob();
    return job.isWhole || !whole.isWhole ? std::move(job) : std::move(whole);
}

void MopacIndoReader::finishJob()
{
    const bool hasOrbitals = table.finish();
    job.orbitals = table.takeOrbitals();
    job.configurationCount = static_cast<int>(configurations.size());
    job.isWhole = hasOrbitals && !isDamaged && job.hasStates() &&
                  describedStates == job.states.states.size() + 1; // the ground state, too
}

void MopacIndoReader::takeLine(std::string_view line)
{
    const std::string_view text = textFields::trimmed(line);
    if (job.atoms.isEmpty() && ((startsWith(text, "ATOM   CHEMICAL") && contains(text, " X ")) ||
                                text == "CARTESIAN COORDINATES")) {
        readGeometry();
    } else if (startsWith(text, "ROOT NO.")) {
        readOrbitals(text.substr(std::string_view("ROOT NO.").size()));
    } else if (contains(line, "NO. OF DOUBLY OCCUPIED LEVELS =")) {
        job.doublyOccupied =
            static_cast<int>(textFields::numberAfter(line, "NO. OF DOUBLY OCCUPIED LEVELS ="));
    } else if (contains(line, " WRTCONF =")) {
        job.printLimit = textFields::numberAfter(line, "WRTCONF =");
    } else if (contains(line, " excitations FROM orbs")) {
        if (startsWith(text, "SINGLE"))
            job.window = textFields::toString(text).simplified();
        else
            job.hasOtherExcitations = true;
    } else if (contains(line, "spin-adapted configurations of multiplicity=")) {
        job.multiplicity = static_cast<int>(textFields::numberAfter(line, "multiplicity="));
        readConfigurations();
    } else if (startsWith(text, "CI trans.")) {
        readStates();
    } else if (startsWith(text, "Major CI contributions")) {
        readContributions();
    } else if (contains(line, "Error and normal termination messages")) {
        readComplaint();
    }
}

/// "     1       Y          0.01728365     -0.61624600      0.00541614"
void MopacIndoReader::readGeometry()
{
    std::string row;
    while (reader.next()) {
        textFields::copyWithoutMarks(reader.line(), row);
        textFields::split(row, fields);
        constexpr std::size_t rowFields = 5;
        if (fields.size() >= rowFields && job.atoms.size() < maximumAtoms &&
            textFields::toInt(fields[0]) == job.atoms.size() + 1) {
            job.atoms.append({textFields::toString(fields[1]), textFields::toDouble(fields[2]),
                              textFields::toDouble(fields[3]), textFields::toDouble(fields[4])});
        } else if (!job.atoms.isEmpty()) {
            return reader.unread();
        } else if (!fields.empty() && textFields::isInteger(fields[0])) {
            return;
        }
    }
}

/// A block of up to six orbitals: numbers from 1, energies in eV, then a row for each atomic
/// orbital and blank lines between the atoms.
void MopacIndoReader::readOrbitals(std::string_view numbers)
{
    textFields::split(numbers, fields);
    std::vector<int> indices = textFields::toInts(fields);
    for (int &index : indices)
        --index;
    if (!table.startBlock(indices) || !readEnergies(indices)) {
        isDamaged = true;
        return;
    }
    while (reader.next()) {
        if (!textFields::isBlank(reader.line()) && !readOrbitalRow(reader.line()))
            return reader.unread();
    }
}

bool MopacIndoReader::readEnergies(const std::vector<int> &indices)
{
    constexpr std::size_t firstColumn = 8;
    constexpr std::size_t width = 12;
    do {
        if (!reader.next())
            return false;
    } while (textFields::isBlank(reader.line()));
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const auto index = static_cast<std::size_t>(indices[i]);
        if (index >= job.orbitalEnergies.size())
            job.orbitalEnergies.resize(index + 1, std::numeric_limits<double>::quiet_NaN());
        job.orbitalEnergies[index] =
            valueOf(columns(reader.line(), firstColumn + i * width, width));
    }
    return true;
}

/// " PX  Y   1  -0.01358    -0.02928 ...": label, element, atom number, then coefficients that may
/// touch, the first ten columns wide and the others twelve.
bool MopacIndoReader::readOrbitalRow(std::string_view line)
{
    constexpr std::size_t labelWidth = 10;
    constexpr std::size_t firstWidth = 10;
    constexpr std::size_t width = 12;
    const std::string_view rowText = line.substr(0, labelWidth);
    bool ok = line.size() > labelWidth && line.front() == ' ';
    const int atom = ok ? textFields::toInt(columns(rowText, 6, 4), &ok) : 0;
    if (!ok || atom < 1 || atom > maximumAtoms ||
        (!table.isFirstBlock() && !table.expectsRow(rowText)))
        return false;
    if (table.isFirstBlock())
        table.addLabel(rowText, atom, columns(rowText, 0, 3));
    values.clear();
    for (std::size_t i = 0; i < table.columns(); ++i) {
        const std::size_t begin = i == 0 ? labelWidth : labelWidth + firstWidth + (i - 1) * width;
        values.push_back(valueOf(columns(line, begin, i == 0 ? firstWidth : width)));
    }
    table.addCoefficients(values);
    return true;
}

void MopacIndoReader::readConfigurations()
{
    configurations.clear();
    while (reader.next()) {
        const std::string_view line = reader.line();
        if (contains(line, ")->(")) {
            if (!readConfiguration(line))
                isDamaged = true;
        } else if (!configurations.empty()) {
            return reader.unread();
        }
    }
}

/// "   2      4.300  34685.  1  1  6.8504 0.984073 1  1 ( 154)->( 157   )": number (asterisks above
/// 9999), energies of this configuration alone, ..., orbitals; none of the reference.
bool MopacIndoReader::readConfiguration(std::string_view line)
{
    const std::size_t open = line.find('(');
    const std::size_t arrow = line.find(")->(");
    const std::size_t close = line.find(')', arrow + 1);
    bool isNumber = false;
    const std::string_view numberText = columns(line, 0, 4);
    const int number = textFields::toInt(numberText, &isNumber);
    const int expected = static_cast<int>(configurations.size()) + 1;
    configurations.emplace_back(0, 0);
    if (open > arrow || close == std::string_view::npos ||
        (isNumber ? number != expected : !startsWith(numberText, "*")))
        return false;
    textFields::split(line.substr(open + 1, arrow - open - 1), fields);
    const std::vector<int> from = textFields::toInts(fields);
    const bool isReference = fields.empty();
    textFields::split(line.substr(arrow + 4, close - arrow - 4), fields);
    const std::vector<int> to = textFields::toInts(fields);
    if (isReference)
        return fields.empty() && expected == 1;
    if (from.size() > 1 || to.size() > 1)
        job.hasOtherExcitations = true;
    if (from.empty() || to.empty() || from[0] < 1 || to[0] < 1 ||
        from[0] > OrbitalTable::maximumIndex || to[0] > OrbitalTable::maximumIndex)
        return false;
    configurations.back() = {from[0], to[0]};
    return true;
}

/// Rows from state 2 on, for 1 is the ground state, up to a blank line.
void MopacIndoReader::readStates()
{
    job.states = StateTable();
    job.coefficients.clear();
    while (reader.next()) {
        const std::string_view line = reader.line();
        const bool isRow = textFields::isInteger(columns(line, 0, 4));
        if (isRow && !readState(line))
            isDamaged = true;
        if (isRow || job.states.isEmpty())
            continue;
        isDamaged = isDamaged || !textFields::isBlank(line);
        return;
    }
    isDamaged = true;
}

/// "   3      8.1753736    65939.    151.66  0.026984 ...": number, symmetry, eV, cm^-1, nm,
/// oscillator strength.
bool MopacIndoReader::readState(std::string_view line)
{
    constexpr std::size_t energyColumn = 8;
    constexpr std::size_t energyWidth = 11;
    constexpr std::size_t strengthColumn = 39;
    constexpr std::size_t strengthWidth = 10;
    const double energy = valueOf(columns(line, energyColumn, energyWidth));
    const double strength = valueOf(columns(line, strengthColumn, strengthWidth));
    job.states.addState(std::isfinite(energy) ? energy * wavenumberPerEv : 0.0,
                        std::isfinite(strength) ? strength : 0.0);
    job.coefficients.append(QVector<double>());
    return std::isfinite(energy) && std::isfinite(strength) &&
           textFields::toInt(columns(line, 0, 4)) == job.states.states.size() + 1;
}

/// "State    2  3.7798     CI coeff  CI percent", then "    Config       7   0.52574317 0.27640588"
/// for each, then " Total coeff printed             0.98".
void MopacIndoReader::readContributions()
{
    describedState = 0;
    while (reader.next()) {
        textFields::split(reader.line(), fields);
        if (fields.empty())
            continue;
        if (fields[0] == "State" && fields.size() > 1) {
            describedState = textFields::toInt(fields[1]);
            isDamaged = isDamaged || describedState != describedStates + 1 ||
                        describedState > job.states.states.size() + 1;
        } else if (fields[0] == "Config") {
            isDamaged = isDamaged || !takeContribution();
        } else if (fields[0] == "Total") {
            ++describedStates;
        } else {
            return reader.unread();
        }
        if (isDamaged)
            return;
    }
}

bool MopacIndoReader::takeContribution()
{
    constexpr std::size_t rowFields = 4; // "Config", number, coefficient, its square
    if (fields.size() != rowFields || describedState < 1)
        return false;
    bool ok[3] = {};
    const int number = textFields::toInt(fields[1], &ok[0]);
    const double coefficient = textFields::toDouble(fields[2], &ok[1]);
    const double weight = textFields::toDouble(fields[3], &ok[2]);
    if (!ok[0] || !ok[1] || !ok[2] || number < 1 ||
        number > static_cast<int>(configurations.size()))
        return false;
    if (describedState == 1) {
        constexpr double almostAll = 0.999;
        job.isReferenceGround = number == 1 && weight > almostAll;
        return true;
    }
    const auto orbitals = configurations[static_cast<std::size_t>(number - 1)];
    const int state = describedState - 2;
    job.states.states[state].configurations << orbitals.first << orbitals.second;
    job.states.weights[state] << weight;
    job.coefficients[state] << coefficient;
    return true;
}

/// " *  Data are not available for Europium.      *", in a box of asterisks.
void MopacIndoReader::readComplaint()
{
    constexpr int longestBox = 20; // lines
    for (int i = 0; i < longestBox && job.complaint.isEmpty() && reader.next(); ++i) {
        QString text = textFields::toString(reader.line());
        text = text.remove(QLatin1Char('*')).simplified();
        if (text.startsWith(QLatin1String("JOB ENDED")))
            return;
        job.complaint = text;
    }
}
