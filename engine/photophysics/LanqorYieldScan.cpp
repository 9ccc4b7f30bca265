#include "LanqorYieldScan.h"

#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <QCoreApplication>
#include <QPair>

#include <algorithm>
#include <cmath>
#include <limits>

using resultColumns::column;
using resultColumns::existing;
using Point = YieldScanResults::Point;

namespace {

const double infinity = std::numeric_limits<double>::infinity();

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorYieldScan", text);
}

QVector<YieldQuantity> quantitiesNamed(const QString &name)
{
    QVector<YieldQuantity> found;
    for (const YieldQuantity &quantity : LanqorSpectroscopicCalculation::getYieldQuantities())
        if (quantity.name == name)
            found.append(quantity);
    return found;
}

QString allNames()
{
    QStringList names;
    for (const YieldQuantity &quantity : LanqorSpectroscopicCalculation::getYieldQuantities())
        names.append(quantity.name);
    return names.join(QStringLiteral(", "));
}

/// Limits of what an input can be, as the options of the program have them.
struct Limits
{
    double least = 0.0;
    double largest = infinity;
};

Limits limitsOf(const QString &name)
{
    constexpr double highestRate = 1e15; // s^-1
    static const QVector<QPair<QString, Limits>> others = {
        {QStringLiteral("min-distance"), {0.5, 20.0}},     // Angstrom
        {QStringLiteral("t1-shift"), {-20000.0, 20000.0}}, // cm^-1
        {QStringLiteral("n"), {1.0, 10.0}},
        {QStringLiteral("lifetime"), {1e-6, 1e6}},            // ms
        {QStringLiteral("temperature"), {1.0, 2000.0}},       // K
        {QStringLiteral("band-half-width"), {1.0, 100000.0}}, // cm^-1
        {QStringLiteral("overlap-exponent"), {0.0, 100.0}},
        {QStringLiteral("excitation-rate"), {1e-6, highestRate}},
    };
    if (name.endsWith(QLatin1String("-energy")))
        return {1000.0, 200000.0}; // cm^-1
    if (name.startsWith(QLatin1String("rl-")))
        return {0.5, 1000.0}; // Angstrom
    for (const auto &[known, limits] : others)
        if (name == known)
            return limits;
    const QVector<YieldQuantity> rates = quantitiesNamed(name);
    if (!rates.isEmpty() && rates.first().unit == QLatin1String("s^-1"))
        return {0.0, highestRate};
    return {};
}

Point pointOf(const YieldInputs &inputs)
{
    const YieldOutcome outcome = LanqorSpectroscopicCalculation::calcYield(inputs);
    // Nothing decays more slowly than by radiation alone.
    if (!outcome.error.isEmpty() || outcome.anrad < 0.0) {
        const double none = std::numeric_limits<double>::quiet_NaN();
        return {none, none, none, none, none};
    }
    return {outcome.quantumYield, outcome.quantumEfficiency, outcome.sensitisation, outcome.arad,
            outcome.anrad};
}

QVector<QVariant> rowOf(const Point &point)
{
    return {existing(point.quantumYield), existing(point.quantumEfficiency),
            existing(point.sensitisation), existing(point.arad), existing(point.anrad)};
}

QVector<ResultColumn> columnsOf(const QVector<YieldScanAxis> &axes)
{
    QVector<ResultColumn> columns;
    for (const YieldScanAxis &axis : axes)
        columns.append({QString(axis.name).replace(QLatin1Char('-'), QLatin1Char('_')), axis.unit});
    return columns << column("quantum_yield", "%") << column("quantum_efficiency", "%")
                   << column("sensitisation", "%") << column("radiative_rate", "s^-1")
                   << column("non_radiative_rate", "s^-1");
}

QString withUnit(const YieldScanAxis &axis)
{
    return axis.unit == QLatin1String("1") ? axis.name
                                           : axis.name + QStringLiteral(" / ") + axis.unit;
}

QString lineOf(const QStringList &values, const Point &point)
{
    QString line;
    for (const QString &value : values)
        line += value.rightJustified(16);
    for (const double value :
         {point.quantumYield, point.quantumEfficiency, point.sensitisation, point.arad})
        line += QString::number(value, 'g', 5).rightJustified(13);
    return line + QLatin1Char('\n');
}

} // namespace

class LanqorYieldScanPrivate
{
public:
    bool refuse(const QString &message)
    {
        lastError = message;
        return false;
    }

    YieldInputs inputs;
    QVector<YieldScanAxis> axes;
    QVector<YieldQuantity> quantities; // of the axes
    QString lastError;
};

LanqorYieldScan::LanqorYieldScan(const YieldInputs &inputs)
    : d(std::make_unique<LanqorYieldScanPrivate>())
{
    d->inputs = inputs;
}

LanqorYieldScan::~LanqorYieldScan() = default;

QString LanqorYieldScan::getLastError() const
{
    return d->lastError;
}

int LanqorYieldScan::mostPoints()
{
    return 1000000;
}

double LanqorYieldScan::leastOf(const QString &name)
{
    return limitsOf(name).least;
}

double LanqorYieldScan::largestOf(const QString &name)
{
    return limitsOf(name).largest;
}

QString LanqorYieldScan::reasonAgainst(const QString &name, const double &value)
{
    const Limits limits = limitsOf(name);
    if (value >= limits.least && value <= limits.largest && std::isfinite(value))
        return QString();
    return std::isinf(limits.largest)
               ? tr("%1 cannot be %2: the least possible value is %3")
                     .arg(name, QString::number(value), QString::number(limits.least))
               : tr("%1 cannot be %2: it lies from %3 to %4")
                     .arg(name, QString::number(value), QString::number(limits.least),
                          QString::number(limits.largest));
}

bool LanqorYieldScan::addAxis(const QString &text)
{
    const QString name = text.section(QLatin1Char('='), 0, 0).trimmed();
    const QVector<YieldQuantity> known = quantitiesNamed(name);
    if (known.isEmpty())
        return d->refuse(tr("\"%1\": there is no input \"%2\" to be varied; there are %3.")
                             .arg(text, name, allNames()));
    const QStringList parts = text.section(QLatin1Char('='), 1).split(QLatin1Char(':'));
    QVector<double> numbers;
    for (const QString &part : parts) {
        bool isNumber = false;
        numbers.append(part.trimmed().toDouble(&isNumber));
        if (!isNumber || !std::isfinite(numbers.last()))
            numbers.clear();
    }
    if (parts.size() != 3 || numbers.size() != 3)
        return d->refuse(tr("\"%1\" is not of the form NAME=FROM:TO:STEP, such as "
                            "triplet-energy=17500:21000:50.")
                             .arg(text));
    YieldScanAxis axis;
    axis.name = name;
    axis.unit = known.first().unit;
    axis.from = numbers.at(0);
    axis.to = numbers.at(1);
    axis.step = numbers.at(2);
    axis.asGiven = known.first().get(d->inputs);
    const double steps = (axis.to - axis.from) / axis.step;
    if (axis.step == 0.0 || !(steps >= 0.0))
        return d->refuse(tr("\"%1\": a step of %2 does not lead from %3 to %4.")
                             .arg(text, parts.at(2), parts.at(0), parts.at(1)));
    for (const double end : {axis.from, axis.to})
        if (!reasonAgainst(name, end).isEmpty())
            return d->refuse(QStringLiteral("\"%1\": %2.").arg(text, reasonAgainst(name, end)));
    if (!d->axes.isEmpty() && d->axes.first().name == name)
        return d->refuse(tr("\"%1\": %2 is varied already.").arg(text, name));
    if (d->axes.size() == 2)
        return d->refuse(tr("\"%1\": a scan has at most two axes.").arg(text));
    constexpr double rounding = 1e-9; // of steps, so that 0:1:0.1 ends at 1
    const double points = std::floor(steps * (1.0 + rounding) + rounding) + 1.0;
    const double others = d->axes.isEmpty() ? 1.0 : d->axes.first().count;
    if (points * others > mostPoints())
        return d->refuse(tr("\"%1\": %2 points are more than %3.")
                             .arg(text, QString::number(points * others, 'g', 12),
                                  QString::number(mostPoints())));
    axis.count = int(points);
    d->axes.append(axis);
    d->quantities.append(known.first());
    return true;
}

YieldScanResults LanqorYieldScan::calculate() const
{
    YieldScanResults results;
    results.axes = d->axes;
    results.asGiven = pointOf(d->inputs);
    int count = d->axes.isEmpty() ? 0 : 1;
    for (const YieldScanAxis &axis : d->axes)
        count *= axis.count;
    results.points.reserve(count);
    YieldInputs inputs = d->inputs;
    for (int i = 0; i < count; ++i) {
        for (int axis = 0; axis < d->axes.size(); ++axis)
            d->quantities.at(axis).set(inputs, results.value(axis, i));
        results.points.append(pointOf(inputs));
    }
    return results;
}

LanqorResultTables LanqorYieldScan::makeTables(const YieldScanResults &results)
{
    const QVector<ResultColumn> columns = columnsOf(results.axes);
    QVector<QVariant> asGiven;
    for (const YieldScanAxis &axis : results.axes)
        asGiven.append(axis.asGiven);
    QVector<QVector<QVariant>> rows;
    rows.reserve(results.points.size());
    for (int i = 0; i < results.points.size(); ++i) {
        QVector<QVariant> row;
        for (int axis = 0; axis < results.axes.size(); ++axis)
            row.append(results.value(axis, i));
        rows.append(row + rowOf(results.points.at(i)));
    }
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("scan_as_given"), columns, asGiven + rowOf(results.asGiven));
    tables.addTable(QStringLiteral("scan"), columns, rows);
    return tables;
}

QString LanqorYieldScan::makeText(const YieldScanResults &results)
{
    constexpr int mostLines = 41;
    const auto valuesAt = [&results](int i) {
        QStringList values;
        for (int axis = 0; axis < results.axes.size(); ++axis)
            values.append(QString::number(results.value(axis, i), 'g', 7));
        return values;
    };
    QStringList names;
    QStringList asGiven;
    QString heading;
    for (const YieldScanAxis &axis : results.axes) {
        names.append(withUnit(axis));
        asGiven.append(QString::number(axis.asGiven, 'g', 7));
        heading += axis.name.rightJustified(16);
    }
    const int count = results.points.size();
    QString text = tr("\nScan of %1: %2 points\n\n")
                       .arg(names.join(QStringLiteral(", ")), QString::number(count)) +
                   heading + tr("      yield / % efficiency/% sensitis. / %  Arad / s^-1\n");
    int lowest = 0;
    int highest = 0;
    for (int i = 0; i < count; ++i) { // a yield that is no number is neither
        const double yield = results.points.at(i).quantumYield;
        if (!(yield >= results.points.at(lowest).quantumYield))
            lowest = std::isfinite(yield) ? i : lowest;
        if (!(yield <= results.points.at(highest).quantumYield))
            highest = std::isfinite(yield) ? i : highest;
    }
    if (results.axes.size() == 1) {
        const int stride = (count + mostLines - 1) / mostLines;
        for (int i = 0; i < count; i += stride)
            text += lineOf(valuesAt(i), results.points.at(i));
    }
    return text + tr("\n  as given\n") + lineOf(asGiven, results.asGiven) + tr("  lowest yield\n") +
           lineOf(valuesAt(lowest), results.points.at(lowest)) + tr("  highest yield\n") +
           lineOf(valuesAt(highest), results.points.at(highest));
}
