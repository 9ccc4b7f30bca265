#pragma once

#include <LanqorEngine/LanqorInputData.h>

#include <QVector>

/// Distance of the centre of charge of one excited state from the ion.
struct DonorDistance
{
    double distance = 0.0;        ///< Angstrom; 0 when no coefficient is known
    QVector<int> missingOrbitals; ///< numbers, as printed, of orbitals that are not printed
    int unknownAtom = 0;          ///< number of an atom that the geometry lacks; 0 for none
};

/// RL = sum c^2 d(a) / sum c^2 over every orbital of @p state. Orbital numbers equal to 0 are
/// skipped, for 0 stands for none in numberings that start at 1; the core orbital that ORCA
/// numbers 0 is skipped likewise.
/// @param orbitalOffset  number of the first orbital: 0 in ORCA, else 1
/// @param atomDistances  distance of atom a from the ion at index a - 1, Angstrom
DonorDistance calcDonorDistance(const ExcitateState &state, const LanqorInputData &input,
                                int orbitalOffset, const QVector<double> &atomDistances);
