#pragma once

#include <LanqorEngine/IndicesResults.h>

/// The table that ".indeces" files hold.
QString indicesTable(const IndicesResults &results);
