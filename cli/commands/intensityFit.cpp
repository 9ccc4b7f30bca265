#include "commands/intensityFit.h"

#include "text.h"

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

/// A target in the unit in which it is entered, to the digits that were entered.
double asEntered(double omega)
{
    return QString::number(omega / omegaUnitCm2, 'g', 15).toDouble();
}

} // namespace

QString omegaTable(const QVector<FittedOmega> &omega)
{
    QString text = tr("Intensity parameters / 1e-20 cm^2\n\n"
                      "  lambda    measured      fitted\n");
    for (const FittedOmega &each : omega)
        text += column(each.lambda, 8) +
                (std::isnan(each.measured) ? QStringLiteral("-").rightJustified(12)
                                           : column(asEntered(each.measured), 2, 12)) +
                column(each.fitted / omegaUnitCm2, 2, 12) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

void noteMissedTargets(const QVector<FittedOmega> &omega, const QString &advice)
{
    constexpr double printedHalf = 0.005;
    double largestGap = 0.0;
    for (const FittedOmega &each : omega) {
        const double gap = std::abs(each.fitted / omegaUnitCm2 - asEntered(each.measured));
        if (!std::isnan(gap))
            largestGap = std::max(largestGap, gap);
    }
    if (largestGap > printedHalf)
        warn(tr("the targets were not reached: the best point found is off by %1e-20 "
                "cm^2. %2")
                 .arg(QString::number(largestGap, 'f', 2), advice));
}

QString responseLine(double response, qint64 points)
{
    return tr("Response %1 (1e-20 cm^2)^2, best of %2 points\n")
        .arg(QString::number(response, 'g', 6), QString::number(points));
}

} // namespace cli
