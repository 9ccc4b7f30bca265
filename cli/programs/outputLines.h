#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace programs {

/// Hands each line of a file to @p take, without its end.
void forEachLine(const QString &fileName, const std::function<void(const QByteArray &)> &take);

/// Whether a line holds a number that is none: the word NaN or Infinity, in any case.
bool holdsNoNumber(const QByteArray &line);

} // namespace programs
