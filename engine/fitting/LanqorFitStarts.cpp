#include "LanqorFitStarts.h"

#include "fitting/fitAccount_p.h"
#include "fitting/fitSpace_p.h"
#include "fitting/intensityFit_p.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorFitPolish.h>
#include <LanqorEngine/LanqorGSA.h>

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

/// A start that was made.
struct Run
{
    std::unique_ptr<LanqorAbstractParametric> fit;
    std::unique_ptr<FitSpace> space;
    std::unique_ptr<LanqorGSA> annealing;
    // Written by the thread that runs it.
    QString error;
    QVector<double> polished; // the best vector of the polish, when there was one
    QVector<FitTrace::Improvement> polishTrace;
    bool isConverged = false;
};

} // namespace

class LanqorFitStartsPrivate
{
public:
    Run *find(int number)
    {
        return number >= 1 && number <= int(runs.size()) ? &runs[std::size_t(number - 1)] : nullptr;
    }

    const Run *find(int number) const
    {
        return const_cast<LanqorFitStartsPrivate *>(this)->find(number);
    }
    void polish(Run &run) const;

    std::vector<Run> runs;
    bool isPolished = false;
    QString setupError;
    std::atomic<bool> isStopped{false};
};

LanqorFitStarts::LanqorFitStarts(const int &count, const MakeStart &makeStart)
    : d(std::make_unique<LanqorFitStartsPrivate>())
{
    for (int number = 1; number <= count; ++number) {
        FitStart start = makeStart(number);
        if (!start.fit || start.vector.isEmpty()) {
            d->setupError = start.fit ? start.fit->getLastError() : QString();
            d->runs.clear();
            return;
        }
        Run run;
        run.fit = std::move(start.fit);
        run.space = std::make_unique<FitSpace>(*run.fit, start.parameters);
        run.annealing = std::make_unique<LanqorGSA>(nullptr, run.space->fromVector(start.vector),
                                                    run.space.get());
        d->runs.push_back(std::move(run));
    }
    for (Run &run : d->runs)
        QObject::connect(
            run.annealing.get(), &LanqorGSA::errorOmegaCalculation, run.annealing.get(),
            [&run](const QString &message) { run.error = message; }, Qt::DirectConnection);
}

LanqorFitStarts::~LanqorFitStarts() = default;

double LanqorFitStarts::getStartingFraction(const int &number, const int &index)
{
    return intensityFit::startingFraction(number, index);
}

int LanqorFitStarts::getCount() const
{
    return int(d->runs.size());
}

LanqorGSA *LanqorFitStarts::getAnnealing(const int &number) const
{
    const Run *run = d->find(number);
    return run ? run->annealing.get() : nullptr;
}

void LanqorFitStarts::run(const int &number)
{
    Run *run = d->find(number);
    if (!run || isStopped())
        return;
    run->annealing->initializeGSA();
    if (run->annealing->isStopped())
        d->isStopped = true;
    else if (d->isPolished && !run->space->getBestVector().isEmpty())
        d->polish(*run);
}

void LanqorFitStartsPrivate::polish(Run &run) const
{
    // A problem may widen itself as its misfit falls: what ends the one run starts the other.
    constexpr int maximumRuns = 3;
    FitPolishResults before;
    before.vector = run.space->getBestVector();
    before.response = run.space->getBestResponse();
    for (int i = 0; i < maximumRuns && !isStopped; ++i) {
        LanqorFitPolish polish(run.fit.get(), run.space->getParameters());
        const FitPolishResults after = polish.run(before.vector);
        const bool isBetter = after.response < before.response;
        if (isBetter) {
            run.polished = after.vector;
            run.polishTrace += after.trace;
        }
        run.isConverged = after.isConverged;
        if (!isBetter)
            break;
        before = after;
    }
    run.fit->endOfParametrization();
}

void LanqorFitStarts::setPolished(const bool &isPolished)
{
    d->isPolished = isPolished;
}

void LanqorFitStarts::stop()
{
    d->isStopped = true;
    LanqorGSA::isStopParametrization = true;
}

bool LanqorFitStarts::isStopped() const
{
    return d->isStopped || LanqorGSA::isStopParametrization;
}

QString LanqorFitStarts::getLastError() const
{
    for (const Run &run : d->runs)
        if (!run.error.isEmpty())
            return run.error;
    return d->setupError;
}

int LanqorFitStarts::getBestNumber() const
{
    const auto best =
        std::min_element(d->runs.begin(), d->runs.end(), [](const Run &a, const Run &b) {
            return a.fit->getBestResponse() < b.fit->getBestResponse();
        });
    return best == d->runs.end() ? 0 : int(best - d->runs.begin()) + 1;
}

LanqorAbstractParametric *LanqorFitStarts::getBest() const
{
    const Run *run = d->find(getBestNumber());
    return run ? run->fit.get() : nullptr;
}

QVector<double> LanqorFitStarts::getBestVector(const int &number) const
{
    const Run *run = d->find(number);
    if (!run)
        return {};
    return run->polished.isEmpty() ? run->space->getBestVector() : run->polished;
}

FitTrace LanqorFitStarts::getTrace(const int &number) const
{
    const Run *run = d->find(number);
    FitTrace trace{number, {}};
    if (run)
        trace.improvements = run->space->getTrace() + run->polishTrace;
    return trace;
}

bool LanqorFitStarts::isConverged(const int &number) const
{
    const Run *run = d->find(number);
    return run && run->isConverged;
}

FitAccount LanqorFitStarts::makeAccount(
    const QVector<FitParameter> &parameters,
    const std::function<QVector<double>(const QVector<double> &)> &toReported) const
{
    FitAccount account;
    account.starts = getCount();
    account.bestStart = getBestNumber();
    account.points = getPointNumber();
    if (account.bestStart == 0)
        return account;
    account.misfit = getBest()->getBestResponse();
    const Run &best = *d->find(account.bestStart);
    account.end = isStopped()             ? FitAccount::End::Stopped
                  : !best.error.isEmpty() ? FitAccount::End::Refused
                  : best.isConverged      ? FitAccount::End::Converged
                                          : FitAccount::End::PointsSpent;
    fitAccount::addParameters(account, parameters, toReported(getBestVector(account.bestStart)));
    QVector<QVector<double>> vectors;
    QVector<double> misfits;
    for (int number = 1; number <= getCount(); ++number) {
        const QVector<double> vector = getBestVector(number);
        vectors.append(vector.isEmpty() ? vector : toReported(vector));
        misfits.append(d->find(number)->fit->getBestResponse());
    }
    fitAccount::addMinima(account, vectors, misfits);
    return account;
}

qint64 LanqorFitStarts::getPointNumber() const
{
    qint64 points = 0;
    for (const Run &run : d->runs)
        points += run.fit->getPointNumber();
    return points;
}
