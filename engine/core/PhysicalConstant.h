#pragma once

#include <QString>

/// A constant of physics, or a factor between units, as the calculations have it.
struct PhysicalConstant
{
    QString key; ///< words in lower case joined by "_"
    double value = 0.0;
    QString unit;   ///< "1" when dimensionless
    QString source; ///< of the digits
};
