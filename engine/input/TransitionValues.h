#pragma once

/// Measured sublevels of a manifold 7FJ.
struct TransitionValues
{
    int level = 0;              ///< J
    double energyLow = 0.0;     ///< of the lowest sublevel, cm^-1
    double energyHigh = 0.0;    ///< of the highest sublevel, cm^-1
    double reserved = 0.0;      ///< not used
    double offset = 0.0;        ///< position of the barycentre, subtracted from both, cm^-1
    double deviationLow = 0.0;  ///< standard deviation of the lowest sublevel, cm^-1; 0: not told
    double deviationHigh = 0.0; ///< of the highest one
};
