#pragma once

#include <QString>

struct OmegaExpResults;

/// Text of the report of experimental intensity parameters.
QString omegaExpReport(const OmegaExpResults &results);
