#include "PartitionPicture.h"

#include <QPainter>

#include <algorithm>

void PartitionPicture::setPartition(const AradPartitionResults &results)
{
    partition = results;
    update();
}

void PartitionPicture::paintEvent(QPaintEvent *)
{
    if (partition.atoms.isEmpty())
        return;
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    double lowest = 0.0;
    double highest = 1e-300;
    for (const auto &share : qAsConst(partition.atoms)) {
        lowest = std::min(lowest, share.rate); // a share may be negative
        highest = std::max(highest, share.rate);
    }
    const double line = 1.0 * height() / partition.atoms.size();
    const double labels = fontMetrics().horizontalAdvance(QStringLiteral("Xx 999 "));
    const double numbers = fontMetrics().horizontalAdvance(QStringLiteral(" 99999.9 s^-1"));
    const double scale = (width() - labels - numbers) / (highest - lowest);
    const double zero = labels - lowest * scale;
    for (int i = 0; i < partition.atoms.size(); ++i) {
        const auto &share = partition.atoms.at(i);
        const double length = share.rate * scale;
        const QRectF bar(zero + std::min(0.0, length), i * line + 0.15 * line, std::abs(length),
                         0.7 * line);
        painter.fillRect(bar, QColor(0x33, 0x66, 0x99));
        painter.drawText(QRectF(0.0, i * line, labels, line), Qt::AlignVCenter,
                         QStringLiteral("%1 %2").arg(share.label, QString::number(share.atom)));
        painter.drawText(QRectF(bar.right(), i * line, numbers, line), Qt::AlignVCenter,
                         QStringLiteral(" %1 s^-1").arg(QString::number(share.rate, 'f', 1)));
    }
}
