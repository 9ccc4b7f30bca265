#include "core/reportText_p.h"

#include <QSaveFile>

namespace reportText {

QString fixed(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

QString exponential(double value, int decimals, int width)
{
    return QString::number(value, 'e', decimals).rightJustified(width);
}

bool writeFile(const QString &fileName, const QString &text, QString &error)
{
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.commit())
        return true;
    error = file.errorString();
    return false;
}

} // namespace reportText
