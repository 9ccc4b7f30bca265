#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/excitedStates_p.h"
#include "input/lineReader_p.h"
#include "input/orbitalTable_p.h"
#include "input/readerLimits_p.h"
#include "input/textFields_p.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <vector>

// Geometry and orbitals follow outputs of ZINDO 99.1. No public output shows the part on
// configuration interaction: of that part only the texts below are known, not the columns. Each
// reader therefore takes the number that follows a text, up to the next blank.

namespace {

using textFields::Fields;

constexpr std::string_view energyKeywords[] = {"E(SY,CM-1)=", "ENGY(CM-1)="}; // cm^-1 follows
constexpr std::string_view strengthKeyword = "OSC       =";
constexpr std::string_view endOfStates = "ZIO file usage";
constexpr std::string_view endOfList = "NO SINGLE COMPONENT GT";

/// "Eu" from "EU" or "Eu".
QString elementLabel(std::string_view text)
{
    QString label = textFields::toString(text).toLower();
    if (!label.isEmpty())
        label[0] = label.at(0).toUpper();
    return label;
}

/// "  1   6    4.0000    2.0000   2   C    0.62950      -0.12150      -2.33960": number, atomic
/// number, charges, shell, element, coordinates. The element may be missing.
bool parseAtom(const Fields &fields, int number, Coord &atom)
{
    if (fields.size() < 5 || number > maximumAtoms || textFields::toInt(fields[0]) != number)
        return false;
    double position[3] = {};
    bool ok = false;
    const int atomicNumber = textFields::toInt(fields[1], &ok);
    for (std::size_t i = 0; ok && i < 3; ++i)
        position[i] = textFields::toDouble(fields[fields.size() - 3 + i], &ok);
    if (!ok)
        return false;
    const std::string_view element = fields[fields.size() - 4];
    const bool isSymbol = std::isalpha(static_cast<unsigned char>(element.front())) != 0;
    atom = {isSymbol ? elementLabel(element) : LanqorInputData::getElementSymbol(atomicNumber),
            position[0], position[1], position[2]};
    return true;
}

/// The rows under the heading that was just read, to the blank line after them; empty when none
/// follows or one is damaged.
QVector<Coord> readGeometry(LineReader &reader)
{
    constexpr int blankLines = 3;
    QVector<Coord> atoms;
    Fields fields;
    for (int i = 0; reader.next(); ++i) {
        textFields::split(reader.line(), fields);
        Coord atom;
        if (parseAtom(fields, atoms.size() + 1, atom))
            atoms.append(atom);
        else if (!fields.empty() || (atoms.isEmpty() && i >= blankLines))
            return {};
        else if (!atoms.isEmpty())
            return atoms;
    }
    return {};
}

/// The orbitals stand three side by side, each with its five largest atomic orbitals only:
///      MO #   1   a  -1.777633    MO #   2   a  -1.571818
///      C  10 2s        -0.422     C   5 2s        -0.333
class OrbitalListParser
{
public:
    explicit OrbitalListParser(LineReader &reader)
        : reader(reader)
    {}

    /// Reads the list under the heading that was just read. True when it is there to its end.
    bool parse(QVector<MolecularOrbital> &orbitals);

private:
    static constexpr std::string_view headKeyword = "MO #";
    static constexpr std::size_t orbitalsPerLine = 3;
    static constexpr std::size_t firstColumn = 2;
    static constexpr std::size_t columnWidth = 27;

    std::string_view cell(std::string_view line, std::size_t column) const;
    bool startOrbitals(std::string_view line, QVector<MolecularOrbital> &orbitals);
    bool addTerms(std::string_view line, QVector<MolecularOrbital> &orbitals);
    static bool isTerm(std::string_view text);
    bool addTerm(std::string_view text, MolecularOrbital &orbital);

    LineReader &reader;
    Fields fields;
    std::array<int, orbitalsPerLine> indices = {-1, -1, -1};
};

bool OrbitalListParser::parse(QVector<MolecularOrbital> &orbitals)
{
    while (reader.next()) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (text.empty())
            continue;
        const bool isHead = textFields::startsWith(text, headKeyword);
        if (isHead ? !startOrbitals(reader.line(), orbitals) : !addTerms(reader.line(), orbitals)) {
            // The level diagram follows, under a line of underscores, or another heading.
            const bool isEnd = !isHead && !isTerm(cell(reader.line(), 0));
            reader.unread();
            return isEnd && !orbitals.isEmpty();
        }
    }
    return false;
}

std::string_view OrbitalListParser::cell(std::string_view line, std::size_t column) const
{
    const std::size_t begin = firstColumn + column * columnWidth;
    return begin < line.size() ? textFields::trimmed(line.substr(begin, columnWidth))
                               : std::string_view();
}

bool OrbitalListParser::startOrbitals(std::string_view line, QVector<MolecularOrbital> &orbitals)
{
    for (std::size_t column = 0; column < orbitalsPerLine; ++column) {
        indices[column] = -1;
        const std::string_view text = cell(line, column);
        if (text.empty())
            continue;
        const std::size_t number = text.find_first_not_of(' ', headKeyword.size());
        const std::size_t end = std::min(text.find(' ', number), text.size());
        if (!textFields::startsWith(text, headKeyword) || number >= end)
            return false;
        const int orbital = textFields::toInt(text.substr(number, end - number));
        if (orbital < 1 || orbital > OrbitalTable::maximumIndex)
            return false;
        const int index = orbital - 1;
        if (index >= orbitals.size())
            orbitals.resize(index + 1);
        indices[column] = index;
    }
    return true;
}

bool OrbitalListParser::addTerms(std::string_view line, QVector<MolecularOrbital> &orbitals)
{
    bool hasTerm = false;
    for (std::size_t column = 0; column < orbitalsPerLine; ++column) {
        const std::string_view text = cell(line, column);
        if (text.empty())
            continue;
        if (indices[column] < 0 || !addTerm(text, orbitals[indices[column]]))
            return false;
        hasTerm = true;
    }
    return hasTerm;
}

/// True for a text that begins like a term of an orbital: an element and a number.
bool OrbitalListParser::isTerm(std::string_view text)
{
    constexpr std::size_t symbolLength = 2;
    const std::size_t symbolEnd = text.find_first_of(" 0123456789");
    const std::size_t next = text.find_first_not_of(' ', symbolEnd);
    return symbolEnd > 0 && symbolEnd <= symbolLength && next != std::string_view::npos &&
           std::isdigit(static_cast<unsigned char>(text[next])) != 0;
}

/// Element, atom number, label, coefficient; element and number may touch.
bool OrbitalListParser::addTerm(std::string_view text, MolecularOrbital &orbital)
{
    const std::size_t number = text.find_first_of("0123456789");
    if (number == std::string_view::npos || number == 0)
        return false;
    textFields::split(text.substr(number), fields);
    if (fields.size() != 3)
        return false;
    bool atomOk = false;
    bool coefficientOk = false;
    const int atom = textFields::toInt(fields[0], &atomOk);
    const double coefficient = textFields::toDouble(fields[2], &coefficientOk);
    if (!atomOk || !coefficientOk)
        return false;
    orbital.atomNumbers.append(atom);
    orbital.atomicOrbitals.append(textFields::toString(fields[1]));
    orbital.coefficients.append(coefficient);
    return true;
}

/// Energy of a state, cm^-1, if the line holds one. Here and for the strength, asterisks (the
/// value does not fit its field) and a missing number read as 0.
std::optional<double> stateEnergy(std::string_view line)
{
    for (const std::string_view keyword : energyKeywords) {
        if (textFields::contains(line, keyword))
            return textFields::numberAfter(line, keyword);
    }
    return std::nullopt;
}

bool isListHeading(std::string_view line, std::string_view own, std::string_view other)
{
    return textFields::contains(line, own) && !textFields::contains(line, other);
}

bool isSingletHeading(std::string_view line)
{
    return isListHeading(line, "SINGLETS", "TRIPLETS");
}

bool isTripletHeading(std::string_view line)
{
    return isListHeading(line, "TRIPLETS", "SINGLETS");
}

/// Reads the lists of states behind the orbitals.
class StatesParser
{
public:
    explicit StatesParser(LineReader &reader)
        : reader(reader)
    {}

    void parse(ExcitedStates &data);
    bool hasSinglets() const { return singletsEnded; }
    bool hasTriplets() const { return tripletsEnded; }

private:
    bool readHeading(std::string_view line, ExcitedStates &data);
    void readComponents(std::string_view line);

    LineReader &reader;
    Fields fields;
    StateTable *list = nullptr;   // that is being read
    bool isComponentPart = false; // of the current state
    bool singletsEnded = false;
    bool tripletsEnded = false;
};

void StatesParser::parse(ExcitedStates &data)
{
    while (!tripletsEnded && reader.next()) {
        const std::string_view line = reader.line();
        if (readHeading(line, data) || !list)
            continue;
        if (const auto energy = stateEnergy(line)) {
            list->addState(*energy);
            isComponentPart = false;
        }
        if (list->isEmpty())
            continue;
        if (textFields::contains(line, strengthKeyword))
            list->states.last().oscillatorStrength = textFields::numberAfter(line, strengthKeyword);
        readComponents(line);
    }
}

/// Headings and ends of the lists; true when @p line is one.
bool StatesParser::readHeading(std::string_view line, ExcitedStates &data)
{
    const bool isEnd =
        textFields::contains(line, endOfList) || textFields::contains(line, endOfStates);
    if (isEnd || isTripletHeading(line)) {
        singletsEnded = singletsEnded || list == &data.singlets;
        tripletsEnded = isEnd && list == &data.triplets;
        list = isEnd ? nullptr : &data.triplets;
        return true;
    }
    if (!isSingletHeading(line))
        return false;
    if (!singletsEnded)
        list = &data.singlets;
    return true;
}

/// Orbital numbers: on both sides of every arrow, or the last two whole numbers of a line in the
/// part that "COMPONENT" opens.
void StatesParser::readComponents(std::string_view line)
{
    constexpr std::string_view componentKeyword = "COMPONENT";
    const std::size_t keyword = line.find(componentKeyword);
    if (keyword != std::string_view::npos) {
        isComponentPart = true;
        line.remove_prefix(keyword + componentKeyword.size());
    }
    bool hadArrow = false;
    while (hasArrow(line)) {
        hadArrow = true;
        const std::size_t arrow = std::min(line.find("->"), line.find("<-"));
        const std::size_t number = line.substr(0, arrow).find_last_not_of(" -");
        const std::size_t blank = line.substr(0, arrow).find_last_of(' ', number);
        const auto excitation =
            parseExcitation(line.substr(blank == std::string_view::npos ? 0 : blank + 1));
        if (excitation)
            list->addExcitation(*excitation, 0.0);
        line.remove_prefix(arrow + 2);
    }
    if (hadArrow || !isComponentPart)
        return;
    std::vector<int> numbers;
    textFields::split(line, fields);
    for (const std::string_view field : fields) {
        bool ok = false;
        const int number = textFields::toInt(field, &ok);
        if (ok && number >= 0 && number <= OrbitalTable::maximumIndex)
            numbers.push_back(number);
    }
    if (numbers.size() >= 2)
        list->addExcitation({numbers[numbers.size() - 2], numbers.back(), false, {}}, 0.0);
}

} // namespace

bool LanqorInputData::readCoordFromZindoOutFile()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    // The word comes again (moments of inertia, populations with rounded coordinates): the first
    // table counts.
    QVector<Coord> atoms;
    while (atoms.isEmpty() && reader.next()) {
        if (textFields::contains(reader.line(), "COORDINATES"))
            atoms = readGeometry(reader);
    }
    if (atoms.isEmpty()) {
        return failWith(tr("There has been an error during read in cartesian coordinates from the "
                           "desired Zindo output file (.zin): \n") +
                        d->fileName);
    }
    d->coord += atoms;
    return true;
}

bool LanqorInputData::readOutputZindo()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    ExcitedStates results;
    // The heading comes again over the frozen core orbitals, numbered from 1: the first counts.
    while (results.orbitals.isEmpty() && reader.next()) {
        if (textFields::contains(reader.line(), "RHF/ROHF - MOs follow"))
            results.hasOrbitals = OrbitalListParser(reader).parse(results.orbitals);
    }
    if (!results.hasOrbitals)
        reader.open(); // the search for them has passed the states
    StatesParser states(reader);
    states.parse(results);
    d->takeExcitedStates(results);
    if (!results.hasOrbitals) {
        return failWith(
            tr("LANQOR could not read the molecular orbitals from the Zindo output file: \n"));
    }
    if (!states.hasSinglets() || results.singlets.isEmpty()) {
        return failWith(tr("There has been an error during read of the SINGLET states from the "
                           "ZINDO output file. \n"));
    }
    if (!states.hasTriplets() || results.triplets.isEmpty()) {
        return failWith(tr("There has been an error during read of the TRIPLET states from the "
                           "ZINDO output file. \n"));
    }
    return true;
}

bool LanqorInputData::readAbsorptionDataZindo()
{
    LineReader reader(d->file());
    if (!reader.open())
        return failWith(missingFile(d->fileName));
    ExcitedStates results;
    bool isSpectrum = false;
    while (reader.next()) {
        const std::string_view line = reader.line();
        isSpectrum = isSpectrum || textFields::contains(line, "CONFIGURATION INTERACTION");
        if (!isSpectrum)
            continue;
        // Triplets are forbidden, and a list of singlets after the spectrum would repeat it.
        const bool isEnd = textFields::contains(line, endOfStates) || isTripletHeading(line) ||
                           isSingletHeading(line);
        if (isEnd && !results.spectrumEnergies.isEmpty())
            break;
        if (const auto energy = stateEnergy(line)) {
            results.spectrumEnergies.append(*energy);
            results.spectrumStrengths.append(0.0);
        }
        if (!results.spectrumEnergies.isEmpty() && textFields::contains(line, strengthKeyword))
            results.spectrumStrengths.last() = textFields::numberAfter(line, strengthKeyword);
    }
    d->takeSpectrum(results);
    if (results.spectrumEnergies.isEmpty()) {
        return failWith(tr("There has been an error during read of the absorption spectrum data "
                           "from the ZINDO output file. \n"));
    }
    return true;
}
