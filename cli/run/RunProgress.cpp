#include "run/RunProgress.h"

#include "Command.h"
#include "text.h"

#include <cstdio>
#include <unistd.h>

namespace cli {

namespace {

QString textOf(const RunStep &step)
{
    switch (step.state) {
    case RunStep::State::Done:
        return tr("%1 s: %2; %3")
            .arg(QString::number(step.seconds, 'f', 1), step.title, step.outcome);
    case RunStep::State::Kept:
        return tr("kept: %1; %2").arg(step.title, step.outcome);
    case RunStep::State::Failed:
        return tr("without result: %1; %2").arg(step.title, step.outcome);
    case RunStep::State::LeftOut:
        break;
    }
    return tr("left out: %1").arg(step.outcome);
}

} // namespace

RunProgress::RunProgress()
    : isTerminal(isatty(STDERR_FILENO) != 0)
{
    timer.start();
}

QString RunProgress::time() const
{
    constexpr double msPerSecond = 1000.0;
    constexpr int width = 7;
    return column(double(timer.elapsed()) / msPerSecond, 1, width) + QStringLiteral(" s  ");
}

void RunProgress::clear()
{
    if (shownLength > 0)
        std::fprintf(stderr, "\r%*s\r", shownLength, "");
    shownLength = 0;
}

void RunProgress::take(RunStepId id, RunStep step, Reason reason)
{
    constexpr int nameWidth = 17;
    step.folder = folderOf(id);
    clear();
    tell(time() + step.folder.leftJustified(nameWidth) +
         (reason == Reason::Told || step.state != RunStep::State::Failed
              ? textOf(step)
              : tr("failed: %1").arg(step.title)));
    ended.at(std::size_t(id)) = step;
}

void RunProgress::show(RunStepId id, const QString &text)
{
    if (!isTerminal)
        return;
    const QString line = time() + folderOf(id) + QStringLiteral(": ") + text;
    const QByteArray bytes = '\r' + line.leftJustified(shownLength).toUtf8();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
    shownLength = line.size();
}

QVector<RunStep> RunProgress::steps() const
{
    QVector<RunStep> steps;
    for (const std::optional<RunStep> &step : ended)
        if (step)
            steps.append(*step);
    return steps;
}

} // namespace cli
