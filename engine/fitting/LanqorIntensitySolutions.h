#pragma once

#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/IntensitySolutions.h>
#include <LanqorEngine/LanqorEngineExport.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class LanqorInputData;
class LanqorIntensitySolutionsPrivate;
class LanqorResultTables;
struct YieldInputs;

/// The set of equally good solutions of a fit to measured Omega(2) and Omega(4), which leave most
/// of several g and alpha open: a sample of it, and the ranges of the parameters and of what
/// follows from them.
///
/// The amplitudes of the simple overlap model are linear in g and alpha, so that every Omega is a
/// quadratic form in the parameters of a fit. Its matrix is found from a few calculations; walks
/// then start from the solutions known so far, go along random directions in which no Omega that
/// is fitted changes to first order, as far as the bounds allow, and return to the targets by
/// Newton's method. Each quantity is then followed to its smallest and its largest value, along
/// its derivatives, for a random sample ends before them. The random numbers are always the same,
/// and so is the sample.
class LANQORENGINE_EXPORT LanqorIntensitySolutions
{
public:
    /// g and alpha (cm^3), by atom number with N+2 entries, that a vector of the fit gives, linear
    /// in it; false when they are out of their bounds. See LanqorParametric::makeDonors() and
    /// LanqorParametricQDC::makeDonors().
    using MakeDonors = std::function<bool(const QVector<double> &vector, QVector<double> &g,
                                          QVector<double> &alpha)>;

    /// @param geometry  read already, not owned, must outlive this object
    /// @param coordNumber  N
    LanqorIntensitySolutions(LanqorInputData *geometry, const int &coordNumber,
                             const QVector<FitParameter> &parameters, const MakeDonors &makeDonors);
    ~LanqorIntensitySolutions();
    LanqorIntensitySolutions(const LanqorIntensitySolutions &) = delete;
    LanqorIntensitySolutions &operator=(const LanqorIntensitySolutions &) = delete;

    /// The parameters that are told of a solution, where they are others than those sought, and
    /// how to have them from a vector.
    void setReported(const QVector<FitParameter> &parameters,
                     const std::function<QVector<double>(const QVector<double> &)> &toReported);
    /// Targets, cm^2, and weights of the squared differences in units of 1e-20 cm^2; that of
    /// Omega(6), whose target is 0, may be 0 and then does not count.
    void setTargets(const double &omega2, const double &omega4, const double &weight2,
                    const double &weight4, const double &weight6);
    /// Largest excess of the response of a solution over the best one; 5e-5 unless set, which is
    /// half a digit of Omega as it is printed.
    void setTolerance(const double &excess);
    /// Of the medium; 1.5 unless set.
    void setRefractiveIndex(const double &index);
    /// Groups of atoms for the partition, see LanqorAradPartition::setLigandsVector().
    void setLigandAtomsByLigandVector(const QStringList &ligands);

    /// The other inputs of a quantum yield, of which those that follow from a solution, Omega and
    /// the refractive index, are replaced: with them transfer rates, efficiency and yield are told
    /// too. Their fault is in the error of the solutions.
    void setYieldInputs(const YieldInputs &inputs);

    /// Samples @p count solutions, the ones among the vectors @p known included, fewer only when
    /// the bounds leave no way; behind these stand the ones at the ends of the ranges.
    IntensitySolutions sample(const QVector<QVector<double>> &known, const int &count) const;

    /// Record "solution", which names the @p chosen one (from 0), and table "solution_ranges".
    static LanqorResultTables makeTables(const IntensitySolutions &solutions, const int &chosen);
    /// Table "solutions" of all of them.
    static LanqorResultTables makeSolutionTable(const IntensitySolutions &solutions);
    /// Reads the values of @p quantities, one row for each solution, from the CSV of
    /// makeSolutionTable().
    /// @return false, with a sentence in @p error, when the file lacks one of them or a number
    static bool readSolutions(const QString &fileName, const QStringList &quantities,
                              QVector<QVector<double>> &rows, QString &error);
    /// The ranges, and a line on what is determined.
    static QString makeText(const IntensitySolutions &solutions);

private:
    std::unique_ptr<LanqorIntensitySolutionsPrivate> d;
};
