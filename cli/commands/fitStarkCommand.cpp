#include "Command.h"
#include "commands/commands.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorParametricStarkLevels.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

namespace {

using cli::tr;

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
        "of a Eu3+ complex by simulated annealing.\n\n"
        "STRUCTURE is a MOPAC output or a .mop, .zmt, .xyz or .mol2 file with Eu as atom 1 and\n"
        "the N coordinated atoms as atoms 2 to N+1. BASENAME stands for small text files, fields\n"
        "between blanks:\n"
        "  BASENAME.groups         name, atom numbers; every coordinated atom in one group\n"
        "                          (oxygens 2 3 4 5)\n"
        "  BASENAME.exp            J, energies of the lowest and highest sublevel of 7FJ, energy\n"
        "                          of its barycentre, cm^-1 (1 302 455 379)\n"
        "  BASENAME.limits         element, smallest and largest g; may be missing (O 0.1 1.5)\n"
        "  BASENAME.chargefactors  name, atom numbers, g from which to start; may be missing,\n"
        "                          then 0.5 (oxygens 2 3 4 5 0.6)\n"
        "Each improvement is appended to BASENAME.progress, and the best result stands in\n"
        "BASENAME.stark. Ctrl-C ends the fit and prints its best point (exit status 130).\n\n"
        "Example:\n"
        "  lanqor fit stark complex complex.out"));
    options.addArgument(QStringLiteral("BASENAME"), tr("Files of the fit"));
    options.addArgument(QStringLiteral("STRUCTURE"), tr("MOPAC output or structure file"));
    options.addOptions({
        cli::overlapOption(),
        cli::coordinationOption(),
        {QStringLiteral("points"), tr("Points tried in each of the 15 annealing cycles."),
         tr("number"), QStringLiteral("15000")},
    });
    options.addResultOptions();
}

} // namespace

int fitStarkCommand(const QStringList &arguments)
{
    constexpr int maximumSteps = 100000000;
    cli::OptionReader options("fit stark");
    addOptions(options);
    options.parse(arguments);
    const QStringList names =
        options.files(2, tr("fit stark needs the base name of its files and a structure; see "
                            "\"lanqor fit stark --help\""));
    const double ro0 = cli::readOverlap(options);
    const int stepsPerCycle = options.count("points", maximumSteps);

    const QString &baseName = names.at(0);
    const QString &structure = names.at(1);
    const FitFiles files = readFiles(baseName);
    options.keepFromResults(files.names + QStringList{baseName + QStringLiteral(".progress"),
                                                      baseName + QStringLiteral(".stark")});
    LanqorInputData geometry(nullptr, structure);
    cli::showWarnings(geometry);
    geometry.setKeepFileOpen(true);
    const int coordNumber = cli::readSphere(options, geometry);

    LanqorFitStarts starts(1, [&](int) {
        auto fit = std::make_unique<LanqorParametricStarkLevels>(nullptr, &geometry, coordNumber);
        cli::showMessages(*fit);
        fit->setRO0(ro0);
        fit->setParametersGroup(files.groups);
        fit->setTransitionValues(files.transitions);
        fit->setGLimits(files.limits);
        fit->setFileName(baseName);
        const QVector<double> vector = fit->makeStartingVector(files.start);
        return FitStart{std::move(fit), vector};
    });
    if (starts.getCount() > 0)
        starts.getAnnealing(1)->setNStopMax(stepsPerCycle);
    const cli::FitEnd end = cli::runFits(starts);
    auto &fit = *qobject_cast<LanqorParametricStarkLevels *>(starts.getBest());
    const QString report = fit.getReport();
    if (report.isEmpty())
        throw cli::Failure{tr("no trial lay within the limits of the charge factors")};
    cli::showResults(options, report, LanqorParametricStarkLevels::makeTables(fit.getResults()),
                     files.names + QStringList{structure});
    if (!fit.createOuputFile()) // again, for the run goes on without a file that it cannot write
        cli::failOf(fit);
    return end == cli::FitEnd::Interrupted ? cli::interrupted : cli::success;
}
