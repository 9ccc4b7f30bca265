#pragma once

#include <LanqorEngine/SpectroscopicResults.h>

/// Sentences on what makes a result doubtful: donor states in an order that the kinetic scheme
/// does not know, transfer uphill, rates that no molecule has, a lifetime above the radiative one.
QStringList spectroscopicWarnings(const SpectroscopicResults &results);

/// The greatest loss of photons in words; empty without populations.
QString limitingStepText(const SpectroscopicResults &results);
