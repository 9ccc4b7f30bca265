#include "fuzzFile.h"

#include <LanqorEngine/LanqorOmegaExp.h>

#include <cmath>

/// Measured emission spectra: what is read can be integrated, and a report holds no infinity.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    EmissionSpectrumOptions options;
    if (size % 2 == 0)
        options.baseline = EmissionSpectrumOptions::Baseline::Linear;
    if (size % 3 == 0)
        options.signal = EmissionSpectrumOptions::Signal::PhotonCounts;
    LanqorOmegaExp calculation(nullptr, 1.5);
    if (calculation.readSpectrum(file.path(), options) != calculation.getLastError().isEmpty())
        std::abort();
    if (!calculation.calcOmegaExp())
        return 0;
    const QString report = calculation.createOutputFile(QString());
    const bool isSound = std::isfinite(calculation.getAradExp()) &&
                         !report.contains(QLatin1String("= inf")) &&
                         !report.contains(QLatin1String("= nan"));
    if (!isSound)
        std::abort();
    return 0;
}
