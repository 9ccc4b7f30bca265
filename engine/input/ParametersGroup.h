#pragma once

#include <QString>
#include <QVector>

/// A group of coordinated atoms that share one parameter of a fit.
struct ParametersGroup
{
    QString name;
    QVector<int> atoms; ///< atom numbers of the geometry, 1-based
};
