#pragma once

#include <QMap>
#include <QString>
#include <QVector>

/// Lines by which a report and its charge-factor section are known.
namespace intensityReportText {
constexpr char geometryLine[] =
    "The data shown below were calculated from the geometry read in following file: ";
constexpr char chargeFactorTitle[] =
    " Charge Factors         Polarizabilies (cubic Angstroms)          ";
} // namespace intensityReportText

/// What a report of intensity parameters holds for a later calculation.
struct IntensityReportData
{
    QVector<double> chargeFactors; ///< by atom number, N+2 entries
    QVector<double> alphas;        ///< cm^3, by atom number
    QMap<int, double> omega;       ///< printed omega(l), 1e-20 cm^2, when that section is there
    QString error;                 ///< why the report cannot be used; empty when it can
};

/// True when @p fileName starts like a report of LanqorOmega::createOutFile().
bool isIntensityReport(const QString &fileName);

/// Reads charge factors, polarisabilities and omega(l). The report fails without its
/// charge-factor section, and when that is not one row for each of atoms 2 to N+1.
IntensityReportData readIntensityReport(const QString &fileName);
