#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/JuddOfeltResults.h>

#include <algorithm>

namespace plots {

using cli::tr;

namespace {

constexpr double unit = 1e-6; // of oscillator strengths in pictures

/// Sticks upon a common ground, from left to right.
CurvePlot::Series sticksOf(QVector<QPointF> tops, const QString &name)
{
    std::sort(tops.begin(), tops.end(),
              [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); });
    CurvePlot::Series series;
    series.style = CurvePlot::Style::Line;
    series.name = name;
    for (const QPointF &top : qAsConst(tops)) {
        const QPointF foot(top.x(), 0.0);
        series.points += {foot, top, foot};
    }
    return series;
}

} // namespace

CurvePlot strengths(const JuddOfeltResults &results)
{
    CurvePlot plot;
    plot.title = tr("Oscillator strengths of %1(III)").arg(results.ion.symbol);
    plot.xTitle = tr("measured f / 10<sup>-6</sup>");
    plot.yTitle = tr("calculated f / 10<sup>-6</sup>");
    CurvePlot::Series data;
    double highest = 0.0;
    for (const JuddOfeltResults::Band &band : results.bands) {
        data.points.append({band.measuredF / unit, band.calculatedF / unit});
        highest = std::max({highest, data.points.last().x(), data.points.last().y()});
    }
    plot.series = {{{{0.0, 0.0}, {highest, highest}}, CurvePlot::Style::Line, QString()}, data};
    return plot;
}

CurvePlot sticks(const JuddOfeltResults &results)
{
    // Side by side, so that neither hides the other.
    double highest = 0.0;
    for (const JuddOfeltResults::Band &band : results.bands)
        highest = std::max(highest, band.wavenumber);
    const double aside = 0.002 * highest;
    QVector<QPointF> measured;
    QVector<QPointF> calculated;
    for (const JuddOfeltResults::Band &band : results.bands) {
        measured.append({band.wavenumber - aside, band.measuredF / unit});
        calculated.append({band.wavenumber + aside, band.calculatedF / unit});
    }
    CurvePlot plot;
    plot.title = tr("Absorption of %1(III) from %2").arg(results.ion.symbol, results.ground);
    plot.xTitle = tr("wavenumber / cm<sup>-1</sup>");
    plot.yTitle = tr("f / 10<sup>-6</sup>");
    plot.series = {sticksOf(measured, tr("measured")), sticksOf(calculated, tr("calculated"))};
    return plot;
}

} // namespace plots
