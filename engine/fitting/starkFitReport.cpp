#include "fitting/starkFitReport_p.h"

#include "core/reportText_p.h"
#include "levels/starkReport_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QStringList>

#include <cmath>

using reportText::fixed;

namespace {

QString head(const StarkFitResults &results)
{
    return LanqorInputData::LANQORTitle +
           QStringLiteral("\n\n\nThe data shown below were calculated from the geometry read in "
                          "following file: \n") +
           results.structureFile + QStringLiteral("\n\n Effective charge = ") +
           fixed(results.effectiveCharge, 4) + QStringLiteral("\n Response = ") +
           fixed(results.response, 4) +
           QStringLiteral(" cm^-1, at point %1\n\n").arg(results.bestPoint);
}

QString chargeFactors(const StarkFitResults &results)
{
    QString text = starkReport::heading(QStringLiteral("Charge Factors of the Groups")) +
                   QStringLiteral("             g  Group and its atoms\n");
    for (const StarkFitGroup &fitted : results.groups) {
        QStringList words{fitted.group.name};
        for (const int atom : fitted.group.atoms)
            words.append(QString::number(atom));
        text += fixed(fitted.chargeFactor, 6, 14) + QStringLiteral("  ") +
                words.join(QLatin1Char(' ')) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString comparison(const QString &name, double computed, double measured)
{
    return QStringLiteral("  %1").arg(name, -10) + fixed(computed, 2, 12) + fixed(measured, 2, 12) +
           fixed(computed - measured, 2, 12) + QLatin1Char('\n');
}

QString transitions(const StarkFitResults &results)
{
    QString text = starkReport::heading(QStringLiteral("Computed and Measured Levels / cm^-1")) +
                   QStringLiteral(" Measured levels less the offset.\n\n");
    for (const StarkFitTransition &t : results.transitions) {
        text +=
            QStringLiteral(" 7F%1, offset %2\n").arg(QString::number(t.level), fixed(t.offset, 2)) +
            QStringLiteral("                computed    measured  difference\n") +
            comparison(QStringLiteral("lowest"), t.computedLow, t.measuredLow) +
            comparison(QStringLiteral("highest"), t.computedHigh, t.measuredHigh) +
            comparison(QStringLiteral("splitting"), t.computedHigh - t.computedLow,
                       std::abs(t.measuredHigh - t.measuredLow)) +
            QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString starkFitReport(const StarkFitResults &results)
{
    return head(results) + chargeFactors(results) + transitions(results) +
           starkReport::levelTable(results.levels) +
           starkReport::elementsLine(results.reducedElements) + results.citations;
}
