#include "input/orbitalTable_p.h"

#include "input/textFields_p.h"

#include <algorithm>
#include <cmath>

bool OrbitalTable::startBlock(const std::vector<int> &columnIndices)
{
    if (!indices.empty() && !closeBlock())
        return false;
    for (const int index : columnIndices) {
        if (index < 0 || index > maximumIndex ||
            (index < orbitals.size() && !orbitals.at(index).coefficients.isEmpty()))
            return false;
    }
    indices = columnIndices;
    coefficients.assign(indices.size(), QVector<double>());
    for (QVector<double> &column : coefficients)
        column.reserve(static_cast<int>(rowTexts.size()));
    row = 0;
    return !indices.empty();
}

void OrbitalTable::addLabel(std::string_view rowText, int atomNumber, std::string_view label)
{
    rowTexts.emplace_back(rowText);
    atomNumbers.append(atomNumber);
    atomicOrbitals.append(textFields::toString(label));
}

void OrbitalTable::addCoefficients(const std::vector<double> &values)
{
    for (std::size_t i = 0; i < indices.size(); ++i)
        coefficients[i].append(values[i]);
    ++row;
}

bool OrbitalTable::closeBlock()
{
    const std::vector<int> columns = std::move(indices);
    indices.clear();
    if (row == 0 || row != rowTexts.size())
        return false;
    isFirst = false;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        QVector<double> &column = coefficients[i];
        if (columns[i] >= orbitals.size())
            orbitals.resize(columns[i] + 1);
        const bool isReadable =
            std::all_of(column.cbegin(), column.cend(), [](double c) { return std::isfinite(c); });
        if (isReadable)
            orbitals[columns[i]] = {atomNumbers, atomicOrbitals, std::move(column)};
    }
    return true;
}

bool OrbitalTable::finish()
{
    return closeBlock();
}

QVector<MolecularOrbital> OrbitalTable::takeOrbitals()
{
    return std::move(orbitals);
}
