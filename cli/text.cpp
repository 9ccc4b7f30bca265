#include "text.h"

#include <QCoreApplication>

namespace cli {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString column(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
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
