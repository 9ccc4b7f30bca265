#pragma once

#include <QStringList>

struct RunReport;

namespace cli {

struct RunRequest;

/// The papers of the methods and programs that a run has used.
QStringList runCitations(const RunRequest &request, const RunReport &report);

} // namespace cli
