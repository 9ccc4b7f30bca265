#pragma once

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QString>

#include <memory>

namespace cli {

class OptionReader;

/// What the fits to measured intensity parameters are asked for.
struct IntensityFitOptions
{
    QString fileName;
    std::unique_ptr<LanqorInputData> geometry; ///< read, with its spherical coordinates
    double omega2 = 0.0;                       ///< 1e-20 cm^2
    double omega4 = 0.0;
    double refractiveIndex = 1.5;
    int coordNumber = 0;
    int stepsPerCycle = 15000;
    int starts = 1;
    QString report; ///< empty: standard output
    OmegaPrintingOptions sections;
};

void addIntensityFitOptions(OptionReader &reader);
/// Reads the options, the geometry of the file and its coordination number.
IntensityFitOptions readIntensityFitOptions(const OptionReader &reader);

} // namespace cli
