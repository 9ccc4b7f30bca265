#include "plots/figureStyle.h"
#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/CalculatedEmission.h>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

constexpr double nmTimesWavenumber = 1e7; // of nm and cm^-1
constexpr double labelPlace = 1.04;       // above the largest value, 1
constexpr double top = 1.28;

/// Wavelengths between which the calculated curve can be seen, and the place of 7F0.
std::pair<double, double> rangeOf(const CalculatedEmission &emission)
{
    constexpr double visible = 2e-3;
    constexpr double around = 6.0; // nm
    double low = 575.0;            // nm
    double high = low;
    for (int i = 0; i < emission.wavelengths.size(); ++i)
        if (emission.powerDensity.at(i) > visible) {
            low = std::min(low, emission.wavelengths.at(i));
            high = std::max(high, emission.wavelengths.at(i));
        }
    return {low - around, high + around};
}

QwtPlotCurve *addCurve(QwtPlot &plot, const QString &name, const QPen &pen)
{
    auto *curve = new QwtPlotCurve(legendText(name));
    curve->setPen(pen);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->attach(&plot);
    return curve;
}

/// The names of the bands and their shares above them.
void nameBands(QwtPlot &plot, const CalculatedEmission &emission, double longest)
{
    for (const CalculatedEmission::Band &band : emission.bands) {
        const double wavelength =
            band.barycenter > 0.0 ? nmTimesWavenumber / band.barycenter : longest;
        if (wavelength >= longest)
            continue;
        QwtText text(QStringLiteral("%1F%2\n%3 %")
                         .arg(superscript(7), QString(QChar(0x2080 + band.J)),
                              QString::number(band.share, 'g', 2 + (band.share >= 10.0 ? 1 : 0))),
                     QwtText::PlainText);
        auto *marker = new QwtPlotMarker;
        text.setFont(labelFont());
        marker->setLabel(text);
        marker->setLabelAlignment(Qt::AlignTop | Qt::AlignHCenter);
        marker->setValue(wavelength, labelPlace);
        marker->attach(&plot);
    }
}

} // namespace

void draw(const CalculatedEmission &emission, const QVector<QPointF> &measured,
          const QString &title, const QString &file)
{
    QwtPlot plot;
    applyStyle(plot, title);
    const auto range = rangeOf(emission);
    plot.setAxisScale(QwtPlot::xBottom, range.first, range.second);
    setAxisTitle(plot, QwtPlot::xBottom, tr("wavelength / nm"));
    setAxisTitle(plot, QwtPlot::yLeft, tr("emitted power per nm"));
    double highest = 1.0;
    if (!measured.isEmpty()) {
        QVector<QPointF> shown;
        for (const QPointF &point : measured)
            if (point.x() >= range.first && point.x() <= range.second) {
                shown.append(point);
                highest = std::max(highest, point.y());
            }
        QwtPlotCurve *curve = addCurve(
            plot, tr("measured (same area of %1F%2)").arg(superscript(7), QString(QChar(0x2081))),
            QPen(color::grey, 1.2));
        curve->setBrush(color::faint);
        curve->setSamples(shown);
    }
    plot.setAxisScale(QwtPlot::yLeft, 0.0, top * highest);
    QwtPlotCurve *curve = addCurve(plot,
                                   tr("calculated (lines of %1 cm%2, equal within a band)")
                                       .arg(QString::number(emission.width), superscript(-1)),
                                   QPen(color::blue, 1.8));
    curve->setSamples(emission.wavelengths, emission.powerDensity);
    nameBands(plot, emission, range.second);
    auto *legend = new QwtLegend;
    legend->setMaxColumns(1);
    plot.insertLegend(legend, QwtPlot::BottomLegend);
    plot.updateLayout();
    writePlot(plot, file);
}

} // namespace plots
