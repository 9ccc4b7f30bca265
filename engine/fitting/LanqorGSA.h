#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

class LanqorAbstractParametric;
class LanqorGSAPrivate;

/// Generalised simulated annealing (Tsallis and Stariolo, Physica A 233, 395 (1996)): minimises
/// the response function of a parametric object.
///
/// A run is 15 cycles of NStopMax evaluations. The first evaluation of a cycle is that of the
/// current point, the others are visiting steps: every parameter of the current point moves by
/// a step of at most 1 in magnitude, whatever its unit, and the trial is accepted when it is no
/// worse or, with the probability of the generalised Metropolis rule, when it is. Limits of the
/// parameters are the business of the parametric object.
///
/// Each cycle seeds the random numbers by its own number and restarts the temperature, so the
/// same starting vector always gives the same run. The result is what the parametric object
/// kept; the starting vector ends as the last accepted point.
///
/// An object makes one run, on the caller's thread; runs on different objects may be made in
/// different threads.
class LANQORENGINE_EXPORT LanqorGSA : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// Stops every run of the process after its current step; may be set from any thread and
    /// from a signal handler. Constructing a LanqorGSA clears it: construct all annealings of a
    /// fit before the first of them runs, or leave that to LanqorFitStarts.
    static std::atomic<bool> isStopParametrization;

    /// @param n  number of parameters
    /// @param x  starting vector, n values, not copied: holds the current point during the run
    /// @param target  what is minimised; not owned
    LanqorGSA(QObject *parent, const int &n, double *&x, LanqorAbstractParametric *&target);
    /// The same with a copy of the starting vector; getCurrentPoint() tells what becomes of it.
    LanqorGSA(QObject *parent, const QVector<double> &start, LanqorAbstractParametric *target);
    ~LanqorGSA() override;

    /// Acceptance index, temperature index, visiting index (each 2.5 unless set) and initial
    /// temperature (10.0), all dimensionless; the temperature is in units of the response.
    void setGSAParameters(const double &qA, const double &qT, const double &qV, const double &T0);
    /// Evaluations per cycle; 15000 unless set.
    void setNStopMax(const int &steps);

    /// Makes the run; returns when it has finished, failed or been stopped. A run that is
    /// stopped does not call the target's endOfParametrization().
    void initializeGSA();

    /// True when isStopParametrization ended the run.
    bool isStopped() const;
    /// Best point since the last cycle began, n values; a cycle starts it at the current point.
    const double *getBestPoint() const;
    /// The current point; after the run the last one that was accepted.
    QVector<double> getCurrentPoint() const;

Q_SIGNALS:
    /// 1 before the first cycle, then the number of cycles finished.
    void newOmegaCalculation(int cycle);
    /// The target refused the first evaluation of a cycle: its last error.
    void errorOmegaCalculation(const QString &message);
    /// Evaluations done and in all, and the smallest response so far; at most 20 times a
    /// second, besides the first and the last evaluation.
    void pointsProgress(qint64 done, qint64 total, double bestResponse);

private:
    std::unique_ptr<LanqorGSAPrivate> d;
};
