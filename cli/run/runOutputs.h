#pragma once

#include <LanqorEngine/LanqorResultTables.h>

#include <QByteArray>
#include <QString>

struct RunReport;

// The three files that tell of a run, each a function of its record alone. What a run did not come
// to is left out, and said to be missing.

/// report.html: one page that needs nothing beside it, neither a network nor another file (UTF-8).
QByteArray makeRunPage(const RunReport &report);

/// report.txt: the same to be read as text.
QString makeRunText(const RunReport &report);

/// summary.json: record "run_state" with state and reason, "main_results" with the limits of each
/// quantity, tables of steps, inputs and texts, and the parts of all results. Parts of one name
/// that several calculations have bear the calculation's word in front ("omega_atoms").
LanqorResultTables makeRunTables(const RunReport &report);
