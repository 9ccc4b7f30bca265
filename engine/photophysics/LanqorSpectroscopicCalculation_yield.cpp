#include "core/physicalConstants_p.h"
#include "photophysics/LanqorSpectroscopicCalculation_p.h"

#include <algorithm>
#include <cmath>

using lanqor::cmPerAngstrom;
using lanqor::omegaUnitCm2;
using transferChannels::Channel;
using transferChannels::State;
using transferRates::Transfer;

namespace {

constexpr double msPerSecond = 1000.0;

/// True when both the energy and a distance that a rate can be had from are known.
bool isUsable(const DonorState &donor)
{
    return std::isfinite(donor.energy) && std::isfinite(donor.rl) && donor.rl > 0.0;
}

const rateEquations::Scheme &schemeOf(YieldScheme scheme)
{
    switch (scheme) {
    case YieldScheme::SixStates:
        return rateEquations::sixStates();
    case YieldScheme::TwoTriplets:
        return rateEquations::twoTriplets();
    default:
        return rateEquations::eightStates();
    }
}

Transfer transferOf(const YieldInputs &inputs)
{
    const auto donor = [](const DonorValues &values, double shift) {
        return DonorState{0, values.energy + shift, values.rl, {}};
    };
    Transfer transfer;
    transfer.openChannels = inputs.channels;
    transfer.twoTriplets = inputs.scheme == YieldScheme::TwoTriplets;
    transfer.has5G6And5L6 = inputs.scheme != YieldScheme::SixStates;
    transfer.donors.singlet = donor(inputs.singlet, 0.0);
    transfer.donors.triplet = donor(inputs.triplet, inputs.tripletShift);
    transfer.donors.firstTriplet = donor(inputs.firstTriplet, inputs.tripletShift);
    return transfer;
}

transferRates::Formulas formulasOf(const YieldInputs &inputs)
{
    transferRates::Formulas formulas;
    formulas.etModel = inputs.etModel;
    formulas.bandHalfWidth = inputs.bandHalfWidth;
    formulas.nOverlapIntegral = inputs.overlapExponent;
    formulas.minDistance = inputs.minDistance * cmPerAngstrom;
    formulas.omegaEd = inputs.omegaEd;
    formulas.temperature = inputs.kinetics.temperature;
    formulas.withDegeneracies = inputs.kinetics.withDegeneracies;
    return formulas;
}

using In = YieldInputs;

YieldQuantity quantity(const char *name, const char *unit, double (*get)(const In &),
                       void (*set)(In &, double))
{
    return {QLatin1String(name), QLatin1String(unit), get, set};
}

/// A member of the record.
template <double In::*member> YieldQuantity plain(const char *name, const char *unit)
{
    return quantity(
        name, unit, [](const In &in) { return in.*member; },
        [](In &in, double value) { in.*member = value; });
}

/// A member of a record within the record.
template <auto part, auto member> YieldQuantity nested(const char *name, const char *unit)
{
    return quantity(
        name, unit, [](const In &in) { return in.*part.*member; },
        [](In &in, double value) { in.*part.*member = value; });
}

/// One of three intensity parameters, which users give in 1e-20 cm^2.
template <ByRank In::*omega, int lambda> YieldQuantity ofRank(const char *name)
{
    return quantity(
        name, "1e-20 cm^2", [](const In &in) { return (in.*omega)[lambda] / omegaUnitCm2; },
        [](In &in, double value) { (in.*omega)[lambda] = value * omegaUnitCm2; });
}

} // namespace

const DonorValues &LanqorSpectroscopicCalculationPrivate::givenOf(State state) const
{
    if (state == transferChannels::S1)
        return givenSinglet;
    return state == transferChannels::FirstTriplet ? givenFirstTriplet : givenTriplet;
}

/// The state that was chosen, as far as it was read.
DonorState LanqorSpectroscopicCalculationPrivate::readDonor(State state) const
{
    DonorState donor;
    if (!areStatesRead)
        return donor;
    const LanqorRL &states = *rlCalculation;
    const bool isSinglet = state == transferChannels::S1;
    const bool isSecond = considerTwoTriplets && state == transferChannels::T1;
    const int number = isSinglet ? selectedSinglet : isSecond ? secondTriplet : selectedTriplet;
    const int count = isSinglet ? states.getSingletStatesCount() : states.getTripletStatesCount();
    if (number < 1 || number > count)
        return donor;
    donor.number = number;
    donor.energy = isSinglet ? states.getSingletEnergy(number) : states.getTripletEnergy(number);
    if (areDistancesRead)
        donor.rl = isSinglet ? states.getSingletRL(number) : states.getTripletRL(number);
    return donor;
}

/// The same with what is given in place of its values.
DonorState LanqorSpectroscopicCalculationPrivate::donor(State state) const
{
    DonorState donor = readDonor(state);
    const DonorValues &given = givenOf(state);
    if (given.energy != 0.0)
        donor.energy = given.energy;
    if (given.rl != 0.0)
        donor.rl = given.rl;
    if (given.energy != 0.0 && given.rl != 0.0)
        donor.number = 0;
    return donor;
}

transferRates::Donors LanqorSpectroscopicCalculationPrivate::donorsOfStates() const
{
    transferRates::Donors donors;
    donors.singlet = donor(transferChannels::S1);
    donors.triplet = donor(transferChannels::T1);
    if (considerTwoTriplets)
        donors.firstTriplet = donor(transferChannels::FirstTriplet);
    return donors;
}

/// Why no rates can be had; empty when they can.
QString
LanqorSpectroscopicCalculationPrivate::reasonAgainst(const Transfer &request,
                                                     const transferRates::Formulas &formulas)
{
    for (const Channel &channel : transferChannels::channels) {
        if (!request.isOpen(channel))
            continue;
        const DonorState &donor = request.donors.of(channel.donor);
        if (!isUsable(donor)) {
            const QString kind =
                channel.donor == transferChannels::S1 ? tr("singlet") : tr("triplet");
            const QString name =
                donor.number > 0 ? tr("%1 state number %2").arg(kind, QString::number(donor.number))
                                 : kind;
            return tr("The %1 cannot be a donor: its energy is %2 cm^-1 and its "
                      "distance RL from the ion is %3 Angstrom.")
                .arg(name, QString::number(donor.energy), QString::number(donor.rl));
        }
        if (channel.mechanism == TransferMechanism::Exchange && formulas.needsMinDistance() &&
            !(formulas.minDistance > 0.0))
            return tr("Energy-transfer models 0 and 1 need the shortest ion-ligand "
                      "distance, which is missing: no output of an excited-state "
                      "calculation has been read, and none is given. Model 2 works without it.");
    }
    return QString();
}

/// Angstrom; 0 without an output.
double LanqorSpectroscopicCalculationPrivate::minDistanceRead() const
{
    return areDistancesRead ? rlCalculation->getMinDistanceLnLigand() : 0.0;
}

YieldScheme LanqorSpectroscopicCalculationPrivate::scheme() const
{
    if (solvedScheme == &rateEquations::sixStates())
        return YieldScheme::SixStates;
    const bool isOfTwo =
        solvedScheme ? solvedScheme == &rateEquations::twoTriplets() : considerTwoTriplets;
    return isOfTwo ? YieldScheme::TwoTriplets : YieldScheme::EightStates;
}

QVector<ReplacedValue> LanqorSpectroscopicCalculationPrivate::replacedValues() const
{
    QVector<ReplacedValue> replaced;
    const auto add = [&replaced](const QString &quantity, const char *unit, double read,
                                 double used) {
        if (used != 0.0)
            replaced.append({quantity, QLatin1String(unit), read, used});
    };
    const char *const wavenumber = "cm^-1";
    const char *const angstrom = "Angstrom";
    const auto addDonor = [&](const QString &name, State state) {
        const DonorState read = readDonor(state);
        const DonorValues &given = givenOf(state);
        add(tr("%1 energy").arg(name), wavenumber, read.energy, given.energy);
        add(tr("%1 RL").arg(name), angstrom, read.rl, given.rl);
    };
    if (areStatesRead) {
        addDonor(tr("singlet"), transferChannels::S1);
        addDonor(tr("triplet"), transferChannels::T1);
        if (considerTwoTriplets)
            addDonor(tr("triplet Ta"), transferChannels::FirstTriplet);
        add(tr("shortest ion-ligand distance"), angstrom, minDistanceRead(), givenMinDistance);
    }
    add(tr("shift of the triplets"), wavenumber, 0.0, tripletShift);
    return replaced;
}

void LanqorSpectroscopicCalculation::setSingletEnergy(const double &energy)
{
    d->givenSinglet.energy = energy;
}

void LanqorSpectroscopicCalculation::setSingletRL(const double &distance)
{
    d->givenSinglet.rl = distance;
}

void LanqorSpectroscopicCalculation::setTripletEnergy(const double &energy)
{
    d->givenTriplet.energy = energy;
}

void LanqorSpectroscopicCalculation::setTripletRL(const double &distance)
{
    d->givenTriplet.rl = distance;
}

void LanqorSpectroscopicCalculation::setFirstTripletEnergy(const double &energy)
{
    d->givenFirstTriplet.energy = energy;
}

void LanqorSpectroscopicCalculation::setFirstTripletRL(const double &distance)
{
    d->givenFirstTriplet.rl = distance;
}

void LanqorSpectroscopicCalculation::setTripletShift(const double &shift)
{
    d->tripletShift = shift;
}

void LanqorSpectroscopicCalculation::setMinDistanceLnLigand(const double &distance)
{
    d->givenMinDistance = distance;
    d->formulas.minDistance = (distance != 0.0 ? distance : d->minDistanceRead()) * cmPerAngstrom;
}

void LanqorSpectroscopicCalculation::setBandHalfWidth(const double &halfWidth)
{
    d->formulas.bandHalfWidth = halfWidth;
}

void LanqorSpectroscopicCalculation::setKineticParameters(const KineticParameters &parameters)
{
    d->kinetics = parameters;
    d->formulas.temperature = parameters.temperature;
    d->formulas.withDegeneracies = parameters.withDegeneracies;
}

KineticParameters LanqorSpectroscopicCalculation::getKineticParameters() const
{
    return d->kinetics;
}

double LanqorSpectroscopicCalculation::getSensitisation() const
{
    return d->sensitisation;
}

PhotonShares LanqorSpectroscopicCalculation::getPhotonShares() const
{
    return d->shares;
}

YieldOutcome LanqorSpectroscopicCalculation::calcYield(const YieldInputs &inputs)
{
    YieldOutcome outcome;
    Transfer transfer = transferOf(inputs);
    const transferRates::Formulas formulas = formulasOf(inputs);
    outcome.error = LanqorSpectroscopicCalculationPrivate::reasonAgainst(transfer, formulas);
    if (!outcome.error.isEmpty())
        return outcome;
    outcome.arad = radiativeRates::calcRates(inputs.omega, inputs.refractiveIndex).total();
    const bool isEstimated = inputs.lifeTime == 0.0;
    outcome.anrad = isEstimated
                        ? LanqorSpectroscopicCalculationPrivate::estimatedAnrad(outcome.arad)
                        : 1.0 / inputs.lifeTime - outcome.arad;
    outcome.lifeTime = isEstimated ? 1.0 / (outcome.arad + outcome.anrad) : inputs.lifeTime;
    outcome.quantumEfficiency = 100.0 * outcome.arad / (outcome.anrad + outcome.arad);

    transferRates::calcRates(formulas, transfer);
    for (const Channel &channel : transferChannels::channels) {
        outcome.forwardRates[static_cast<std::size_t>(channel.slot)] =
            transfer.tables.forward(channel);
        outcome.backwardRates[static_cast<std::size_t>(channel.slot)] =
            transfer.tables.backward(channel);
    }
    const rateEquations::Solution solution = rateEquations::solve(
        schemeOf(inputs.scheme), transfer.tables, outcome.arad, outcome.anrad, inputs.kinetics);
    outcome.populations = solution.populations;
    outcome.quantumYield = solution.quantumYield;
    outcome.sensitisation = 100.0 * outcome.quantumYield / outcome.quantumEfficiency;
    outcome.shares = solution.shares;
    return outcome;
}

YieldInputs LanqorSpectroscopicCalculation::getYieldInputs() const
{
    YieldInputs inputs;
    inputs.scheme = d->scheme();
    const bool isOfArguments = inputs.scheme == YieldScheme::SixStates;
    const transferRates::Donors donors = isOfArguments ? d->donorsBeforeShift : d->donorsOfStates();
    inputs.singlet = {donors.singlet.energy, donors.singlet.rl};
    inputs.triplet = {donors.triplet.energy, donors.triplet.rl};
    inputs.firstTriplet = {donors.firstTriplet.energy, donors.firstTriplet.rl};
    inputs.tripletShift = d->tripletShift;
    inputs.minDistance = d->givenMinDistance != 0.0 ? d->givenMinDistance : d->minDistanceRead();
    inputs.omega = d->omega;
    inputs.omegaEd = d->formulas.omegaEd;
    inputs.refractiveIndex = d->refractiveIndex;
    inputs.lifeTime = d->isLifeTimeEstimated ? 0.0 : d->lifeTime;
    inputs.etModel = d->formulas.etModel;
    inputs.overlapExponent = d->formulas.nOverlapIntegral;
    inputs.bandHalfWidth = d->formulas.bandHalfWidth;
    inputs.channels = isOfArguments ? EnergyTransferChannels() : d->energyTransferChannels;
    inputs.kinetics = d->kinetics;
    return inputs;
}

QVector<YieldQuantity> LanqorSpectroscopicCalculation::getYieldQuantities()
{
    using Donor = DonorValues;
    using Kinetics = KineticParameters;
    const char *const wavenumber = "cm^-1";
    const char *const angstrom = "Angstrom";
    const char *const rate = "s^-1";
    return {
        nested<&In::singlet, &Donor::energy>("singlet-energy", wavenumber),
        nested<&In::singlet, &Donor::rl>("rl-singlet", angstrom),
        nested<&In::triplet, &Donor::energy>("triplet-energy", wavenumber),
        nested<&In::triplet, &Donor::rl>("rl-triplet", angstrom),
        nested<&In::firstTriplet, &Donor::energy>("ta-energy", wavenumber),
        nested<&In::firstTriplet, &Donor::rl>("rl-ta", angstrom),
        plain<&In::tripletShift>("t1-shift", wavenumber),
        plain<&In::minDistance>("min-distance", angstrom),
        ofRank<&In::omega, 2>("omega2"),
        ofRank<&In::omega, 4>("omega4"),
        ofRank<&In::omega, 6>("omega6"),
        ofRank<&In::omegaEd, 2>("omega-ed2"),
        ofRank<&In::omegaEd, 4>("omega-ed4"),
        ofRank<&In::omegaEd, 6>("omega-ed6"),
        plain<&In::refractiveIndex>("n", "1"),
        quantity(
            "lifetime", "ms", [](const In &in) { return in.lifeTime * msPerSecond; },
            [](In &in, double value) { in.lifeTime = value / msPerSecond; }),
        plain<&In::overlapExponent>("overlap-exponent", "1"),
        plain<&In::bandHalfWidth>("band-half-width", wavenumber),
        nested<&In::kinetics, &Kinetics::excitation>("excitation-rate", rate),
        nested<&In::kinetics, &Kinetics::singletDecay>("singlet-decay", rate),
        nested<&In::kinetics, &Kinetics::intersystemCrossing>("intersystem-crossing", rate),
        quantity(
            "triplet-decay", rate,
            [](const In &in) { return in.kinetics.*schemeOf(in.scheme).tripletDecay; },
            [](In &in, double value) { in.kinetics.*schemeOf(in.scheme).tripletDecay = value; }),
        nested<&In::kinetics, &Kinetics::tripletCrossing>("triplet-crossing", rate),
        nested<&In::kinetics, &Kinetics::upperCascade>("upper-cascade", rate),
        nested<&In::kinetics, &Kinetics::lowerCascade>("lower-cascade", rate),
        nested<&In::kinetics, &Kinetics::temperature>("temperature", "K"),
    };
}
