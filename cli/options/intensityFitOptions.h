#pragma once

#include "Command.h"
#include "commands/fitProgress.h"

#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/OmegaPrintingOptions.h>

#include <QString>
#include <QVector>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace cli {

constexpr double omegaUnitCm2 = 1.0e-20;

/// What the fits to measured intensity parameters are asked for.
struct IntensityFitOptions
{
    QString fileName;
    double omega2 = 0.0; ///< 1e-20 cm^2
    double omega4 = 0.0;
    double refractiveIndex = 1.5;
    int coordNumber = 0;
    int stepsPerCycle = 15000;
    int starts = 1;
    QString report; ///< empty: standard output
    OmegaPrintingOptions sections;
};

class OptionReader;

void addIntensityFitOptions(OptionReader &reader);
/// Reads the options and the coordination number of the file.
IntensityFitOptions readIntensityFitOptions(const OptionReader &reader);

/// Targets and fitted values; a note when the targets were not reached, with @p advice.
QString fittedOmegaTable(const IntensityFitOptions &options,
                         const std::function<double(int)> &fitted, const QString &advice);

/// Prints what a fit found: the report too, unless it was written.
void printFit(const IntensityFitOptions &options, int status, const QString &summary,
              const QString &report);

/// Line on the misfit of the best point and on the points that were tried.
QString responseLine(double response, qint64 points);

/// Hands the common options to a fit.
template <class Fit> void setUp(Fit &fit, const IntensityFitOptions &options)
{
    fit.setOmegaExp(options.omega2 * omegaUnitCm2, options.omega4 * omegaUnitCm2);
    fit.setRefractiveIndex(options.refractiveIndex);
    fit.setCoordNumber(options.coordNumber);
    fit.setOmegaPrintingOptions(options.sections);
}

template <class Fit> struct IntensityFitOutcome
{
    int status = success;      ///< exit status
    std::unique_ptr<Fit> best; ///< holds the best point; null when there is none
    qint64 points = 0;         ///< tried from all starting vectors
};

/// Runs a fit from each of its starting vectors and writes the report of the best point; when the
/// file cannot be written, the status tells and the report is with the fit.
/// @param makeFit  a new object, set up
template <class Fit>
IntensityFitOutcome<Fit> runIntensityFit(const IntensityFitOptions &options,
                                         const std::function<std::unique_ptr<Fit>()> &makeFit)
{
    IntensityFitOutcome<Fit> outcome;
    std::vector<std::unique_ptr<Fit>> fits;
    std::vector<QVector<double>> points;
    for (int number = 1; number <= options.starts; ++number) {
        fits.push_back(makeFit());
        points.push_back(fits.back()->makeStartingVector(number));
        if (points.back().isEmpty())
            failOf(*fits.back());
    }
    std::vector<std::unique_ptr<LanqorGSA>> annealings;
    std::vector<LanqorGSA *> runs;
    for (std::size_t i = 0; i < fits.size(); ++i) {
        LanqorAbstractParametric *target = fits[i].get();
        double *x = points[i].data();
        annealings.push_back(std::make_unique<LanqorGSA>(nullptr, points[i].size(), x, target));
        annealings.back()->setNStopMax(options.stepsPerCycle);
        runs.push_back(annealings.back().get());
    }
    const FitEnd end = runFits(runs);
    for (const auto &fit : fits)
        outcome.points += fit->getPointNumber();
    auto found = std::min_element(fits.begin(), fits.end(), [](const auto &a, const auto &b) {
        return a->getBestResponse() < b->getBestResponse();
    });
    Fit &fit = **found;
    showMessages(fit);
    fit.setLastError(QString());
    fit.setFileNameOmg(options.report);
    fit.endOfParametrization();
    outcome.status = end == FitEnd::Interrupted ? interrupted : success;
    if (fit.getReport().isEmpty()) {
        complain(fit.getLastError());
        outcome.status = failure;
        // A report that cannot be written goes to standard output: the fit was work.
        fit.setFileNameOmg(QString());
        fit.endOfParametrization();
    }
    if (!fit.getReport().isEmpty())
        outcome.best = std::move(*found);
    return outcome;
}

} // namespace cli
