#include "LanqorSpectroscopicCalculation.h"

#include "intensity/radiativeRates_p.h"
#include "photophysics/rateEquations_p.h"
#include "photophysics/spectroscopicReport_p.h"
#include "photophysics/transferRates_p.h"

#include <LanqorEngine/LanqorOmega.h>

#include <QStringList>

#include <algorithm>
#include <cmath>

using lanqor::cmPerAngstrom;
using lanqor::omegaUnitCm2;
using transferChannels::Channel;
using transferRates::Donor;
using transferRates::Transfer;

namespace {

/// Number in its list of the second of two triplets.
constexpr int secondTriplet = 2;

/// Entry @p index; 0 outside the table.
template <std::size_t size> double entry(const std::array<double, size> &table, int index)
{
    return index >= 0 && index < static_cast<int>(size) ? table[static_cast<std::size_t>(index)]
                                                        : 0.0;
}

bool isZero(const ByRank &parameters)
{
    return std::all_of(parameters.values.begin(), parameters.values.end(),
                       [](double x) { return x == 0.0; });
}

/// True when both the energy and a distance that a rate can be had from are known.
bool isUsable(const Donor &donor)
{
    return std::isfinite(donor.energy) && std::isfinite(donor.distance) && donor.distance > 0.0;
}

} // namespace

LanqorSpectroscopicCalculation::LanqorSpectroscopicCalculation(QObject *parent)
    : LanqorAbstractObjCalculation(parent)
    , formulas(std::make_unique<transferRates::Formulas>())
    , transfer(std::make_unique<Transfer>())
{}

LanqorSpectroscopicCalculation::LanqorSpectroscopicCalculation(
    QObject *parent, const int &chargeModel, const int &programType, const QString &inputPath,
    const QString &omegaPath, const QString &rlPath, const int &selectedTriplet,
    const int &selectedSinglet)
    : LanqorSpectroscopicCalculation(parent)
{
    this->selectedTriplet = selectedTriplet;
    this->selectedSinglet = selectedSinglet;
    if (!omegaPath.isEmpty() && !readOmega(chargeModel, inputPath, omegaPath))
        return;
    if (!rlPath.isEmpty() && !readExcitedStates(programType, rlPath))
        return;
    initializeParameters();
}

LanqorSpectroscopicCalculation::~LanqorSpectroscopicCalculation() = default;

void LanqorSpectroscopicCalculation::initializeParameters()
{
    lifeTime = 0.0;
    arad = 0.0;
    anrad = 0.0;
}

bool LanqorSpectroscopicCalculation::readOmega(int chargeModel, const QString &inputPath,
                                               const QString &omegaPath)
{
    omegaCalculation = new LanqorOmega(this, chargeModel, inputPath, omegaPath);
    if (!omegaCalculation->getLastError().isEmpty())
        return failWith(omegaCalculation->getLastError());
    for (const int lambda : {2, 4, 6}) {
        omega[lambda] = omegaCalculation->getOmega(lambda);
        formulas->omegaEd[lambda] = omegaCalculation->getOmegaED(lambda);
    }
    return true;
}

bool LanqorSpectroscopicCalculation::readExcitedStates(int programType, const QString &rlPath)
{
    rlCalculation = new LanqorRL(this, rlPath);
    // Nobody hears an object under construction: the messages wait for the first calculation.
    connect(rlCalculation, &LanqorAbstractObjCalculation::newObjCalculationMessage, this,
            [this](const QString &message) { earlyMessages.append(message); });
    if (!rlCalculation->calcRL(programType)) {
        setLastError(rlCalculation->getLastError());
        return false;
    }
    selectStates(programType);
    if (!checkStates(rlPath))
        return false;
    formulas->minDistance = rlCalculation->getMinDistanceLnLigand() * cmPerAngstrom;
    areStatesChosen = true;
    return true;
}

/// The lowest state of each kind stands in for a number that is 0 or too large. Both numbers are
/// measured by the list of triplets, entry 0 included: hosts offer one range for both. A ZINDO
/// list starts with the ground state, so that its states begin with number 2.
void LanqorSpectroscopicCalculation::selectStates(int programType)
{
    const int states = rlCalculation->getStatesNumber();
    const bool isZindo = programType == LanqorInputData::ZindoOutput;
    const auto select = [states, isZindo](int number, int lowest) {
        if (number == 0 || number >= states)
            return lowest;
        return isZindo ? std::max(number, 2) : number;
    };
    selectedTriplet = select(selectedTriplet, isZindo ? 2 : 1);
    selectedSinglet =
        select(selectedSinglet, rlCalculation->getSelExcitateState() + (isZindo ? 1 : 0));
}

bool LanqorSpectroscopicCalculation::checkStates(const QString &rlPath)
{
    const auto check = [this, &rlPath](int number, int count, const QString &kind) {
        if (number >= 1 && number <= count)
            return true;
        return failWith(count == 0
                            ? tr("The file %1 gives no %2 states.").arg(rlPath, kind)
                            : tr("There is no %1 state number %2: the file %3 gives %4 of them.")
                                  .arg(kind)
                                  .arg(number)
                                  .arg(rlPath)
                                  .arg(count));
    };
    return check(selectedSinglet, rlCalculation->getSingletStatesCount(), tr("singlet")) &&
           check(selectedTriplet, rlCalculation->getTripletStatesCount(), tr("triplet"));
}

void LanqorSpectroscopicCalculation::emitEarlyMessages()
{
    const QStringList messages = earlyMessages;
    earlyMessages.clear();
    for (const QString &message : messages)
        processStatus(message);
}

void LanqorSpectroscopicCalculation::setOmegaValues(const double &omega2, const double &omega4,
                                                    const double &omega6)
{
    omega = {
        0.0, 0.0, omega2 * omegaUnitCm2, 0.0, omega4 * omegaUnitCm2, 0.0, omega6 * omegaUnitCm2};
}

void LanqorSpectroscopicCalculation::setOmegaEdValues(const double &omega2, const double &omega4,
                                                      const double &omega6)
{
    formulas->omegaEd = {
        0.0, 0.0, omega2 * omegaUnitCm2, 0.0, omega4 * omegaUnitCm2, 0.0, omega6 * omegaUnitCm2};
}

void LanqorSpectroscopicCalculation::setNOverlapIntegral(const double &exponent)
{
    formulas->nOverlapIntegral = exponent;
}

void LanqorSpectroscopicCalculation::setETModel(const int &model)
{
    formulas->etModel = model;
}

void LanqorSpectroscopicCalculation::calcArad()
{
    emitEarlyMessages();
    if (isZero(omega))
        emitProgress(tr(" -> (Spectroscopic Calculation) The intensity parameters are zero: the "
                        "radiative rate is that of the magnetic dipole alone. \n"));
    const radiativeRates::Rates rates = radiativeRates::calcRates(omega, refractiveIndex);
    aradMD = rates.md;
    arad02 = rates.ed02;
    arad04 = rates.ed04;
    arad06 = rates.ed06;
    arad = rates.total();
    const auto percent = [this](double rate) { return 100.0 * rate / arad; };
    branchingRatios = {
        0.0, percent(aradMD), percent(arad02), 0.0, percent(arad04), 0.0, percent(arad06), 0.0};
    if (lifeTime == 0.0) {
        calcAnrad(0.0);
        return;
    }
    anrad = 1.0 / lifeTime - arad;
    quantumEfficiency = 100.0 * arad / (anrad + arad);
}

void LanqorSpectroscopicCalculation::calcAnrad(const double &arad)
{
    if (arad != 0.0)
        this->arad = arad;
    // An empirical law in R, the cube root of a multiple of the radiative rate; 1/c has the
    // digits that belong to its parameters.
    constexpr double inverseLightSpeed = 3.3358947250164996e-11; // s/cm
    constexpr double unit = 1e-9;
    constexpr double c3 = lanqor::lightSpeed * lanqor::lightSpeed * lanqor::lightSpeed;
    constexpr double scale = c3 * inverseLightSpeed * inverseLightSpeed * inverseLightSpeed *
                             inverseLightSpeed / (unit * unit);
    const double X = scale * this->arad * 3.0 * 0.25;
    const double R = std::pow(X, 0.333333333333333);
    anrad = 5154.349 * std::exp(-0.0016612880289 * (R + 122.6328568073266));
    quantumEfficiency = 100.0 * this->arad / (anrad + this->arad);
    lifeTime = 1.0 / (this->arad + anrad);
}

bool LanqorSpectroscopicCalculation::refuseTransfer(const QString &reason)
{
    *transfer = Transfer();
    populations = {};
    quantumYield = 0.0;
    solvedScheme = nullptr;
    return failWith(reason);
}

bool LanqorSpectroscopicCalculation::calcEnergyTransferRate()
{
    emitEarlyMessages();
    if (!areStatesChosen)
        return refuseTransfer(tr("Energy transfer needs donor states of the ligand: none were "
                                 "taken from the output of an excited-state calculation."));
    if (considerTwoTriplets && rlCalculation->getTripletStatesCount() < secondTriplet)
        return refuseTransfer(tr("There is no triplet state number %1 to be the second of two "
                                 "triplets: the excited-state output gives %2 of them.")
                                  .arg(secondTriplet)
                                  .arg(rlCalculation->getTripletStatesCount()));
    const auto triplet = [this](int number) {
        return Donor{number, rlCalculation->getTripletEnergy(number),
                     rlCalculation->getTripletRL(number) * cmPerAngstrom};
    };
    Transfer request;
    request.openChannels = energyTransferChannels;
    request.twoTriplets = considerTwoTriplets;
    request.donors.singlet = {selectedSinglet, rlCalculation->getSingletEnergy(selectedSinglet),
                              rlCalculation->getSingletRL(selectedSinglet) * cmPerAngstrom};
    request.donors.triplet = triplet(considerTwoTriplets ? secondTriplet : selectedTriplet);
    if (considerTwoTriplets)
        request.donors.firstTriplet = triplet(selectedTriplet);
    return runTransfer(request);
}

bool LanqorSpectroscopicCalculation::calcEnergyTransferRate(const double &rlSinglet,
                                                            const double &rlTriplet,
                                                            const double &singletEnergy,
                                                            const double &tripletEnergy)
{
    Transfer request;
    request.has5G6And5L6 = false;
    request.donors.singlet = {0, singletEnergy, rlSinglet * cmPerAngstrom};
    request.donors.triplet = {0, tripletEnergy, rlTriplet * cmPerAngstrom};
    return runTransfer(request);
}

/// Runs @p request on top of the tables as they are: channels that it leaves closed keep theirs.
bool LanqorSpectroscopicCalculation::runTransfer(const Transfer &request)
{
    for (const Channel &channel : transferChannels::channels) {
        if (!request.isOpen(channel))
            continue;
        const Donor &donor = request.donors.of(channel.donor);
        if (!isUsable(donor)) {
            const QString kind =
                channel.donor == transferChannels::S1 ? tr("singlet") : tr("triplet");
            const QString name =
                donor.number > 0 ? tr("%1 state number %2").arg(kind).arg(donor.number) : kind;
            return refuseTransfer(tr("The %1 cannot be a donor: its energy is %2 cm^-1 and its "
                                     "distance RL from the ion is %3 Angstrom.")
                                      .arg(name)
                                      .arg(donor.energy)
                                      .arg(donor.distance / cmPerAngstrom));
        }
        if (channel.mechanism == transferChannels::Mechanism::Exchange &&
            formulas->needsMinDistance() && !(formulas->minDistance > 0.0))
            return refuseTransfer(tr("Energy-transfer models 0 and 1 need the shortest ion-ligand "
                                     "distance, which is missing: no output of an excited-state "
                                     "calculation has been read. Model 2 works without it."));
    }
    const transferRates::Tables kept = transfer->tables;
    *transfer = request;
    transfer->tables = kept;
    if (isZero(formulas->omegaEd))
        emitProgress(tr(" -> (Spectroscopic Calculation) The forced electric dipole part of the "
                        "intensity parameters is zero: energy transfer has no dipole-dipole "
                        "part. \n"));
    transferRates::calcRates(*formulas, *transfer);
    return true;
}

bool LanqorSpectroscopicCalculation::calcQuantumYield(const double &rlSinglet,
                                                      const double &rlTriplet,
                                                      const double &singletEnergy,
                                                      const double &tripletEnergy,
                                                      const double &arad, const double &anrad)
{
    transfer->tables = {};
    if (!calcEnergyTransferRate(rlSinglet, rlTriplet, singletEnergy, tripletEnergy))
        return false;
    solvePopulations(rateEquations::sixStates(), arad, anrad);
    return true;
}

bool LanqorSpectroscopicCalculation::calcQuantumYieldNEW()
{
    if (!prepareRates())
        return false;
    solvePopulations(rateEquations::eightStates(), arad, anrad);
    return true;
}

bool LanqorSpectroscopicCalculation::calcQuantumYieldTwoTriplets()
{
    if (!prepareRates())
        return false;
    announceIdleChannels(rateEquations::twoTriplets());
    solvePopulations(rateEquations::twoTriplets(), arad, anrad);
    return true;
}

/// Transfer rates that were set earlier are used again; the radiative rates are always new.
bool LanqorSpectroscopicCalculation::prepareRates()
{
    const transferRates::Tables &tables = transfer->tables;
    if (tables.forwardRates[0] == 0.0 && tables.exchangeForwardRates[13] == 0.0 &&
        tables.exchangeForwardRates[14] == 0.0 && !calcEnergyTransferRate())
        return false;
    calcArad();
    return true;
}

void LanqorSpectroscopicCalculation::announceIdleChannels(const rateEquations::Scheme &scheme)
{
    QStringList idle;
    for (const Channel &channel : transferChannels::channels)
        if (transfer->isOpen(channel) && !scheme.holdsSlot(channel.slot))
            idle.append(
                tr("%1 -> %2")
                    .arg(channel.donor == transferChannels::S1 ? tr("singlet") : tr("triplet"),
                         QLatin1String(levelName(channel.acceptor))));
    if (!idle.isEmpty())
        emitProgress(tr(" -> (Spectroscopic Calculation) The populations of two triplets leave "
                        "open channels out: %1. \n")
                         .arg(idle.join(QStringLiteral(", "))));
    if (transfer->tables.forwardRates[5] == 0.0)
        emitProgress(tr(" -> (Spectroscopic Calculation) The first of two triplets transfers no "
                        "energy: two triplets were not considered when the rates were "
                        "calculated. \n"));
    if (transfer->twoTriplets && transfer->donors.firstTriplet.number == secondTriplet)
        emitProgress(tr(" -> (Spectroscopic Calculation) Both triplets are state number %1. \n")
                         .arg(secondTriplet));
}

void LanqorSpectroscopicCalculation::solvePopulations(const rateEquations::Scheme &scheme,
                                                      double aradUsed, double anradUsed)
{
    const Eigen::VectorXd x = rateEquations::steadyState(
        rateEquations::rateMatrix(scheme, transfer->tables, aradUsed + anradUsed));
    for (std::size_t i = 0; i < scheme.states.size(); ++i)
        populations[scheme.states[i]] = x[static_cast<Eigen::Index>(i)];
    quantumYield = 100.0 * (populations[transferChannels::Level5D0] * aradUsed) /
                   (populations[transferChannels::S0] * rateEquations::excitationRate);
    solvedScheme = &scheme;
}

double LanqorSpectroscopicCalculation::getOmega(const int &lambda) const
{
    return entry(omega.values, lambda);
}

double LanqorSpectroscopicCalculation::getOmegaEd(const int &lambda) const
{
    return entry(formulas->omegaEd.values, lambda);
}

double LanqorSpectroscopicCalculation::getBranchingRatio(const int &J) const
{
    return entry(branchingRatios, J);
}

double LanqorSpectroscopicCalculation::getPopulation(const int &i) const
{
    return entry(populations, i);
}

double LanqorSpectroscopicCalculation::getForwardRate(const int &k) const
{
    return entry(transfer->tables.forwardRates, k);
}

double LanqorSpectroscopicCalculation::getBackwardRate(const int &k) const
{
    return entry(transfer->tables.backwardRates, k);
}

double LanqorSpectroscopicCalculation::getExchangeForwardRate(const int &k) const
{
    return entry(transfer->tables.exchangeForwardRates, k);
}

double LanqorSpectroscopicCalculation::getExchangeBackwardRate(const int &k) const
{
    return entry(transfer->tables.exchangeBackwardRates, k);
}

double LanqorSpectroscopicCalculation::getEnergyMismatch(const int &k) const
{
    return entry(transfer->tables.energyMismatch, k);
}

spectroscopicReport::Contents
LanqorSpectroscopicCalculation::collectResults(const QString &path) const
{
    spectroscopicReport::Contents contents;
    contents.inputPath = path;
    contents.omega = omega;
    contents.omegaEd = formulas->omegaEd;
    contents.transfer = *transfer;
    contents.bandHalfWidth = formulas->bandHalfWidth;
    contents.refractiveIndex = refractiveIndex;
    contents.arad = arad;
    contents.branchingRatios = branchingRatios;
    contents.lifeTime = lifeTime;
    contents.anrad = anrad;
    contents.quantumEfficiency = quantumEfficiency;
    contents.scheme = solvedScheme;
    contents.populations = populations;
    contents.quantumYield = quantumYield;
    return contents;
}

QString LanqorSpectroscopicCalculation::createOutFileET(const QString &path)
{
    return spectroscopicReport::transferReport(collectResults(path), specPrintingOptions);
}

QString LanqorSpectroscopicCalculation::createOutFile(const QString &path)
{
    return spectroscopicReport::populationReport(collectResults(path), specPrintingOptions);
}
