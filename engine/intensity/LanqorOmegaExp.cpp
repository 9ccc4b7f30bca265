#include "LanqorOmegaExp.h"

#include "core/reportText_p.h"
#include "intensity/emissionSpectrumReader_p.h"
#include "intensity/experimentalIntensities_p.h"
#include "intensity/omegaExpReport_p.h"

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

LanqorOmegaExp::LanqorOmegaExp(QObject *parent, const double &refractiveIndex)
    : LanqorAbstractObjCalculation(parent)
    , refractiveIndex(refractiveIndex)
{}

LanqorOmegaExp::~LanqorOmegaExp() = default;

void LanqorOmegaExp::setAreaOfTransition(const double &S0, const double &S1, const double &S2,
                                         const double &S3, const double &S4, const double &S5)
{
    area = {S0, S1, S2, S3, S4, S5};
    forgetResults();
}

void LanqorOmegaExp::setBarycenterOfEnergy(const double &sigma0, const double &sigma1,
                                           const double &sigma2, const double &sigma3,
                                           const double &sigma4, const double &sigma5)
{
    barycenter = {sigma0, sigma1, sigma2, sigma3, sigma4, sigma5};
    forgetResults();
}

void LanqorOmegaExp::setLifeTime(const double &lifeTime)
{
    this->lifeTime = lifeTime;
}

void LanqorOmegaExp::setFileName(const QString &fileName)
{
    this->fileName = fileName;
}

double LanqorOmegaExp::getAreaOfTransition(const int &J) const
{
    return atLevel(area, J);
}

double LanqorOmegaExp::getBarycenterOfEnergy(const int &J) const
{
    return atLevel(barycenter, J);
}

bool LanqorOmegaExp::readSpectrum(const QString &fileName, const EmissionSpectrumOptions &options)
{
    if (!areWindowsValid(options))
        return failWith(tr("The windows of the bands need positive limits, cm^-1, the lower one "
                           "first."));
    const emissionSpectrum::ReadResult file = emissionSpectrum::readFile(fileName, options.axis);
    if (!file.error.isEmpty())
        return failWith(file.error);

    std::array<double, 6> newArea{};
    std::array<double, 6> newBarycenter{};
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
            newArea[level] = band.area;
            newBarycenter[level] = band.barycenter;
        } else if (band.coverage != Band::Coverage::None) {
            // The formulas ask for a barycentre of 7F2 and 7F4 even where these are absent.
            if (isIndispensable(J))
                newBarycenter[level] = 0.5 * (window.lowest + window.highest);
            remarks << tr("%1 has no positive area and counts as absent").arg(transitionName(J));
        }
    }
    area = newArea;
    barycenter = newBarycenter;
    forgetResults();
    this->fileName = fileName;
    for (const QString &remark : remarks)
        emitProgress(tr(" -> (Experimental Omega) ") + remark + QStringLiteral(". \n"));
    return true;
}

QString LanqorOmegaExp::inputError() const
{
    if (!(std::isfinite(refractiveIndex) && refractiveIndex > 0.0))
        return tr("The refractive index must be positive.");
    for (int J = 0; J < transitionCount; ++J) {
        if (!isMeasurable(getAreaOfTransition(J)) || !isMeasurable(getBarycenterOfEnergy(J)))
            return tr("Area and barycentre of %1 must not be negative.").arg(transitionName(J));
    }
    if (getAreaOfTransition(1) == 0.0)
        return tr("The area of 5D0 -> 7F1 is 0; without this transition, which calibrates the "
                  "others, there is no result.");
    for (int J = 0; J < transitionCount; ++J) {
        if (getBarycenterOfEnergy(J) == 0.0 &&
            (isIndispensable(J) || getAreaOfTransition(J) != 0.0))
            return tr("The barycentre of %1 is 0; it is needed in cm^-1.").arg(transitionName(J));
    }
    return QString();
}

void LanqorOmegaExp::forgetResults()
{
    omega2Exp = omega4Exp = r02 = aradExp = 0.0;
}

bool LanqorOmegaExp::calcOmegaExp()
{
    forgetResults();
    const QString error = inputError();
    if (!error.isEmpty())
        return failWith(error);
    const auto results = experimentalIntensities::calculate({area, barycenter}, refractiveIndex);
    if (!std::isfinite(results.arad + results.omega2 + results.omega4) || results.arad == 0.0)
        return failWith(tr("The areas, the barycentres or the refractive index are beyond all "
                           "measure; no result can be given."));
    omega2Exp = results.omega2;
    omega4Exp = results.omega4;
    r02 = results.r02;
    aradExp = results.arad;
    emitProgress(tr(" -> (Experimental Omega) The experimental intensity parameters were "
                    "successfully calculated. \n"));
    return true;
}

QString LanqorOmegaExp::createOutputFile(const QString &outFile)
{
    if (aradExp == 0.0) {
        failWith(tr("There are no experimental intensity parameters to report; calculate them "
                    "first."));
        return QString();
    }
    if (!isMeasurable(lifeTime) ||
        (lifeTime > 0.0 &&
         !experimentalIntensities::isFinite(experimentalIntensities::decay(aradExp, lifeTime)))) {
        failWith(tr("A lifetime of %1 ms cannot be; the report needs a positive one, or 0 for "
                    "none.")
                     .arg(lifeTime));
        return QString();
    }
    QString report = omegaExpReport(*this);
    QString error;
    if (!outFile.isEmpty() && !reportText::writeFile(outFile, report, error)) {
        failWith(tr("The report %1 cannot be written: %2").arg(outFile, error));
        return QString();
    }
    return report;
}
