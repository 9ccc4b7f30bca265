#pragma once

#include <QString>

struct OmegaResults;

/// The text of the report of an intensity calculation: one function for each section, in the order
/// of the report.
class IntensityReport
{
public:
    /// @param results  of a finished calculation; must outlive this object
    explicit IntensityReport(const OmegaResults &results);

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
    /// What the sections leave open, behind the citations; empty when there is nothing to say.
    QString remarks() const;
    QString remarksOnQDC() const;
    QString remarksOnCrystalField() const;
    enum class SignOfQ { NotNegative, Negative };
    QString crystalFieldLines(SignOfQ sign) const;

    int lastAtom() const;

    const OmegaResults &results;
};
