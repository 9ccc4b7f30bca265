#pragma once

#include "options/uncertainOptions.h"

#include <LanqorEngine/YieldScanResults.h>

#include <QStringList>

class LanqorInputData;
class LanqorResultTables;
class LanqorSpectroscopicCalculation;

namespace yieldOptions {
struct Request;
}

/// Error bars and scans of "lanqor yield".
class YieldVariation
{
public:
    /// Adds --samples, --solutions and --scan.
    explicit YieldVariation(cli::OptionReader &options);

    /// Gives the arguments back with plain values in place of uncertain numbers.
    QStringList read(const QStringList &arguments) { return uncertain.read(arguments); }
    /// Refuses what does not go together; after the arguments are parsed.
    void check();

    /// Varies the inputs of a finished calculation and adds the results to text and tables.
    /// @param complex  read, with @p coordNumber coordinated atoms, when g and alpha are given
    void run(const LanqorSpectroscopicCalculation &calculation, LanqorInputData &complex,
             int coordNumber, const yieldOptions::Request &request, QString &text,
             LanqorResultTables &tables);

    /// Empty without a scan.
    const YieldScanResults &scan() const { return scanResults; }
    /// Without quantities when nothing is uncertain.
    const UncertaintyResults &errorBars() const { return uncertaintyResults; }
    /// " (68 %: 20.1 to 31.5 %)" for the title of a picture; empty without error bars.
    QString intervalOfYield() const;
    /// Standard deviation of the triplet's energy, cm^-1; 0 when it is not uncertain.
    double tripletDeviation() const;

private:
    UncertaintyResults calcUncertainty(const LanqorSpectroscopicCalculation &calculation,
                                       LanqorInputData &complex, int coordNumber,
                                       const yieldOptions::Request &request) const;

    cli::OptionReader &options;
    cli::UncertainOptions uncertain;
    QVector<QVector<double>> solutions; // rows of Omega and Omega-ED, 1e-20 cm^2
    YieldScanResults scanResults;
    UncertaintyResults uncertaintyResults;
};
