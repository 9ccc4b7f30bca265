#pragma once

#include <QString>

/// A component of a level in intermediate coupling.
struct CoeffAndLabel
{
    QString label;            ///< Russell-Saunders level, "7F0", "5D(1)2"
    double coefficient = 0.0; ///< eigenvector component
};
