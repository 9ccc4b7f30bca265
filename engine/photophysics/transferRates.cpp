#include "photophysics/transferRates_p.h"

#include <cmath>

using lanqor::boltzmannConstant;
using lanqor::cmPerAngstrom;
using lanqor::eightPiOverThreeHbar;
using lanqor::elementaryChargeSquared;
using lanqor::ergPerWavenumber;
using lanqor::fourPiOverHbar;
using lanqor::twoPiOverHbar;
using transferChannels::Channel;
using transferChannels::State;

namespace transferRates {

namespace {

/// ln 2 and ln 2 / pi.
constexpr double ln2 = 0.693147180559945;
constexpr double ln2OverPi = 0.22063560015263695;

/// Dipole strength of the ligand's transition, esu^2 cm^2, the same for every ligand, and e^2 times
/// it. 10 square debye, an allowed transition; source of the number not known.
constexpr double ligandDipoleStrength = 1e-35;
constexpr double chargeTimesDipoleStrength = 2.307077352370616e-54;

/// kT at 300 K, erg, the digits by which published results were had.
constexpr double roomTemperature = 300.0;
constexpr double kTAtRoomTemperature = 4.1419464000000004e-14;

double integerPower(double x, int n)
{
    double result = 1.0;
    for (; n > 0; --n)
        result *= x;
    return result;
}

double square(double x)
{
    return x * x;
}

} // namespace

double F(double delta, double gamma)
{
    return 1.0 / gamma * std::sqrt(ln2OverPi) * std::exp(-square(delta / gamma) * ln2) *
           lanqor::wavenumberPerErg;
}

double gama(int lambda, double R)
{
    return (lambda + 1) * square(europium::radialR[lambda]) * square(europium::reducedC[lambda]) *
           square(1.0 - europium::shielding[lambda]) / integerPower(R, 2 * (lambda + 2));
}

double overlap4f4f(double R)
{
    constexpr double factor = 155.6608; // dimensionless
    constexpr double range = 0.26226;   // Angstrom
    return 2.0 * factor * std::exp(-(R / cmPerAngstrom) / range);
}

double overlap4fLigand(double R0, double R, double n)
{
    return 0.05 * std::pow(R0 / R, n);
}

double boltzmannFactor(double delta, double temperature)
{
    const double kT =
        temperature == roomTemperature ? kTAtRoomTemperature : boltzmannConstant * temperature;
    return std::exp(-delta * ergPerWavenumber / kT);
}

double Formulas::WetDD(double delta, int J, double R, const ByRank &U2, int g) const
{
    const double S = omegaEd[2] * U2[2] + omegaEd[4] * U2[4] + omegaEd[6] * U2[6];
    const double rate = F(delta, bandHalfWidth) * chargeTimesDipoleStrength /
                        ((2 * J + 1) * g * integerPower(R, 6)) * fourPiOverHbar * S;
    return needsMinDistance() ? rate * square(1.0 - europium::shielding[1]) : rate;
}

double Formulas::WetDM(double delta, int J, double R, const ByRank &U2, int g) const
{
    const double G = gama(2, R) * U2[2] + gama(4, R) * U2[4] + gama(6, R) * U2[6];
    return F(delta, bandHalfWidth) * elementaryChargeSquared * ligandDipoleStrength /
           ((2 * J + 1) * g) * twoPiOverHbar * G;
}

double Formulas::calcWetEX(double delta, int J, double S, double R, int g) const
{
    const double common = F(delta, bandHalfWidth) * elementaryChargeSquared /
                          ((2 * J + 1) * integerPower(R, 4)) * eightPiOverThreeHbar * square(S) *
                          ligandDipoleStrength;
    switch (etModel) {
    case 0: // The older models leave the degeneracy of the donor out.
        return common * integerPower(overlap4fLigand(minDistance, R, nOverlapIntegral), 2);
    case 1:
        return common * integerPower(overlap4fLigand(minDistance, R, nOverlapIntegral), 4);
    case 2:
        return common * square(1.0 - europium::shielding[0]) / g;
    default:
        return 0.0;
    }
}

double Formulas::backRatio(const Channel &channel, double delta) const
{
    const double ratio = boltzmannFactor(delta, temperature);
    return withDegeneracies ? ratio * channel.g / (2 * channel.J + 1) : ratio;
}

const DonorState &Donors::of(State state) const
{
    if (state == transferChannels::S1)
        return singlet;
    return state == transferChannels::FirstTriplet ? firstTriplet : triplet;
}

double Tables::forward(const Channel &channel) const
{
    const auto slot = static_cast<std::size_t>(channel.slot);
    return channel.mechanism == TransferMechanism::Multipolar ? forwardRates[slot]
                                                              : exchangeForwardRates[slot];
}

double Tables::backward(const Channel &channel) const
{
    const auto slot = static_cast<std::size_t>(channel.slot);
    return channel.mechanism == TransferMechanism::Multipolar ? backwardRates[slot]
                                                              : exchangeBackwardRates[slot];
}

bool Transfer::isOpen(const Channel &channel) const
{
    return transferChannels::isOpen(channel.flag, openChannels, twoTriplets);
}

bool Transfer::considers(const Channel &channel) const
{
    if (channel.donor == transferChannels::FirstTriplet)
        return twoTriplets;
    return has5G6And5L6 || (channel.acceptor != transferChannels::Level5G6 &&
                            channel.acceptor != transferChannels::Level5L6);
}

namespace {

void setRates(const Formulas &formulas, const Channel &channel, double R, Tables &tables)
{
    const auto slot = static_cast<std::size_t>(channel.slot);
    const double delta = tables.energyMismatch[slot];
    if (channel.mechanism == TransferMechanism::Multipolar) {
        ByRank U2;
        U2[channel.rank] = channel.U2;
        const double rate = formulas.WetDD(delta, channel.J, R, U2, channel.g) +
                            formulas.WetDM(delta, channel.J, R, U2, channel.g);
        tables.forwardRates[slot] = rate;
        tables.backwardRates[slot] = rate * formulas.backRatio(channel, delta);
    } else {
        const double rate = formulas.calcWetEX(delta, channel.J, channel.spinElement, R, channel.g);
        tables.exchangeForwardRates[slot] = rate;
        tables.exchangeBackwardRates[slot] = rate * formulas.backRatio(channel, delta);
    }
}

} // namespace

void calcRates(const Formulas &formulas, Transfer &transfer)
{
    for (const Channel &channel : transferChannels::channels) {
        if (!transfer.considers(channel))
            continue;
        const DonorState &donor = transfer.donors.of(channel.donor);
        transfer.tables.energyMismatch[static_cast<std::size_t>(channel.slot)] =
            donor.energy - transferChannels::acceptorEnergy(channel.acceptor);
        if (transfer.isOpen(channel))
            setRates(formulas, channel, donor.rl * cmPerAngstrom, transfer.tables);
    }
    transfer.isCalculated = true;
}

} // namespace transferRates
