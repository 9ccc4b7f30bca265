#include "LanqorParametricQDC.h"

#include "core/chargeFactorBounds_p.h"
#include "core/physicalConstants_p.h"
#include "fitting/intensityFit_p.h"
#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <algorithm>
#include <cmath>
#include <limits>

using intensityFit::infeasibleResponse;

namespace {

constexpr int parameterNumber = 3;
/// Trials after which the restriction of D/C is lifted.
constexpr int restrictedTrials = 100000;
/// An improvement of the best response below this one, (1e-20 cm^2)^2, lifts it too.
constexpr double smallImprovement = 1.0e-5;

} // namespace

LanqorParametricQDC::LanqorParametricQDC(QObject *parent, const QString &mopacOutputFile,
                                         const int &value)
    : LanqorAbstractParametric(parent)
    , fileNameMopacOutputFile(mopacOutputFile)
    , chargeModel(value)
{
    requiredCitations = intensityFit::citations();
    createOmega();
}

LanqorParametricQDC::~LanqorParametricQDC() = default;

void LanqorParametricQDC::createOmega()
{
    omega.reset();
    atomLabels.clear();
    isSetupChecked = false;
    LanqorInputData structure(nullptr, fileNameMopacOutputFile);
    if (!structure.readMopacOutFile(false)) {
        setLastError(structure.getLastError());
        return;
    }
    atomLabels.append(QString());
    for (const Coord &atom : structure.getCoord())
        atomLabels.append(atom.label);
    omega = std::make_unique<LanqorOmega>(nullptr, chargeModel, fileNameMopacOutputFile, QString());
    setLastError(omega->getLastError());
}

void LanqorParametricQDC::setRestrictionValue(const int &value)
{
    restrictionValue = value;
}

void LanqorParametricQDC::setSuperDeslocalizability(LanqorIndicesCalculation *calculation)
{
    indices = calculation;
    isSetupChecked = false;
}

void LanqorParametricQDC::setLigandAtomsByLigandVector(const QStringList &ligands)
{
    ligandAtoms = ligands;
}

void LanqorParametricQDC::setOmegaExp(const double &omega2, const double &omega4)
{
    omegaExp[0] = omega2;
    omegaExp[1] = omega4;
}

void LanqorParametricQDC::setRefractiveIndex(const double &index)
{
    refractiveIndex = index;
}

void LanqorParametricQDC::setCoordNumber(const int &number)
{
    coordNumber = number;
    isSetupChecked = false;
}

void LanqorParametricQDC::setFileNameOmg(const QString &fileName)
{
    fileNameOmg = fileName;
}

void LanqorParametricQDC::setFileNameMopacOutputFile(const QString &fileName)
{
    if (fileName == fileNameMopacOutputFile)
        return;
    fileNameMopacOutputFile = fileName;
    createOmega();
}

void LanqorParametricQDC::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    omegaPrintingOptions = options;
}

bool LanqorParametricQDC::checkSetup()
{
    isSetupChecked = true;
    isSetupValid = false;
    checkedCount = -1;
    if (!omega)
        return failWith(getLastError());
    const int entries = coordNumber + 2;
    if (coordNumber < 1 || entries > atomLabels.size())
        return failWith(tr("The coordination number is %1, which does not fit the geometry of %2.")
                            .arg(coordNumber)
                            .arg(fileNameMopacOutputFile));
    if (!indices || indices->getAtomicCharge().size() < entries ||
        indices->getSuperDeslocalizability().size() < entries)
        return failWith(tr("The fit of Q, D and C needs the reactivity indices of the %1 "
                           "coordinated atoms.")
                            .arg(coordNumber));
    bounds.assign(2, ChargeFactorBounds());
    for (int atom = 2; atom < entries; ++atom) {
        // An element in no class keeps the bounds of the atom before it.
        bounds.push_back(bounds.back());
        updateQdcFitBounds(atomLabels.at(atom), bounds.back());
    }
    if (!intensityFit::calcFirst(*omega, coordNumber, g, alpha))
        return failWith(omega->getLastError());
    isSetupValid = true;
    return true;
}

/// Checks the setup once, and the number of parameters whenever it changes.
bool LanqorParametricQDC::isReadyFor(int n)
{
    if (!isSetupChecked)
        checkSetup();
    if (isSetupValid && n != checkedCount) {
        checkedCount = n;
        if (n != parameterNumber)
            failWith(tr("The fit has the three parameters Q, D and C, not %1.").arg(n));
    }
    return isSetupValid && n == parameterNumber && indices;
}

bool LanqorParametricQDC::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!isReadyFor(n))
        return true;
    setChargeFactorsAndAlphas({x[0], x[1], x[2]});
    const bool isFeasible = checkParameters();
    if (isFeasible) {
        intensityFit::setChargeFactorsAndAlphas(*omega, g, alpha);
        omega->calcOmega();
        responseFunction = intensityFit::squaredDeviation(omegaExp[0], omega->getOmega(2)) +
                           intensityFit::squaredDeviation(omegaExp[1], omega->getOmega(4)) +
                           intensityFit::squaredDeviation(0.0, omega->getOmega(6));
    }
    if (pointNumber > restrictedTrials)
        restrictionActive = false;
    if (responseFunction < bestResponse) {
        if (std::abs(bestResponse - responseFunction) < smallImprovement)
            restrictionActive = false;
        bestParameters = {x[0], x[1], x[2]};
        bestResponse = responseFunction;
        if (isFeasible) {
            isFeasibleFound = true;
            bestOmega = intensityFit::omegaOf(*omega);
        }
    }
    return true;
}

void LanqorParametricQDC::setChargeFactorsAndAlphas(const ParametersQDC &trial)
{
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const double S = indices->getSuperDeslocalizability(atom);
        g[atom] = indices->getAtomicCharge(atom) * trial.Q;
        alpha[atom] =
            S * trial.D * lanqor::cm3PerCubicAngstrom + trial.C * lanqor::cm3PerCubicAngstrom;
    }
}

bool LanqorParametricQDC::checkParameters() const
{
    const double D = parameters[1];
    const double C = parameters[2];
    if (C < 0.0 || D < 0.0 || (restrictionActive && D <= restrictionValue * C))
        return false;
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        if (!isWithinBounds(g.at(atom), alpha.at(atom), bounds[static_cast<std::size_t>(atom)],
                            maximumAlphaQdcFit))
            return false;
    }
    return true;
}

double LanqorParametricQDC::getBestOmega(const int &lambda) const
{
    return intensityFit::valueOf(bestOmega, lambda);
}

QVector<double> LanqorParametricQDC::makeStartingVector(const int &number)
{
    if (!isSetupChecked)
        checkSetup();
    if (!isSetupValid || !indices)
        return QVector<double>();
    const auto place = [number](int index, double minimum, double maximum) {
        return minimum + intensityFit::startingFraction(number, index) * (maximum - minimum);
    };
    double minimumQ = 0.0;
    double maximumQ = std::numeric_limits<double>::max();
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const double q = indices->getAtomicCharge(atom);
        const ChargeFactorBounds &own = bounds[static_cast<std::size_t>(atom)];
        if (q > 0.0) {
            minimumQ = std::max(minimumQ, own.minimum / q);
            maximumQ = std::min(maximumQ, own.maximum / q);
        }
    }
    const double D = place(1, 0.0, maximumAlphaQdcFit);
    double minimumC = 0.0;
    double maximumC = std::numeric_limits<double>::max();
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const double S = indices->getSuperDeslocalizability(atom);
        minimumC = std::max(minimumC, minimumAlpha - D * S);
        maximumC = std::min(maximumC, maximumAlphaQdcFit - D * S);
    }
    // Where the restriction leaves nothing, the start waits until it is lifted.
    if (restrictionValue > 0 && D / restrictionValue > minimumC)
        maximumC = std::min(maximumC, D / restrictionValue);
    return {place(0, minimumQ, maximumQ), D, place(2, minimumC, maximumC)};
}

void LanqorParametricQDC::endOfParametrization()
{
    report.clear();
    if (!isFeasibleFound || !indices) {
        failWith(
            isSetupChecked && !isSetupValid
                ? getLastError()
                : tr("No trial of the fit was within the bounds of Q, D and C and of the charge "
                     "factors and polarizabilities they give: there is nothing to report."));
        return;
    }
    LanqorOmega best(nullptr, chargeModel, fileNameMopacOutputFile, QString());
    intensityFit::relayMessages(best, *this);
    setChargeFactorsAndAlphas(bestParameters);
    best.setRefractiveIndex(refractiveIndex);
    best.setCoordNumber(coordNumber);
    intensityFit::setChargeFactorsAndAlphas(best, g, alpha);
    best.setOmegaPrintingOptions(omegaPrintingOptions);
    best.setParametersQDC(bestParameters.Q, bestParameters.D, bestParameters.C);
    best.setAtomicCharges(indices->getAtomicCharge());
    best.setSuperDeslocalizability(indices->getSuperDeslocalizability());
    best.setLigandAtomsByLigandVector(ligandAtoms);
    best.setRequiredCitations(citations::required(best.getMopacCitation(), requiredCitations));
    writeReport(best);
}

/// The QDC mode needs force constants, which enter none of its expressions: without them, Omega
/// is calculated from g and alpha instead, and is the same.
void LanqorParametricQDC::writeReport(LanqorOmega &best)
{
    bool isCalculated = best.calcOmega();
    if (!isCalculated) {
        best.setAtomicCharges(QVector<double>());
        intensityFit::setChargeFactorsAndAlphas(best, g, alpha);
        isCalculated = best.calcOmega();
        best.setAtomicCharges(indices->getAtomicCharge());
        emitProgress(tr(" -> (QDC fit) Without force constants, Omega was calculated from the "
                        "charge factors and polarizabilities that Q, D and C give.\n"));
    }
    if (isCalculated)
        report = best.createOutFile(fileNameOmg);
}
