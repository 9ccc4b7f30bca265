#include "photophysics/occupiedOrbitals_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cctype>

using namespace textFields;

namespace {

// Rows are cut in columns: numbers of deep cores touch, and labels hold blanks ("9D 0").
constexpr std::size_t prefixWidth = 21;
constexpr std::size_t columnWidth = 10;

/// More than any calculation that prints its orbitals; a damaged number asks for no memory.
constexpr int maximumAtoms = 100000;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWholeNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::string_view column(std::string_view line, std::size_t index)
{
    const std::size_t begin = prefixWidth + index * columnWidth;
    return begin < line.size() ? line.substr(begin, columnWidth) : std::string_view();
}

/// S, PX, PY or PZ behind the number of the shell; -1 for other functions.
int functionNumber(std::string_view label)
{
    while (!label.empty() && isDigit(label.front()))
        label.remove_prefix(1);
    for (int i = 0; i < atomicOrbitalCount; ++i) {
        const std::string_view name = atomicOrbitalNames[i];
        if (name.size() == label.size() &&
            std::equal(name.begin(), name.end(), label.begin(), [](char a, char b) {
                return std::toupper(static_cast<unsigned char>(a)) == b;
            }))
            return i;
    }
    return -1;
}

class GaussianOrbitalReader
{
    Q_DECLARE_TR_FUNCTIONS(LanqorIndicesCalculation)

public:
    GaussianOrbitalReader(const QString &fileName, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements)
        : fileName(fileName)
        , lines(fileName)
        , orbitals(orbitals)
        , elements(elements)
    {}

    QString error;

    bool read();

private:
    void readElectrons();
    bool readTable();
    bool readRow();
    bool startBlock();
    bool keepAtom();
    bool reportMissingOrbitals();

    QString fileName;
    LineReader lines;
    std::vector<OccupiedOrbital> &orbitals;
    QStringList &elements;
    Fields fields;

    int alphaElectrons = 0;
    int betaElectrons = 0;
    bool hasTable = false;
    OrbitalColumns columns; // of the current block
    int atom = 0;           // of the current row
};

bool GaussianOrbitalReader::read()
{
    if (!lines.open()) {
        error = fileName + QStringLiteral(" does not exist.");
        return false;
    }
    while (lines.next()) {
        const std::string_view line = lines.line();
        if (contains(line, "alpha electrons")) {
            readElectrons();
        } else if (startsWith(trimmed(line), "Molecular Orbital Coefficients") ||
                   startsWith(trimmed(line), "Alpha Molecular Orbital Coefficients")) {
            hasTable = true;
            orbitals.clear();
            elements = QStringList{QString()};
            if (!readTable())
                return false;
        }
    }
    return reportMissingOrbitals();
}

/// "    8 alpha electrons        8 beta electrons"; the last line of this kind counts.
void GaussianOrbitalReader::readElectrons()
{
    split(lines.line(), fields);
    alphaElectrons = toInt(fields.front());
    betaElectrons = fields.size() > 3 ? toInt(fields[3]) : -1;
}

bool GaussianOrbitalReader::readTable()
{
    columns = {};
    while (lines.next()) {
        split(lines.line(), fields);
        if (!fields.empty() && std::all_of(fields.begin(), fields.end(), isWholeNumber)) {
            if (!startBlock())
                break;
        } else if (columns.count() == 0 || fields.size() < 3 || !isWholeNumber(fields[0])) {
            lines.unread(); // the line that ends the table may head the next
            return true;
        } else if (!readRow()) {
            break;
        }
    }
    error = tr("The table of molecular orbitals of the Gaussian output \"%1\" cannot be read at "
               "line %2.")
                .arg(fileName)
                .arg(lines.lineNumber());
    return false;
}

/// Orbital numbers, occupations or symmetries, and energies.
bool GaussianOrbitalReader::startBlock()
{
    std::vector<int> numbers;
    for (const std::string_view field : fields)
        numbers.push_back(toInt(field));
    if (!lines.next() || !lines.next() || !contains(lines.line(), "--"))
        return false;
    std::vector<float> energies;
    bool ok = true;
    for (std::size_t i = 0; i < numbers.size() && ok; ++i)
        energies.push_back(static_cast<float>(toDouble(column(lines.line(), i), &ok)));
    columns.start(orbitals, numbers, energies, alphaElectrons);
    atom = 0;
    return ok;
}

bool GaussianOrbitalReader::readRow()
{
    const std::string_view line = lines.line();
    split(line.substr(0, prefixWidth), fields);
    std::size_t label = 1;
    if (fields.size() > 3 && isWholeNumber(fields[1])) {
        if (!keepAtom())
            return false;
        label = 3;
    }
    if (atom == 0 || label >= fields.size())
        return false;
    const int function = functionNumber(fields[label]);
    bool ok = true;
    for (std::size_t i = 0; i < columns.count() && ok; ++i) {
        const auto coefficient = static_cast<float>(toDouble(column(line, i), &ok));
        if (function >= 0)
            columns.add(i, {atom, function, coefficient});
    }
    return ok;
}

/// The first function of an atom tells its number and element; an atom may have no function.
bool GaussianOrbitalReader::keepAtom()
{
    atom = toInt(fields[1]);
    if (atom < 1 || atom > maximumAtoms)
        return false;
    while (elements.size() <= atom)
        elements.append(QString());
    elements[atom] = toString(fields[2]);
    return true;
}

bool GaussianOrbitalReader::reportMissingOrbitals()
{
    if (!hasTable || orbitals.empty()) {
        error = tr("The Gaussian output \"%1\" does not print its occupied molecular orbitals: run "
                   "the calculation with pop=full.")
                    .arg(fileName);
    } else if (alphaElectrons != betaElectrons) {
        error = tr("The Gaussian output \"%1\" is of an open-shell calculation: reactivity indices "
                   "need a closed shell.")
                    .arg(fileName);
    } else if (int(orbitals.size()) < alphaElectrons) {
        error = tr("The Gaussian output \"%1\" prints %2 of its %3 occupied orbitals: run the "
                   "calculation with pop=full.")
                    .arg(fileName)
                    .arg(orbitals.size())
                    .arg(alphaElectrons);
    } else {
        return true;
    }
    return false;
}

} // namespace

bool readGaussianOrbitals(const QString &fileName, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements, QString &error)
{
    GaussianOrbitalReader reader(fileName, orbitals, elements);
    const bool ok = reader.read();
    error = reader.error;
    return ok;
}
