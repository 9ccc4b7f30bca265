#pragma once

#include <vector>

/// The first @p count points of a scrambled Sobol sequence, one after another, with coordinates
/// between 0 and 1, ends excluded. Always the same; @p count is best a power of two.
std::vector<double> scrambledSobol(int count, int dimension);
