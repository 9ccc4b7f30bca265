#include "LanqorOmegaExp.h"

#include "input/emissionBandTable_p.h"
#include "input/emissionSpectrumReader_p.h"
#include "intensity/emissionSpectrum_p.h"
#include "intensity/experimentalIntensities_p.h"
#include "intensity/omegaExpReport_p.h"

#include <LanqorEngine/LanqorOutputFile.h>
#include <LanqorEngine/OmegaExpResults.h>

#include <QStringList>

#include <algorithm>
#include <cmath>

using emissionSpectrum::Band;
using experimentalIntensities::transitionCount;

namespace {

/// No result exists without these transitions.
bool isIndispensable(int J)
{
    return J == 1 || J == 2 || J == 4;
}

bool isMeasurable(double value)
{
    return std::isfinite(value) && value >= 0.0;
}

QString transitionName(int J)
{
    return QStringLiteral("5D0 -> 7F%1").arg(J);
}

double atLevel(const std::array<double, 6> &values, int J)
{
    return J >= 0 && J < transitionCount ? values[static_cast<std::size_t>(J)] : 0.0;
}

bool areWindowsValid(const EmissionSpectrumOptions &options)
{
    return std::all_of(options.windows.begin(), options.windows.end(),
                       [](const EmissionSpectrumOptions::Window &window) {
                           return window.lowest > 0.0 && window.lowest < window.highest &&
                                  std::isfinite(window.highest);
                       });
}

} // namespace

class LanqorOmegaExpPrivate
{
public:
    /// Why the areas and barycentres allow no calculation; empty when they do.
    QString inputError() const;

    QString fileName;
    experimentalIntensities::Emission emission;
    experimentalIntensities::Results results;
    double refractiveIndex = 0.0;
    double lifeTime = 0.0; // ms
};

QString LanqorOmegaExpPrivate::inputError() const
{
    if (!(std::isfinite(refractiveIndex) && refractiveIndex > 0.0))
        return LanqorOmegaExp::tr("The refractive index must be positive.");
    for (int J = 0; J < transitionCount; ++J) {
        if (!isMeasurable(atLevel(emission.area, J)) ||
            !isMeasurable(atLevel(emission.barycenter, J)))
            return LanqorOmegaExp::tr("Area and barycentre of %1 must not be negative.")
                .arg(transitionName(J));
    }
    if (emission.area[1] == 0.0)
        return LanqorOmegaExp::tr("The area of 5D0 -> 7F1 is 0; without this transition, which "
                                  "calibrates the others, there is no result.");
    for (int J = 0; J < transitionCount; ++J) {
        if (atLevel(emission.barycenter, J) == 0.0 &&
            (isIndispensable(J) || atLevel(emission.area, J) != 0.0))
            return LanqorOmegaExp::tr("The barycentre of %1 is 0; it is needed in cm^-1.")
                .arg(transitionName(J));
    }
    return QString();
}

LanqorOmegaExp::LanqorOmegaExp(QObject *parent, const double &refractiveIndex)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorOmegaExpPrivate>())
{
    d->refractiveIndex = refractiveIndex;
}

LanqorOmegaExp::~LanqorOmegaExp() = default;

void LanqorOmegaExp::setAreaOfTransition(const double &S0, const double &S1, const double &S2,
                                         const double &S3, const double &S4, const double &S5)
{
    d->emission.area = {S0, S1, S2, S3, S4, S5};
    d->results = {};
}

void LanqorOmegaExp::setBarycenterOfEnergy(const double &sigma0, const double &sigma1,
                                           const double &sigma2, const double &sigma3,
                                           const double &sigma4, const double &sigma5)
{
    d->emission.barycenter = {sigma0, sigma1, sigma2, sigma3, sigma4, sigma5};
    d->results = {};
}

void LanqorOmegaExp::setLifeTime(const double &lifeTime)
{
    d->lifeTime = lifeTime;
}

void LanqorOmegaExp::setFileName(const QString &fileName)
{
    d->fileName = fileName;
}

double LanqorOmegaExp::getOmega2Exp() const
{
    return d->results.omega2;
}

double LanqorOmegaExp::getOmega4Exp() const
{
    return d->results.omega4;
}

double LanqorOmegaExp::getR02() const
{
    return d->results.r02;
}

double LanqorOmegaExp::getAradExp() const
{
    return d->results.arad;
}

double LanqorOmegaExp::getRefractiveIndex() const
{
    return d->refractiveIndex;
}

double LanqorOmegaExp::getLifeTime() const
{
    return d->lifeTime;
}

QString LanqorOmegaExp::getFileName() const
{
    return d->fileName;
}

double LanqorOmegaExp::getAreaOfTransition(const int &J) const
{
    return atLevel(d->emission.area, J);
}

double LanqorOmegaExp::getBarycenterOfEnergy(const int &J) const
{
    return atLevel(d->emission.barycenter, J);
}

bool LanqorOmegaExp::readSpectrum(const QString &fileName, const EmissionSpectrumOptions &options)
{
    if (!areWindowsValid(options))
        return failWith(tr("The windows of the bands need positive limits, cm^-1, the lower one "
                           "first."));
    const emissionSpectrum::ReadResult file = emissionSpectrum::readFile(fileName, options.axis);
    if (!file.error.isEmpty())
        return failWith(file.error);

    experimentalIntensities::Emission emission;
    QStringList remarks;
    for (int J = 0; J < transitionCount; ++J) {
        const auto level = static_cast<std::size_t>(J);
        const EmissionSpectrumOptions::Window &window = options.windows[level];
        const Band band =
            emissionSpectrum::integrate(file.spectrum, window, options.signal, options.baseline);
        if (isIndispensable(J) && band.coverage == Band::Coverage::None)
            return failWith(tr("%1: the spectrum does not reach the window of %2, %3 to %4 cm^-1.")
                                .arg(fileName, transitionName(J))
                                .arg(window.lowest, 0, 'f', 0)
                                .arg(window.highest, 0, 'f', 0));
        if (band.coverage == Band::Coverage::None)
            remarks
                << tr("%1 lies outside the spectrum and counts as absent").arg(transitionName(J));
        else if (band.coverage == Band::Coverage::Part)
            remarks << tr("the spectrum ends within the window of %1").arg(transitionName(J));
        if (band.area > 0.0) {
            emission.area[level] = band.area;
            emission.barycenter[level] = band.barycenter;
        } else if (band.coverage != Band::Coverage::None) {
            // The formulas ask for a barycentre of 7F2 and 7F4 even where these are absent.
            if (isIndispensable(J))
                emission.barycenter[level] = 0.5 * (window.lowest + window.highest);
            remarks << tr("%1 has no positive area and counts as absent").arg(transitionName(J));
        }
    }
    d->emission = emission;
    d->results = {};
    d->fileName = fileName;
    for (const QString &remark : remarks)
        emitProgress(tr(" -> (Experimental Omega) ") + remark + QStringLiteral(". \n"));
    return true;
}

bool LanqorOmegaExp::readBands(const QString &fileName)
{
    const EmissionBandTable table = readEmissionBandTable(fileName);
    if (!table.error.isEmpty())
        return failWith(table.error);
    d->emission = {table.area, table.barycenter};
    d->results = {};
    d->fileName = fileName;
    return true;
}

void LanqorOmegaExp::convertPhotonCounts()
{
    for (std::size_t J = 0; J < transitionCount; ++J)
        d->emission.area[J] *= d->emission.barycenter[J];
    d->results = {};
}

bool LanqorOmegaExp::calcOmegaExp()
{
    d->results = {};
    const QString error = d->inputError();
    if (!error.isEmpty())
        return failWith(error);
    const auto results = experimentalIntensities::calculate(d->emission, d->refractiveIndex);
    if (!std::isfinite(results.arad + results.omega2 + results.omega4) || results.arad == 0.0)
        return failWith(tr("The areas, the barycentres or the refractive index are beyond all "
                           "measure; no result can be given."));
    d->results = results;
    emitProgress(tr(" -> (Experimental Omega) The experimental intensity parameters were "
                    "successfully calculated. \n"));
    return true;
}

OmegaExpResults LanqorOmegaExp::getResults() const
{
    OmegaExpResults results;
    if (d->results.arad == 0.0)
        return results;
    results.isCalculated = true;
    results.fileName = d->fileName;
    results.refractiveIndex = d->refractiveIndex;
    for (std::size_t J = 0; J < results.transitions.size(); ++J)
        results.transitions[J] = {d->emission.area[J], d->emission.barycenter[J],
                                  d->results.rate[J]};
    results.omega2 = d->results.omega2;
    results.omega4 = d->results.omega4;
    results.r02 = d->results.r02;
    results.arad = d->results.arad;
    results.lifeTime = d->lifeTime;
    if (d->lifeTime != 0.0) {
        const auto decay = experimentalIntensities::decay(d->results.arad, d->lifeTime);
        results.anrad = decay.anrad;
        results.quantumEfficiency = decay.efficiency;
    }
    return results;
}

QString LanqorOmegaExp::createOutputFile(const QString &outFile)
{
    const OmegaExpResults results = getResults();
    if (!results.isCalculated) {
        failWith(tr("There are no experimental intensity parameters to report; calculate them "
                    "first."));
        return QString();
    }
    if (!isMeasurable(results.lifeTime) || !std::isfinite(results.anrad) ||
        !std::isfinite(results.quantumEfficiency)) {
        failWith(tr("A lifetime of %1 ms cannot be; the report needs a positive one, or 0 for "
                    "none.")
                     .arg(results.lifeTime));
        return QString();
    }
    QString report = omegaExpReport(results);
    QString error;
    if (!outFile.isEmpty() && !LanqorOutputFile::write(outFile, report.toUtf8(), error)) {
        failWith(tr("The report %1 cannot be written: %2").arg(outFile, error));
        return QString();
    }
    return report;
}
