#pragma once

#include "intensity/emissionSpectrum_p.h"

#include <QString>

namespace emissionSpectrum {

struct ReadResult
{
    Spectrum spectrum;
    QString error; ///< why the file holds no spectrum; empty when it does
};

/// Reads the table of a spectrum and tells its axis. or takes that which is asked for; the
/// form of the file is that of readSpectrumTable().
ReadResult readFile(const QString &fileName, EmissionSpectrumOptions::Axis axis);

} // namespace emissionSpectrum
