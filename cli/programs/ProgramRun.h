#pragma once

#include "programs/ProgramJob.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace programs {

/// A process that leads a group of its own and dies with this program.
class GroupLeader : public QProcess
{
public:
    explicit GroupLeader(qint64 fileSizeLimit);
    /// Sends a signal to the process and to all that it started.
    void signalGroup(int signal) const;
    /// Ends what the process has left behind.
    void endGroup() const;

protected:
    void setupChildProcess() override;

private:
    qint64 fileSizeLimit; // bytes
    qint64 group = 0;     // number of the process, also after its end
};

/// One run of an outside program, from its start to its files.
class ProgramRun
{
public:
    explicit ProgramRun(const ProgramJob &job);
    ~ProgramRun();
    ProgramRun(const ProgramRun &) = delete;
    ProgramRun &operator=(const ProgramRun &) = delete;

    void start();
    bool isRunning() const;
    /// Shows progress and ends what takes too long or too much.
    void lookAfter();
    /// Asks the program to end, at once or in order.
    void interrupt(bool isAtOnce);
    /// The end of a run: judges its output and copies its files. Once.
    ProgramOutcome finish();

private:
    void startProcess();
    void fail(ProgramEnd end, const QString &error);
    void end(ProgramEnd end, const QString &error);
    void showProgress();
    void judge();
    void keepResults();
    void keepFailed();
    QString withLastWords(const QString &text) const;
    QString endOfProcess() const;
    QString path(const QString &name) const;

    ProgramJob job;
    ProgramOutcome outcome;
    QTemporaryDir scratch;
    GroupLeader process;
    QElapsedTimer elapsed;
    QElapsedTimer sinceEnd; // since the process was asked to end
    QFile output;
    QByteArray unread; // the begun line of the main output
    int preparationsLeft;
    bool isEnded = false; // by this program
};

/// The last lines of a text, those without a word left out, in one line.
QString lastWords(const QByteArray &text, int lineCount);

} // namespace programs
