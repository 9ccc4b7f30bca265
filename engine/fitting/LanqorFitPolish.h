#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/LanqorEngineExport.h>

#include <QVector>

#include <memory>

class LanqorAbstractParametric;
class LanqorFitPolishPrivate;

/// Result of LanqorFitPolish.
struct FitPolishResults
{
    QVector<double> vector;               ///< the best point that was met, the start included
    double response = 0.0;                ///< there
    int points = 0;                       ///< trials
    QVector<FitTrace::Improvement> trace; ///< the way there
    bool isConverged = false; ///< false when the points ran out, the fit was stopped or every trial
                              ///< was infeasible
};

/// Local minimisation of a fitting problem without derivatives, within bounds: the subspace simplex
/// method (T. Rowan, PhD thesis, University of Texas at Austin (1990)), which copes with responses
/// that are sums of absolute values and with trials that are refused, and from where it ends the
/// quadratic model BOBYQA (M. J. D. Powell, report DAMTP 2009/NA06, Cambridge (2009)), both of the
/// library NLopt. The same start always gives the same result.
///
/// A trial that the problem refuses counts as infeasible. LanqorGSA::isStopParametrization ends
/// the minimisation after the current trial.
class LANQORENGINE_EXPORT LanqorFitPolish
{
public:
    /// @param problem  not owned; its own record of the best trial takes part as in an annealing
    /// @param parameters  of the vectors of the problem, in their order
    LanqorFitPolish(LanqorAbstractParametric *problem, const QVector<FitParameter> &parameters);
    ~LanqorFitPolish();
    LanqorFitPolish(const LanqorFitPolish &) = delete;
    LanqorFitPolish &operator=(const LanqorFitPolish &) = delete;

    /// Largest number of trials of a run; 20000 unless set.
    void setMaximumPoints(const int &points);
    /// Minimises from a vector of the problem, which is brought into the bounds first.
    FitPolishResults run(const QVector<double> &start);

private:
    std::unique_ptr<LanqorFitPolishPrivate> d;
};
