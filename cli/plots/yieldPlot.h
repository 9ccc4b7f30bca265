#pragma once

#include "plots/plots.h"

struct SpectroscopicResults;
struct YieldInputs;

/// Ligand states, levels of Eu3+ and the open channels between them; beside them the yield
/// against the energy of the donor triplet.
/// @param inputs  of @p results
plots::LevelDiagram yieldDiagram(const SpectroscopicResults &results, const YieldInputs &inputs);
