#include "LanqorUncertainty.h"

#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorResultTables.h>

#include <algorithm>
#include <cmath>

using Factor = UncertaintyResults::Factor;
using Quantity = UncertaintyResults::Quantity;
using resultColumns::column;
using resultColumns::existing;
using resultColumns::uncertainty;
using resultColumns::unitOfRow;

namespace {

QString distributionOf(const Factor &factor)
{
    if (factor.isEnsemble)
        return QStringLiteral("ensemble of %1").arg(factor.rows);
    switch (factor.input.kind) {
    case UncertaintyKind::Normal:
        return QStringLiteral("normal");
    case UncertaintyKind::LogNormal:
        return QStringLiteral("log-normal");
    case UncertaintyKind::Uniform:
        break;
    }
    return QStringLiteral("uniform");
}

QString withUnit(const QString &name, const QString &unit)
{
    const QString words = QString(name).replace(QLatin1Char('_'), QLatin1Char(' '));
    return unit == QLatin1String("1") || unit.isEmpty() ? words
                                                        : words + QStringLiteral(" / ") + unit;
}

QString number(double value)
{
    return QString::number(value, 'g', 5).rightJustified(11);
}

/// "lifetime 0.62 (0.65), ...", the largest first, without those that add next to nothing.
QString decidersOf(const Quantity &quantity, const QVector<Factor> &factors)
{
    constexpr double leastTold = 0.005;
    QVector<int> order;
    if (number(quantity.low95) == number(quantity.high95))
        return QStringLiteral("does not vary"); // in the digits that are told
    for (int i = 0; i < quantity.total.size(); ++i)
        if (quantity.total.at(i) >= leastTold)
            order.append(i);
    std::stable_sort(order.begin(), order.end(), [&quantity](int i, int k) {
        return quantity.total.at(i) > quantity.total.at(k);
    });
    QStringList parts;
    for (const int i : qAsConst(order))
        parts.append(QStringLiteral("%1 %2 (%3)")
                         .arg(factors.at(i).name,
                              QString::number(std::max(0.0, quantity.firstOrder.at(i)), 'f', 2),
                              QString::number(quantity.total.at(i), 'f', 2)));
    return parts.isEmpty() ? QStringLiteral("does not vary") : parts.join(QStringLiteral(", "));
}

} // namespace

LanqorResultTables LanqorUncertainty::makeTables(const UncertaintyResults &results)
{
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("uncertainty"), {column("samples"), column("method")},
                     {results.samples, QStringLiteral("scrambled Sobol sequence, fixed seed")});
    QVector<QVector<QVariant>> inputs;
    for (const Factor &factor : results.factors) {
        const UncertainInput &input = factor.input;
        const bool isUniform = input.kind == UncertaintyKind::Uniform;
        if (factor.isEnsemble)
            inputs.append({factor.name, QVariant(), distributionOf(factor)});
        else
            inputs.append({factor.name, input.unit, distributionOf(factor), input.value,
                           isUniform ? QVariant() : QVariant(input.standardDeviation),
                           factor.lowest, factor.highest, 100.0 * factor.cutShare});
    }
    tables.addTable(QStringLiteral("uncertain_inputs"),
                    {column("input"), column("unit"), column("distribution"),
                     column("value", unitOfRow),
                     uncertainty("standard_deviation", "value", unitOfRow),
                     uncertainty("low_95", "value", unitOfRow),
                     uncertainty("high_95", "value", unitOfRow), column("impossible_share", "%")},
                    inputs);
    QVector<QVector<QVariant>> quantities;
    QVector<QVector<QVariant>> indices;
    for (const Quantity &quantity : results.quantities) {
        quantities.append({quantity.name, quantity.unit, existing(quantity.value),
                           existing(quantity.median), existing(quantity.low68),
                           existing(quantity.high68), existing(quantity.low95),
                           existing(quantity.high95), quantity.missing});
        for (int i = 0; i < results.factors.size(); ++i)
            indices.append({quantity.name, results.factors.at(i).name,
                            existing(quantity.firstOrder.at(i)), existing(quantity.total.at(i))});
    }
    tables.addTable(QStringLiteral("uncertain_results"),
                    {column("quantity"), column("unit"), column("value", unitOfRow),
                     column("median", unitOfRow), uncertainty("low_68", "value", unitOfRow),
                     uncertainty("high_68", "value", unitOfRow),
                     uncertainty("low_95", "value", unitOfRow),
                     uncertainty("high_95", "value", unitOfRow), column("samples_without_value")},
                    quantities);
    tables.addTable(QStringLiteral("sensitivities"),
                    {column("quantity"), column("input"), column("first_order_index", "1"),
                     column("total_index", "1")},
                    indices);
    return tables;
}

QString LanqorUncertainty::makeText(const UncertaintyResults &results)
{
    constexpr int nameWidth = 36;
    QString text =
        QStringLiteral("\nUncertainty, by 2 x %1 sets of the uncertain inputs (scrambled "
                       "Sobol sequence)\n\n"
                       "  input                               distribution        value"
                       "        sd     2.5 %      97.5 %\n")
            .arg(results.samples);
    for (const Factor &factor : results.factors) {
        const UncertainInput &input = factor.input;
        text += QStringLiteral("  ") + withUnit(factor.name, input.unit).leftJustified(nameWidth);
        text += distributionOf(factor).leftJustified(factor.isEnsemble ? 0 : 13);
        if (!factor.isEnsemble)
            text += number(input.value) +
                    (input.kind == UncertaintyKind::Uniform ? QString(11, QLatin1Char(' '))
                                                            : number(input.standardDeviation)) +
                    number(factor.lowest) + number(factor.highest);
        text += QLatin1Char('\n');
    }
    text += QStringLiteral("\n  result                              as given     median     "
                           "68 % of the sets       95 % of the sets\n");
    for (const Quantity &quantity : results.quantities)
        text += QStringLiteral("  ") +
                withUnit(quantity.name, quantity.unit).leftJustified(nameWidth - 3) +
                number(quantity.value) + number(quantity.median) + number(quantity.low68) +
                number(quantity.high68) + number(quantity.low95) + number(quantity.high95) +
                QLatin1Char('\n');
    text += QStringLiteral("\n  Which input decides: Sobol indices, the share of the variance by "
                           "an input alone and, in\n  brackets, with what it does together with "
                           "others\n\n");
    for (const Quantity &quantity : results.quantities)
        text += QStringLiteral("  ") +
                withUnit(quantity.name, QString()).leftJustified(nameWidth - 3) +
                QStringLiteral("  ") + decidersOf(quantity, results.factors) + QLatin1Char('\n');
    return text;
}
