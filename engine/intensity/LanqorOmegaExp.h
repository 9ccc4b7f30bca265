#pragma once

#include <LanqorEngine/EmissionSpectrumOptions.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QString>
#include <QStringList>

#include <memory>

class LanqorOmegaExpPrivate;
class LanqorResultTables;
struct OmegaExpResults;

/// Experimental intensity parameters of a Eu3+ compound from its emission spectrum.
///
/// The magnetic dipole transition 5D0 -> 7F1 hardly feels the ligands and calibrates the others:
///     A(1) = 3.1e-12 n^3 sigma(1)^3,  A(J) = A(1) S(J)/S(1) sigma(1)/sigma(J)
/// The ratio of barycentres turns a ratio of powers into one of photons, so the areas S are those
/// of a spectrum in emitted power, in any one unit; areas of a photon-counting detector have to be
/// multiplied by their barycentres first. Mixing these up costs 4 to 15 %. Barycentres sigma are
/// in cm^-1, rates in s^-1, parameters in cm^2.
class LANQORENGINE_EXPORT LanqorOmegaExp : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// @param refractiveIndex  n of the medium, dimensionless
    LanqorOmegaExp(QObject *parent, const double &refractiveIndex);
    ~LanqorOmegaExp() override;

    /// Integrated areas of 5D0 -> 7F0 .. 7F5, emitted power in any one unit; @p S1 must not be 0.
    /// New areas or barycentres void the results.
    void setAreaOfTransition(const double &S0, const double &S1, const double &S2, const double &S3,
                             const double &S4, const double &S5);
    /// Energy barycentres of 5D0 -> 7F0 .. 7F5, cm^-1; 0 for a transition without area.
    void setBarycenterOfEnergy(const double &sigma0, const double &sigma1, const double &sigma2,
                               const double &sigma3, const double &sigma4, const double &sigma5);
    /// Measured lifetime of 5D0, ms; 0 when there is none.
    void setLifeTime(const double &lifeTime);
    /// The spectrum file that the report names.
    void setFileName(const QString &fileName);

    /// Sets areas, barycentres and file name from a measured spectrum: a text file of two columns,
    /// wavelength (nm) or wavenumber (cm^-1) in ascending or descending order, and intensity per
    /// unit of the first column. A band whose area is not positive counts as absent; bands that
    /// the spectrum covers in part or not at all are told by newObjCalculationMessage().
    /// @return false when the file holds no spectrum, or it shows nothing of 7F1, 7F2 or 7F4;
    ///         areas and barycentres are then as before
    bool readSpectrum(const QString &fileName,
                      const EmissionSpectrumOptions &options = EmissionSpectrumOptions());

    /// Sets areas, barycentres and file name from a table: lines of J, area and barycentre (cm^-1),
    /// each J from 0 to 5 at most once; "#" starts a comment.
    /// @return false when the file holds no such table; areas and barycentres are then as before
    bool readBands(const QString &fileName);
    /// Turns areas of a photon-counting detector into emitted power: each is multiplied by its
    /// barycentre; one without a barycentre stays and is refused by calcOmegaExp(). readSpectrum()
    /// does the like by itself.
    void convertPhotonCounts();

    /// Computes all results. Fails when S(1) is 0, when the barycentre of a transition with an area
    /// is, and for numbers that cannot be measured; the results are then all 0.
    bool calcOmegaExp();

    double getOmega2Exp() const; ///< cm^2
    double getOmega4Exp() const; ///< cm^2
    /// 178305 / S(2); infinite when S(2) is 0.
    double getR02() const;
    double getAradExp() const; ///< total radiative rate, s^-1
    /// A(J) of 5D0 -> 7FJ, s^-1, J = 0 .. 5; 0 for any other J and without results.
    double getRate(const int &J) const;
    /// A(J) / Arad, %; 0 likewise.
    double getBranchingRatio(const int &J) const;
    double getRadiativeLifeTime() const; ///< 1 / Arad, ms; 0 without results
    /// Why the barycentres cannot be wavenumbers: one lies below 5000 cm^-1, far below the emission
    /// of 5D0, as a wavelength in nm would. Empty when they can. calcOmegaExp() does not ask.
    QString getBarycentreError() const;
    /// What makes the emission doubtful though it can be calculated with: barycentres outside the
    /// windows of their bands (those of EmissionSpectrumOptions), windows that overlap, signals
    /// at the edges of windows above 0.5 % of the highest peak. One sentence each.
    QStringList getWarnings() const;
    double getRefractiveIndex() const;
    double getLifeTime() const; ///< ms
    QString getFileName() const;
    /// Area of 5D0 -> 7FJ, J = 0 .. 5; 0 for any other J.
    double getAreaOfTransition(const int &J) const;
    /// Barycentre of 5D0 -> 7FJ, cm^-1, J = 0 .. 5; 0 for any other J.
    double getBarycenterOfEnergy(const int &J) const;

    /// Report of the last calculation, also written to @p outFile unless that is empty.
    /// Without a lifetime the non-radiative rate and the efficiency are "not given".
    /// @return empty when nothing is calculated, the lifetime is negative or the file cannot be
    ///         written
    QString createOutputFile(const QString &outFile);

    /// Everything that the last calculation gave, with what the lifetime adds; empty when there was
    /// none or it failed.
    OmegaExpResults getResults() const;
    /// Results as data: parameters, rates and decay, then the bands.
    static LanqorResultTables makeTables(const OmegaExpResults &results);

private:
    std::unique_ptr<LanqorOmegaExpPrivate> d;
};
