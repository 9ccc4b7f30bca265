#include "LanqorSpectroscopicTermUtil.h"

#include <cmath>

namespace LanqorSpectroscopicTermUtil {

namespace {

/// A number truncated toward zero; 0 for what is no number or far too large.
int truncatedNumber(const QString &text)
{
    constexpr double limit = 1e9;
    const double value = text.toDouble();
    return std::abs(value) < limit ? static_cast<int>(value) : 0;
}

/// 0 for what is no finite number.
double number(const QString &text)
{
    const double value = text.toDouble();
    return std::isfinite(value) ? value : 0.0;
}

/// Where J begins in the label of a level.
int positionOfJ(const QString &label)
{
    const int closing = label.indexOf(QLatin1Char(')'));
    return closing >= 0 ? closing + 1 : 2;
}

} // namespace

const QStringList termLetterList =
    QStringLiteral("S P D F G H I K L M N O Q").split(QLatin1Char(' '));

bool isSameTerm(const SpectroscopicTerm &a, const SpectroscopicTerm &b)
{
    return a.S == b.S && a.L == b.L && a.termIndex == b.termIndex;
}

SpectroscopicTerm termFromLabel(const QString &label, const bool &withJ)
{
    SpectroscopicTerm term;
    term.S = (number(label.mid(0, 1)) - 1.0) * 0.5;
    term.L = termLetterList.indexOf(label.mid(1, 1));
    if (!withJ) {
        term.termIndex = truncatedNumber(label.mid(2));
        return term;
    }
    if (label.contains(QLatin1Char('(')))
        term.termIndex = label.mid(3, 1).toInt();
    term.J = number(label.mid(positionOfJ(label)));
    return term;
}

QString textOfJ(const double &J)
{
    const int twice = static_cast<int>(2.0 * J);
    return twice % 2 == 0 ? QString::number(twice / 2) : QStringLiteral("%1/2").arg(twice);
}

QString textOfLevel(const QString &label)
{
    return label.left(positionOfJ(label)) + textOfJ(termFromLabel(label, true).J);
}

bool parseJ(const QString &text, double &J)
{
    constexpr double limit = 100.0;
    const QStringList parts = text.split(QLatin1Char('/'));
    bool isNumber = false;
    J = parts.at(0).toDouble(&isNumber);
    if (parts.size() == 2 && parts.at(1) == QLatin1String("2"))
        J /= 2.0;
    else if (parts.size() != 1)
        return false;
    return isNumber && J >= 0.0 && J < limit && 2.0 * J == std::floor(2.0 * J);
}

} // namespace LanqorSpectroscopicTermUtil
