#include "options/showResults.h"

#include "Command.h"
#include "options/OptionReader.h"

#include <LanqorEngine/LanqorPhysicalConstants.h>
#include <LanqorEngine/LanqorReadFiles.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QCoreApplication>

#include <algorithm>

namespace cli {

namespace {

ResultColumn column(const char *key, const char *unit = "")
{
    return {QLatin1String(key), QLatin1String(unit)};
}

/// What the run was, which stands before the results.
LanqorResultTables runRecord(const OptionReader &options)
{
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("run"),
                     {column("program_version"), column("schema_version"), column("command"),
                      column("command_line")},
                     {QCoreApplication::applicationVersion(),
                      LanqorResultTables::getSchemaVersion(), options.command(),
                      options.commandLine()});
    return tables;
}

QVariant valueOf(const OptionInForce &option, int place)
{
    if (option.isFlag)
        return option.isGiven ? QStringLiteral("true") : QStringLiteral("false");
    return place < option.values.size() ? QVariant(option.values.at(place)) : QVariant();
}

/// What went into the run, which stands behind the results.
LanqorResultTables inputsOfRun(const OptionReader &options)
{
    using Rows = QVector<QVector<QVariant>>;
    Rows rows;
    for (const OptionInForce &option : options.optionsInForce())
        for (int i = 0; i < std::max(1, option.values.size()); ++i)
            rows.append({option.name, valueOf(option, i),
                         option.usual.isEmpty() ? QVariant() : QVariant(option.usual),
                         option.isGiven});
    LanqorResultTables tables;
    tables.addTable(QStringLiteral("run_options"),
                    {column("option"), column("value"), column("default"), column("is_given")},
                    rows);
    rows.clear();
    for (const QString &argument : options.files())
        rows.append({rows.size() + 1, argument});
    tables.addTable(QStringLiteral("run_arguments"),
                    {column("argument_from_1"), column("argument")}, rows);
    rows.clear();
    for (const ReadFile &file : LanqorReadFiles::getFiles())
        rows.append({options.shortName(file.fileName), file.size, file.sha256});
    tables.addTable(QStringLiteral("run_input_files"),
                    {column("file"), column("size", "byte"), column("sha256")}, rows);
    rows.clear();
    for (const PhysicalConstant &constant : LanqorPhysicalConstants::getConstants())
        rows.append({constant.key, constant.value, constant.unit, constant.source});
    tables.addTable(QStringLiteral("run_constants"),
                    {column("constant"), column("value", "unit"), column("unit"), column("source")},
                    rows);
    return tables;
}

} // namespace

void showResults(const OptionReader &options, const QString &text, const LanqorResultTables &tables)
{
    LanqorResultTables all = runRecord(options);
    all.append(tables);
    all.append(inputsOfRun(options));
    showTables(options, text, all);
}

void showTables(const OptionReader &options, const QString &text, const LanqorResultTables &tables)
{
    const QString standardOutput = QStringLiteral("-");
    const QString json = options.resultFile("json");
    const QString csv = options.resultFile("csv");
    if (json == standardOutput)
        print(QString::fromUtf8(tables.toJson()));
    else if (csv == standardOutput)
        print(QString::fromUtf8(tables.toCsv()));
    else
        print(text);
    if (!json.isEmpty() && json != standardOutput)
        writeFile(json, tables.toJson());
    if (!csv.isEmpty() && csv != standardOutput)
        writeFile(csv, tables.toCsv());
}

} // namespace cli
