#pragma once

#include <QString>

struct SpectroscopicResults;

/// What "lanqor yield" prints.
QString yieldTables(const SpectroscopicResults &results);
