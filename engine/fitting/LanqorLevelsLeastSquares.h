#pragma once

#include <LanqorEngine/EnergyLevelsExp.h>
#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/LeastSquaresResults.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorLevelsLeastSquaresPrivate;

/// Least-squares fit of F2, F4, F6 and zeta of a free lanthanide ion, and of alpha, beta and gamma
/// if they are wanted, to measured levels:
///     chi^2 = sum over the levels of ((E_computed - E_measured)/sd)^2
/// both energies from the lowest level of the ion. The first measured level is the ground level
/// and not fitted; a level without a standard deviation counts with 1 cm^-1.
///
/// States of one J repel each other and keep their order whatever the parameters are, labels jump
/// where two of them come close. So a measured level is not sought by its label but is the r-th
/// state of its J. The labels give the r to begin with, at the published parameters of the ion and
/// at the start; where two labels of one J are the other way round than their measured energies,
/// they change places. At the minimum the levels of each J are dealt to its states anew: in the
/// order of energy, states left out where the measured list has gaps, with the smallest chi^2.
/// That is repeated until it lowers chi^2 no more.
///
/// The derivatives are exact, so that a minimum takes some ten evaluations.
class LANQORENGINE_EXPORT LanqorLevelsLeastSquares
{
public:
    /// Reads the tables of 4f^n, n = @p electrons, from the current directory as
    /// LanqorEnergyLevels.
    explicit LanqorLevelsLeastSquares(const int &electrons);
    ~LanqorLevelsLeastSquares();
    LanqorLevelsLeastSquares(const LanqorLevelsLeastSquares &) = delete;
    LanqorLevelsLeastSquares &operator=(const LanqorLevelsLeastSquares &) = delete;

    /// Takes the measured levels. False with the reason in getLastError() when there is nothing
    /// to fit: tables are missing, a level but the first has no positive energy, or no label is one
    /// of the ion.
    bool setEnergyLevelsExp(const QVector<EnergyLevelsExp> &levels);
    /// Bounds and fixed values of F2, F4, F6 and zeta, and of alpha, beta and gamma behind them
    /// (else 0); the first four of LanqorParametricEnergyLevels unless set. A folder that lacks the
    /// table of alpha, beta and gamma leaves its name in getLastError(), and nothing is fitted.
    void setParameters(const QVector<FitParameter> &parameters);
    QString getLastError() const;
    /// Labels of measured levels that the ion does not have; these are not fitted.
    QStringList getUnknownLabels() const;

    /// Fits from a start (the parameters in this order, cm^-1). May be called from several threads
    /// at once. LanqorGSA::isStopParametrization ends it with the best point so far.
    LeastSquaresResults fit(const QVector<double> &start) const;

    /// The account at a point that another objective chose, but for points, starts and end.
    FitAccount describe(const QVector<double> &vector) const;

private:
    std::unique_ptr<LanqorLevelsLeastSquaresPrivate> d;
};
