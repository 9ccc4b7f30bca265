#pragma once

#include "photophysics/reactivityIndices_p.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Readers of the occupied orbitals of closed-shell calculations. Only s and p functions are
/// kept. False with a message in @p error when an occupied orbital is not printed.

/// First orbital table of a MOPAC output. The title "EIGENVECTORS" heads tables of vibrations
/// too, which are passed over.
/// @param atomCount  atoms of the geometry; tells a table that was cut off
bool readMopacOrbitals(const QString &fileName, int atomCount,
                       std::vector<OccupiedOrbital> &orbitals, QString &error);

/// Last orbital table of a Gaussian output: that of the final geometry.
/// @param elements  symbols by atom number as the table gives them; entry 0 is empty
bool readGaussianOrbitals(const QString &fileName, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements, QString &error);

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
