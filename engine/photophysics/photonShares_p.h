#pragma once

#include "photophysics/rateEquations_p.h"

#include <LanqorEngine/PhotonShares.h>

/// What the rate equations make of the light.
namespace rateEquations {

/// The populations of one steady state and what follows from them.
struct Solution
{
    std::array<double, transferChannels::stateCount> populations = {}; ///< 0 outside the scheme
    double quantumYield = 0.0; ///< percent of the absorbed photons
    PhotonShares shares;
};

/// @param arad, anrad  radiative and non-radiative decay of 5D0, s^-1
Solution solve(const Scheme &scheme, const transferRates::Tables &tables, double arad, double anrad,
               const KineticParameters &parameters);

} // namespace rateEquations
