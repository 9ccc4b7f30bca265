#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>

#include <array>
#include <atomic>
#include <vector>

class LanqorAbstractParametric;

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
/// kept; the caller's vector ends as the last accepted point.
///
/// An object makes one run, on the caller's thread; runs on different objects may be made in
/// different threads.
class LANQORENGINE_EXPORT LanqorGSA : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// Stops every run of the process after its current step; may be set from any thread and
    /// from a signal handler. Constructing a LanqorGSA clears it.
    static std::atomic<bool> isStopParametrization;

    /// @param n  number of parameters
    /// @param x  starting vector, n values, not copied: holds the current point during the run
    /// @param target  what is minimised; not owned
    LanqorGSA(QObject *parent, const int &n, double *&x, LanqorAbstractParametric *&target);
    ~LanqorGSA() override;

    /// Acceptance index, temperature index, visiting index (each 2.5 unless set) and initial
    /// temperature (10.0), all dimensionless; the temperature is in units of the response.
    void setGSAParameters(const double &qA, const double &qT, const double &qV, const double &T0);
    /// Evaluations per cycle; 15000 unless set.
    void setNStopMax(const int &steps);

    /// Makes the run; returns when it has finished, failed or been stopped. A run that is
    /// stopped does not call the target's endOfParametrization().
    void initializeGSA();

    /// Best point since the last cycle began, n values; a cycle starts it at the current point.
    const double *getBestPoint() const { return xBest.data(); }

Q_SIGNALS:
    /// 1 before the first cycle, then the number of cycles finished.
    void newOmegaCalculation(int cycle);
    /// The target refused the first evaluation of a cycle: its last error.
    void errorOmegaCalculation(const QString &message);
    /// Evaluations done and in all, and the smallest response so far; at most 20 times a
    /// second, besides the first and the last evaluation.
    void pointsProgress(qint64 done, qint64 total, double bestResponse);

private:
    class ProgressPace;

    void GSAini(const int &seed);
    double visitingTemperature(int step) const;
    double visitingAmplitude(double T) const;
    void Gfunction(const double &T, const double &amplitude);
    static double dGamma(const double &x);
    double ran3(int &seed);
    bool startCycle(int cycle, ProgressPace &pace);
    bool runCycle(ProgressPace &pace);
    void judgeTrial(double response, double T);

    LanqorAbstractParametric *target;

    // State of the subtractive generator; table entries 1 to 55 are used.
    int inext = 0;
    int inextp = 0;
    std::array<int, 56> table = {};
    bool iff = false;
    int idum = 0;

    int n;
    int NStopMax = 15000;
    double qA = 2.5;
    double qV = 2.5;
    double qT = 2.5;
    double T0 = 10.0;

    // Set at the start of every cycle.
    double qA1 = 0.0;
    double qT1 = 0.0;
    double qV1 = 0.0;
    double tempNumerator = 0.0;
    double visitExp = 0.0;
    double shapeExp = 0.0;
    double dimensionTerm = 0.0;
    double visitNorm = 0.0;
    double acceptanceExp = 0.0;

    double *xCur;
    std::vector<double> xNew;
    std::vector<double> xBest;
    double currentResponse = 0.0;
    double bestResponse = 0.0;
};
