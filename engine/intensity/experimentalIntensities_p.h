#pragma once

#include <array>

/// Intensity parameters of Eu3+ from measured emission: the magnetic dipole transition
/// 5D0 -> 7F1, which hardly depends on the surroundings, calibrates the others (G. F. de Sa
/// et al., Coord. Chem. Rev. 196, 165 (2000)).
namespace experimentalIntensities {

constexpr int transitionCount = 6;
/// A quantity of 5D0 -> 7FJ, by J = 0 .. 5.
using ByLevel = std::array<double, transitionCount>;

struct Emission
{
    ByLevel area{};       ///< S(J), emitted power in any one unit
    ByLevel barycenter{}; ///< sigma(J), cm^-1
};

struct Results
{
    ByLevel rate{};      ///< A(J), s^-1
    double omega2 = 0.0; ///< cm^2
    double omega4 = 0.0; ///< cm^2
    double r02 = 0.0;    ///< infinite when S(2) is 0
    double arad = 0.0;   ///< sum of the rates, s^-1
};

///     A(1) = 3.1e-12 n^3 sigma(1)^3,  A(J) = A(1) S(J)/S(1) sigma(1)/sigma(J)
///     Omega(J) = 3 hbar c^3 A(J) / (4 e^2 omega(J)^3 chi <U(J)>^2),  omega = 2 pi c sigma
/// @param emission  S(1) is not 0, nor is the sigma(J) of any transition with an area
/// @param n  refractive index of the medium
Results calculate(const Emission &emission, double n);

/// What the measured lifetime adds.
struct Decay
{
    double anrad = 0.0;      ///< non-radiative rate 1/lifetime - Arad, s^-1
    double efficiency = 0.0; ///< Arad / (Arad + Anrad), %
};
/// @param lifeTime  of 5D0, ms, not 0
Decay decay(double arad, double lifeTime);

} // namespace experimentalIntensities
