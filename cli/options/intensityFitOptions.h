#pragma once

#include "options/fitOptions.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QCommandLineOption>
#include <QList>
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
    double deviation2 = 0.0; ///< standard deviations; 0: not told, for both then
    double deviation4 = 0.0;
    QVector<double> weights; ///< of --weights, or from the deviations; empty: those of the fit
    double refractiveIndex = 1.5;
    int coordNumber = 0;
    QString report; ///< empty: standard output
    OmegaPrintingOptions sections;
    QStringList ligands;
    QString excited;         ///< output with the donor states; empty: no yields
    double lifetimeMs = 0.0; ///< measured, of 5D0; 0: estimated
    QString solutions;       ///< file of --solutions
    QString choice;          ///< "best", "central" or a number
    FitOptions fit;
};

/// Starts of a fit that is polished.
constexpr int intensityFitStarts = 20;

/// The options --omega2 and --omega4.
QList<QCommandLineOption> intensityTargetOptions();
/// Reads them, each with its standard deviation or without, and the weights that follow.
void readIntensityTargets(const OptionReader &reader, IntensityFitOptions &options);

void addIntensityFitOptions(OptionReader &reader);
/// Reads the options, the geometry of the file and its coordination number.
IntensityFitOptions readIntensityFitOptions(const OptionReader &reader);

} // namespace cli
