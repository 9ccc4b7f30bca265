#pragma once

#include "help/CommandHelp.h"

#include <QCommandLineParser>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace cli {

/// The argument at which a command tells of its use instead of running.
constexpr char describeArgument[] = "--describe-options";

/// Suffixes of pictures, the files that are the value <picture> of an option.
QStringList pictureSuffixes();
/// Suffixes of structure files, MOPAC outputs among them, and of outputs with excited states.
QStringList structureSuffixes();
QStringList stateSuffixes();

/// An option as it is in force.
struct OptionInForce
{
    QString name;       ///< without dashes
    QStringList values; ///< of one that may be given more than once, all; empty: no value
    QString usual;      ///< the default; empty: none, or one that depends on the input
    bool isGiven = false;
    bool isFlag = false; ///< without values
};

/// Describes the command line of one subcommand and reads it. What makes no sense is thrown as a
/// UsageError that names the option.
class OptionReader
{
public:
    /// @param command  the subcommand, shown in the help as "lanqor command"
    explicit OptionReader(const char *command);

    void setDescription(const QString &text);
    /// @param suffixes  of the files that the argument can be, for completion; empty: any
    void addArgument(const QString &name, const QString &description,
                     const QString &syntax = QString(), const QStringList &suffixes = {});
    /// The help tells the default value of the option, if it has one.
    void addOption(const QCommandLineOption &option);
    void addOptions(const QList<QCommandLineOption> &options);
    /// Suffixes of the files that the value of an option can be, for completion.
    void setSuffixes(const char *option, const QStringList &suffixes);
    /// Adds --json and --csv, the places of the results as data; showResults() serves them.
    void addResultOptions();
    /// Ends every message of this reader.
    void setHint(const QString &text);

    /// Throws a HelpRequest for --help, and the CommandHelp where the one argument is
    /// describeArgument.
    void parse(const QStringList &arguments);

    /// The arguments that belong to no option.
    QStringList files() const;
    /// The same; @p complaint when they are not @p count.
    QStringList files(int count, const QString &complaint) const;

    bool isSet(const char *option) const;
    /// Value of an option, or its default.
    QString text(const char *option) const;
    /// Values of an option that may be given more than once.
    QStringList texts(const char *option) const;
    /// A number that is allowed; the message tells what is @p needed ("--n needs ...").
    double number(const char *option, const std::function<bool(double)> &isAllowed,
                  const QString &needed) const;
    int wholeNumber(const char *option, int minimum, int maximum, const QString &needed) const;
    /// A whole number from 1 to @p maximum.
    int count(const char *option, int maximum) const;
    /// Any whole number.
    int wholeNumber(const char *option) const;
    /// The entries between commas, without blanks around them; empty ones are left out.
    QStringList list(const char *option) const;
    /// The numbers between commas; empty when one is no number.
    QVector<double> numbers(const char *option) const;
    /// The absolute path of a file that is written; empty when the option is not given.
    QString outputFile(const char *option) const;

    /// Tells the value of an option whose default depends on the input or on other options.
    void setInForce(const char *option, const QString &value) const;
    void setInForce(const char *option, double value) const;
    /// Keeps the text of an option which stands on the command line in place of its plain value.
    void keepText(const QString &option, const QString &text);

    /// The subcommand's name.
    QString command() const;
    /// All options but --help and those of the results, in the order of the help.
    QVector<OptionInForce> optionsInForce() const;
    /// The name of a file as seen from the folder in which the program was started, or in which it
    /// is: of its own tables.
    QString shortName(const QString &fileName) const;
    /// The command line of options and arguments as given, quoted for a shell, without the places
    /// of the results.
    QString commandLine() const;
    /// The place of --json or --csv: an absolute path, "-", or empty without the option.
    QString resultFile(const char *option) const;
    /// Refuses a file of results that is one of @p files, which the command reads or writes
    /// although the command line does not name them.
    void keepFromResults(const QStringList &files) const;

    [[noreturn]] void refuse(const QString &message) const;

private:
    /// Adds --size and --title where there is an option for a picture.
    void addSheetOptions();
    void checkSheetOptions() const;
    void readResultFile(const char *option);
    /// What the parser says to a wrong command line; to an unknown option with the nearest one.
    QString complaint() const;

    QCommandLineParser parser;
    CommandHelp help;
    bool hasResultOptions = false;
    QMap<QString, QString> resultFiles;     ///< by option
    QMap<QString, QString> keptTexts;       ///< by option
    mutable QMap<QString, QString> settled; ///< values in force of options not given
    QString hint;
    QString startFolder; ///< a command may change it
};

} // namespace cli
