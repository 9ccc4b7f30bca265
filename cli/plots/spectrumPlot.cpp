#include "plots/figureStyle.h"
#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/AbsorptionResults.h>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_text.h>

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

/// Numbers the strongest transitions whose main configuration is known, from the left; a line below
/// the plot tells these. Of those in each other's way the strongest has a number.
void nameTransitions(QwtPlot &plot, QVector<AbsorptionTransition> transitions, double range)
{
    constexpr int most = 6;
    constexpr double weakest = 0.05; // of the strongest
    constexpr double nearest = 0.03; // of the range
    std::stable_sort(transitions.begin(), transitions.end(),
                     [](const AbsorptionTransition &a, const AbsorptionTransition &b) {
                         return a.oscillatorStrength > b.oscillatorStrength;
                     });
    QVector<AbsorptionTransition> named;
    for (const AbsorptionTransition &transition : qAsConst(transitions)) {
        const bool isFree =
            std::none_of(named.cbegin(), named.cend(), [&](const AbsorptionTransition &other) {
                return std::abs(other.wavelength - transition.wavelength) < nearest * range;
            });
        if (isFree && !transition.configuration.isEmpty() && named.size() < most &&
            transition.oscillatorStrength >= weakest * transitions.first().oscillatorStrength)
            named.append(transition);
    }
    std::sort(named.begin(), named.end(),
              [](const AbsorptionTransition &a, const AbsorptionTransition &b) {
                  return a.wavelength < b.wavelength;
              });
    QString key;
    for (int i = 0; i < named.size(); ++i) {
        auto *marker = new QwtPlotMarker;
        marker->setYAxis(QwtPlot::yRight);
        marker->setLabel(legendText(QString::number(i + 1)));
        marker->setLabelAlignment(Qt::AlignTop | Qt::AlignHCenter);
        marker->setValue(named.at(i).wavelength, named.at(i).oscillatorStrength);
        marker->setZ(40.0); // above the curves
        marker->attach(&plot);
        const QString separator = i == 0       ? QString()
                                  : i % 2 == 0 ? QStringLiteral("\n")
                                               : QStringLiteral(",   ");
        key += QStringLiteral("%1%2: %3")
                   .arg(separator, QString::number(i + 1), named.at(i).configuration);
    }
    if (!key.isEmpty())
        plot.setFooter(legendText(key));
}

/// The transitions as lines of the height of their oscillator strengths, on the right axis.
void addTransitions(QwtPlot &plot, const QVector<AbsorptionTransition> &all, double shortest,
                    double longest)
{
    QVector<AbsorptionTransition> transitions;
    QVector<QPointF> sticks;
    double largest = 0.0;
    for (const AbsorptionTransition &transition : all) {
        const double strength = transition.oscillatorStrength;
        if (transition.wavelength < shortest || transition.wavelength > longest || strength <= 0.0)
            continue;
        transitions.append(transition);
        sticks.append({transition.wavelength, strength});
        largest = std::max(largest, strength);
    }
    if (sticks.isEmpty())
        return;
    plot.enableAxis(QwtPlot::yRight);
    plot.setAxisScale(QwtPlot::yRight, 0.0, 1.15 * largest);
    setAxisTitle(plot, QwtPlot::yRight, tr("oscillator strength"));
    auto *curve = new QwtPlotCurve;
    curve->setStyle(QwtPlotCurve::Sticks);
    curve->setPen(color::black, 1.8, Qt::SolidLine);
    curve->setYAxis(QwtPlot::yRight);
    curve->setSamples(sticks);
    curve->setItemAttribute(QwtPlotItem::Legend, false);
    curve->attach(&plot);
    nameTransitions(plot, transitions, longest - shortest);
}

void addCurve(QwtPlot &plot, const QString &name, const QVector<double> &wavelengths,
              const QVector<double> &absorption, const QPen &pen)
{
    auto *curve = new QwtPlotCurve(legendText(name));
    curve->setPen(pen);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setSamples(wavelengths, absorption);
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
    addCurve(plot, tr("calculated"), spectrum.wavelengths, spectrum.absorption,
             QPen(color::blue, 2.0));
    if (!spectrum.measuredFile.isEmpty()) {
        addCurve(plot, tr("measured, same maximum"), spectrum.measuredWavelengths,
                 spectrum.measuredAbsorption, QPen(color::orange, 2.0, Qt::DashLine));
        plot.insertLegend(new QwtLegend, QwtPlot::BottomLegend);
        plot.updateLayout();
    }
    writePlot(plot, file);
}

} // namespace plots
