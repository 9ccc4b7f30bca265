#pragma once

#include "core/physicalConstants_p.h"

#include <LanqorEngine/FreeIonLevelsResults.h>

#include <Eigen/Core>

class LanqorEnergyLevels;

namespace freeIon {

using lanqor::gOfSpin;

/// Reduced elements between all levels of a calculation, (level, level) in its order, with the
/// signs of the eigenvectors.
struct ReducedElements
{
    Eigen::MatrixXd U[3];     ///< of U(2), U(4), U(6)
    Eigen::MatrixXd magnetic; ///< of L + g_s S, hbar
};

/// All of them in one pass. With C the coefficients of fractional parentage of the terms,
///     <t||U(k)||t'> = n sqrt((2L+1)(2L'+1)) sum over L1 of (-1)^(L1+L+l+k) {L l L1; l L' k} C C^T
/// over the parents of orbital momentum L1 (B. G. Wybourne, Spectroscopic Properties of Rare
/// Earths (1965), eq. 2-91), of 14 - n particles and with the factor -(-1)^k beyond half filling;
///     <t J||U(k)||t' J'> = (-1)^(S+L'+J+k) sqrt((2J+1)(2J'+1)) {J J' k; L' L S} <t||U(k)||t'>
/// (eq. 2-93), and between the levels of one term
///     L + g_s S = J + (g_s - 1) S,
///     <J||S||J'> = (-1)^(S+L+J'+1) sqrt((2J+1)(2J'+1) S(S+1)(2S+1)) {S J L; J' S 1}.
ReducedElements calcReducedElements(const LanqorEnergyLevels &ion,
                                    const FreeIonLevelsResults &results);

} // namespace freeIon
