#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>

#include <functional>

class QPainter;

namespace plots {

/// A drawing that is painted in units of a tenth of a millimetre, y downwards. Its width of 120 mm
/// can be printed at two thirds, in one column of a journal, with letters of 2.4 mm.
struct Picture
{
    QString title; ///< of the file; not drawn
    QSizeF size;   ///< empty for a picture without content
    std::function<void(QPainter &)> paint;
};

/// True when there is a font to label pictures with, in a program that can draw.
bool canDraw();

/// Writes the picture in the format of the suffix.
void draw(const Picture &picture, const QString &file);

/// The picture as an element of a page, as wide as there is room; empty for an empty picture, or
/// when nothing can be drawn.
QByteArray inlineSvg(const Picture &picture);

} // namespace plots
