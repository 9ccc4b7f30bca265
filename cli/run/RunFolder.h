#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace cli {

/// SHA-256, hexadecimal.
QString hashOf(const QByteArray &bytes);
/// The same of a file; throws a Failure when it cannot be read.
QString hashOfFile(const QString &fileName);

/// What goes into a step, by name: hashes of files, settings that it uses, versions of programs.
/// A program that cannot be found at present has no version: what it made before still counts.
using StepInputs = QVector<QPair<QString, QString>>;
/// Name of the entry of @p program in them.
QString versionOf(const QString &program);

/// What is kept of a finished step.
struct StepMark
{
    QString title;
    QString outcome;
    QString program;
    QString version;
    QString commandLine;
    double seconds = 0.0;
    /// Of a step that ended without a result, for good: doing it again would end alike.
    bool isFailed = false;
};

/// The folder of a run: one folder for each finished step, with a mark "step.json" of what went in
/// and what came out.
///
/// A step is done in a folder of another name, which takes the name of the step when it is
/// complete, so that whatever ends the program leaves a step whole or not at all.
class RunFolder
{
public:
    /// Opens the folder, or makes it, for this process alone. Throws a Failure when another process
    /// is at work in it, or when it holds files but no run.
    explicit RunFolder(const QString &path);
    ~RunFolder();
    RunFolder(const RunFolder &) = delete;
    RunFolder &operator=(const RunFolder &) = delete;

    /// Refuses a folder as the constructor would; makes nothing.
    static void check(const QString &path);

    QString path() const { return folder; }
    /// A file of the folder.
    QString file(const QString &name) const;
    /// A file of a finished step.
    QString file(const QString &step, const QString &name) const;

    /// The mark of a step that was done with the same inputs and whose files are as they were.
    std::optional<StepMark> finished(const QString &step, const StepInputs &inputs) const;
    /// The folder in which a step is being done.
    QString unfinished(const QString &step) const;
    /// The same, made anew and empty; that of an earlier one is gone then.
    QString begin(const QString &step) const;
    /// Marks the step as done and gives its folder the final name.
    void finish(const QString &step, const StepInputs &inputs, const StepMark &mark) const;
    /// The folder that keeps what a step that failed has left.
    QString failed(const QString &step) const;
    /// Moves the files of a step there, to be looked at.
    void abandon(const QString &step) const;
    /// Forgets a finished step.
    void forget(const QString &step) const;

private:
    QString folder;
    int lock = -1;
};

} // namespace cli
