#include "core/reportText_p.h"

namespace reportText {

QString fixed(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

QString exponential(double value, int decimals, int width)
{
    return QString::number(value, 'e', decimals).rightJustified(width);
}

} // namespace reportText
