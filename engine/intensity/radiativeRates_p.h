#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/RadiativeRates.h>

/// Spontaneous emission rates of the 5D0 level of Eu3+, s^-1 (B. R. Judd, Phys. Rev. 127, 750
/// (1962); M. H. V. Werts, R. T. F. Jukes, J. W. Verhoeven, Phys. Chem. Chem. Phys. 4, 1542
/// (2002)). A medium is described by its refractive index n.
namespace radiativeRates {

/// chi = n (n^2 + 2)^2 / 9: Lorentz's local field on an electric dipole.
double localField(double n);

/// Rate per unit of Omega(lambda), s^-1 cm^-2, of the transition that Omega(lambda) drives:
///     64 pi^4 sigma^3 e^2 / (3h) * chi * <U(lambda)>^2
/// @param lambda  2, 4 or 6; any other gives 0
double constArad(int lambda, double n);

/// 64 pi^4 sigma^3 / (3h) * n^3 * S(MD): independent of the ligands.
double magneticDipoleRate(double n);

/// All rates from Omega(lambda), cm^2.
RadiativeRates calcRates(const ByRank &omega, double n);

} // namespace radiativeRates
