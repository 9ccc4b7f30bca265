#include "fitting/starkFitReport_p.h"

#include "core/reportText_p.h"
#include "levels/starkReport_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QStringList>

#include <cmath>

using reportText::fixed;

namespace {

QString head(const StarkFitResult &result)
{
    return LanqorInputData::LANQORTitle +
           QStringLiteral("\n\n\nThe data shown below were calculated from the geometry read in "
                          "following file: \n") +
           result.structureFile + QStringLiteral("\n\n Effective charge = ") +
           fixed(result.effectiveCharge, 4) + QStringLiteral("\n Response = ") +
           fixed(result.response, 4) + QStringLiteral(" cm^-1, at point %1\n\n").arg(result.point);
}

QString chargeFactors(const StarkFitResult &result)
{
    QString text = starkReport::heading(QStringLiteral("Charge Factors of the Groups")) +
                   QStringLiteral("             g  Group and its atoms\n");
    for (int i = 0; i < result.groups.size(); ++i) {
        QStringList words{result.groups.at(i).name};
        for (const int atom : result.groups.at(i).atoms)
            words.append(QString::number(atom));
        text += fixed(result.chargeFactors.value(i), 6, 14) + QStringLiteral("  ") +
                words.join(QLatin1Char(' ')) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString comparison(const QString &name, double computed, double measured)
{
    return QStringLiteral("  %1").arg(name, -10) + fixed(computed, 2, 12) + fixed(measured, 2, 12) +
           fixed(computed - measured, 2, 12) + QLatin1Char('\n');
}

QString transitions(const StarkFitResult &result)
{
    QString text = starkReport::heading(QStringLiteral("Computed and Measured Levels / cm^-1")) +
                   QStringLiteral(" Measured levels less the offset.\n\n");
    for (const TransitionValues &transition : result.transitions) {
        const QVector<double> levels = result.levels.value(transition.level);
        if (levels.isEmpty())
            continue;
        const double low = transition.energyLow - transition.offset;
        const double high = transition.energyHigh - transition.offset;
        text += QStringLiteral(" 7F%1, offset %2\n")
                    .arg(transition.level)
                    .arg(fixed(transition.offset, 2)) +
                QStringLiteral("                computed    measured  difference\n") +
                comparison(QStringLiteral("lowest"), levels.first(), low) +
                comparison(QStringLiteral("highest"), levels.last(), high) +
                comparison(QStringLiteral("splitting"), levels.last() - levels.first(),
                           std::abs(high - low)) +
                QLatin1Char('\n');
    }
    return text;
}

} // namespace

QString starkFitReport(const StarkFitResult &result)
{
    return head(result) + chargeFactors(result) + transitions(result) +
           starkReport::levelTable(result.levels) + result.citations;
}
