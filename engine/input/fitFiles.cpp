#include "input/fitFiles_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <functional>

using textFields::Fields;

namespace fitFiles {

namespace {

/// More than any ion has levels.
constexpr int maximumLines = 10000;

/// Hands the fields of each line that has any to @p take; false when the file cannot be opened.
bool readRecords(const QString &fileName, const std::function<void(const Fields &)> &take)
{
    LineReader reader(fileName);
    if (!reader.open())
        return false;
    Fields fields;
    while (reader.next()) {
        textFields::split(reader.line(), fields);
        if (!fields.empty())
            take(fields);
    }
    return true;
}

double numberAt(const Fields &fields, std::size_t i)
{
    return i < fields.size() ? textFields::toDouble(fields[i]) : 0.0;
}

/// Atom numbers in the fields from 1 to before @p end.
QVector<int> atomsBefore(const Fields &fields, std::size_t end)
{
    QVector<int> atoms;
    for (std::size_t i = 1; i < end; ++i)
        atoms.append(textFields::toInt(fields[i]));
    return atoms;
}

/// The number behind "+-" in a field between the first and the last; 0 without one.
double deviationIn(const Fields &fields)
{
    for (std::size_t i = 1; i + 1 < fields.size(); ++i)
        if (fields[i].substr(0, 2) == "+-")
            return textFields::toDouble(fields[i].size() > 2 ? fields[i].substr(2) : fields[i + 1]);
    return 0.0;
}

} // namespace

std::optional<QVector<ChargeFactorsGroup>> readChargeFactors(const QString &fileName)
{
    QVector<ChargeFactorsGroup> groups;
    const bool isRead = readRecords(fileName, [&groups](const Fields &fields) {
        const std::size_t last = fields.size() - 1;
        groups.append({textFields::toString(fields[0]), atomsBefore(fields, last),
                       last > 0 ? numberAt(fields, last) : 0.0});
    });
    return isRead ? std::make_optional(groups) : std::nullopt;
}

std::optional<QVector<ParametersGroup>> readGroups(const QString &fileName)
{
    QVector<ParametersGroup> groups;
    const bool isRead = readRecords(fileName, [&groups](const Fields &fields) {
        groups.append({textFields::toString(fields[0]), atomsBefore(fields, fields.size())});
    });
    return isRead ? std::make_optional(groups) : std::nullopt;
}

std::optional<QVector<TransitionValues>> readTransitions(const QString &fileName)
{
    QVector<TransitionValues> transitions;
    const bool isRead = readRecords(fileName, [&transitions](const Fields &fields) {
        TransitionValues values;
        values.level = textFields::toInt(fields[0]);
        values.energyLow = numberAt(fields, 1);
        values.energyHigh = numberAt(fields, 2);
        values.offset = numberAt(fields, 3);
        values.deviationLow = numberAt(fields, 4);
        values.deviationHigh = numberAt(fields, 5);
        transitions.append(values);
    });
    return isRead ? std::make_optional(transitions) : std::nullopt;
}

std::optional<QVector<GLimits>> readLimits(const QString &fileName)
{
    QVector<GLimits> limits;
    const bool isRead = readRecords(fileName, [&limits](const Fields &fields) {
        limits.append({textFields::toString(fields[0]), numberAt(fields, 1), numberAt(fields, 2)});
    });
    return isRead ? std::make_optional(limits) : std::nullopt;
}

std::optional<QVector<MeasuredLevel>> readMeasuredLevels(const QString &fileName)
{
    LineReader reader(fileName);
    if (!reader.open())
        return std::nullopt;
    QVector<MeasuredLevel> levels;
    Fields fields;
    while (reader.next()) {
        if (reader.lineNumber() > maximumLines)
            return std::nullopt;
        textFields::split(reader.line(), fields);
        if (reader.lineNumber() > 1 && !fields.empty())
            levels.append({textFields::toString(fields.front()),
                           textFields::toDouble(fields.back()), deviationIn(fields)});
    }
    return levels;
}

std::optional<std::array<double, 2>> readWeights(const QString &fileName)
{
    LineReader reader(fileName);
    if (!reader.open())
        return std::nullopt;
    std::array<double, 2> weights{};
    for (double &weight : weights) {
        const double value = reader.next() ? textFields::toDouble(reader.line()) : 0.0;
        weight = value == 0.0 ? 1.0 : value;
    }
    return weights;
}

} // namespace fitFiles
