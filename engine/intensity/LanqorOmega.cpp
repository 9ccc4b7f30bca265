#include "LanqorOmega.h"

#include "core/physicalConstants_p.h"
#include "input/intensityReportReader_p.h"
#include "intensity/LanqorOmega_p.h"
#include "intensity/intensityReport_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <algorithm>
#include <cmath>

using simpleOverlapModel::CoordinationSphere;

// --- Geometry, g and alpha ---

QString LanqorOmegaPrivate::takeGeometry(LanqorInputData *reader)
{
    if (reader->getCoordSPH().isEmpty() && !reader->createSphericalCoordinate())
        return reader->getLastError();
    if (reader->getCoordSPH().size() != reader->getCoord().size())
        return LanqorOmega::tr("The intensity parameters need the spherical coordinates of all "
                               "atoms.");
    inputData = reader;
    positions = reader->getCoordSPH();
    coordNumber = reader->getCoordNumber();
    isCoordNumberCounted = true;
    atomOrderError = reader->getAtomOrderError();
    return QString();
}

QString LanqorOmegaPrivate::start(LanqorInputData *reader, const QString &reportFile)
{
    geometryError = takeGeometry(reader);
    const QString error = setInitialValues();
    return error.isEmpty() && !reportFile.isEmpty() ? takeReport(reportFile) : error;
}

QString LanqorOmegaPrivate::disagreementWith(const IntensityReportData &report,
                                             const QString &reportFile) const
{
    QString mismatch;
    for (auto printed = report.omega.begin(); printed != report.omega.end(); ++printed) {
        const double recomputed = omega[printed.key()] / lanqor::omegaUnitCm2;
        // Two digits are printed, and g and alpha are rounded too.
        if (!(std::abs(recomputed - printed.value()) <= 0.02 + 0.01 * printed.value()))
            mismatch = LanqorOmega::tr("The report %1 belongs to another geometry than %2: it "
                                       "prints omega(%3) = %4e-20 cm^2, but its charge factors and "
                                       "polarizabilities give %5e-20 cm^2.")
                           .arg(reportFile, geometryFile, QString::number(printed.key()),
                                QString::number(printed.value(), 'f', 2),
                                QString::number(recomputed, 'f', 2));
    }
    return mismatch;
}

QString LanqorOmegaPrivate::takeReport(const QString &reportFile)
{
    const IntensityReportData report = readIntensityReport(reportFile);
    if (!report.error.isEmpty())
        return report.error;
    setCoordNumber(report.chargeFactors.size() - 2);
    chargeFactor = report.chargeFactors;
    alpha = report.alphas;
    isBondEstimate = false;
    QString error = calculate();
    if (error.isEmpty())
        error = disagreementWith(report, reportFile);
    if (!error.isEmpty()) {
        clearResults();
        chargeFactor.clear();
        alpha.clear();
    }
    return error;
}

void LanqorOmegaPrivate::setCoordNumber(int number)
{
    if (number != coordNumber)
        sphere.reset();
    isCalculated = false;
    coordNumber = number;
    isCoordNumberCounted = false;
}

bool LanqorOmegaPrivate::takeChargeFactorAndAlpha(const double *g, const double *a)
{
    isCalculated = false;
    isBondEstimate = false;
    chargeFactor.clear();
    alpha.clear();
    if (!g || !a || coordNumber < 1 || coordNumber >= positions.size())
        return false;
    chargeFactor.fill(0.0, coordNumber + 2);
    alpha.fill(0.0, coordNumber + 2);
    std::copy_n(g + 2, coordNumber, chargeFactor.begin() + 2);
    std::copy_n(a + 2, coordNumber, alpha.begin() + 2);
    return true;
}

// --- Calculation ---

void LanqorOmegaPrivate::clearResults()
{
    omega = omegaED = omegaDC = ByRank();
    isCalculated = false;
}

QString LanqorOmegaPrivate::setInitialValues() const
{
    if (positions.isEmpty())
        return geometryError;
    const QString label = positions.first().label;
    return label == QLatin1String("Eu") ? QString() : label + LanqorOmega::tr(" atoms[0] isn't Eu");
}

QString LanqorOmegaPrivate::prepareSphere()
{
    if (sphere)
        return QString();
    const QString error = simpleOverlapModel::sphereError(positions, coordNumber);
    if (!error.isEmpty())
        return QStringLiteral("%1: %2").arg(geometryFile, error);
    sphere = std::make_unique<CoordinationSphere>(positions, coordNumber);
    return QString();
}

QString LanqorOmegaPrivate::calculate()
{
    QString error = prepareSphere();
    if (error.isEmpty() && !atomicCharges.isEmpty())
        error = calcChargeFactorAndAlpha(sphere->minDistance());
    if (!error.isEmpty())
        return error;
    if (chargeFactor.size() < coordNumber + 2)
        return LanqorOmega::tr("Charge factors and polarizabilities of the %1 coordinated atoms "
                               "were not set.")
            .arg(coordNumber);

    sums = sphere->latticeSums(chargeFactor.constData(), alpha.constData());
    const auto result = simpleOverlapModel::intensityParameters(sums);
    if (!std::isfinite(result.total[2] + result.total[4] + result.total[6]))
        return LanqorOmega::tr("The intensity parameters are not finite: check the charge factors "
                               "and polarizabilities.");
    omega = result.total;
    omegaED = result.electricDipole;
    omegaDC = result.dynamicCoupling;
    isCalculated = true;
    return QString();
}

// --- Interface ---

LanqorOmega::LanqorOmega()
    : d(std::make_unique<LanqorOmegaPrivate>())
{
    d->geometryError = tr("No file with a geometry was given.");
}

LanqorOmega::LanqorOmega(QObject *parent, const int &chargeModel, const QString &outFile,
                         const QString &geometryFile)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorOmegaPrivate>())
{
    d->chargeModel = chargeModel;
    d->outFile = outFile;
    const bool isReport = isIntensityReport(geometryFile);
    const bool isStructure = !geometryFile.isEmpty() && !isReport;
    d->geometryFile = isStructure ? geometryFile : outFile;
    if (d->geometryFile.isEmpty()) {
        d->geometryError = tr("No file with a geometry was given.");
        failWith(d->geometryError);
        return;
    }
    auto *reader = new LanqorInputData(this, d->geometryFile);
    if (!(isStructure ? reader->readStructureFile() : reader->readMopacOutFile(false))) {
        d->geometryError = reader->getLastError();
        failWith(d->geometryError);
        return;
    }
    const QString error = d->start(reader, isReport ? geometryFile : QString());
    if (!error.isEmpty()) {
        failWith(error);
    } else if (isStructure) {
        // Nobody can be connected to an object under construction: the message waits for the
        // event loop.
        const auto announce = [this] {
            if (!d->isCalculated)
                emitProgress(tr(" -> (Omega) The file %1 gives a geometry only: Omega stays zero "
                                "until charge factors and polarizabilities are set and the "
                                "intensity parameters are calculated.\n")
                                 .arg(d->geometryFile));
        };
        QMetaObject::invokeMethod(this, announce, Qt::QueuedConnection);
    }
}

LanqorOmega::LanqorOmega(QObject *parent, const int &chargeModel, LanqorInputData *geometry,
                         const QString &reportFile)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorOmegaPrivate>())
{
    d->chargeModel = chargeModel;
    if (!geometry) {
        d->geometryError = tr("No geometry was given.");
        failWith(d->geometryError);
        return;
    }
    d->outFile = d->geometryFile = geometry->getFileName();
    const QString error = d->start(geometry, reportFile);
    if (!error.isEmpty())
        failWith(error);
}

LanqorOmega::~LanqorOmega() = default;

void LanqorOmega::setRefractiveIndex(const double &index)
{
    d->refractiveIndex = index;
}

void LanqorOmega::setParametersQDC(const double &Q, const double &D, const double &C)
{
    d->hasParametersQDC = true;
    d->parameterQ = Q;
    d->parameterD = D;
    d->parameterC = C;
}

void LanqorOmega::setSuperDeslocalizability(const QVector<double> &values)
{
    d->superDeslocalizability = values;
}

void LanqorOmega::setAtomicCharges(const QVector<double> &charges)
{
    d->atomicCharges = charges;
}

void LanqorOmega::setOrbitalEnergyUnit(const QString &unit)
{
    d->orbitalEnergyUnit = unit;
}

void LanqorOmega::setLigandAtomsByLigandVector(const QStringList &ligands)
{
    d->ligandAtoms = ligands;
}

void LanqorOmega::setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas)
{
    d->takeChargeFactorAndAlpha(chargeFactors, alphas);
}

bool LanqorOmega::setChargeFactorAndAlpha(const QVector<double> &chargeFactors,
                                          const QVector<double> &alphas)
{
    const int entries = d->coordNumber + 2;
    const bool areLong = std::min(chargeFactors.size(), alphas.size()) >= entries;
    if (d->takeChargeFactorAndAlpha(areLong ? chargeFactors.constData() : nullptr,
                                    areLong ? alphas.constData() : nullptr))
        return true;
    if (d->positions.isEmpty())
        return failWith(d->geometryError);
    return failWith(tr("Charge factors and polarizabilities of %1 coordinated atoms are vectors of "
                       "%2 entries by atom number; there are %3 and %4 entries.")
                        .arg(QString::number(d->coordNumber), QString::number(entries),
                             QString::number(chargeFactors.size()),
                             QString::number(alphas.size())));
}

void LanqorOmega::setCoordNumber(const int &number)
{
    d->setCoordNumber(number);
}

void LanqorOmega::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    d->printingOptions = options;
}

void LanqorOmega::setRequiredCitations(const QString &citations)
{
    d->requiredCitations = citations;
}

bool LanqorOmega::setCrystalFieldOverlap(const double &ro0)
{
    if (!(ro0 >= 0.0 && ro0 < 1.0))
        return failWith(tr("The overlap ro0 is %1; it must be at least 0 and below 1.").arg(ro0));
    d->crystalFieldOverlap = ro0;
    return true;
}

bool LanqorOmega::calcOmega()
{
    d->clearResults();
    QString error = d->setInitialValues();
    if (error.isEmpty()) {
        if (d->isCoordNumberCounted && !d->atomOrderError.isEmpty())
            emitProgress(QStringLiteral(" -> (Omega) ") + d->atomOrderError);
        error = d->calculate();
    }
    return error.isEmpty() || failWith(error);
}

double LanqorOmega::getOmega(const int &lambda) const
{
    return d->omega.value(lambda);
}

double LanqorOmega::getOmegaED(const int &lambda) const
{
    return d->omegaED.value(lambda);
}

double LanqorOmega::getOmegaDC(const int &lambda) const
{
    return d->omegaDC.value(lambda);
}

double LanqorOmega::getAlpha(const int &atom) const
{
    return d->alpha.value(atom);
}

double LanqorOmega::getChargeFactor(const int &atom) const
{
    return d->chargeFactor.value(atom);
}

int LanqorOmega::getCoordNumber() const
{
    return d->coordNumber;
}

QString LanqorOmega::getAtomLabel(const int &atom) const
{
    return d->positions.value(atom - 1).label;
}

int LanqorOmega::getChargeModel() const
{
    return d->chargeModel;
}

QString LanqorOmega::getMopacCitation() const
{
    return d->inputData ? d->inputData->getMopacCitation() : QString();
}

QString LanqorOmega::createOutFile(const QString &fileName)
{
    const OmegaResults results = getResults();
    if (!results.isCalculated) {
        failWith(tr("There is no report: the intensity parameters of the present geometry, charge "
                    "factors and polarizabilities were not calculated."));
        return QString();
    }
    // Groups that cannot be used are told, and the report says so in their place.
    if (results.printingOptions.printAradPartition && !results.partition.groupError.isEmpty())
        processStatus(results.partition.groupError);
    QString text = IntensityReport(results).text();
    QString error;
    if (!fileName.isEmpty() && !LanqorOutputFile::write(fileName, text.toUtf8(), error)) {
        failWith(tr("The report %1 cannot be written: %2.").arg(fileName, error));
        return QString();
    }
    return text;
}
