#pragma once

#include <LanqorEngine/JuddOfeltResults.h>
#include <LanqorEngine/RefractiveIndexModel.h>

#include <Eigen/Core>

/// Formulas of electric and magnetic dipole transitions of a 4f shell in a medium (B. R. Judd,
/// Phys. Rev. 127, 750 (1962); G. S. Ofelt, J. Chem. Phys. 37, 511 (1962); W. T. Carnall, P. R.
/// Fields, K. Rajnak, J. Chem. Phys. 49, 4412 (1968)), Gaussian units.
namespace juddOfelt {

/// n at a vacuum wavenumber, cm^-1. Formulas hold between 0.2 and 10 micrometre and give the value
/// of the nearer end outside; not a number where a formula gives no real n.
double refractiveIndex(const RefractiveIndexModel &model, double wavenumber);
/// Vacuum wavenumber, cm^-1, of a wavelength in air, nm (E. R. Peck, K. Reeder, J. Opt. Soc. Am.
/// 62, 958 (1972), 15 degrees C, 101325 Pa).
double wavenumberInVacuum(double wavelengthInAir);

/// f by S (cm^2, electric dipole): 8 pi^2 m c sigma/(3h(2J+1)) (n^2+2)^2/(9n).
double strengthFactor(double wavenumber, double n, double J);
/// Magnetic dipole f of the square of L + g_s S: 8 pi^2 m c sigma/(3h(2J+1)) n (h/(4 pi m c))^2 M.
double magneticOscillatorStrength(double wavenumber, double n, double J, double square);
/// f by the integral of the cross section over the wavenumber, cm: m c^2/(pi e^2).
double oscillatorByCrossSection();
/// f by the integral of the molar decadic absorption coefficient, l mol^-1 cm^-2: 4.319e-9.
double oscillatorByAbsorption();
/// A of an electric dipole transition, s^-1, S in cm^2:
/// 64 pi^4 e^2 sigma^3/(3h(2J+1)) n(n^2+2)^2/9 S.
double electricRate(double wavenumber, double n, double J, double S);
/// A of a magnetic dipole transition, s^-1: 64 pi^4 sigma^3/(3h(2J+1)) n^3 (e h/(4 pi m c))^2 M.
double magneticRate(double wavenumber, double n, double J, double square);

/// Omega(2), (4), (6) that minimise the sum of (w (U Omega - S))^2.
struct Solution
{
    Eigen::Vector3d omega = Eigen::Vector3d::Zero();
    Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero(); ///< scaled by the misfit
    double misfit = 0.0;                                  ///< the sum
    bool isDetermined = false;                            ///< false: the bands leave some open
};
/// @param U  (band, 2 4 6)
Solution solve(const Eigen::MatrixXd &U, const Eigen::VectorXd &S, const Eigen::VectorXd &w);
/// The same with no Omega below 0: of all choices of Omega that are held at 0 the best feasible.
Solution solveNonNegative(const Eigen::MatrixXd &U, const Eigen::VectorXd &S,
                          const Eigen::VectorXd &w);

/// The text report of an analysis.
QString report(const JuddOfeltResults &results);
QString nameOf(JuddOfeltWeighting weighting);

} // namespace juddOfelt
