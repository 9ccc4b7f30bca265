#pragma once

#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorOmegaPrivate;
class LanqorResultTables;
struct OmegaResults;

/// Theoretical Judd-Ofelt intensity parameters Omega(2), Omega(4) and Omega(6) of a Eu3+ complex
/// from its geometry, by the simple overlap model (O. L. Malta, Chem. Phys. Lett. 87, 27 (1982);
/// O. L. Malta et al., J. Lumin. 75, 255 (1997)).
///
/// Every coordinated atom takes part with a charge factor g and a polarisability alpha: the
/// overlap charge g rho on the bond gives the forced electric dipole (ED) term, alpha the
/// dynamic coupling (DC) term.
///
/// Atoms are numbered as in the geometry, the ion being atom 1 and the coordinated atoms 2 to
/// N+1; per-atom arrays have N+2 entries indexed by this number (entries 0 and 1 are unused).
/// g is dimensionless, alpha in cm^3, Omega in cm^2, distances in Angstrom.
///
/// There are three sources of g and alpha:
/// - setChargeFactorAndAlpha();
/// - the QDC model, when the atomic charges q (electron populations), the superdelocalizabilities
///   S and Q, D, C are set: g = Q q, alpha = (D S + C) 1e-24 cm^3;
/// - an estimate from the bonds, when q and S are set but Q, D and C are not. With k the force
///   constant of the bond to the ion and Rmin the shortest distance, the bond excitation energy
///   is dE = c (Rmin/R) 1e-11 erg, c = 0.315593115 * 4.2925651759 for O and
///   1.7016449683 * 4.4056678455 for N; then g = R sqrt(k/(2 dE)) and
///   alpha = e^2 rho^2 R^2/(2 dE) + (4.2669775857 + 0.0432505996 S) 1e-24 cm^3. F and Cl have
///   g = 1 and the second term of alpha alone, other elements keep what they had. The sources of
///   these numbers are not known.
/// The last two need a force matrix in the MOPAC output, read anew by every calcOmega().
class LANQORENGINE_EXPORT LanqorOmega : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    /// Without a geometry: every calculation fails.
    LanqorOmega();

    /// Reads the geometry; a failure is told by getLastError().
    /// @param chargeModel   stored and handed on; selects nothing here
    /// @param outFile       MOPAC output: geometry and force constants
    /// @param geometryFile  empty; or a structure file, read by its kind instead of @p outFile;
    ///                      or a report of createOutFile() with its charge-factor section: N, g
    ///                      and alpha are taken from it and calcOmega() runs at once. A report
    ///                      fails when its omega(l) is more than 0.02e-20 cm^2 + 1 % off the
    ///                      recomputed one: it belongs to another geometry.
    LanqorOmega(QObject *parent, const int &chargeModel, const QString &outFile,
                const QString &geometryFile);
    /// Takes a geometry that was read already; no file is read but, for the last two sources of g
    /// and alpha, the force constants of geometry->getFileName().
    /// @param geometry    not owned; must outlive this object. Its spherical coordinates are made
    ///                    if they are missing; null: no geometry, every calculation fails
    /// @param reportFile  empty, or a report as above
    LanqorOmega(QObject *parent, const int &chargeModel, LanqorInputData *geometry,
                const QString &reportFile = QString());
    ~LanqorOmega() override;

    /// Index n of the medium, for the radiative rates of the report; 1.5 at the start.
    void setRefractiveIndex(const double &index);
    /// Q, per electron; D, cubic Angstrom times the unit of the orbital energies that gave the
    /// superdelocalizabilities (Angstrom^3 eV for MOPAC); C, cubic Angstrom. The report prints
    /// them as au^-1, au^-1.A^3 and A^3.
    void setParametersQDC(const double &Q, const double &D, const double &C);
    /// By atom number, in the inverse unit of the orbital energies (1/eV for MOPAC); "au" in the
    /// report.
    void setSuperDeslocalizability(const QVector<double> &values);
    /// By atom number: the electron populations of LanqorIndicesCalculation, called atomic charges
    /// in the report. An empty vector switches the QDC model off; charges
    /// set after a calculation are printed in its report.
    void setAtomicCharges(const QVector<double> &charges);
    /// Unit of the orbital energies that gave the superdelocalizabilities, for the report: "eV"
    /// (MOPAC) or "hartree" (Gaussian); empty, as at the start: not known.
    void setOrbitalEnergyUnit(const QString &unit);
    /// Groups of atoms for the partition of the radiative rate in the report; see
    /// LanqorAradPartition::setLigandsVector().
    void setLigandAtomsByLigandVector(const QStringList &ligands);
    /// Copies g and alpha (cm^3) of atoms 2 to N+1 from arrays of N+2 entries.
    void setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas);
    /// The same from vectors by atom number. False when there is no geometry or one of them has
    /// less than N+2 entries; then no g and alpha are set.
    bool setChargeFactorAndAlpha(const QVector<double> &chargeFactors,
                                 const QVector<double> &alphas);
    /// Sets N, which starts as the number of atoms within the bond cut-offs. Call it before
    /// handing over arrays.
    void setCoordNumber(const int &number);
    void setOmegaPrintingOptions(const OmegaPrintingOptions &options);
    /// Text at the end of the report; without it, the papers of the model stand there.
    void setRequiredCitations(const QString &citations);

    /// Overlap ro0 of the nearest atom in the crystal field of the report, dimensionless, 0 to
    /// below 1; 0.05 at the start, the overlap of the intensity parameters, which it does not
    /// change. LanqorStarkLevels has 0.0801 by default. False, with the earlier one kept, for any
    /// other.
    bool setCrystalFieldOverlap(const double &ro0);

    /// Computes all Omega(lambda). False when there is no Eu geometry, N does not fit it, an
    /// atom lies on the ion, g or alpha were not set or, with atomic charges, cannot be had from
    /// them; then all Omega are 0. When N was counted and the counted atoms are not atoms
    /// 2 to N+1, a message names them.
    bool calcOmega();

    /// Report of the last calculation with the sections of the printing options, written to
    /// @p fileName unless that is empty. Empty on failure: also when g and alpha, N or the QDC
    /// values were changed since and no longer belong to these Omega.
    QString createOutFile(const QString &fileName);
    /// Everything that the last calculation gave, at the present refractive index, groups and
    /// printing options; empty when there was none or it failed.
    OmegaResults getResults() const;
    /// Results as data: parameters, atoms, rates, partition, amplitudes and crystal field.
    static LanqorResultTables makeTables(const OmegaResults &results);

    /// Omega(lambda), cm^2, lambda = 2, 4, 6.
    double getOmega(const int &lambda) const;
    /// The same by the forced electric dipole mechanism alone.
    double getOmegaED(const int &lambda) const;
    /// The same by dynamic coupling alone.
    double getOmegaDC(const int &lambda) const;
    /// Polarisability, cm^3.
    double getAlpha(const int &atom) const;
    double getChargeFactor(const int &atom) const;
    int getCoordNumber() const;
    /// Symbol of an atom of the geometry; empty outside it.
    QString getAtomLabel(const int &atom) const;
    int getChargeModel() const;
    /// Citation printed in the MOPAC output of the geometry; empty when there is none.
    QString getMopacCitation() const;

private:
    std::unique_ptr<LanqorOmegaPrivate> d;
};
