#include "plots/plotFile.h"
#include "plots/plots.h"
#include "text.h"

#include <qwt_plot.h>
#include <qwt_plot_item.h>
#include <qwt_scale_div.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>
#include <qwt_text.h>

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>

namespace plots {

using cli::tr;

namespace {

using Level = LevelDiagram::Level;
using Arrow = LevelDiagram::Arrow;
using ArrowKind = LevelDiagram::ArrowKind;

/// Half the length of a level, in units of the distance between two columns. Without arrows the
/// levels stand further left and are shorter, so that their names fit between the columns.
constexpr double halfLevel = 0.22;
constexpr double halfLevelAmongNames = 0.14;
constexpr double shiftAmongNames = -0.24;
constexpr double roomForArrows = 0.4;
constexpr double legendMargin = 12.0;
/// In units of the plot; points would be scaled once more by the resolution of the picture.
constexpr int labelPixels = 11;

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
    font.setPixelSize(labelPixels);
    return font;
}

/// Moves positions, in ascending order, apart until they are at least @p gap from each other,
/// each cluster staying centred on its members, and back into [lowest, highest] where they left.
QVector<double> spread(const QVector<double> &wanted, double gap, double lowest, double highest)
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
    const int count = positions.size();
    for (int i = 0; i < count; ++i)
        positions[i] = std::min(positions.at(i), highest - (count - 1 - i) * gap);
    for (int i = 0; i < count; ++i)
        positions[i] = std::max(positions.at(i), lowest + i * gap);
    return positions;
}

/// The levels, from the top downwards, whose names find room near them when names are given out
/// from the lowest level upwards.
QVector<Level> withoutCrowd(const QVector<Level> &levels, const QwtScaleMap &yMap, double height)
{
    constexpr double farthest = 2.5; // heights of a line
    QVector<Level> kept;
    double free = std::numeric_limits<double>::max();
    for (auto level = levels.crbegin(); level != levels.crend(); ++level) {
        const double wanted = yMap.transform(level->energy);
        const double place = std::min(wanted, free);
        if (wanted - place > farthest * height)
            continue;
        kept.prepend(*level);
        free = place - height;
    }
    return kept;
}

QVector<double> spreadWithin(const QRectF &canvas, const QVector<double> &wanted, double height)
{
    return spread(wanted, height, canvas.top() + 0.7 * height, canvas.bottom() - 0.7 * height);
}

/// Place of a column on the axis; arrows get room for their labels before the last one.
double placeOf(int column, const LevelDiagram &diagram)
{
    const bool isAfterArrows = !diagram.arrows.isEmpty() && column + 1 == diagram.columns.size();
    return column + (isAfterArrows ? roomForArrows : 0.0);
}

/// Names the columns instead of numbering them.
class ColumnScale : public QwtScaleDraw
{
public:
    explicit ColumnScale(const LevelDiagram &diagram)
        : diagram(diagram)
    {
        enableComponent(QwtScaleDraw::Ticks, false);
        enableComponent(QwtScaleDraw::Backbone, false);
    }
    QwtText label(double place) const override
    {
        for (int i = 0; i < diagram.columns.size(); ++i) {
            if (std::abs(placeOf(i, diagram) - place) < 1e-6)
                return QwtText(diagram.columns.at(i).title, QwtText::PlainText);
        }
        return QwtText();
    }

private:
    LevelDiagram diagram;
};

class DiagramItem : public QwtPlotItem
{
public:
    explicit DiagramItem(const LevelDiagram &diagram)
        : diagram(diagram)
    {}

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvas) const override
    {
        painter->setFont(labelFont());
        for (int i = 0; i < diagram.columns.size(); ++i)
            drawColumn(*painter, xMap, yMap, canvas, i);
        drawArrows(*painter, xMap, yMap);
        drawArrowList(*painter, xMap, canvas);
        drawLegend(*painter, yMap, canvas);
        if (diagram.inset.points.size() > 1)
            drawInset(*painter, insetFrame(xMap, yMap, canvas));
    }

private:
    double x(int column, const QwtScaleMap &xMap, double shift = 0.0) const
    {
        return xMap.transform(placeOf(column, diagram) + shift);
    }

    /// Labels stand at the outer side of the levels when there are arrows at the inner one.
    void drawColumn(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvas, int index) const
    {
        const bool hasArrows = !diagram.arrows.isEmpty();
        const double shift = hasArrows ? 0.0 : shiftAmongNames;
        const double half = hasArrows ? halfLevel : halfLevelAmongNames;
        const double left = x(index, xMap, shift - half);
        const double right = x(index, xMap, shift + half);
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
        const QFontMetricsF metrics(painter.font(), painter.device());
        named = withoutCrowd(named, yMap, metrics.height());
        QVector<double> wanted;
        for (const Level &level : qAsConst(named))
            wanted.append(yMap.transform(level.energy));
        const QVector<double> places = spreadWithin(canvas, wanted, metrics.height());
        const bool isLeft = hasArrows && index + 1 < diagram.columns.size();
        const double outwards = isLeft ? -1.0 : 1.0;
        const double edge = isLeft ? left : right;
        const double leader = outwards * 0.04 * (xMap.transform(1.0) - xMap.transform(0.0));
        for (int i = 0; i < named.size(); ++i) {
            painter.setPen(QPen(QColor(0x88, 0x88, 0x88), 0.6));
            painter.drawLine(QPointF(edge, wanted.at(i)), QPointF(edge + leader, places.at(i)));
            painter.setPen(Qt::black);
            const double width = isLeft ? metrics.horizontalAdvance(named.at(i).label) : 0.0;
            painter.drawText(QPointF(edge + 1.3 * leader - width,
                                     places.at(i) + 0.5 * (metrics.ascent() - metrics.descent())),
                             named.at(i).label);
        }
    }

    QPointF startOf(const Arrow &arrow, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
    {
        const double shift = arrow.toColumn > arrow.fromColumn ? halfLevel : 0.0;
        return {x(arrow.fromColumn, xMap, shift), yMap.transform(arrow.fromEnergy)};
    }
    QPointF endOf(const Arrow &arrow, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
    {
        const double shift = arrow.toColumn > arrow.fromColumn ? -halfLevel : 0.0;
        return {x(arrow.toColumn, xMap, shift), yMap.transform(arrow.toEnergy)};
    }

    void drawArrows(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const
    {
        for (const Arrow &arrow : diagram.arrows)
            drawArrow(painter, startOf(arrow, xMap, yMap), endOf(arrow, xMap, yMap),
                      colorOf(arrow.kind));
    }

    /// The labels of the arrows as a list in the empty lower part, in the colours of the arrows:
    /// on the arrows themselves they would hide each other.
    void drawArrowList(QPainter &painter, const QwtScaleMap &xMap, const QRectF &canvas) const
    {
        const QFontMetricsF metrics(painter.font(), painter.device());
        QPointF at(x(1, xMap, -halfLevel), canvas.bottom() - legendMargin);
        for (const Arrow &arrow : diagram.arrows) { // upwards
            if (arrow.label.isEmpty())
                continue;
            painter.setPen(colorOf(arrow.kind));
            painter.drawText(at + QPointF(0.0, 0.5 * (metrics.ascent() - metrics.descent())),
                             arrow.label);
            at -= QPointF(0.0, 1.2 * metrics.height());
        }
    }

    /// In the lower left corner, above levels that stand there.
    void drawLegend(QPainter &painter, const QwtScaleMap &yMap, const QRectF &canvas) const
    {
        const QPair<ArrowKind, QString> kinds[] = {
            {ArrowKind::Multipolar, tr("multipolar transfer")},
            {ArrowKind::Exchange, tr("exchange transfer")},
            {ArrowKind::Emission, tr("emission")}};
        const QFontMetricsF metrics(painter.font(), painter.device());
        QPointF at(canvas.left() + legendMargin, canvas.bottom() - legendMargin);
        const double top = at.y() - 1.3 * metrics.height() * double(std::size(kinds));
        for (const Level &level : diagram.columns.first().levels)
            if (yMap.transform(level.energy) > top)
                at.setY(std::min(at.y(), yMap.transform(level.energy) - 1.3 * metrics.height()));
        for (const auto &kind : kinds) {
            const bool isUsed =
                std::any_of(diagram.arrows.cbegin(), diagram.arrows.cend(),
                            [&kind](const Arrow &arrow) { return arrow.kind == kind.first; });
            if (!isUsed)
                continue;
            drawArrow(painter, at, at + QPointF(28.0, 0.0), colorOf(kind.first));
            painter.setPen(Qt::black);
            painter.drawText(at + QPointF(34.0, 0.5 * (metrics.ascent() - metrics.descent())),
                             kind.second);
            at -= QPointF(0.0, 1.3 * metrics.height());
        }
    }

    /// Left of the list of arrows, below the excited levels of the first columns, above the legend.
    QRectF insetFrame(const QwtScaleMap &xMap, const QwtScaleMap &yMap, const QRectF &canvas) const
    {
        const double lineHeight = 1.3 * labelPixels;
        const double bottom = canvas.top() + 0.76 * canvas.height();
        double top = canvas.top() + 0.4 * canvas.height();
        for (const LevelDiagram::Column &column : diagram.columns)
            for (const Level &level : column.levels) {
                const double y = yMap.transform(level.energy) + 2.5 * lineHeight;
                if (&column != &diagram.columns.last() && y < bottom)
                    top = std::max(top, y);
            }
        const double left = canvas.left() + 4.0 * lineHeight;
        return {QPointF(left, top), QPointF(x(1, xMap, -1.6 * halfLevel), bottom)};
    }

    void drawInset(QPainter &painter, const QRectF &frame) const
    {
        constexpr double leastHeight = 60.0;
        const LevelDiagram::Inset &inset = diagram.inset;
        if (frame.height() < leastHeight)
            return;
        const double first = inset.points.first().x();
        const double last = inset.points.last().x();
        double highest = 0.0;
        for (const QPointF &point : inset.points)
            highest = std::max(highest, point.y());
        const double top = highest > 0.0 ? 1.1 * highest : 1.0;
        const auto place = [&](const QPointF &point) {
            return QPointF(frame.left() + (point.x() - first) / (last - first) * frame.width(),
                           frame.bottom() - std::max(0.0, point.y()) / top * frame.height());
        };
        painter.setPen(QPen(QColor(0x88, 0x88, 0x88), 0.8));
        painter.setBrush(Qt::white);
        painter.drawRect(frame);
        painter.setBrush(Qt::NoBrush);
        QPolygonF curve;
        for (const QPointF &point : inset.points)
            curve.append(place(point));
        painter.setPen(QPen(Qt::black, 1.2));
        painter.drawPolyline(curve);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colorOf(ArrowKind::Emission));
        constexpr double markRadius = 3.5;
        painter.drawEllipse(place(inset.mark), markRadius, markRadius);

        painter.setPen(Qt::black);
        const QFontMetricsF metrics(painter.font(), painter.device());
        painter.drawText(frame.topLeft() - QPointF(0.0, 0.4 * metrics.height()), inset.title);
        for (const double energy : {first, 0.5 * (first + last), last}) {
            const QString text = QString::number(energy, 'f', 0);
            const QPointF tick = place({energy, 0.0});
            painter.drawLine(tick, tick - QPointF(0.0, 4.0));
            painter.drawText(
                tick + QPointF(-0.5 * metrics.horizontalAdvance(text), 1.1 * metrics.ascent()),
                text);
        }
        for (const double value : {0.0, highest}) {
            const QString text = value > 0.0 ? cli::textOfYield(value) : QStringLiteral("0");
            const QPointF tick = place({first, value});
            painter.drawLine(tick, tick + QPointF(4.0, 0.0));
            painter.drawText(tick - QPointF(metrics.horizontalAdvance(text) + 4.0, 0.0), text);
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

    LevelDiagram diagram;
};

} // namespace

void draw(const LevelDiagram &diagram, const QString &file)
{
    double lowest = 0.0;
    double highest = 0.0;
    for (const LevelDiagram::Column &column : diagram.columns) {
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
        positions.append(placeOf(i, diagram));
    QwtScaleDiv scale(diagram.arrows.isEmpty() ? -0.65 : -0.8, positions.last() + 0.75);
    scale.setTicks(QwtScaleDiv::MajorTick, positions);
    plot.setAxisScaleDraw(QwtPlot::xBottom, new ColumnScale(diagram));
    plot.setAxisScaleDiv(QwtPlot::xBottom, scale);
    if (!diagram.columnsTitle.isEmpty())
        setAxisTitle(plot, QwtPlot::xBottom, diagram.columnsTitle);
    auto *item = new DiagramItem(diagram);
    item->setRenderHint(QwtPlotItem::RenderAntialiased);
    item->attach(&plot);
    writePlot(plot, file);
}

} // namespace plots
