#include "photophysics/LanqorSpectroscopicCalculation_p.h"

#include "input/intensityReportReader_p.h"

#include <LanqorEngine/LanqorOmega.h>

#include <algorithm>
#include <cmath>

using lanqor::cmPerAngstrom;
using transferChannels::Channel;
using transferRates::Transfer;

namespace {

bool isZero(const ByRank &parameters)
{
    return std::all_of(parameters.values.begin(), parameters.values.end(),
                       [](double x) { return x == 0.0; });
}

} // namespace

bool LanqorSpectroscopicCalculationPrivate::takeOmega(const LanqorOmega *calculation)
{
    if (!calculation->getLastError().isEmpty())
        return owner.failWith(calculation->getLastError());
    for (const int lambda : {2, 4, 6}) {
        omega[lambda] = calculation->getOmega(lambda);
        formulas.omegaEd[lambda] = calculation->getOmegaED(lambda);
    }
    return true;
}

bool LanqorSpectroscopicCalculationPrivate::takeExcitedStates(LanqorRL *calculation,
                                                              int programType,
                                                              const QString &rlPath)
{
    rlCalculation = calculation;
    // Nobody hears an object under construction: the messages wait for the first calculation.
    QObject::connect(rlCalculation, &LanqorAbstractObjCalculation::newObjCalculationMessage, &owner,
                     [this](const QString &message) { earlyMessages.append(message); });
    areDistancesRead = rlCalculation->calcRL(programType);
    areStatesRead =
        rlCalculation->getSingletStatesCount() + rlCalculation->getTripletStatesCount() > 0;
    if (areStatesRead)
        selectStates(programType);
    if (!areDistancesRead) {
        owner.setLastError(rlCalculation->getLastError());
        earlyMessages.removeAll(rlCalculation->getLastError());
        return false;
    }
    if (!checkStates(rlPath))
        return false;
    areStatesChosen = true;
    formulas.minDistance = minDistanceRead() * cmPerAngstrom;
    return true;
}

/// The lowest state of each kind stands in for a number that is 0 or too large. Both numbers are
/// measured by the list of triplets, entry 0 included: hosts offer one range for both. A ZINDO
/// list starts with the ground state, so that its states begin with number 2.
void LanqorSpectroscopicCalculationPrivate::selectStates(int programType)
{
    const int states = rlCalculation->getTripletStatesCount() + 1;
    const bool isZindo = programType == LanqorInputData::ZindoOutput;
    const auto select = [states, isZindo](int &number, int lowest) {
        const int asked = number;
        if (number == 0 || number >= states)
            number = lowest;
        else if (isZindo)
            number = std::max(number, 2);
        return asked == number ? 0 : asked;
    };
    replacedTriplet = select(selectedTriplet, isZindo ? 2 : 1);
    replacedSinglet =
        select(selectedSinglet, rlCalculation->getSelExcitateState() + (isZindo ? 1 : 0));
}

bool LanqorSpectroscopicCalculationPrivate::checkStates(const QString &rlPath)
{
    const auto check = [this, &rlPath](int number, int count, const QString &kind) {
        if (number >= 1 && number <= count)
            return true;
        return owner.failWith(
            count == 0 ? tr("The file %1 gives no %2 states.").arg(rlPath, kind)
                       : tr("There is no %1 state number %2: the file %3 gives %4 of them.")
                             .arg(kind, QString::number(number), rlPath, QString::number(count)));
    };
    return check(selectedSinglet, rlCalculation->getSingletStatesCount(), tr("singlet")) &&
           check(selectedTriplet, rlCalculation->getTripletStatesCount(), tr("triplet"));
}

void LanqorSpectroscopicCalculationPrivate::emitEarlyMessages()
{
    const QStringList messages = earlyMessages;
    earlyMessages.clear();
    for (const QString &message : messages)
        owner.processStatus(message);
}

bool LanqorSpectroscopicCalculationPrivate::refuseTransfer(const QString &reason)
{
    transfer = Transfer();
    populations = {};
    quantumYield = 0.0;
    sensitisation = 0.0;
    shares = {};
    solvedScheme = nullptr;
    return owner.failWith(reason);
}

/// Runs @p request on top of the tables as they are: channels that it leaves closed keep theirs.
bool LanqorSpectroscopicCalculationPrivate::runTransfer(Transfer request)
{
    donorsBeforeShift = request.donors;
    request.donors.triplet.energy += tripletShift;
    request.donors.firstTriplet.energy += tripletShift;
    const QString reason = reasonAgainst(request, formulas);
    if (!reason.isEmpty())
        return refuseTransfer(reason);
    request.tables = transfer.tables;
    transfer = request;
    if (isZero(formulas.omegaEd))
        owner.emitProgress(
            tr(" -> (Spectroscopic Calculation) The forced electric dipole part of the "
               "intensity parameters is zero: energy transfer has no dipole-dipole "
               "part. \n"));
    transferRates::calcRates(formulas, transfer);
    return true;
}

/// Transfer rates that were set earlier are used again; the radiative rates are always new.
bool LanqorSpectroscopicCalculationPrivate::prepareRates()
{
    const transferRates::Tables &tables = transfer.tables;
    if (tables.forwardRates[0] == 0.0 && tables.exchangeForwardRates[13] == 0.0 &&
        tables.exchangeForwardRates[14] == 0.0 && !owner.calcEnergyTransferRate())
        return false;
    owner.calcArad();
    return true;
}

void LanqorSpectroscopicCalculationPrivate::announceIdleChannels(
    const rateEquations::Scheme &scheme)
{
    QStringList idle;
    for (const Channel &channel : transferChannels::channels)
        if (transfer.isOpen(channel) && !scheme.holdsSlot(channel.slot))
            idle.append(
                tr("%1 -> %2")
                    .arg(channel.donor == transferChannels::S1 ? tr("singlet") : tr("triplet"),
                         QLatin1String(stateName(channel.acceptor))));
    if (!idle.isEmpty())
        owner.emitProgress(
            tr(" -> (Spectroscopic Calculation) The populations of two triplets leave "
               "open channels out: %1. \n")
                .arg(idle.join(QStringLiteral(", "))));
    if (transfer.tables.forwardRates[5] == 0.0)
        owner.emitProgress(
            tr(" -> (Spectroscopic Calculation) The first of two triplets transfers no "
               "energy: two triplets were not considered when the rates were "
               "calculated. \n"));
    if (transfer.twoTriplets && transfer.donors.firstTriplet.number == secondTriplet)
        owner.emitProgress(
            tr(" -> (Spectroscopic Calculation) Both triplets are state number %1. \n")
                .arg(secondTriplet));
}

void LanqorSpectroscopicCalculationPrivate::solvePopulations(const rateEquations::Scheme &scheme,
                                                             double aradUsed, double anradUsed)
{
    const rateEquations::Solution solution =
        rateEquations::solve(scheme, transfer.tables, aradUsed, anradUsed, kinetics);
    for (const transferChannels::State state : scheme.states)
        populations[state] = solution.populations[state];
    quantumYield = solution.quantumYield;
    sensitisation = 100.0 * quantumYield / (100.0 * aradUsed / (anradUsed + aradUsed));
    shares = solution.shares;
    solvedScheme = &scheme;
}

LanqorSpectroscopicCalculation::LanqorSpectroscopicCalculation(QObject *parent)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorSpectroscopicCalculationPrivate>(*this))
{}

LanqorSpectroscopicCalculation::LanqorSpectroscopicCalculation(
    QObject *parent, const int &chargeModel, const int &programType, const QString &inputPath,
    const QString &omegaPath, const QString &rlPath, const int &selectedTriplet,
    const int &selectedSinglet)
    : LanqorSpectroscopicCalculation(parent)
{
    d->inputPath = inputPath;
    d->selectedTriplet = selectedTriplet;
    d->selectedSinglet = selectedSinglet;
    if (!omegaPath.isEmpty() &&
        !d->takeOmega(new LanqorOmega(this, chargeModel, inputPath, omegaPath)))
        return;
    if (!rlPath.isEmpty() && !d->takeExcitedStates(new LanqorRL(this, rlPath), programType, rlPath))
        return;
    initializeParameters();
}

LanqorSpectroscopicCalculation::LanqorSpectroscopicCalculation(
    QObject *parent, const int &chargeModel, const int &programType, LanqorInputData *geometry,
    const QString &omegaPath, LanqorInputData *excitedStates, const int &selectedTriplet,
    const int &selectedSinglet)
    : LanqorSpectroscopicCalculation(parent)
{
    d->inputPath = geometry ? geometry->getFileName() : QString();
    d->selectedTriplet = selectedTriplet;
    d->selectedSinglet = selectedSinglet;
    const bool isStructure = !omegaPath.isEmpty() && !isIntensityReport(omegaPath);
    if (isStructure && !d->takeOmega(new LanqorOmega(this, chargeModel, d->inputPath, omegaPath)))
        return;
    if (!isStructure && (geometry || !omegaPath.isEmpty()) &&
        !d->takeOmega(new LanqorOmega(this, chargeModel, geometry, omegaPath)))
        return;
    if (excitedStates && !d->takeExcitedStates(new LanqorRL(this, excitedStates), programType,
                                               excitedStates->getFileName()))
        return;
    initializeParameters();
}

LanqorSpectroscopicCalculation::~LanqorSpectroscopicCalculation() = default;

void LanqorSpectroscopicCalculation::initializeParameters()
{
    d->lifeTime = 0.0;
    d->isLifeTimeEstimated = false;
    d->arad = 0.0;
    d->anrad = 0.0;
}

void LanqorSpectroscopicCalculation::calcArad()
{
    d->emitEarlyMessages();
    if (isZero(d->omega))
        emitProgress(tr(" -> (Spectroscopic Calculation) The intensity parameters are zero: the "
                        "radiative rate is that of the magnetic dipole alone. \n"));
    d->partialRates = radiativeRates::calcRates(d->omega, d->refractiveIndex);
    const RadiativeRates &rates = d->partialRates;
    d->arad = rates.total();
    const auto percent = [this](double rate) { return 100.0 * rate / d->arad; };
    d->branchingRatios = {0.0,
                          percent(rates.md),
                          percent(rates.ed02),
                          0.0,
                          percent(rates.ed04),
                          0.0,
                          percent(rates.ed06),
                          0.0};
    if (d->lifeTime == 0.0) {
        calcAnrad(0.0);
        return;
    }
    if (d->isLifeTimeEstimated && d->arad != d->aradOfEstimate)
        emitProgress(tr(" -> (Spectroscopic Calculation) The lifetime in use, %1 ms, is an earlier "
                        "estimate, from a radiative rate of %2 s^-1 that is now %3 s^-1: set the "
                        "lifetime to 0 for a new estimate. \n")
                         .arg(QString::number(1000.0 * d->lifeTime),
                              QString::number(d->aradOfEstimate), QString::number(d->arad)));
    d->anrad = 1.0 / d->lifeTime - d->arad;
    d->quantumEfficiency = 100.0 * d->arad / (d->anrad + d->arad);
}

double LanqorSpectroscopicCalculationPrivate::estimatedAnrad(double arad)
{
    // An empirical law in R, the cube root of a multiple of the radiative rate; source of the law
    // and of its parameters not known.
    //     X = 3/4 Arad c^3 (1/c)^4 / (1e-9)^2,  R = X^(1/3),  Anrad = a exp(-b (R + R0))
    // with a value of 1/c that is 0.008 % too large: it belongs to a, b and R0.
    constexpr double inverseLightSpeed = 3.3358947250164996e-11; // s/cm
    constexpr double unit = 1e-9;                                // dimensionless
    constexpr double a = 5154.349;                               // s^-1
    constexpr double b = 0.0016612880289;
    constexpr double R0 = 122.6328568073266;
    constexpr double c3 = lanqor::lightSpeed * lanqor::lightSpeed * lanqor::lightSpeed;
    constexpr double scale = c3 * inverseLightSpeed * inverseLightSpeed * inverseLightSpeed *
                             inverseLightSpeed / (unit * unit);
    const double X = scale * arad * 3.0 * 0.25;
    const double R = std::pow(X, 0.333333333333333);
    return a * std::exp(-b * (R + R0));
}

void LanqorSpectroscopicCalculation::calcAnrad(const double &arad)
{
    if (arad != 0.0)
        d->arad = arad;
    d->anrad = d->estimatedAnrad(d->arad);
    d->quantumEfficiency = 100.0 * d->arad / (d->anrad + d->arad);
    d->lifeTime = 1.0 / (d->arad + d->anrad);
    d->isLifeTimeEstimated = true;
    d->aradOfEstimate = d->arad;
}

bool LanqorSpectroscopicCalculation::calcEnergyTransferRate()
{
    d->emitEarlyMessages();
    const bool isGiven = d->givenSinglet.energy != 0.0 || d->givenTriplet.energy != 0.0;
    if (!d->areStatesRead && !isGiven)
        return d->refuseTransfer(tr("Energy transfer needs donor states of the ligand: none were "
                                    "taken from the output of an excited-state calculation."));
    const bool isSecondGiven = d->givenTriplet.energy != 0.0 && d->givenTriplet.rl != 0.0;
    if (d->considerTwoTriplets && d->areStatesChosen && !isSecondGiven &&
        d->rlCalculation->getTripletStatesCount() < d->secondTriplet)
        return d->refuseTransfer(
            tr("There is no triplet state number %1 to be the second of two "
               "triplets: the excited-state output gives %2 of them.")
                .arg(QString::number(d->secondTriplet),
                     QString::number(d->rlCalculation->getTripletStatesCount())));
    Transfer request;
    request.openChannels = d->energyTransferChannels;
    request.twoTriplets = d->considerTwoTriplets;
    request.donors = d->donorsOfStates();
    return d->runTransfer(request);
}

bool LanqorSpectroscopicCalculation::calcEnergyTransferRate(const double &rlSinglet,
                                                            const double &rlTriplet,
                                                            const double &singletEnergy,
                                                            const double &tripletEnergy)
{
    Transfer request;
    request.has5G6And5L6 = false;
    request.donors.singlet = {0, singletEnergy, rlSinglet, {}};
    request.donors.triplet = {0, tripletEnergy, rlTriplet, {}};
    return d->runTransfer(request);
}

bool LanqorSpectroscopicCalculation::calcQuantumYield(const double &rlSinglet,
                                                      const double &rlTriplet,
                                                      const double &singletEnergy,
                                                      const double &tripletEnergy,
                                                      const double &arad, const double &anrad)
{
    d->transfer.tables = {};
    if (!calcEnergyTransferRate(rlSinglet, rlTriplet, singletEnergy, tripletEnergy))
        return false;
    d->solvePopulations(rateEquations::sixStates(), arad, anrad);
    return true;
}

bool LanqorSpectroscopicCalculation::calcQuantumYieldNEW()
{
    if (!d->prepareRates())
        return false;
    d->solvePopulations(rateEquations::eightStates(), d->arad, d->anrad);
    return true;
}

bool LanqorSpectroscopicCalculation::calcQuantumYieldTwoTriplets()
{
    if (!d->prepareRates())
        return false;
    d->announceIdleChannels(rateEquations::twoTriplets());
    d->solvePopulations(rateEquations::twoTriplets(), d->arad, d->anrad);
    return true;
}
