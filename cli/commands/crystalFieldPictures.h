#pragma once

#include "plots/plots.h"

#include <LanqorEngine/CrystalFieldResults.h>

#include <QVector>

namespace cli {

/// Terms without spin-orbit interaction, levels of the free ion, Stark levels, and measured ones
/// beside them, up to @p maximumEnergy (cm^-1).
plots::LevelDiagram starkDiagram(const CrystalFieldResults &results,
                                 const QVector<CrystalFieldResults::MeasuredLevel> &measured,
                                 double maximumEnergy);
/// Energy of the highest level of the ground term with some room above; that of the usual spectra
/// for a term of one level.
double topOfGroundTerm(const CrystalFieldResults &results);
/// chi T against T: mean, along the axes, and of Eu3+ Van Vleck's formula.
plots::CurvePlot susceptibilityPlot(const CrystalFieldResults &results);

} // namespace cli
