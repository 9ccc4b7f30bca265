#include "plots/figureStyle.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/OmegaExpResults.h>

#include <QFileInfo>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

constexpr double height = 720.0;
const QRectF frame(70.0, 80.0, figureWidth - 100.0, height - 210.0);

/// Round numbers within a range, about six.
QVector<double> ticksOf(double low, double high)
{
    const double rough = (high - low) / 6.0;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    double step = 10.0 * power;
    for (const double factor : {5.0, 2.0, 1.0})
        if (factor * power >= rough)
            step = factor * power;
    QVector<double> ticks;
    for (double tick = std::ceil(low / step) * step; tick <= high; tick += step)
        ticks.append(tick);
    return ticks;
}

struct Scale
{
    double low = 0.0;
    double high = 1.0;
    double lowSignal = 0.0;
    double highSignal = 1.0;

    double x(double value) const
    {
        return frame.left() + (value - low) / (high - low) * frame.width();
    }
    double y(double signal) const
    {
        return frame.bottom() - (signal - lowSignal) / (highSignal - lowSignal) * frame.height();
    }
};

/// The part of a spectrum that its windows cover, with a little around it.
Scale scaleOf(const OmegaExpResults::Spectrum &spectrum)
{
    Scale scale{spectrum.abscissa.last(), spectrum.abscissa.first(), 0.0, 0.0};
    for (const auto &baseline : spectrum.baselines)
        if (baseline.first < baseline.last) {
            scale.low = std::min(scale.low, baseline.first);
            scale.high = std::max(scale.high, baseline.last);
        }
    const double around = 0.03 * (scale.high - scale.low);
    scale.low = std::max(scale.low - around, spectrum.abscissa.first());
    scale.high = std::min(scale.high + around, spectrum.abscissa.last());
    for (int i = 0; i < spectrum.abscissa.size(); ++i) {
        if (spectrum.abscissa.at(i) < scale.low || spectrum.abscissa.at(i) > scale.high)
            continue;
        scale.lowSignal = std::min(scale.lowSignal, spectrum.signal.at(i));
        scale.highSignal = std::max(scale.highSignal, spectrum.signal.at(i));
    }
    const double range = scale.highSignal - scale.lowSignal;
    scale.highSignal += 0.05 * range;
    scale.lowSignal -= 0.02 * range;
    return scale;
}

/// The curve, with the lowest and the highest of many points that share a place on the page.
QPolygonF curveOf(const OmegaExpResults::Spectrum &spectrum, const Scale &scale)
{
    constexpr double resolution = 1.5; // 0.1 mm
    QPolygonF curve;
    int i = 0;
    while (i < spectrum.abscissa.size()) {
        const double x = scale.x(spectrum.abscissa.at(i));
        double low = spectrum.signal.at(i);
        double high = low;
        double last = low;
        const double first = low;
        for (; i < spectrum.abscissa.size() && scale.x(spectrum.abscissa.at(i)) < x + resolution;
             ++i) {
            last = spectrum.signal.at(i);
            low = std::min(low, last);
            high = std::max(high, last);
        }
        if (x < frame.left() || x > frame.right())
            continue;
        for (const double signal : {first, low, high, last})
            if (curve.isEmpty() || curve.last() != QPointF(x, scale.y(signal)))
                curve.append({x, scale.y(signal)});
    }
    return curve;
}

void paintSpectrum(QPainter &painter, const OmegaExpResults &results)
{
    const OmegaExpResults::Spectrum &spectrum = results.spectrum;
    const Scale scale = scaleOf(spectrum);
    for (int J = 0; J < int(spectrum.baselines.size()); ++J) {
        const auto &baseline = spectrum.baselines.at(std::size_t(J));
        if (!(baseline.first < baseline.last))
            continue;
        const double left = scale.x(baseline.first);
        const double right = scale.x(baseline.last);
        painter.fillRect(QRectF(left, frame.top(), right - left, frame.height()),
                         J % 2 == 0 ? QColor(0xe4, 0xf1, 0xfb) : QColor(0xfd, 0xf6, 0xd2));
        painter.setPen(QPen(color::faint, 2.0));
        painter.drawLine(QPointF(left, frame.top()), QPointF(left, frame.bottom()));
        painter.drawLine(QPointF(right, frame.top()), QPointF(right, frame.bottom()));
        drawLabel(painter, {0.5 * (left + right), frame.top() - 8.0},
                  QString::fromUtf8("⁷F") + QChar(0x2080 + J), smallTextSize, 0.5, 1.0);
        if (results.source.options.baseline == EmissionSpectrumOptions::Baseline::None)
            continue;
        painter.setPen(QPen(color::red, 4.0));
        painter.drawLine(QPointF(left, scale.y(baseline.signalAtFirst)),
                         QPointF(right, scale.y(baseline.signalAtLast)));
    }
    painter.setPen(QPen(color::black, 3.5));
    painter.drawPolyline(curveOf(spectrum, scale));
    painter.setPen(QPen(color::black, 3.0));
    painter.drawRect(frame);
    for (const double tick : ticksOf(scale.low, scale.high)) {
        painter.setPen(QPen(color::black, 3.0));
        painter.drawLine(QPointF(scale.x(tick), frame.bottom()),
                         QPointF(scale.x(tick), frame.bottom() + 12.0));
        drawLabel(painter, {scale.x(tick), frame.bottom() + 16.0}, QString::number(tick, 'f', 0),
                  smallTextSize, 0.5, 0.0);
    }
    const bool isWavelength =
        results.source.options.axis == EmissionSpectrumOptions::Axis::Nanometre;
    drawLabel(painter, {frame.center().x(), height - 14.0},
              isWavelength ? tr("wavelength / nm") : tr("wavenumber / cm⁻¹"), textSize, 0.5, 1.0);
    painter.save();
    painter.translate(36.0, frame.center().y());
    painter.rotate(-90.0);
    drawLabel(painter, QPointF(), tr("emission"), textSize, 0.5, 0.5);
    painter.restore();
}

} // namespace

Picture emissionFigure(const OmegaExpResults &results)
{
    if (results.spectrum.abscissa.size() < 2)
        return {};
    return {tr("%1: emission").arg(QFileInfo(results.fileName).fileName()),
            QSizeF(figureWidth, height),
            [results](QPainter &painter) { paintSpectrum(painter, results); }};
}

} // namespace plots
