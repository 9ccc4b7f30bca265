#pragma once

#include <QString>
#include <QVector>

struct StarkResults;

/// Report of a calculation of Stark levels; its parts serve the report of the fit as well.
namespace starkReport {

/// Title of a section between rules.
QString heading(const QString &title);

/// Sorted levels and splitting of each manifold, by J.
QString levelTable(const QVector<QVector<double>> &sortedLevels);

QString text(const StarkResults &results);

} // namespace starkReport
