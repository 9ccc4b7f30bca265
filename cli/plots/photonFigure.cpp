#include "plots/figureStyle.h"
#include "plots/figures.h"
#include "text.h"

#include <LanqorEngine/SpectroscopicResults.h>

#include <QPainter>
#include <QVector>

#include <algorithm>

namespace plots {

using cli::tr;

namespace {

struct Share
{
    QString name;
    double value = 0.0; ///< of 1
    QColor ink;
    Qt::BrushStyle hatch = Qt::NoBrush; ///< over the colour, so that grey parts differ
};

struct Budget
{
    QVector<Share> shares; ///< as the photons go: the first losses first
    QStringList remarks;
    QSizeF size;
};

constexpr double edge = 24.0;
constexpr double barHeight = 110.0;
constexpr double heading = 64.0;
constexpr double rowHeight = 50.0;

QString percent(double share)
{
    constexpr double leastTold = 1e-5;
    if (share > 0.0 && share < leastTold)
        return tr("below %1 %").arg(QString::number(100.0 * leastTold));
    return cli::textOfYield(100.0 * share) + QStringLiteral(" %");
}

Budget budgetOf(const SpectroscopicResults &results)
{
    const PhotonShares &shares = results.shares;
    const QString level = QString::fromUtf8("⁵D₀");
    Budget budget;
    budget.shares = {
        {tr("lost by the ligands: S₁ → S₀"), shares.singletDecay, color::sky, Qt::NoBrush},
        {tr("lost by the ligands: T → S₀"), shares.tripletDecay, color::blue, Qt::NoBrush},
        {tr("lost on %1 without light").arg(level), shares.nonRadiative, color::faint,
         Qt::BDiagPattern},
        {tr("emitted: the quantum yield"), shares.emitted, color::orange, Qt::NoBrush}};
    budget.remarks
        << tr("%1 of the photons reach %2 at least once;").arg(percent(shares.reaching5D0), level)
        << tr("%1 go back from it to the ligands and are lost.").arg(percent(shares.backTransfer));
    budget.size =
        QSizeF(figureWidth, heading + barHeight + 2.0 * edge +
                                (budget.shares.size() + budget.remarks.size() + 0.5) * rowHeight);
    return budget;
}

void fill(QPainter &painter, const QRectF &box, const Share &share)
{
    painter.setPen(QPen(color::black, 2.0));
    painter.setBrush(share.ink);
    painter.drawRect(box);
    painter.setBrush(Qt::NoBrush);
    if (share.hatch == Qt::NoBrush)
        return;
    constexpr double spacing = 22.0;
    for (double x = box.left() - box.height(); x < box.right(); x += spacing) {
        // From the lower left to the upper right, within the box.
        const double first = std::max(x, box.left());
        const double last = std::min(x + box.height(), box.right());
        if (first < last)
            painter.drawLine(QPointF(first, box.bottom() - (first - x)),
                             QPointF(last, box.bottom() - (last - x)));
    }
}

void paintBudget(QPainter &painter, const Budget &budget)
{
    drawLabel(painter, {edge, edge + 0.4 * heading}, tr("Of 100 absorbed photons"), textSize, 0.0,
              0.5, color::black, true);
    double sum = 0.0; // of what can be shown; a negative loss is none
    for (const Share &share : budget.shares)
        sum += std::max(0.0, share.value);
    const double width = figureWidth - 2.0 * edge;
    double x = edge;
    double y = edge + heading;
    for (const Share &share : budget.shares) {
        const QRectF box(x, y, width * std::max(0.0, share.value) / std::max(sum, 1e-300),
                         barHeight);
        if (box.width() <= 0.0)
            continue;
        fill(painter, box, share);
        const QString text = percent(share.value);
        const QRectF label = labelBox(box.center(), text, smallTextSize, 0.5, 0.5);
        if (label.width() + 16.0 < box.width()) {
            if (share.hatch != Qt::NoBrush)
                painter.fillRect(label.adjusted(-6.0, 0.0, 6.0, 0.0), share.ink);
            drawLabel(painter, box.center(), text, smallTextSize, 0.5, 0.5, readableOn(share.ink),
                      true);
        }
        x += box.width();
    }
    y += barHeight + 0.5 * rowHeight;
    for (const Share &share : budget.shares) {
        fill(painter, QRectF(edge, y + 8.0, 60.0, rowHeight - 16.0), share);
        drawLabel(painter, {edge + 80.0, y + 0.5 * rowHeight}, share.name, smallTextSize, 0.0, 0.5);
        drawLabel(painter, {figureWidth - edge, y + 0.5 * rowHeight}, percent(share.value),
                  smallTextSize, 1.0, 0.5);
        y += rowHeight;
    }
    for (const QString &remark : budget.remarks) {
        drawLabel(painter, {edge, y + 0.5 * rowHeight}, remark, smallTextSize, 0.0, 0.5);
        y += rowHeight;
    }
}

} // namespace

Picture photonFigure(const SpectroscopicResults &results)
{
    if (results.populations.isEmpty())
        return {};
    const Budget budget = budgetOf(results);
    return {tr("Photon budget"), budget.size,
            [budget](QPainter &painter) { paintBudget(painter, budget); }};
}

} // namespace plots
