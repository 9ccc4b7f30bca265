#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitTrace.h>

#include <Eigen/Core>

#include <functional>

/// Least squares within bounds.
namespace leastSquares {

/// Residuals r(x) and their derivatives by all parameters.
struct Values
{
    Eigen::VectorXd residuals;
    Eigen::MatrixXd jacobian; ///< residual by parameter
};

struct Problem
{
    QVector<FitParameter> parameters;
    int residualCount = 0;
    std::function<Values(const Eigen::VectorXd &x)> evaluate;
};

struct Minimum
{
    QVector<double> x;
    double chiSquare = 0.0; ///< sum of the squares
    bool isConverged = false;
    bool isStopped = false; ///< by LanqorGSA::isStopParametrization
    int points = 0;         ///< evaluations
    QVector<FitTrace::Improvement> trace;
};

/// Levenberg-Marquardt (J. J. More, Lecture Notes in Mathematics 630, 105 (1978)) in coordinates
/// u that keep every x within its bounds (F. James, M. Roos, Comput. Phys. Commun. 10, 343
/// (1975)):
///     x = min + (max - min)(1 + sin u)/2,  without an upper bound x = min - 1 + sqrt(u^2 + 1)
/// Eigen's version of MINPACK takes the 5 to 8 evaluations for 30 levels of Pr, Nd, Er or Eu that
/// cminpack takes too, GSL up to 24, and it is no further dependency.
Minimum minimise(const Problem &problem, const QVector<double> &start);

/// Fills in objective, misfit, points and end of a minimisation.
void addOutcome(const Minimum &minimum, FitAccount &account);

/// Fills the parameters of the account with the values @p x, their bounds that are reached,
/// standard errors, correlations and undetermined directions, from the singular values of the
/// Jacobian there. The variance is 1 when the deviations of the data are known, else the sum of
/// squares per degree of freedom.
void addStatistics(const Problem &problem, const QVector<double> &x, FitAccount &account);

} // namespace leastSquares
