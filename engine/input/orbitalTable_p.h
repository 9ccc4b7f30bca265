#pragma once

#include <LanqorEngine/MolecularOrbital.h>

#include <QVector>

#include <string>
#include <string_view>
#include <vector>

/// Collects a table of molecular-orbital coefficients that is printed in blocks of a few orbitals
/// side by side, with the same rows (one per atomic orbital) in each block.
///
/// The list of orbitals is padded with empty entries, so that an orbital stands at its index
/// whichever numbers a file leaves out. Atom numbers and labels are kept once for all orbitals.
class OrbitalTable
{
public:
    /// Orbitals of a higher index are not believed: a damaged number must not take memory.
    static constexpr int maximumIndex = 100000;

    /// Starts a block of the orbitals with these 0-based indices; false when the block before it
    /// lacks rows or an index is negative, too high or already there.
    bool startBlock(const std::vector<int> &columnIndices);
    std::size_t columns() const { return indices.size(); }

    /// True when the row that comes next has this text in front of its coefficients, as in the
    /// first block.
    bool expectsRow(std::string_view rowText) const
    {
        return row < rowTexts.size() && rowTexts[row] == rowText;
    }
    /// True while the rows are not known yet and have to be named by addLabel.
    bool isFirstBlock() const { return isFirst; }
    /// Names the next row of the first block.
    void addLabel(std::string_view rowText, int atomNumber, std::string_view atomicOrbital);
    /// Adds the coefficients of the next row, one per column. One that is not a number makes
    /// its orbital an empty entry.
    void addCoefficients(const std::vector<double> &values);

    /// Ends the table; false when it is empty or its last block lacks rows.
    bool finish();
    /// The orbitals of all whole blocks.
    QVector<MolecularOrbital> takeOrbitals();

private:
    bool closeBlock();

    QVector<MolecularOrbital> orbitals;
    std::vector<int> indices;
    std::vector<QVector<double>> coefficients; // by column of the current block
    std::vector<std::string> rowTexts;
    QVector<int> atomNumbers;
    QStringList atomicOrbitals;
    std::size_t row = 0;
    bool isFirst = true;
};
