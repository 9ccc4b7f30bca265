#pragma once

#include <QString>
#include <QStringList>

class LanqorAbstractObjCalculation;

/// A subcommand of the lanqor program.
struct Command
{
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
/// Writes a line of progress or warning to standard error.
void note(const QString &text);
/// Writes "lanqor: message" to standard error.
void complain(const QString &message);
/// Sends the object's messages to standard error, but for that of a failure, which main() shows.
void showMessages(LanqorAbstractObjCalculation &object);
/// Throws the last error of a calculation.
[[noreturn]] void failOf(const LanqorAbstractObjCalculation &object);
/// Writes a file whole or, with a Failure, not at all.
void writeFile(const QString &fileName, const QByteArray &bytes);

} // namespace cli
