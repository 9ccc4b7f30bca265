#pragma once

#include "Command.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "options/intensityFitOptions.h"
#include "options/showResults.h"

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/IntensityFitResults.h>
#include <LanqorEngine/IntensitySolutions.h>
#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorIntensitySolutions.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QString>
#include <QVector>

#include <functional>
#include <memory>

/// Runs and shows the fits to measured intensity parameters.
namespace cli {

constexpr double omegaUnitCm2 = 1.0e-20;

/// Targets and fitted values.
QString omegaTable(const QVector<FittedOmega> &omega);

/// A sentence when the targets were not reached; empty when they were.
QString missedTargets(const QVector<FittedOmega> &omega);
/// A warning then, with @p advice.
void noteMissedTargets(const QVector<FittedOmega> &omega, const QString &advice);

/// Line on the misfit of the best point and on the points that were tried.
QString responseLine(double response, const QString &unit, qint64 points);

template <class Results> struct IntensityFitOutcome
{
    int status = success; ///< exit status
    Results results;      ///< of the chosen solution, with the points of all starts
    FitAccount account;
    IntensitySolutions solutions;
    int chosen = 0; ///< among the solutions, from 0
    QVector<FitTrace> traces;
    bool isReportWritten = false;
};

/// What the two kinds of these fits differ in. Vectors are sought in the parameters of the fitting
/// object and told in those of the model.
template <class Fit> struct IntensityFitKind
{
    using Convert = std::function<QVector<double>(Fit &, const QVector<double> &)>;

    /// A new object, set up but for the common options.
    std::function<std::unique_ptr<Fit>()> makeFit;
    /// The ranges of the parameters that are sought, from those of the model.
    std::function<QVector<FitParameter>(Fit &, const QVector<FitParameter> &)> toSought;
    Convert vectorToSought;
    Convert vectorToTold;
    int dataCount = 2;
    double weight6 = 0.0; ///< of Omega(6) in the response
};

/// Common options of the account: targets, objective and number of data.
void describeTargets(const IntensityFitOptions &options, int dataCount, FitAccount &account);
/// Samples the equally good solutions; writes them to the file of --solutions.
IntensitySolutions
sampleSolutions(const IntensityFitOptions &options,
                const LanqorIntensitySolutions::MakeDonors &make,
                const QVector<FitParameter> &sought, const QVector<FitParameter> &told,
                const std::function<QVector<double>(const QVector<double> &)> &toTold,
                const QVector<double> &weights, const QVector<QVector<double>> &known);
/// The solution that --choose names, from 0.
int chosenSolution(const OptionReader &reader, const QString &choice,
                   const IntensitySolutions &solutions);
/// Account and solutions.
QString additions(const FitAccount &account, const IntensitySolutions &solutions,
                  const QString &choice, int chosen);
/// Refuses negative weights of pesos.txt.
void checkWeights(double weight2, double weight4);

/// A new object, set up with the common options.
template <class Fit>
std::unique_ptr<Fit> makeIntensityFit(const IntensityFitOptions &options,
                                      const IntensityFitKind<Fit> &kind)
{
    std::unique_ptr<Fit> fit = kind.makeFit();
    fit->setOmegaExp(options.omega2 * omegaUnitCm2, options.omega4 * omegaUnitCm2);
    fit->setRefractiveIndex(options.refractiveIndex);
    fit->setOmegaPrintingOptions(options.sections);
    if (!options.weights.isEmpty())
        fit->setWeights(options.weights.at(0), options.weights.at(1));
    return fit;
}

/// Writes the report of a fit at its best point, and the additions behind it.
template <class Fit, class Results>
void concludeIntensityFit(const IntensityFitOptions &options, Fit &fit,
                          IntensityFitOutcome<Results> &outcome)
{
    showMessages(fit);
    fit.setLastError(QString());
    fit.endOfParametrization();
    const qint64 points = outcome.results.points;
    outcome.results = fit.getResults();
    if (fit.getReport().isEmpty())
        failOf(fit);
    outcome.results.points = points;
    outcome.results.report += QLatin1Char('\n') + additions(outcome.account, outcome.solutions,
                                                            options.choice, outcome.chosen);
    outcome.isReportWritten =
        !options.report.isEmpty() && writeFile(options.report, outcome.results.report.toUtf8());
}

/// Runs a fit from each of its starting vectors and writes the report of the chosen solution.
template <class Fit>
auto runIntensityFit(const OptionReader &reader, IntensityFitOptions &options,
                     const IntensityFitKind<Fit> &kind)
{
    const auto makeFit = [&] { return makeIntensityFit(options, kind); };
    const std::unique_ptr<Fit> model = makeFit();
    const QVector<FitParameter> widest = model->getParameters();
    if (widest.isEmpty())
        failOf(*model);
    const QVector<FitParameter> told = restricted(reader, options.fit, widest);
    const QVector<FitParameter> sought = kind.toSought(*model, told);
    readState(reader, options.fit, told);
    const bool isScaled = options.fit.isPolished || isRestricted(options.fit);

    LanqorFitStarts starts(options.fit.starts, [&](int number) {
        std::unique_ptr<Fit> fit = makeFit();
        QVector<double> vector = options.fit.resumed.value(number - 1);
        if (vector.isEmpty())
            vector = fit->makeStartingVector(number);
        if (isScaled)
            vector = kind.vectorToSought(*fit, placeStart(vector, widest, told));
        return FitStart{std::move(fit), vector, isScaled ? sought : QVector<FitParameter>()};
    });
    const auto toTold = [&](const QVector<double> &vector) {
        return kind.vectorToTold(*model, vector);
    };
    IntensityFitOutcome<decltype(std::declval<Fit>().getResults())> outcome;
    if (runFits(starts, options.fit) == FitEnd::Interrupted)
        outcome.status = interrupted;
    QVector<QVector<double>> known;
    QVector<QVector<double>> vectors;
    for (int number = 1; number <= starts.getCount(); ++number) {
        known.append(starts.getBestVector(number));
        vectors.append(known.last().isEmpty() ? known.last() : toTold(known.last()));
        outcome.traces.append(starts.getTrace(number));
    }
    const qint64 points = starts.getPointNumber() + options.fit.resumedPoints;
    writeState(options.fit, reader.command(), told, vectors, points);

    Fit *fit = qobject_cast<Fit *>(starts.getBest());
    outcome.results = fit->getResults();
    std::unique_ptr<Fit> chosenFit;
    if (outcome.results.hasFeasiblePoint) {
        outcome.account = starts.makeAccount(told, toTold);
        outcome.account.points = points;
        outcome.account.minima.clear(); // the solutions tell more
        describeTargets(options, kind.dataCount, outcome.account);
        const QVector<double> weights = {outcome.results.omega.at(0).weight,
                                         outcome.results.omega.at(1).weight, kind.weight6};
        outcome.solutions = sampleSolutions(
            options,
            [&](const QVector<double> &vector, QVector<double> &g, QVector<double> &alpha) {
                return model->makeDonors(toTold(vector), g, alpha);
            },
            sought, told, toTold, weights, known);
        outcome.chosen = chosenSolution(reader, options.choice, outcome.solutions);
        if (outcome.chosen > 0) {
            chosenFit = makeFit();
            fit = chosenFit.get();
            const QVector<double> values =
                outcome.solutions.sets.at(outcome.chosen).mid(0, told.size());
            LanqorFitAccount::setValues(outcome.account, values);
            QVector<double> vector = kind.vectorToSought(*fit, values);
            double *x = vector.data();
            fit->runParametrization(vector.size(), x);
        }
    }
    outcome.results.points = points;
    concludeIntensityFit(options, *fit, outcome);
    return outcome;
}

/// What a fit shows: the summary, and the report unless it was written.
template <class Results>
QString fitText(const IntensityFitOutcome<Results> &outcome, const QString &summary)
{
    return outcome.isReportWritten ? summary : summary + QLatin1Char('\n') + outcome.results.report;
}

/// The tables of the results with those of the account and of the solutions.
LanqorResultTables withAdditions(LanqorResultTables tables, const FitAccount &account,
                                 const IntensitySolutions &solutions, int chosen);

/// Draws what --plot and --plot-convergence ask for.
void drawSolutions(const IntensityFitOptions &options, const IntensitySolutions &solutions,
                   const QVector<FitTrace> &traces);

/// Shows a finished fit: text with @p parameters between the targets and the response, tables,
/// pictures.
template <class Fit, class Results>
void showIntensityFit(const OptionReader &reader, const IntensityFitOptions &options,
                      const IntensityFitOutcome<Results> &outcome, const QString &parameters)
{
    const Results &results = outcome.results;
    LanqorResultTables tables =
        withAdditions(Fit::makeTables(results), outcome.account, outcome.solutions, outcome.chosen);
    addConvergence(options.fit, outcome.traces, outcome.account.unit, tables);
    showResults(
        reader,
        fitText(outcome, omegaTable(results.omega) + parameters +
                             responseLine(results.response, outcome.account.unit, results.points)),
        tables);
    drawSolutions(options, outcome.solutions, outcome.traces);
}

} // namespace cli
