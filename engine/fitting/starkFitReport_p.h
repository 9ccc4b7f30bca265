#pragma once

#include <LanqorEngine/ParametersGroup.h>
#include <LanqorEngine/TransitionValues.h>

#include <QString>
#include <QVector>

/// What the report of a Stark-level fit shows of its best trial.
struct StarkFitResult
{
    QString structureFile;
    double effectiveCharge;
    double response;
    int point; ///< number of the evaluation
    QVector<ParametersGroup> groups;
    QVector<double> chargeFactors; ///< by group
    QVector<TransitionValues> transitions;
    QVector<QVector<double>> levels; ///< ascending, by J, cm^-1
    QString citations;
};

QString starkFitReport(const StarkFitResult &result);
