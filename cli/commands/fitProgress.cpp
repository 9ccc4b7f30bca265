#include "commands/fitProgress.h"

#include "Command.h"
#include "options/fitOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>

#include <QByteArray>
#include <QElapsedTimer>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <thread>
#include <unistd.h>

namespace cli {

namespace {

/// A signal handler may touch nothing but lock-free atomics.
void stopFits(int signal)
{
    LanqorGSA::isStopParametrization = true;
    std::signal(signal, SIG_DFL);
}

/// Catches the signals while it lives.
class SignalGuard
{
public:
    SignalGuard()
    {
        for (const int signal : caught)
            std::signal(signal, stopFits);
    }
    ~SignalGuard()
    {
        for (const int signal : caught)
            std::signal(signal, SIG_DFL);
    }
    SignalGuard(const SignalGuard &) = delete;
    SignalGuard &operator=(const SignalGuard &) = delete;

private:
    static constexpr int caught[] = {SIGINT, SIGTERM, SIGHUP};
};

/// Adds up the progress of runs in several threads and shows it.
class ProgressDisplay
{
public:
    ProgressDisplay(std::size_t runCount, bool isQuiet)
        : isTerminal(isatty(STDERR_FILENO) != 0)
        , isQuiet(isQuiet)
        , runs(runCount)
    {
        timer.start();
    }
    ~ProgressDisplay() { endBar(); }

    void update(std::size_t run, qint64 done, qint64 total, double best)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        runs[run] = {done, total, best, true};
        Run sum;
        qint64 started = 0;
        for (const Run &each : runs) {
            if (!each.isStarted)
                continue;
            sum.done += each.done;
            sum.total += each.total;
            sum.best = started == 0 ? each.best : std::min(sum.best, each.best);
            ++started;
        }
        // Runs that wait for a thread are as long as those that have begun.
        sum.total = sum.total / started * qint64(runs.size());
        show(sum);
    }

    /// Leaves the line of the bar.
    void endBar()
    {
        if (isBarShown)
            std::fputc('\n', stderr);
        isBarShown = false;
    }

private:
    struct Run
    {
        qint64 done = 0;
        qint64 total = 0;
        double best = 0.0;
        bool isStarted = false;
    };

    void show(const Run &sum)
    {
        constexpr double terminalPace = 0.1; // s between two lines
        constexpr double filePace = 10.0;
        const double seconds = double(timer.elapsed()) / 1000.0;
        if (isQuiet || seconds - lastShown < (isTerminal ? terminalPace : filePace))
            return;
        lastShown = seconds;
        const double left =
            sum.done > 0 ? seconds * double(sum.total - sum.done) / double(sum.done) : 0.0;
        const QString line =
            tr("%1 % of %2 points, best misfit %3, %4 s left")
                .arg(QString::number(sum.total > 0 ? 100 * sum.done / sum.total : 100)
                         .rightJustified(3),
                     QString::number(sum.total), QString::number(sum.best, 'g', 4),
                     QString::number(left, 'f', 0));
        if (!isTerminal) {
            tell(line);
            return;
        }
        // Blanks cover what is left of a longer line before.
        const QByteArray bytes = '\r' + line.leftJustified(lastLength).toUtf8();
        std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
        lastLength = line.size();
        isBarShown = true;
    }

    const bool isTerminal;
    const bool isQuiet;
    std::mutex mutex;
    QElapsedTimer timer;
    std::vector<Run> runs;
    double lastShown = 0.0; // s; a fit that is shorter shows nothing
    int lastLength = 0;
    bool isBarShown = false;
};

} // namespace

FitEnd runInThreads(int count, const std::function<void(int)> &work)
{
    LanqorGSA::isStopParametrization = false;
    const SignalGuard guard;
    std::atomic<int> next{1};
    const auto loop = [&] {
        for (int number = next++; number <= count; number = next++)
            work(number);
    };
    const int threadCount = std::min(count, int(std::max(1U, std::thread::hardware_concurrency())));
    std::vector<std::thread> threads;
    for (int i = 1; i < threadCount; ++i)
        threads.emplace_back(loop);
    loop();
    for (std::thread &thread : threads)
        thread.join();
    return LanqorGSA::isStopParametrization ? FitEnd::Interrupted : FitEnd::Finished;
}

FitEnd runFits(LanqorFitStarts &starts, const FitOptions &options)
{
    const int count = starts.getCount();
    if (count == 0)
        throw Failure{starts.getLastError()};
    starts.setPolished(options.isPolished);
    ProgressDisplay display(std::size_t(count), options.isQuiet);
    const QObject receiver; // ends the connections
    for (int number = 1; number <= count; ++number) {
        LanqorGSA &annealing = *starts.getAnnealing(number);
        annealing.setNStopMax(options.stepsPerCycle);
        annealing.setGSAParameters(2.5, 2.5, 2.5, options.temperature);
        QObject::connect(
            &annealing, &LanqorGSA::pointsProgress, &receiver,
            [&display, number](qint64 done, qint64 total, double best) {
                display.update(std::size_t(number - 1), done, total, best);
            },
            Qt::DirectConnection);
    }
    const FitEnd end = runInThreads(count, [&](int number) { starts.run(number); });
    const QString error = starts.getLastError();
    if (end == FitEnd::Finished && !error.isEmpty()) {
        if (starts.getBestVector(starts.getBestNumber()).isEmpty())
            throw Failure{error};
        warn(tr("the annealing broke off, its best point so far counts: %1").arg(error));
    }
    return starts.isStopped() ? FitEnd::Interrupted : end;
}

} // namespace cli
