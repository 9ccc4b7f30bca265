#include "plotFile.h"
#include "plots.h"

#include <qwt_plot.h>
#include <qwt_plot_item.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace plots {

namespace {

using Level = LevelDiagram::Level;
using Column = LevelDiagram::Column;
using Arrow = LevelDiagram::Arrow;
using ArrowKind = LevelDiagram::ArrowKind;

/// Half the length of a level, in units of the distance between two columns.
constexpr double halfLevel = 0.22;
constexpr double labelPoints = 8.0;

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QColor colorOf(ArrowKind kind)
{
    switch (kind) {
    case ArrowKind::Multipolar:
        return {0x1f, 0x4e, 0x9e};
    case ArrowKind::Exchange:
        return {0xb3, 0x4a, 0x00};
    case ArrowKind::Emission:
        break;
    }
    return {0xc0, 0x20, 0x20};
}

QFont labelFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(labelPoints);
    return font;
}

/// Moves positions, in ascending order, apart until they are at least @p gap from each other,
/// each cluster staying centred on its members.
QVector<double> spread(const QVector<double> &wanted, double gap)
{
    struct Cluster
    {
        double centre;
        int size;
    };
    QVector<Cluster> clusters;
    for (const double position : wanted) {
        Cluster last{position, 1};
        while (!clusters.isEmpty()) {
            const Cluster &previous = clusters.last();
            const double needed = 0.5 * (previous.size + last.size) * gap;
            if (last.centre - previous.centre >= needed)
                break;
            const int size = previous.size + last.size;
            last = {(previous.centre * previous.size + last.centre * last.size) / size, size};
            clusters.removeLast();
        }
        clusters.append(last);
    }
    QVector<double> positions;
    for (const Cluster &cluster : clusters) {
        for (int i = 0; i < cluster.size; ++i)
            positions.append(cluster.centre + (i - 0.5 * (cluster.size - 1)) * gap);
    }
    return positions;
}

/// Names the columns instead of numbering them.
class ColumnScale : public QwtScaleDraw
{
public:
    explicit ColumnScale(const QVector<Column> &columns)
        : columns(columns)
    {
        enableComponent(QwtScaleDraw::Ticks, false);
        enableComponent(QwtScaleDraw::Backbone, false);
    }
    QwtText label(double position) const override
    {
        return QwtText(columns.value(static_cast<int>(std::lround(position))).title,
                       QwtText::PlainText);
    }

private:
    QVector<Column> columns;
};

class DiagramItem : public QwtPlotItem
{
public:
    explicit DiagramItem(const LevelDiagram &diagram)
        : diagram(diagram)
    {}

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &) const override
    {
        painter->setFont(labelFont());
        for (int i = 0; i < diagram.columns.size(); ++i)
            drawColumn(*painter, xMap, yMap, i);
        drawArrows(*painter, xMap, yMap);
    }

private:
    void drawColumn(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    int index) const
    {
        const double left = xMap.transform(index - halfLevel);
        const double right = xMap.transform(index + halfLevel);
        QVector<Level> named;
        for (const Level &level : diagram.columns.at(index).levels) {
            const double y = yMap.transform(level.energy);
            const bool isNamed = !level.label.isEmpty();
            painter.setPen(
                QPen(isNamed ? Qt::black : QColor(0xaa, 0xaa, 0xaa), isNamed ? 1.6 : 0.7));
            painter.drawLine(QPointF(left, y), QPointF(right, y));
            if (isNamed)
                named.append(level);
        }
        std::stable_sort(named.begin(), named.end(), [](const Level &a, const Level &b) {
            return a.energy > b.energy; // downwards on the picture
        });
        QVector<double> wanted;
        for (const Level &level : qAsConst(named))
            wanted.append(yMap.transform(level.energy));
        const QFontMetricsF metrics(painter.font(), painter.device());
        const QVector<double> places = spread(wanted, metrics.height());
        const double leader = 0.03 * (xMap.transform(1.0) - xMap.transform(0.0));
        for (int i = 0; i < named.size(); ++i) {
            painter.setPen(QPen(QColor(0x88, 0x88, 0x88), 0.6));
            painter.drawLine(QPointF(right, wanted.at(i)), QPointF(right + leader, places.at(i)));
            painter.setPen(Qt::black);
            painter.drawText(QPointF(right + 1.3 * leader, places.at(i) + 0.5 * metrics.ascent() -
                                                               0.5 * metrics.descent()),
                             named.at(i).label);
        }
    }

    /// Arrows leave a level side by side; their labels stand on the arrows, each a little further
    /// along than the one before.
    void drawArrows(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
    {
        const int count = diagram.arrows.size();
        for (int i = 0; i < count; ++i) {
            const Arrow &arrow = diagram.arrows.at(i);
            const double side = arrow.toColumn > arrow.fromColumn   ? 1.0
                                : arrow.toColumn < arrow.fromColumn ? -1.0
                                                                    : 0.0;
            const double shift = side == 0.0 ? halfLevel * ((i + 1.0) / (count + 1.0) - 0.5) : 0.0;
            const QPointF from(xMap.transform(arrow.fromColumn + side * halfLevel + shift),
                               yMap.transform(arrow.fromEnergy));
            const QPointF to(xMap.transform(arrow.toColumn - side * halfLevel + shift),
                             yMap.transform(arrow.toEnergy));
            drawArrow(painter, from, to, colorOf(arrow.kind));
            drawLabel(painter, from + (0.35 + 0.3 * (i % 3) / 2.0) * (to - from), arrow);
        }
    }

    static void drawArrow(QPainter &painter, const QPointF &from, const QPointF &to,
                          const QColor &color)
    {
        const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
        if (length <= 0.0)
            return;
        const QPointF along = (to - from) / length;
        const QPointF across(-along.y(), along.x());
        const double head = 7.0;
        painter.setPen(QPen(color, 1.2));
        painter.drawLine(from, to - head * along);
        painter.setBrush(color);
        painter.drawPolygon(QPolygonF({to, to - head * along + 0.35 * head * across,
                                       to - head * along - 0.35 * head * across}));
    }

    static void drawLabel(QPainter &painter, const QPointF &centre, const Arrow &arrow)
    {
        if (arrow.label.isEmpty())
            return;
        const QFontMetricsF metrics(painter.font(), painter.device());
        QRectF box(QPointF(),
                   QSizeF(metrics.horizontalAdvance(arrow.label) + 4.0, metrics.height()));
        box.moveCenter(centre);
        painter.fillRect(box, Qt::white);
        painter.setPen(colorOf(arrow.kind));
        painter.drawText(box, Qt::AlignCenter, arrow.label);
    }

    LevelDiagram diagram;
};

} // namespace

bool draw(const LevelDiagram &diagram, const QString &file, QString &error)
{
    double lowest = 0.0;
    double highest = 0.0;
    for (const Column &column : diagram.columns) {
        for (const Level &level : column.levels) {
            lowest = std::min(lowest, level.energy);
            highest = std::max(highest, level.energy);
        }
    }
    const double margin = 0.04 * (highest - lowest) + 1.0;
    QwtPlot plot;
    applyStyle(plot, diagram.title);
    plot.setAxisScale(QwtPlot::yLeft, lowest - margin, highest + margin);
    setAxisTitle(plot, QwtPlot::yLeft, tr("energy / cm<sup>-1</sup>"));
    QList<double> positions;
    for (int i = 0; i < diagram.columns.size(); ++i)
        positions.append(i);
    QwtScaleDiv scale(-0.5, diagram.columns.size() - 0.4);
    scale.setTicks(QwtScaleDiv::MajorTick, positions);
    plot.setAxisScaleDraw(QwtPlot::xBottom, new ColumnScale(diagram.columns));
    plot.setAxisScaleDiv(QwtPlot::xBottom, scale);
    auto *item = new DiagramItem(diagram);
    item->setRenderHint(QwtPlotItem::RenderAntialiased);
    item->attach(&plot);
    return writePlot(plot, file, error);
}

} // namespace plots
