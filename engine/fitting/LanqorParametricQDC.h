#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/OmegaPrintingOptions.h>
#include <LanqorEngine/ParametersQDC.h>
#include <LanqorEngine/QdcFitResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorIndicesCalculation;
class LanqorInputData;
class LanqorParametricQDCPrivate;
class LanqorResultTables;

/// Fits the parameters Q, D and C of the QDC model to measured Omega(2) and Omega(4).
///
/// Every coordinated atom k has the charge factor and polarisability of its reactivity indices,
///     g = Q q(k),  alpha = (D S(k) + C) 1e-24 cm^3,
/// q being its electron population, which the report calls its atomic charge, and S its
/// superdelocalizability in the inverse unit E of the orbital energies (eV for MOPAC, hartree for
/// Gaussian): Q per electron, D in cubic Angstrom times E, C in cubic Angstrom;
/// and the misfit, in (1e-20 cm^2)^2, also drives Omega(6), which is never measured, to zero:
///     response = (Omega2exp - Omega2)^2 + (Omega4exp - Omega4)^2 + Omega6^2
///
/// A trial is feasible when C and D are not negative and g and alpha of every atom lie in their
/// bounds, the bounds included: g from 0.01 to 1.0 for Cl and F, 2.0 for O and S, 3.0 for N and
/// P (an atom of another element has the bounds of the coordinated atom before it, or those of N
/// when it is the first); alpha from 0.005 to 15 cubic Angstrom. While the restriction is
/// active, D must exceed C times the restriction value. It is lifted for good after 100000
/// trials, or by an improvement of less than 1.0e-5. Other trials score 1.0e20.
///
/// Indices from MOPAC have S < 0 for donors, so a feasible alpha needs C > D |S|: a restriction
/// value above the largest 1/|S|, about 2 to 5, leaves no feasible trial until it is lifted.
class LANQORENGINE_EXPORT LanqorParametricQDC : public LanqorAbstractParametric
{
    Q_OBJECT
public:
    /// Reads the geometry. When it cannot be read, getLastError() tells why and no fit must be
    /// started.
    /// @param value  handed on to LanqorOmega as its charge model
    LanqorParametricQDC(QObject *parent, const QString &mopacOutputFile, const int &value);
    /// The same of a geometry that was read already: no fit opens its file but for the force
    /// constants of the report.
    /// @param geometry  not owned, must outlive the fit; null: no geometry
    LanqorParametricQDC(QObject *parent, LanqorInputData *geometry, const int &value);
    ~LanqorParametricQDC() override;

    /// Lower limit of D/C while the restriction is active; 1 unless set.
    void setRestrictionValue(const int &value);
    /// Calculated indices of all coordinated atoms; not owned, must outlive the fit.
    void setSuperDeslocalizability(LanqorIndicesCalculation *indices);
    /// Groups of atoms for the partition of the radiative rate in the report.
    void setLigandAtomsByLigandVector(const QStringList &ligands);
    /// Measured parameters, cm^2.
    void setOmegaExp(const double &omega2, const double &omega4);
    /// Of the medium, for the radiative rates of the report; 1.5 unless set.
    void setRefractiveIndex(const double &index);
    /// N, the number of coordinated atoms.
    void setCoordNumber(const int &number);
    /// Where the report goes; it is not written without a name.
    void setFileNameOmg(const QString &fileName);
    /// Another MOPAC output than the constructor's.
    void setFileNameMopacOutputFile(const QString &fileName);
    /// Sections of the report.
    void setOmegaPrintingOptions(const OmegaPrintingOptions &options);

    /// True when a fit can start: the geometry can be calculated and the indices cover it.
    /// Otherwise getLastError() tells what is wrong, and every trial scores 1.0e20.
    bool checkSetup();

    /// Evaluates the vector (Q, D, C); always true.
    bool runParametrization(const int &n, double *&x) override;
    /// Writes the report of the best point in QDC mode. The mode needs the force matrix of the
    /// MOPAC output; without it, the report is written all the same, from the g and alpha that
    /// the parameters give, and getLastError() tells what was missing. Without any feasible
    /// trial no report is written, and getLastError() says so.
    void endOfParametrization() override;

    /// The best trial so far.
    QdcFitResults getResults() const;
    /// The same as data for other programs.
    static LanqorResultTables makeTables(const QdcFitResults &results);
    /// The best parameters found; zeros before the first trial.
    ParametersQDC getParametersQDC() const;
    /// True when a feasible trial was found.
    bool hasFeasiblePoint() const;
    /// Omega(lambda), cm^2, of the best trial, lambda = 2, 4, 6; 0 before there is one.
    double getBestOmega(const int &lambda) const;
    /// Vector (Q, D, C) from which to start run @p number (1, 2, ...) of several: Q and D lie at
    /// fractions f of their feasible ranges and C of that which D leaves, with
    /// f = 1/2 + (number - 1) sqrt(p) without its whole part, p = 2, 3, 5. The first run starts in
    /// the middle. Empty, with the reason in getLastError(), without a valid setup.
    QVector<double> makeStartingVector(const int &number);
    /// Q, D and C with the ranges that the bounds of g and alpha leave each of them, whatever the
    /// others are. Empty without a valid setup.
    QVector<FitParameter> getParameters();
    /// The smallest superdelocalizability of the coordinated atoms; 0 without a valid setup.
    double getSmallestIndex();
    /// checkSetup(), once for each setup.
    bool isSetUp();
    /// Weights of the squared differences of Omega(2) and Omega(4), 1 unless set; that of Omega(6)
    /// stays 1.
    void setWeights(const double &weight2, const double &weight4);
    /// g and alpha (cm^3) that a vector gives, by atom number with N+2 entries of which 0 and 1 are
    /// not used. False when one of them is out of its bounds, or without a valid setup, which
    /// leaves both empty.
    bool makeDonors(const QVector<double> &vector, QVector<double> &g,
                    QVector<double> &alpha) const;
    /// Text of the report; empty before endOfParametrization() and on failure.
    QString getReport() const;

private:
    std::unique_ptr<LanqorParametricQDCPrivate> d;
};
