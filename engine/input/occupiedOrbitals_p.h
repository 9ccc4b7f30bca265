#pragma once

#include "input/lineReader_p.h"

#include <QString>
#include <QStringList>

#include <vector>

/// Coefficient c of an s or p function in an orbital.
struct OrbitalEntry
{
    int atom;     ///< 1-based
    int function; ///< k of getAtomicOrbital(k)
    float coefficient;
};

/// A doubly occupied molecular orbital; coefficients and energies are used in single precision.
struct OccupiedOrbital
{
    float energy; ///< as printed: eV (MOPAC) or hartree (Gaussian)
    std::vector<OrbitalEntry> entries;
};

constexpr int atomicOrbitalCount = 4;
constexpr const char *getAtomicOrbital(int k)
{
    switch (k) {
    case 0:
        return "S";
    case 1:
        return "Px";
    case 2:
        return "Py";
    default:
        return "Pz";
    }
}

/// Readers of the occupied orbitals of closed-shell calculations. Only s and p functions are
/// kept. False with a message in @p error when an occupied orbital is not printed.

/// First orbital table of a MOPAC output. The title "EIGENVECTORS" heads tables of vibrations
/// too, which are passed over.
/// @param atomCount  atoms of the geometry; tells a table that was cut off
bool readMopacOrbitals(const InputFile &file, int atomCount, std::vector<OccupiedOrbital> &orbitals,
                       QString &error);

/// Last orbital table of a Gaussian output: that of the final geometry.
/// @param elements  symbols by atom number as the table gives them; entry 0 is empty
bool readGaussianOrbitals(const InputFile &file, std::vector<OccupiedOrbital> &orbitals,
                          QStringList &elements, QString &error);
