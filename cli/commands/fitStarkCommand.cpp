#include "Command.h"
#include "commands/commands.h"
#include "commands/fitProgress.h"
#include "commands/leastSquaresFit.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/fitOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorParametricStarkLevels.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorStarkLeastSquares.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

using cli::tr;

constexpr int leastSquaresStarts = 20;
constexpr int annealedStarts = 8;

/// The files of a fit.
struct FitFiles
{
    QVector<ParametersGroup> groups;
    QVector<TransitionValues> transitions;
    QVector<GLimits> limits;
    QVector<ChargeFactorsGroup> start;
    QStringList names; ///< of those that are there
};

FitFiles readFiles(const QString &baseName)
{
    for (const char *extension : {".groups", ".exp"}) {
        const QString fileName = baseName + QLatin1String(extension);
        if (!QFileInfo::exists(fileName))
            throw cli::Failure{
                tr("%1 does not exist; see \"lanqor fit stark --help\"").arg(fileName)};
    }
    for (const QString &fault : LanqorParametricStarkLevels::findFileFaults(baseName))
        cli::warn(fault);
    FitFiles files;
    for (const char *extension : {".groups", ".exp", ".limits", ".chargefactors"})
        if (QFileInfo::exists(baseName + QLatin1String(extension)))
            files.names.append(baseName + QLatin1String(extension));
    LanqorParametricStarkLevels::readGLimitsFile(baseName, files.limits);
    if (QFileInfo::exists(baseName + QStringLiteral(".chargefactors")))
        LanqorParametricStarkLevels::readChargeFactorsFile(baseName, files.start);
    if (!LanqorParametricStarkLevels::readParametersGroup(baseName, files.groups) ||
        !LanqorParametricStarkLevels::readTransitionValues(baseName, files.transitions))
        throw cli::Failure{tr("the files of %1 cannot be read").arg(baseName)};
    return files;
}

void addOptions(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Fits charge factors g of groups of coordinated atoms to measured Stark levels of 7FJ\n"
        "of a Eu3+ complex.\n\n"
        "STRUCTURE is a MOPAC output or a .mop, .zmt, .xyz, .mol2, .cif or .pdb file with Eu as\n"
        "atom 1 and the N coordinated atoms as atoms 2 to N+1; those of a crystal (.cif, .pdb) "
        "are\n"
        "brought into that order. BASENAME stands for small text files, fields between blanks:\n"
        "  BASENAME.groups         name, atom numbers; every coordinated atom in one group\n"
        "                          (oxygens 2 3 4 5)\n"
        "  BASENAME.exp            J, energies of the lowest and highest sublevel of 7FJ, energy\n"
        "                          of its barycentre, cm^-1 (1 302 455 379), and standard\n"
        "                          deviations of the two if they are known (1 302 455 379 5 5)\n"
        "  BASENAME.limits         element, smallest and largest g; may be missing (O 0.1 1.5)\n"
        "  BASENAME.chargefactors  name, atom numbers, g from which to start; may be missing,\n"
        "                          then 0.5 (oxygens 2 3 4 5 0.6)\n"
        "Each improvement is appended to BASENAME.progress, and the best result stands in\n"
        "BASENAME.stark. Further starts than the first lie between the limits, or between 0 and "
        "3.\n"
        "The reduced elements <7FJ||U(k)||7FJ> have their signs; magnitudes, as earlier versions\n"
        "had them, can reverse which ligand is the stronger one.\n"
        "--plot draws computed against measured levels. Ctrl-C ends the fit and prints its best "
        "point (exit status 130).\n\n"
        "Example:\n"
        "  lanqor fit stark complex complex.out"));
    options.addArgument(QStringLiteral("BASENAME"), tr("Files of the fit"));
    options.addArgument(QStringLiteral("STRUCTURE"), tr("MOPAC output or structure file"),
                        QString(), cli::structureSuffixes());
    options.addOptions({
        cli::overlapOption(),
        cli::coordinationOption(),
        cli::magnitudesOption(),
    });
    cli::addObjectiveOption(options);
    cli::addFitOptions(options, leastSquaresStarts);
    options.addResultOptions();
}

struct Request
{
    QString baseName;
    QString structure;
    FitFiles files;
    double ro0 = 0.0;
    ReducedElements elements = ReducedElements::Signed;
    int coordNumber = 0;
    cli::Objective objective = cli::Objective::LeastSquares;
    cli::FitOptions fit;
    QVector<FitParameter> parameters;
};

/// What either objective gives.
struct Outcome
{
    QVector<double> best;
    FitAccount account;
    QVector<QVector<double>> vectors; ///< by start
    QVector<FitTrace> traces;
    int bestPoint = 0; ///< number of the best trial in its start; 0: all points
    bool isInterrupted = false;
};

/// A fit that writes no file but with a name for them.
std::unique_ptr<LanqorParametricStarkLevels>
makeFit(const Request &request, LanqorInputData &geometry, const QString &baseName = QString())
{
    auto fit =
        std::make_unique<LanqorParametricStarkLevels>(nullptr, &geometry, request.coordNumber);
    fit->setRO0(request.ro0);
    fit->setReducedElements(request.elements);
    fit->setParametersGroup(request.files.groups);
    fit->setTransitionValues(request.files.transitions);
    fit->setGLimits(request.files.limits);
    fit->setFileName(baseName);
    return fit;
}

/// The first start is that of the file or the usual one.
QVector<double> startOf(const Request &request, LanqorParametricStarkLevels &fit, int number)
{
    constexpr double widest = 3.0; // of a g without a limit
    const QVector<double> resumed = request.fit.resumed.value(number - 1);
    if (!resumed.isEmpty())
        return resumed;
    QVector<double> start = fit.makeStartingVector(request.files.start);
    for (int i = 0; i < start.size(); ++i) {
        const FitParameter &range = request.parameters.at(i);
        const double maximum =
            std::isfinite(range.maximum) ? range.maximum : std::max(widest, range.minimum + 1.0);
        if (number > 1)
            start[i] = range.minimum +
                       LanqorFitStarts::getStartingFraction(number, i) * (maximum - range.minimum);
        start[i] = range.isFixed ? range.fixedValue
                                 : std::clamp(start.at(i), range.minimum, range.maximum);
    }
    return start;
}

Outcome fitLeastSquares(const Request &request, LanqorInputData &geometry,
                        LanqorStarkLeastSquares &problem)
{
    const auto model = makeFit(request, geometry);
    QVector<QVector<double>> starts;
    for (int number = 1; number <= request.fit.starts; ++number)
        starts.append(startOf(request, *model, number));
    const cli::LeastSquaresOutcome found = cli::runLeastSquares(
        starts, [&](const QVector<double> &start) { return problem.fit(start); });
    Outcome outcome;
    outcome.best = found.best.vector;
    outcome.account = found.best.account;
    outcome.vectors = found.vectors;
    outcome.traces = found.traces;
    outcome.isInterrupted = found.isInterrupted;
    return outcome;
}

/// A single start writes its files as it goes.
Outcome fitResponse(const Request &request, LanqorInputData &geometry,
                    const LanqorStarkLeastSquares &problem)
{
    const bool isScaled = request.fit.isPolished || cli::isRestricted(request.fit);
    const bool isSingle = request.fit.starts == 1;
    LanqorFitStarts starts(request.fit.starts, [&](int number) {
        auto fit = makeFit(request, geometry, isSingle ? request.baseName : QString());
        if (number == 1)
            cli::showMessages(*fit);
        const QVector<double> vector = startOf(request, *fit, number);
        return FitStart{std::move(fit), vector,
                        isScaled ? request.parameters : QVector<FitParameter>()};
    });
    Outcome outcome;
    outcome.isInterrupted = cli::runFits(starts, request.fit) == cli::FitEnd::Interrupted;
    for (int number = 1; number <= starts.getCount(); ++number) {
        outcome.vectors.append(starts.getBestVector(number));
        outcome.traces.append(starts.getTrace(number));
    }
    const auto &fit = *qobject_cast<LanqorParametricStarkLevels *>(starts.getBest());
    if (!fit.getResults().hasFeasiblePoint)
        throw cli::Failure{tr("no trial lay within the limits of the charge factors")};
    outcome.best = outcome.vectors.at(starts.getBestNumber() - 1);
    outcome.bestPoint = fit.getResults().bestPoint;
    outcome.account = starts.makeAccount(request.parameters,
                                         [](const QVector<double> &vector) { return vector; });
    outcome.account.unit = tr("cm^-1");
    cli::addData(problem.describe(outcome.best),
                 tr("response, sum of the absolute deviations, that of a splitting 100-fold"),
                 outcome.account);
    return outcome;
}

Request readRequest(const cli::OptionReader &options)
{
    const QStringList names =
        options.files(2, tr("fit stark needs the base name of its files and a structure; see "
                            "\"lanqor fit stark --help\""));
    Request request;
    request.ro0 = cli::readOverlap(options);
    request.elements = cli::readElements(options);
    request.objective = cli::readObjective(options);
    request.fit = cli::readFitOptions(options, request.objective == cli::Objective::Response
                                                   ? annealedStarts
                                                   : leastSquaresStarts);
    request.baseName = names.at(0);
    request.structure = names.at(1);
    request.files = readFiles(request.baseName);
    options.keepFromResults(request.files.names +
                            QStringList{request.baseName + QStringLiteral(".progress"),
                                        request.baseName + QStringLiteral(".stark")});
    return request;
}

} // namespace

int fitStarkCommand(const QStringList &arguments)
{
    cli::OptionReader options("fit stark");
    addOptions(options);
    options.parse(arguments);
    Request request = readRequest(options);
    LanqorInputData geometry(nullptr, request.structure);
    cli::showWarnings(geometry);
    geometry.setKeepFileOpen(true);
    request.coordNumber = cli::readSphere(options, geometry);
    const auto model = makeFit(request, geometry);
    const QVector<FitParameter> widest = model->getParameters();
    if (widest.isEmpty())
        cli::failOf(*model);
    request.parameters = cli::restricted(options, request.fit, widest);
    cli::readState(options, request.fit, request.parameters);

    LanqorStarkLeastSquares problem(&geometry, request.coordNumber, request.ro0);
    problem.setReducedElements(request.elements);
    if (!problem.setProblem(request.files.groups, request.parameters, request.files.transitions))
        throw cli::Failure{problem.getLastError()};
    Outcome outcome = request.objective == cli::Objective::LeastSquares
                          ? fitLeastSquares(request, geometry, problem)
                          : fitResponse(request, geometry, problem);
    outcome.account.points += request.fit.resumedPoints;
    cli::writeState(request.fit, options.command(), request.parameters, outcome.vectors,
                    outcome.account.points);

    // The best point once more, with the files that it leaves behind.
    const bool isWritten = outcome.bestPoint > 0 && request.fit.starts == 1;
    const auto fit = makeFit(request, geometry, isWritten ? QString() : request.baseName);
    cli::showMessages(*fit);
    const int earlierPoints =
        outcome.bestPoint > 0
            ? outcome.bestPoint
            : int(std::min<qint64>(outcome.account.points, 2000000000)); // counted in an int
    for (int point = 0; point < earlierPoints; ++point)
        fit->incrementPointsNumber();
    double *values = outcome.best.data();
    fit->runParametrization(outcome.best.size(), values);
    if (request.objective == cli::Objective::LeastSquares)
        outcome.account.otherMisfit =
            tr("response, sum of the absolute deviations, that of a splitting 100-fold, %1 cm^-1")
                .arg(fit->getBestResponse(), 0, 'g', 6);
    StarkFitResults results = fit->getResults();
    results.points = outcome.account.points;
    LanqorResultTables tables = LanqorParametricStarkLevels::makeTables(results);
    tables.append(LanqorFitAccount::makeTables(outcome.account));
    cli::addConvergence(request.fit, outcome.traces, outcome.account.unit, tables);
    const QString report =
        fit->getReport() + QLatin1Char('\n') + LanqorFitAccount::makeText(outcome.account);
    cli::showResults(options, report, tables);
    cli::writeFile(request.baseName + QStringLiteral(".stark"), report.toUtf8());
    cli::drawFit(request.fit, QFileInfo(request.structure).fileName(), tr("misfit"),
                 outcome.account, outcome.traces);
    if (!fit->getLastError().isEmpty())
        cli::failOf(*fit);
    return outcome.isInterrupted ? cli::interrupted : cli::success;
}
