#pragma once

#include <LanqorEngine/LevelsFitResults.h>

#include <QString>

/// Parameters, measured and computed levels and their rms difference.
QString levelsFitSummary(const LevelsFitResults &results);
