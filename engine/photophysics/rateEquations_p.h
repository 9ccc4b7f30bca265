#pragma once

#include "photophysics/transferRates_p.h"

#include <LanqorEngine/KineticParameters.h>

#include <Eigen/Core>

#include <vector>

/// Steady-state populations of ligand and Eu3+ states under continuous excitation (O. L. Malta,
/// F. R. Goncalves e Silva, Spectrochim. Acta A 54, 1593 (1998)); rates in s^-1.
namespace rateEquations {

/// Which states and channels a kinetic scheme holds. The levels of the ion among its states
/// are a cascade: each passes its population to the next.
struct Scheme
{
    std::vector<transferChannels::State> states; ///< S0 first
    std::vector<int> channelSlots;               ///< of the channels that take part
    double KineticParameters::*tripletDecay;     ///< each triplet -> S0

    bool holds(transferChannels::State state) const;
    bool holdsSlot(int slot) const;
};

/// S0, S1, T1, 5D4, 5D1, 5D0.
const Scheme &sixStates();
/// The same with 5G6 and 5L6.
const Scheme &eightStates();
/// S0, S1, two triplets, 5D4, 5D1, 5D0. The first triplet feeds 5D4, the second 5D1 and 5D0; no
/// other channel belongs to this scheme.
const Scheme &twoTriplets();

/// A rate that no transfer and no emission decides.
struct FixedRate
{
    transferChannels::State from;
    transferChannels::State to;
    double rate;
};

/// Excitation, decay and crossing of the ligand states, and the cascade in the ion.
std::vector<FixedRate> fixedRates(const Scheme &scheme, const KineticParameters &parameters = {});

/// A(j, i) = k(i -> j), A(i, i) = -sum of k(i -> j), in the order of the scheme's states; the
/// columns sum to 0.
/// @param emissionDecay  5D0 -> ground state, radiative and non-radiative together
Eigen::MatrixXd rateMatrix(const Scheme &scheme, const transferRates::Tables &tables,
                           double emissionDecay, const KineticParameters &parameters = {});

/// Solves A x = 0 with sum(x) = 1, which takes the place of the equation of S0. Relative errors of
/// the populations, against exact rationals: 1e-15 with weak back-transfer, 1e-10 with a donor
/// below 5D0, up to 4e-7 at a distance RL of 0.5 Angstrom, where back-transfer is so strong that
/// the diagonal of A keeps few digits of what leaves the ion.
Eigen::VectorXd steadyState(const Eigen::MatrixXd &rateMatrix);

} // namespace rateEquations
