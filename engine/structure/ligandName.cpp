#include "structure/ligandName_p.h"

#include "core/elements_p.h"

#include <QMap>
#include <QRegularExpression>

namespace ligandName {

QString canonical(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("_[0-9]+$"));
    static const QRegularExpression whole(QStringLiteral("^([A-Z][a-z]?[0-9]{0,4})+$"));
    static const QRegularExpression part(QStringLiteral("([A-Z][a-z]?)([0-9]*)"));
    QString formula = text.simplified().remove(QLatin1Char(' '));
    formula.remove(number);
    if (!whole.match(formula).hasMatch())
        return text.trimmed();
    QMap<QString, int> counts;
    for (auto parts = part.globalMatch(formula); parts.hasNext();) {
        const QRegularExpressionMatch match = parts.next();
        counts[match.captured(1)] += match.captured(2).isEmpty() ? 1 : match.captured(2).toInt();
    }
    return hillFormula(counts);
}

} // namespace ligandName
