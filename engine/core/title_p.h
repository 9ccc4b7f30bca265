#pragma once

#include <QString>

/// The banner that heads every report: eleven lines of 107 characters, each with a line break.
QString makeReportTitle();
