#include "fitting/fitSpace_p.h"

#include <algorithm>
#include <cmath>

namespace {

bool isBounded(const FitParameter &parameter)
{
    return std::isfinite(parameter.maximum);
}

/// Value of the parameter per unit of its coordinate.
double unitOf(const FitParameter &parameter)
{
    const double range = parameter.maximum - parameter.minimum;
    return isBounded(parameter) && range > 0.0 ? range / FitSpace::rangeInSteps : 1.0;
}

/// The value at a coordinate, which counts from the lower bound and is reflected at the bounds as
/// often as needed.
double valueAt(const FitParameter &parameter, double coordinate)
{
    double inside = std::abs(coordinate);
    if (isBounded(parameter)) {
        inside = std::fmod(inside, 2.0 * FitSpace::rangeInSteps);
        inside = std::min(inside, 2.0 * FitSpace::rangeInSteps - inside);
    }
    const double value = parameter.minimum + inside * unitOf(parameter);
    return std::clamp(value, parameter.minimum, parameter.maximum);
}

} // namespace

FitSpace::FitSpace(LanqorAbstractParametric &problem, const QVector<FitParameter> &parameters)
    : problem(problem)
    , parameters(parameters)
{}

bool FitSpace::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    trial = toVector(x, n);
    double *values = trial.data();
    problem.incrementPointsNumber();
    const bool isEvaluated = problem.runParametrization(trial.size(), values);
    // An annealing of the problem itself judges a refused trial by the response before it.
    responseFunction =
        isEvaluated || parameters.isEmpty() ? problem.getResponseFunction() : refusedResponse;
    if (!isEvaluated)
        setLastError(problem.getLastError());
    if (isEvaluated && responseFunction < bestResponse) {
        bestResponse = responseFunction;
        bestVector = trial;
        trace.append({problem.getPointNumber(), responseFunction});
    }
    return isEvaluated;
}

void FitSpace::endOfParametrization()
{
    problem.endOfParametrization();
}

QVector<double> FitSpace::fromVector(const QVector<double> &vector) const
{
    if (parameters.isEmpty())
        return vector;
    QVector<double> coordinates;
    for (int i = 0; i < parameters.size(); ++i) {
        const FitParameter &parameter = parameters.at(i);
        const double value = std::clamp(vector.value(i), parameter.minimum, parameter.maximum);
        if (!parameter.isFixed)
            coordinates.append((value - parameter.minimum) / unitOf(parameter));
    }
    return coordinates;
}

QVector<double> FitSpace::toVector(const double *x, int n) const
{
    if (parameters.isEmpty())
        return QVector<double>(x, x + n);
    QVector<double> vector;
    int next = 0;
    for (const FitParameter &parameter : parameters)
        vector.append(parameter.isFixed || next >= n ? parameter.fixedValue
                                                     : valueAt(parameter, x[next++]));
    return vector;
}
