#pragma once

#include <LanqorEngine/StarkFitResults.h>

#include <QString>

QString starkFitReport(const StarkFitResults &results);
