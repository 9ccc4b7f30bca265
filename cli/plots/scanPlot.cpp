#include "plots/figureStyle.h"
#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/UncertaintyResults.h>
#include <LanqorEngine/YieldScanResults.h>

#include <qwt_color_map.h>
#include <qwt_matrix_raster_data.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_spectrogram.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

QString titleOf(const YieldScanAxis &axis)
{
    QString unit = axis.unit;
    unit.replace(QLatin1String("^-1"), QLatin1String("<sup>-1</sup>"))
        .replace(QLatin1String("^2"), QLatin1String("<sup>2</sup>"));
    return unit == QLatin1String("1") ? axis.name : axis.name + QStringLiteral(" / ") + unit;
}

/// The ends of an axis, the lower one first, apart from each other.
std::pair<double, double> rangeOf(const YieldScanAxis &axis)
{
    const double first = axis.from;
    const double last = axis.value(axis.count - 1);
    const double half = first == last ? 0.5 * std::abs(axis.step) : 0.0;
    return {std::min(first, last) - half, std::max(first, last) + half};
}

QColor colorOfMark(const YieldScanResults &scan)
{
    return scan.axes.size() == 1 ? color::red : QColor(Qt::white);
}

/// Marks where the inputs are as they were given, if the picture holds that.
void addMark(QwtPlot &plot, const YieldScanResults &scan, double x, double y)
{
    auto *mark = new QwtPlotMarker;
    mark->setSymbol(new QwtSymbol(QwtSymbol::Ellipse, QBrush(colorOfMark(scan)),
                                  QPen(Qt::black, 1.0), QSize(9, 9)));
    mark->setValue(x, y);
    mark->setZ(30.0); // above the curve
    mark->attach(&plot);
}

bool holds(const YieldScanAxis &axis)
{
    const auto range = rangeOf(axis);
    return axis.asGiven >= range.first && axis.asGiven <= range.second;
}

/// The intervals of the yield that hold 95 % and, thicker, 68 % of the sets.
void addErrorBars(QwtPlot &plot, const UncertaintyResults::Quantity &yield, double x)
{
    const auto addBar = [&plot, x](double low, double high, double width) {
        auto *bar = new QwtPlotCurve;
        bar->setPen(QPen(color::red, width, Qt::SolidLine, Qt::FlatCap));
        bar->setSamples(QVector<QPointF>{{x, low}, {x, high}});
        bar->setZ(25.0); // above the curve
        bar->attach(&plot);
    };
    addBar(yield.low95, yield.high95, 1.0);
    addBar(yield.low68, yield.high68, 3.0);
}

void addCurve(QwtPlot &plot, const YieldScanResults &scan, const UncertaintyResults &errorBars)
{
    const YieldScanAxis &axis = scan.axes.first();
    QVector<QPointF> samples;
    for (int i = 0; i < scan.points.size(); ++i)
        if (std::isfinite(scan.points.at(i).quantumYield))
            samples.append({axis.value(i), scan.points.at(i).quantumYield});
    auto *grid = new QwtPlotGrid;
    grid->setPen(QColor(0xdd, 0xdd, 0xdd), 0.5);
    grid->attach(&plot);
    auto *curve = new QwtPlotCurve;
    curve->setPen(color::blue, 2.0);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setSamples(samples);
    curve->attach(&plot);
    plot.setAxisScale(QwtPlot::xBottom, rangeOf(axis).first, rangeOf(axis).second);
    plot.setAxisMaxMajor(QwtPlot::xBottom, 6); // labels of five digits
    setAxisTitle(plot, QwtPlot::yLeft, tr("quantum yield / %"));
    if (!holds(axis))
        return;
    if (!errorBars.quantities.isEmpty())
        addErrorBars(plot, errorBars.quantities.first(), axis.asGiven);
    addMark(plot, scan, axis.asGiven, scan.asGiven.quantumYield);
}

/// The yields in colours, with the first axis below and the second at the left.
void addMap(QwtPlot &plot, const YieldScanResults &scan)
{
    const YieldScanAxis &across = scan.axes.at(0);
    const YieldScanAxis &upwards = scan.axes.at(1);
    QVector<double> rows; // from below, each from the left
    double highest = 0.0;
    for (int row = 0; row < upwards.count; ++row)
        for (int column = 0; column < across.count; ++column) {
            const int i = across.step > 0.0 ? column : across.count - 1 - column;
            const int k = upwards.step > 0.0 ? row : upwards.count - 1 - row;
            const double yield = scan.points.at(i * upwards.count + k).quantumYield;
            rows.append(yield);
            highest = std::isfinite(yield) ? std::max(highest, yield) : highest;
        }
    // Points are the middles of the fields.
    const auto intervalOf = [](const YieldScanAxis &axis) {
        const double half = 0.5 * std::abs(axis.step);
        const auto range = rangeOf(axis);
        return axis.count == 1 ? QwtInterval(range.first, range.second)
                               : QwtInterval(range.first - half, range.second + half);
    };
    const QwtInterval yields(0.0, highest > 0.0 ? highest : 1.0);
    const auto makeColors = [] {
        auto *colors = new QwtLinearColorMap(QColor(0x10, 0x14, 0x40), QColor(0xff, 0xf2, 0x8a));
        colors->addColorStop(0.5, QColor(0xb0, 0x2a, 0x5b));
        return colors;
    };
    auto *data = new QwtMatrixRasterData;
    data->setValueMatrix(rows, across.count);
    data->setInterval(Qt::XAxis, intervalOf(across));
    data->setInterval(Qt::YAxis, intervalOf(upwards));
    data->setInterval(Qt::ZAxis, yields);
    auto *map = new QwtPlotSpectrogram;
    map->setColorMap(makeColors());
    map->setData(data);
    map->attach(&plot);
    plot.setAxisScale(QwtPlot::xBottom, intervalOf(across).minValue(),
                      intervalOf(across).maxValue());
    plot.setAxisScale(QwtPlot::yLeft, intervalOf(upwards).minValue(),
                      intervalOf(upwards).maxValue());
    setAxisTitle(plot, QwtPlot::yLeft, titleOf(upwards));
    plot.enableAxis(QwtPlot::yRight);
    QwtScaleWidget *scale = plot.axisWidget(QwtPlot::yRight);
    scale->setColorBarEnabled(true);
    scale->setColorMap(yields, makeColors());
    plot.setAxisScale(QwtPlot::yRight, yields.minValue(), yields.maxValue());
    setAxisTitle(plot, QwtPlot::yRight, tr("quantum yield / %"));
    if (holds(across) && holds(upwards))
        addMark(plot, scan, across.asGiven, upwards.asGiven);
}

} // namespace

void draw(const YieldScanResults &scan, const UncertaintyResults &errorBars, const QString &title,
          const QString &file)
{
    QwtPlot plot;
    applyStyle(plot, title);
    setAxisTitle(plot, QwtPlot::xBottom, titleOf(scan.axes.first()));
    if (scan.axes.size() == 1)
        addCurve(plot, scan, errorBars);
    else
        addMap(plot, scan);
    writePlot(plot, file);
}

} // namespace plots
