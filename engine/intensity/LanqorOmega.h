#pragma once

#include <LanqorEngine/CoordSPH.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/MyComplex.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class IntensityReport;
class LanqorInputData;
namespace simpleOverlapModel {
class CoordinationSphere;
class LatticeSums;
} // namespace simpleOverlapModel

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
/// - the QDC model, when the atomic charges q, the superdelocalizabilities S and Q, D, C are
///   set: g = Q q, alpha = (D S + C) 1e-24 cm^3;
/// - an estimate from the bonds, when q and S are set but Q, D and C are not. With k the force
///   constant of the bond to the ion and Rmin the shortest distance, the bond excitation energy
///   is dE = c (Rmin/R) 1e-11 erg, c = 0.315593115 * 4.2925651759 for O and
///   1.7016449683 * 4.4056678455 for N; then g = R sqrt(k/(2 dE)) and
///   alpha = e^2 rho^2 R^2/(2 dE) + (4.2669775857 + 0.0432505996 S) 1e-24 cm^3. F and Cl have
///   g = 1 and the second term of alpha alone, other elements keep what they had.
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
    ~LanqorOmega() override;

    /// Index n of the medium, for the radiative rates of the report; 1.5 at the start.
    void setRefractiveIndex(const double &index);
    /// Q, au^-1; D, cubic Angstrom per au; C, cubic Angstrom.
    void setParametersQDC(const double &Q, const double &D, const double &C);
    /// By atom number, au.
    void setSuperDeslocalizability(const QVector<double> &values);
    /// By atom number, elementary charges. An empty vector switches the QDC model off; charges
    /// set after a calculation are printed in its report.
    void setAtomicCharges(const QVector<double> &charges);
    /// Groups of atoms for the partition of the radiative rate in the report; see
    /// LanqorAradPartition::setLigandsVector().
    void setLigandAtomsByLigandVector(const QStringList &ligands);
    /// Copies g and alpha (cm^3) of atoms 2 to N+1 from arrays of N+2 entries.
    void setChargeFactorAndAlpha(double *&chargeFactors, double *&alphas);
    /// Sets N, which starts as the number of atoms within the bond cut-offs. Call it before
    /// handing over arrays.
    void setCoordNumber(const int &number);
    void setOmegaPrintingOptions(const OmegaPrintingOptions &options);
    /// Text at the end of the report; without it, the papers of the model stand there.
    void setRequiredCitations(const QString &citations);

    /// Computes all Omega(lambda). False when there is no Eu geometry, N does not fit it, an
    /// atom lies on the ion, g or alpha were not set or, with atomic charges, cannot be had from
    /// them; then all Omega are 0. When N was counted and the counted atoms are not atoms
    /// 2 to N+1, a message names them.
    bool calcOmega();

    /// Report of the last calculation with the sections of the printing options, written to
    /// @p fileName unless that is empty. Empty on failure: also when g and alpha, N or the QDC
    /// values were changed since and no longer belong to these Omega.
    QString createOutFile(const QString &fileName);

    /// Omega(lambda), cm^2, lambda = 2, 4, 6.
    double getOmega(const int &lambda) const { return omega.value(lambda); }
    /// The same by the forced electric dipole mechanism alone.
    double getOmegaED(const int &lambda) const { return omegaED.value(lambda); }
    /// The same by dynamic coupling alone.
    double getOmegaDC(const int &lambda) const { return omegaDC.value(lambda); }
    /// Polarisability, cm^3.
    double getAlpha(const int &atom) const { return alpha.value(atom); }
    double getChargeFactor(const int &atom) const { return chargeFactor.value(atom); }
    int getCoordNumber() const { return coordNumber; }
    /// Symbol of an atom of the geometry; empty outside it.
    QString getAtomLabel(const int &atom) const { return positions.value(atom - 1).label; }
    int getChargeModel() const { return chargeModel; }
    /// Citation printed in the MOPAC output of the geometry; empty when there is none.
    QString getMopacCitation() const;

private:
    friend class IntensityReport;

    bool setInitialValues();
    bool readGeometry(const QString &structureFile);
    void announceGeometryOnly();
    bool takeReport(const QString &reportFile);
    bool prepareSphere();
    bool calcChargeFactorAndAlpha(double &minDistance);
    void calcFromQDC();
    double chargeFactorQDC(const int &atom) const;
    double alphaQDC(const int &atom) const;
    bool hasReactivityIndices() const;
    bool agreesWithQDC() const;
    bool calcFromBonds(const double &minDistance, const QVector<double> &forceConstants);
    void clearResults();

    /// Terms and sums of the last calculation, for the report.
    MyComplex gamma(const int &t, const int &p, const int &j) const;
    MyComplex GAMMA(const int &t, const int &p, const int &j) const;
    MyComplex BEd(const int &lambda, const int &t, const int &p) const;
    MyComplex BDc(const int &lambda, const int &t, const int &p) const;
    MyComplex Bkq(const int &lambda, const int &t, const int &p) const;
    double tet(const int &t, const int &lambda) const;

    QVector<double> omega;
    QVector<double> omegaED;
    QVector<double> omegaDC;
    int coordNumber = 0;
    bool isCoordNumberCounted = false;
    QVector<double> chargeFactor;
    QVector<double> alpha;
    double refractiveIndex = 1.5;
    QVector<double> atomicCharges;
    QVector<double> superDeslocalizability;
    bool hasParametersQDC = false;
    double parameterQ = 0.0;
    double parameterD = 0.0;
    double parameterC = 0.0;
    QStringList ligandAtoms;
    OmegaPrintingOptions printingOptions;
    QString requiredCitations;
    int chargeModel = 0;
    QString outFile;
    QString geometryFile;   // the file whose geometry is in force
    QString geometryError;  // why there is none
    QString atomOrderError; // which counted atoms are not atoms 2 to N+1
    LanqorInputData *inputData = nullptr;
    QVector<CoordSPH> positions;                                    // atom 1 first
    std::unique_ptr<simpleOverlapModel::CoordinationSphere> sphere; // of positions and N
    std::unique_ptr<simpleOverlapModel::LatticeSums> sums;          // of the last calculation
    bool isCalculated = false;
};
