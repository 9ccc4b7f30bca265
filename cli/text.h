#pragma once

#include <QString>
#include <QStringList>

/// Words and numbers of the program's output, in the C locale.
namespace cli {

/// Translation of a text of the program.
QString tr(const char *text);

/// A number in fixed notation at the right end of a column.
QString column(double value, int decimals, int width);
/// The same with a power of ten, "1.23e+04".
QString powerColumn(double value, int decimals, int width);
QString column(int value, int width);
/// A yield, per cent: two decimals, below 1 % three digits that count.
QString textOfYield(double percent);

/// That of @p words which the fewest changes of a letter turn into @p word; empty when all are far
/// from it.
QString nearestWord(const QString &word, const QStringList &words);

} // namespace cli
