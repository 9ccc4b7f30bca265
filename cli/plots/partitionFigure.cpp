#include "plots/figureStyle.h"
#include "plots/figures.h"
#include "text.h"

#include <LanqorEngine/AradPartitionResults.h>

#include <QPainter>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

struct Bar
{
    QString name;
    QString atoms;     ///< of a ligand
    double rate = 0.0; ///< s^-1
    bool isGroup = false;
};

struct Bars
{
    QVector<Bar> bars;
    double total = 0.0; ///< Arad(ED), s^-1, the sum over the atoms
    QSizeF size;
};

constexpr double rowHeight = 52.0;
constexpr double barHeight = 34.0;
constexpr double heading = 64.0;
constexpr double edge = 24.0;

Bars barsOf(const AradPartitionResults &partition)
{
    Bars chart;
    for (const AradPartitionResults::AtomShare &atom : partition.atoms) {
        chart.bars.append({atom.label + QString::number(atom.atom), QString(), atom.rate, false});
        chart.total += atom.rate;
    }
    for (const AradPartitionResults::GroupShare &group : partition.groups) {
        QStringList atoms;
        for (const int atom : group.group.atoms)
            atoms.append(QString::number(atom));
        chart.bars.append({group.group.name, atoms.join(QStringLiteral(", ")), group.rate, true});
    }
    const int headings = partition.groups.isEmpty() ? 1 : 2;
    chart.size =
        QSizeF(figureWidth, headings * heading + chart.bars.size() * rowHeight + 2.0 * edge);
    return chart;
}

/// With the atoms where there is room, and cut where the bar would have too little.
QString shownName(const Bar &bar)
{
    constexpr double widest = 420.0;
    const QString full = QStringLiteral("%1 (%2)").arg(bar.name, bar.atoms);
    if (!bar.atoms.isEmpty() && textWidth(full, smallTextSize) <= widest)
        return full;
    QString name = bar.name;
    while (textWidth(name, smallTextSize) > widest)
        name = name.left(name.size() - 2) + QChar(0x2026);
    return name;
}

void paintBars(QPainter &painter, const Bars &chart)
{
    double lowest = 0.0;
    double highest = 0.0;
    double nameWidth = 0.0;
    for (const Bar &bar : chart.bars) {
        nameWidth = std::max(nameWidth, textWidth(shownName(bar), smallTextSize));
        lowest = std::min(lowest, bar.rate);
        highest = std::max(highest, bar.rate);
    }
    const auto numberOf = [&chart](const Bar &bar) {
        return QString::fromUtf8("%1 s⁻¹  %2 %")
            .arg(QString::number(bar.rate, 'f', 1),
                 QString::number(100.0 * bar.rate / chart.total, 'f', 1));
    };
    double numberWidth = 0.0;
    for (const Bar &bar : chart.bars)
        numberWidth = std::max(numberWidth, textWidth(numberOf(bar), smallTextSize));
    const double left = edge + nameWidth + 20.0;
    const double width = figureWidth - edge - numberWidth - 20.0 - left;
    const double range = std::max(highest - lowest, 1e-300);
    const double zero = left - lowest / range * width;
    double y = edge;
    const auto head = [&](const QString &text) {
        drawLabel(painter, {edge, y + 0.5 * heading}, text, textSize, 0.0, 0.5, color::black, true);
        y += heading;
    };
    for (int i = 0; i < chart.bars.size(); ++i) {
        const Bar &bar = chart.bars.at(i);
        if (i == 0 || bar.isGroup != chart.bars.at(i - 1).isGroup)
            head(bar.isGroup ? tr("Share of each ligand (its atoms)")
                             : tr("Share of each atom in Arad(ED), %1 s⁻¹")
                                   .arg(QString::number(chart.total, 'f', 1)));
        const double middle = y + 0.5 * rowHeight;
        const double length = bar.rate / range * width;
        painter.setPen(Qt::NoPen);
        painter.setBrush(bar.rate < 0.0 ? color::red : bar.isGroup ? color::blue : color::sky);
        painter.drawRect(QRectF(zero, middle - 0.5 * barHeight, length, barHeight).normalized());
        painter.setBrush(Qt::NoBrush);
        drawLabel(painter, {left - 20.0, middle}, shownName(bar), smallTextSize, 1.0, 0.5);
        drawLabel(painter, {figureWidth - edge, middle}, numberOf(bar), smallTextSize, 1.0, 0.5);
        painter.setPen(QPen(color::black, 2.0));
        painter.drawLine(QPointF(zero, y), QPointF(zero, y + rowHeight));
        y += rowHeight;
    }
}

} // namespace

Picture partitionFigure(const AradPartitionResults &partition)
{
    const Bars chart = barsOf(partition);
    if (chart.bars.isEmpty() || chart.total == 0.0)
        return {};
    return {tr("Partition of the radiative rate"), chart.size,
            [chart](QPainter &painter) { paintBars(painter, chart); }};
}

} // namespace plots
