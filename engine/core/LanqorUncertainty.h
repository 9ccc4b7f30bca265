#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/ResultTable.h>
#include <LanqorEngine/UncertainInput.h>
#include <LanqorEngine/UncertaintyResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class LanqorResultTables;
class LanqorUncertaintyPrivate;

/// Error bars of any results by sampling their uncertain inputs.
///
/// The samples are the points of a Sobol sequence (direction numbers of S. Joe and F. Y. Kuo, SIAM
/// J. Sci. Comput. 30, 2635 (2008)), their nested digits scrambled (A. B. Owen, in Monte Carlo
/// and Quasi-Monte Carlo Methods, Springer 1995, 299) with a fixed seed: the same inputs give the
/// same results. With d inputs a point has 2d coordinates, those of a sample A and those of a
/// sample B; both together give medians and intervals. The samples AB(i), which are A with input i
/// from B, give the shares of input i in the variance V, alone and with all its interactions:
///     first order  S(i) = 1 - mean((f(B) - f(AB(i)))^2) / 2V
///     total        T(i) = mean((f(A) - f(AB(i)))^2) / 2V,  2V = mean((f(A) - f(B))^2)
/// (M. J. W. Jansen, Comput. Phys. Commun. 117, 35 (1999); A. Saltelli et al., ibid. 181, 259
/// (2010), whose other estimator of S is the less certain one for rates over many decades). With V
/// from the same pairs, chance correlations of A with B cancel, of which else each of many inputs
/// would get a part: an input without effect has exactly 0, one that decides alone exactly 1.
class LANQORENGINE_EXPORT LanqorUncertainty
{
public:
    /// Results by the values of the inputs, in the order in which they were added; an ensemble
    /// gives one value for each of its columns. Called for one set after another, in one thread.
    using Model = std::function<QVector<double>(const QVector<double> &values)>;

    static int defaultSamples(); ///< 4096
    static int mostSamples();    ///< 65536

    LanqorUncertainty();
    ~LanqorUncertainty();
    LanqorUncertainty(const LanqorUncertainty &) = delete;
    LanqorUncertainty &operator=(const LanqorUncertainty &) = delete;

    /// Reads "value+-sd" (also with the sign of two strokes, and with sd in per cent of the value,
    /// "0.45+-5%") or "low:high" into @p input, whose kind, unless it is a range, name, unit and
    /// limits stay. False, with @p input as it was, for any other text.
    static bool readText(const QString &text, UncertainInput &input);

    /// @return false for a negative standard deviation, limits in the wrong order, or a value that
    ///         is not possible; what is added is then as before
    bool addInput(const UncertainInput &input);
    /// Adds equally likely sets of values that belong together, such as the solutions of a fit.
    /// @return false without rows, or when their lengths differ
    bool addEnsemble(const QString &name, const QVector<QVector<double>> &rows);
    /// Points of A and of B: rounded up to a power of two, which balances the sequence; from 64 to
    /// mostSamples().
    void setSamples(const int &count);
    QString getLastError() const;
    bool isEmpty() const;

    /// Computes samples * (inputs + 2) sets.
    /// @param quantities  key and unit of each result of the model
    /// @param values  the results with every input at its value
    UncertaintyResults calculate(const QVector<ResultColumn> &quantities,
                                 const QVector<double> &values, const Model &model) const;

    /// Record "uncertainty", tables "uncertain_inputs", "uncertain_results" and "sensitivities".
    static LanqorResultTables makeTables(const UncertaintyResults &results);
    /// The same to be read.
    static QString makeText(const UncertaintyResults &results);

private:
    std::unique_ptr<LanqorUncertaintyPrivate> d;
};
