#pragma once

#include <LanqorEngine/Coord.h>

/// Which atoms are bonded, told from distances.
namespace bondLengths {

/// Angstrom beyond the sum of two covalent radii within which atoms count as bonded: wide enough
/// for the bonds of crystal structures, and narrower than contacts between molecules.
constexpr double tolerance = 0.4;
/// Between the largest atoms, Angstrom.
constexpr double longest = 2.0 * 2.60 + tolerance;

/// Covalent radius, Angstrom (Cordero et al., Dalton Trans. 2832, 2008); that of carbon for an
/// atom of unknown kind.
double radiusOf(const Coord &atom);
bool isHydrogen(const Coord &atom);
bool isGroup1Or2Metal(const Coord &atom);
/// Whether two atoms are within the sum of their covalent radii and the tolerance.
bool isWithinBondLength(const Coord &a, const Coord &b);

} // namespace bondLengths
