#include "LanqorParametricQDC.h"

#include "core/physicalConstants_p.h"
#include "fitting/intensityFit_p.h"

#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <limits>

using intensityFit::infeasibleResponse;

namespace {

constexpr int parameterNumber = 3;
/// Trials after which the restriction of D/C is lifted; source not known.
constexpr int restrictedTrials = 100000;
/// An improvement of the best response below this one, (1e-20 cm^2)^2, lifts it too; source not
/// known.
constexpr double smallImprovement = 1.0e-5;

} // namespace

class LanqorParametricQDCPrivate
{
public:
    explicit LanqorParametricQDCPrivate(int chargeModel)
        : problem(chargeModel, {updateQdcFitBounds, maximumAlphaQdcFit})
    {}

    QString setupError();
    void setTrial(const ParametersQDC &trial);
    bool checkParameters(const ParametersQDC &trial) const;
    QPair<double, double> rangeOfQ() const;

    intensityFit::Problem problem;
    QStringList ligandAtoms;
    bool restrictionActive = true;
    int restrictionValue = 1;
    QPointer<LanqorIndicesCalculation> indices;
    ParametersQDC bestParameters;
    double weights[2] = {1.0, 1.0}; // of Omega(2) and Omega(4)
};

LanqorParametricQDC::LanqorParametricQDC(QObject *parent, const QString &mopacOutputFile,
                                         const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricQDCPrivate>(value))
{
    requiredCitations = intensityFit::citations();
    setLastError(d->problem.readGeometry(mopacOutputFile));
}

LanqorParametricQDC::LanqorParametricQDC(QObject *parent, LanqorInputData *geometry,
                                         const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricQDCPrivate>(value))
{
    requiredCitations = intensityFit::citations();
    setLastError(d->problem.takeGeometry(geometry));
}

LanqorParametricQDC::~LanqorParametricQDC() = default;

void LanqorParametricQDC::setRestrictionValue(const int &value)
{
    d->restrictionValue = value;
}

void LanqorParametricQDC::setSuperDeslocalizability(LanqorIndicesCalculation *calculation)
{
    d->indices = calculation;
    d->problem.forgetSetup();
}

void LanqorParametricQDC::setLigandAtomsByLigandVector(const QStringList &ligands)
{
    d->ligandAtoms = ligands;
}

void LanqorParametricQDC::setOmegaExp(const double &omega2, const double &omega4)
{
    d->problem.omegaExp2 = omega2;
    d->problem.omegaExp4 = omega4;
}

void LanqorParametricQDC::setRefractiveIndex(const double &index)
{
    d->problem.refractiveIndex = index;
}

void LanqorParametricQDC::setCoordNumber(const int &number)
{
    d->problem.setCoordNumber(number);
}

void LanqorParametricQDC::setFileNameOmg(const QString &fileName)
{
    d->problem.reportFile = fileName;
}

void LanqorParametricQDC::setFileNameMopacOutputFile(const QString &fileName)
{
    if (fileName != d->problem.getMopacOutput())
        setLastError(d->problem.readGeometry(fileName));
}

void LanqorParametricQDC::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    d->problem.printingOptions = options;
}

bool LanqorParametricQDC::checkSetup()
{
    const QString error = d->setupError();
    d->problem.keepSetup(error);
    return error.isEmpty() || failWith(error);
}

QString LanqorParametricQDCPrivate::setupError()
{
    QString error = problem.coordinationError();
    if (!error.isEmpty())
        return error;
    const int entries = problem.getCoordNumber() + 2;
    if (!indices || indices->getAtomicCharge().size() < entries ||
        indices->getSuperDeslocalizability().size() < entries)
        return LanqorParametricQDC::tr("The fit of Q, D and C needs the reactivity indices of the "
                                       "%1 coordinated atoms.")
            .arg(problem.getCoordNumber());
    return problem.prepareTrials();
}

bool LanqorParametricQDC::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!d->problem.isSetupChecked())
        checkSetup();
    if (!d->problem.isSetupValid())
        return true;
    if (d->problem.isNewCount(n) && n != parameterNumber)
        failWith(tr("The fit has the three parameters Q, D and C, not %1.").arg(n));
    if (n != parameterNumber || !d->indices)
        return true;
    const ParametersQDC trial = {x[0], x[1], x[2]};
    d->setTrial(trial);
    const bool isFeasible = d->checkParameters(trial);
    if (isFeasible)
        responseFunction = d->problem.calcMisfit(d->weights[0], d->weights[1], 1.0);
    if (pointNumber > restrictedTrials)
        d->restrictionActive = false;
    if (responseFunction < bestResponse) {
        if (std::abs(bestResponse - responseFunction) < smallImprovement)
            d->restrictionActive = false;
        d->bestParameters = trial;
        bestResponse = responseFunction;
        if (isFeasible)
            d->problem.keepBest();
    }
    return true;
}

void LanqorParametricQDCPrivate::setTrial(const ParametersQDC &trial)
{
    for (int atom = 2; atom <= problem.getCoordNumber() + 1; ++atom) {
        const double S = indices->getSuperDeslocalizability(atom);
        problem.setTrial(atom, indices->getAtomicCharge(atom) * trial.Q,
                         S * trial.D * lanqor::cm3PerCubicAngstrom +
                             trial.C * lanqor::cm3PerCubicAngstrom);
    }
}

bool LanqorParametricQDCPrivate::checkParameters(const ParametersQDC &trial) const
{
    if (trial.C < 0.0 || trial.D < 0.0 ||
        (restrictionActive && trial.D <= restrictionValue * trial.C))
        return false;
    return problem.isTrialWithinBounds();
}

bool LanqorParametricQDC::makeDonors(const QVector<double> &vector, QVector<double> &g,
                                     QVector<double> &alpha) const
{
    g.clear();
    alpha.clear();
    if (!d->problem.isSetupValid() || !d->indices || vector.size() != parameterNumber)
        return false;
    g.fill(0.0, d->problem.getCoordNumber() + 2);
    alpha.fill(0.0, g.size());
    for (int atom = 2; atom < g.size(); ++atom) {
        g[atom] = d->indices->getAtomicCharge(atom) * vector.at(0);
        alpha[atom] = lanqor::cm3PerCubicAngstrom *
                      (d->indices->getSuperDeslocalizability(atom) * vector.at(1) + vector.at(2));
    }
    return vector.at(1) >= 0.0 && vector.at(2) >= 0.0 && d->problem.areWithinBounds(g, alpha);
}

ParametersQDC LanqorParametricQDC::getParametersQDC() const
{
    return d->bestParameters;
}

bool LanqorParametricQDC::hasFeasiblePoint() const
{
    return d->problem.hasBest();
}

double LanqorParametricQDC::getBestOmega(const int &lambda) const
{
    return d->problem.getBestOmega(lambda);
}

/// The values of Q with which g of every atom is in its bounds.
QPair<double, double> LanqorParametricQDCPrivate::rangeOfQ() const
{
    double minimum = 0.0;
    double maximum = std::numeric_limits<double>::max();
    for (int atom = 2; atom <= problem.getCoordNumber() + 1; ++atom) {
        const double q = indices->getAtomicCharge(atom);
        const ChargeFactorBounds own = problem.boundsOf(atom);
        if (q > 0.0) {
            minimum = std::max(minimum, own.minimum / q);
            maximum = std::min(maximum, own.maximum / q);
        }
    }
    return {minimum, maximum};
}

bool LanqorParametricQDC::isSetUp()
{
    if (!d->problem.isSetupChecked())
        checkSetup();
    return d->problem.isSetupValid() && d->indices;
}

double LanqorParametricQDC::getSmallestIndex()
{
    if (!isSetUp())
        return 0.0;
    double smallest = std::numeric_limits<double>::max();
    for (int atom = 2; atom <= d->problem.getCoordNumber() + 1; ++atom)
        smallest = std::min(smallest, d->indices->getSuperDeslocalizability(atom));
    return smallest;
}

/// alpha = D S + C of the atoms with the smallest and the largest S is at most 15 A^3 and at least
/// 0.005 A^3, so that D is bounded by the difference of the two and C by the larger |S|.
QVector<FitParameter> LanqorParametricQDC::getParameters()
{
    if (!isSetUp())
        return {};
    const double smallestS = getSmallestIndex();
    double largestS = smallestS;
    for (int atom = 2; atom <= d->problem.getCoordNumber() + 1; ++atom)
        largestS = std::max(largestS, d->indices->getSuperDeslocalizability(atom));
    constexpr double width = maximumAlphaQdcFit - minimumAlpha;
    const double spread = largestS - smallestS;
    double maximumD = spread > 0.0 ? width / spread : std::numeric_limits<double>::max();
    if (largestS > 0.0) // C is not negative
        maximumD = std::min(maximumD, maximumAlphaQdcFit / largestS);
    // With one S for all atoms only alpha matters, and any wide range of D does.
    constexpr double widest = 1.0e3;
    maximumD = std::min(maximumD, widest);
    const double maximumC = maximumAlphaQdcFit + maximumD * std::max(0.0, -smallestS);
    const auto [minimumQ, maximumQ] = d->rangeOfQ();
    return {{QStringLiteral("Q"), QStringLiteral("1/electron"), minimumQ, maximumQ},
            {QStringLiteral("D"),
             QStringLiteral("Angstrom^3 ") + d->indices->getResults().energyUnit, 0.0, maximumD},
            {QStringLiteral("C"), QStringLiteral("Angstrom^3"), 0.0, maximumC}};
}

void LanqorParametricQDC::setWeights(const double &weight2, const double &weight4)
{
    d->weights[0] = weight2;
    d->weights[1] = weight4;
}

QVector<double> LanqorParametricQDC::makeStartingVector(const int &number)
{
    if (!isSetUp())
        return QVector<double>();
    const auto place = [number](int index, double minimum, double maximum) {
        return minimum + intensityFit::startingFraction(number, index) * (maximum - minimum);
    };
    const int last = d->problem.getCoordNumber() + 1;
    const auto [minimumQ, maximumQ] = d->rangeOfQ();
    const double D = place(1, 0.0, maximumAlphaQdcFit);
    double minimumC = 0.0;
    double maximumC = std::numeric_limits<double>::max();
    for (int atom = 2; atom <= last; ++atom) {
        const double S = d->indices->getSuperDeslocalizability(atom);
        minimumC = std::max(minimumC, minimumAlpha - D * S);
        maximumC = std::min(maximumC, maximumAlphaQdcFit - D * S);
    }
    // Where the restriction leaves nothing, the start waits until it is lifted.
    if (d->restrictionValue > 0 && D / d->restrictionValue > minimumC)
        maximumC = std::min(maximumC, D / d->restrictionValue);
    return {place(0, minimumQ, maximumQ), D, place(2, minimumC, maximumC)};
}

void LanqorParametricQDC::endOfParametrization()
{
    intensityFit::Problem &problem = d->problem;
    problem.report.clear();
    if (!problem.hasBest() || !d->indices) {
        failWith(
            problem.isSetupChecked() && !problem.isSetupValid()
                ? getLastError()
                : tr("No trial of the fit was within the bounds of Q, D and C and of the charge "
                     "factors and polarizabilities they give: there is nothing to report."));
        return;
    }
    const std::unique_ptr<LanqorOmega> best = problem.makeBestCalculation(*this, requiredCitations);
    best->setParametersQDC(d->bestParameters.Q, d->bestParameters.D, d->bestParameters.C);
    best->setAtomicCharges(d->indices->getAtomicCharge());
    best->setSuperDeslocalizability(d->indices->getSuperDeslocalizability());
    best->setOrbitalEnergyUnit(d->indices->getResults().energyUnit);
    best->setLigandAtomsByLigandVector(d->ligandAtoms);
    bool isCalculated = best->calcOmega();
    if (!isCalculated) {
        // The QDC mode needs force constants, which enter none of its expressions: without them,
        // Omega is calculated from g and alpha instead, and is the same.
        best->setAtomicCharges(QVector<double>());
        problem.setBestValues(*best);
        isCalculated = best->calcOmega();
        best->setAtomicCharges(d->indices->getAtomicCharge());
        emitProgress(tr(" -> (QDC fit) Without force constants, Omega was calculated from the "
                        "charge factors and polarizabilities that Q, D and C give.\n"));
    }
    if (isCalculated)
        problem.report = best->createOutFile(problem.reportFile);
}

QString LanqorParametricQDC::getReport() const
{
    return d->problem.report;
}

QdcFitResults LanqorParametricQDC::getResults() const
{
    const intensityFit::Problem &problem = d->problem;
    QdcFitResults results;
    problem.fill(results, d->weights[0], d->weights[1], 1.0);
    results.parameters = d->bestParameters;
    results.restrictionValue = d->restrictionValue;
    results.isRestricted = d->restrictionActive;
    results.response = bestResponse;
    results.points = pointNumber;
    if (!problem.isSetupValid() || !d->indices)
        return results;
    results.energyUnit = d->indices->getResults().energyUnit;
    for (int atom = 2; atom <= problem.getCoordNumber() + 1; ++atom) {
        results.atoms.append({atom, problem.getAtomLabel(atom), d->indices->getAtomicCharge(atom),
                              d->indices->getSuperDeslocalizability(atom),
                              problem.makeDonor(atom, problem.boundsOf(atom))});
    }
    return results;
}
