#include "programs/ProgramRunner.h"

#include "programs/ProgramRun.h"
#include "programs/interruption.h"
#include "text.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>

#include <algorithm>

using cli::tr;

namespace programs {

struct ProgramRunner::Running
{
    ProgramRun run;
    WhenEnded whenEnded;
};

QString findProgram(const Program &program, QString &error)
{
    if (program.path.isEmpty()) {
        QString found = QStandardPaths::findExecutable(program.name);
        if (found.isEmpty())
            error = tr("the program %1 is not in PATH: install it with \"apt-get install %2\", or "
                       "name it with %3 FILE")
                        .arg(program.name, program.package, program.option);
        return found;
    }
    QString found = program.path.contains(QLatin1Char('/'))
                        ? QFileInfo(program.path).absoluteFilePath()
                        : QStandardPaths::findExecutable(program.path);
    const QFileInfo file(found.isEmpty() ? program.path : found);
    if (!found.isEmpty() && file.isFile() && file.isExecutable())
        return found;
    error = (file.isFile() || file.isDir() ? tr("%1 %2 is no program that can be run (chmod +x?)")
                                           : tr("%1 %2: there is no such program"))
                .arg(program.option, program.path) +
            tr("; Debian's is installed by \"apt-get install %1\"").arg(program.package);
    return QString();
}

ProgramRunner::ProgramRunner(int places)
    : places(std::max(1, places))
{}

ProgramRunner::~ProgramRunner() = default;

void ProgramRunner::add(const ProgramJob &job, const WhenEnded &whenEnded)
{
    waiting.push_back({job, whenEnded});
}

void ProgramRunner::startWaiting()
{
    while (!waiting.empty() && int(running.size()) < places) {
        const Waiting next = waiting.front();
        waiting.pop_front();
        running.push_back(
            std::unique_ptr<Running>(new Running{ProgramRun(next.job), next.whenEnded}));
        running.back()->run.start();
    }
}

void ProgramRunner::endFinished()
{
    for (std::size_t i = 0; i < running.size();) {
        if (running.at(i)->run.isRunning()) {
            ++i;
            continue;
        }
        const std::unique_ptr<Running> ended = std::move(running.at(i));
        running.erase(running.begin() + std::ptrdiff_t(i));
        const ProgramOutcome outcome = ended->run.finish();
        if (ended->whenEnded)
            ended->whenEnded(outcome);
    }
}

bool ProgramRunner::wait()
{
    constexpr int pace = 50; // ms
    const InterruptionGuard guard;
    QEventLoop loop;
    QTimer timer;
    const auto look = [&] {
        const int signalCount = InterruptionGuard::count();
        for (const auto &each : running) {
            each->run.lookAfter();
            if (signalCount > 0)
                each->run.interrupt(signalCount > 1);
        }
        endFinished();
        if (signalCount == 0)
            startWaiting();
        else
            waiting.clear();
        if (running.empty() && waiting.empty())
            loop.quit();
    };
    QObject::connect(&timer, &QTimer::timeout, &loop, look);
    startWaiting();
    timer.start(pace);
    if (!running.empty() || !waiting.empty())
        loop.exec();
    return InterruptionGuard::count() == 0;
}

ProgramOutcome ProgramRunner::run(const ProgramJob &job)
{
    ProgramOutcome outcome;
    ProgramRunner runner;
    runner.add(job, [&outcome](const ProgramOutcome &ended) { outcome = ended; });
    runner.wait();
    return outcome;
}

} // namespace programs
