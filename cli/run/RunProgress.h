#pragma once

#include "run/RunReport.h"
#include "run/RunRequest.h"

#include <QElapsedTimer>

#include <array>

namespace cli {

/// The steps of a run as they end, each with a line on standard error.
class RunProgress
{
public:
    RunProgress();

    /// Whether the line on a step that failed gives the reason, or an error at the end of the
    /// program will.
    enum class Reason { Told, ToldLater };
    /// Takes a step that has ended, and tells of it.
    void take(RunStepId id, RunStep step, Reason reason = Reason::Told);
    /// A line of progress of a step that goes on, on a terminal alone; written over by the next.
    void show(RunStepId id, const QString &text);

    QVector<RunStep> steps() const;

private:
    QString time() const;
    void clear();

    QElapsedTimer timer;
    std::array<std::optional<RunStep>, runStepCount> ended;
    bool isTerminal;
    int shownLength = 0;
};

} // namespace cli
