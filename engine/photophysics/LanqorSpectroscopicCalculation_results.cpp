#include "photophysics/LanqorSpectroscopicCalculation_p.h"
#include "photophysics/spectroscopicReport_p.h"
#include "photophysics/spectroscopicWarnings_p.h"

using lanqor::cmPerAngstrom;
using lanqor::omegaUnitCm2;
using transferChannels::Channel;

namespace {

/// Entry @p index; 0 outside the table.
template <std::size_t size> double entry(const std::array<double, size> &table, int index)
{
    return index >= 0 && index < static_cast<int>(size) ? table[static_cast<std::size_t>(index)]
                                                        : 0.0;
}

/// Omega(2), (4), (6) given in 1e-20 cm^2.
ByRank omegaByRank(double omega2, double omega4, double omega6)
{
    ByRank omega;
    omega[2] = omega2 * omegaUnitCm2;
    omega[4] = omega4 * omegaUnitCm2;
    omega[6] = omega6 * omegaUnitCm2;
    return omega;
}

/// Adds the couplings at the distance of @p donor.
DonorState withGama(DonorState donor)
{
    for (const int lambda : {2, 4, 6})
        donor.gama[lambda] = transferRates::gama(lambda, donor.rl * cmPerAngstrom);
    return donor;
}

} // namespace

void LanqorSpectroscopicCalculation::setOmegaValues(const double &omega2, const double &omega4,
                                                    const double &omega6)
{
    d->omega = omegaByRank(omega2, omega4, omega6);
}

void LanqorSpectroscopicCalculation::setOmegaEdValues(const double &omega2, const double &omega4,
                                                      const double &omega6)
{
    d->formulas.omegaEd = omegaByRank(omega2, omega4, omega6);
}

void LanqorSpectroscopicCalculation::setRefractiveIndex(const double &index)
{
    d->refractiveIndex = index;
}

void LanqorSpectroscopicCalculation::setLifeTime(const double &seconds)
{
    d->lifeTime = seconds;
    d->isLifeTimeEstimated = false;
}

void LanqorSpectroscopicCalculation::setNOverlapIntegral(const double &exponent)
{
    d->formulas.nOverlapIntegral = exponent;
}

void LanqorSpectroscopicCalculation::setETModel(const int &model)
{
    d->formulas.etModel = model;
}

void LanqorSpectroscopicCalculation::setConsiderTwoTriplets(const bool &consider)
{
    d->considerTwoTriplets = consider;
}

void LanqorSpectroscopicCalculation::setEnergyTransferChannels(
    const EnergyTransferChannels &channels)
{
    d->energyTransferChannels = channels;
}

void LanqorSpectroscopicCalculation::setSpecPrintingOptions(const SpecPrintingOptions &options)
{
    d->specPrintingOptions = options;
}

void LanqorSpectroscopicCalculationPrivate::fillTransfer(SpectroscopicResults &results) const
{
    results.etModel = formulas.etModel;
    results.isTransferCalculated = transfer.isCalculated;
    results.considerTwoTriplets = transfer.twoTriplets;
    if (!transfer.isCalculated)
        return;
    results.singlet = withGama(transfer.donors.singlet);
    results.triplet = withGama(transfer.donors.triplet);
    if (transfer.twoTriplets)
        results.firstTriplet = withGama(transfer.donors.firstTriplet);
    for (const Channel &channel : transferChannels::channels) {
        if (!transfer.isOpen(channel))
            continue;
        const double mismatch =
            transfer.tables.energyMismatch[static_cast<std::size_t>(channel.slot)];
        results.transfers.append({transferChannels::describe(channel), mismatch,
                                  transferRates::F(mismatch, formulas.bandHalfWidth),
                                  transfer.tables.forward(channel),
                                  transfer.tables.backward(channel),
                                  !solvedScheme || solvedScheme->holdsSlot(channel.slot)});
    }
}

double LanqorSpectroscopicCalculation::getOmega(const int &lambda) const
{
    return entry(d->omega.values, lambda);
}

double LanqorSpectroscopicCalculation::getOmegaEd(const int &lambda) const
{
    return entry(d->formulas.omegaEd.values, lambda);
}

double LanqorSpectroscopicCalculation::getArad() const
{
    return d->arad;
}

double LanqorSpectroscopicCalculation::getArad02() const
{
    return d->partialRates.ed02;
}

double LanqorSpectroscopicCalculation::getArad04() const
{
    return d->partialRates.ed04;
}

double LanqorSpectroscopicCalculation::getArad06() const
{
    return d->partialRates.ed06;
}

double LanqorSpectroscopicCalculation::getAradMD() const
{
    return d->partialRates.md;
}

double LanqorSpectroscopicCalculation::getAnrad() const
{
    return d->anrad;
}

double LanqorSpectroscopicCalculation::getLifeTime() const
{
    return d->lifeTime;
}

double LanqorSpectroscopicCalculation::getQuantumEfficiency() const
{
    return d->quantumEfficiency;
}

double LanqorSpectroscopicCalculation::getQuantumYield() const
{
    return d->quantumYield;
}

double LanqorSpectroscopicCalculation::getBranchingRatio(const int &J) const
{
    return entry(d->branchingRatios, J);
}

double LanqorSpectroscopicCalculation::getPopulation(const int &i) const
{
    return entry(d->populations, i);
}

double LanqorSpectroscopicCalculation::getForwardRate(const int &k) const
{
    return entry(d->transfer.tables.forwardRates, k);
}

double LanqorSpectroscopicCalculation::getBackwardRate(const int &k) const
{
    return entry(d->transfer.tables.backwardRates, k);
}

double LanqorSpectroscopicCalculation::getExchangeForwardRate(const int &k) const
{
    return entry(d->transfer.tables.exchangeForwardRates, k);
}

double LanqorSpectroscopicCalculation::getExchangeBackwardRate(const int &k) const
{
    return entry(d->transfer.tables.exchangeBackwardRates, k);
}

double LanqorSpectroscopicCalculation::getEnergyMismatch(const int &k) const
{
    return entry(d->transfer.tables.energyMismatch, k);
}

int LanqorSpectroscopicCalculation::getSelectedSinglet() const
{
    return d->selectedSinglet;
}

int LanqorSpectroscopicCalculation::getSelectedTriplet() const
{
    return d->selectedTriplet;
}

int LanqorSpectroscopicCalculation::getReplacedSinglet() const
{
    return d->replacedSinglet;
}

int LanqorSpectroscopicCalculation::getReplacedTriplet() const
{
    return d->replacedTriplet;
}

const LanqorRL *LanqorSpectroscopicCalculation::getRLCalculation() const
{
    return d->rlCalculation;
}

SpectroscopicResults LanqorSpectroscopicCalculation::getResults() const
{
    SpectroscopicResults results;
    results.inputPath = d->inputPath;
    results.omega = d->omega;
    results.omegaEd = d->formulas.omegaEd;
    results.refractiveIndex = d->refractiveIndex;
    results.arad = d->arad;
    results.aradMD = d->partialRates.md;
    results.arad02 = d->partialRates.ed02;
    results.arad04 = d->partialRates.ed04;
    results.arad06 = d->partialRates.ed06;
    results.branchingRatios = QVector<double>(d->branchingRatios.begin(), d->branchingRatios.end());
    results.isLifeTimeEstimated = d->isLifeTimeEstimated;
    results.lifeTime = d->lifeTime;
    results.anrad = d->anrad;
    results.quantumEfficiency = d->quantumEfficiency;
    d->fillTransfer(results);
    const auto name = [](transferChannels::State state) {
        return QLatin1String(transferChannels::stateName(state));
    };
    if (d->solvedScheme) {
        for (const transferChannels::State state : d->solvedScheme->states)
            results.populations.append({name(state), d->populations[state]});
        for (const rateEquations::FixedRate &fixed :
             rateEquations::fixedRates(*d->solvedScheme, d->kinetics))
            results.kineticConstants.append({name(fixed.from), name(fixed.to), fixed.rate});
    }
    results.quantumYield = d->quantumYield;
    if (d->rlCalculation)
        results.ligandStates = d->rlCalculation->getResults();
    results.overlapExponent = d->formulas.nOverlapIntegral;
    results.bandHalfWidth = d->formulas.bandHalfWidth;
    results.kinetics = d->kinetics;
    results.minDistanceLnLigand =
        d->givenMinDistance != 0.0 ? d->givenMinDistance : d->minDistanceRead();
    results.sensitisation = d->sensitisation;
    results.shares = d->shares;
    results.replacedValues = d->replacedValues();
    results.limitingStep = limitingStepText(results);
    results.warnings = spectroscopicWarnings(results);
    return results;
}

QString LanqorSpectroscopicCalculation::createOutFileET(const QString &path)
{
    SpectroscopicResults results = getResults();
    results.inputPath = path;
    return spectroscopicReport::transferReport(results, d->specPrintingOptions);
}

QString LanqorSpectroscopicCalculation::createOutFile(const QString &path)
{
    SpectroscopicResults results = getResults();
    results.inputPath = path;
    return spectroscopicReport::populationReport(results, d->specPrintingOptions);
}
