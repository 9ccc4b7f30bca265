#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/LeastSquaresResults.h>

#include <QVector>

class LanqorResultTables;

/// The account of a fit as text and as data.
class LANQORENGINE_EXPORT LanqorFitAccount
{
public:
    /// Objective, misfit, how the fit ended, parameters with bounds and standard errors; of a
    /// least-squares fit also the table of measured and computed values, in which the largest
    /// deviation in units of its standard deviation is marked, the correlations and what the data
    /// leave open.
    static QString makeText(const FitAccount &account);
    /// Record "fit_account" and tables "fit_parameters", "fit_minima" of several minima,
    /// "fit_data", "fit_correlations" and "fit_undetermined", the last three of least-squares fits
    /// alone.
    static LanqorResultTables makeTables(const FitAccount &account);
    /// The start with the smallest misfit, the lowest of equal ones, with the points of all starts
    /// and the minima they found; without a vector when none has one.
    static LeastSquaresResults chooseBest(const QVector<LeastSquaresResults> &starts);
    /// Gives the parameters other values, and tells which of these lie at a bound.
    static void setValues(FitAccount &account, const QVector<double> &values);
    /// Number of data less that of the parameters that the fit determined; negative when there are
    /// fewer data.
    static int getDegreesOfFreedom(const FitAccount &account);
};
