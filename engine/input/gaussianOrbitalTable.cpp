#include "input/gaussianOrbitalTable_p.h"

#include <limits>

namespace {

// Labels may hold blanks ("9D 0") and columns may touch, so that only the columns tell where the
// numbers are.
constexpr std::size_t firstColumn = 21;
constexpr std::size_t columnWidth = 10;

/// The number in a column; not a number when it does not fit there ("**********").
double valueOfColumn(std::string_view line, std::size_t column)
{
    const std::size_t begin = firstColumn + column * columnWidth;
    bool ok = false;
    const double value =
        begin < line.size() ? textFields::toDouble(line.substr(begin, columnWidth), &ok) : 0.0;
    return ok ? value : std::numeric_limits<double>::quiet_NaN();
}

/// The density matrix, whose rows look like those of the coefficients, or the beta orbitals.
bool isEnd(std::string_view text)
{
    return text.empty() || textFields::contains(text, "Density Matrix") ||
           textFields::contains(text, "DENSITY MATRIX") ||
           textFields::contains(text, "Orbital Coefficients") ||
           textFields::contains(text, "opulation");
}

} // namespace

bool GaussianOrbitalTable::isHeading(std::string_view line)
{
    const std::string_view text = textFields::trimmed(line);
    return textFields::startsWith(text, "Molecular Orbital Coefficients") ||
           textFields::startsWith(text, "Alpha Molecular Orbital Coefficients");
}

bool GaussianOrbitalTable::read(LineReader &reader)
{
    while (readBlockHead(reader)) {
        rowNumber = 0;
        while (reader.next() && readRow(reader.line()))
            ++rowNumber;
        reader.unread();
    }
    const bool isWhole =
        reader.next() && isEnd(textFields::trimmed(reader.line())) && table.finish();
    reader.unread();
    return isWhole;
}

/// Orbital numbers, occupations (not in every table), energies.
bool GaussianOrbitalTable::readBlockHead(LineReader &reader)
{
    if (!reader.next())
        return false;
    textFields::split(reader.line(), fields);
    indices = textFields::toInts(fields);
    for (int &index : indices)
        index = index > 0 ? index - 1 : -1;
    if (indices.empty() || !table.startBlock(indices)) {
        reader.unread();
        return false;
    }
    constexpr int furtherLines = 2;
    for (int i = 0; i < furtherLines && reader.next(); ++i) {
        const std::string_view text = textFields::trimmed(reader.line());
        if (textFields::startsWith(text, "Eigenvalues --") ||
            textFields::startsWith(text, "EIGENVALUES --")) {
            keepEnergies(reader.line());
            return true;
        }
    }
    return false;
}

void GaussianOrbitalTable::keepEnergies(std::string_view line)
{
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const auto index = static_cast<std::size_t>(indices[i]);
        if (index >= energies.size())
            energies.resize(index + 1, std::numeric_limits<double>::quiet_NaN());
        energies[index] = valueOfColumn(line, i);
    }
}

/// "   1 1   C  1S          0.00001   0.46721  -0.05659 ..."
bool GaussianOrbitalTable::readRow(std::string_view line)
{
    if (line.size() < firstColumn + columnWidth * table.columns())
        return false;
    const std::string_view rowText = line.substr(0, firstColumn);
    if (table.isFirstBlock() ? !addLabel(rowText) : !table.expectsRow(rowText))
        return false;
    values.resize(table.columns());
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = valueOfColumn(line, i);
    table.addCoefficients(values);
    return true;
}

/// Number of the atomic orbital, then, in the first row of an atom, its number and element, then
/// the label.
bool GaussianOrbitalTable::addLabel(std::string_view rowText)
{
    textFields::split(rowText, fields);
    if (fields.size() < 2 || textFields::toInt(fields[0]) != rowNumber + 1)
        return false;
    const bool isAtomRow = fields.size() >= 4 && textFields::isInteger(fields[1]);
    if ((isAtomRow && !startAtom()) || rowAtom < 1)
        return false;
    const char *labelBegin = fields[isAtomRow ? 3 : 1].data();
    table.addLabel(
        rowText, rowAtom,
        textFields::trimmed(rowText.substr(static_cast<std::size_t>(labelBegin - rowText.data()))));
    return true;
}

/// An atom may have no function, so that numbers may be left out.
bool GaussianOrbitalTable::startAtom()
{
    rowAtom = textFields::toInt(fields[1]);
    if (rowAtom < 1 || rowAtom > OrbitalTable::maximumIndex)
        return false;
    while (symbols.size() <= rowAtom)
        symbols.append(QString());
    symbols[rowAtom] = textFields::toString(fields[2]);
    return true;
}
