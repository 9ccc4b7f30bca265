#include "input/emissionSpectrumReader_p.h"

#include "input/spectrumTable_p.h"

#include <QCoreApplication>

namespace emissionSpectrum {

namespace {

/// Between the wavelengths, nm, and the wavenumbers, cm^-1, of any visible spectrum.
constexpr double axisLimit = 5000.0;

/// Sets the axis that is asked for, or tells it by the values; false when they are of none.
bool chooseAxis(EmissionSpectrumOptions::Axis asked, const std::vector<double> &ascending,
                Spectrum::Axis &axis)
{
    using Axis = EmissionSpectrumOptions::Axis;
    const bool areWavelengths = ascending.back() < axisLimit;
    const bool areWavenumbers = ascending.front() > axisLimit;
    if (asked == Axis::Wavenumber || (asked == Axis::Automatic && areWavenumbers))
        axis = Spectrum::Axis::Wavenumber;
    else
        axis = Spectrum::Axis::Nanometre;
    return ascending.front() > 0.0 &&
           (asked != Axis::Automatic || areWavelengths || areWavenumbers);
}

} // namespace

ReadResult readFile(const QString &fileName, EmissionSpectrumOptions::Axis axis)
{
    ReadResult result;
    SpectrumTable table = readSpectrumTable(fileName);
    result.error = table.error;
    if (!result.error.isEmpty())
        return result;
    if (!chooseAxis(axis, table.x, result.spectrum.axis)) {
        result.error =
            QCoreApplication::translate(
                "emissionSpectrum", "%1: the first column runs from %2 to %3; wavelengths in nm or "
                                    "wavenumbers in cm^-1 are needed.")
                .arg(fileName, QString::number(table.x.front()), QString::number(table.x.back()));
        return result;
    }
    result.spectrum.abscissa = std::move(table.x);
    result.spectrum.intensity = std::move(table.y);
    return result;
}

} // namespace emissionSpectrum
