#pragma once

#include <LanqorEngine/YieldInputs.h>

#include <QString>
#include <QVector>

/// An input of the quantum yield that is varied in equal steps.
struct YieldScanAxis
{
    QString name; ///< one of LanqorSpectroscopicCalculation::getYieldQuantities()
    QString unit;
    double from = 0.0;
    double to = 0.0;   ///< the last value is not beyond it
    double step = 0.0; ///< negative downwards
    int count = 0;     ///< of values
    double asGiven = 0.0;

    double value(int i) const { return from + i * step; }
};

/// Results of LanqorYieldScan.
struct YieldScanResults
{
    /// Results at a point; not a number where there are none.
    struct Point
    {
        double quantumYield = 0.0;      ///< %
        double quantumEfficiency = 0.0; ///< %
        double sensitisation = 0.0;     ///< %
        double arad = 0.0;              ///< s^-1
        double anrad = 0.0;             ///< s^-1
    };
    QVector<YieldScanAxis> axes; ///< one or two
    QVector<Point> points;       ///< those of the second axis run fastest
    Point asGiven;               ///< with every input at its value

    /// Value of axis @p axis at point @p i.
    double value(int axis, int i) const
    {
        const int inner = axes.size() == 2 ? axes.at(1).count : 1;
        return axes.at(axis).value(axis == 0 ? i / inner : i % inner);
    }
};
