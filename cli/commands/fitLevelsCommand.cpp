#include "Command.h"
#include "commands/commands.h"
#include "commands/fitProgress.h"
#include "commands/leastSquaresFit.h"
#include "options/OptionReader.h"
#include "options/fitOptions.h"
#include "options/freeIonOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorLevelsLeastSquares.h>
#include <LanqorEngine/LanqorOutputFile.h>
#include <LanqorEngine/LanqorParametricEnergyLevels.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace {

using cli::tr;

constexpr int leastSquaresStarts = 20;
constexpr int annealedStarts = 4; // a point of 4f^6 takes some ms

struct Request
{
    FreeIonParameters ion;
    QString fileName; ///< absolute
    cli::Objective objective = cli::Objective::LeastSquares;
    cli::FitOptions fit;
    /// With alpha, beta and gamma unless they are held at 0, or throughout a mere annealing.
    QVector<FitParameter> parameters;
    QVector<FitParameter> allParameters; ///< with them unless they are held at 0
    QVector<EnergyLevelsExp> measured;
};

/// What either objective gives.
struct Outcome
{
    std::unique_ptr<LanqorFitStarts> starts;             ///< owns the fit, where there are any
    std::unique_ptr<LanqorParametricEnergyLevels> owned; ///< else this does
    LanqorParametricEnergyLevels *fit = nullptr;         ///< after its end
    FitAccount account;
    QVector<QVector<double>> vectors; ///< by start
    QVector<FitTrace> traces;
    bool isInterrupted = false;
};

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Fits the Slater integrals F_2, F_4, F_6 and the spin-orbit parameter zeta of a free\n"
        "lanthanide(III) ion to measured energy levels, and alpha, beta and gamma of the two-body\n"
        "configuration interaction if --free or --bounds name them; else they are held at what "
        "is\n"
        "given or published for the ion.\n\n"
        "FILE has a heading line, then one level a line: its label first and its energy in cm^-1\n"
        "last, between them its standard deviation if that is known (1 unless told). The first\n"
        "level is the ground level, of energy 0, which is not fitted:\n"
        "    label        energy\n"
        "    4I9/2             0\n"
        "    4I11/2  +-5    2007\n"
        "    2H(2)9/2 +-8  12738\n"
        "A term that occurs more than once needs its number in parentheses; \"lanqor levels\" "
        "shows\n"
        "the labels. Least squares take a measured level for the state of its J that comes at the\n"
        "same place in the order of energy, whatever label that has where labels cross; levels "
        "that\n"
        "were not measured leave gaps. The response is the sum of 100 |measured - computed| /\n"
        "measured over the labels.\n\n"
        "The start is the parameters given or the published ones of the ion, further starts lie\n"
        "within 20 % of it; bounds: F_2 100 to 1000, F_4 10 to 100, F_6 1 to 10, zeta 100 to\n"
        "5000, alpha -100 to 200, beta -3000 to 3000, gamma -5000 to 5000 cm^-1. Beside FILE, with "
        "\".exp\" replaced, the progress goes to a file "
        "\".output\"\n"
        "(appended) and the result with all levels to \".result\". --plot draws computed against\n"
        "measured energies. Ctrl-C ends the fit and reports its best point (exit status 130).\n\n"
        "Examples:\n"
        "  lanqor fit levels nd.exp --ion Nd\n"
        "  lanqor fit levels nd.exp --ion Nd --free alpha,beta --fix gamma=1321.3\n"
        "  lanqor fit levels nd.exp --ion Nd --alpha 0 --beta 0 --gamma 0"));
    options.addArgument(QStringLiteral("FILE"), tr("measured levels, usually NAME.exp"));
    cli::addFreeIonOptions(options);
    cli::addObjectiveOption(options);
    options.addOption({QStringLiteral("free"),
                       tr("Fit these of alpha, beta and gamma too, separated by commas."),
                       tr("list")});
    cli::addFitOptions(options, leastSquaresStarts);
    options.addResultOptions();
}

/// F2, F4, F6, zeta, alpha, beta, gamma.
QVector<double> valuesOf(const FreeIonParameters &ion)
{
    return {ion.F2, ion.F4, ion.F6, ion.zeta, ion.alpha, ion.beta, ion.gamma};
}

/// Integrals within their bounds, which the two levels of one electron or hole do not feel.
void setPlaceholders(FreeIonParameters &ion)
{
    ion.F2 = 300.0;
    ion.F4 = 50.0;
    ion.F6 = 5.0;
    cli::note(cli::tr("F2, F4 and F6 have no effect on the two levels of %1 and stand at 300, 50 "
                      "and 5 cm^-1; zeta alone is fitted")
                  .arg(cli::nameOf(ion)));
}

/// The parameters with what the command line restricts; alpha, beta and gamma are held unless it
/// sets them free.
QVector<FitParameter> readParameters(const cli::OptionReader &options, const Request &request)
{
    const QVector<double> given = valuesOf(request.ion);
    const QVector<FitParameter> physical = LanqorParametricEnergyLevels::getParameters() +
                                           LanqorParametricEnergyLevels::getTwoBodyParameters();
    for (int i = 0; i < physical.size(); ++i)
        if (!(given.at(i) >= physical.at(i).minimum && given.at(i) <= physical.at(i).maximum))
            throw cli::Failure{tr("%1 = %2 cm^-1 is outside its bounds, %3 to %4 cm^-1.")
                                   .arg(physical.at(i).name, QString::number(given[i]),
                                        QString::number(physical.at(i).minimum),
                                        QString::number(physical.at(i).maximum))};
    QVector<FitParameter> parameters = cli::restricted(options, request.fit, physical);
    QStringList free = options.list("free");
    const int basic = LanqorParametricEnergyLevels::getParameters().size();
    bool hasTwoBodies = false;
    for (int i = 0; i < parameters.size(); ++i) {
        FitParameter &own = parameters[i];
        const bool isNamed = free.removeAll(own.name) > 0;
        if (isNamed && own.isFixed)
            options.refuse(tr("--free and --fix both name %1").arg(own.name));
        const bool isBounded =
            own.minimum != physical.at(i).minimum || own.maximum != physical.at(i).maximum;
        const bool isHeld = i >= basic
                                ? !isNamed && !isBounded
                                : i + 1 < basic && !cli::hasElectrostaticSplitting(request.ion);
        if (!own.isFixed && isHeld) {
            own.isFixed = true;
            own.fixedValue = given.at(i);
        }
        hasTwoBodies = hasTwoBodies || (i >= basic && (!own.isFixed || own.fixedValue != 0.0));
    }
    if (!free.isEmpty())
        options.refuse(tr("--free: \"%1\" is no parameter of this fit; alpha, beta and gamma are "
                          "held unless it names them")
                           .arg(free.first()));
    if (!hasTwoBodies)
        parameters.resize(basic);
    return parameters;
}

Request readRequest(const cli::OptionReader &options)
{
    Request request;
    const QString fileName =
        options.files(1, tr("a fit needs one file of measured levels")).first();
    request.objective = cli::readObjective(options);
    const bool isAnnealed = request.objective == cli::Objective::Response;
    request.fit = cli::readFitOptions(options, isAnnealed ? annealedStarts : leastSquaresStarts);
    request.fileName = QFileInfo(fileName).absoluteFilePath();
    request.ion = cli::readFreeIon(options);
    if (!cli::hasElectrostaticSplitting(request.ion))
        setPlaceholders(request.ion);
    request.allParameters = readParameters(options, request);
    request.parameters = request.allParameters;
    const int basic = LanqorParametricEnergyLevels::getParameters().size();
    if (isAnnealed && !request.fit.isPolished && !cli::isRestricted(request.fit) &&
        std::all_of(request.parameters.begin() + basic, request.parameters.end(),
                    [](const FitParameter &own) { return own.isFixed; }))
        request.parameters.resize(basic); // the steps of a mere annealing know no held parameters
    if (!LanqorParametricEnergyLevels::readEnergyLevelsExp(request.fileName, request.measured))
        throw cli::Failure{
            tr("%1 cannot be read as a list of measured levels").arg(request.fileName)};
    const QString fault = LanqorParametricEnergyLevels::findFileFault(request.fileName);
    if (!fault.isEmpty())
        throw cli::Failure{fault};
    cli::readState(options, request.fit, request.parameters);
    return request;
}

/// True when a parameter is held or its bounds are narrower than those of the fit.
bool isRestricted(const Request &request)
{
    return cli::isRestricted(request.fit) ||
           std::any_of(request.parameters.begin(), request.parameters.end(),
                       [](const FitParameter &own) { return own.isFixed; });
}

/// The first start is as asked for; the others change every parameter by up to 20 %.
QVector<double> startOf(const Request &request, int number)
{
    constexpr double widest = 0.2;
    const QVector<double> resumed = request.fit.resumed.value(number - 1);
    QVector<double> start = resumed;
    if (start.isEmpty())
        start = valuesOf(request.ion).mid(0, request.parameters.size());
    const bool isAnnealingAlone = !request.fit.isPolished && !isRestricted(request);
    for (int i = 0; i < start.size(); ++i) {
        const FitParameter &range = request.parameters.at(i);
        if (number > 1 && resumed.isEmpty())
            start[i] *=
                1.0 - widest + 2.0 * widest * LanqorFitStarts::getStartingFraction(number, i);
        if (range.isFixed)
            start[i] = range.fixedValue;
        else if (!isAnnealingAlone || number > 1)
            start[i] = std::clamp(start.at(i), range.minimum, range.maximum);
    }
    return start;
}

/// A fit whose files stand beside @p fileName.
std::unique_ptr<LanqorParametricEnergyLevels> makeFit(const Request &request,
                                                      const QString &fileName)
{
    auto fit =
        std::make_unique<LanqorParametricEnergyLevels>(nullptr, request.ion.electrons, fileName);
    if (!fit->getLastError().isEmpty())
        cli::failOf(*fit);
    fit->setEnergyLevelsExp(request.measured);
    fit->setTwoBodyParameters(request.ion.alpha, request.ion.beta, request.ion.gamma);
    return fit;
}

/// Evaluates a fit at a point that was found after so many points.
void conclude(LanqorParametricEnergyLevels &fit, QVector<double> vector, qint64 points)
{
    cli::showMessages(fit);
    constexpr qint64 countable = 2000000000; // the fit counts in an int
    for (qint64 point = 0; point < std::min(points, countable); ++point)
        fit.incrementPointsNumber();
    double *values = vector.data();
    if (!fit.runParametrization(vector.size(), values))
        cli::failOf(fit);
    fit.endOfParametrization();
}

Outcome fitLeastSquares(const Request &request)
{
    LanqorLevelsLeastSquares problem(request.ion.electrons);
    problem.setParameters(request.parameters);
    if (!problem.setEnergyLevelsExp(request.measured))
        throw cli::Failure{problem.getLastError()};
    QVector<QVector<double>> starts;
    for (int number = 1; number <= request.fit.starts; ++number)
        starts.append(startOf(request, number));
    const cli::LeastSquaresOutcome found = cli::runLeastSquares(
        starts, [&](const QVector<double> &start) { return problem.fit(start); });
    Outcome outcome;
    outcome.account = found.best.account;
    outcome.account.points += request.fit.resumedPoints;
    outcome.vectors = found.vectors;
    outcome.traces = found.traces;
    outcome.isInterrupted = found.isInterrupted;
    outcome.owned = makeFit(request, request.fileName);
    outcome.fit = outcome.owned.get();
    conclude(*outcome.fit, found.best.vector, outcome.account.points);
    outcome.account.otherMisfit =
        tr("response, sum of the relative deviations by label, %1 per cent")
            .arg(outcome.fit->getBestResponse(), 0, 'g', 6);
    return outcome;
}

/// Several starts keep their files in a folder of their own, and the progress of the best one is
/// added to the file beside the measured levels.
Outcome fitResponse(const Request &request)
{
    const QTemporaryDir scratch;
    const bool isScaled = request.fit.isPolished || isRestricted(request);
    const auto fileOf = [&](int number) {
        return request.fit.starts == 1 ? request.fileName
                                       : scratch.filePath(QStringLiteral("%1.exp").arg(number));
    };
    Outcome outcome;
    outcome.starts = std::make_unique<LanqorFitStarts>(request.fit.starts, [&](int number) {
        auto fit = makeFit(request, fileOf(number));
        if (request.fit.starts == 1) // else the best point is concluded by a fit of its own
            cli::showMessages(*fit);
        return FitStart{std::move(fit), startOf(request, number),
                        isScaled ? request.parameters : QVector<FitParameter>()};
    });
    LanqorFitStarts &starts = *outcome.starts;
    outcome.isInterrupted = cli::runFits(starts, request.fit) == cli::FitEnd::Interrupted;
    const int bestNumber = starts.getBestNumber();
    for (int number = 1; number <= starts.getCount(); ++number) {
        outcome.vectors.append(starts.getBestVector(number));
        outcome.traces.append(starts.getTrace(number));
    }
    const QVector<double> best = outcome.vectors.at(bestNumber - 1);
    if (best.isEmpty())
        throw cli::Failure{tr("the fit ended before its first point")};
    outcome.account = starts.makeAccount(request.parameters,
                                         [](const QVector<double> &vector) { return vector; });
    outcome.account.points += request.fit.resumedPoints;
    outcome.account.unit = tr("per cent");
    LanqorLevelsLeastSquares problem(request.ion.electrons);
    problem.setParameters(request.allParameters);
    const QVector<double> described =
        best + valuesOf(request.ion).mid(best.size(), request.allParameters.size() - best.size());
    if (problem.setEnergyLevelsExp(request.measured))
        cli::addData(problem.describe(described),
                     tr("response, sum of the relative deviations by label"), outcome.account);
    auto &fit = *qobject_cast<LanqorParametricEnergyLevels *>(starts.getBest());
    if (request.fit.starts == 1) {
        fit.endOfParametrization(); // the minimiser has not, when it was stopped
        outcome.fit = &fit;
        return outcome;
    }
    outcome.owned = makeFit(request, request.fileName);
    outcome.fit = outcome.owned.get();
    QFile progress(fit.getProgressFileName());
    QString error;
    if (progress.open(QIODevice::ReadOnly) &&
        !LanqorOutputFile::append(outcome.fit->getProgressFileName(), progress.readAll(), error))
        cli::warn(tr("%1 cannot be written: %2").arg(outcome.fit->getProgressFileName(), error));
    conclude(*outcome.fit, best, outcome.account.points);
    return outcome;
}

} // namespace

int fitLevelsCommand(const QStringList &arguments)
{
    cli::OptionReader options("fit levels");
    describe(options);
    options.parse(arguments);
    const Request request = readRequest(options);
    cli::enterDataFolder();
    const auto named = makeFit(request, request.fileName);
    options.keepFromResults({named->getProgressFileName(), named->getResultFileName()});

    const Outcome outcome = request.objective == cli::Objective::LeastSquares
                                ? fitLeastSquares(request)
                                : fitResponse(request);
    cli::writeState(request.fit, options.command(), request.parameters, outcome.vectors,
                    outcome.account.points);
    LanqorParametricEnergyLevels &fit = *outcome.fit;
    const QString account = LanqorFitAccount::makeText(outcome.account);
    LanqorResultTables tables = LanqorParametricEnergyLevels::makeTables(fit.getResults());
    tables.append(LanqorFitAccount::makeTables(outcome.account));
    cli::addConvergence(request.fit, outcome.traces, outcome.account.unit, tables);
    cli::showResults(options, fit.getSummary() + QLatin1Char('\n') + account, tables);
    if (!fit.getLastError().isEmpty())
        cli::failOf(fit);
    if (cli::writeFile(fit.getResultFileName(),
                       (fit.getReport() + QLatin1Char('\n') + account).toUtf8()))
        cli::note(tr("all levels of the best point are in %1").arg(fit.getResultFileName()));
    cli::drawFit(request.fit, QFileInfo(request.fileName).fileName(), tr("misfit"), outcome.account,
                 outcome.traces);
    return outcome.isInterrupted ? cli::interrupted : cli::success;
}
