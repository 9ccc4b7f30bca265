#include "options/showResults.h"

#include "Command.h"
#include "options/OptionReader.h"

#include <LanqorEngine/LanqorResultTables.h>

#include <QCoreApplication>

namespace cli {

namespace {

LanqorResultTables runRecord(const QString &command, const QStringList &inputFiles)
{
    QVector<ResultColumn> columns = {{QStringLiteral("program_version"), QString()},
                                     {QStringLiteral("command"), QString()}};
    QVector<QVariant> values = {QCoreApplication::applicationVersion(), command};
    for (int i = 0; i < inputFiles.size(); ++i) {
        columns.append({QStringLiteral("input_file_%1").arg(i + 1), QString()});
        values.append(inputFiles.at(i));
    }
    LanqorResultTables record;
    record.addRecord(QStringLiteral("run"), columns, values);
    return record;
}

} // namespace

void showResults(const OptionReader &options, const QString &text, const LanqorResultTables &tables,
                 const QStringList &inputFiles)
{
    const QString standardOutput = QStringLiteral("-");
    const QString json = options.resultFile("json");
    const QString csv = options.resultFile("csv");
    LanqorResultTables all = runRecord(options.command(), inputFiles);
    all.append(tables);
    if (json == standardOutput)
        print(QString::fromUtf8(all.toJson()));
    else if (csv == standardOutput)
        print(QString::fromUtf8(all.toCsv()));
    else
        print(text);
    if (!json.isEmpty() && json != standardOutput)
        writeFile(json, all.toJson());
    if (!csv.isEmpty() && csv != standardOutput)
        writeFile(csv, all.toCsv());
}

} // namespace cli
