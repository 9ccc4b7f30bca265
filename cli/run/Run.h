#pragma once

#include "run/RunReport.h"
#include "run/RunRequest.h"

namespace cli {

class OptionReader;
class RunFolder;
class UncertainOptions;

/// How a run ended.
struct RunEnd
{
    int status = 0; ///< exit status
    RunReport report;
};

/// Does a run: checks what it is given, makes the folder, does the steps that are not done yet and
/// writes run.toml, summary.json, report.txt and report.html. What makes no run is thrown before
/// anything is written; a step that fails later is told in the report as well as thrown by
/// the caller.
/// @param settings  as typed, with the uncertain numbers, for the resolved file
RunEnd performRun(const OptionReader &reader, const OptionReader &settings,
                  const UncertainOptions &uncertain, const RunRequest &request);

/// The results of a run as a short table.
QString runSummary(const RunReport &report);

} // namespace cli
