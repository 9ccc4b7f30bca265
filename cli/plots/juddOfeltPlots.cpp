#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/JuddOfeltResults.h>

#include <algorithm>

namespace plots {

using cli::tr;

namespace {

constexpr double unit = 1e-6; // of oscillator strengths in pictures

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
    CurvePlot plot;
    plot.title = tr("Absorption of %1(III) from %2: lines measured, dots calculated")
                     .arg(results.ion.symbol, results.ground);
    plot.xTitle = tr("wavenumber / cm<sup>-1</sup>");
    plot.yTitle = tr("f / 10<sup>-6</sup>");
    for (const JuddOfeltResults::Band &band : results.bands)
        plot.series.append({{{band.wavenumber, 0.0}, {band.wavenumber, band.measuredF / unit}},
                            CurvePlot::Style::Line,
                            QString()});
    CurvePlot::Series calculated;
    for (const JuddOfeltResults::Band &band : results.bands)
        calculated.points.append({band.wavenumber, band.calculatedF / unit});
    plot.series.append(calculated);
    return plot;
}

} // namespace plots
