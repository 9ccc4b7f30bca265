#include "commands/leastSquaresFit.h"

#include "Command.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "options/fitOptions.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorFitAccount.h>

namespace cli {

void addObjectiveOption(OptionReader &reader)
{
    reader.addOption({QStringLiteral("objective"),
                      tr("What is minimised: least-squares, the sum of ((computed - "
                         "measured)/sd)^2, by Levenberg and Marquardt's method, with standard "
                         "errors; or response, the sum of absolute deviations, by annealing."),
                      tr("which"), QStringLiteral("least-squares")});
}

Objective readObjective(const OptionReader &reader)
{
    const QString objective = reader.text("objective");
    if (objective == QLatin1String("response"))
        return Objective::Response;
    if (objective != QLatin1String("least-squares"))
        reader.refuse(tr("--objective %1: least-squares or response").arg(objective));
    for (const char *option : {"points", "temperature", "no-polish"})
        if (reader.isSet(option))
            warn(tr("--%1 is of the annealing and has no part in least squares; for the annealing "
                    "there is --objective response")
                     .arg(QLatin1String(option)));
    return Objective::LeastSquares;
}

LeastSquaresOutcome
runLeastSquares(const QVector<QVector<double>> &starts,
                const std::function<LeastSquaresResults(const QVector<double> &)> &fit)
{
    LeastSquaresOutcome outcome;
    std::vector<LeastSquaresResults> results(std::size_t(starts.size()));
    const FitEnd end = runInThreads(starts.size(), [&](int number) {
        results[std::size_t(number - 1)] = fit(starts.at(number - 1));
    });
    QVector<LeastSquaresResults> all;
    for (int number = 1; number <= starts.size(); ++number) {
        LeastSquaresResults &each = results[std::size_t(number - 1)];
        each.trace.start = number;
        outcome.vectors.append(each.vector);
        outcome.traces.append(each.trace);
        all.append(each);
    }
    outcome.best = LanqorFitAccount::chooseBest(all);
    outcome.isInterrupted = end == FitEnd::Interrupted;
    if (outcome.best.vector.isEmpty())
        throw Failure{tr("the fit ended before its first point")};
    return outcome;
}

void addData(const FitAccount &data, const QString &response, FitAccount &account)
{
    account.objective = response;
    account.otherMisfit =
        tr("least squares, sum of ((computed - measured)/sd)^2, %1").arg(data.misfit, 0, 'g', 6);
    account.data = data.data;
    account.dataUnit = data.dataUnit;
    account.dataCount = data.dataCount;
    account.undetermined = data.undetermined;
    for (int i = 0; i < account.parameters.size(); ++i)
        account.parameters[i].isUndetermined = data.parameters.at(i).isUndetermined;
}

void drawFit(const FitOptions &options, const QString &title, const QString &misfit,
             const FitAccount &account, const QVector<FitTrace> &traces)
{
    if (!options.plot.isEmpty())
        plots::draw(plots::comparison(title, account), options.plot);
    if (!options.convergencePlot.isEmpty())
        plots::draw(plots::convergence(title, misfit, traces), options.convergencePlot);
}

} // namespace cli
