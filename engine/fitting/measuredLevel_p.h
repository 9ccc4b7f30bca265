#pragma once

#include <LanqorEngine/EnergyLevelsExp.h>

/// All that the label of a measured level tells, which is everything but its energy.
EnergyLevelsExp measuredLevel(const QString &label);
