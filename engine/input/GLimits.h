#pragma once

#include <QString>

/// Limits of the charge factors of an element, both included.
struct GLimits
{
    QString name; ///< element symbol
    double minimum = 0.0;
    double maximum = 0.0;
};
