#include "plots/figureStyle.h"
#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/UncertaintyResults.h>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <cmath>

namespace plots {

using cli::tr;
using Quantity = UncertaintyResults::Quantity;

namespace {

/// Names the rows instead of numbering them; the first one is the highest.
class RowScale : public QwtScaleDraw
{
public:
    explicit RowScale(const QStringList &names)
        : names(names)
    {
        enableComponent(QwtScaleDraw::Ticks, false);
        enableComponent(QwtScaleDraw::Backbone, false);
    }
    QwtText label(double place) const override
    {
        return QwtText(names.value(int(std::lround(-place))), QwtText::PlainText);
    }

private:
    QStringList names;
};

void nameRows(QwtPlot &plot, int axis, const QStringList &names)
{
    QList<double> ticks;
    for (int row = names.size() - 1; row >= 0; --row)
        ticks.append(-row);
    QwtScaleDiv scale(0.5 - names.size(), 0.5);
    scale.setTicks(QwtScaleDiv::MajorTick, ticks);
    plot.enableAxis(axis);
    plot.setAxisScaleDraw(axis, new RowScale(names));
    plot.setAxisScaleDiv(axis, scale);
}

void addMark(QwtPlot &plot, double x, double y, QwtSymbol::Style style, const QBrush &fill,
             const QPen &pen)
{
    const int size = style == QwtSymbol::Diamond ? 13 : 8;
    auto *mark = new QwtPlotMarker;
    mark->setSymbol(new QwtSymbol(style, fill, pen, QSize(size, size)));
    mark->setValue(x, y);
    mark->setZ(30.0); // above the bars
    mark->attach(&plot);
}

/// A bar of 95 % and a thicker one of 68 % of the sets, median and value as given.
void addRow(QwtPlot &plot, const Quantity &quantity, int row)
{
    const auto percent = [&quantity](double value) {
        return 100.0 * (value / quantity.median - 1.0);
    };
    const QColor ink = color::blue;
    const auto addBar = [&](double low, double high, double width) {
        auto *bar = new QwtPlotCurve;
        bar->setPen(QPen(ink, width, Qt::SolidLine, Qt::FlatCap));
        bar->setSamples(
            QVector<QPointF>{{percent(low), -double(row)}, {percent(high), -double(row)}});
        bar->attach(&plot);
    };
    addBar(quantity.low95, quantity.high95, 1.5);
    addBar(quantity.low68, quantity.high68, 7.0);
    addMark(plot, 0.0, -row, QwtSymbol::Ellipse, Qt::white, QPen(ink, 1.0));
    if (std::isfinite(quantity.value))
        addMark(plot, percent(quantity.value), -row, QwtSymbol::Diamond, Qt::NoBrush,
                QPen(color::red, 1.5));
}

} // namespace

void draw(const UncertaintyResults &results, const QString &title, const QString &file)
{
    QwtPlot plot;
    applyStyle(plot, title);
    QStringList names;
    QStringList values;
    for (const Quantity &quantity : results.quantities) {
        if (!std::isfinite(quantity.median) || quantity.median == 0.0)
            continue;
        addRow(plot, quantity, names.size());
        names.append(QString(quantity.name).replace(QLatin1Char('_'), QLatin1Char(' ')));
        const QString unit =
            QString(quantity.unit)
                .replace(QLatin1String("^-1"), superscript(-1))
                .replace(QLatin1String("1e-20 cm^2"),
                         QStringLiteral("10%1 cm%2").arg(superscript(-20), superscript(2)));
        values.append(QStringLiteral("%1 %2").arg(QString::number(quantity.median, 'g', 4),
                                                  unit == QLatin1String("1") ? QString() : unit));
    }
    nameRows(plot, QwtPlot::yLeft, names);
    nameRows(plot, QwtPlot::yRight, values);
    setAxisTitle(plot, QwtPlot::xBottom, tr("difference from the median / %"));
    plot.setFooter(
        legendText(tr("right: medians; bars: 68 %, thin 95 % of the sets; diamonds: as given")));
    plot.setAxisMaxMajor(QwtPlot::xBottom, 5);
    for (const int axis : {QwtPlot::yLeft, QwtPlot::yRight})
        plot.setAxisFont(axis, labelFont());
    writePlot(plot, file);
}

} // namespace plots
