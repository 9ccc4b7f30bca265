#pragma once

#include <LanqorEngine/EnergyLevelsExp.h>
#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LevelsFitResults.h>
#include <LanqorEngine/MixedState.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorParametricEnergyLevelsPrivate;
class LanqorResultTables;

/// Fits F2, F4, F6 and zeta of a free lanthanide ion, and alpha, beta and gamma if they are wanted,
/// to measured energy levels.
///
/// The response is the sum over the levels of the relative deviation in per cent,
///     100 |E_measured - E_computed| / E_measured,
/// the first level left out: it is the ground level of energy 0. A measured level is compared
/// with the computed state whose label names the same S, L, ordinal and J; "4I11/2" meets
/// "4I5.5". Terms that occur more than once need their ordinal: the emitting level of Eu3+ is
/// 5D(3)0, "5D0" meets nothing. A level that meets no state is warned of once and left out; when
/// none meets a state, or a level after the first has no positive energy, nothing is fitted.
///
/// As LanqorEnergyLevels it needs the tables of the 4f shell in the current directory.
class LANQORENGINE_EXPORT LanqorParametricEnergyLevels : public LanqorAbstractParametric
{
    Q_OBJECT
public:
    /// @param electrons  number of 4f electrons, 1 to 13
    /// @param fileName  measured-levels file, not read here; names the progress file (".output"
    ///     in place of ".exp") and the result file (".result"), both in its folder; a name that
    ///     does not end in ".exp" gets these appended
    LanqorParametricEnergyLevels(QObject *parent, const int &electrons, const QString &fileName);
    ~LanqorParametricEnergyLevels() override;

    /// Reads a measured-levels file: a heading, which is skipped whatever it holds, then one level
    /// a line, its label first and its energy (cm^-1) last, the ground level of energy 0 first of
    /// all; "+-5" between label and energy is the standard deviation. What is no number reads as 0.
    /// @return false when the file cannot be read or has more lines than any ion has levels
    static bool readEnergyLevelsExp(const QString &fileName, QVector<EnergyLevelsExp> &levels);
    /// What is wrong with a file that can be read; empty when nothing is. A first line that reads
    /// as a level is skipped as a heading all the same.
    static QString findFileFault(const QString &fileName);
    /// J from "5/2" or "2.5"; 0 for what is no number.
    static double getJDoubleFromString(const QString &text);

    /// Replaces the number of 4f electrons given to the constructor; reads the tables anew.
    void setElectronsNumber(const int &electrons);
    void setEnergyLevelsExp(const QVector<EnergyLevelsExp> &levels);
    /// alpha, beta and gamma of trials that do not have them, cm^-1; 0 unless set.
    void setTwoBodyParameters(const double &alpha, const double &beta, const double &gamma);

    /// @param x  F2, F4, F6, zeta, cm^-1; 100 to 1000, 10 to 100, 1 to 10, 100 to 5000, the limits
    ///     themselves included; with @p n = 7 followed by alpha, beta, gamma, -100 to 200,
    ///     -3000 to 3000, -5000 to 5000
    /// @return false, and the response as it was, outside these bounds; false when there is
    ///     nothing to fit
    ///
    /// Inside an annealing the minimiser then judges the trial by the response of the evaluation
    /// before; kept, as it decides the way of the fit.
    bool runParametrization(const int &n, double *&x) override;
    /// Computes the levels at the best point and writes them to the result file: parameters,
    /// measured and computed energies with their rms difference, the level report.
    void endOfParametrization() override;

    /// States of the last calculation.
    QVector<MixedState> getMixedStateVector() const;
    /// F2, F4, F6, zeta (and alpha, beta, gamma, unless they are held at 0) of the best point,
    /// cm^-1; empty before there is one.
    QVector<double> getBestParameters() const;
    /// The best point with the levels that endOfParametrization() computed at it; without levels
    /// before.
    LevelsFitResults getResults() const;
    /// The same as data for other programs.
    static LanqorResultTables makeTables(const LevelsFitResults &results);
    /// F2, F4, F6 and zeta with their bounds.
    static QVector<FitParameter> getParameters();
    /// alpha, beta and gamma with their bounds: what a fit of seven parameters has behind them.
    static QVector<FitParameter> getTwoBodyParameters();
    /// Names of the files written.
    QString getProgressFileName() const;
    QString getResultFileName() const;
    /// What endOfParametrization() wrote, and of it parameters and table without the level report.
    QString getReport() const;
    QString getSummary() const;

private:
    std::unique_ptr<LanqorParametricEnergyLevelsPrivate> d;
};
