#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/LanqorEngineExport.h>

#include <QString>
#include <QVector>

#include <functional>
#include <memory>

class LanqorAbstractParametric;
class LanqorFitStartsPrivate;
class LanqorGSA;

/// One of several starts of a fit: the fitting object, set up, and the vector from which it starts.
struct FitStart
{
    std::unique_ptr<LanqorAbstractParametric> fit;
    QVector<double> vector; ///< empty when the fit cannot start: its last error tells why
    /// Unless empty, the annealing stays within these bounds, which the vector is brought into,
    /// leaves the fixed parameters alone and takes steps of up to half a range; otherwise it is
    /// that of LanqorGSA on the fit itself.
    QVector<FitParameter> parameters = {};
};

/// One fitting problem annealed from several starting vectors, of which the best result counts:
/// the smallest response, and of equal ones that of the lowest start.
///
/// The object makes everything before the first annealing runs and starts no threads: the caller
/// calls run() once for each start, in any order, from as many threads as it likes. A start gives
/// the same result whatever runs beside it.
///
/// A stop, by stop() or LanqorGSA::isStopParametrization, ends the annealings that run and keeps
/// those that have not begun from running, also when a LanqorGSA constructed meanwhile has cleared
/// that flag. The fits keep what they had found.
class LANQORENGINE_EXPORT LanqorFitStarts
{
public:
    /// Makes start @p number (1, 2, ...).
    using MakeStart = std::function<FitStart(int number)>;

    /// Makes the starts 1 to @p count; the first that has no vector ends this, getCount() is then 0
    /// and getLastError() tells why.
    LanqorFitStarts(const int &count, const MakeStart &makeStart);
    ~LanqorFitStarts();
    LanqorFitStarts(const LanqorFitStarts &) = delete;
    LanqorFitStarts &operator=(const LanqorFitStarts &) = delete;

    /// Where start @p number (1, 2, ...) of several puts parameter @p index (from 0) in its range,
    /// from 0 to 1: 1/2 + (number - 1) sqrt(p) without its whole part, p the prime number of the
    /// index (2, 3, 5, ...).
    static double getStartingFraction(const int &number, const int &index);

    /// Number of starts.
    int getCount() const;
    /// The annealing of a start, for its settings and signals; null outside 1 to getCount().
    LanqorGSA *getAnnealing(const int &number) const;
    /// Lets a start that has parameters go on from the best point of its annealing by
    /// LanqorFitPolish; not so unless set.
    void setPolished(const bool &isPolished);
    /// Anneals from a start, and polishes; returns when that has finished, failed or been stopped.
    void run(const int &number);

    /// Stops all starts; may be called from any thread.
    void stop();
    bool isStopped() const;
    /// Why the lowest start that failed did; empty when none has.
    QString getLastError() const;

    /// The start with the best result; 0 when there is no start.
    int getBestNumber() const;
    /// Its fitting object, or null. An annealing that was stopped has not called
    /// endOfParametrization().
    LanqorAbstractParametric *getBest() const;
    /// The best vector of a start; empty before there is one.
    QVector<double> getBestVector(const int &number) const;
    /// Its way there.
    FitTrace getTrace(const int &number) const;
    /// True when the polish of a start ended by itself.
    bool isConverged(const int &number) const;
    /// How the fit ended and what it found; the objective, its unit, the targets and the number of
    /// data are left to the caller.
    /// @param parameters  as they are told, fixed ones marked
    /// @param toReported  the values told of a vector
    FitAccount
    makeAccount(const QVector<FitParameter> &parameters,
                const std::function<QVector<double>(const QVector<double> &)> &toReported) const;
    /// Trials of all starts.
    qint64 getPointNumber() const;

private:
    std::unique_ptr<LanqorFitStartsPrivate> d;
};
