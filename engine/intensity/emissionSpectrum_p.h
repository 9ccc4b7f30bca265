#pragma once

#include "input/emissionSpectrumReader_p.h"

#include <LanqorEngine/EmissionSpectrumOptions.h>
#include <LanqorEngine/OmegaExpResults.h>

/// Areas and barycentres of the bands of a measured spectrum.
namespace emissionSpectrum {

struct Band
{
    enum class Coverage { Whole, Part, None };
    double area = 0.0;       ///< may be negative where noise or baseline exceed the band
    double barycenter = 0.0; ///< cm^-1; 0 when the area is not positive
    Coverage coverage = Coverage::None;
    /// Signal less baseline, in the unit of the recorded intensity: its highest, and the mean over
    /// the outermost hundredth of the band at that end where it is larger.
    double peak = 0.0;
    double edge = 0.0;
    OmegaExpResults::Spectrum::Baseline baseline;
};

/// Area and barycentre of the band in @p window by the trapezoidal rule, with s = 1e7/lambda for a
/// wavelength axis:
///     S = integral of I(x) w(x) dx,   sigma = integral of s(x) I(x) w(x) dx / S
/// along the axis x on which the spectrum was recorded; w = 1 for emitted power, w = s for
/// photon counts. A power does not depend on the axis: with I(s) = I(lambda) lambda^2/1e7 the
/// same spectrum along wavenumbers has the same area and barycentre. Wavelengths are taken as
/// those of vacuum (air shifts a barycentre by about 5 cm^-1).
/// @param spectrum  of at least two points
Band integrate(const Spectrum &spectrum, const EmissionSpectrumOptions::Window &window,
               EmissionSpectrumOptions::Signal signal, EmissionSpectrumOptions::Baseline baseline);

} // namespace emissionSpectrum
