#include "text.h"

#include <QCoreApplication>

#include <cmath>

namespace cli {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString column(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

QString textOfYield(double percent)
{
    return std::abs(percent) >= 1.0 || percent == 0.0 ? QString::number(percent, 'f', 2)
                                                      : QString::number(percent, 'g', 3);
}

QString powerColumn(double value, int decimals, int width)
{
    return QString::number(value, 'e', decimals).rightJustified(width);
}

QString column(int value, int width)
{
    return QString::number(value).rightJustified(width);
}

} // namespace cli
