#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/YieldScanResults.h>

#include <QString>

#include <memory>

class LanqorResultTables;
class LanqorYieldScanPrivate;

/// The quantum yield and the efficiencies over one or two of the inputs, all others at their
/// values.
class LANQORENGINE_EXPORT LanqorYieldScan
{
public:
    static int mostPoints(); ///< 1000000

    explicit LanqorYieldScan(const YieldInputs &inputs);
    ~LanqorYieldScan();
    LanqorYieldScan(const LanqorYieldScan &) = delete;
    LanqorYieldScan &operator=(const LanqorYieldScan &) = delete;

    /// Adds an axis "NAME=FROM:TO:STEP", NAME being one of
    /// LanqorSpectroscopicCalculation::getYieldQuantities(), in its unit.
    /// @return false for what is none, a step of 0 or in the wrong direction, values that cannot
    ///         be, a third axis, and more than mostPoints() points altogether
    bool addAxis(const QString &text);
    QString getLastError() const;

    YieldScanResults calculate() const;

    /// Table "scan", with a row for each point, and record "scan_as_given".
    static LanqorResultTables makeTables(const YieldScanResults &results);
    /// The points of one axis, or a choice of them when they are many; of two axes where the yield
    /// is highest and lowest.
    static QString makeText(const YieldScanResults &results);

    /// Why an input of this name cannot have a value; empty when it can.
    static QString reasonAgainst(const QString &name, const double &value);
    /// The least and the largest value that an input of this name can have.
    static double leastOf(const QString &name);
    static double largestOf(const QString &name);

private:
    std::unique_ptr<LanqorYieldScanPrivate> d;
};
