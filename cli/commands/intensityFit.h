#pragma once

#include "Command.h"
#include "commands/fitProgress.h"
#include "options/intensityFitOptions.h"

#include <LanqorEngine/IntensityFitResults.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>

#include <QString>
#include <QVector>

#include <functional>
#include <memory>
#include <optional>

/// Runs and shows the fits to measured intensity parameters.
namespace cli {

constexpr double omegaUnitCm2 = 1.0e-20;

/// Targets and fitted values.
QString omegaTable(const QVector<FittedOmega> &omega);

/// A note when the targets were not reached, with @p advice.
void noteMissedTargets(const QVector<FittedOmega> &omega, const QString &advice);

/// Line on the misfit of the best point and on the points that were tried.
QString responseLine(double response, qint64 points);

template <class Results> struct IntensityFitOutcome
{
    int status = success; ///< exit status
    Results results;      ///< of the best start, with the points of all
    bool isReportWritten = false;
};

/// Runs a fit from each of its starting vectors and writes the report of the best point.
/// @param makeFit  a new object, set up but for the common options
template <class Fit>
auto runIntensityFit(const IntensityFitOptions &options,
                     const std::function<std::unique_ptr<Fit>()> &makeFit)
{
    LanqorFitStarts starts(options.starts, [&](int number) {
        std::unique_ptr<Fit> fit = makeFit();
        fit->setOmegaExp(options.omega2 * omegaUnitCm2, options.omega4 * omegaUnitCm2);
        fit->setRefractiveIndex(options.refractiveIndex);
        fit->setOmegaPrintingOptions(options.sections);
        const QVector<double> vector = fit->makeStartingVector(number);
        return FitStart{std::move(fit), vector};
    });
    for (int number = 1; number <= starts.getCount(); ++number)
        starts.getAnnealing(number)->setNStopMax(options.stepsPerCycle);

    IntensityFitOutcome<decltype(std::declval<Fit>().getResults())> outcome;
    if (runFits(starts) == FitEnd::Interrupted)
        outcome.status = interrupted;
    Fit &fit = *qobject_cast<Fit *>(starts.getBest());
    showMessages(fit);
    fit.setLastError(QString());
    fit.endOfParametrization();
    outcome.results = fit.getResults();
    if (fit.getReport().isEmpty())
        failOf(fit);
    outcome.results.points = starts.getPointNumber();
    outcome.isReportWritten =
        !options.report.isEmpty() && writeFile(options.report, outcome.results.report.toUtf8());
    return outcome;
}

/// What a fit shows: the summary, and the report unless it was written.
template <class Results>
QString fitText(const IntensityFitOutcome<Results> &outcome, const QString &summary)
{
    return outcome.isReportWritten ? summary : summary + QLatin1Char('\n') + outcome.results.report;
}

} // namespace cli
