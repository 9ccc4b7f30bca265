#pragma once

#include "plots/plots.h"

struct SpectroscopicResults;

/// Ligand states, levels of Eu3+ and the open channels between them.
plots::LevelDiagram yieldDiagram(const SpectroscopicResults &results);
