#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorReadFiles.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <algorithm>

namespace {

using cli::tr;

bool isNumber(const QVariant &value)
{
    return value.userType() == QMetaType::Double || value.userType() == QMetaType::LongLong;
}

QString textOf(const QVariant &value)
{
    constexpr int digits = 7;
    if (!value.isValid())
        return QStringLiteral("-");
    return value.userType() == QMetaType::Double ? QString::number(value.toDouble(), 'g', digits)
                                                 : value.toString();
}

QString headingOf(const ResultColumn &column)
{
    const bool hasUnit = column.unit.size() > 1 && column.unit != QLatin1String("unit");
    return hasUnit ? column.key + QStringLiteral(" / ") + column.unit : column.key;
}

/// Cells in columns: numbers at the right end, words at the left.
QString linesOf(const QVector<QStringList> &cells, const QVector<bool> &areNumbers)
{
    QVector<int> widths(areNumbers.size(), 0);
    for (const QStringList &line : cells)
        for (int i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths.at(i), line.at(i).size());
    QString text;
    for (const QStringList &line : cells) {
        QString words;
        for (int i = 0; i < line.size(); ++i)
            words +=
                QStringLiteral("  ") + (areNumbers.at(i) ? line.at(i).rightJustified(widths.at(i))
                                                         : line.at(i).leftJustified(widths.at(i)));
        while (words.endsWith(QLatin1Char(' ')))
            words.chop(1);
        text += words + QLatin1Char('\n');
    }
    return text;
}

QString textOf(const ResultTable &table)
{
    QVector<QStringList> cells;
    QVector<bool> areNumbers;
    if (table.isRecord) {
        areNumbers = {false, false, false};
        for (int i = 0; i < table.columns.size(); ++i) {
            const ResultColumn &column = table.columns.at(i);
            cells.append({column.key, textOf(table.rows.first().at(i)),
                          column.unit == QLatin1String("1") ? QString() : column.unit});
        }
        return linesOf(cells, areNumbers);
    }
    QStringList headings;
    for (int i = 0; i < table.columns.size(); ++i) {
        headings.append(headingOf(table.columns.at(i)));
        areNumbers.append(std::any_of(table.rows.begin(), table.rows.end(),
                                      [i](const auto &row) { return isNumber(row.at(i)); }));
    }
    cells.append(headings);
    for (const QVector<QVariant> &row : table.rows) {
        QStringList line;
        for (const QVariant &value : row)
            line.append(textOf(value));
        cells.append(line);
    }
    return linesOf(cells, areNumbers);
}

/// The parts that --part names; all without it.
QVector<ResultTable> chosenParts(const cli::OptionReader &options, const LanqorResultTables &tables)
{
    const QStringList wanted = options.list("part");
    QVector<ResultTable> chosen;
    QStringList names;
    for (const ResultTable &table : tables.getTables()) {
        names.append(table.name);
        if (wanted.isEmpty() || wanted.contains(table.name))
            chosen.append(table);
    }
    for (const QString &name : wanted)
        if (!names.contains(name))
            options.refuse(
                tr("--part: \"%1\" is none of %2").arg(name, names.join(QStringLiteral(", "))));
    return chosen;
}

} // namespace

int showCommand(const QStringList &arguments)
{
    cli::OptionReader options("show");
    options.setDescription(tr(
        "Prints a result that a command wrote with --json: records as names with values and\n"
        "units, tables in columns, numbers to seven digits. --csv gives the CSV that the command\n"
        "itself gives, with all digits.\n\n"
        "Example: lanqor show result.json --part atoms"));
    options.addArgument(QStringLiteral("FILE"), tr("result of a command, as JSON"), QString(),
                        {QStringLiteral("json")});
    options.addOption({QStringLiteral("part"), tr("Only these parts, separated by commas."),
                       QStringLiteral("list")});
    options.addResultOptions();
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("show needs one FILE; see \"lanqor show --help\"")).first();
    QByteArray json;
    QString error;
    LanqorResultTables tables;
    if (!LanqorReadFiles::read(fileName, json, error) || !tables.readJson(json, error))
        throw cli::Failure{tr("%1: %2").arg(fileName, error)};

    LanqorResultTables chosen;
    QStringList texts;
    for (const ResultTable &table : chosenParts(options, tables)) {
        if (table.isRecord)
            chosen.addRecord(table.name, table.columns, table.rows.first());
        else
            chosen.addTable(table.name, table.columns, table.rows);
        texts.append(table.name + QLatin1Char('\n') + textOf(table));
    }
    cli::showTables(options, texts.join(QLatin1Char('\n')), chosen);
    return cli::success;
}
