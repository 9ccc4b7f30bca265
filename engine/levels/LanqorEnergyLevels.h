#pragma once

#include <LanqorEngine/ElectrostaticElement.h>
#include <LanqorEngine/FractParentCoeff.h>
#include <LanqorEngine/FreeIonLevelsResults.h>
#include <LanqorEngine/FreeIonParameters.h>
#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>
#include <LanqorEngine/MixedState.h>
#include <LanqorEngine/ReducedSquares.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorEnergyLevelsPrivate;
class LanqorResultTables;

/// Free-ion energy levels of 4f^n in intermediate coupling.
///
/// For each J the matrix of the electrostatic and the spin-orbit interaction between the
/// Russell-Saunders levels of that J is built from coefficients of fractional parentage and
/// diagonalised (G. Racah, Phys. Rev. 76, 1352 (1949); B. G. Wybourne, Spectroscopic Properties
/// of Rare Earths (1965)).
///
/// It needs the tables of the shell, files f1.cfp to f7.cfp and f1.ele to f7.ele, in the folder
/// "EnergyLevels4f" of the process's current directory when the object is constructed; they are
/// installed with the library. For the two-body configuration interaction there are f1.cas to
/// f7.cas beside them, which a folder may lack as long as alpha, beta and gamma are 0. A shell more
/// than half full uses those of its holes: with the sign of the spin-orbit interaction turned all
/// energies are right for n = 1 to 13.
///
/// Energies are in the unit of the parameters, cm^-1 usually.
class LANQORENGINE_EXPORT LanqorEnergyLevels : public LanqorAbstractObjCalculation
{
    Q_OBJECT
public:
    using SpectroscopicTerm = LanqorSpectroscopicTermUtil::SpectroscopicTerm;

    /// Reads the tables of 4f^n, n = @p electrons from 1 to 13. When that fails the object has no
    /// terms and getLastError() tells the file; nothing is emitted.
    LanqorEnergyLevels(QObject *parent, const int &electrons);
    ~LanqorEnergyLevels() override;

    /// J from |S - L| to S + L.
    static QVector<double> getJVector(const double &S, const int &L);

    /// Slater integrals, cm^-1: the small-denominator F_k (subscript) of E. U. Condon and G. H.
    /// Shortley, F_k = F^k / D_k with D2 = 225, D4 = 1089, D6 = 184041/25. F0 moves all levels
    /// alike.
    void setSlaterIntegral(const double &F0, const double &F2, const double &F4, const double &F6);
    /// Spin-orbit parameter of the 4f electrons, cm^-1.
    void setZetaParameters(const double &zeta);
    /// Two-body configuration interaction (K. Rajnak, B. G. Wybourne, Phys. Rev. 132, 280 (1963)),
    ///     alpha L(L+1) + beta G(G2) + gamma G(R7),
    /// cm^-1, 0 unless set, with the eigenvalues of the Casimir operators of the groups G2 and R7,
    /// nothing subtracted. The same values of a term serve n electrons and n holes.
    void setTwoBodyParameters(const double &alpha, const double &beta, const double &gamma);
    /// All of them, with F0 = 0. The symbol and the source of @p ion go into the results; each
    /// setter above takes the source away again. The number of electrons is that of this object.
    /// One electron or one hole has no electrostatic splitting: its F_k may be 0 here.
    void setParameters(const FreeIonParameters &ion);

    /// Computes the levels of every J (@p Jsel = -1) or of one.
    ///
    /// All: energies count from the lowest level, levels ascend, the components of each descend
    /// in magnitude. One J: energies are not shifted and nothing is sorted; a J that 4f^n does not
    /// have gives no levels.
    ///
    /// False, and the earlier levels stay, when F2, F4, F6 or zeta is 0 (not set), a parameter is
    /// not finite, the tables could not be read (the constructor's message, which tells the file),
    /// alpha, beta or gamma is not 0 and their table could not be read, or matrix elements exceed
    /// 1e8 cm^-1, with which the diagonaliser would not end.
    bool calcEnergyLevels(const double &Jsel);

    /// Levels of the last calculation.
    QVector<MixedState> getMixedStatesVector() const;
    /// The first level whose label names the S, L, ordinal and J of @p level; an empty one when
    /// there is none.
    MixedState getMixedStates(const SpectroscopicTerm &level) const;

    /// Terms of 4f^n in the order of the table.
    QVector<SpectroscopicTerm> getSpectroscopicTermVector() const;
    /// Coefficients of fractional parentage of a term; empty for a term that is not in the table.
    QVector<FractParentCoeff> getFractParentCoeffVector(const SpectroscopicTerm &term) const;
    /// Coefficients of E0, E1, E2, E3 between two terms, in either order; zeros for a pair that is
    /// not in the table.
    QVector<double> getElectrostaticMatrixVector(const SpectroscopicTerm &bra,
                                                 const SpectroscopicTerm &ket) const;
    /// What alpha, beta and gamma multiply in the energy of a term: L(L+1), G(G2), G(R7); empty
    /// when the table could not be read or does not hold the term.
    QVector<double> getTwoBodyVector(const SpectroscopicTerm &term) const;

    /// Squares of U(2), U(4), U(6) and L + g_s S between two levels of the last calculation, by
    /// their numbers from 1; zeros for numbers that it does not have. Lines of one term and J count
    /// with their eigenvectors (B. G. Wybourne, Spectroscopic Properties of Rare Earths (1965),
    /// eqs. 2-91, 2-93), for n > 7 with those of the 14 - n holes. The first call computes all
    /// pairs in one pass.
    ReducedSquares getReducedSquares(const int &from, const int &to) const;
    /// The same of all pairs of levels up to an energy, cm^-1, the lower one first; with a number
    /// @p from those of one level with every other. Pairs without a square above @p threshold are
    /// left out.
    QVector<ReducedSquares> getAllReducedSquares(const double &maximumEnergy, const int &from,
                                                 const double &threshold) const;
    /// Numbers from 1 of the levels that a name such as "4I13/2" or "2H(2)11/2" may mean, the
    /// likeliest first: the one that bears it, those in which its term (without an ordinal all of
    /// this S and L together) is the largest part, those in which it has 10 % or more; each of
    /// these by energy. Empty for a name that fits none.
    QVector<int> findLevels(const QString &name) const;

    /// The last calculation.
    FreeIonLevelsResults getResults() const;
    /// Record "free_ion" and tables "levels" and "composition".
    static LanqorResultTables makeTables(const FreeIonLevelsResults &results);
    /// Table "reduced_squares" with the names and energies of the levels.
    static LanqorResultTables makeTables(const FreeIonLevelsResults &results,
                                         const QVector<ReducedSquares> &squares);
    /// Levels of the last calculation with their composition. Also written to @p fileName unless
    /// it is empty; a file that cannot be written is not reported.
    QString createOutputFile(const QString &fileName) const;

private:
    std::unique_ptr<LanqorEnergyLevelsPrivate> d;
};
