#pragma once

#include <QString>
#include <QStringList>

class LanqorResultTables;

namespace cli {

class OptionReader;

/// Prints the text of a result and writes its tables where --json and --csv say; where that is
/// standard output, in place of the text. The tables are preceded by a record "run" of program,
/// command and the files that were read.
void showResults(const OptionReader &options, const QString &text, const LanqorResultTables &tables,
                 const QStringList &inputFiles);

} // namespace cli
