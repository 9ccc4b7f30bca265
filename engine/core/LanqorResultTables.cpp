#include "LanqorResultTables.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStringList>

#include <cmath>

class LanqorResultTablesPrivate
{
public:
    QVector<ResultTable> tables;
};

namespace {

bool isQuantity(const ResultColumn &column)
{
    return !column.unit.isEmpty();
}

QJsonValue jsonValue(const ResultColumn &column, const QVariant &value)
{
    QJsonValue json = QJsonValue::fromVariant(value);
    if (json.isDouble() && !std::isfinite(json.toDouble()))
        json = QJsonValue();
    if (!isQuantity(column))
        return json;
    return QJsonObject{{QStringLiteral("value"), json}, {QStringLiteral("unit"), column.unit}};
}

QJsonObject jsonRow(const ResultTable &table, const QVector<QVariant> &row)
{
    QJsonObject object;
    for (int i = 0; i < table.columns.size(); ++i)
        object.insert(table.columns.at(i).key, jsonValue(table.columns.at(i), row.at(i)));
    return object;
}

QString csvField(const QVariant &value)
{
    QString text = value.userType() == QMetaType::Double
                       ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
                       : value.toString();
    if (text.contains(QLatin1Char('"')) || text.contains(QLatin1Char(',')) ||
        text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r')))
        text = QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
               QLatin1Char('"');
    return text;
}

QString csvLine(const QVector<QVariant> &values)
{
    QStringList fields;
    for (const QVariant &value : values)
        fields.append(csvField(value));
    return fields.join(QLatin1Char(',')) + QLatin1Char('\n');
}

QString csvRecord(const ResultTable &record)
{
    QString text = QStringLiteral("quantity,value,unit\n");
    for (int i = 0; i < record.columns.size(); ++i)
        text += csvLine(
            {record.columns.at(i).key, record.rows.first().at(i), record.columns.at(i).unit});
    return text;
}

QString csvTable(const ResultTable &table)
{
    QVector<QVariant> heading;
    for (const ResultColumn &column : table.columns)
        heading.append(isQuantity(column)
                           ? column.key + QStringLiteral(" [") + column.unit + QLatin1Char(']')
                           : column.key);
    QString text = csvLine(heading);
    for (const QVector<QVariant> &row : table.rows)
        text += csvLine(row);
    return text;
}

} // namespace

LanqorResultTables::LanqorResultTables()
    : d(std::make_unique<LanqorResultTablesPrivate>())
{}

LanqorResultTables::LanqorResultTables(const LanqorResultTables &other)
    : d(std::make_unique<LanqorResultTablesPrivate>(*other.d))
{}

LanqorResultTables &LanqorResultTables::operator=(const LanqorResultTables &other)
{
    *d = *other.d;
    return *this;
}

LanqorResultTables::~LanqorResultTables() = default;

void LanqorResultTables::addRecord(const QString &name, const QVector<ResultColumn> &columns,
                                   const QVector<QVariant> &values)
{
    addTable(name, columns, {values});
    d->tables.last().isRecord = true;
}

void LanqorResultTables::addTable(const QString &name, const QVector<ResultColumn> &columns,
                                  const QVector<QVector<QVariant>> &rows)
{
    ResultTable table{name, false, columns, rows};
    for (QVector<QVariant> &row : table.rows)
        row.resize(columns.size());
    d->tables.append(table);
}

void LanqorResultTables::append(const LanqorResultTables &other)
{
    d->tables += other.getTables();
}

QVector<ResultTable> LanqorResultTables::getTables() const
{
    return d->tables;
}

QByteArray LanqorResultTables::toJson() const
{
    QJsonObject results;
    for (const ResultTable &table : d->tables) {
        QJsonArray rows;
        for (const QVector<QVariant> &row : table.rows)
            rows.append(jsonRow(table, row));
        results.insert(table.name, table.isRecord ? rows.first() : QJsonValue(rows));
    }
    return QJsonDocument(results).toJson();
}

QByteArray LanqorResultTables::toCsv() const
{
    QString text;
    for (const ResultTable &table : d->tables)
        text += QStringLiteral("# ") + table.name + QLatin1Char('\n') +
                (table.isRecord ? csvRecord(table) : csvTable(table)) + QLatin1Char('\n');
    return text.toUtf8();
}
