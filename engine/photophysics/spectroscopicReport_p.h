#pragma once

#include "intensity/europium_p.h"
#include "photophysics/rateEquations_p.h"
#include "photophysics/transferRates_p.h"

#include <LanqorEngine/SpecPrintingOptions.h>

#include <QString>

#include <array>

/// The texts of the reports on rates, populations and the quantum yield.
namespace spectroscopicReport {

/// What the reports print, in the units of the calculation.
struct Contents
{
    QString inputPath;
    ByRank omega;   ///< cm^2
    ByRank omegaEd; ///< cm^2
    transferRates::Transfer transfer;
    double bandHalfWidth = 0.0; ///< cm^-1
    double refractiveIndex = 0.0;
    double arad = 0.0;
    std::array<double, 8> branchingRatios = {}; ///< percent, by J
    double lifeTime = 0.0;                      ///< s
    double anrad = 0.0;
    double quantumEfficiency = 0.0;                ///< percent
    const rateEquations::Scheme *scheme = nullptr; ///< of the populations; null without any
    std::array<double, transferChannels::stateCount> populations = {};
    double quantumYield = 0.0; ///< percent
};

/// From the intensity parameters to the radiative rate.
QString transferReport(const Contents &contents, const SpecPrintingOptions &options);
/// From the non-radiative rate to the quantum yield.
QString populationReport(const Contents &contents, const SpecPrintingOptions &options);

} // namespace spectroscopicReport
