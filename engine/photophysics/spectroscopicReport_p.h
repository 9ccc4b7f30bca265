#pragma once

#include <LanqorEngine/SpecPrintingOptions.h>
#include <LanqorEngine/SpectroscopicResults.h>

#include <QString>

/// The texts of the reports on rates, populations and the quantum yield.
namespace spectroscopicReport {

/// From the intensity parameters to the radiative rate.
QString transferReport(const SpectroscopicResults &results, const SpecPrintingOptions &options);
/// From the non-radiative rate to the quantum yield.
QString populationReport(const SpectroscopicResults &results, const SpecPrintingOptions &options);

} // namespace spectroscopicReport
