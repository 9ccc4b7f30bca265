#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/LeastSquaresResults.h>

#include <QString>
#include <QVector>

#include <functional>

/// What the fits to measured levels and Stark levels share.
namespace cli {

struct FitOptions;
class OptionReader;

enum class Objective { LeastSquares, Response };

/// The option --objective.
void addObjectiveOption(OptionReader &reader);
Objective readObjective(const OptionReader &reader);

/// A least-squares fit from several starts.
struct LeastSquaresOutcome
{
    bool isInterrupted = false;
    LeastSquaresResults best;
    QVector<QVector<double>> vectors; ///< where the starts ended
    QVector<FitTrace> traces;
};

/// Fits from all starts in threads; a Failure when none can be fitted.
LeastSquaresOutcome
runLeastSquares(const QVector<QVector<double>> &starts,
                const std::function<LeastSquaresResults(const QVector<double> &)> &fit);

/// Gives the account of an annealing the data, what they leave open, the misfit of least squares
/// and the name of the response that was minimised.
void addData(const FitAccount &data, const QString &response, FitAccount &account);

/// Draws what --plot and --plot-convergence ask for.
void drawFit(const FitOptions &options, const QString &title, const QString &misfit,
             const FitAccount &account, const QVector<FitTrace> &traces);

} // namespace cli
