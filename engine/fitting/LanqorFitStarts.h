#pragma once

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

    /// Number of starts.
    int getCount() const;
    /// The annealing of a start, for its settings and signals; null outside 1 to getCount().
    LanqorGSA *getAnnealing(const int &number) const;
    /// Anneals from a start; returns when that has finished, failed or been stopped.
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
    /// Trials of all starts.
    qint64 getPointNumber() const;

private:
    std::unique_ptr<LanqorFitStartsPrivate> d;
};
