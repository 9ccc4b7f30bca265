#include "run/Run.h"

#include "run/RunRequest.h"
#include "text.h"

#include <LanqorEngine/DonorTripletResults.h>

namespace cli {

namespace {

constexpr double omegaUnitCm2 = 1.0e-20;
constexpr double msPerSecond = 1000.0;

QString line(const QString &name, const QString &value)
{
    constexpr int width = 32;
    return QStringLiteral("  ") + name.leftJustified(width) + value + QLatin1Char('\n');
}

QString fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

/// With its standard deviation where that is known.
QString energyText(double energy, double standardDeviation)
{
    return standardDeviation > 0.0
               ? tr("%1 +- %2 cm^-1").arg(fixed(energy, 0), fixed(standardDeviation, 0))
               : tr("%1 cm^-1").arg(fixed(energy, 0));
}

QString energyText(const TripletValue &value)
{
    return value.isAvailable ? energyText(value.energy, value.standardDeviation)
                             : tr("not available: %1").arg(value.reason);
}

QString tripletLines(const DonorTripletResults &triplet)
{
    QString text;
    if (triplet.measured.isAvailable)
        text += line(tr("T1, measured"), energyText(triplet.measured));
    text += line(tr("T1, %1").arg(triplet.states.name), energyText(triplet.states)) +
            line(tr("T1, %1").arg(triplet.gfn1.name), energyText(triplet.gfn1));
    if (triplet.areCompared)
        text += line(tr("the calculated two"),
                     tr("%1, difference %2 cm^-1")
                         .arg(triplet.doAgree ? tr("agree") : tr("do not agree"),
                              fixed(triplet.difference, 0)));
    text +=
        line(tr("T1 that goes on"), tr("%1, RL %2 Angstrom")
                                        .arg(energyText(triplet.energy, triplet.standardDeviation),
                                             fixed(triplet.tripletDistance, 3)));
    return text + line(tr("S1"), tr("%1 cm^-1, RL %2 Angstrom")
                                     .arg(fixed(triplet.singletEnergy, 0),
                                          fixed(triplet.singletDistance, 3)));
}

QString yieldLines(const RunReport &report)
{
    const SpectroscopicResults &yield = *report.yield;
    QString text =
        line(tr("radiative rate"), tr("%1 s^-1").arg(fixed(yield.arad, 1))) +
        line(yield.isLifeTimeEstimated ? tr("lifetime of 5D0, estimated")
                                       : tr("lifetime of 5D0, measured"),
             tr("%1 ms").arg(fixed(msPerSecond * yield.lifeTime, 3))) +
        line(tr("quantum efficiency"), tr("%1 %").arg(textOfYield(yield.quantumEfficiency))) +
        line(tr("quantum yield"), tr("%1 %").arg(textOfYield(yield.quantumYield)));
    if (report.uncertainty && !report.uncertainty->quantities.isEmpty()) {
        const UncertaintyResults::Quantity &interval = report.uncertainty->quantities.first();
        text +=
            line(tr("  68 % of the sets"),
                 tr("%1 to %2 %").arg(textOfYield(interval.low68), textOfYield(interval.high68))) +
            line(tr("  95 % of the sets"),
                 tr("%1 to %2 %").arg(textOfYield(interval.low95), textOfYield(interval.high95)));
    }
    return text + line(tr("limiting step"), yield.limitingStep);
}

} // namespace

QString runSummary(const RunReport &report)
{
    QString text;
    for (const QString &first : report.firstLines)
        text += first + QLatin1Char('\n');
    if (!text.isEmpty())
        text += QLatin1Char('\n');
    text += line(tr("complex"), report.name) + line(tr("charge"), QString::number(report.charge));
    if (report.sphere.coordNumber > 0)
        text += line(tr("coordination number"), QString::number(report.sphere.coordNumber));
    text += line(tr("medium"), report.medium);
    if (report.triplet)
        text += tripletLines(*report.triplet);
    if (report.omega)
        for (const int rank : {2, 4, 6})
            text += line(tr("Omega(%1)").arg(rank),
                         tr("%1e-20 cm^2").arg(fixed(report.omega->omega[rank] / omegaUnitCm2, 3)));
    if (report.yield)
        text += yieldLines(report);
    for (const QString &thing : report.missing)
        text += tr("\nMissing: %1\n").arg(thing);
    return text;
}

} // namespace cli
