#pragma once

#include <QString>
#include <QVector>

class LanqorStarkLevels;

/// Report of a calculation of Stark levels; its parts serve the report of the fit as well.
namespace starkReport {

/// What the calculation used.
struct Input
{
    QString structureFile;
    double ro0;
    QVector<double> chargeFactors; ///< of atoms 2 .. A+1
};

/// Title of a section between rules.
QString heading(const QString &title);

/// Sorted levels and splitting of each manifold, by J.
QString levelTable(const QVector<QVector<double>> &sortedLevels);

QString text(const Input &input, const LanqorStarkLevels &levels);

} // namespace starkReport
