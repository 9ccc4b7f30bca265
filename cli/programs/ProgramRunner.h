#pragma once

#include "programs/ProgramJob.h"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace programs {

/// Path of a program's executable; empty with the reason and the way out in @p error.
QString findProgram(const Program &program, QString &error);

/// Name under which a file of a failed run is kept: "s0.failed.out" for "s0.out".
QString nameOfFailed(const QString &fileName);

/// Runs outside programs, some of them side by side in one event loop.
///
/// Each runs in a scratch folder of its own, as the leader of a process group of its own: what it
/// starts ends with it. Its environment is fixed (C locale, number of threads, stack), so that the
/// same job gives the same numbers on every desktop. The files of a good run are copied whole under
/// their final names once it has ended; the scratch folder goes.
///
/// Ctrl-C, SIGTERM and SIGHUP end the running programs (a second one without mercy) and keep the
/// results of those that have ended; those that wait are not started.
class ProgramRunner
{
public:
    using WhenEnded = std::function<void(const ProgramOutcome &)>;

    /// @param places  number of programs that run at the same time, at least 1
    explicit ProgramRunner(int places = 1);
    ~ProgramRunner();
    ProgramRunner(const ProgramRunner &) = delete;
    ProgramRunner &operator=(const ProgramRunner &) = delete;

    /// Adds a job, which starts in wait() when a place is free and those before it have started.
    /// @p whenEnded is called in wait() and may add further jobs. It must not throw.
    void add(const ProgramJob &job, const WhenEnded &whenEnded);
    /// Runs until no job is left; false when a signal ended it.
    bool wait();

    /// Runs one job.
    static ProgramOutcome run(const ProgramJob &job);

private:
    struct Waiting
    {
        ProgramJob job;
        WhenEnded whenEnded;
    };
    struct Running;

    void startWaiting();
    void endFinished();

    int places;
    std::deque<Waiting> waiting;
    std::vector<std::unique_ptr<Running>> running;
};

} // namespace programs
