#include "fitting/intensityFit_p.h"

#include "core/physicalConstants_p.h"
#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <algorithm>
#include <cmath>

namespace intensityFit {

namespace {

/// Passes the messages of a fit's calculation on; a failure becomes the last error of the fit
/// before it is told.
void relayMessages(const LanqorOmega &omega, LanqorAbstractParametric &fit)
{
    QObject::connect(
        &omega, &LanqorAbstractObjCalculation::newObjCalculationMessage, &fit,
        [&omega, &fit](const QString &message) {
            if (message == omega.getLastError())
                fit.setLastError(message);
            Q_EMIT fit.newObjCalculationMessage(message);
        },
        Qt::DirectConnection); // the fit may run in another thread than its own
}

/// Squared difference of two Omega(lambda), given in cm^2, in units of 1e-20 cm^2.
double squaredDeviation(double expected, double calculated)
{
    const double difference = (expected - calculated) * 1.0e20;
    return difference * difference;
}

/// Hands g and alpha (cm^3), by atom number, to a calculation.
void setChargeFactorsAndAlphas(LanqorOmega &omega, QVector<double> &g, QVector<double> &alpha)
{
    double *chargeFactors = g.data();
    double *alphas = alpha.data();
    omega.setChargeFactorAndAlpha(chargeFactors, alphas);
}

} // namespace

double startingFraction(int number, int index)
{
    int prime = 1;
    for (int count = -1; count < index;) {
        ++prime;
        bool isPrime = true;
        for (int divisor = 2; divisor * divisor <= prime && isPrime; ++divisor)
            isPrime = prime % divisor != 0;
        count += isPrime ? 1 : 0;
    }
    const double place = 0.5 + (number - 1) * std::sqrt(double(prime));
    return place - std::floor(place);
}

QString citations()
{
    return ::citations::intensityModel() +
           QStringLiteral("Generalised simulated annealing: C. Tsallis, D. A. Stariolo, Physica A "
                          "233, 395 (1996).\n");
}

Problem::Problem(int chargeModel, const BoundsTable &boundsTable)
    : chargeModel(chargeModel)
    , boundsTable(boundsTable)
{}

Problem::~Problem() = default;

std::unique_ptr<LanqorOmega> Problem::makeOmega() const
{
    if (isGeometryGiven)
        return std::make_unique<LanqorOmega>(nullptr, chargeModel, givenGeometry);
    return std::make_unique<LanqorOmega>(nullptr, chargeModel, mopacOutput, QString());
}

QString Problem::startOmega()
{
    omega = makeOmega();
    forgetSetup();
    return omega->getLastError();
}

QString Problem::readGeometry(const QString &fileName)
{
    mopacOutput = fileName;
    isGeometryGiven = false;
    return startOmega();
}

QString Problem::takeGeometry(LanqorInputData *geometry)
{
    mopacOutput = geometry ? geometry->getFileName() : QString();
    isGeometryGiven = true;
    givenGeometry = geometry;
    return startOmega();
}

QString Problem::getAtomLabel(int atom) const
{
    return omega->getAtomLabel(atom);
}

void Problem::setCoordNumber(int number)
{
    coordNumber = number;
    forgetSetup();
}

QString Problem::coordinationError() const
{
    if (coordNumber >= 1 && !getAtomLabel(coordNumber + 1).isEmpty())
        return QString();
    return getAtomLabel(1).isEmpty()
               ? omega->getLastError()
               : LanqorAbstractParametric::tr("The coordination number is %1, which does not fit "
                                              "the geometry of %2.")
                     .arg(QString::number(coordNumber), mopacOutput);
}

QString Problem::prepareTrials()
{
    bounds.assign(2, ChargeFactorBounds());
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        // An element in no class keeps the bounds of the atom before it.
        bounds.push_back(bounds.back());
        boundsTable.update(getAtomLabel(atom), bounds.back());
    }
    g.fill(1.0, coordNumber + 2);
    alpha.fill(lanqor::cm3PerCubicAngstrom, coordNumber + 2);
    omega->setCoordNumber(coordNumber); // before the arrays: it tells their length
    setChargeFactorsAndAlphas(*omega, g, alpha);
    return omega->calcOmega() ? QString() : omega->getLastError();
}

void Problem::keepSetup(const QString &error)
{
    setup = error.isEmpty() ? Setup::Valid : Setup::Wrong;
    checkedCount = -1;
}

bool Problem::areWithinBounds(const QVector<double> &chargeFactors,
                              const QVector<double> &polarizabilities) const
{
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        if (!isWithinBounds(chargeFactors.at(atom), polarizabilities.at(atom),
                            bounds[static_cast<std::size_t>(atom)], boundsTable.maximumAlpha))
            return false;
    }
    return true;
}

double Problem::calcMisfit(double weight2, double weight4, double weight6)
{
    setChargeFactorsAndAlphas(*omega, g, alpha);
    omega->calcOmega();
    return weight2 * squaredDeviation(omegaExp2, omega->getOmega(2)) +
           weight4 * squaredDeviation(omegaExp4, omega->getOmega(4)) +
           weight6 * squaredDeviation(0.0, omega->getOmega(6));
}

void Problem::keepBest()
{
    bestG.resize(g.size());
    bestAlpha.resize(alpha.size());
    std::copy(g.cbegin(), g.cend(), bestG.begin());
    std::copy(alpha.cbegin(), alpha.cend(), bestAlpha.begin());
    for (const int lambda : {2, 4, 6})
        bestOmega[static_cast<std::size_t>(lambda)] = omega->getOmega(lambda);
}

double Problem::getBestOmega(int lambda) const
{
    return lambda == 2 || lambda == 4 || lambda == 6 ? bestOmega[static_cast<std::size_t>(lambda)]
                                                     : 0.0;
}

FittedDonor Problem::makeDonor(int atom, const ChargeFactorBounds &ownBounds) const
{
    return {bestG.value(atom),
            ownBounds.minimum,
            ownBounds.maximum,
            bestAlpha.value(atom),
            minimumAlpha * lanqor::cm3PerCubicAngstrom,
            boundsTable.maximumAlpha * lanqor::cm3PerCubicAngstrom};
}

void Problem::fill(IntensityFitResults &results, double weight2, double weight4,
                   double weight6) const
{
    results.hasFeasiblePoint = hasBest();
    results.omega = {{2, omegaExp2, getBestOmega(2), weight2},
                     {4, omegaExp4, getBestOmega(4), weight4},
                     {6, qQNaN(), getBestOmega(6), weight6}};
    results.report = report;
}

ChargeFactorBounds Problem::boundsOf(int atom) const
{
    const auto index = static_cast<std::size_t>(atom);
    return index < bounds.size() ? bounds[index] : ChargeFactorBounds();
}

std::unique_ptr<LanqorOmega> Problem::makeBestCalculation(LanqorAbstractParametric &fit,
                                                          const QString &requiredCitations)
{
    std::unique_ptr<LanqorOmega> best = makeOmega();
    relayMessages(*best, fit);
    best->setRefractiveIndex(refractiveIndex);
    best->setCoordNumber(coordNumber);
    setBestValues(*best);
    best->setOmegaPrintingOptions(printingOptions);
    best->setRequiredCitations(::citations::required(best->getMopacCitation(), requiredCitations));
    return best;
}

void Problem::setBestValues(LanqorOmega &calculation)
{
    setChargeFactorsAndAlphas(calculation, bestG, bestAlpha);
}

} // namespace intensityFit
