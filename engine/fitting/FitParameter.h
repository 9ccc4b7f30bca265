#pragma once

#include <QString>

/// A parameter of a fit with the bounds between which it is sought, both included.
struct FitParameter
{
    QString name; ///< "g:O", "alpha:2", "Q", "zeta"
    QString unit; ///< "1", "Angstrom^3", "cm^-1"
    double minimum = 0.0;
    double maximum = 0.0; ///< may be infinite
    bool isFixed = false; ///< held at FitParameter::fixedValue
    double fixedValue = 0.0;
};
