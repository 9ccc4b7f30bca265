#pragma once

#include <vector>

class LanqorGSA;

namespace cli {

/// Exit status of a fit that Ctrl-C ended; its best point is reported all the same.
constexpr int interrupted = 130;

enum class FitEnd { Finished, Interrupted };

/// Runs the annealings, several of them in threads, and shows their common progress on standard
/// error: a bar with rate and best response on a terminal, a plain line every tenth otherwise.
///
/// Ctrl-C and SIGTERM stop all runs after their current step; a second one ends the program as
/// usual. An annealing that was stopped has not called endOfParametrization() of its target:
/// that is left to the caller, who knows the best of several targets.
///
/// Every annealing must be constructed before this call, for a constructor clears the flag that
/// stops the others.
///
/// Throws a Failure when an annealing fails.
FitEnd runFits(const std::vector<LanqorGSA *> &annealings);

} // namespace cli
