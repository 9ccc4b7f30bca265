#pragma once

#include <LanqorEngine/EmissionSpectrumOptions.h>

#include <QCommandLineOption>
#include <QList>

/// Options on how a measured emission spectrum is integrated.
namespace cli {

class OptionReader;

/// The option --photon-counts.
QCommandLineOption photonCountsOption();
/// The options --axis, --windows and --baseline.
QList<QCommandLineOption> integrationOptions();
/// What they say.
EmissionSpectrumOptions readSpectrumOptions(const OptionReader &options);

} // namespace cli
