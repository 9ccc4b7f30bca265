#include "core/title_p.h"

#include <QStringList>

namespace {

constexpr int titleWidth = 107;
constexpr int ruleIndent = 16;

QString centred(const QString &text)
{
    const int left = (titleWidth - text.size()) / 2;
    return (QString(left, QLatin1Char(' ')) + text).leftJustified(titleWidth);
}

} // namespace

QString makeReportTitle()
{
    const QString rule =
        QString(ruleIndent, QLatin1Char(' ')) + QString(titleWidth - ruleIndent, QLatin1Char('*'));
    const QStringList innerLines = {
        QString(),
        QStringLiteral("LanqorEngine"),
        QStringLiteral("Version " LANQOR_VERSION),
        QString(),
        QStringLiteral("Luminescence of Lanthanide Coordination Compounds"),
        QStringLiteral("by the LanqorEngine authors"),
        QString(),
        QStringLiteral(
            "B. R. Judd, Phys. Rev. 127, 750 (1962); G. S. Ofelt, J. Chem. Phys. 37, 511 (1962)"),
        QString(),
    };
    QString title = rule + QLatin1Char('\n');
    for (const QString &line : innerLines)
        title += centred(line) + QLatin1Char('\n');
    return title + rule + QLatin1Char('\n');
}
