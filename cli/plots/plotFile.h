#pragma once

#include <QString>

class QFont;
class QwtPlot;
class QwtText;

namespace plots {

/// Writes a picture of @p plot, by way of a temporary file, in the format of the suffix.
/// @param columns  120 mm wide ones that it needs, unless it has the size that is asked for
void writePlot(QwtPlot &plot, const QString &file, double columns = 1.0);

/// White ground, thin frame, readable fonts; a title above when it is not empty.
void applyStyle(QwtPlot &plot, const QString &title);
/// Of words within a plot.
QFont labelFont();
/// The name of a curve in a legend.
QwtText legendText(const QString &name);
void setAxisTitle(QwtPlot &plot, int axis, const QString &title);

} // namespace plots
