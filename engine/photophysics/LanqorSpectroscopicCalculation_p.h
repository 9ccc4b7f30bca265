#pragma once

#include "LanqorSpectroscopicCalculation.h"
#include "intensity/radiativeRates_p.h"
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
    bool runTransfer(const transferRates::Transfer &request);
    bool refuseTransfer(const QString &reason);
    bool prepareRates();
    void solvePopulations(const rateEquations::Scheme &scheme, double aradUsed, double anradUsed);
    void announceIdleChannels(const rateEquations::Scheme &scheme);
    void fillTransfer(SpectroscopicResults &results) const;

    LanqorSpectroscopicCalculation &owner;
    QString inputPath;
    bool considerTwoTriplets = false;
    EnergyTransferChannels energyTransferChannels;
    int selectedTriplet = 0;
    int selectedSinglet = 0;
    int replacedTriplet = 0;
    int replacedSinglet = 0;
    bool areStatesChosen = false;
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
    const rateEquations::Scheme *solvedScheme = nullptr; // of the populations
    LanqorRL *rlCalculation = nullptr;
    SpecPrintingOptions specPrintingOptions;
    QStringList earlyMessages; // of the excited states
};
