#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitParameter.h>
#include <LanqorEngine/FitTrace.h>

#include <QString>
#include <QStringList>
#include <QVector>

class LanqorResultTables;

/// Options that all fits share.
namespace cli {

class OptionReader;

struct FitOptions
{
    bool isPolished = true;
    int starts = 1;
    int stepsPerCycle = 0;
    double temperature = 10.0; ///< initial, in units of the response
    QStringList fixed;         ///< "zeta=880"
    QStringList bounds;        ///< "zeta=800:900"
    bool isQuiet = false;
    QString plot;
    QString convergencePlot;
    QString stateFile;   ///< that --save writes
    QString resumedFile; ///< that --continue reads
    /// Of the file of --continue, by start; empty without one.
    QVector<QVector<double>> resumed;
    qint64 resumedPoints = 0;
};

/// @param starts  default of --starts for a fit that is polished
void addFitOptions(OptionReader &reader, int starts);
/// Those of a polished fit for which nothing is asked.
FitOptions usualFitOptions(int starts);
FitOptions readFitOptions(const OptionReader &reader, int starts);

/// The parameters with --bounds and --fix; a UsageError where these name none of them or leave the
/// bounds of the fit.
QVector<FitParameter> restricted(const OptionReader &reader, const FitOptions &options,
                                 QVector<FitParameter> parameters);
/// True when --fix or --bounds are given.
bool isRestricted(const FitOptions &options);
/// A starting vector within the bounds @p own, at the place that it has in the bounds @p widest
/// of the fit, with the fixed values.
QVector<double> placeStart(const QVector<double> &vector, const QVector<FitParameter> &widest,
                           const QVector<FitParameter> &own);

/// Fills in what --continue holds of a fit with these parameters, and as many starts unless others
/// are asked for; a Failure when the file is of another fit.
void readState(const OptionReader &reader, FitOptions &options,
               const QVector<FitParameter> &parameters);
/// Writes the best vector of every start, if --save is given.
void writeState(const FitOptions &options, const QString &command,
                const QVector<FitParameter> &parameters, const QVector<QVector<double>> &vectors,
                qint64 points);

/// Adds what --plot-convergence draws, table "fit_convergence", when it is asked for.
/// @param unit  of the misfit
void addConvergence(const FitOptions &options, const QVector<FitTrace> &traces, const QString &unit,
                    LanqorResultTables &tables);

} // namespace cli
