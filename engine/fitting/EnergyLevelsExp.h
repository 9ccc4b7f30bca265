#pragma once

#include <QString>

/// A measured energy level.
struct EnergyLevelsExp
{
    QString label;                  ///< "7F1", "5D(3)0", "4I11/2"
    double S = 0.0;                 ///< total spin
    int L = 0;                      ///< total orbital momentum; -1 for an unknown letter
    int index = 0;                  ///< ordinal in parentheses; 0 without one
    double J = 0.0;                 ///< total angular momentum
    double energy = 0.0;            ///< above the ground level, cm^-1
    double standardDeviation = 0.0; ///< of the energy, cm^-1; 0: not told
};
