#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/LeastSquaresResults.h>
#include <LanqorEngine/ParametersGroup.h>
#include <LanqorEngine/StarkResults.h>
#include <LanqorEngine/TransitionValues.h>

#include <QString>
#include <QVector>

#include <memory>

class LanqorInputData;
class LanqorStarkLeastSquaresPrivate;

/// Least-squares fit of charge factors of groups of coordinated atoms to the measured lowest and
/// highest Stark levels of 7FJ manifolds of Eu3+:
///     chi^2 = sum over the levels of ((E_computed - (E_measured - offset))/sd)^2
/// The lowest and the highest level are so by definition, so that no label can jump. A level
/// without a standard deviation counts with 1 cm^-1.
class LANQORENGINE_EXPORT LanqorStarkLeastSquares
{
public:
    /// @param geometry  not kept
    /// @param value  coordination number N; 0: counted by the bonding distances
    /// @param ro0  overlap of the nearest atom
    LanqorStarkLeastSquares(LanqorInputData *geometry, const int &value, const double &ro0);
    ~LanqorStarkLeastSquares();
    LanqorStarkLeastSquares(const LanqorStarkLeastSquares &) = delete;
    LanqorStarkLeastSquares &operator=(const LanqorStarkLeastSquares &) = delete;

    /// See LanqorStarkLevels; magnitudes unless set before setProblem().
    void setReducedElements(const ReducedElements &choice);
    /// Takes what is fitted; groups, parameters and transitions as LanqorParametricStarkLevels has
    /// checked them, a parameter for each group. False with the reason in getLastError() when the
    /// crystal field of a group cannot be calculated.
    bool setProblem(const QVector<ParametersGroup> &groups, const QVector<FitParameter> &parameters,
                    const QVector<TransitionValues> &transitions);
    QString getLastError() const;

    /// Fits from a start, one charge factor for each group. May be called from several threads at
    /// once; LanqorGSA::isStopParametrization ends it with the best point so far.
    LeastSquaresResults fit(const QVector<double> &start) const;

    /// The account at a point that another objective chose, but for points, starts and end.
    FitAccount describe(const QVector<double> &vector) const;

private:
    std::unique_ptr<LanqorStarkLeastSquaresPrivate> d;
};
