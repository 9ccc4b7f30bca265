#pragma once

#include <LanqorEngine/FittedOmega.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// A group of coordinated atoms with what a fit of charge factors and polarisabilities gave it.
struct OmegaFitGroup
{
    int number = 0;    ///< its key
    QStringList atoms; ///< symbol and number, "O 2"
    double chargeFactor = 0.0;
    double minimumChargeFactor = 0.0; ///< the bounds that all its atoms share
    double maximumChargeFactor = 0.0;
    double alpha = 0.0; ///< cm^3, as are its bounds
    double minimumAlpha = 0.0;
    double maximumAlpha = 0.0;
};

/// Result of LanqorParametric: the best trial against its targets.
struct OmegaFitResults
{
    bool hasFeasiblePoint = false; ///< without one there are no values of a best trial
    QVector<FittedOmega> omega;    ///< lambda = 2, 4, 6
    QVector<OmegaFitGroup> groups; ///< in the order of their keys
    double response = 0.0;         ///< (1e-20 cm^2)^2
    qint64 points = 0;             ///< trials
    QString report;                ///< of the intensity parameters; empty before the end of the fit
};
