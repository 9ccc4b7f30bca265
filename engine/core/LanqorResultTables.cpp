#include "LanqorResultTables.h"

#include "core/resultJson_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QStringList>

#include <cmath>

namespace {

using resultJson::contentsKey;
using resultJson::isQuantity;
using resultJson::uncertaintyKey;
using resultJson::unitKey;
using resultJson::valueKey;

/// A value as both formats have it: what is not finite does not exist, nor a negative zero.
QVariant written(const QVariant &value)
{
    if (value.userType() != QMetaType::Double)
        return value;
    const double number = value.toDouble();
    return std::isfinite(number) ? QVariant(number == 0.0 ? 0.0 : number) : QVariant();
}

/// The unit of a quantity, which a column of units may tell row by row.
QString unitOf(const ResultColumn &quantity, const ResultTable &table, const QVector<QVariant> &row)
{
    for (int i = 0; i < table.columns.size(); ++i)
        if (quantity.unit == QLatin1String(unitKey) &&
            table.columns.at(i).key == QLatin1String(unitKey))
            return row.at(i).toString();
    return quantity.unit;
}

QJsonObject uncertaintyOf(const ResultColumn &quantity, const ResultTable &table,
                          const QVector<QVariant> &row)
{
    QJsonObject uncertainty;
    for (int i = 0; i < table.columns.size(); ++i)
        if (table.columns.at(i).uncertaintyOf == quantity.key)
            uncertainty.insert(table.columns.at(i).key,
                               QJsonValue::fromVariant(written(row.at(i))));
    return uncertainty;
}

QJsonObject jsonRow(const ResultTable &table, const QVector<QVariant> &row)
{
    QJsonObject object;
    for (int i = 0; i < table.columns.size(); ++i) {
        const ResultColumn &column = table.columns.at(i);
        const QJsonValue value = QJsonValue::fromVariant(written(row.at(i)));
        if (!column.uncertaintyOf.isEmpty())
            continue; // stands with its quantity
        if (!isQuantity(column)) {
            object.insert(column.key, value);
            continue;
        }
        QJsonObject quantity = {{QLatin1String(valueKey), value},
                                {QLatin1String(unitKey), unitOf(column, table, row)}};
        const QJsonObject uncertainty = uncertaintyOf(column, table, row);
        if (!uncertainty.isEmpty())
            quantity.insert(QLatin1String(uncertaintyKey), uncertainty);
        object.insert(column.key, quantity);
    }
    return object;
}

/// Type of the values of a column in the words of JSON Schema; empty when there are none.
QString typeOf(const ResultTable &table, int column)
{
    QString type;
    for (const QVector<QVariant> &row : table.rows) {
        switch (row.at(column).userType()) {
        case QMetaType::UnknownType:
            break;
        case QMetaType::Double:
            return QStringLiteral("number");
        case QMetaType::Bool:
            type = QStringLiteral("boolean");
            break;
        case QMetaType::QString:
            type = QStringLiteral("string");
            break;
        default:
            type = QStringLiteral("integer");
        }
    }
    return type;
}

QJsonObject contentsOf(const QVector<ResultTable> &tables)
{
    QJsonArray parts;
    for (const ResultTable &table : tables) {
        QJsonArray columns;
        for (int i = 0; i < table.columns.size(); ++i) {
            const ResultColumn &column = table.columns.at(i);
            QJsonObject described;
            const auto tell = [&described](const char *key, const QString &text) {
                if (!text.isEmpty())
                    described.insert(QLatin1String(key), text);
            };
            tell("key", column.key);
            tell("unit", column.unit);
            tell("type", typeOf(table, i));
            tell("uncertainty_of", column.uncertaintyOf);
            columns.append(described);
        }
        parts.append(QJsonObject{{QStringLiteral("name"), table.name},
                                 {QStringLiteral("is_record"), table.isRecord},
                                 {QStringLiteral("columns"), columns}});
    }
    return {{QStringLiteral("schema_version"), LanqorResultTables::getSchemaVersion()},
            {QStringLiteral("parts"), parts}};
}

QString csvField(const QVariant &given)
{
    const QVariant value = written(given);
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
    results.insert(QLatin1String(contentsKey), contentsOf(d->tables));
    return QJsonDocument(results).toJson();
}

int LanqorResultTables::getSchemaVersion()
{
    return 2;
}

QByteArray LanqorResultTables::toCsv() const
{
    QString text;
    for (const ResultTable &table : d->tables)
        text += QStringLiteral("# ") + table.name + QLatin1Char('\n') +
                (table.isRecord ? csvRecord(table) : csvTable(table)) + QLatin1Char('\n');
    return text.toUtf8();
}
