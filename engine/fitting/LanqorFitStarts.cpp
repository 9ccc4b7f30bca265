#include "LanqorFitStarts.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorGSA.h>

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

/// A start that was made.
struct Run
{
    std::unique_ptr<LanqorAbstractParametric> fit;
    std::unique_ptr<LanqorGSA> annealing;
    QString error; // written by the thread that runs it
};

} // namespace

class LanqorFitStartsPrivate
{
public:
    Run *find(int number)
    {
        return number >= 1 && number <= int(runs.size()) ? &runs[std::size_t(number - 1)] : nullptr;
    }

    std::vector<Run> runs;
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
        auto annealing = std::make_unique<LanqorGSA>(nullptr, start.vector, start.fit.get());
        d->runs.push_back({std::move(start.fit), std::move(annealing), QString()});
    }
    for (Run &run : d->runs)
        QObject::connect(
            run.annealing.get(), &LanqorGSA::errorOmegaCalculation, run.annealing.get(),
            [&run](const QString &message) { run.error = message; }, Qt::DirectConnection);
}

LanqorFitStarts::~LanqorFitStarts() = default;

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

qint64 LanqorFitStarts::getPointNumber() const
{
    qint64 points = 0;
    for (const Run &run : d->runs)
        points += run.fit->getPointNumber();
    return points;
}
