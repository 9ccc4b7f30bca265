#pragma once

#include <QString>
#include <QVector>

/// A group of coordinated atoms with their charge factor.
struct ChargeFactorsGroup
{
    QString name;
    QVector<int> atoms;        ///< atom numbers of the geometry, 1-based
    double chargeFactor = 0.0; ///< dimensionless
};
