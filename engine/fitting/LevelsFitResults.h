#pragma once

#include <QString>
#include <QVector>

/// A free-ion parameter of a fit, cm^-1.
struct FittedParameter
{
    QString name; ///< "F2", "F4", "F6", "zeta", "alpha", "beta", "gamma"
    double value = 0.0;
    double minimum = 0.0; ///< its bounds, both included
    double maximum = 0.0;
};

/// A measured level and the computed one of its label, cm^-1 above the ground level.
struct FittedLevel
{
    QString label;
    double measured = 0.0;
    double computed = qQNaN(); ///< not a number when the ion has no such level
    bool isFitted = false;     ///< false for the ground level too
};

/// Result of LanqorParametricEnergyLevels: the best trial against the measured levels.
struct LevelsFitResults
{
    int electrons = 0;                   ///< in the 4f shell
    QVector<FittedParameter> parameters; ///< those of the trials; empty without a feasible one
    double response = 0.0;               ///< sum of the relative deviations, per cent
    qint64 points = 0;                   ///< trials
    QVector<FittedLevel> levels; ///< in the order of measurement; one for each state of its label
    int fittedCount = 0;
    double rmsDifference = 0.0; ///< of the fitted levels, cm^-1
};
