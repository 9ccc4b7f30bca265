#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/DonorStatesResults.h>
#include <LanqorEngine/KineticParameters.h>
#include <LanqorEngine/PhotonShares.h>
#include <LanqorEngine/TransferChannel.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// A state of the ligands that gives energy to the ion.
struct DonorState
{
    int number = 0;      ///< in the list of its states (1-based); 0: values given by hand
    double energy = 0.0; ///< cm^-1
    double rl = 0.0;     ///< distance from the ion, Angstrom
    ByRank gama;         ///< dipole-multipole coupling at this distance, cm^-4
};

/// What goes over an open channel; rates in s^-1.
struct TransferResult
{
    TransferChannel channel;
    double energyMismatch = 0.0; ///< donor minus acceptor, cm^-1
    double overlap = 0.0;        ///< of the ligand's band with the level, erg^-1
    double forwardRate = 0.0;    ///< to the ion
    double backwardRate = 0.0;   ///< back to the ligand
    /// False for a channel that the scheme of the populations leaves out.
    bool takesPart = true;
};

/// Share of a state of the kinetic scheme under continuous excitation.
struct StatePopulation
{
    QString state; ///< "S0", "S", "Ta" (first of two triplets), "T", "5D4", "5G6", ...
    double population = 0.0;
};

/// A rate of the kinetic scheme that is set, by default the same for all complexes, s^-1.
struct KineticConstant
{
    QString from; ///< states, named as those of the populations
    QString to;
    double rate = 0.0;
};

/// A value that stands in for that of the excited-state output.
struct ReplacedValue
{
    QString quantity;  ///< "triplet energy"
    QString unit;      ///< "cm^-1"
    double read = 0.0; ///< of the output; 0 without one
    double used = 0.0;
};

/// What LanqorSpectroscopicCalculation found. Rates in s^-1, Omega in cm^2.
struct SpectroscopicResults
{
    QString inputPath; ///< of the complex
    ByRank omega;
    ByRank omegaEd; ///< part of the forced electric dipole

    double refractiveIndex = 0.0;
    double arad = 0.0;
    double aradMD = 0.0; ///< 5D0 -> 7F1
    double arad02 = 0.0; ///< 5D0 -> 7F2, and so on
    double arad04 = 0.0;
    double arad06 = 0.0;
    QVector<double> branchingRatios;  ///< percent of arad, by J of 7FJ, 0 to 7
    bool isLifeTimeEstimated = false; ///< else measured
    double lifeTime = 0.0;            ///< of 5D0, s
    double anrad = 0.0;
    double quantumEfficiency = 0.0; ///< percent

    int etModel = 0;
    bool isTransferCalculated = false; ///< else donors and transfers are void
    bool considerTwoTriplets = false;
    DonorState singlet;
    DonorState triplet;                   ///< of two the second, which feeds 5D1 and 5D0
    DonorState firstTriplet;              ///< of two; it feeds 5D4
    QVector<TransferResult> transfers;    ///< of the open channels
    QVector<StatePopulation> populations; ///< of the states of the scheme; empty without any
    double quantumYield = 0.0;            ///< percent
    DonorStatesResults ligandStates;      ///< empty with states given by hand

    double overlapExponent = 0.0; ///< of the 4f-ligand overlap, exchange models 0 and 1
    double bandHalfWidth = 0.0;   ///< of the ligands' bands, cm^-1
    QVector<KineticConstant> kineticConstants; ///< of the scheme; empty without populations
    /// Sentences on results that donor states, channels or a lifetime make doubtful.
    QStringList warnings;
    KineticParameters kinetics;
    double minDistanceLnLigand = 0.0; ///< of exchange models 0 and 1, Angstrom; 0: not known
    double sensitisation = 0.0;       ///< quantum yield / quantum efficiency, percent
    PhotonShares shares;              ///< of the photons; void without populations
    QVector<ReplacedValue> replacedValues;
    /// "back-transfer from 5D0 to T takes 46.0 %": what the greatest part of the photons is lost
    /// to; empty without populations.
    QString limitingStep;
};
