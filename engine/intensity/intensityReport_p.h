#pragma once

#include <QString>
#include <QVector>

class LanqorOmega;

/// The text of the report of a finished intensity calculation: one function for each section,
/// in the order of the report.
class IntensityReport
{
public:
    /// @param calculation  finished; must outlive this object
    explicit IntensityReport(LanqorOmega &calculation);

    QString text() const;

private:
    QString head() const;
    QString sphericalCoordinates() const;
    QString parametersQDC() const;
    QString reactivityIndices() const;
    QString chargeFactors() const;
    QString omega() const;
    QString constants() const;
    QString sphericalHarmonics() const;
    QString overlapModel() const;
    QString latticeTermsDC() const;
    QString amplitudesDC() const;
    QString omegaDC() const;
    QString latticeTermsED() const;
    QString amplitudesED() const;
    QString omegaED() const;
    QString amplitudes() const;
    QString radiativeRates() const;
    QString partition() const;
    QString crystalField() const;
    QString citations() const;

    /// Rows "name(atom) = value" of one quantity, 4 decimals.
    QString atomRows(const QString &name, const QVector<double> &values) const;
    int lastAtom() const;

    LanqorOmega &calculation;
};
