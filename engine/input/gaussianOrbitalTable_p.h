#pragma once

#include "input/lineReader_p.h"
#include "input/orbitalTable_p.h"
#include "input/textFields_p.h"

#include <QStringList>

#include <vector>

/// A table of molecular-orbital coefficients of a Gaussian output.
class GaussianOrbitalTable
{
public:
    /// True for the heading of a table of canonical orbitals. Of an unrestricted calculation the
    /// alpha orbitals are taken.
    static bool isHeading(std::string_view line);

    /// Reads the table under the heading that @p reader has just read; true when it is there to
    /// its end. The line that ends it, or that cannot be read, stays for the caller.
    bool read(LineReader &reader);

    /// The orbitals of all whole blocks, by printed number less 1; empty entries where not printed
    /// or where a coefficient does not fit its field.
    QVector<MolecularOrbital> takeOrbitals() { return table.takeOrbitals(); }
    /// Energies in hartree by printed number less 1; not a number where not printed.
    const std::vector<double> &orbitalEnergies() const { return energies; }
    /// Symbols by atom number; entry 0 and those of atoms without functions are empty.
    const QStringList &elements() const { return symbols; }

private:
    bool readBlockHead(LineReader &reader);
    void keepEnergies(std::string_view line);
    bool readRow(std::string_view line);
    bool addLabel(std::string_view rowText);
    bool startAtom();

    OrbitalTable table;
    std::vector<double> energies;
    QStringList symbols = {QString()};
    textFields::Fields fields;
    std::vector<int> indices; // of the orbitals of the current block
    std::vector<double> values;
    int rowNumber = 0;
    int rowAtom = 0;
};
