#pragma once

#include <QString>

/// What the fits to experimental intensity parameters share.
namespace intensityFit {

/// Response of a trial outside the bounds of its parameters, or of a fit that is not set up.
constexpr double infeasibleResponse = 1.0e20;

/// Squared difference of two Omega(lambda), given in cm^2, in units of 1e-20 cm^2.
double squaredDeviation(double expected, double calculated);

/// Papers of the model and of the minimiser, for the report of a fit that was given no others.
QString citations();

} // namespace intensityFit
