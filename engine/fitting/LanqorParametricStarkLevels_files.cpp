#include "LanqorParametricStarkLevels.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <cstdio>
#include <functional>

using textFields::Fields;

namespace {

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

void tellOnStandardOutput(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

} // namespace

bool LanqorParametricStarkLevels::readChargeFactorsFile(const QString &baseName,
                                                        QVector<ChargeFactorsGroup> &groups)
{
    const QString fileName = baseName + QStringLiteral(".chargefactors");
    QVector<ChargeFactorsGroup> read;
    if (!readRecords(fileName, [&read](const Fields &fields) {
            const std::size_t last = fields.size() - 1;
            read.append({textFields::toString(fields[0]), atomsBefore(fields, last),
                         last > 0 ? numberAt(fields, last) : 0.0});
        })) {
        tellOnStandardOutput(tr("File ") + fileName + tr(" cannot be found"));
        return false;
    }
    groups = read;
    return true;
}

bool LanqorParametricStarkLevels::readParametersGroup(const QString &baseName,
                                                      QVector<ParametersGroup> &groups)
{
    const QString fileName = baseName + QStringLiteral(".groups");
    QVector<ParametersGroup> read;
    if (!readRecords(fileName, [&read](const Fields &fields) {
            read.append({textFields::toString(fields[0]), atomsBefore(fields, fields.size())});
        })) {
        tellOnStandardOutput(tr("Cannot open the file ") + fileName + QLatin1Char('\n'));
        return false;
    }
    groups = read;
    return true;
}

bool LanqorParametricStarkLevels::readTransitionValues(const QString &baseName,
                                                       QVector<TransitionValues> &transitions)
{
    const QString fileName = baseName + QStringLiteral(".exp");
    QVector<TransitionValues> read;
    if (!readRecords(fileName, [&read](const Fields &fields) {
            TransitionValues values;
            values.level = textFields::toInt(fields[0]);
            values.energyLow = numberAt(fields, 1);
            values.energyHigh = numberAt(fields, 2);
            values.offset = numberAt(fields, 3);
            read.append(values);
        })) {
        tellOnStandardOutput(tr("LANQOR could not read the file ") + fileName + QLatin1Char('\n'));
        return false;
    }
    transitions = read;
    return true;
}

void LanqorParametricStarkLevels::readGLimitsFile(const QString &baseName, QVector<GLimits> &limits)
{
    QVector<GLimits> read;
    if (readRecords(baseName + QStringLiteral(".limits"), [&read](const Fields &fields) {
            read.append(
                {textFields::toString(fields[0]), numberAt(fields, 1), numberAt(fields, 2)});
        }))
        limits = read;
}
