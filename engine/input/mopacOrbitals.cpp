#include "input/occupiedOrbitals_p.h"

#include "input/lineReader_p.h"
#include "input/mopacOutput_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

using namespace textFields;

namespace {

constexpr std::string_view functionNames[] = {"S", "Px", "Py", "Pz", "x2", "xz", "z2", "yz", "xy"};

/// Place of a name in functionNames; the first four are those of getAtomicOrbital().
int functionNumber(std::string_view name)
{
    const auto found = std::find(std::begin(functionNames), std::end(functionNames), name);
    return found == std::end(functionNames) ? -1
                                            : static_cast<int>(found - std::begin(functionNames));
}

/// The columns of a block of an orbital table, each an orbital: those that are occupied and follow
/// the orbitals kept so far without a gap are kept, the others read over.
class OrbitalColumns
{
public:
    /// Starts a block of orbitals of these @p numbers (from 1) and energies.
    void start(std::vector<OccupiedOrbital> &orbitals, const std::vector<int> &numbers,
               const std::vector<float> &energies, int occupied);
    std::size_t count() const { return columns.size(); }
    /// Adds to the orbital of @p column, if it is kept.
    void add(std::size_t column, const OrbitalEntry &entry);

private:
    std::vector<OccupiedOrbital *> columns; // null for an orbital that is not kept
};

void OrbitalColumns::start(std::vector<OccupiedOrbital> &orbitals, const std::vector<int> &numbers,
                           const std::vector<float> &energies, int occupied)
{
    columns.clear();
    const std::size_t before = orbitals.size();
    std::vector<bool> isKept;
    for (std::size_t i = 0; i < numbers.size() && i < energies.size(); ++i) {
        isKept.push_back(numbers[i] == int(orbitals.size()) + 1 && numbers[i] <= occupied);
        if (isKept.back())
            orbitals.push_back({energies[i], {}});
    }
    std::size_t next = before;
    for (const bool kept : isKept)
        columns.push_back(kept ? &orbitals[next++] : nullptr);
}

void OrbitalColumns::add(std::size_t column, const OrbitalEntry &entry)
{
    if (columns[column])
        columns[column]->entries.push_back(entry);
}

class MopacOrbitalReader
{
    Q_DECLARE_TR_FUNCTIONS(LanqorIndicesCalculation)

public:
    MopacOrbitalReader(const InputFile &file, int atomCount, std::vector<OccupiedOrbital> &orbitals)
        : fileName(file.fileName())
        , lines(file)
        , atomCount(atomCount)
        , orbitals(orbitals)
    {}

    QString error;

    bool read();

private:
    enum class Block { Complete, NotOne, Damaged };

    bool readTable();
    Block readBlock();
    bool readRoots();
    bool readEnergies();
    Block readRows();
    bool keepRow(int function);
    bool failAtLine();
    bool nextFilledLine();
    bool isComplete() const { return occupied > 0 && int(orbitals.size()) >= occupied; }
    bool reportMissingOrbitals();

    QString fileName;
    LineReader lines;
    int atomCount;
    std::vector<OccupiedOrbital> &orbitals;
    Fields fields;

    int occupied = 0; // number of doubly occupied orbitals
    int firstRoot = 0;
    int lastRoot = 0;
    int rowsOfFirstBlock = 0;
    std::vector<int> roots; // of the current block, with its energies
    std::vector<float> energies;
    OrbitalColumns columns;
};

bool MopacOrbitalReader::read()
{
    if (!lines.open()) {
        error = missingFile(fileName);
        return false;
    }
    while (lines.next()) {
        const std::string_view line = lines.line();
        if (isMopacFilledLevels(line)) {
            occupied = mopacFilledLevels(line).value_or(0);
        } else if (trimmed(line) == "EIGENVECTORS") {
            if (!readTable())
                return false;
            if (firstRoot > 0)
                break;
        }
    }
    return isComplete() || reportMissingOrbitals();
}

/// Reads blocks of orbitals until the occupied ones are complete or the table ends.
bool MopacOrbitalReader::readTable()
{
    while (!isComplete()) {
        const Block block = readBlock();
        if (block != Block::Complete)
            return block == Block::NotOne;
    }
    return true;
}

MopacOrbitalReader::Block MopacOrbitalReader::readBlock()
{
    if (!readRoots() || !readEnergies())
        return Block::NotOne;
    if (!nextFilledLine() || functionNumber(fields[0]) < 0) {
        lines.unread(); // a table of vibrations
        return Block::NotOne;
    }
    lines.unread();
    if (firstRoot == 0)
        firstRoot = roots.front();
    lastRoot = roots.back();
    columns.start(orbitals, roots, energies, occupied);
    return readRows();
}

bool MopacOrbitalReader::readRoots()
{
    if (!nextFilledLine())
        return false;
    if (fields.size() < 3 || fields[0] != "Root" || fields[1] != "No.") {
        lines.unread();
        return false;
    }
    roots.clear();
    for (std::size_t i = 2; i < fields.size(); ++i)
        roots.push_back(toInt(fields[i]));
    return true;
}

/// The symmetry labels, when there are any, and the energies.
bool MopacOrbitalReader::readEnergies()
{
    for (int line = 0; line < 2 && nextFilledLine(); ++line) {
        energies.clear();
        for (const std::string_view field : fields) {
            bool ok = false;
            const double energy = toDouble(field, &ok);
            if (!ok)
                break;
            energies.push_back(static_cast<float>(energy));
        }
        if (energies.size() == roots.size() && fields.size() == roots.size())
            return true;
    }
    return false;
}

MopacOrbitalReader::Block MopacOrbitalReader::readRows()
{
    int rows = 0;
    int lastAtom = 0;
    bool isEnd = true;
    while (nextFilledLine()) {
        const int function = functionNumber(fields[0]);
        if (function < 0) {
            lines.unread();
            isEnd = false;
            break;
        }
        if (!keepRow(function)) {
            failAtLine();
            return Block::Damaged;
        }
        lastAtom = toInt(fields[2]);
        ++rows;
    }
    if (rowsOfFirstBlock == 0)
        rowsOfFirstBlock = rows;
    if (isEnd && (rows < rowsOfFirstBlock || lastAtom < atomCount)) {
        error =
            tr("The file \"%1\" ends within its table of orbitals (EIGENVECTORS).").arg(fileName);
        return Block::Damaged;
    }
    return Block::Complete;
}

/// Function, element, atom number and one coefficient an orbital.
bool MopacOrbitalReader::keepRow(int function)
{
    if (fields.size() != 3 + columns.count())
        return false;
    bool ok = false;
    const int atom = toInt(fields[2], &ok);
    for (std::size_t i = 0; i < columns.count() && ok; ++i) {
        const auto coefficient = static_cast<float>(toDouble(fields[3 + i], &ok));
        if (function < atomicOrbitalCount)
            columns.add(i, {atom, function, coefficient});
    }
    return ok;
}

bool MopacOrbitalReader::failAtLine()
{
    error = tr("Line %1 of \"%2\", a row of the table of orbitals (EIGENVECTORS), cannot be read.")
                .arg(QString::number(lines.lineNumber()), fileName);
    return false;
}

bool MopacOrbitalReader::nextFilledLine()
{
    while (lines.next()) {
        split(lines.line(), fields);
        if (!fields.empty())
            return true;
    }
    return false;
}

bool MopacOrbitalReader::reportMissingOrbitals()
{
    if (occupied <= 0) {
        error =
            tr("The MOPAC output \"%1\" does not tell the number of filled levels (NO. OF FILLED "
               "LEVELS): reactivity indices need a finished closed-shell calculation.")
                .arg(fileName);
    } else if (firstRoot == 0) {
        error = tr("The MOPAC output \"%1\" prints no orbitals (EIGENVECTORS): run the calculation "
                   "with the keyword ALLVEC.")
                    .arg(fileName);
    } else {
        error =
            tr("The MOPAC output \"%1\" prints the orbitals %2 to %3, and 1 to %4 are occupied: "
               "run the calculation with the keyword ALLVEC instead of VECTORS.")
                .arg(fileName, QString::number(firstRoot), QString::number(lastRoot),
                     QString::number(occupied));
    }
    return false;
}

} // namespace

bool readMopacOrbitals(const InputFile &file, int atomCount, std::vector<OccupiedOrbital> &orbitals,
                       QString &error)
{
    MopacOrbitalReader reader(file, atomCount, orbitals);
    const bool ok = reader.read();
    error = reader.error;
    return ok;
}
