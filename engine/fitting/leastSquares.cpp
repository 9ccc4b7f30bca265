#include "fitting/leastSquares_p.h"

#include "fitting/fitAccount_p.h"

#include <LanqorEngine/LanqorGSA.h>

#include <Eigen/SVD>
#include <unsupported/Eigen/NonLinearOptimization>

#include <algorithm>
#include <cmath>
#include <limits>

namespace leastSquares {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// A start at a bound, where x does not depend on u, is moved inside by this share of the range.
constexpr double startInside = 1.0e-3;
/// A singular value of the Jacobian with columns of length 1 that is smaller than this share of the
/// largest is 0 but for rounding.
constexpr double negligibleSingularValue = 1.0e-9;
/// A parameter is determined when no undetermined direction holds more than this of it.
constexpr double negligibleShare = 1.0e-4;

bool isBounded(const FitParameter &parameter)
{
    return std::isfinite(parameter.maximum);
}

double valueAt(const FitParameter &p, double u)
{
    if (!isBounded(p))
        return p.minimum - 1.0 + std::sqrt(u * u + 1.0);
    return std::clamp(p.minimum + (p.maximum - p.minimum) * 0.5 * (1.0 + std::sin(u)), p.minimum,
                      p.maximum);
}

double slopeAt(const FitParameter &p, double u)
{
    return isBounded(p) ? (p.maximum - p.minimum) * 0.5 * std::cos(u) : u / std::sqrt(u * u + 1.0);
}

double coordinateOf(const FitParameter &p, double value)
{
    if (!isBounded(p)) {
        const double inside = std::max(value - p.minimum, startInside) + 1.0;
        return std::sqrt(inside * inside - 1.0);
    }
    const double range = p.maximum - p.minimum;
    const double share =
        std::clamp(range > 0.0 ? (value - p.minimum) / range : 0.5, startInside, 1.0 - startInside);
    return std::asin(2.0 * share - 1.0);
}

/// The problem as the minimiser sees it: the parameters that are not fixed, in their coordinates
/// u, and residuals of 0 where there are fewer than parameters.
class Functor
{
public:
    explicit Functor(const Problem &problem)
        : problem(problem)
    {
        for (int i = 0; i < problem.parameters.size(); ++i)
            if (!problem.parameters.at(i).isFixed)
                freeIndices.push_back(i);
    }

    int inputs() const { return int(freeIndices.size()); }
    int values() const { return std::max(problem.residualCount, inputs()); }

    int operator()(const VectorXd &u, VectorXd &residuals)
    {
        if (LanqorGSA::isStopParametrization)
            return -1; // ends the minimisation
        residuals.setZero(values());
        const VectorXd x = toVector(u);
        residuals.head(problem.residualCount) = problem.evaluate(x).residuals;
        ++minimum.points;
        const double chiSquare = residuals.squaredNorm();
        if (minimum.x.isEmpty() || chiSquare < minimum.chiSquare) {
            minimum.chiSquare = chiSquare;
            minimum.x = QVector<double>(x.data(), x.data() + x.size());
            minimum.trace.append({minimum.points, chiSquare});
        }
        return 0;
    }

    int df(const VectorXd &u, MatrixXd &jacobian)
    {
        const Values values = problem.evaluate(toVector(u));
        jacobian.setZero(this->values(), inputs());
        for (int column = 0; column < inputs(); ++column) {
            const int i = freeIndices[std::size_t(column)];
            jacobian.col(column).head(problem.residualCount) =
                values.jacobian.col(i) * slopeAt(problem.parameters.at(i), u(column));
        }
        return 0;
    }

    VectorXd toVector(const VectorXd &u) const
    {
        VectorXd x(problem.parameters.size());
        for (int i = 0; i < x.size(); ++i)
            x(i) = problem.parameters.at(i).fixedValue;
        for (int column = 0; column < inputs(); ++column) {
            const int i = freeIndices[std::size_t(column)];
            x(i) = valueAt(problem.parameters.at(i), u(column));
        }
        return x;
    }

    VectorXd fromVector(const QVector<double> &x) const
    {
        VectorXd u(inputs());
        for (int column = 0; column < inputs(); ++column) {
            const int i = freeIndices[std::size_t(column)];
            u(column) = coordinateOf(problem.parameters.at(i), x.at(i));
        }
        return u;
    }

    Minimum minimum;

private:
    const Problem &problem;
    std::vector<int> freeIndices;
};

/// The parameters whose changes move the data: neither fixed nor at a bound.
std::vector<int> movableIndices(const FitAccount &account)
{
    std::vector<int> indices;
    for (int i = 0; i < account.parameters.size(); ++i) {
        const FitAccount::Parameter &p = account.parameters.at(i);
        if (!p.range.isFixed && !p.isAtMinimum && !p.isAtMaximum)
            indices.push_back(i);
    }
    return indices;
}

/// Tells the directions of the null space, which are made orthonormal.
void nameUndetermined(MatrixXd nullSpace, const std::vector<int> &movable, FitAccount &account)
{
    for (Eigen::Index k = 0; k < nullSpace.cols(); ++k) {
        VectorXd direction = nullSpace.col(k);
        for (Eigen::Index other = 0; other < k; ++other)
            direction -= nullSpace.col(other) * nullSpace.col(other).dot(direction);
        nullSpace.col(k) = direction.normalized();
    }
    for (Eigen::Index k = 0; k < nullSpace.cols(); ++k) {
        QVector<double> named(account.parameters.size(), 0.0);
        for (Eigen::Index column = 0; column < nullSpace.rows(); ++column) {
            named[movable[std::size_t(column)]] = nullSpace(column, k);
            if (std::abs(nullSpace(column, k)) > negligibleShare)
                account.parameters[movable[std::size_t(column)]].isUndetermined = true;
        }
        account.undetermined.append(named);
    }
}

/// Standard errors, not numbers without a variance, and correlations of what is determined, from
/// the covariance of the parameters in units of 1/length.
void nameErrors(const MatrixXd &covariance, double variance, const VectorXd &lengths,
                const std::vector<int> &movable, FitAccount &account)
{
    const Eigen::Index count = lengths.size();
    for (Eigen::Index a = 0; a < count; ++a) {
        FitAccount::Parameter &parameter = account.parameters[movable[std::size_t(a)]];
        if (parameter.isUndetermined)
            continue;
        parameter.standardError = std::sqrt(variance * covariance(a, a)) / lengths(a);
        for (Eigen::Index b = 0; b < count; ++b)
            if (!account.parameters.at(movable[std::size_t(b)]).isUndetermined)
                account.correlations[movable[std::size_t(a)]][movable[std::size_t(b)]] =
                    covariance(a, b) / std::sqrt(covariance(a, a) * covariance(b, b));
    }
}

/// The problem with the parameters held at the bound that their value is next to, where there are
/// such; x depends on u but weakly there, and steps creep.
bool holdAtBounds(Problem &problem, const QVector<double> &x)
{
    constexpr double next = 1.0e-3; // of the range
    bool isHeld = false;
    for (int i = 0; i < problem.parameters.size(); ++i) {
        FitParameter &p = problem.parameters[i];
        const double close = next * (isBounded(p) ? p.maximum - p.minimum : 1.0);
        const bool isLow = x.at(i) - p.minimum <= close;
        if (p.isFixed || !(isLow || p.maximum - x.at(i) <= close))
            continue;
        p.isFixed = true;
        p.fixedValue = isLow ? p.minimum : p.maximum;
        isHeld = true;
    }
    return isHeld;
}

} // namespace

Minimum minimise(const Problem &problem, const QVector<double> &start)
{
    Functor functor(problem);
    VectorXd u = functor.fromVector(start);
    if (functor.inputs() == 0) {
        VectorXd residuals;
        functor(u, residuals);
        functor.minimum.isConverged = true;
        return functor.minimum;
    }
    Eigen::LevenbergMarquardt<Functor> method(functor);
    method.parameters.ftol = 1.0e-14; // relative, of the sum of squares
    method.parameters.xtol = 1.0e-12; // relative, of u
    method.parameters.maxfev = 400;
    const auto status = method.minimize(u);
    functor.minimum.isStopped = status == Eigen::LevenbergMarquardtSpace::UserAsked;
    functor.minimum.isConverged =
        !functor.minimum.isStopped &&
        status != Eigen::LevenbergMarquardtSpace::TooManyFunctionEvaluation &&
        status != Eigen::LevenbergMarquardtSpace::ImproperInputParameters;
    Minimum &found = functor.minimum;
    Problem held = problem;
    if (!found.isStopped && !found.x.isEmpty() && holdAtBounds(held, found.x)) {
        Minimum atBound = minimise(held, found.x);
        const int before = found.points;
        if (!atBound.x.isEmpty() && atBound.chiSquare <= found.chiSquare) {
            for (const FitTrace::Improvement &improvement : qAsConst(atBound.trace))
                if (improvement.response < found.trace.last().response)
                    found.trace.append({improvement.point + before, improvement.response});
            atBound.trace = found.trace;
            found = atBound;
            found.points = 0;
        }
        found.points = before + atBound.points;
    }
    return found;
}

void addOutcome(const Minimum &minimum, FitAccount &account)
{
    account.objective = QStringLiteral("least squares, sum of ((computed - measured)/sd)^2");
    account.misfit = minimum.chiSquare;
    account.points = minimum.points;
    account.end = minimum.isStopped     ? FitAccount::End::Stopped
                  : minimum.isConverged ? FitAccount::End::Converged
                                        : FitAccount::End::PointsSpent;
}

void addStatistics(const Problem &problem, const QVector<double> &x, FitAccount &account)
{
    fitAccount::addParameters(account, problem.parameters, x);
    const Values values = problem.evaluate(Eigen::Map<const VectorXd>(x.constData(), x.size()));
    const std::vector<int> movable = movableIndices(account);
    const auto count = Eigen::Index(movable.size());
    account.correlations = QVector<QVector<double>>(x.size(), QVector<double>(x.size(), 0.0));
    if (count == 0 || problem.residualCount == 0)
        return;
    MatrixXd jacobian(values.jacobian.rows(), count);
    VectorXd lengths(count);
    for (Eigen::Index column = 0; column < count; ++column) {
        jacobian.col(column) = values.jacobian.col(movable[std::size_t(column)]);
        lengths(column) = jacobian.col(column).norm();
    }
    // A column that is 0 but for rounding beside the others', which are all in one unit, stays 0.
    const double longest = lengths.maxCoeff();
    for (Eigen::Index column = 0; column < count; ++column) {
        if (!(lengths(column) > negligibleSingularValue * longest)) {
            jacobian.col(column).setZero();
            lengths(column) = 1.0;
        }
        jacobian.col(column) /= lengths(column);
    }
    const Eigen::JacobiSVD<MatrixXd> svd(jacobian, Eigen::ComputeFullV);
    const VectorXd &singular = svd.singularValues();
    MatrixXd covariance = MatrixXd::Zero(count, count);
    MatrixXd nullSpace(count, 0);
    for (Eigen::Index k = 0; k < count; ++k) {
        const VectorXd direction = svd.matrixV().col(k);
        if (k < singular.size() && singular(k) > negligibleSingularValue * singular(0)) {
            covariance += direction * direction.transpose() / (singular(k) * singular(k));
        } else {
            nullSpace.conservativeResize(Eigen::NoChange, nullSpace.cols() + 1);
            nullSpace.rightCols(1) = direction.cwiseQuotient(lengths);
        }
    }
    nameUndetermined(nullSpace, movable, account);
    double variance = 1.0;
    const int freedom = fitAccount::degreesOfFreedom(account);
    if (!account.areDeviationsKnown)
        variance = freedom > 0 ? values.residuals.squaredNorm() / freedom
                               : std::numeric_limits<double>::quiet_NaN();
    nameErrors(covariance, variance, lengths, movable, account);
}

} // namespace leastSquares
