#pragma once

#include <LanqorEngine/LanqorUncertainty.h>

#include <QStringList>
#include <QVector>

class LanqorResultTables;

namespace cli {

class OptionReader;

/// An option whose numbers may be uncertain.
struct UncertainOption
{
    QString name;
    QString unit;
    UncertaintyKind kind = UncertaintyKind::Normal; ///< of "value+-sd"
    double minimum = 0.0;                           ///< of what is possible
    double maximum = 0.0;
    QStringList entries; ///< names of the numbers of a list, for messages; empty for one number
};

/// The uncertain numbers of a command line: those options of a command that hold "value+-sd" or
/// "low:high" in place of a number, also as an entry of a list or in "NAME=number".
class UncertainOptions
{
public:
    /// Which number is uncertain.
    struct Number
    {
        QString option;
        int entry = 0; ///< of a list, from 0
        UncertainInput input;
    };

    /// Adds --samples and a word on uncertain numbers to the help.
    UncertainOptions(OptionReader &reader, const QVector<UncertainOption> &options);

    /// Adds --plot, a picture of the error bars; of @p otherwise when no number is uncertain.
    void addPlotOption(const QString &otherwise);
    /// Adds --solutions, sets of Omega by a fit.
    void addSolutionsOption();
    /// Reads @p arguments and gives them back with plain values in place of uncertain numbers. What
    /// makes no sense is thrown as a UsageError.
    QStringList read(const QStringList &arguments);
    /// The numbers that are uncertain.
    const QVector<Number> &numbers() const { return uncertain; }
    /// The numbers of one option, as indices of numbers().
    QVector<int> numbersOf(const QString &option) const;
    bool isEmpty() const { return uncertain.isEmpty(); }

    /// Refuses --samples without an uncertain number or --solutions; after OptionReader::parse().
    void check() const;
    /// Makes the sampling of the numbers, in their order.
    void prepare(LanqorUncertainty &uncertainty) const;

private:
    QString readOption(const UncertainOption &option, const QString &text);

    OptionReader &reader;
    bool takesSolutions = false;
    QVector<UncertainOption> options;
    QVector<Number> uncertain;
};

/// --n in place of a number.
UncertainOption uncertainRefractiveIndex();
/// --g and --alpha in place of the numbers of their lists.
QVector<UncertainOption> uncertainChargeFactors();

/// Omega 2, 4, 6 and Omega-ED 2, 4, 6 in 1e-20 cm^2, a row for each solution in the file of
/// --solutions, which no uncertain number of Omega, g or alpha goes with. Throws a Failure when it
/// cannot be read.
QVector<QVector<double>> readSolutions(const OptionReader &reader,
                                       const UncertainOptions &uncertain);

/// Warns when Omega 2, 4 or 6 as given, 1e-20 cm^2, is none that the solutions have.
void warnOfOtherSolutions(const QVector<QVector<double>> &solutions, const QVector<double> &omegas);

/// Adds a warning where @p impossible of @p sets have a lifetime longer than the radiative one, so
/// that no efficiency is counted for them.
void addImpossibleLifetimes(UncertaintyResults &results, int impossible, int sets);

/// Shows the warnings of error bars and adds them to a report and to tables.
void addErrorBars(const UncertaintyResults &results, QString &text, LanqorResultTables &tables);

} // namespace cli
