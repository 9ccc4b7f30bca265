#pragma once

#include "LanqorSpectroscopicCalculation.h"
#include "intensity/radiativeRates_p.h"
#include "photophysics/photonShares_p.h"
#include "photophysics/rateEquations_p.h"
#include "photophysics/transferRates_p.h"

#include <QCoreApplication>
#include <QStringList>

#include <array>

class LanqorOmega;

/// What a LanqorSpectroscopicCalculation was given and has found.
class LanqorSpectroscopicCalculationPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorSpectroscopicCalculation)

public:
    explicit LanqorSpectroscopicCalculationPrivate(LanqorSpectroscopicCalculation &owner)
        : owner(owner)
    {}

    bool takeOmega(const LanqorOmega *calculation);
    bool takeExcitedStates(LanqorRL *calculation, int programType, const QString &rlPath);
    void selectStates(int programType);
    bool checkStates(const QString &rlPath);
    void emitEarlyMessages();
    DonorState readDonor(transferChannels::State state) const;
    DonorState donor(transferChannels::State state) const;
    transferRates::Donors donorsOfStates() const;
    bool runTransfer(transferRates::Transfer request);
    static QString reasonAgainst(const transferRates::Transfer &request,
                                 const transferRates::Formulas &formulas);
    bool refuseTransfer(const QString &reason);
    bool prepareRates();
    void solvePopulations(const rateEquations::Scheme &scheme, double aradUsed, double anradUsed);
    void announceIdleChannels(const rateEquations::Scheme &scheme);
    void fillTransfer(SpectroscopicResults &results) const;
    QVector<ReplacedValue> replacedValues() const;
    double minDistanceRead() const;
    YieldScheme scheme() const;

    const DonorValues &givenOf(transferChannels::State state) const;
    /// The empirical non-radiative rate that goes with a radiative rate, s^-1.
    static double estimatedAnrad(double arad);

    static constexpr int secondTriplet = 2; ///< number in its list of the second of two

    LanqorSpectroscopicCalculation &owner;
    QString inputPath;
    bool considerTwoTriplets = false;
    EnergyTransferChannels energyTransferChannels;
    int selectedTriplet = 0;
    int selectedSinglet = 0;
    int replacedTriplet = 0;
    int replacedSinglet = 0;
    bool areStatesRead = false;                 // some of them, with their energies
    bool areDistancesRead = false;              // and all RL
    bool areStatesChosen = false;               // and both kinds
    std::array<double, 8> branchingRatios = {}; // by J of 7FJ
    RadiativeRates partialRates;
    double arad = 0.0;
    double anrad = 0.0;
    double refractiveIndex = 1.5;
    double lifeTime = 0.0;
    bool isLifeTimeEstimated = false;
    double aradOfEstimate = 0.0; // of an estimated lifetime
    double quantumEfficiency = 0.0;
    ByRank omega; // cm^2
    std::array<double, transferChannels::stateCount> populations = {};
    double quantumYield = 0.0;
    transferRates::Formulas formulas;
    transferRates::Transfer transfer;                    // the last one
    transferRates::Donors donorsBeforeShift;             // of the last one
    const rateEquations::Scheme *solvedScheme = nullptr; // of the populations
    KineticParameters kinetics;
    PhotonShares shares;
    double sensitisation = 0.0;
    DonorValues givenSinglet; // 0 where nothing is given
    DonorValues givenTriplet;
    DonorValues givenFirstTriplet;
    double tripletShift = 0.0;
    double givenMinDistance = 0.0; // Angstrom
    LanqorRL *rlCalculation = nullptr;
    SpecPrintingOptions specPrintingOptions;
    QStringList earlyMessages; // of the excited states
};
