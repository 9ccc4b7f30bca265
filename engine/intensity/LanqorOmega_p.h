#pragma once

#include "overlap/simpleOverlapModel_p.h"

#include <LanqorEngine/OmegaResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorInputData;
struct IntensityReportData;

/// What LanqorOmega holds and calculates. Functions that can fail return the reason, empty on
/// success; telling it is left to the object of the interface.
class LanqorOmegaPrivate
{
public:
    /// Takes the geometry of a reader, whose spherical coordinates are made if they are missing,
    /// then, unless @p reportFile is empty, N, g and alpha from a report, and calculates; when
    /// that fails, there are no g and alpha.
    QString start(LanqorInputData *reader, const QString &reportFile);

    QString setInitialValues() const;
    QString calculate();
    void clearResults();
    void setCoordNumber(int number);
    /// Copies g and alpha of atoms 2 to N+1; false, with none left, without arrays or a geometry
    /// that has these atoms.
    bool takeChargeFactorAndAlpha(const double *g, const double *a);
    bool hasReactivityIndices() const;
    /// Q, D, C, charges and superdelocalizabilities may have been set after the calculation.
    bool agreesWithQDC() const;
    OmegaResults::ChargeFactorSource chargeFactorSource() const;

    /// Parts of the results of the last calculation.
    QVector<OmegaResults::Atom> atomResults() const;
    QVector<OmegaResults::LatticeTerm> latticeResults() const;
    QVector<OmegaResults::Amplitude> amplitudeResults() const;
    QVector<OmegaResults::CrystalFieldParameter> crystalFieldResults() const;
    AradPartitionResults partitionResults() const;

    ByRank omega;   // cm^2
    ByRank omegaED; // cm^2
    ByRank omegaDC; // cm^2
    int coordNumber = 0;
    bool isCoordNumberCounted = false;
    QVector<double> chargeFactor;           // by atom number
    QVector<double> alpha;                  // by atom number, cm^3
    double refractiveIndex = 1.5;           // of the medium
    QVector<double> atomicCharges;          // by atom number, electrons
    QVector<double> superDeslocalizability; // by atom number, 1/(unit of the orbital energies)
    QString orbitalEnergyUnit;              // empty: not known
    bool isBondEstimate = false;            // g and alpha
    bool hasParametersQDC = false;
    double parameterQ = 0.0; // per electron
    double parameterD = 0.0; // cubic Angstrom times the unit of the orbital energies
    double parameterC = 0.0; // cubic Angstrom
    double crystalFieldOverlap = simpleOverlapModel::nearestOverlap;
    QStringList ligandAtoms;
    OmegaPrintingOptions printingOptions;
    QString requiredCitations;
    int chargeModel = 0;
    QString outFile;        // holds the force constants
    QString geometryFile;   // the file whose geometry is in force
    QString geometryError;  // why there is none
    QString atomOrderError; // which counted atoms are not atoms 2 to N+1
    LanqorInputData *inputData = nullptr;
    QVector<CoordSPH> positions;                                    // atom 1 first
    std::unique_ptr<simpleOverlapModel::CoordinationSphere> sphere; // of positions and N
    simpleOverlapModel::LatticeSums sums;                           // of the last calculation
    bool isCalculated = false;

private:
    QString takeGeometry(LanqorInputData *reader);
    QString takeReport(const QString &reportFile);
    /// Why a report is not one of this geometry: what it prints is not what its values give.
    QString disagreementWith(const IntensityReportData &report, const QString &reportFile) const;
    QString prepareSphere();
    QString calcChargeFactorAndAlpha(double minDistance);
    void calcFromQDC();
    double chargeFactorQDC(int atom) const;
    double alphaQDC(int atom) const;
    QString calcFromBonds(double minDistance, const QVector<double> &forceConstants);

    MyComplex gamma(int t, int p, int j) const;
    MyComplex GAMMA(int t, int p, int j) const;
    MyComplex BEd(int lambda, int t, int p) const;
    MyComplex BDc(int lambda, int t, int p) const;
    MyComplex Bkq(int lambda, int t, int p) const;
};
