#pragma once

#include <QString>

struct SpectroscopicResults;
struct YieldInputs;

/// What "lanqor yield --explain" prints: the road from the intensity parameters to the yield in
/// sentences, with the numbers of @p results and what other @p inputs would give.
QString yieldExplanation(const SpectroscopicResults &results, const YieldInputs &inputs);
