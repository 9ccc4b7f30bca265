#include "input/mopacForceMatrix_p.h"

using textFields::contains;
using textFields::isInteger;

MopacForceMatrixReader::MopacForceMatrixReader(const InputFile &file)
    : reader(file)
{}

bool MopacForceMatrixReader::read(int count, QVector<double> &constants)
{
    bool found = false;
    while (reader.next()) {
        if (contains(reader.line(), "FORCE MATRIX IN MILLIDYNES/ANGSTROM"))
            found = readMatrix(count, constants);
    }
    return found;
}

/// Column titles "Eu  1   O  2 ...", rules, and rows "O  2   2.810755  15.289968" of symbol,
/// number and values; old versions print a line "0" above each title.
bool MopacForceMatrixReader::readMatrix(int count, QVector<double> &constants)
{
    constants.clear();
    int atom = 0;
    while (atom <= count && reader.next()) {
        textFields::split(reader.line(), fields);
        if (fields.size() < 2)
            continue;
        const bool isTitle = fields.size() % 2 == 0 && isInteger(fields.back());
        if (isTitle && textFields::toInt(fields[1]) == 1)
            continue;
        double constant = 0.0;
        if (isTitle || !readRow(++atom, constant))
            return false;
        if (atom > 1)
            constants.append(constant);
    }
    return count > 0 && constants.size() == count;
}

/// First value of the current line, which must be the row of @p atom.
bool MopacForceMatrixReader::readRow(int atom, double &constant)
{
    // Behind a value that ends an incomplete file, digits may be missing.
    const std::size_t needed = reader.isLineComplete() ? 3 : 4;
    if (fields.size() < needed || textFields::toInt(fields[1]) != atom)
        return false;
    bool ok = false;
    constant = textFields::toDouble(fields[2], &ok);
    return ok;
}
