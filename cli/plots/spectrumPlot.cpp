#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/AbsorptionResults.h>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

constexpr double nmTimesWavenumber = 1e7; // of nm and cm^-1

/// Labels a scale in nm with wavenumbers in 1000 cm^-1.
class WavenumberScale : public QwtScaleDraw
{
public:
    QwtText label(double wavelength) const override
    {
        return QwtText(QString::number(nmTimesWavenumber / wavelength / 1000.0, 'g', 4));
    }
};

/// A round step that gives between four and nine wavenumbers of the range.
double roundStep(double range)
{
    const double magnitude = std::pow(10.0, std::floor(std::log10(range / 4.0)));
    for (const double factor : {5.0, 2.0}) {
        if (range / (factor * magnitude) >= 4.0)
            return factor * magnitude;
    }
    return magnitude;
}

/// Round wavenumbers above the wavelengths of the lower axis, left out where they crowd.
void addWavenumberAxis(QwtPlot &plot, double shortest, double longest)
{
    const double low = nmTimesWavenumber / longest;
    const double high = nmTimesWavenumber / shortest;
    const double step = roundStep(high - low);
    const double nearest = 0.06 * (longest - shortest);
    QList<double> ticks;
    for (double k = std::ceil(low / step); k * step <= high; k += 1.0) {
        const double wavelength = nmTimesWavenumber / (k * step);
        if (ticks.isEmpty() || ticks.last() - wavelength > nearest)
            ticks.append(wavelength);
    }
    std::reverse(ticks.begin(), ticks.end());
    QwtScaleDiv scale(shortest, longest);
    scale.setTicks(QwtScaleDiv::MajorTick, ticks);
    plot.enableAxis(QwtPlot::xTop);
    plot.setAxisScaleDraw(QwtPlot::xTop, new WavenumberScale);
    plot.setAxisScaleDiv(QwtPlot::xTop, scale);
    setAxisTitle(plot, QwtPlot::xTop, tr("wavenumber / 10<sup>3</sup> cm<sup>-1</sup>"));
}

/// The transitions as lines of the height of their oscillator strengths, on the right axis.
void addTransitions(QwtPlot &plot, const QVector<AbsorptionTransition> &transitions,
                    double shortest, double longest)
{
    QVector<QPointF> sticks;
    double largest = 0.0;
    for (const AbsorptionTransition &transition : transitions) {
        const double strength = transition.oscillatorStrength;
        if (transition.wavelength < shortest || transition.wavelength > longest || strength <= 0.0)
            continue;
        sticks.append({transition.wavelength, strength});
        largest = std::max(largest, strength);
    }
    if (sticks.isEmpty())
        return;
    plot.enableAxis(QwtPlot::yRight);
    plot.setAxisScale(QwtPlot::yRight, 0.0, 1.05 * largest);
    setAxisTitle(plot, QwtPlot::yRight, tr("oscillator strength"));
    auto *curve = new QwtPlotCurve;
    curve->setStyle(QwtPlotCurve::Sticks);
    curve->setPen(QColor(0x99, 0x99, 0x99), 1.5);
    curve->setYAxis(QwtPlot::yRight);
    curve->setSamples(sticks);
    curve->attach(&plot);
}

} // namespace

void draw(const AbsorptionResults &spectrum, const QString &title, const QString &file)
{
    QwtPlot plot;
    applyStyle(plot, title);
    const auto range =
        std::minmax_element(spectrum.wavelengths.cbegin(), spectrum.wavelengths.cend());
    plot.setAxisScale(QwtPlot::xBottom, *range.first, *range.second);
    plot.setAxisScale(QwtPlot::yLeft, 0.0, 1.05);
    setAxisTitle(plot, QwtPlot::xBottom, tr("wavelength / nm"));
    setAxisTitle(plot, QwtPlot::yLeft, tr("absorption (largest value 1)"));
    addWavenumberAxis(plot, *range.first, *range.second);
    auto *grid = new QwtPlotGrid;
    grid->setPen(QColor(0xdd, 0xdd, 0xdd), 0.5);
    grid->attach(&plot);
    addTransitions(plot, spectrum.transitions, *range.first, *range.second);
    auto *curve = new QwtPlotCurve;
    curve->setPen(QColor(0x1f, 0x4e, 0x9e), 2.0);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setSamples(spectrum.wavelengths, spectrum.absorption);
    curve->attach(&plot);
    writePlot(plot, file);
}

} // namespace plots
