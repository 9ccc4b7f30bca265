#include "plots/figureStyle.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorTransferChannels.h>
#include <LanqorEngine/SpectroscopicResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <QLineF>
#include <QMap>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace plots {

using cli::tr;

namespace {

// Places along the page, 0.1 mm.
constexpr double singletLeft = 40.0;
constexpr double singletRight = 250.0;
constexpr double tripletLeft = 320.0;
constexpr double tripletRight = 520.0;
constexpr double ionLeft = 735.0;
constexpr double ionRight = 1012.0;
constexpr double ionLabels = 1034.0;
constexpr double top = 70.0;
constexpr double bottom = 1070.0;
constexpr double height = 1230.0;
constexpr int rateSize = 29;

/// Energies of 7F0 to 7F6, cm^-1, for the eye only; source not known.
constexpr double groundLevels[] = {0.0, 372.0, 1026.0, 1866.0, 2823.0, 3849.0, 4907.0};
/// Other ligand states further above the donor singlet than this, cm^-1, are left out.
constexpr double shownAboveDonor = 2000.0;
/// More channels than this are numbered, and their rates are in a list.
constexpr int mostLabelledChannels = 4;
/// Slower transfers, s^-1, have no arrow.
constexpr double leastRate = 1e-3;

const QColor inkOfEmission = color::green;
const QColor inkOfLigands(0x50, 0x50, 0x50);

QColor inkOf(TransferMechanism mechanism)
{
    return mechanism == TransferMechanism::Exchange ? color::red : color::blue;
}

/// "S₁"
QString numbered(const QString &kind, int number)
{
    QString text = kind;
    for (const QChar digit : QString::number(number))
        text += QChar(0x2080 + digit.digitValue());
    return text;
}

/// "⁵D₀" of "5D0"
QString levelLabel(const QString &name)
{
    return superscript(name.at(0).digitValue()) + numbered(name.mid(1, 1), name.at(2).digitValue());
}

double lineWidth(double rate)
{
    return std::clamp(1.5 + 0.8 * std::log10(std::max(rate, 1.0)), 1.5, 11.0);
}

/// The yield against the energy of the donor triplet.
struct YieldCurve
{
    QVector<QPointF> points; ///< cm^-1, percent
    QPointF mark;
};

YieldCurve yieldCurve(const SpectroscopicResults &results, const YieldInputs &inputs)
{
    constexpr double reach = 2000.0; // cm^-1: calculated triplets are off by up to so much
    constexpr int steps = 80;
    YieldCurve curve{{}, {results.triplet.energy, results.quantumYield}};
    YieldInputs changed = inputs;
    for (int step = 0; step <= steps; ++step) {
        const double offset = reach * (2.0 * step / steps - 1.0);
        changed.triplet.energy = inputs.triplet.energy + offset;
        const YieldOutcome outcome = LanqorSpectroscopicCalculation::calcYield(changed);
        if (outcome.error.isEmpty() && std::isfinite(outcome.quantumYield))
            curve.points.append({results.triplet.energy + offset, outcome.quantumYield});
    }
    return curve;
}

/// Paints one diagram.
class Diagram
{
public:
    Diagram(QPainter &painter, const SpectroscopicResults &results, double tripletDeviation,
            const YieldCurve &curve)
        : painter(painter)
        , results(results)
        , tripletDeviation(tripletDeviation)
        , curve(curve)
    {
        for (const TransferChannel &channel : LanqorTransferChannels::getChannels())
            ionLevels[channel.acceptor] = channel.acceptorEnergy;
        for (const TransferResult &transfer : results.transfers)
            if (transfer.takesPart)
                transfers.append(transfer);
        highest = results.singlet.energy;
        for (const double energy : qAsConst(ionLevels))
            highest = std::max(highest, energy);
        highest = std::max(highest, results.triplet.energy + tripletDeviation);
        highest = std::max(highest, results.firstTriplet.energy);
    }

    void paint()
    {
        paintLigandLevels();
        paintIonLevels();
        for (const KineticConstant &constant : results.kineticConstants)
            paintConstant(constant);
        paintEmission();
        paintTransfers();
        paintLegend();
    }

private:
    double y(double energy) const { return bottom - energy / highest * (bottom - top); }
    double energyOf(const QString &state) const
    {
        if (state == QLatin1String("S"))
            return results.singlet.energy;
        if (state == QLatin1String("T"))
            return results.triplet.energy;
        if (state == QLatin1String("Ta"))
            return results.firstTriplet.energy;
        return ionLevels.value(state, 0.0);
    }

    void level(double left, double right, double energy, const QColor &ink, double width)
    {
        painter.setPen(QPen(ink, width));
        painter.drawLine(QPointF(left, y(energy)), QPointF(right, y(energy)));
    }

    void rotatedLabel(const QPointF &middle, const QString &text, int size, const QColor &ink)
    {
        painter.save();
        painter.translate(middle);
        painter.rotate(-90.0);
        drawLabel(painter, QPointF(), text, size, 0.5, 0.5, ink);
        painter.restore();
    }

    void otherStates(const QVector<LigandState> &states, double left, double right)
    {
        for (int i = results.ligandStates.groundState; i < states.size(); ++i)
            if (states.at(i).energy < std::min(highest, results.singlet.energy + shownAboveDonor))
                level(left, right, states.at(i).energy, color::faint, 1.5);
    }

    void paintLigandLevels()
    {
        otherStates(results.ligandStates.singlets, singletLeft, singletRight);
        otherStates(results.ligandStates.triplets, tripletLeft, tripletRight);
        const double energy = results.triplet.energy;
        if (tripletDeviation > 0.0) {
            const double upper = y(energy + tripletDeviation);
            const QRectF band(tripletLeft, upper, tripletRight - tripletLeft,
                              y(energy - tripletDeviation) - upper);
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(0xf0, 0xe4, 0x42, 130));
            painter.drawRect(band);
            painter.setBrush(Qt::NoBrush);
        }
        level(singletLeft, tripletRight, 0.0, color::black, 5.0);
        drawLabel(painter, {singletLeft, bottom + 10.0}, numbered(tr("S"), 0), smallTextSize, 0.0,
                  0.0);
        donorLevel(singletLeft, singletRight, tr("S"), results.singlet.energy, QString());
        if (results.considerTwoTriplets)
            donorLevel(tripletLeft, tripletRight, tr("Ta"), results.firstTriplet.energy, QString());
        donorLevel(tripletLeft, tripletRight, tr("T"), energy,
                   tripletDeviation > 0.0
                       ? QString::fromUtf8("±%1").arg(QString::number(tripletDeviation, 'f', 0))
                       : QString());
    }

    void donorLevel(double left, double right, const QString &name, double energy,
                    const QString &deviation)
    {
        level(left, right, energy, color::black, 5.0);
        // Without the deviation below the line, all would not fit above it.
        drawLabel(painter, {left, y(energy) - 4.0},
                  name + QLatin1Char(' ') + QString::number(energy, 'f', 0), smallTextSize, 0.0,
                  1.0, color::black, true);
        drawLabel(painter, {left, y(energy) + 4.0}, deviation, smallTextSize, 0.0, 0.0);
    }

    void paintIonLevels()
    {
        struct Label
        {
            double y;
            QString text;
        };
        QVector<Label> labels; // downwards on the page
        for (auto ion = ionLevels.cbegin(); ion != ionLevels.cend(); ++ion) {
            level(ionLeft, ionRight, ion.value(), color::black, 4.0);
            labels.append({y(ion.value()), levelLabel(ion.key()) + QLatin1Char(' ') +
                                               QString::number(ion.value(), 'f', 0)});
        }
        for (int J = 0; J < int(std::size(groundLevels)); ++J) {
            level(ionLeft, ionRight, groundLevels[J], color::black, 2.0);
            labels.append({y(groundLevels[J]), levelLabel(QStringLiteral("7F%1").arg(J))});
        }
        std::sort(labels.begin(), labels.end(),
                  [](const Label &a, const Label &b) { return a.y < b.y; });
        QVector<double> wanted;
        for (const Label &label : qAsConst(labels))
            wanted.append(label.y);
        constexpr double gap = 32.0;
        const QVector<double> places = spreadApart(wanted, gap, 20.0, bottom + 0.5 * gap);
        for (int i = 0; i < labels.size(); ++i) {
            painter.setPen(QPen(color::grey, 1.5));
            painter.drawLine(QPointF(ionRight, wanted.at(i)),
                             QPointF(ionLabels - 4.0, places.at(i)));
            drawLabel(painter, {ionLabels, places.at(i)}, labels.at(i).text, rateSize, 0.0, 0.5);
        }
        drawLabel(painter, {0.5 * (ionLeft + ionRight), bottom + 26.0}, QString::fromUtf8("Eu³⁺"),
                  smallTextSize, 0.5, 0.0, color::black, true);
        drawLabel(painter, {0.5 * (singletLeft + tripletRight), bottom + 26.0}, tr("ligands"),
                  smallTextSize, 0.5, 0.0, color::black, true);
    }

    /// An arrow along the energies, with its text at its left; without where levels are so close
    /// that it would stand upon them (steps of the cascade, which have one rate).
    void vertical(double x, double from, double to, double width, const QColor &ink,
                  const QString &text)
    {
        drawArrow(painter, {x, y(from)}, {x, y(to)}, width, ink);
        const double middle = 0.5 * (y(from) + y(to));
        if (std::abs(y(from) - y(to)) > textWidth(text, rateSize) + 30.0)
            rotatedLabel({x - 22.0, middle}, text, rateSize, ink);
        else if (std::abs(y(from) - y(to)) > 1.2 * rateSize)
            drawLabel(painter, {x - 14.0, middle}, text, rateSize, 1.0, 0.5, ink);
    }

    /// A rate that is set.
    void paintConstant(const KineticConstant &constant)
    {
        const QString rate = textOfPower(constant.rate);
        const double width = lineWidth(constant.rate);
        const double from = energyOf(constant.from);
        const double to = energyOf(constant.to);
        const bool isFromTriplet = constant.from.startsWith(QLatin1Char('T'));
        if (constant.from == QLatin1String("S0"))
            vertical(singletLeft + 50.0, 0.0, to, width, inkOfLigands,
                     tr("absorption %1").arg(rate));
        else if (constant.from == QLatin1String("S") && constant.to == QLatin1String("S0"))
            vertical(singletLeft + 140.0, from, to, width, inkOfLigands, tr("decay %1").arg(rate));
        else if (constant.from == QLatin1String("S"))
            paintCrossing(to, width, rate);
        else if (isFromTriplet && constant.to == QLatin1String("S0"))
            vertical(constant.from == QLatin1String("T") ? tripletLeft + 140.0 : tripletLeft + 75.0,
                     from, to, width, inkOfLigands, tr("decay %1").arg(rate));
        else if (isFromTriplet)
            paintTripletCrossing(from, to, width, rate);
        else
            vertical(ionRight - 20.0, from, to, width, inkOfLigands, rate);
    }

    /// Its number would stand on the names of the triplets at its left.
    void paintTripletCrossing(double from, double to, double width, const QString &rate)
    {
        const double x = tripletRight - 14.0;
        drawArrow(painter, {x, y(from)}, {x, y(to)}, width, inkOfLigands);
        const QPointF beside(tripletRight + 8.0, 0.5 * (y(from) + y(to)));
        drawLabel(painter, beside, rate, rateSize, 0.0, 0.5, inkOfLigands);
        taken.append(labelBox(beside, rate, rateSize, 0.0, 0.5));
    }

    /// From S1 to a triplet.
    void paintCrossing(double triplet, double width, const QString &rate)
    {
        const QPointF from(singletRight - 10.0, y(results.singlet.energy));
        const QPointF to(tripletLeft, y(triplet));
        drawArrow(painter, from, to, width, inkOfLigands);
        const QPointF middle = 0.5 * (from + to);
        const bool isSteep = std::abs(to.y() - from.y()) > 60.0;
        const QPointF beside = middle + (isSteep ? QPointF(20.0, -20.0) : QPointF(0.0, -14.0));
        const double horizontal = isSteep ? 0.0 : 0.5;
        const double vertical = isSteep ? 0.5 : 1.0;
        ground(labelBox(beside, rate, rateSize, horizontal, vertical));
        drawLabel(painter, beside, rate, rateSize, horizontal, vertical, inkOfLigands);
    }

    /// From 5D0 to 7FJ, as wide as the branching ratio, and without light.
    void paintEmission()
    {
        const double emitting = ionLevels.value(QStringLiteral("5D0"));
        constexpr double leastRatio = 0.05; // percent
        QVector<int> shown;
        for (int J = 0; J < std::min(results.branchingRatios.size(), int(std::size(groundLevels)));
             ++J)
            if (results.branchingRatios.at(J) >= leastRatio)
                shown.append(J);
        const double step = (ionRight - ionLeft - 20.0) / (shown.size() + 1);
        double x = ionLeft + 20.0 + 0.5 * step;
        for (const int J : qAsConst(shown)) {
            const double ratio = results.branchingRatios.at(J);
            vertical(x, emitting, groundLevels[J], 2.0 + 0.12 * ratio, inkOfEmission,
                     QString::number(ratio, 'f', 1) + QStringLiteral(" %"));
            x += step;
        }
        if (results.anrad > 0.0) {
            const QPointF from(x, y(emitting));
            const QPointF to(x, y(groundLevels[6]));
            QPen pen(inkOfLigands, lineWidth(results.anrad));
            pen.setStyle(Qt::DotLine);
            painter.setPen(pen);
            painter.drawLine(from, to);
            rotatedLabel({x - 22.0, 0.5 * (from.y() + to.y())},
                         tr("no light %1").arg(textOfPower(results.anrad)), rateSize, inkOfLigands);
        }
    }

    /// Both ways between a donor and a level.
    void paintTransfers()
    {
        const bool isListed = transfers.size() > mostLabelledChannels;
        QVector<QLineF> lines;
        for (const TransferResult &transfer : qAsConst(transfers)) {
            const bool isSinglet = transfer.channel.donor == QLatin1String("S");
            const QPointF from(isSinglet ? singletRight : tripletRight,
                               y(energyOf(transfer.channel.donor)));
            const QPointF to(ionLeft, y(transfer.channel.acceptorEnergy));
            lines.append(QLineF(from, to));
            const QPointF along = (to - from) / lines.last().length();
            const QPointF across = 8.0 * QPointF(-along.y(), along.x());
            const QColor ink = inkOf(transfer.channel.mechanism);
            const bool isDownhill = transfer.energyMismatch >= 0.0;
            if (transfer.forwardRate >= leastRate)
                drawArrow(painter, from - across, to - across, lineWidth(transfer.forwardRate), ink,
                          isDownhill ? Line::Solid : Line::Dashed);
            if (transfer.backwardRate >= leastRate)
                drawArrow(painter, to + across, from + across, lineWidth(transfer.backwardRate),
                          blend(ink, Qt::white, 0.35), isDownhill ? Line::Dashed : Line::Solid);
        }
        for (int i = 0; i < transfers.size(); ++i) {
            if (isListed)
                tag(i, lines);
            else
                label(i, lines);
        }
        double y = this->y(ionLevels.value(QStringLiteral("5D0"))) + 90.0;
        if (isListed)
            y = listRates(y);
        if (curve.points.size() > 1)
            inset(
                QRectF(tripletRight - 40.0, y + 90.0, 225.0, std::min(bottom - 140.0 - y, 220.0)));
    }

    /// The place along an arrow, beside it by one of @p shifts of half the box, where the least
    /// stands.
    QRectF freeBox(int index, const QVector<QLineF> &lines, const QSizeF &size,
                   const QVector<double> &shifts)
    {
        const auto lengthWithin = [](const QRectF &box, const QLineF &line) {
            constexpr int samples = 60;
            int inside = 0;
            for (int i = 0; i < samples; ++i)
                inside += box.contains(line.pointAt((i + 0.5) / samples)) ? 1 : 0;
            return line.length() * inside / samples;
        };
        QRectF best;
        double least = 1e300;
        for (const double share :
             {0.5, 0.55, 0.45, 0.6, 0.4, 0.65, 0.35, 0.7, 0.3, 0.75, 0.25, 0.8, 0.2, 0.15})
            for (const double shift : shifts) {
                QRectF box(QPointF(), size);
                const QPointF shifted(0.0, shift * (0.5 * size.height() + 20.0));
                box.moveCenter(lines.at(index).pointAt(share) + shifted);
                double cost = box.top() < 0.0 ? 1e6 : 0.0;
                for (const QLineF &line : lines)
                    cost += 30.0 * lengthWithin(box.adjusted(0.0, -12.0, 0.0, 12.0), line);
                for (const QRectF &other : qAsConst(taken)) {
                    const QRectF common = box.intersected(other);
                    cost += common.width() * common.height();
                }
                if (cost < least) {
                    least = cost;
                    best = box;
                }
            }
        taken.append(best);
        return best;
    }

    void ground(const QRectF &box)
    {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 210));
        painter.drawRect(box);
        painter.setBrush(Qt::NoBrush);
    }

    void tag(int index, const QVector<QLineF> &lines)
    {
        const QRectF box = freeBox(index, lines, QSizeF(34.0, 32.0), {0.0});
        ground(box);
        drawLabel(painter, box.center(), QString::number(index + 1), rateSize, 0.5, 0.5,
                  inkOf(transfers.at(index).channel.mechanism), true);
    }

    void label(int index, const QVector<QLineF> &lines)
    {
        const TransferResult &transfer = transfers.at(index);
        const QColor ink = inkOf(transfer.channel.mechanism);
        const QString forward = QString::fromUtf8("→ ") + textOfPower(transfer.forwardRate);
        const QString backward = QString::fromUtf8("← ") + textOfPower(transfer.backwardRate);
        constexpr double lineHeight = 31.0;
        const double width =
            std::max(textWidth(forward, rateSize), textWidth(backward, rateSize)) + 8.0;
        const QRectF box =
            freeBox(index, lines, QSizeF(width, 2.0 * lineHeight), {-1.0, 1.0, 0.0, -1.6, 1.6});
        ground(box);
        drawLabel(painter, {box.left() + 4.0, box.top()}, forward, rateSize, 0.0, 0.0, ink);
        drawLabel(painter, {box.left() + 4.0, box.bottom()}, backward, rateSize, 0.0, 1.0, ink);
    }

    /// Returns where the list ends.
    double listRates(double y)
    {
        int number = 0;
        const double left = tripletLeft + 110.0;
        drawLabel(painter, {left, y}, tr("there / back, s⁻¹"), rateSize, 0.0, 0.5);
        for (const TransferResult &transfer : qAsConst(transfers)) {
            constexpr double lineHeight = 33.0;
            y += lineHeight;
            drawLabel(painter, {left, y},
                      QString::fromUtf8("%1  %2 / %3")
                          .arg(QString::number(++number), textOfPower(transfer.forwardRate),
                               textOfPower(transfer.backwardRate)),
                      rateSize, 0.0, 0.5, inkOf(transfer.channel.mechanism));
        }
        return y;
    }

    /// The yield against the triplet.
    void inset(const QRectF &frame)
    {
        constexpr double leastHeight = 110.0;
        if (frame.height() < leastHeight)
            return;
        const double first = curve.points.first().x();
        const double last = curve.points.last().x();
        double highestYield = 1e-300;
        for (const QPointF &point : curve.points)
            highestYield = std::max(highestYield, point.y());
        const auto place = [&](const QPointF &point) {
            return QPointF(frame.left() + (point.x() - first) / (last - first) * frame.width(),
                           frame.bottom() -
                               std::max(0.0, point.y()) / (1.1 * highestYield) * frame.height());
        };
        QPolygonF line;
        for (const QPointF &point : curve.points)
            line.append(place(point));
        painter.setPen(QPen(color::grey, 2.0));
        painter.setBrush(Qt::white);
        painter.drawRect(frame);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(color::black, 4.0));
        painter.drawPolyline(line);
        painter.setPen(QPen(color::black, 3.0));
        painter.setBrush(color::orange);
        painter.drawEllipse(place(curve.mark), 10.0, 10.0);
        painter.setBrush(Qt::NoBrush);
        drawLabel(painter, frame.topLeft() - QPointF(0.0, 36.0), tr("yield against T,"), rateSize,
                  0.0, 1.0);
        drawLabel(painter, frame.topLeft() - QPointF(0.0, 4.0),
                  tr("at most %1 %").arg(cli::textOfYield(highestYield)), rateSize, 0.0, 1.0);
        drawLabel(painter, frame.bottomLeft(), QString::number(first, 'f', 0), rateSize, 0.15, 0.0);
        drawLabel(painter, frame.bottomRight(), QString::number(last, 'f', 0), rateSize, 0.85, 0.0);
    }

    void paintLegend()
    {
        const double y = height - 68.0;
        double x = singletLeft;
        const auto entry = [&](const QColor &ink, Line line, const QString &text) {
            drawArrow(painter, {x, y}, {x + 62.0, y}, 5.0, ink, line);
            drawLabel(painter, {x + 72.0, y}, text, rateSize, 0.0, 0.5);
            x += 72.0 + textWidth(text, rateSize) + 28.0;
        };
        entry(color::blue, Line::Solid, tr("multipolar"));
        entry(color::red, Line::Solid, tr("exchange"));
        entry(color::black, Line::Dashed, tr("uphill"));
        entry(inkOfEmission, Line::Solid, tr("emission"));
        drawLabel(painter, {singletLeft, height - 26.0},
                  tr("energies in cm⁻¹; rates in s⁻¹, the widths by their logarithms"), rateSize,
                  0.0, 0.5);
    }

    QPainter &painter;
    const SpectroscopicResults &results;
    double tripletDeviation;
    const YieldCurve &curve;
    QMap<QString, double> ionLevels; ///< acceptors, cm^-1
    QVector<TransferResult> transfers;
    QVector<QRectF> taken; ///< by labels
    double highest = 0.0;  ///< cm^-1, at the upper end
};

} // namespace

Picture transferFigure(const SpectroscopicResults &results, const YieldInputs &inputs,
                       double tripletDeviation)
{
    if (!results.isTransferCalculated)
        return {};
    const YieldCurve curve = yieldCurve(results, inputs);
    return {tr("Energy levels and transfer"), QSizeF(figureWidth, height),
            [results, tripletDeviation, curve](QPainter &painter) {
                Diagram(painter, results, tripletDeviation, curve).paint();
            }};
}

} // namespace plots
