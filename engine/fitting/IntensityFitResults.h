#pragma once

#include <QString>
#include <QVector>

/// An intensity parameter Omega(lambda) of a fit, cm^2.
struct FittedOmega
{
    int lambda = 0;
    double measured = qQNaN(); ///< target; not a number for Omega(6), which is never measured
    double fitted = 0.0;
    double weight = 1.0; ///< of its squared difference in the response, dimensionless
};

/// Charge factor and polarisability of a coordinated atom, or of a group of them, with the bounds
/// between which they were fitted.
struct FittedDonor
{
    double chargeFactor = 0.0;
    double minimumChargeFactor = 0.0;
    double maximumChargeFactor = 0.0;
    double alpha = 0.0; ///< cm^3, as are its bounds
    double minimumAlpha = 0.0;
    double maximumAlpha = 0.0;
};

/// What the fits to measured intensity parameters have in common: the best trial against its
/// targets.
struct IntensityFitResults
{
    bool hasFeasiblePoint = false; ///< without one there are no values of a best trial
    QVector<FittedOmega> omega;    ///< lambda = 2, 4, 6
    double response = 0.0;         ///< (1e-20 cm^2)^2
    qint64 points = 0;             ///< trials
    QString report;                ///< of the intensity parameters; empty before the end of the fit
};
