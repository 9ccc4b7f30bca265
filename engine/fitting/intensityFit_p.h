#pragma once

#include <QString>
#include <QVector>

#include <array>

class LanqorAbstractParametric;
class LanqorOmega;

/// What the fits to experimental intensity parameters share.
namespace intensityFit {

/// Response of a trial outside the bounds of its parameters, or of a fit that is not set up.
constexpr double infeasibleResponse = 1.0e20;

/// Squared difference of two Omega(lambda), given in cm^2, in units of 1e-20 cm^2.
double squaredDeviation(double expected, double calculated);

/// Hands g and alpha (cm^3), by atom number, to a calculation.
void setChargeFactorsAndAlphas(LanqorOmega &omega, QVector<double> &g, QVector<double> &alpha);

/// A first calculation, at g = 1 and alpha = 1 cubic Angstrom, shows whether the geometry allows
/// one. Leaves @p g and @p alpha with an entry for every atom up to N+1.
bool calcFirst(LanqorOmega &omega, int coordNumber, QVector<double> &g, QVector<double> &alpha);

/// Passes the messages of a fit's calculation on; a failure becomes the last error of the fit
/// before it is told.
void relayMessages(const LanqorOmega &omega, LanqorAbstractParametric &fit);

/// Omega(lambda) of the last calculation, indexed by lambda.
std::array<double, 7> omegaOf(const LanqorOmega &omega);

/// The value of @p lambda; 0 when that is not 2, 4 or 6.
double valueOf(const std::array<double, 7> &omega, int lambda);

/// Where parameter @p index (from 0) of starting vector @p number (from 1) lies in its range, from
/// 0 to 1: 1/2 + (number - 1) sqrt(p) without its whole part, p the prime number of the index.
/// Irrational steps whose ratios are irrational too fill the ranges evenly.
double startingFraction(int number, int index);

/// Papers of the model and of the minimiser, for the report of a fit that was given no others.
QString citations();

} // namespace intensityFit
