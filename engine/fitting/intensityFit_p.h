#pragma once

#include "core/chargeFactorBounds_p.h"

#include <LanqorEngine/IntensityFitResults.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QString>
#include <QVector>

#include <array>
#include <memory>
#include <utility>
#include <vector>

class LanqorAbstractParametric;
class LanqorInputData;
class LanqorOmega;

/// What the fits to experimental intensity parameters share.
namespace intensityFit {

/// Response of a trial outside the bounds of its parameters, or of a fit that is not set up.
constexpr double infeasibleResponse = 1.0e20;

/// Where parameter @p index (from 0) of starting vector @p number (from 1) lies in its range, from
/// 0 to 1: 1/2 + (number - 1) sqrt(p) without its whole part, p the prime number of the index.
/// Irrational steps whose ratios are irrational too fill the ranges evenly.
double startingFraction(int number, int index);

/// Papers of the model and of the minimiser, for the report of a fit that was given no others.
QString citations();

/// The bounds of g and alpha by which a fit judges its trials.
struct BoundsTable
{
    void (*update)(const QString &symbol, ChargeFactorBounds &bounds);
    double maximumAlpha; ///< cubic Angstrom
};

/// A fit to measured Omega(2) and Omega(4) but for its parameters: geometry and calculation,
/// targets, bounds, the last trial and the best one, the report.
///
/// Arrays of atoms are indexed by atom number: 1 is the ion, 2 to N+1 are coordinated, entry 0 is
/// not used.
class Problem
{
public:
    Problem(int chargeModel, const BoundsTable &boundsTable);
    ~Problem();

    /// Reads the geometry of a MOPAC output; returns why that failed.
    QString readGeometry(const QString &mopacOutput);
    /// Takes a geometry that was read already, or null; it is not owned. Returns why it cannot
    /// serve.
    QString takeGeometry(LanqorInputData *geometry);
    QString getMopacOutput() const { return mopacOutput; }
    /// Symbol of an atom of the geometry; empty outside it.
    QString getAtomLabel(int atom) const;

    void setCoordNumber(int number);
    int getCoordNumber() const { return coordNumber; }

    /// Why there are no coordinated atoms 2 to N+1 in the geometry; empty when there are.
    QString coordinationError() const;
    /// Finds the bounds of all atoms and makes a first calculation, at g = 1 and alpha = 1 cubic
    /// Angstrom, which shows whether the geometry allows one. Returns why it does not.
    QString prepareTrials();
    /// Keeps the outcome of a look at the setup, which is valid without an @p error.
    void keepSetup(const QString &error);
    bool isSetupChecked() const { return setup != Setup::Unknown; }
    bool isSetupValid() const { return setup == Setup::Valid; }
    /// The setup has to be looked at anew.
    void forgetSetup() { setup = Setup::Unknown; }
    /// True when the trial before had another number of parameters, or there was none.
    bool isNewCount(int n) { return std::exchange(checkedCount, n) != n; }

    /// A trial: set every coordinated atom, alpha in cm^3, before asking on.
    void setTrial(int atom, double chargeFactor, double polarizability)
    {
        g[atom] = chargeFactor;
        alpha[atom] = polarizability;
    }
    bool isTrialWithinBounds() const { return areWithinBounds(g, alpha); }
    /// True when all coordinated atoms have g and alpha (cm^3) within their bounds.
    bool areWithinBounds(const QVector<double> &chargeFactors,
                         const QVector<double> &polarizabilities) const;
    /// Sum of the squared differences of Omega(lambda) from the targets, each by its weight, in
    /// (1e-20 cm^2)^2; the target of Omega(6) is 0.
    double calcMisfit(double weight2, double weight4, double weight6);
    /// The trial becomes the best one.
    void keepBest();

    bool hasBest() const { return !bestG.isEmpty(); }
    double getBestChargeFactor(int atom) const { return bestG.value(atom); }
    double getBestAlpha(int atom) const { return bestAlpha.value(atom); } ///< cm^3
    /// Omega(lambda), cm^2; 0 when lambda is not 2, 4 or 6 and before there is a best trial.
    double getBestOmega(int lambda) const;
    /// Bounds of g of a coordinated atom; those of no element before prepareTrials().
    ChargeFactorBounds boundsOf(int atom) const;
    /// Best g and alpha of an atom, with the bounds that are given for g.
    FittedDonor makeDonor(int atom, const ChargeFactorBounds &ownBounds) const;
    /// The results but for the response and the points, with the weights of the differences.
    void fill(IntensityFitResults &results, double weight2, double weight4, double weight6) const;

    /// A calculation of its own at the best trial, for the report; its messages are those of
    /// @p fit, and a failure of it becomes the last error of the fit before it is told.
    std::unique_ptr<LanqorOmega> makeBestCalculation(LanqorAbstractParametric &fit,
                                                     const QString &requiredCitations);
    /// Hands the best g and alpha to a calculation.
    void setBestValues(LanqorOmega &calculation);

    double omegaExp2 = 0.0; ///< measured, cm^2
    double omegaExp4 = 0.0;
    double refractiveIndex = 1.5;
    QString reportFile;
    OmegaPrintingOptions printingOptions;
    QString report;

private:
    enum class Setup { Unknown, Valid, Wrong };

    /// Of the geometry in force, which is read anew unless it was given.
    std::unique_ptr<LanqorOmega> makeOmega() const;
    QString startOmega();

    int chargeModel;
    BoundsTable boundsTable;
    QString mopacOutput;
    bool isGeometryGiven = false;
    LanqorInputData *givenGeometry = nullptr;
    std::unique_ptr<LanqorOmega> omega;
    int coordNumber = 0;
    Setup setup = Setup::Unknown;
    int checkedCount = -1; // number of parameters of the last trial since the setup was looked at
    std::vector<ChargeFactorBounds> bounds;
    QVector<double> g;
    QVector<double> alpha; // cm^3
    QVector<double> bestG;
    QVector<double> bestAlpha;
    std::array<double, 7> bestOmega{}; // by lambda
};

} // namespace intensityFit
