#pragma once

#include "core/physicalConstants_p.h"

#include <LanqorEngine/ByRank.h>

#include <array>

/// What intensities and energy transfer take for granted of the 4f6 shell of Eu3+.
namespace europium {

/// <f||C(lambda)||f>: -sqrt(28/15), sqrt(14/11), -sqrt(700/429) to the digits in use.
constexpr ByRank reducedC = {0.0, 0.0, -1.366, 0.0, 1.128, 0.0, -1.2774};

/// Shielding of a field of rank 0 to 6 by the closed 5s and 5p shells: sigma(2) and sigma(4) from
/// S. Edvardsson, M. Klintenberg, J. Alloys Compd. 275-277, 230 (1998), source of
/// sigma(6) not known; for sigma(0), (1) see O. L. Malta, J. Non-Cryst. Solids 354, 4770 (2008).
/// There is none of rank 3 or 5.
constexpr ByRank shielding = {0.981, 0.8, 0.6, 0.0, 0.139, 0.0, 0.1};

/// <4f|r^k|4f>, cm^k, in powers of the Bohr radius: for k = 2, 4, 6 the relativistic integrals of
/// A. J. Freeman, J. P. Desclaux, J. Magn. Magn. Mater. 12, 11 (1979), which go no further; source
/// of that for k = 8 not known.
constexpr double bohrRadius2 = lanqor::bohrRadiusCm * lanqor::bohrRadiusCm;
constexpr double radialR2 = 0.9175 * bohrRadius2;
constexpr double radialR4 = 2.02 * bohrRadius2 * bohrRadius2;
constexpr double radialR6 = 9.039 * bohrRadius2 * bohrRadius2 * bohrRadius2;
constexpr double radialR8 = 110.03237 * bohrRadius2 * bohrRadius2 * bohrRadius2 * bohrRadius2;
constexpr ByRank radialR = {0.0, 0.0, radialR2, 0.0, radialR4, 0.0, radialR6};

/// Gap between the barycentres of 4f6 and of the lowest configuration of opposite parity, erg:
/// 120000 cm^-1 with hc = 1.98616e-16 erg cm, source not known. Negative on purpose: it sets the
/// sign of the forced electric dipole against the dynamic coupling.
constexpr double deltaE = -2.383392e-11;

/// Numerical factors theta(t, lambda) of the forced electric dipole mechanism: O. L. Malta,
/// S. J. L. Ribeiro, M. Faucher, P. Porcher, J. Phys. Chem. Solids 52, 587 (1991). Pairs that
/// do not contribute give 0.
constexpr double tet(int t, int lambda)
{
    switch (10 * t + lambda) {
    case 12:
        return -0.17;
    case 32:
        return 0.345;
    case 34:
        return 0.18;
    case 54:
    case 56:
        return -0.24;
    case 76:
        return 0.24;
    default:
        return 0.0;
    }
}

/// A forced electric dipole transition 5D0 -> 7FJ; rank J alone connects the two levels.
struct Emission
{
    int J;
    double sigma; ///< barycentre, cm^-1
    double U2;    ///< squared reduced matrix element <5D0||U(J)||7FJ>^2
};

/// Source of the barycentres not known; matrix elements of W. T. Carnall, P. R. Fields, K. Rajnak,
/// J. Chem. Phys. 49, 4450 (1968).
constexpr std::array<Emission, 3> emissions = {{
    {2, 16267.0, 0.0032},
    {4, 14470.0, 0.0023},
    {6, 12386.0, 0.0002},
}};

/// Barycentre of the magnetic dipole transition 5D0 -> 7F1, cm^-1; source not known.
constexpr double magneticDipoleSigma = 16921.0;

} // namespace europium
