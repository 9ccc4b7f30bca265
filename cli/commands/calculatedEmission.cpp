#include "commands/calculatedEmission.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/emissionOptions.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorEmissionCurve.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorStarkLevels.h>
#include <LanqorEngine/OmegaExpResults.h>
#include <LanqorEngine/OmegaResults.h>

namespace cli {

namespace {

constexpr double nmTimesWavenumber = 1e7; // of nm and cm^-1
constexpr double smallestWidth = 1.0;     // cm^-1
constexpr double largestWidth = 1000.0;

QVector<StarkResults::Manifold> manifoldsOf(LanqorInputData &geometry, const OmegaResults &results)
{
    QVector<double> chargeFactors(2, 0.0); // by atom number
    for (const OmegaResults::Atom &atom : results.atoms)
        chargeFactors.append(atom.chargeFactor);
    LanqorStarkLevels levels(&geometry, results.atoms.size());
    levels.setChargeFactors(chargeFactors);
    levels.setRO0(results.crystalFieldOverlap);
    levels.setReducedElements(ReducedElements::Signed);
    levels.calculateStarkLevels();
    if (!levels.getLastError().isEmpty())
        throw Failure{levels.getLastError()};
    return levels.getResults().manifolds;
}

} // namespace

void addEmissionOptions(OptionReader &options)
{
    options.addOptions({
        {QStringLiteral("plot-emission"),
         tr("Draw the emission spectrum of the calculated rates (.svg, .png or .pdf): each band "
            "split by the crystal field at --ro0, with equal shares of the Stark levels."),
         QStringLiteral("picture")},
        {QStringLiteral("emission-width"),
         tr("Full width at half maximum of each of its lines, cm^-1, 1 to 1000. With --json or "
            "--csv the curve is among the results even without a picture."),
         tr("cm^-1"), QStringLiteral("60")},
        {QStringLiteral("spectrum"),
         tr("Measured emission spectrum to draw with it, of two columns, wavelength or wavenumber "
            "and intensity; scaled to the same area of 5D0 -> 7F1."),
         tr("file")},
        photonCountsOption(),
    });
}

EmissionRequest readEmissionRequest(const OptionReader &options)
{
    EmissionRequest request;
    request.plotFile = plots::readOption(options, "plot-emission");
    request.measuredFile = options.text("spectrum");
    request.isWanted = !request.plotFile.isEmpty() || options.isSet("emission-width");
    request.countsPhotons = options.isSet("photon-counts");
    request.width = options.number(
        "emission-width",
        [](double width) { return width >= smallestWidth && width <= largestWidth; },
        tr("a width from 1 to 1000 cm^-1"));
    if (options.isSet("spectrum") && !request.isWanted)
        options.refuse(tr("--spectrum belongs to --plot-emission or --emission-width"));
    if (request.countsPhotons && request.measuredFile.isEmpty())
        options.refuse(tr("--photon-counts belongs to --spectrum"));
    if (!request.measuredFile.isEmpty())
        requireFile(QStringLiteral("--spectrum "), request.measuredFile,
                    tr("a text file of two columns, wavelength or wavenumber and intensity"));
    return request;
}

EmissionSpectrum::EmissionSpectrum(const EmissionRequest &request, LanqorInputData &geometry,
                                   const OmegaResults &results)
    : request(request)
    , calculated(LanqorEmissionCurve::calculate(results.rates, manifoldsOf(geometry, results),
                                                request.width))
{
    if (!request.measuredFile.isEmpty())
        readMeasured();
}

void EmissionSpectrum::readMeasured()
{
    EmissionSpectrumOptions options;
    if (request.countsPhotons)
        options.signal = EmissionSpectrumOptions::Signal::PhotonCounts;
    LanqorOmegaExp spectrum(nullptr, 1.0); // the areas do not depend on the refractive index
    showMessages(spectrum);
    if (!spectrum.readSpectrum(request.measuredFile, options) || !spectrum.calcOmegaExp())
        failOf(spectrum);
    const OmegaExpResults results = spectrum.getResults();
    double area = 0.0; // of the power in 5D0 -> 7F1; a Gaussian has the mean energy of its line
    for (const CalculatedEmission::Line &line : calculated.lines)
        if (line.J == 1)
            area += line.share * line.energy / calculated.powerScale;
    const double scale = area / results.transitions[1].area;
    const bool isWavelength =
        results.source.options.axis == EmissionSpectrumOptions::Axis::Nanometre;
    for (int i = 0; i < results.spectrum.abscissa.size(); ++i) {
        const double x = results.spectrum.abscissa.at(i);
        const double wavelength = isWavelength ? x : nmTimesWavenumber / x;
        const double wavenumber = nmTimesWavenumber / wavelength;
        const double perNm = isWavelength ? 1.0 : wavenumber / wavelength;
        const double energy = request.countsPhotons ? wavenumber : 1.0;
        measured.append({wavelength, scale * results.spectrum.signal.at(i) * perNm * energy});
    }
}

void EmissionSpectrum::addTables(LanqorResultTables &tables) const
{
    tables.append(LanqorEmissionCurve::makeTables(calculated));
    if (measured.isEmpty())
        return;
    QVector<QVector<QVariant>> rows;
    for (const QPointF &point : measured)
        rows.append({point.x(), point.y()});
    tables.addTable(QStringLiteral("measured_emission"),
                    {{QStringLiteral("wavelength"), QStringLiteral("nm")},
                     {QStringLiteral("power_per_wavelength"), QStringLiteral("1")}},
                    rows);
}

void EmissionSpectrum::draw(const QString &title) const
{
    if (!request.plotFile.isEmpty())
        plots::draw(calculated, measured, title, request.plotFile);
}

} // namespace cli
