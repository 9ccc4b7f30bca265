#pragma once

#include "core/physicalConstants_p.h"

#include <QString>

/// Bounds of the charge factor g of a coordinated atom, by element. A symbol outside the
/// classes of a table keeps the bounds of the atom checked before it; when it is the first, the
/// bounds are the initial ones. Dimensionless; source of the values not known.
struct ChargeFactorBounds
{
    double minimum = 0.01;
    double maximum = 3.0;
};

/// Direct fits of g and alpha: Br and I share the class of the lighter halogens.
void updateDirectFitBounds(const QString &symbol, ChargeFactorBounds &bounds);

/// Fits of Q, D and C: halogens have the higher minimum, and Br and I form no class. The two
/// tables differ on purpose.
void updateQdcFitBounds(const QString &symbol, ChargeFactorBounds &bounds);

/// Limits of the polarisability of a coordinated atom, cubic Angstrom; source not known.
constexpr double minimumAlpha = 0.005;
constexpr double maximumAlphaDirectFit = 6.5;
constexpr double maximumAlphaQdcFit = 15.0;

/// True when g and alpha (cm^3) of an atom lie in their bounds, the bounds included; a value that
/// is no number does not.
inline bool isWithinBounds(double g, double alpha, const ChargeFactorBounds &bounds,
                           double maximumAlpha)
{
    return g >= bounds.minimum && g <= bounds.maximum &&
           alpha >= minimumAlpha * lanqor::cm3PerCubicAngstrom &&
           alpha <= maximumAlpha * lanqor::cm3PerCubicAngstrom;
}
