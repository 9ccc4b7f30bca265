#include "plots/figureStyle.h"
#include "plots/plotFile.h"
#include "plots/plots.h"

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_scale_engine.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

namespace plots {

namespace {

QColor colorOf(int series)
{
    static const QColor colors[] = {color::blue,   color::orange, color::green,
                                    color::purple, color::black,  color::red};
    return colors[series % int(std::size(colors))];
}

/// Tells the series apart without colours.
Qt::PenStyle lineOf(int series)
{
    static constexpr Qt::PenStyle lines[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine,
                                             Qt::DashDotLine};
    return lines[series % int(std::size(lines))];
}

QwtSymbol *makeSymbol(int series)
{
    static constexpr QwtSymbol::Style styles[] = {QwtSymbol::Ellipse,   QwtSymbol::Rect,
                                                  QwtSymbol::UTriangle, QwtSymbol::Diamond,
                                                  QwtSymbol::DTriangle, QwtSymbol::Cross};
    const QwtSymbol::Style style = styles[series % int(std::size(styles))];
    const bool isOutline = style == QwtSymbol::Cross;
    return new QwtSymbol(style, colorOf(series),
                         isOutline ? QPen(colorOf(series), 1.2) : QPen(Qt::NoPen), QSize(5, 5));
}

QwtPlotCurve *makeCurve(const CurvePlot::Series &series, int number)
{
    const QColor ink = colorOf(number);
    auto *curve = new QwtPlotCurve(legendText(series.name));
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setItemAttribute(QwtPlotItem::Legend, !series.name.isEmpty());
    curve->setSamples(series.points);
    switch (series.style) {
    case CurvePlot::Style::Steps:
        curve->setStyle(QwtPlotCurve::Steps);
        curve->setPen(ink, 1.4, lineOf(number));
        break;
    case CurvePlot::Style::Line:
        curve->setPen(color::grey, 1.0);
        break;
    case CurvePlot::Style::Curve:
        curve->setPen(ink, 1.6, lineOf(number));
        break;
    case CurvePlot::Style::Dots:
        curve->setStyle(QwtPlotCurve::NoCurve);
        curve->setSymbol(makeSymbol(number));
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
        makeCurve(data.series.at(i), i)->attach(&plot);
        hasNames = hasNames || !data.series.at(i).name.isEmpty();
    }
    if (hasNames)
        plot.insertLegend(new QwtLegend, QwtPlot::RightLegend);
    plot.updateLayout();
    writePlot(plot, file);
}

} // namespace plots
