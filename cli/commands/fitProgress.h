#pragma once

#include <functional>

class LanqorFitStarts;

namespace cli {

struct FitOptions;

/// Exit status of a fit that Ctrl-C ended; its best point is reported all the same.
constexpr int interrupted = 130;

enum class FitEnd { Finished, Interrupted };

/// Runs the starts of a fit, several of them in threads, and shows their common progress on
/// standard error unless --quiet is given: one line with points, best misfit and time left that is
/// written over on a terminal, a new line every ten seconds otherwise.
///
/// Ctrl-C, SIGTERM and SIGHUP stop all starts after their current step; a second one ends the
/// program as usual. Stopped starts have not called endOfParametrization() of their fits: that is
/// left to the caller.
///
/// Throws a Failure when a start could not be made, or none that was has found a feasible point; a
/// start that breaks off later is warned of.
FitEnd runFits(LanqorFitStarts &starts, const FitOptions &options);

/// Calls @p work for 1 to @p count in as many threads as there are processors, with the signals
/// caught as above.
FitEnd runInThreads(int count, const std::function<void(int)> &work);

} // namespace cli
