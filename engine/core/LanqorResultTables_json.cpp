#include "LanqorResultTables.h"

#include "core/resultJson_p.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorResultTables", text);
}

/// Reads what LanqorResultTables::toJson() wrote. The first fault is kept.
class Reader
{
public:
    QVector<ResultTable> read(const QByteArray &json);

    QString fault;

private:
    void fail(const QString &text)
    {
        if (fault.isEmpty())
            fault = text;
    }
    void checkVersion(const QJsonObject &root);
    ResultTable readPart(const QJsonValue &part, const QJsonObject &description);
    QVector<QVariant> readRow(const QJsonValue &json, const ResultTable &table,
                              const QStringList &types, const QString &where);
    QVariant readValue(const QJsonValue &json, const QString &type, const QString &where);
};

QVector<ResultTable> Reader::read(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonObject root = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError) {
        fail(tr("no JSON, or a damaged one: %1 at byte %2")
                 .arg(error.errorString(), QString::number(error.offset)));
        return {};
    }
    checkVersion(root);
    QVector<ResultTable> tables;
    const QJsonValue contents = root.value(QLatin1String(resultJson::contentsKey));
    for (const auto &part : contents[QLatin1String("parts")].toArray()) {
        if (!fault.isEmpty())
            return {};
        const QJsonObject description = part.toObject();
        const QString name = description.value(QLatin1String("name")).toString();
        tables.append(readPart(root.value(name), description));
    }
    if (tables.size() + 1 != root.size()) // "contents" is the one key beside the parts
        fail(tr("damaged: %1 parts, but \"contents\" lists %2")
                 .arg(QString::number(root.size() - 1), QString::number(tables.size())));
    return tables;
}

void Reader::checkVersion(const QJsonObject &root)
{
    const QJsonValue run = root.value(QLatin1String("run"));
    const QString program = run[QLatin1String("program_version")].toString();
    const QJsonValue contents = root.value(QLatin1String(resultJson::contentsKey));
    const int current = LanqorResultTables::getSchemaVersion();
    const int version = contents[QLatin1String("schema_version")].toInt(1);
    if (!contents.isObject() && program.isEmpty())
        fail(tr("no result written with --json: it has no \"contents\""));
    else if (version < current)
        fail(tr("a result of schema %1 (program version %2), which tells too little to be read "
                "back; this program reads schema %3: run the command again")
                 .arg(QString::number(version), program, QString::number(current)));
    else if (version > current)
        fail(tr("a result of schema %1 (program version %2); this program reads schema %3: show "
                "it with the newer one")
                 .arg(QString::number(version), program, QString::number(current)));
}

ResultTable Reader::readPart(const QJsonValue &part, const QJsonObject &description)
{
    ResultTable table;
    table.name = description.value(QLatin1String("name")).toString();
    table.isRecord = description.value(QLatin1String("is_record")).toBool();
    QStringList types;
    for (const auto &column : description.value(QLatin1String("columns")).toArray()) {
        const auto text = [&column](const char *key) {
            return column.toObject().value(QLatin1String(key)).toString();
        };
        table.columns.append({text("key"), text("unit"), text("uncertainty_of")});
        types.append(text("type"));
    }
    if (types.isEmpty() || (table.isRecord ? !part.isObject() : !part.isArray()))
        fail(tr("damaged: part \"%1\" is missing").arg(table.name));
    if (table.isRecord)
        table.rows.append(readRow(part, table, types, table.name));
    const QJsonArray rows = part.toArray();
    for (int i = 0; i < rows.size(); ++i)
        table.rows.append(readRow(rows.at(i), table, types,
                                  tr("%1, row %2").arg(table.name, QString::number(i + 1))));
    return table;
}

QVector<QVariant> Reader::readRow(const QJsonValue &json, const ResultTable &table,
                                  const QStringList &types, const QString &where)
{
    QVector<QVariant> row;
    for (int i = 0; i < table.columns.size(); ++i) {
        const ResultColumn &column = table.columns.at(i);
        const bool isUncertainty = !column.uncertaintyOf.isEmpty();
        const QString place = where + QStringLiteral(", ") + column.key;
        QJsonValue value = json[isUncertainty ? column.uncertaintyOf : column.key];
        if (resultJson::isQuantity(column) && !value[QLatin1String(resultJson::unitKey)].isString())
            fail(tr("damaged: %1 has no unit").arg(place));
        if (isUncertainty)
            value = value[QLatin1String(resultJson::uncertaintyKey)][column.key];
        else if (resultJson::isQuantity(column))
            value = value[QLatin1String(resultJson::valueKey)];
        row.append(readValue(value, types.at(i), place));
    }
    return row;
}

QVariant Reader::readValue(const QJsonValue &json, const QString &type, const QString &where)
{
    if (json.isNull())
        return {};
    if (type == QLatin1String("string") && json.isString())
        return json.toString();
    if (type == QLatin1String("boolean") && json.isBool())
        return json.toBool();
    if (type == QLatin1String("number") && json.isDouble())
        return json.toDouble();
    if (type == QLatin1String("integer") && json.isDouble())
        return qlonglong(json.toDouble());
    fail(json.isUndefined() ? tr("damaged: %1 is missing").arg(where)
                            : tr("damaged: %1 is no %2")
                                  .arg(where, type.isEmpty() ? QStringLiteral("null") : type));
    return {};
}

} // namespace

bool LanqorResultTables::readJson(const QByteArray &json, QString &error)
{
    Reader reader;
    const QVector<ResultTable> tables = reader.read(json);
    error = reader.fault;
    if (error.isEmpty())
        d->tables = tables;
    return error.isEmpty();
}
