#include "plots/plotFile.h"
#include "plots/plots.h"

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_engine.h>
#include <qwt_symbol.h>

namespace plots {

namespace {

QColor colorOf(int series)
{
    static const QColor colors[] = {{0x1f, 0x4e, 0x9e}, {0xb3, 0x4a, 0x00}, {0x2c, 0x7d, 0x3f},
                                    {0x7a, 0x3c, 0x9a}, {0x66, 0x66, 0x66}, {0xc0, 0x20, 0x20}};
    return colors[series % int(std::size(colors))];
}

QwtPlotCurve *makeCurve(const CurvePlot::Series &series, const QColor &color)
{
    auto *curve = new QwtPlotCurve(series.name);
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setItemAttribute(QwtPlotItem::Legend, !series.name.isEmpty());
    curve->setSamples(series.points);
    switch (series.style) {
    case CurvePlot::Style::Steps:
        curve->setStyle(QwtPlotCurve::Steps);
        curve->setPen(color, 1.2);
        break;
    case CurvePlot::Style::Line:
        curve->setPen(QColor(0x99, 0x99, 0x99), 1.0);
        break;
    case CurvePlot::Style::Dots:
        curve->setStyle(QwtPlotCurve::NoCurve);
        curve->setSymbol(new QwtSymbol(QwtSymbol::Ellipse, color, QPen(Qt::NoPen), QSize(4, 4)));
        curve->setLegendAttribute(QwtPlotCurve::LegendShowSymbol);
        break;
    }
    return curve;
}

} // namespace

void draw(const CurvePlot &data, const QString &file)
{
    QwtPlot plot;
    applyStyle(plot, data.title);
    setAxisTitle(plot, QwtPlot::xBottom, data.xTitle);
    setAxisTitle(plot, QwtPlot::yLeft, data.yTitle);
    if (data.isLogarithmicX)
        plot.setAxisScaleEngine(QwtPlot::xBottom, new QwtLogScaleEngine);
    if (data.isLogarithmicY)
        plot.setAxisScaleEngine(QwtPlot::yLeft, new QwtLogScaleEngine);
    auto *grid = new QwtPlotGrid;
    grid->setPen(QColor(0xdd, 0xdd, 0xdd), 0.5);
    grid->attach(&plot);
    bool hasNames = false;
    for (int i = 0; i < data.series.size(); ++i) {
        makeCurve(data.series.at(i), colorOf(i))->attach(&plot);
        hasNames = hasNames || !data.series.at(i).name.isEmpty();
    }
    if (hasNames)
        plot.insertLegend(new QwtLegend, QwtPlot::RightLegend);
    plot.updateLayout();
    writePlot(plot, file);
}

} // namespace plots
