#pragma once

#include <QVector>

/// An excited state of the ligands.
struct ExcitateState
{
    double energy = 0.0;             ///< excitation energy, cm^-1
    double oscillatorStrength = 0.0; ///< dimensionless
    /// Orbital numbers as the program prints them (spin suffix dropped): of each printed
    /// excitation the orbital left, then the orbital reached; repeats are kept.
    QVector<int> configurations;
};
