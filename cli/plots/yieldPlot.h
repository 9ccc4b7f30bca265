#pragma once

#include "plots/plots.h"

class LanqorSpectroscopicCalculation;
namespace yieldOptions {
struct Request;
}

/// Ligand states, levels of Eu3+ and the open channels between them, after a calculation.
plots::LevelDiagram yieldDiagram(const LanqorSpectroscopicCalculation &calculation,
                                 const yieldOptions::Request &request);
