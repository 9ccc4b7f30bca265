#include "LanqorOmegaExp.h"

#include "core/physicalConstants_p.h"
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

/// A spectrum must reach these transitions.
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

    QStringList misplacedBarycentres() const;
    QStringList overlappingWindows() const;
    QStringList signalsAtEdges() const;

    QString fileName;
    experimentalIntensities::Emission emission;
    OmegaExpResults::Source source;
    OmegaExpResults::Spectrum spectrum;
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
        if (atLevel(emission.barycenter, J) == 0.0 && atLevel(emission.area, J) != 0.0)
            return LanqorOmegaExp::tr("The barycentre of %1 is 0; it is needed in cm^-1.")
                .arg(transitionName(J));
    }
    return QString();
}

QStringList LanqorOmegaExpPrivate::misplacedBarycentres() const
{
    QStringList warnings;
    const EmissionSpectrumOptions usual;
    for (int J = 0; J < transitionCount; ++J) {
        const EmissionSpectrumOptions::Window &window = usual.windows[static_cast<std::size_t>(J)];
        const double sigma = atLevel(emission.barycenter, J);
        if (atLevel(emission.area, J) > 0.0 && (sigma < window.lowest || sigma > window.highest))
            warnings << LanqorOmegaExp::tr("the barycentre of %1, %2 cm^-1, lies outside the usual "
                                           "place of this band, %3 to %4 cm^-1")
                            .arg(transitionName(J), QString::number(sigma, 'f', 0),
                                 QString::number(window.lowest, 'f', 0),
                                 QString::number(window.highest, 'f', 0));
    }
    return warnings;
}

QStringList LanqorOmegaExpPrivate::overlappingWindows() const
{
    QStringList warnings;
    const auto &windows = source.options.windows;
    for (int J = 0; J < transitionCount; ++J) {
        for (int other = J + 1; other < transitionCount; ++other) {
            const auto &a = windows[static_cast<std::size_t>(J)];
            const auto &b = windows[static_cast<std::size_t>(other)];
            const double lowest = std::max(a.lowest, b.lowest);
            const double highest = std::min(a.highest, b.highest);
            if (lowest < highest)
                warnings << LanqorOmegaExp::tr("the windows of %1 and %2 overlap: the emission "
                                               "from %3 to %4 cm^-1 counts for both")
                                .arg(transitionName(J), transitionName(other),
                                     QString::number(lowest, 'f', 0),
                                     QString::number(highest, 'f', 0));
        }
    }
    return warnings;
}

QStringList LanqorOmegaExpPrivate::signalsAtEdges() const
{
    constexpr double largestSignal = 0.005; // of the highest peak
    QStringList bands;
    for (int J = 0; J < transitionCount; ++J) {
        const double signal = atLevel(source.edgeSignals, J);
        if (signal > largestSignal)
            bands << QStringLiteral("%1 (%2 %)")
                         .arg(transitionName(J), QString::number(100.0 * signal, 'f', 1));
    }
    if (bands.isEmpty())
        return bands;
    return {LanqorOmegaExp::tr("the signal at an edge of the windows of %1 exceeds 0.5 % of the "
                               "highest peak: a background, which has to be subtracted, or a "
                               "window that cuts a band; a flat background of 1 % can make "
                               "Omega(4) a fifth too high and Omega(2) a third too low")
                .arg(bands.join(QStringLiteral(", ")))};
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
    d->source = {};
    d->spectrum = {};
    d->source.givenAreas = d->emission.area;
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

QString LanqorOmegaExp::getBarycentreError() const
{
    constexpr double lowest = 5000.0; // cm^-1
    for (int J = 0; J < transitionCount; ++J) {
        const double sigma = getBarycenterOfEnergy(J);
        if (sigma > 0.0 && sigma < lowest)
            return tr("The barycentre of %1 is %2: barycentres are needed in cm^-1, and a "
                      "wavelength of %2 nm is %3 cm^-1.")
                .arg(transitionName(J), QString::number(sigma),
                     QString::number(lanqor::nmPerCm / sigma, 'f', 1));
    }
    return QString();
}

QStringList LanqorOmegaExp::getWarnings() const
{
    QStringList warnings = d->misplacedBarycentres();
    if (d->source.isSpectrum)
        warnings += d->overlappingWindows() + d->signalsAtEdges();
    return warnings;
}

double LanqorOmegaExp::getRate(const int &J) const
{
    return atLevel(d->results.rate, J);
}

double LanqorOmegaExp::getBranchingRatio(const int &J) const
{
    constexpr double percent = 100.0;
    return d->results.arad == 0.0 ? 0.0 : percent * getRate(J) / d->results.arad;
}

double LanqorOmegaExp::getRadiativeLifeTime() const
{
    constexpr double msPerSecond = 1000.0;
    return d->results.arad == 0.0 ? 0.0 : msPerSecond / d->results.arad;
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
    OmegaExpResults::Source source;
    source.isSpectrum = true;
    OmegaExpResults::Spectrum spectrum;
    for (const double x : file.spectrum.abscissa)
        spectrum.abscissa.append(x);
    for (const double signal : file.spectrum.intensity)
        spectrum.signal.append(signal);
    source.options = options;
    source.options.axis = file.spectrum.axis == emissionSpectrum::Spectrum::Axis::Nanometre
                              ? EmissionSpectrumOptions::Axis::Nanometre
                              : EmissionSpectrumOptions::Axis::Wavenumber;
    double highestPeak = 0.0;
    QStringList remarks;
    for (int J = 0; J < transitionCount; ++J) {
        const auto level = static_cast<std::size_t>(J);
        const EmissionSpectrumOptions::Window &window = options.windows[level];
        const Band band =
            emissionSpectrum::integrate(file.spectrum, window, options.signal, options.baseline);
        if (isIndispensable(J) && band.coverage == Band::Coverage::None)
            return failWith(tr("%1: the spectrum does not reach the window of %2, %3 to %4 cm^-1.")
                                .arg(fileName, transitionName(J),
                                     QString::number(window.lowest, 'f', 0),
                                     QString::number(window.highest, 'f', 0)));
        if (band.coverage == Band::Coverage::None)
            remarks
                << tr("%1 lies outside the spectrum and counts as absent").arg(transitionName(J));
        else if (band.coverage == Band::Coverage::Part)
            remarks << tr("the spectrum ends within the window of %1").arg(transitionName(J));
        highestPeak = std::max(highestPeak, band.peak);
        source.edgeSignals[level] = band.edge;
        spectrum.baselines[level] = band.baseline;
        if (band.area > 0.0) {
            emission.area[level] = band.area;
            emission.barycenter[level] = band.barycenter;
        } else if (band.coverage != Band::Coverage::None) {
            remarks << tr("%1 has no positive area and counts as absent").arg(transitionName(J));
        }
    }
    for (double &edge : source.edgeSignals)
        edge = highestPeak > 0.0 ? edge / highestPeak : 0.0;
    source.givenAreas = emission.area;
    d->emission = emission;
    d->source = source;
    d->spectrum = spectrum;
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
    d->source = {};
    d->spectrum = {};
    d->source.givenAreas = table.area;
    d->results = {};
    d->fileName = fileName;
    return true;
}

void LanqorOmegaExp::convertPhotonCounts()
{
    for (std::size_t J = 0; J < transitionCount; ++J)
        if (d->emission.barycenter[J] != 0.0)
            d->emission.area[J] *= d->emission.barycenter[J];
    d->source.options.signal = EmissionSpectrumOptions::Signal::PhotonCounts;
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
    for (int J = 0; J < transitionCount; ++J) {
        const auto level = static_cast<std::size_t>(J);
        results.transitions[level] = {getAreaOfTransition(J), getBarycenterOfEnergy(J), getRate(J)};
        results.branchingRatios[level] = getBranchingRatio(J);
    }
    results.source = d->source;
    results.spectrum = d->spectrum;
    results.radiativeLifeTime = getRadiativeLifeTime();
    results.warnings = getWarnings();
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
