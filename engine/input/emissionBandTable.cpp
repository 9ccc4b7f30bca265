#include "input/emissionBandTable_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>

namespace {

/// One line of the table.
struct Row
{
    std::size_t J = 0;
    double area = 0.0;
    double barycenter = 0.0;
    bool isWhole = false;
};

Row rowOf(const textFields::Fields &fields)
{
    if (fields.size() != 3)
        return {};
    bool isJ = false;
    bool isArea = false;
    bool isBarycenter = false;
    const int J = textFields::toInt(fields[0], &isJ);
    Row row;
    row.area = textFields::toDouble(fields[1], &isArea);
    row.barycenter = textFields::toDouble(fields[2], &isBarycenter);
    row.isWhole = isJ && isArea && isBarycenter && J >= 0 && J <= 5;
    row.J = row.isWhole ? static_cast<std::size_t>(J) : 0;
    return row;
}

} // namespace

EmissionBandTable readEmissionBandTable(const QString &fileName)
{
    EmissionBandTable table;
    LineReader reader(fileName);
    if (!reader.open()) {
        table.error = QStringLiteral("%1: %2").arg(fileName, reader.errorString());
        return table;
    }
    std::array<bool, 6> isGiven{};
    textFields::Fields fields;
    while (reader.next()) {
        textFields::split(reader.line().substr(0, reader.line().find('#')), fields);
        if (fields.empty())
            continue;
        const Row row = rowOf(fields);
        if (!row.isWhole || isGiven[row.J]) {
            table.error =
                QCoreApplication::translate(
                    "LanqorOmegaExp", "%1, line %2: each line needs J (0 to 5, each once), area "
                                      "and barycentre (cm^-1), such as \"1 1.00 16921\"")
                    .arg(fileName, QString::number(reader.lineNumber()));
            return table;
        }
        isGiven[row.J] = true;
        table.area[row.J] = row.area;
        table.barycenter[row.J] = row.barycenter;
    }
    return table;
}
