#pragma once

#include <LanqorEngine/EmissionSpectrumOptions.h>

#include <QString>

#include <vector>

namespace emissionSpectrum {

/// A recorded spectrum, the abscissa strictly ascending.
struct Spectrum
{
    enum class Axis { Nanometre, Wavenumber };
    Axis axis = Axis::Nanometre;
    std::vector<double> abscissa;
    std::vector<double> intensity; ///< per unit of the abscissa
};

struct ReadResult
{
    Spectrum spectrum;
    QString error; ///< why the file holds no spectrum; empty when it does
};

/// Reads the table of a spectrum and tells its axis. or takes that which is asked for; the
/// form of the file is that of readSpectrumTable().
ReadResult readFile(const QString &fileName, EmissionSpectrumOptions::Axis axis);

} // namespace emissionSpectrum
