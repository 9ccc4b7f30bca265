#pragma once

#include <LanqorEngine/JuddOfeltBand.h>
#include <LanqorEngine/JuddOfeltResults.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/RefractiveIndexModel.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorJuddOfeltPrivate;
class LanqorResultTables;

/// Judd-Ofelt analysis of the absorption bands of a lanthanide ion (B. R. Judd, Phys. Rev. 127, 750
/// (1962); G. S. Ofelt, J. Chem. Phys. 37, 511 (1962)).
///
/// Line strengths S of bands from the ground level are fitted by
///     S = Omega(2) U(2)^2 + Omega(4) U(4)^2 + Omega(6) U(6)^2,
/// after the magnetic dipole part of an oscillator strength,
///     f = 8 pi^2 m c sigma/(3h(2J+1)) ((n^2+2)^2/(9n) S + n (h/(4 pi m c))^2 <L + g_s S>^2),
/// is taken off. The squares are those of the ion's own eigenvectors unless a band has its own;
/// S given as such is that of the electric dipole alone. Emission follows from the same squares:
///     A_ED = 64 pi^4 e^2 sigma^3/(3h(2J+1)) n(n^2+2)^2/9 S,
///     A_MD = 64 pi^4 sigma^3/(3h(2J+1)) n^3 (e h/(4 pi m c))^2 <L + g_s S>^2,
/// between the calculated energies of the levels. Modified treatments (as they are proposed for
/// Pr) are not built.
///
/// It needs the tables of the 4f shell in the current directory, as LanqorEnergyLevels.
class LANQORENGINE_EXPORT LanqorJuddOfelt : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// A measured lifetime of a level.
    struct Lifetime
    {
        QString level;
        double milliseconds = 0.0;
    };

    /// Calculates the levels of @p ion, from 2 to 12 electrons; when that fails getLastError()
    /// tells why and nothing can be analysed.
    LanqorJuddOfelt(QObject *parent, const FreeIonParameters &ion);
    ~LanqorJuddOfelt() override;

    /// Reads a table of bands: a heading that names the columns (level; wavelength_nm or
    /// wavenumber_cm-1; one of f, S_cm2, cross_section_cm2_nm, cross_section_cm, absorbance_cm-1;
    /// if wanted error, U2, U4, U6, f_MD, n), then one band a line. False with file and line.
    bool readBands(const QString &fileName);
    void setBands(const QVector<JuddOfeltBand> &bands);
    /// Wavelengths of bands are those in vacuum (unless set) or in air.
    void setWavelengthsInAir(const bool &inAir);
    /// Concentration of the ion (mol/l) and path (cm), which absorbances need.
    void setSample(const double &concentration, const double &path);
    /// 1.5 unless set.
    void setRefractiveIndex(const RefractiveIndexModel &model);
    /// Reads a table of wavelength (nm) and n. False with the file.
    static bool readRefractiveIndex(const QString &fileName, RefractiveIndexModel &model,
                                    QString &error);
    /// JuddOfeltWeighting::EqualStrength unless set.
    void setWeighting(const JuddOfeltWeighting &weighting);
    /// Whether the magnetic dipole part from the eigenvectors is taken off; true unless set. A part
    /// that comes with a band is taken off in any case.
    void setMagneticPartTakenOff(const bool &isTakenOff);
    /// Levels whose emission is wanted; all up to the highest band unless set.
    void setEmittingLevels(const QStringList &levels);
    void setLifetimes(const QVector<Lifetime> &lifetimes);

    /// False, with the line of the band, when a level does not exist or is given twice, a strength
    /// is negative, a barycentre is far from its level (a wavelength taken for a wavenumber), an
    /// error or the sample is missing where it is needed; with fewer than three bands, bands that
    /// leave an Omega open, or a refractive index below 1. The earlier results stay.
    bool calcIntensities();

    JuddOfeltResults getResults() const;
    /// Record "judd_ofelt" and tables "judd_ofelt_parameters", "absorption_bands",
    /// "emitting_levels", "emission_transitions".
    static LanqorResultTables makeTables(const JuddOfeltResults &results);
    static QString makeReport(const JuddOfeltResults &results);

    /// A of an electric dipole transition, s^-1, at a wavenumber (cm^-1) in a medium of index n
    /// from a level J, with S in cm^2; of a magnetic dipole one with the square of L + g_s S.
    static double calcElectricRate(const double &wavenumber, const double &n, const double &J,
                                   const double &S);
    static double calcMagneticRate(const double &wavenumber, const double &n, const double &J,
                                   const double &square);
    /// The oscillator strengths of the same, from the lower level J.
    static double calcElectricStrength(const double &wavenumber, const double &n, const double &J,
                                       const double &S);
    static double calcMagneticStrength(const double &wavenumber, const double &n, const double &J,
                                       const double &square);
    /// n at a vacuum wavenumber, cm^-1.
    static double calcRefractiveIndex(const RefractiveIndexModel &model, const double &wavenumber);

private:
    std::unique_ptr<LanqorJuddOfeltPrivate> d;
};
