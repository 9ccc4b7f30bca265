#include "LanqorIntensitySolutions.h"

#include "input/lineReader_p.h"

#include <QCoreApplication>

#include <cmath>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorIntensitySolutions", text);
}

QStringList fieldsOf(const LineReader &reader)
{
    const std::string_view line = reader.line();
    return QString::fromUtf8(line.data(), int(line.size())).split(QLatin1Char(','));
}

/// Places of @p quantities in the heading of a table; the unit in brackets does not count.
QVector<int> placesOf(const QStringList &quantities, const QStringList &heading)
{
    QVector<int> places;
    for (const QString &quantity : quantities) {
        int place = -1;
        for (int i = 0; i < heading.size(); ++i)
            if (heading.at(i).section(QStringLiteral(" ["), 0, 0).trimmed() == quantity)
                place = i;
        places.append(place);
    }
    return places;
}

} // namespace

bool LanqorIntensitySolutions::readSolutions(const QString &fileName, const QStringList &quantities,
                                             QVector<QVector<double>> &rows, QString &error)
{
    constexpr int mostRows = 100000;
    LineReader reader(fileName);
    if (!reader.open()) {
        error = QStringLiteral("%1: %2").arg(fileName, reader.errorString());
        return false;
    }
    QVector<int> places;
    QVector<QVector<double>> found;
    while (reader.next()) {
        const QStringList fields = fieldsOf(reader);
        if (fields.size() < 2) // "# solutions", empty lines
            continue;
        if (places.isEmpty()) {
            places = placesOf(quantities, fields);
            const int missing = places.indexOf(-1);
            if (missing < 0)
                continue;
            error =
                tr("%1, line %2: the table has no column %3; a file written by \"lanqor fit "
                   "omega --solutions\" is needed.")
                    .arg(fileName, QString::number(reader.lineNumber()), quantities.at(missing));
            return false;
        }
        if (found.size() == mostRows) {
            error = tr("%1 holds more than %2 solutions.").arg(fileName, QString::number(mostRows));
            return false;
        }
        QVector<double> row;
        for (int i = 0; i < places.size(); ++i) {
            const QString field = fields.value(places.at(i)).trimmed();
            bool isNumber = false;
            row.append(field.toDouble(&isNumber));
            if (!isNumber || !std::isfinite(row.last())) {
                error = tr("%1, line %2: %3 is \"%4\", which is no number.")
                            .arg(fileName, QString::number(reader.lineNumber()), quantities.at(i),
                                 field.left(40));
                return false;
            }
        }
        found.append(row);
    }
    if (found.isEmpty()) {
        error = tr("%1 holds no solutions; a file written by \"lanqor fit omega --solutions\" is "
                   "needed.")
                    .arg(fileName);
        return false;
    }
    rows = found;
    return true;
}
