#include "fitting/fitAccount_p.h"

#include "core/reportText_p.h"
#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <algorithm>
#include <cmath>

using reportText::fixed;
using resultColumns::column;
using resultColumns::existing;
using resultColumns::uncertainty;
using resultColumns::unitOfRow;

namespace fitAccount {

void addParameters(FitAccount &account, const QVector<FitParameter> &parameters,
                   const QVector<double> &values)
{
    constexpr double nearBound = 1.0e-6; // of the range
    account.parameters.clear();
    for (int i = 0; i < parameters.size(); ++i) {
        FitAccount::Parameter parameter;
        parameter.range = parameters.at(i);
        parameter.value = values.value(i);
        const FitParameter &range = parameter.range;
        const double width =
            std::isfinite(range.maximum) ? range.maximum - range.minimum : std::abs(range.minimum);
        const double close = nearBound * std::max(width, 1.0e-3);
        parameter.isAtMinimum = !range.isFixed && parameter.value - range.minimum <= close;
        parameter.isAtMaximum = !range.isFixed && range.maximum - parameter.value <= close;
        account.parameters.append(parameter);
    }
}

void addMinima(FitAccount &account, const QVector<QVector<double>> &vectors,
               const QVector<double> &misfits)
{
    constexpr int shown = 5;
    constexpr double sameValue = 1.0e-3; // relative
    constexpr double sameMisfit = 1.0e-4;
    constexpr double exact = 1.0e-8; // a misfit that is 0 but for rounding
    QVector<int> order;
    for (int i = 0; i < vectors.size(); ++i)
        if (!vectors.at(i).isEmpty())
            order.append(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return misfits.at(a) < misfits.at(b); });
    account.minima.clear();
    for (const int i : qAsConst(order)) {
        const auto isSame = [&](const FitAccount::Minimum &minimum) {
            if (misfits.at(i) - minimum.misfit > sameMisfit * minimum.misfit + exact)
                return false;
            for (int k = 0; k < minimum.values.size(); ++k) {
                const double a = vectors.at(i).at(k);
                const double b = minimum.values.at(k);
                if (std::abs(a - b) > sameValue * std::max(std::abs(a), std::abs(b)))
                    return false;
            }
            return true;
        };
        const auto known = std::find_if(account.minima.begin(), account.minima.end(), isSame);
        if (known != account.minima.end())
            ++known->starts;
        else if (account.minima.size() < shown)
            account.minima.append({misfits.at(i), 1, vectors.at(i)});
    }
}

int freeCount(const FitAccount &account)
{
    return int(std::count_if(account.parameters.begin(), account.parameters.end(),
                             [](const auto &parameter) { return !parameter.range.isFixed; }));
}

int degreesOfFreedom(const FitAccount &account)
{
    const auto isAtBound = [](const FitAccount::Parameter &parameter) {
        return parameter.isAtMinimum || parameter.isAtMaximum;
    };
    const auto atBound =
        std::count_if(account.parameters.begin(), account.parameters.end(), isAtBound);
    return account.dataCount - freeCount(account) + int(atBound) + account.undetermined.size();
}

namespace {

QString endText(FitAccount::End end)
{
    switch (end) {
    case FitAccount::End::Converged:
        return QStringLiteral("converged");
    case FitAccount::End::PointsSpent:
        return QStringLiteral("its points were spent");
    case FitAccount::End::Stopped:
        return QStringLiteral("stopped by the user");
    case FitAccount::End::Refused:
        break;
    }
    return QStringLiteral("broken off: an annealing cycle began out of bounds");
}

QString general(double value, int digits = 6)
{
    return QString::number(value, 'g', digits);
}

QString line(const char *name, const QString &text)
{
    return QStringLiteral("  %1%2\n").arg(QLatin1String(name), -12).arg(text);
}

QString head(const FitAccount &account)
{
    QString text = QStringLiteral(" Account of the fit\n\n");
    if (!account.targets.isEmpty())
        text += line("targets", account.targets.join(QStringLiteral(", ")));
    text += line("objective", account.objective);
    QString misfit = general(account.misfit);
    if (!account.unit.isEmpty())
        misfit += QLatin1Char(' ') + account.unit;
    if (account.dataCount > 0)
        misfit += QStringLiteral(", ") + general(account.misfit / account.dataCount) +
                  QStringLiteral(" per datum");
    text += line("misfit", misfit);
    if (!account.otherMisfit.isEmpty())
        text += line("besides", account.otherMisfit);
    text += line("data",
                 QStringLiteral("%1, free parameters %2, degrees of freedom %3")
                     .arg(QString::number(account.dataCount), QString::number(freeCount(account)),
                          QString::number(degreesOfFreedom(account))));
    text += line("points",
                 account.starts == 1
                     ? QStringLiteral("%1 in one start").arg(account.points)
                     : QStringLiteral("%1 in %2 starts, of which number %3 is the best")
                           .arg(QString::number(account.points), QString::number(account.starts),
                                QString::number(account.bestStart)));
    return text + line("end", endText(account.end));
}

QString remarkOn(const FitAccount::Parameter &parameter)
{
    if (parameter.range.isFixed)
        return QStringLiteral("fixed");
    if (parameter.isAtMinimum)
        return QStringLiteral("at its lower bound");
    if (parameter.isAtMaximum)
        return QStringLiteral("at its upper bound");
    return parameter.isUndetermined ? QStringLiteral("not determined by the data") : QString();
}

QString parameterTable(const FitAccount &account)
{
    const bool hasErrors = !account.correlations.isEmpty();
    QString text = QStringLiteral("\n  parameter         value") +
                   (hasErrors ? QStringLiteral("  standard error") : QString()) +
                   QStringLiteral("     minimum     maximum\n");
    for (const FitAccount::Parameter &parameter : account.parameters) {
        QString row = QStringLiteral("  %1 %2")
                          .arg(parameter.range.name, -10)
                          .arg(general(parameter.value, 8), 12);
        if (hasErrors)
            row += QStringLiteral("%1").arg(std::isfinite(parameter.standardError)
                                                ? general(parameter.standardError, 3)
                                                : QStringLiteral("-"),
                                            16);
        row += QStringLiteral("%1%2")
                   .arg(general(parameter.range.minimum), 12)
                   .arg(std::isfinite(parameter.range.maximum) ? general(parameter.range.maximum)
                                                               : QStringLiteral("-"),
                        12);
        const QString unit =
            parameter.range.unit == QLatin1String("1") ? QString() : parameter.range.unit;
        const QString remark = remarkOn(parameter);
        row += QStringLiteral("  ") + unit +
               (unit.isEmpty() || remark.isEmpty() ? remark : QStringLiteral(", ") + remark);
        while (row.endsWith(QLatin1Char(' ')))
            row.chop(1);
        text += row + QLatin1Char('\n');
    }
    return text;
}

/// Only where there is more than one.
QString minimaTable(const FitAccount &account)
{
    if (account.minima.size() < 2 || !account.undetermined.isEmpty())
        return QString();
    QString text = QStringLiteral("\n  where the starts ended\n        misfit  starts");
    for (const FitAccount::Parameter &parameter : account.parameters)
        text += parameter.range.name.rightJustified(12);
    for (const FitAccount::Minimum &minimum : account.minima) {
        text += QLatin1Char('\n') + general(minimum.misfit).rightJustified(14) +
                QString::number(minimum.starts).rightJustified(8);
        for (const double value : minimum.values)
            text += general(value).rightJustified(12);
    }
    return text + QLatin1Char('\n');
}

double deviationOf(const FitAccount::Datum &datum)
{
    return datum.isFitted ? (datum.computed - datum.measured) / datum.standardDeviation : 0.0;
}

QString dataTable(const FitAccount &account)
{
    QString text = QStringLiteral("\n  datum            measured         +-    computed"
                                  "  difference   (%1)\n")
                       .arg(account.dataUnit);
    const auto worst = std::max_element(
        account.data.begin(), account.data.end(), [](const auto &a, const auto &b) {
            return std::abs(deviationOf(a)) < std::abs(deviationOf(b));
        });
    double squares = 0.0;
    for (auto datum = account.data.begin(); datum != account.data.end(); ++datum) {
        text += QStringLiteral("  %1").arg(datum->label, -13) + fixed(datum->measured, 2, 12);
        if (!datum->isFitted) {
            text += QStringLiteral("          -");
            text += std::isfinite(datum->computed) ? fixed(datum->computed, 2, 12)
                                                   : QStringLiteral("           -");
            text += QStringLiteral("           -   not fitted\n");
            continue;
        }
        const double difference = datum->computed - datum->measured;
        squares += difference * difference;
        text += general(datum->standardDeviation, 4).rightJustified(11) +
                fixed(datum->computed, 2, 12) + fixed(difference, 2, 12);
        if (!datum->computedLabel.isEmpty() && datum->computedLabel != datum->label)
            text += QStringLiteral("   is %1 of the computation").arg(datum->computedLabel);
        text += datum == worst ? QStringLiteral("   <- worst\n") : QStringLiteral("\n");
    }
    if (account.dataCount > 0)
        text += QStringLiteral("  rms difference ") +
                fixed(std::sqrt(squares / account.dataCount), 2) + QLatin1Char(' ') +
                account.dataUnit + QLatin1Char('\n');
    return text;
}

QString correlationTable(const FitAccount &account)
{
    QVector<int> shown;
    for (int i = 0; i < account.correlations.size(); ++i)
        if (account.correlations.at(i).at(i) != 0.0)
            shown.append(i);
    if (shown.size() < 2)
        return QString();
    QString text = QStringLiteral("\n  correlations\n            ");
    for (const int i : qAsConst(shown))
        text += account.parameters.at(i).range.name.rightJustified(10);
    for (const int i : qAsConst(shown)) {
        text += QStringLiteral("\n  %1").arg(account.parameters.at(i).range.name, -10);
        for (const int j : qAsConst(shown))
            text += fixed(account.correlations.at(i).at(j), 4, 10);
    }
    return text + QLatin1Char('\n');
}

/// "0.71 F2 - 0.70 F4", the terms that matter.
QString combination(const FitAccount &account, const QVector<double> &direction)
{
    constexpr double smallestShown = 0.005;
    QString text;
    for (int i = 0; i < direction.size(); ++i) {
        const double share = direction.at(i);
        if (std::abs(share) < smallestShown)
            continue;
        const QString size = std::abs(std::abs(share) - 1.0) < smallestShown
                                 ? QString()
                                 : fixed(std::abs(share), 2) + QLatin1Char(' ');
        const QString sign = share < 0.0 ? QStringLiteral("- ") : QStringLiteral("+ ");
        const bool isPlainFirst = text.isEmpty() && (share > 0.0 || size.isEmpty());
        text += (text.isEmpty() ? QString() : QStringLiteral(" ")) +
                (isPlainFirst ? QString() : sign) + size + account.parameters.at(i).range.name;
    }
    return text;
}

QString undeterminedText(const FitAccount &account)
{
    if (account.undetermined.isEmpty())
        return QString();
    QStringList directions;
    for (const QVector<double> &direction : account.undetermined)
        directions.append(combination(account, direction));
    return QStringLiteral("\n  The data do not determine %1: %2 may take any value near those "
                          "shown.\n")
        .arg(directions.join(QStringLiteral("; ")),
             directions.size() == 1 ? QStringLiteral("it") : QStringLiteral("they"));
}

QString errorText(const FitAccount &account)
{
    constexpr double doubtfulMisfit = 3.0; // per degree of freedom; 1 is expected
    const int freedom = degreesOfFreedom(account);
    if (account.areDeviationsKnown) {
        const QString text =
            QStringLiteral("\n  Standard errors from the +- of the data as given.\n");
        const double misfit = freedom > 0 ? account.misfit / freedom : 0.0;
        return misfit < doubtfulMisfit
                   ? text
                   : text + QStringLiteral("  The misfit per degree of freedom is %1, not about 1: "
                                           "the model is off by more than the +- allow.\n"
                                           "  With the misfit as their scale the errors are %2 "
                                           "times as large.\n")
                                .arg(general(misfit, 3), general(std::sqrt(misfit), 3));
    }
    const bool isMixed =
        std::any_of(account.data.begin(), account.data.end(), [](const auto &each) {
            return each.isFitted && each.standardDeviation != 1.0;
        });
    if (isMixed)
        return QStringLiteral("\n  Some data have no +- and count with 1 %1: the +- only weigh the "
                              "data, and standard\n  errors are from the misfit per degree of "
                              "freedom.\n")
            .arg(account.dataUnit);
    return freedom > 0
               ? QStringLiteral("\n  Standard errors from the misfit per degree of freedom; the "
                                "data have no +-, or weigh alike.\n")
               : QStringLiteral("\n  No standard errors: there are no more data than parameters, "
                                "and the data have no +-.\n");
}

} // namespace

} // namespace fitAccount

QString LanqorFitAccount::makeText(const FitAccount &account)
{
    using namespace fitAccount;
    QString text = head(account) + parameterTable(account) + minimaTable(account);
    if (!account.correlations.isEmpty())
        text += errorText(account);
    text += undeterminedText(account) + correlationTable(account);
    return account.data.isEmpty() ? text : text + dataTable(account);
}

int LanqorFitAccount::getDegreesOfFreedom(const FitAccount &account)
{
    return fitAccount::degreesOfFreedom(account);
}

LanqorResultTables LanqorFitAccount::makeTables(const FitAccount &account)
{
    using namespace fitAccount;
    LanqorResultTables tables;
    const ResultColumn misfit = {QStringLiteral("misfit"),
                                 account.unit.isEmpty() ? QStringLiteral("1") : account.unit};
    tables.addRecord(QStringLiteral("fit_account"),
                     {column("objective"), misfit, column("data"), column("free_parameters"),
                      column("degrees_of_freedom"), column("points"), column("starts"),
                      column("best_start_from_1"), column("end")},
                     {account.objective, existing(account.misfit), account.dataCount,
                      freeCount(account), degreesOfFreedom(account), account.points, account.starts,
                      account.bestStart, endText(account.end)});
    QVector<QVector<QVariant>> rows;
    for (const FitAccount::Parameter &parameter : account.parameters)
        rows.append({parameter.range.name, parameter.range.unit, parameter.value,
                     existing(parameter.standardError), parameter.range.minimum,
                     existing(parameter.range.maximum), parameter.range.isFixed,
                     parameter.isAtMinimum || parameter.isAtMaximum, !parameter.isUndetermined});
    tables.addTable(QStringLiteral("fit_parameters"),
                    {column("parameter"), column("unit"), column("value", unitOfRow),
                     uncertainty("standard_error", "value", unitOfRow),
                     column("minimum", unitOfRow), column("maximum", unitOfRow), column("is_fixed"),
                     column("is_at_bound"), column("is_determined")},
                    rows);
    if (account.minima.size() > 1) {
        rows.clear();
        for (int m = 0; m < account.minima.size(); ++m)
            for (int i = 0; i < account.parameters.size(); ++i)
                rows.append({m + 1, account.minima.at(m).misfit, account.minima.at(m).starts,
                             account.parameters.at(i).range.name,
                             account.parameters.at(i).range.unit,
                             account.minima.at(m).values.at(i)});
        tables.addTable(QStringLiteral("fit_minima"),
                        {column("minimum_from_1"), misfit, column("starts"), column("parameter"),
                         column("unit"), column("value", unitOfRow)},
                        rows);
    }
    if (account.data.isEmpty())
        return tables;
    const QByteArray unit = account.dataUnit.toUtf8();
    rows.clear();
    for (const FitAccount::Datum &datum : account.data)
        rows.append({datum.label, datum.measured, datum.standardDeviation, existing(datum.computed),
                     datum.computedLabel, datum.isFitted});
    tables.addTable(QStringLiteral("fit_data"),
                    {column("datum"), column("measured", unit.constData()),
                     uncertainty("standard_deviation", "measured", unit.constData()),
                     column("computed", unit.constData()), column("computed_label"),
                     column("is_fitted")},
                    rows);
    if (account.correlations.isEmpty())
        return tables;
    rows.clear();
    for (int i = 0; i < account.parameters.size(); ++i)
        for (int j = i + 1; j < account.parameters.size(); ++j)
            if (account.correlations.at(i).at(i) != 0.0 && account.correlations.at(j).at(j) != 0.0)
                rows.append({account.parameters.at(i).range.name,
                             account.parameters.at(j).range.name,
                             account.correlations.at(i).at(j)});
    tables.addTable(QStringLiteral("fit_correlations"),
                    {column("parameter_1"), column("parameter_2"), column("correlation", "1")},
                    rows);
    rows.clear();
    for (int k = 0; k < account.undetermined.size(); ++k)
        for (int i = 0; i < account.parameters.size(); ++i)
            if (account.undetermined.at(k).at(i) != 0.0)
                rows.append(
                    {k + 1, account.parameters.at(i).range.name, account.undetermined.at(k).at(i)});
    tables.addTable(QStringLiteral("fit_undetermined"),
                    {column("direction_from_1"), column("parameter"), column("share", "1")}, rows);
    return tables;
}

void LanqorFitAccount::setValues(FitAccount &account, const QVector<double> &values)
{
    QVector<FitParameter> ranges;
    for (const FitAccount::Parameter &parameter : qAsConst(account.parameters))
        ranges.append(parameter.range);
    fitAccount::addParameters(account, ranges, values);
}

LeastSquaresResults LanqorFitAccount::chooseBest(const QVector<LeastSquaresResults> &starts)
{
    LeastSquaresResults best;
    QVector<QVector<double>> vectors;
    QVector<double> misfits;
    qint64 points = 0;
    int bestStart = 0;
    bool isStopped = false;
    for (int i = 0; i < starts.size(); ++i) {
        const LeastSquaresResults &start = starts.at(i);
        vectors.append(start.vector);
        misfits.append(start.account.misfit);
        points += start.account.points;
        isStopped = isStopped || start.account.end == FitAccount::End::Stopped;
        // Of misfits that are equal but for rounding the lowest start counts: it is nearest to what
        // was asked for where the data leave something open.
        constexpr double relative = 1.0e-9;
        constexpr double exact = 1.0e-12;
        if (!start.vector.isEmpty() &&
            (bestStart == 0 || start.account.misfit * (1.0 + relative) + exact <
                                   starts.at(bestStart - 1).account.misfit))
            bestStart = i + 1;
    }
    if (bestStart == 0)
        return best;
    best = starts.at(bestStart - 1);
    best.account.points = points;
    best.account.starts = starts.size();
    best.account.bestStart = bestStart;
    if (isStopped)
        best.account.end = FitAccount::End::Stopped;
    fitAccount::addMinima(best.account, vectors, misfits);
    return best;
}
