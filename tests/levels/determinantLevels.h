#pragma once

#include <vector>

/// Energies of all levels of 4f^n, ascending from 0, without coefficients of fractional
/// parentage: the Coulomb and the spin-orbit interaction of n electrons (1 to 13, never holes)
/// diagonalised in the Slater determinants of the smallest |M|, in which every level occurs once.
/// cm^-1; small-denominator Slater integrals.
std::vector<double> determinantLevels(int n, double F2, double F4, double F6, double zeta);
