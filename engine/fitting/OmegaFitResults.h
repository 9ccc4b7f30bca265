#pragma once

#include <LanqorEngine/IntensityFitResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// A group of coordinated atoms in a fit of charge factors and polarisabilities.
struct OmegaFitGroup
{
    int number = 0;    ///< its key
    QStringList atoms; ///< symbol and number, "O 2"
    FittedDonor donor; ///< the bounds are those that all its atoms share
};

/// Result of LanqorParametric.
struct OmegaFitResults : IntensityFitResults
{
    QVector<OmegaFitGroup> groups; ///< in the order of their keys
};
