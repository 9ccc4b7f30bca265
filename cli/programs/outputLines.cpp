#include "programs/outputLines.h"

#include <QFile>
#include <QRegularExpression>

namespace programs {

void forEachLine(const QString &fileName, const std::function<void(const QByteArray &)> &take)
{
    constexpr qint64 longest = 65536; // bytes; a longer one comes in pieces
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    while (!file.atEnd()) {
        QByteArray line = file.readLine(longest);
        while (line.endsWith('\n') || line.endsWith('\r'))
            line.chop(1);
        take(line);
    }
}

bool holdsNoNumber(const QByteArray &line)
{
    static const QRegularExpression word(QStringLiteral("(^|[\\s=+-])(nan|inf|infinity)(\\s|$)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QByteArray lower = line.toLower();
    return (lower.contains("nan") || lower.contains("inf")) &&
           word.match(QString::fromUtf8(line)).hasMatch();
}

} // namespace programs
