#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

class LanqorAbstractObjCalculation;

/// A subcommand of the lanqor program.
struct Command
{
    const char *name;
    const char *summary;
    /// Runs with the arguments after the subcommand's name; returns the exit status.
    int (*run)(const QStringList &arguments);
};

namespace cli {

constexpr int success = 0;
constexpr int failure = 1; ///< the input or the calculation failed
constexpr int usageError = 2;

/// Parses the arguments of a subcommand; prints its help and leaves the program, with status 0
/// for --help and usageError for an unknown option, like QCommandLineParser::process().
/// @p name is the subcommand, shown in the help as "lanqor name".
void parse(QCommandLineParser &parser, const char *name, const QStringList &arguments);

/// Writes a result to standard output (UTF-8).
void print(const QString &text);
/// Writes a line of progress or warning to standard error.
void note(const QString &text);
/// Writes "lanqor: message" to standard error and returns @p status.
int fail(const QString &message, int status = failure);
/// Sends the object's messages to standard error, but for that of a failure, which fail() shows.
void showMessages(LanqorAbstractObjCalculation &object);

/// Reads "O=0.9,N=1.2" or "2=0.9,3=1.1" into pairs of name and value; false with a reason in
/// @p error when an entry is no such pair or a name stands twice.
bool parsePairs(const QString &text, QVector<QPair<QString, double>> &pairs, QString &error);

} // namespace cli
