#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/OmegaFitResults.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorParametricPrivate;
class LanqorResultTables;

/// Fits charge factors g and polarisabilities alpha of groups of coordinated atoms to measured
/// Omega(2) and Omega(4).
///
///     response = w2 (Omega2exp - Omega2)^2 + w4 (Omega4exp - Omega4)^2,  in (1e-20 cm^2)^2
/// A vector holds the g of the groups in ascending order of their keys, then their alpha in
/// cubic Angstrom. Atoms are numbered as in the geometry: 1 is the ion, 2 to N+1 are coordinated.
///
/// A trial is feasible when every g and alpha lies in its bounds, the bounds included: g from
/// 0.01 to 2.0 for O and S, 0.001 to 1.0 for F, Cl, Br and I, 0.01 to 3.0 for N and P; alpha from
/// 0.005 to 6.5 cubic Angstrom. An atom of another element has the bounds of the coordinated
/// atom before it, or those of N when it is the first. Other trials score 1.0e20.
///
/// Two targets are far fewer than the parameters: several minima reach them, and the annealing
/// gives one. Where the geometry allows no g and alpha that reach them, the report is of the
/// nearest.
class LANQORENGINE_EXPORT LanqorParametric : public LanqorAbstractParametric
{
    Q_OBJECT
public:
    /// Reads the geometry; a failure is told by getLastError(). The weights are 1, or those of
    /// the file "pesos.txt" in the current directory: w2 on its first line, w4 on the second.
    /// @param value  handed on to LanqorOmega as its charge model
    LanqorParametric(QObject *parent, const QString &mopacOutputFile, const int &value);
    /// The same of a geometry that was read already: no fit opens its file.
    /// @param geometry  not owned, must outlive the fit; null: no geometry
    LanqorParametric(QObject *parent, LanqorInputData *geometry, const int &value);
    ~LanqorParametric() override;

    /// Groups by number; each text names an atom by symbol and number ("O 2").
    void setGroupsAndAtoms(const QMap<int, QStringList> &groups);
    /// One group for each element of the coordinated atoms, in the order of its first atom and
    /// numbered from 1; needs the coordination number.
    QMap<int, QStringList> makeElementGroups() const;
    /// Measured parameters, cm^2.
    void setOmegaExp(const double &omega2, const double &omega4);
    /// Of the medium, for the radiative rates of the report; 1.5 unless set.
    void setRefractiveIndex(const double &index);
    /// Where the report goes; it is not written without a name.
    void setFileNameOmg(const QString &fileName);
    /// Another MOPAC output than the constructor's.
    void setFileNameMopacOutputFile(const QString &fileName);
    /// N, the number of coordinated atoms.
    void setCoordNumber(const int &number);
    /// Sections of the report.
    void setOmegaPrintingOptions(const OmegaPrintingOptions &options);

    /// True when a fit can start: the geometry can be calculated and every coordinated atom is
    /// in one group under its own symbol. Otherwise getLastError() tells what is wrong, and
    /// every trial scores 1.0e20.
    bool checkSetup();

    /// Evaluates a vector of two parameters a group; always true.
    bool runParametrization(const int &n, double *&x) override;
    /// Writes the report of the best point, with Omega computed from it anew. Without any
    /// feasible trial no report is written, and getLastError() says so.
    void endOfParametrization() override;

    /// The best trial so far.
    OmegaFitResults getResults() const;
    /// The same as data for other programs.
    static LanqorResultTables makeTables(const OmegaFitResults &results);

    /// g and alpha (cm^3) of the best trial, by atom number; 0 before there is one.
    double getBestChargeFactor(const int &atom) const;
    double getBestAlpha(const int &atom) const;
    /// Weight of Omega(lambda), lambda = 2 or 4.
    double getWeight(const int &lambda) const;
    /// Omega(lambda), cm^2, of the best trial, lambda = 2, 4, 6; 0 before there is one.
    double getBestOmega(const int &lambda) const;
    /// Vector from which to start run @p number (1, 2, ...) of several: the parameter j lies at the
    /// fraction f of its range, f = 1/2 + (number - 1) sqrt(p) without its whole part, p being the
    /// prime number j (2, 3, 5, ...). The first run starts in the middle. Empty, with the reason
    /// in getLastError(), without a valid setup.
    QVector<double> makeStartingVector(const int &number);
    /// What a vector holds, in its order, with the bounds that all atoms of a group share: "g:O"
    /// and "alpha:O" when the group is all the atoms of an element, else by its key, "g:1". Empty
    /// without a valid setup.
    QVector<FitParameter> getParameters();
    /// Weights of the squared differences of Omega(2) and Omega(4), in place of those of
    /// "pesos.txt".
    void setWeights(const double &weight2, const double &weight4);
    /// g and alpha (cm^3) that a vector gives, by atom number with N+2 entries of which 0 and 1 are
    /// not used. False when one of them is out of its bounds, or without a valid setup, which
    /// leaves both empty.
    bool makeDonors(const QVector<double> &vector, QVector<double> &g,
                    QVector<double> &alpha) const;
    /// Text of the report; empty before endOfParametrization() and on failure.
    QString getReport() const;

private:
    std::unique_ptr<LanqorParametricPrivate> d;
};
