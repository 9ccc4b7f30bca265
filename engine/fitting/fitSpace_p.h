#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/LanqorAbstractParametric.h>

#include <QVector>

/// A fitting problem as a minimiser sees it: the parameters that are not fixed, each in a unit that
/// makes its range @ref rangeInSteps long (one that has no upper bound keeps its own), with a
/// coordinate beyond a bound reflected into the range. Without parameters the vectors are those of
/// the problem itself, untouched.
///
/// It remembers its best point and the way to it.
class FitSpace : public LanqorAbstractParametric
{
public:
    /// Steps of the annealing are 1 at most: a few of them cross a range.
    static constexpr double rangeInSteps = 2.0;
    /// Response of a trial that the problem refuses.
    static constexpr double refusedResponse = 1.0e25;

    /// @param problem  not owned
    FitSpace(LanqorAbstractParametric &problem, const QVector<FitParameter> &parameters);

    bool runParametrization(const int &n, double *&x) override;
    void endOfParametrization() override;

    /// The coordinates of a vector of the problem, brought into the bounds.
    QVector<double> fromVector(const QVector<double> &vector) const;
    /// The vector of the problem at these coordinates.
    QVector<double> toVector(const double *x, int n) const;

    /// The best vector of the problem; empty before there is one.
    const QVector<double> &getBestVector() const { return bestVector; }
    const QVector<FitTrace::Improvement> &getTrace() const { return trace; }
    const QVector<FitParameter> &getParameters() const { return parameters; }

private:
    LanqorAbstractParametric &problem;
    const QVector<FitParameter> parameters;
    QVector<double> trial;
    QVector<double> bestVector;
    QVector<FitTrace::Improvement> trace;
};
