#include "plots/figureStyle.h"
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

/// Half the length of a level, in units of the distance between two columns, and its place: left of
/// the middle, so that its name fits before the next column.
constexpr double halfLevel = 0.14;
constexpr double shift = -0.24;
/// In units of the plot; points would be scaled once more by the resolution of the picture.
constexpr int labelPixels = 12;

QFont labelFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(labelPixels);
    return font;
}

/// The levels, from the top downwards, whose names find room beside them when names are given out
/// from the lowest level upwards.
QVector<Level> withoutCrowd(const QVector<Level> &levels, const QwtScaleMap &yMap, double height)
{
    constexpr double farthest = 0.8; // heights of a line
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
    return spreadApart(wanted, height, canvas.top() + 0.7 * height, canvas.bottom() - 0.7 * height);
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
            if (std::abs(i - place) < 1e-6)
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
        int unnamed = 0;
        for (int i = 0; i < diagram.columns.size(); ++i)
            unnamed += drawColumn(*painter, xMap, yMap, canvas, i);
        QStringList remarks = {diagram.remark};
        if (unnamed > 0)
            remarks.append(unnamed == 1
                               ? tr("1 level has no room for its name")
                               : tr("%1 levels have no room for their names").arg(unnamed));
        remarks.removeAll(QString());
        painter->setPen(QColor(0x66, 0x66, 0x66));
        painter->drawText(canvas.adjusted(0.0, 2.0, -4.0, 0.0), Qt::AlignTop | Qt::AlignRight,
                          remarks.join(QStringLiteral("; ")));
    }

private:
    /// Returns how many levels find no room for their names.
    int drawColumn(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                   const QRectF &canvas, int index) const
    {
        const double left = xMap.transform(index + shift - halfLevel);
        const double right = xMap.transform(index + shift + halfLevel);
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
        const int all = named.size();
        named = withoutCrowd(named, yMap, metrics.height());
        QVector<double> wanted;
        for (const Level &level : qAsConst(named))
            wanted.append(yMap.transform(level.energy));
        const QVector<double> places = spreadWithin(canvas, wanted, metrics.height());
        const double leader = 0.04 * (xMap.transform(1.0) - xMap.transform(0.0));
        for (int i = 0; i < named.size(); ++i) {
            painter.setPen(QPen(QColor(0x88, 0x88, 0x88), 0.6));
            painter.drawLine(QPointF(right, wanted.at(i)), QPointF(right + leader, places.at(i)));
            painter.setPen(Qt::black);
            painter.drawText(QPointF(right + 1.3 * leader,
                                     places.at(i) + 0.5 * (metrics.ascent() - metrics.descent())),
                             named.at(i).label);
        }
        return all - named.size();
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
    const double roomForRemark = 0.03 * (highest - lowest);
    QwtPlot plot;
    applyStyle(plot, diagram.title);
    plot.setAxisScale(QwtPlot::yLeft, lowest - margin, highest + margin + roomForRemark);
    setAxisTitle(plot, QwtPlot::yLeft, tr("energy / cm<sup>-1</sup>"));
    QList<double> positions;
    for (int i = 0; i < diagram.columns.size(); ++i)
        positions.append(i);
    QwtScaleDiv scale(-0.65, positions.last() + 0.75);
    scale.setTicks(QwtScaleDiv::MajorTick, positions);
    plot.setAxisScaleDraw(QwtPlot::xBottom, new ColumnScale(diagram));
    plot.setAxisScaleDiv(QwtPlot::xBottom, scale);
    if (!diagram.columnsTitle.isEmpty())
        setAxisTitle(plot, QwtPlot::xBottom, diagram.columnsTitle);
    auto *item = new DiagramItem(diagram);
    item->setRenderHint(QwtPlotItem::RenderAntialiased);
    item->attach(&plot);
    constexpr double columnsInWidth = 7.0; // with names beside the levels
    writePlot(plot, file, std::max(1.0, diagram.columns.size() / columnsInWidth));
}

} // namespace plots
