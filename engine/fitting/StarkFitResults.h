#pragma once

#include <LanqorEngine/ParametersGroup.h>
#include <LanqorEngine/StarkResults.h>
#include <LanqorEngine/TransitionValues.h>

#include <QString>
#include <QVector>

/// A group of coordinated atoms with what a fit to Stark levels gave it.
struct StarkFitGroup
{
    ParametersGroup group;
    double chargeFactor = 0.0;
    double minimumChargeFactor = 0.0; ///< the limits that all its atoms share; 0 and infinity
    double maximumChargeFactor = 0.0; ///< where there are none
};

/// Measured and computed lowest and highest sublevel of a manifold, cm^-1 from its barycentre.
struct StarkFitTransition
{
    int level = 0;       ///< J
    double offset = 0.0; ///< the barycentre, already subtracted from the measured energies
    double measuredLow = 0.0;
    double measuredHigh = 0.0;
    double computedLow = 0.0;
    double computedHigh = 0.0;
};

/// Result of LanqorParametricStarkLevels: the best trial against the measured levels.
struct StarkFitResults
{
    bool hasFeasiblePoint = false; ///< without one there are no values of a best trial
    QString structureFile;
    double effectiveCharge = 0.0; ///< elementary charges
    double response = 0.0;        ///< cm^-1
    int bestPoint = 0;            ///< number of the best trial, from 1
    qint64 points = 0;            ///< trials
    QVector<StarkFitGroup> groups;
    QVector<StarkFitTransition> transitions;
    QVector<QVector<double>> levels; ///< of the best trial: by J, ascending, cm^-1
    QString citations;
    ReducedElements reducedElements = ReducedElements::Magnitudes;
};
