#pragma once

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

class QDir;

/// What is told of one run of an outside program, and what it tells.
namespace programs {

/// An outside program.
struct Program
{
    QString name;    ///< of its executable, "xtb"
    QString package; ///< of Debian that installs it
    QString option;  ///< that names another executable, "--xtb"
    QString path;    ///< of that one; empty: the name is looked up in PATH
};

/// A point of a running optimisation.
struct ProgramProgress
{
    int cycle = 0;         ///< from 1
    double energy = 0.0;   ///< in energyUnit
    double gradient = 0.0; ///< norm, in gradientUnit
    QString energyUnit;
    QString gradientUnit;
};

struct InputFile
{
    QString name; ///< in the scratch folder
    QByteArray text;
};

/// A file of the scratch folder that is kept.
struct ResultFile
{
    QString name;         ///< in the scratch folder
    QString fileName;     ///< final name, with its folder
    bool isNeeded = true; ///< without it the run has failed
};

/// What the files of a run are worth.
struct Verdict
{
    QString fault; ///< why there is no result, in the program's own words, with the way out; empty
                   ///< for a good run
    QStringList remarks;    ///< on a good run
    bool isFinished = true; ///< whether the output ends as that of a finished run
};

/// One run of an outside program in a scratch folder of its own.
struct ProgramJob
{
    Program program;
    QString what; ///< "geometry of complex", for messages
    /// Arguments of runs before the one that counts, in the same scratch folder: they leave it a
    /// better start, so that nothing is asked of their results.
    QVector<QStringList> preparations;
    QStringList arguments;
    QVector<InputFile> inputs;
    QString outputName; ///< main output in the scratch folder, by which progress is told
    QString stdoutName; ///< file that takes standard output
    QString stderrName;
    QVector<ResultFile> results; ///< of a good run; a failed one leaves main output and log alone,
                                 ///< under names with ".failed" before the suffix
    int threads = 1;
    double timeLimit = 4.0 * 3600.0;      ///< s
    qint64 sizeLimit = qint64(500) << 20; ///< bytes that the scratch folder may hold
    QString timeLimitOption = QStringLiteral("--time-limit"); ///< that gives another, for messages
    QRegularExpression versionPattern; ///< first group: the version, in the main output
    /// Reads a line of the main output; a value when a cycle is complete.
    std::function<std::optional<ProgramProgress>(const QByteArray &line)> readProgress;
    /// Judges the files of a run that has ended.
    std::function<Verdict(const QDir &scratch)> judge;
    /// Called in the event loop for each new cycle.
    std::function<void(const ProgramProgress &)> showProgress;
};

enum class ProgramEnd {
    Done,
    Missing,     ///< the program is not there or cannot be started
    Failed,      ///< it crashed, or its output holds no result
    TimeUp,      ///< ended at the time limit
    TooLarge,    ///< ended because its files grew beyond the limit
    Interrupted, ///< by Ctrl-C, SIGTERM or SIGHUP
};

struct ProgramOutcome
{
    ProgramEnd end = ProgramEnd::Failed;
    QString error;       ///< with the way out; empty when done
    QStringList remarks; ///< on a good run, as a gradient that is not quite zero
    QString executable;  ///< with its folder
    QString version;     ///< as its output tells it
    QString commandLine;
    double seconds = 0.0; ///< elapsed
    QStringList files;    ///< that were written, final names

    bool isDone() const { return end == ProgramEnd::Done; }
};

} // namespace programs
