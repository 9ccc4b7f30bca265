#pragma once

#include "overlap/europium_p.h"
#include "photophysics/transferChannels_p.h"

#include <LanqorEngine/SpectroscopicResults.h>

#include <array>

/// Rates of energy transfer from a ligand state to Eu3+ and back, in Gaussian units: energies
/// and mismatches in cm^-1, distances in cm, rates in s^-1 (O. L. Malta, J. Lumin. 71, 229
/// (1997); J. Non-Cryst. Solids 354, 4770 (2008)).
namespace transferRates {

/// Overlap of the ligand's band, of half width @p gamma and centred @p delta from the level of
/// the ion, with that level, erg^-1:
///     F = (1/gamma) sqrt(ln2/pi) exp(-(delta/gamma)^2 ln2) / (hc)
double F(double delta, double gamma);

/// (lambda+1) (<r^lambda> <f||C(lambda)||f> (1 - sigma(lambda)))^2 / R^(2 (lambda+2)), cm^-4.
double gama(int lambda, double R);

/// Overlap of two 4f shells at a distance R: 2 * 155.6608 exp(-R / 0.26226 Angstrom). Source of the
/// law and of its numbers not known.
double overlap4f4f(double R);

/// Overlap 0.05 (R0/R)^n of the 4f shell with a ligand orbital (O. L. Malta, Chem. Phys. Lett. 87,
/// 27 (1982)).
double overlap4fLigand(double R0, double R, double n);

/// exp(-delta / kT): ratio of a rate of back-transfer to that of transfer between states that are
/// not degenerate. @p temperature in K.
double boltzmannFactor(double delta, double temperature = 300.0);

/// The formulas that depend on how the ion and its surroundings are described.
struct Formulas
{
    /// 0 and 1: exchange through the overlap 0.05 (R0/R)^n, squared or to the fourth power;
    /// 2: exchange shielded by the ion's closed shells. Exchange is 0 for any other.
    int etModel = 0;
    double bandHalfWidth = 3250.0; ///< of the ligand's bands, cm^-1; source not known
    double nOverlapIntegral = 3.5; ///< exponent of the overlap, as in the simple overlap model
    double minDistance = 0.0;      ///< ion to nearest ligand atom, cm
    ByRank omegaEd;                ///< Omega(lambda) of the ED part, cm^2
    double temperature = 300.0;    ///< of back-transfer, K
    bool withDegeneracies = false; ///< in the ratio of back-transfer and transfer

    /// Dipole-dipole rate. @p U2 by rank, @p g the degeneracy of the donor.
    double WetDD(double delta, int J, double R, const ByRank &U2, int g) const;
    /// Dipole-multipole rate.
    double WetDM(double delta, int J, double R, const ByRank &U2, int g) const;
    /// Exchange rate. @p S is a spin matrix element and enters squared.
    double calcWetEX(double delta, int J, double S, double R, int g) const;
    /// Ratio of back-transfer and transfer over @p channel:
    ///     exp(-delta / kT), with degeneracies times g(donor) / (2J + 1)
    double backRatio(const transferChannels::Channel &channel, double delta) const;
    /// True for the models that need the distance to the nearest ligand atom.
    bool needsMinDistance() const { return etModel == 0 || etModel == 1; }
};

struct Donors
{
    DonorState singlet;
    DonorState firstTriplet; ///< of two triplets only
    DonorState triplet;

    const DonorState &of(transferChannels::State state) const;
};

constexpr int slotCount = 20;
using Slots = std::array<double, slotCount>;

/// Results by slot of a channel; slots that no channel writes stay 0.
struct Tables
{
    Slots forwardRates = {};
    Slots backwardRates = {};
    Slots exchangeForwardRates = {};
    Slots exchangeBackwardRates = {};
    Slots energyMismatch = {}; ///< donor minus acceptor

    double forward(const transferChannels::Channel &channel) const;
    double backward(const transferChannels::Channel &channel) const;
};

/// One calculation: what it rests on and what it gave.
struct Transfer
{
    Donors donors;
    EnergyTransferChannels openChannels;
    bool twoTriplets = false;
    bool has5G6And5L6 = true; ///< false: mismatches with these levels are not wanted
    bool isCalculated = false;
    Tables tables;

    bool isOpen(const transferChannels::Channel &channel) const;
    bool considers(const transferChannels::Channel &channel) const;
};

/// Sets the mismatches of the channels that are considered and the rates of the open ones; all
/// other slots keep what they hold.
void calcRates(const Formulas &formulas, Transfer &transfer);

} // namespace transferRates
