#include "LanqorOmega.h"

#include "core/physicalConstants_p.h"
#include "intensity/intensityReportReader_p.h"
#include "overlap/europium_p.h"
#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>

using simpleOverlapModel::CoordinationSphere;
using simpleOverlapModel::IntensityParameters;
using simpleOverlapModel::LatticeSums;

namespace {

/// Estimate of the energy of a bond, erg, at the shortest distance; 0 for an element without one.
double bondEnergy(const QString &symbol)
{
    constexpr double unit = 1e-11;
    if (symbol == QLatin1String("O"))
        return 0.315593115 * 4.2925651759 * unit;
    if (symbol == QLatin1String("N"))
        return 1.7016449683 * 4.4056678455 * unit;
    return 0.0;
}

MyComplex toRecord(const std::complex<double> &value)
{
    return {value.real(), value.imag()};
}

} // namespace

LanqorOmega::LanqorOmega()
    : geometryError(tr("No file with a geometry was given."))
    , sums(std::make_unique<LatticeSums>())
{
    clearResults();
}

LanqorOmega::LanqorOmega(QObject *parent, const int &chargeModel, const QString &outFile,
                         const QString &geometryFile)
    : LanqorAbstractObjCalculation(parent)
    , chargeModel(chargeModel)
    , outFile(outFile)
    , sums(std::make_unique<LatticeSums>())
{
    clearResults();
    const bool isReport = isIntensityReport(geometryFile);
    const bool isStructure = !geometryFile.isEmpty() && !isReport;
    if (!readGeometry(isStructure ? geometryFile : QString()) || !setInitialValues())
        return;
    if (isReport)
        takeReport(geometryFile);
    if (isStructure)
        announceGeometryOnly();
}

LanqorOmega::~LanqorOmega() = default;

bool LanqorOmega::readGeometry(const QString &structureFile)
{
    geometryFile = structureFile.isEmpty() ? outFile : structureFile;
    if (geometryFile.isEmpty()) {
        geometryError = tr("No file with a geometry was given.");
        return failWith(geometryError);
    }
    inputData = new LanqorInputData(this, geometryFile);
    const bool isRead = structureFile.isEmpty() ? inputData->readMopacOutFile(false)
                                                : inputData->readStructureFile();
    if (!isRead || !inputData->createSphericalCoordinate()) {
        geometryError = inputData->getLastError();
        return failWith(geometryError);
    }
    positions = inputData->getCoordSPH();
    coordNumber = inputData->getCoordNumber();
    isCoordNumberCounted = true;
    atomOrderError = inputData->getAtomOrderError();
    return true;
}

/// Nobody can be connected to an object under construction: the message waits for the event
/// loop.
void LanqorOmega::announceGeometryOnly()
{
    const auto announce = [this] {
        if (!isCalculated)
            emitProgress(tr(" -> (Omega) The file %1 gives a geometry only: Omega stays zero until "
                            "charge factors and polarizabilities are set and the intensity "
                            "parameters are calculated.\n")
                             .arg(geometryFile));
    };
    QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
}

bool LanqorOmega::takeReport(const QString &reportFile)
{
    const IntensityReportData report = readIntensityReport(reportFile);
    if (!report.error.isEmpty())
        return failWith(report.error);
    setCoordNumber(report.chargeFactors.size() - 2);
    chargeFactor = report.chargeFactors;
    alpha = report.alphas;
    QString mismatch;
    if (calcOmega()) {
        for (auto printed = report.omega.begin(); printed != report.omega.end(); ++printed) {
            const double recomputed = getOmega(printed.key()) / lanqor::omegaUnitCm2;
            // Two digits are printed, and g and alpha are rounded too.
            if (!(std::abs(recomputed - printed.value()) <= 0.02 + 0.01 * printed.value()))
                mismatch = tr("The report %1 belongs to another geometry than %2: it prints "
                              "omega(%3) = %4e-20 cm^2, but its charge factors and "
                              "polarizabilities give %5e-20 cm^2.")
                               .arg(reportFile, geometryFile)
                               .arg(printed.key())
                               .arg(printed.value(), 0, 'f', 2)
                               .arg(recomputed, 0, 'f', 2);
        }
        if (mismatch.isEmpty())
            return true;
    }
    clearResults();
    chargeFactor.clear();
    alpha.clear();
    return mismatch.isEmpty() ? false : failWith(mismatch);
}

void LanqorOmega::setRefractiveIndex(const double &index)
{
    refractiveIndex = index;
}

void LanqorOmega::setParametersQDC(const double &Q, const double &D, const double &C)
{
    hasParametersQDC = true;
    parameterQ = Q;
    parameterD = D;
    parameterC = C;
}

void LanqorOmega::setSuperDeslocalizability(const QVector<double> &values)
{
    superDeslocalizability = values;
}

void LanqorOmega::setAtomicCharges(const QVector<double> &charges)
{
    atomicCharges = charges;
}

void LanqorOmega::setLigandAtomsByLigandVector(const QStringList &ligands)
{
    ligandAtoms = ligands;
}

void LanqorOmega::setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas)
{
    isCalculated = false;
    const bool isUsable =
        chargeFactors && alphas && coordNumber > 0 && coordNumber < positions.size();
    const int entries = isUsable ? coordNumber + 2 : 0;
    chargeFactor.fill(0.0, entries);
    alpha.fill(0.0, entries);
    for (int atom = 2; atom < entries; ++atom) {
        chargeFactor[atom] = chargeFactors[atom];
        alpha[atom] = alphas[atom];
    }
}

void LanqorOmega::setCoordNumber(const int &number)
{
    if (number != coordNumber)
        sphere.reset();
    isCalculated = false;
    coordNumber = number;
    isCoordNumberCounted = false;
}

void LanqorOmega::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    printingOptions = options;
}

void LanqorOmega::setRequiredCitations(const QString &citations)
{
    requiredCitations = citations;
}

QString LanqorOmega::getMopacCitation() const
{
    return inputData ? inputData->getMopacCitation() : QString();
}

void LanqorOmega::clearResults()
{
    omega.fill(0.0, 7);
    omegaED.fill(0.0, 7);
    omegaDC.fill(0.0, 7);
    isCalculated = false;
}

bool LanqorOmega::setInitialValues()
{
    if (positions.isEmpty())
        return failWith(geometryError);
    const QString label = positions.first().label;
    if (label != QLatin1String("Eu"))
        return failWith(label + tr(" atoms[0] isn't Eu"));
    return true;
}

bool LanqorOmega::prepareSphere()
{
    if (isCoordNumberCounted && !atomOrderError.isEmpty())
        emitProgress(QStringLiteral(" -> (Omega) ") + atomOrderError);
    if (sphere)
        return true;
    const QString error = simpleOverlapModel::sphereError(positions, coordNumber);
    if (!error.isEmpty())
        return failWith(QStringLiteral("%1: %2").arg(geometryFile, error));
    sphere = std::make_unique<CoordinationSphere>(positions, coordNumber);
    return true;
}

bool LanqorOmega::calcOmega()
{
    clearResults();
    if (!setInitialValues() || !prepareSphere())
        return false;
    double minDistance = sphere->minDistance();
    if (!atomicCharges.isEmpty() && !calcChargeFactorAndAlpha(minDistance))
        return false;
    if (chargeFactor.size() < coordNumber + 2)
        return failWith(tr("Charge factors and polarizabilities of the %1 coordinated atoms were "
                           "not set.")
                            .arg(coordNumber));

    *sums = sphere->latticeSums(chargeFactor.constData(), alpha.constData());
    const IntensityParameters result = simpleOverlapModel::intensityParameters(*sums);
    if (!std::isfinite(result.total[2] + result.total[4] + result.total[6]))
        return failWith(tr("The intensity parameters are not finite: check the charge factors and "
                           "polarizabilities."));
    for (const int lambda : {2, 4, 6}) {
        omega[lambda] = result.total[lambda];
        omegaED[lambda] = result.electricDipole[lambda];
        omegaDC[lambda] = result.dynamicCoupling[lambda];
    }
    isCalculated = true;
    return true;
}

bool LanqorOmega::calcChargeFactorAndAlpha(double &minDistance)
{
    LanqorInputData reader(nullptr, outFile);
    if (!reader.readForceConstant(outFile, coordNumber))
        return failWith(reader.getLastError());
    QVector<double> forceConstants(2, 0.0); // by atom number
    for (int i = 0; i < std::min(coordNumber, reader.getForceConstantsCount()); ++i)
        forceConstants.append(reader.getForceConstant(i));

    const int entries = coordNumber + 2;
    if (forceConstants.size() < entries || !hasReactivityIndices())
        return failWith(tr("Charge factors and polarizabilities of %1 coordinated atoms need as "
                           "many force constants, atomic charges and superdelocalizabilities "
                           "(vectors of %2 entries by atom number); there are %3, %4 and %5 "
                           "entries.")
                            .arg(coordNumber)
                            .arg(entries)
                            .arg(forceConstants.size())
                            .arg(atomicCharges.size())
                            .arg(superDeslocalizability.size()));
    if (!hasParametersQDC)
        return calcFromBonds(minDistance, forceConstants);
    calcFromQDC();
    return true;
}

double LanqorOmega::chargeFactorQDC(const int &atom) const
{
    return parameterQ * atomicCharges.at(atom);
}

double LanqorOmega::alphaQDC(const int &atom) const
{
    return (parameterD * superDeslocalizability.at(atom) + parameterC) *
           lanqor::cm3PerCubicAngstrom;
}

void LanqorOmega::calcFromQDC()
{
    chargeFactor.fill(0.0, coordNumber + 2);
    alpha.fill(0.0, coordNumber + 2);
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        chargeFactor[atom] = chargeFactorQDC(atom);
        alpha[atom] = alphaQDC(atom);
    }
}

bool LanqorOmega::hasReactivityIndices() const
{
    return std::min(atomicCharges.size(), superDeslocalizability.size()) >= coordNumber + 2;
}

/// Q, D, C, charges and superdelocalizabilities may have been set after the calculation.
bool LanqorOmega::agreesWithQDC() const
{
    if (!hasParametersQDC || !hasReactivityIndices())
        return true;
    constexpr double rounding = 1e-9;
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const double g = chargeFactor.at(atom);
        const double a = alpha.at(atom);
        if (!(std::abs(g - chargeFactorQDC(atom)) <= rounding * std::abs(g)) ||
            !(std::abs(a - alphaQDC(atom)) <= rounding * std::abs(a)))
            return false;
    }
    return true;
}

bool LanqorOmega::calcFromBonds(const double &minDistance, const QVector<double> &forceConstants)
{
    constexpr double dynePerCm = 1e5; // of a mdyn/Angstrom
    const int entries = coordNumber + 2;
    QVector<double> g = chargeFactor; // a failure leaves those of before
    QVector<double> a = alpha;
    g.resize(entries);
    a.resize(entries);
    for (int atom = 2; atom < entries; ++atom) {
        const QString label = positions.at(atom - 1).label;
        const double intrinsic =
            4.2669775857 + 0.0432505996 * superDeslocalizability.at(atom); // cubic Angstrom
        if (label == QLatin1String("F") || label == QLatin1String("Cl")) {
            g[atom] = 1.0;
            a[atom] = intrinsic * lanqor::cm3PerCubicAngstrom;
            continue;
        }
        const double distance = sphere->distance(atom) * lanqor::cmPerAngstrom;
        const double energy = minDistance / sphere->distance(atom) * bondEnergy(label);
        if (energy == 0.0) {
            if (atom < chargeFactor.size())
                continue;
            return failWith(tr("Atom %1 (%2) of %3 has no bond estimate: set its charge factor "
                               "and polarizability.")
                                .arg(atom)
                                .arg(label, geometryFile));
        }
        if (!(forceConstants.at(atom) > 0.0))
            return failWith(tr("The force constant of the bond to atom %1 (%2) in %3 is %4 "
                               "mdyn/Angstrom, not positive: the geometry is no minimum.")
                                .arg(atom)
                                .arg(label, outFile)
                                .arg(forceConstants.at(atom)));
        const double rho = sphere->rho(atom);
        g[atom] = distance * std::sqrt(forceConstants.at(atom) * dynePerCm / (2.0 * energy));
        a[atom] =
            lanqor::elementaryChargeSquared * rho * rho * distance * distance / (2.0 * energy) +
            intrinsic * lanqor::cm3PerCubicAngstrom;
    }
    chargeFactor = g;
    alpha = a;
    return true;
}

MyComplex LanqorOmega::gamma(const int &t, const int &p, const int &j) const
{
    return toRecord(sphere->gamma(t, p, j, chargeFactor.at(j)));
}

MyComplex LanqorOmega::GAMMA(const int &t, const int &p, const int &j) const
{
    return toRecord(sphere->GAMMA(t, p, j, alpha.at(j)));
}

MyComplex LanqorOmega::BEd(const int &lambda, const int &t, const int &p) const
{
    return toRecord(sums->BEd(lambda, t, p));
}

MyComplex LanqorOmega::BDc(const int &lambda, const int &t, const int &p) const
{
    return toRecord(sums->BDc(lambda, t, p));
}

MyComplex LanqorOmega::Bkq(const int &lambda, const int &t, const int &p) const
{
    const MyComplex electric = BEd(lambda, t, p);
    const MyComplex dynamic = BDc(lambda, t, p);
    return {electric.real + dynamic.real, electric.imag + dynamic.imag};
}

double LanqorOmega::tet(const int &t, const int &lambda) const
{
    return europium::theta(t, lambda);
}
