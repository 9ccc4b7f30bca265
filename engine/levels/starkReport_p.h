#pragma once

#include <QString>
#include <QVector>

#include <LanqorEngine/StarkResults.h>

/// Report of a calculation of Stark levels; its parts serve the report of the fit as well.
namespace starkReport {

/// Title of a section between rules.
QString heading(const QString &title);

/// Sorted levels and splitting of each manifold, by J.
QString levelTable(const QVector<QVector<double>> &sortedLevels);

/// "signed" or "magnitudes".
QString nameOf(ReducedElements choice);
/// The choice of the elements of U(k), for the end of a report.
QString elementsLine(ReducedElements choice);

QString text(const StarkResults &results);

} // namespace starkReport
