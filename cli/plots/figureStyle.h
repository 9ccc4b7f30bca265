#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

class QPainter;

/// What all drawings have in common. Lengths are in tenths of a millimetre.
namespace plots {

constexpr double figureWidth = 1200.0;
constexpr int textSize = 36;
constexpr int smallTextSize = 32;

/// The colours of M. Okabe and K. Ito, which colour-blind eyes tell apart; in grey they differ by
/// their lightness.
namespace color {
const QColor black(0x20, 0x20, 0x20);
const QColor grey(0x80, 0x80, 0x80);
const QColor faint(0xc4, 0xc4, 0xc4);
const QColor blue(0x00, 0x52, 0x8c);
const QColor sky(0x56, 0xb4, 0xe9);
const QColor green(0x00, 0x80, 0x5c);
const QColor yellow(0xf0, 0xe4, 0x42);
const QColor orange(0xe6, 0x9f, 0x00);
const QColor red(0xd5, 0x5e, 0x00);
const QColor purple(0xcc, 0x79, 0xa7);
} // namespace color

QFont figureFont(int pixels, bool bold = false);
double textWidth(const QString &text, int pixels, bool bold = false);

/// @p first where @p share is 0, @p second where it is 1.
QColor blend(const QColor &first, const QColor &second, double share);
/// Black or white: what can be read on @p ground.
QColor readableOn(const QColor &ground);

/// A line of text, @p horizontal and @p vertical (0 to 1) of whose box lie at @p anchor.
void drawLabel(QPainter &painter, const QPointF &anchor, const QString &text, int pixels,
               double horizontal, double vertical, const QColor &ink = color::black,
               bool bold = false);
/// The box of such a line.
QRectF labelBox(const QPointF &anchor, const QString &text, int pixels, double horizontal,
                double vertical);

enum class Line { Solid, Dashed };
void drawArrow(QPainter &painter, const QPointF &from, const QPointF &to, double width,
               const QColor &ink, Line line = Line::Solid);

/// Moves positions, in ascending order, apart until they are at least @p gap from each other,
/// each cluster staying centred on its members, and back into [lowest, highest] where they left.
QVector<double> spreadApart(const QVector<double> &wanted, double gap, double lowest,
                            double highest);

/// "1.2×10⁸"; plain digits from 0.01 to 9999.
QString textOfPower(double value);

} // namespace plots
