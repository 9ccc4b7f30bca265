#pragma once

#include <QString>
#include <QVector>

class LanqorStarkLevels;

/// Report of a calculation of Stark levels.
namespace starkReport {

/// What the calculation used.
struct Input
{
    QString structureFile;
    double ro0;
    QVector<double> chargeFactors; ///< of atoms 2 .. A+1
};

/// Sorted levels and splitting of each manifold, one line for each; shared with the report of the
/// fit.
QString levelTable(const QVector<QVector<double>> &sortedLevels);

QString text(const Input &input, const LanqorStarkLevels &levels);

} // namespace starkReport
