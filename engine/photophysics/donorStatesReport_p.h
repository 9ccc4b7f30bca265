#pragma once

#include <LanqorEngine/DonorStatesResults.h>

/// The report of LanqorRL: energies, wavelengths, oscillator strengths and RL of all states.
QString donorStatesReport(const DonorStatesResults &results);
