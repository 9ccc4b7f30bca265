#pragma once

#include <QString>

class QColor;
class QwtPlot;

namespace plots {

/// Writes a picture of @p plot, by way of a temporary file, in the format of the suffix.
void writePlot(QwtPlot &plot, const QString &file);

/// White ground, thin frame, readable fonts; a title above when it is not empty.
void applyStyle(QwtPlot &plot, const QString &title);
void setAxisTitle(QwtPlot &plot, int axis, const QString &title);

} // namespace plots
