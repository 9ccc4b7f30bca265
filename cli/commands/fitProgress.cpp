#include "commands/fitProgress.h"

#include "Command.h"
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
        std::signal(SIGINT, stopFits);
        std::signal(SIGTERM, stopFits);
    }
    ~SignalGuard()
    {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
    }
    SignalGuard(const SignalGuard &) = delete;
    SignalGuard &operator=(const SignalGuard &) = delete;
};

/// Adds up the progress of runs in several threads and shows it.
class ProgressDisplay
{
public:
    explicit ProgressDisplay(std::size_t runCount)
        : isTerminal(isatty(STDERR_FILENO) != 0)
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
        const double seconds = double(timer.elapsed()) / 1000.0;
        const bool isEnd = sum.done >= sum.total;
        const int tenths = sum.total > 0 ? int(10 * sum.done / sum.total) : 10;
        if (!isEnd && (isTerminal ? seconds - lastShown < 0.1 : tenths <= lastTenths))
            return;
        lastShown = seconds;
        lastTenths = tenths;
        const QString rate = seconds > 0.0 ? QString::number(double(sum.done) / seconds, 'f', 0)
                                           : QStringLiteral("-");
        const QString line =
            tr("%1 % of %2 points, %3/s, "
               "best response %4")
                .arg(QString::number(sum.total > 0 ? 100 * sum.done / sum.total : 100)
                         .rightJustified(3),
                     QString::number(sum.total), rate, QString::number(sum.best, 'g', 4));
        if (!isTerminal) {
            tell(line);
            return;
        }
        // Short enough for 80 columns; blanks cover what is left of a longer line before.
        const QString bar = QStringLiteral("[%1] %2").arg(
            (QString(tenths, QLatin1Char('#'))).leftJustified(10, QLatin1Char('.')), line);
        const QByteArray bytes = '\r' + bar.leftJustified(lastLength).toUtf8();
        std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
        lastLength = bar.size();
        isBarShown = true;
    }

    const bool isTerminal;
    std::mutex mutex;
    QElapsedTimer timer;
    std::vector<Run> runs;
    double lastShown = -1.0;
    int lastTenths = 0;
    int lastLength = 0;
    bool isBarShown = false;
};

/// Throws the error of a start that could not be made or failed.
void checkStarts(const LanqorFitStarts &starts)
{
    const QString error = starts.getLastError();
    if (!error.isEmpty())
        throw Failure{error};
}

} // namespace

FitEnd runFits(LanqorFitStarts &starts)
{
    checkStarts(starts);
    const SignalGuard guard;
    const int count = starts.getCount();
    ProgressDisplay display{std::size_t(count)};
    const QObject receiver; // ends the connections
    for (int number = 1; number <= count; ++number)
        QObject::connect(
            starts.getAnnealing(number), &LanqorGSA::pointsProgress, &receiver,
            [&display, number](qint64 done, qint64 total, double best) {
                display.update(std::size_t(number - 1), done, total, best);
            },
            Qt::DirectConnection);

    std::atomic<int> next{1};
    const auto work = [&] {
        for (int number = next++; number <= count; number = next++)
            starts.run(number);
    };
    const int threadCount = std::min(count, int(std::max(1U, std::thread::hardware_concurrency())));
    std::vector<std::thread> threads;
    for (int i = 1; i < threadCount; ++i)
        threads.emplace_back(work);
    work();
    for (std::thread &thread : threads)
        thread.join();
    if (starts.isStopped())
        return FitEnd::Interrupted;
    checkStarts(starts);
    return FitEnd::Finished;
}

} // namespace cli
