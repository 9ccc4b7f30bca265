#include "LanqorGSA.h"

#include "LanqorAbstractParametric.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

constexpr int cycleCount = 15;

// Subtractive generator of D. E. Knuth (The Art of Computer Programming, vol. 2, 3.2.2, 2nd ed.
// (1981)), published as ran3 by W. H. Press et al., Numerical Recipes (1986): modulus, seed (digits
// of the golden ratio), lower limit and 1/modulus.
constexpr int MBIG = 1000000000;
constexpr int MSEED = 161803398;
constexpr int MZ = 0;
constexpr double FAC = 1.0e-9;

int wrapped(int value)
{
    return value < MZ ? value + MBIG : value;
}

// 1/Gamma(2 + w), coefficients of w^13 down to w^0: the Taylor series (its first coefficient is
// Euler's constant less 1), the last terms adjusted for those left out. Source not known.
constexpr double inverseGammaCoefficients[] = {
    -1.99542863674e-7,     1.337767384067e-6,
    -2.591225267689e-6,    -1.7545539395205e-5,
    0.000145596568617526,  -0.000360837876648255,
    -0.000804329819255744, 0.008023273027855346,
    -0.017645244547851414, -0.02455249000564128,
    0.1910911013876384,    -0.23309373642178288,
    -0.4227843350984668,   1.0,
};

/// Decides when the progress is told: the first evaluation, the last one, and between them 20
/// times a second. The clock is read only every few evaluations when these are fast.
class ProgressPace
{
public:
    explicit ProgressPace(qint64 total)
        : total(total)
    {}

    const qint64 total;

    /// Counts an evaluation; true when its progress is to be told.
    bool advance()
    {
        ++done;
        if (done == 1 || done == total)
            return true;
        if (done < nextLook)
            return false;
        const auto now = Clock::now();
        const double elapsed = std::chrono::duration<double>(now - lastTold).count();
        if (elapsed < interval) {
            nextLook = done + std::max<qint64>(1, (done - lastToldDone) / 8);
            return false;
        }
        lastTold = now;
        lastToldDone = done;
        nextLook = done + 1;
        return true;
    }
    qint64 pointsDone() const { return done; }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr double interval = 0.05; // s

    qint64 done = 0;
    qint64 nextLook = 0;
    qint64 lastToldDone = 0;
    Clock::time_point lastTold = Clock::now();
};

} // namespace

class LanqorGSAPrivate
{
public:
    LanqorGSAPrivate(LanqorGSA *q, int n, double *x, LanqorAbstractParametric *target)
        : q(q)
        , target(target)
        , n(std::max(0, n))
        , xCur(x)
        , xNew(static_cast<std::size_t>(std::max(0, n)))
        , xBest(static_cast<std::size_t>(std::max(0, n)))
    {}

    void run();

    LanqorGSA *const q;
    LanqorAbstractParametric *const target;

    int n;
    int NStopMax = 15000;
    double qA = 2.5;
    double qV = 2.5;
    double qT = 2.5;
    double T0 = 10.0;

    QVector<double> ownPoint; // where the caller gave no array
    double *xCur;
    std::vector<double> xNew;
    std::vector<double> xBest;
    bool isStopped = false;

private:
    void GSAini(const int &seed);
    double visitingTemperature(int step) const;
    double visitingAmplitude(double T) const;
    void Gfunction(const double &T, const double &amplitude);
    static double dGamma(const double &x);
    double ran3(int &seed);
    bool startCycle(int cycle, ProgressPace &pace);
    bool runCycle(ProgressPace &pace);
    void judgeTrial(double response, double T);

    // State of the subtractive generator; table entries 1 to 55 are used.
    int inext = 0;
    int inextp = 0;
    std::array<int, 56> table = {};
    bool iff = false;
    int idum = 0;

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

    double currentResponse = 0.0;
    double bestResponse = 0.0;
};

std::atomic<bool> LanqorGSA::isStopParametrization{false};

LanqorGSA::LanqorGSA(QObject *parent, const int &n, double *&x, LanqorAbstractParametric *&target)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorGSAPrivate>(this, n, x, target))
{
    isStopParametrization = false;
}

LanqorGSA::LanqorGSA(QObject *parent, const QVector<double> &start,
                     LanqorAbstractParametric *target)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorGSAPrivate>(this, start.size(), nullptr, target))
{
    d->ownPoint = start;
    d->xCur = d->ownPoint.data();
    isStopParametrization = false;
}

LanqorGSA::~LanqorGSA() = default;

void LanqorGSA::setGSAParameters(const double &acceptance, const double &temperature,
                                 const double &visiting, const double &initialTemperature)
{
    d->qA = acceptance;
    d->qT = temperature;
    d->qV = visiting;
    d->T0 = initialTemperature;
}

void LanqorGSA::setNStopMax(const int &steps)
{
    d->NStopMax = steps;
}

void LanqorGSA::initializeGSA()
{
    d->isStopped = false;
    if (!d->target || (d->n > 0 && !d->xCur)) {
        failWith(tr("The minimisation needs a fitting object and a starting vector."));
        Q_EMIT errorOmegaCalculation(getLastError());
        return;
    }
    d->run();
}

bool LanqorGSA::isStopped() const
{
    return d->isStopped;
}

const double *LanqorGSA::getBestPoint() const
{
    return d->xBest.data();
}

QVector<double> LanqorGSA::getCurrentPoint() const
{
    return d->xCur ? QVector<double>(d->xCur, d->xCur + d->n) : QVector<double>();
}

void LanqorGSAPrivate::run()
{
    Q_EMIT q->newOmegaCalculation(1);
    ProgressPace pace(qint64(cycleCount) * std::max(1, NStopMax));
    for (int cycle = 0; cycle < cycleCount; ++cycle) {
        if (!startCycle(cycle, pace)) {
            Q_EMIT q->errorOmegaCalculation(target->getLastError());
            target->endOfParametrization();
            return;
        }
        isStopped = !runCycle(pace);
        if (isStopped)
            return;
        // The first cycle repeats the 1 that announced the run.
        Q_EMIT q->newOmegaCalculation(cycle + 1);
    }
    target->endOfParametrization();
}

/// Seeds the cycle and evaluates its starting point; false when the target refuses it.
bool LanqorGSAPrivate::startCycle(int cycle, ProgressPace &pace)
{
    GSAini(cycle);
    // The best point is reset in every cycle but the responses in the first one only: a later
    // cycle goes on from the last accepted point with the responses of the cycle before it.
    std::copy_n(xCur, n, xBest.begin());
    std::copy_n(xCur, n, xNew.begin());
    target->incrementPointsNumber();
    if (!target->runParametrization(n, xCur))
        return false;
    if (cycle == 0) {
        currentResponse = target->getResponseFunction();
        bestResponse = currentResponse;
    }
    if (pace.advance())
        Q_EMIT q->pointsProgress(pace.pointsDone(), pace.total, bestResponse);
    return true;
}

/// The visiting steps of a cycle; false when the run was stopped.
bool LanqorGSAPrivate::runCycle(ProgressPace &pace)
{
    double *trial = xNew.data();
    for (int step = 1; step < NStopMax; ++step) {
        const double T = visitingTemperature(step);
        Gfunction(T, visitingAmplitude(T));
        target->incrementPointsNumber();
        // A refused trial is judged by the response that the target left behind.
        target->runParametrization(n, trial);
        judgeTrial(target->getResponseFunction(), T);
        if (LanqorGSA::isStopParametrization)
            return false;
        if (pace.advance())
            Q_EMIT q->pointsProgress(pace.pointsDone(), pace.total, bestResponse);
    }
    return true;
}

/// Generalised Metropolis rule at the temperature of the step:
///     P = [1 + (qA - 1) (E_new - E_cur) / T]^(-1/(qA - 1))
/// A negative base (qA < 1) gives no number, and the trial is rejected.
void LanqorGSAPrivate::judgeTrial(double response, double T)
{
    if (currentResponse < response) {
        const double P =
            1.0 / std::pow(1.0 + qA1 * (response - currentResponse) / T, acceptanceExp);
        if (ran3(idum) < P) {
            std::copy(xNew.begin(), xNew.end(), xCur);
            currentResponse = response;
        }
        return;
    }
    std::copy(xNew.begin(), xNew.end(), xCur);
    currentResponse = response;
    if (response <= bestResponse) {
        bestResponse = response;
        std::copy(xNew.begin(), xNew.end(), xBest.begin());
    }
}

void LanqorGSAPrivate::GSAini(const int &seed)
{
    // Seed 0 of the first cycle initialises the generator only because it never was.
    idum = -seed;
    dimensionTerm = 0.0;
    qA1 = qA - 1.0;
    qT1 = qT - 1.0;
    tempNumerator = (std::pow(2.0, qT1) - 1.0) * T0;
    qV1 = qV - 1.0;
    shapeExp = 1.0 / qV1 - 0.5;
    const double gammaValue = dGamma(shapeExp);
    visitExp = 2.0 / (3.0 - qV);
    // Both gamma functions of the normalisation are taken at one argument: the steps are
    // bounded by 1 and results depend on that. A gamma function that is infinite or zero makes
    // every step, and so every trial, no number.
    visitNorm = gammaValue / gammaValue;
    acceptanceExp = 1.0 / qA1;
}

/// T(t) = T0 (2^(qT-1) - 1) / ((t+1)^(qT-1) - 1)
double LanqorGSAPrivate::visitingTemperature(int step) const
{
    return tempNumerator / (std::pow(step + 1.0, qT1) - 1.0);
}

/// Scale of the visiting steps. The factor that depends on the number of parameters is switched
/// off by a zero exponent, which every cycle sets.
double LanqorGSAPrivate::visitingAmplitude(double T) const
{
    return dimensionTerm == 0.0 ? 1.0 : std::pow(T, dimensionTerm / (qT - 3.0));
}

/// Trial point about the current one; r and the sign are drawn for each parameter in turn:
///     step = +- amplitude / [1 + (qV-1) r^2 / T^(2/(3-qV))]^(1/(qV-1) - 1/2)
void LanqorGSAPrivate::Gfunction(const double &T, const double &amplitude)
{
    const double largestStep = visitNorm * amplitude;
    const double width = std::pow(T, visitExp);
    for (std::size_t i = 0; i < xNew.size(); ++i) {
        const double r = ran3(idum);
        const double sign = ran3(idum);
        const double step = largestStep / std::pow(1.0 + qV1 * (r * r) / width, shapeExp);
        xNew[i] = sign <= 0.5 ? xCur[i] - step : xCur[i] + step;
    }
}

/// Gamma function by a polynomial for 1/Gamma(2 + w) and the recurrence. Between 1.5 and 2.5,
/// where the recurrence needs no factor, x is divided by all the same; results depend on no value
/// of it (see visitNorm).
double LanqorGSAPrivate::dGamma(const double &x)
{
    // Beyond 1000 the value is out of the range of a double, and so is the count below.
    if (!(std::abs(x) < 1000.0))
        return std::numeric_limits<double>::quiet_NaN();
    const int shift = static_cast<int>(std::trunc(x - 2.0 + 0.5));
    const double w = x - (shift + 2);
    double y = 0.0;
    for (const double coefficient : inverseGammaCoefficients)
        y = y * w + coefficient;
    if (shift >= 1) {
        double product = x - 1.0;
        for (int k = 2; k <= shift; ++k)
            product *= x - k;
        return product / y;
    }
    double product = x;
    for (int k = 1; k <= -shift - 1; ++k)
        product *= x + k;
    return 1.0 / (y * product);
}

double LanqorGSAPrivate::ran3(int &seed)
{
    if (seed < 0 || !iff) {
        int mj = MSEED - std::abs(seed);
        int mk = 1;
        table[55] = mj;
        for (int i = 1; i <= 54; ++i) {
            const auto ii = static_cast<std::size_t>((21 * i) % 55);
            table[ii] = mk;
            mk = wrapped(mj - mk);
            mj = table[ii];
        }
        for (int pass = 0; pass < 4; ++pass) {
            for (std::size_t k = 1; k <= 55; ++k)
                table[k] = wrapped(table[k] - table[1 + (k + 30) % 55]);
        }
        inext = 0;
        inextp = 31;
        seed = 1;
        iff = true;
    }
    if (++inext == 56)
        inext = 1;
    if (++inextp == 56)
        inextp = 1;
    int &entry = table[static_cast<std::size_t>(inext)];
    entry = wrapped(entry - table[static_cast<std::size_t>(inextp)]);
    return entry * FAC;
}
