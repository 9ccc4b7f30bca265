#pragma once

#include "input/occupiedOrbitals_p.h"

#include <vector>

/// Indices by atom number; entries 0 and 1 (the ion) are 0.
struct ReactivityIndices
{
    std::vector<double> population;
    std::vector<double> superdelocalizability; ///< 1 / unit of the orbital energies
};

/// Over the occupied orbitals j and the functions k, l of each atom from 2 on:
///     population            = 2 sum c(j,k)^2
///     superdelocalizability = 2 sum c(j,k) c(j,l) / E(j)
/// @param functionsOfAtom  how many of S, Px, Py, Pz an atom has, by atom number (entries 0 and 1
///                         unused). The first entry of a function counts; a function without
///                         entry has the coefficient missingCoefficient.
ReactivityIndices calcMinimalBasisIndices(const std::vector<OccupiedOrbital> &orbitals,
                                          const std::vector<int> &functionsOfAtom);

/// The same sums over every entry of an atom: bases with more than one function of a kind.
ReactivityIndices calcIndicesOfAllFunctions(const std::vector<OccupiedOrbital> &orbitals,
                                            int atomCount);

/// Stands for a function that an orbital does not list. It enters the sums like a coefficient,
/// so that an incomplete listing shows in absurd indices and not in slightly wrong ones.
constexpr float missingCoefficient = -9999.0F;
