#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class LanqorAbstractObjCalculation;

/// A subcommand of the lanqor program.
struct Command
{
    const char *task; ///< what it starts from, a heading of the program's help
    const char *name;
    const char *summary;
    /// Runs with the arguments after the subcommand's name; returns the exit status, or throws
    /// cli::UsageError, cli::Failure or cli::HelpRequest.
    int (*run)(const QStringList &arguments);
};

namespace cli {

/// Exit statuses.
constexpr int success = 0;
constexpr int failure = 1; ///< the input or the calculation failed
constexpr int wrongUse = 2;

/// The command line makes no sense. Thrown, and caught in main() only, as the following are.
struct UsageError
{
    QString message;
};

/// The input or the calculation failed.
struct Failure
{
    QString message;
};

/// The help of a subcommand was asked for.
struct HelpRequest
{
    QString text;
};

/// Writes a result to standard output (UTF-8).
void print(const QString &text);
/// Writes a line to standard error as it is: progress, or a help that was not asked for.
void tell(const QString &line);
/// Writes "lanqor: note: text" to standard error: what was chosen, or where something stands.
void note(const QString &text);
/// Writes "lanqor: warning: text" to standard error: what may make the result wrong.
void warn(const QString &text);
/// Sends the object's messages to standard error, dated progress as it is and others as warnings.
/// One of these waits for the next or for finish(), which shows it once, as the error if the
/// command fails by it.
void showMessages(LanqorAbstractObjCalculation &object);
/// Sends those messages to standard error that are neither progress nor the last error, as
/// warnings: of an object whose reading is a step among others.
void showWarnings(LanqorAbstractObjCalculation &object);
/// The same, and adds them to @p warnings, which must outlive the object.
void keepWarnings(LanqorAbstractObjCalculation &object, QStringList &warnings);
/// Throws the last error of a calculation.
[[noreturn]] void failOf(const LanqorAbstractObjCalculation &object);
/// Writes a file whole or not at all. The loss of one, told by false, ends no command, so that its
/// results still stand on standard output: it is shown at once, and finish() makes the exit status
/// a failure.
bool writeFile(const QString &fileName, const QByteArray &bytes);
/// Ends the program's output: shows the error if there is one, and what is held back. Returns the
/// exit status: @p status, or failure when a file or standard output could not be written.
int finish(int status, const QString &error = QString());

} // namespace cli
