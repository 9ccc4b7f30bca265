#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>

#include <memory>

class LanqorAbstractParametricPrivate;

/// A fitting problem: evaluates trial vectors of real parameters and leaves the misfit of the
/// last one, smaller is better, in the response function.
///
/// Derived classes override runParametrization(), in which they also keep their own best point,
/// and endOfParametrization(), in which they write their result. An infeasible trial never
/// fails a fit: it scores a response that no feasible one reaches.
class LANQORENGINE_EXPORT LanqorAbstractParametric : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    explicit LanqorAbstractParametric(QObject *parent = nullptr);
    ~LanqorAbstractParametric() override;

    /// Evaluates the trial vector @p x of @p n parameters. The base only keeps both.
    /// @return false, with the reason in getLastError(), when there is nothing to evaluate
    virtual bool runParametrization(const int &n, double *&x);
    /// Called once when a fit is over; the base does nothing.
    virtual void endOfParametrization();

    /// Misfit left by the last evaluation.
    double getResponseFunction() const;
    /// Smallest misfit so far; 1.0e24 before there is one.
    double getBestResponse() const;

    /// Text that a result report carries as its required citations.
    void setRequiredCitations(const QString &citations);

    /// Counts an evaluation; called by the minimiser before each.
    void incrementPointsNumber();
    /// Number of evaluations so far.
    int getPointNumber() const;
    void setPointNumberMaximum(const int &maximum);
    int getPointNumberMaximum() const;

protected:
    int parameterCount = 0;
    double *parameters = nullptr; // of the last evaluation; owned by the minimiser's caller
    double responseFunction = 0.0;
    double bestResponse = 1.0e24;
    QString requiredCitations;
    int pointNumber = 0;
    int pointNumberMaximum = 100000;

private:
    // The members above are the interface of derived classes, who write them, and stay. Whatever
    // else this class comes to need goes behind this pointer, so that its size never changes.
    std::unique_ptr<LanqorAbstractParametricPrivate> d;
};
