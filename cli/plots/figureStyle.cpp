#include "plots/figureStyle.h"

#include "plots/plots.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace plots {

QFont figureFont(int pixels, bool bold)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

double textWidth(const QString &text, int pixels, bool bold)
{
    return QFontMetricsF(figureFont(pixels, bold)).horizontalAdvance(text);
}

QColor blend(const QColor &first, const QColor &second, double share)
{
    const auto mixed = [share](int a, int b) {
        return int(std::lround(a + std::clamp(share, 0.0, 1.0) * (b - a)));
    };
    return {mixed(first.red(), second.red()), mixed(first.green(), second.green()),
            mixed(first.blue(), second.blue())};
}

QColor readableOn(const QColor &ground)
{
    constexpr int middleGrey = 140;
    return qGray(ground.rgb()) > middleGrey ? color::black : QColor(Qt::white);
}

QRectF labelBox(const QPointF &anchor, const QString &text, int pixels, double horizontal,
                double vertical)
{
    const QFontMetricsF metrics(figureFont(pixels));
    const double width = metrics.horizontalAdvance(text);
    const double height = metrics.ascent() + metrics.descent();
    return {anchor.x() - horizontal * width, anchor.y() - vertical * height, width, height};
}

void drawLabel(QPainter &painter, const QPointF &anchor, const QString &text, int pixels,
               double horizontal, double vertical, const QColor &ink, bool bold)
{
    const QFont font = figureFont(pixels, bold);
    const QFontMetricsF metrics(font);
    painter.setFont(font);
    painter.setPen(ink);
    const double height = metrics.ascent() + metrics.descent();
    painter.drawText(QPointF(anchor.x() - horizontal * metrics.horizontalAdvance(text),
                             anchor.y() - vertical * height + metrics.ascent()),
                     text);
}

void drawArrow(QPainter &painter, const QPointF &from, const QPointF &to, double width,
               const QColor &ink, Line line)
{
    const double length = std::hypot(to.x() - from.x(), to.y() - from.y());
    if (length <= 0.0)
        return;
    const QPointF along = (to - from) / length;
    const QPointF across(-along.y(), along.x());
    const double head = std::min(length, 14.0 + 2.0 * width);
    const double half = 6.0 + 0.9 * width;
    QPen pen(ink, width);
    pen.setCapStyle(Qt::FlatCap);
    if (line == Line::Dashed)
        pen.setDashPattern({std::max(12.0, 2.0 * width) / width, 10.0 / width});
    painter.setPen(pen);
    painter.drawLine(from, to - 0.9 * head * along);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(
        QPolygonF({to, to - head * along + half * across, to - head * along - half * across}));
    painter.setBrush(Qt::NoBrush);
}

QVector<double> spreadApart(const QVector<double> &wanted, double gap, double lowest,
                            double highest)
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

QString textOfPower(double value)
{
    const double size = std::abs(value);
    if (size == 0.0 || (size >= 0.01 && size < 1e4))
        return QString::number(value, 'g', size >= 1e3 ? 4 : 3);
    const QStringList parts = QString::number(value, 'e', 1).split(QLatin1Char('e'));
    return QString::fromUtf8("%1×10%2").arg(parts.value(0), superscript(parts.value(1).toInt()));
}

} // namespace plots
