#pragma once

#include <QString>

class LanqorResultTables;

namespace cli {

class OptionReader;

/// Prints the text of a result and writes its tables where --json and --csv say; where that is
/// standard output, in place of the text. The tables stand between what tells how they came about:
/// a record "run" of program and command line before them, and behind them the options in force,
/// the arguments, the files that were read, and the physical constants.
void showResults(const OptionReader &options, const QString &text,
                 const LanqorResultTables &tables);
/// The same with these tables alone.
void showTables(const OptionReader &options, const QString &text, const LanqorResultTables &tables);

} // namespace cli
