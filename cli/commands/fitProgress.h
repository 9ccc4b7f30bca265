#pragma once

class LanqorFitStarts;

namespace cli {

/// Exit status of a fit that Ctrl-C ended; its best point is reported all the same.
constexpr int interrupted = 130;

enum class FitEnd { Finished, Interrupted };

/// Runs the starts of a fit, several of them in threads, and shows their common progress on
/// standard error: a bar with rate and best response on a terminal, a plain line every tenth
/// otherwise.
///
/// Ctrl-C and SIGTERM stop all starts after their current step; a second one ends the program as
/// usual. Stopped starts have not called endOfParametrization() of their fits: that is left to
/// the caller.
///
/// Throws a Failure when a start could not be made or fails.
FitEnd runFits(LanqorFitStarts &starts);

} // namespace cli
