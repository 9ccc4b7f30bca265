#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/EnergyTransferChannels.h>
#include <LanqorEngine/KineticParameters.h>
#include <LanqorEngine/PhotonShares.h>

#include <QString>

#include <array>

/// The kinetic schemes: S0, S1, T, 5D4, 5D1, 5D0; the same with 5G6 and 5L6; S0, S1, two triplets,
/// 5D4, 5D1, 5D0.
enum class YieldScheme { SixStates, EightStates, TwoTriplets };

/// A donor state of the ligands by its values alone.
struct DonorValues
{
    double energy = 0.0; ///< cm^-1
    double rl = 0.0;     ///< distance from the ion, Angstrom
};

/// All that a quantum yield depends on, as plain values: read once, it can be changed and
/// calculated (LanqorSpectroscopicCalculation::calcYield) any number of times.
struct YieldInputs
{
    DonorValues singlet;
    DonorValues triplet;       ///< of two the one that feeds 5D1 and 5D0
    DonorValues firstTriplet;  ///< Ta of two, which feeds 5D4
    double tripletShift = 0.0; ///< added to the energies of all donor triplets, cm^-1
    double minDistance = 0.0;  ///< ion to nearest ligand atom, Angstrom; models 0 and 1 alone
    ByRank omega;              ///< cm^2
    ByRank omegaEd;            ///< its forced electric dipole part, cm^2
    double refractiveIndex = 1.5;
    double lifeTime = 0.0; ///< measured, of 5D0, s; 0: the non-radiative rate is estimated
    int etModel = 0;
    double overlapExponent = 3.5;  ///< models 0 and 1
    double bandHalfWidth = 3250.0; ///< of the ligands' bands, cm^-1
    EnergyTransferChannels channels;
    YieldScheme scheme = YieldScheme::EightStates;
    KineticParameters kinetics;
};

/// What YieldInputs give. Rates in s^-1, efficiencies and yield in percent.
struct YieldOutcome
{
    QString error; ///< why nothing could be calculated; empty with results
    double arad = 0.0;
    double anrad = 0.0;
    double lifeTime = 0.0; ///< given or estimated, s
    double quantumEfficiency = 0.0;
    double quantumYield = 0.0;
    /// quantumYield / quantumEfficiency: how much of the light reaches the emitting level, and is
    /// not lost from it to the ligands.
    double sensitisation = 0.0;
    PhotonShares shares;
    /// By the slots of LanqorTransferChannels, whatever the mechanism.
    std::array<double, 15> forwardRates = {};
    std::array<double, 15> backwardRates = {};
    /// S0, S1, Ta, T, 5D4, 5G6, 5L6, 5D1, 5D0; 0 for those that the scheme leaves out.
    std::array<double, 9> populations = {};
};

/// A number among the YieldInputs that can be set by its name, in the unit in which users give it.
struct YieldQuantity
{
    QString name; ///< "triplet-energy"
    QString unit; ///< "cm^-1"; "1" without a unit
    double (*get)(const YieldInputs &inputs) = nullptr;
    void (*set)(YieldInputs &inputs, double value) = nullptr;
};
