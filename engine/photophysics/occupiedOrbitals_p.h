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
