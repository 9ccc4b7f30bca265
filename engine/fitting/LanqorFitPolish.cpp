#include "LanqorFitPolish.h"

#include "fitting/fitSpace_p.h"

#include <LanqorEngine/LanqorGSA.h>

#include <nlopt.h>

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

namespace {

/// First steps, in ranges of the parameters: wide enough to leave the noise of an annealing, and
/// about what the simplex leaves behind.
constexpr double simplexStep = 0.05 * FitSpace::rangeInSteps;
constexpr double modelStep = 0.001 * FitSpace::rangeInSteps;
/// A run of the simplex starts anew while it still gains this share of the response.
constexpr double worthwhileGain = 1.0e-6;
/// Ends a run, in ranges and in shares of the response.
constexpr double smallestStep = 1.0e-10 * FitSpace::rangeInSteps;
constexpr double smallestGain = 1.0e-14;
/// A response that is 0 but for rounding: all misfits are sums of squares or of absolute values.
constexpr double exactResponse = 1.0e-20;
/// No feasible trial of any problem reaches this response.
constexpr double feasibleBelow = 1.0e19;

struct OptimizerDeleter
{
    void operator()(nlopt_opt optimizer) const { nlopt_destroy(optimizer); }
};
using Optimizer = std::unique_ptr<std::remove_pointer_t<nlopt_opt>, OptimizerDeleter>;

/// What the function that NLopt calls needs.
struct Search
{
    FitSpace &space;
    nlopt_opt optimizer = nullptr;
    int points = 0;
};

double evaluate(unsigned n, const double *x, double *, void *data)
{
    auto &search = *static_cast<Search *>(data);
    std::vector<double> trial(x, x + n);
    double *values = trial.data();
    ++search.points;
    const bool isEvaluated = search.space.runParametrization(int(n), values);
    if (LanqorGSA::isStopParametrization && search.optimizer)
        nlopt_force_stop(search.optimizer);
    return isEvaluated ? search.space.getResponseFunction() : FitSpace::refusedResponse;
}

} // namespace

class LanqorFitPolishPrivate
{
public:
    /// Minimises from the best point of @p space; true when the method converged.
    bool minimise(Search &search, nlopt_algorithm algorithm, double firstStep) const;
    bool polish(Search &search) const;

    LanqorAbstractParametric *problem;
    QVector<FitParameter> parameters;
    int maximumPoints = 20000;
};

LanqorFitPolish::LanqorFitPolish(LanqorAbstractParametric *problem,
                                 const QVector<FitParameter> &parameters)
    : d(std::make_unique<LanqorFitPolishPrivate>())
{
    d->problem = problem;
    d->parameters = parameters;
}

LanqorFitPolish::~LanqorFitPolish() = default;

void LanqorFitPolish::setMaximumPoints(const int &points)
{
    d->maximumPoints = points;
}

bool LanqorFitPolishPrivate::minimise(Search &search, nlopt_algorithm algorithm,
                                      double firstStep) const
{
    const QVector<double> start = search.space.fromVector(search.space.getBestVector());
    const auto n = static_cast<unsigned>(start.size());
    if (search.points >= maximumPoints)
        return false;
    std::vector<double> low(n, 0.0);
    std::vector<double> high;
    for (const FitParameter &parameter : parameters)
        if (!parameter.isFixed)
            high.push_back(std::isfinite(parameter.maximum) ? FitSpace::rangeInSteps : HUGE_VAL);
    const Optimizer optimizer(nlopt_create(algorithm, n));
    search.optimizer = optimizer.get();
    nlopt_set_min_objective(optimizer.get(), evaluate, &search);
    nlopt_set_lower_bounds(optimizer.get(), low.data());
    nlopt_set_upper_bounds(optimizer.get(), high.data());
    nlopt_set_initial_step1(optimizer.get(), firstStep);
    nlopt_set_xtol_abs1(optimizer.get(), smallestStep);
    nlopt_set_ftol_rel(optimizer.get(), smallestGain);
    nlopt_set_stopval(optimizer.get(), exactResponse);
    nlopt_set_maxeval(optimizer.get(), maximumPoints - search.points);
    std::vector<double> x(start.begin(), start.end());
    double response = 0.0;
    const nlopt_result result = nlopt_optimize(optimizer.get(), x.data(), &response);
    search.optimizer = nullptr;
    return result == NLOPT_FTOL_REACHED || result == NLOPT_XTOL_REACHED ||
           result == NLOPT_SUCCESS || result == NLOPT_STOPVAL_REACHED ||
           result == NLOPT_ROUNDOFF_LIMITED;
}

bool LanqorFitPolishPrivate::polish(Search &search) const
{
    FitSpace &space = search.space;
    bool isConverged = false;
    double before = HUGE_VAL;
    while (space.getBestResponse() < before * (1.0 - worthwhileGain)) {
        before = space.getBestResponse();
        isConverged = minimise(search, NLOPT_LN_SBPLX, simplexStep);
        if (before <= exactResponse || space.getBestResponse() <= exactResponse)
            return true;
        // The model needs two parameters.
        if (isConverged && space.fromVector(space.getBestVector()).size() > 1)
            minimise(search, NLOPT_LN_BOBYQA, modelStep);
        if (LanqorGSA::isStopParametrization)
            return false;
    }
    return isConverged;
}

FitPolishResults LanqorFitPolish::run(const QVector<double> &start)
{
    FitSpace space(*d->problem, d->parameters);
    Search search{space};
    const QVector<double> first = space.fromVector(start);
    evaluate(static_cast<unsigned>(first.size()), first.constData(), nullptr, &search);
    FitPolishResults results;
    if (!space.getBestVector().isEmpty() && !first.isEmpty())
        results.isConverged = d->polish(search) && space.getBestResponse() < feasibleBelow;
    results.vector = space.getBestVector();
    results.response = space.getBestResponse();
    results.points = search.points;
    results.trace = space.getTrace();
    return results;
}
