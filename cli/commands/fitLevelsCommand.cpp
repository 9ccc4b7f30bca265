#include "Command.h"
#include "commands/commands.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "options/freeIonOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorFitStarts.h>
#include <LanqorEngine/LanqorGSA.h>
#include <LanqorEngine/LanqorParametricEnergyLevels.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

namespace {

using cli::tr;

struct Request
{
    FreeIonParameters ion;
    QString fileName; ///< absolute
    int stepsPerCycle = 0;
    double temperature = 0.0;
};

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Fits the Slater integrals F_2, F_4, F_6 and the spin-orbit parameter zeta of a free\n"
        "lanthanide(III) ion to measured energy levels by simulated annealing.\n\n"
        "FILE has a heading line, then one level a line: its label first and its energy in cm^-1\n"
        "last. The first level is the ground level, of energy 0, which is not fitted:\n"
        "    label   energy\n"
        "    4I9/2        0\n"
        "    4I11/2    2007\n"
        "    2H(2)9/2 12738\n"
        "A term that occurs more than once needs its number in parentheses; \"lanqor levels\" "
        "shows\n"
        "the labels. The response is the sum of 100 |measured - computed| / measured.\n\n"
        "The start is the parameters given or the published ones of the ion; bounds: F_2 100 to\n"
        "1000, F_4 10 to 100, F_6 1 to 10, zeta 100 to 5000 cm^-1. A step changes each parameter "
        "by\n"
        "1 cm^-1 at most. Beside FILE, with \".exp\" replaced, the progress goes to a file "
        "\".output\"\n"
        "(appended) and the result with all levels to \".result\". A point of 4f^6 or 4f^7 takes "
        "some\n"
        "ms. Ctrl-C ends the fit and reports its best point (exit status 130).\n\n"
        "Example:\n"
        "  lanqor fit levels nd.exp --ion Nd --points 3000"));
    options.addArgument(QStringLiteral("FILE"), tr("measured levels, usually NAME.exp"));
    cli::addFreeIonOptions(options);
    options.addOptions({
        {QStringLiteral("points"), tr("Points tried in each of the 15 annealing cycles."),
         tr("number"), QStringLiteral("2000")},
        {QStringLiteral("temperature"),
         tr("Initial temperature of the annealing, in units of the response (per cent)."), tr("T"),
         QStringLiteral("1")},
    });
    options.addResultOptions();
}

Request readRequest(const cli::OptionReader &options)
{
    constexpr int maximumSteps = 100000000;
    Request request;
    const QString fileName =
        options.files(1, tr("a fit needs one file of measured levels")).first();
    request.stepsPerCycle = options.count("points", maximumSteps);
    request.temperature = options.number(
        "temperature", [](double T) { return T > 0.0 && T < 1e6; }, tr("a positive number"));
    request.fileName = QFileInfo(fileName).absoluteFilePath();
    request.ion = cli::readFreeIon(options);
    return request;
}

} // namespace

int fitLevelsCommand(const QStringList &arguments)
{
    cli::OptionReader options("fit levels");
    describe(options);
    options.parse(arguments);
    const Request request = readRequest(options);
    QVector<EnergyLevelsExp> measured;
    if (!LanqorParametricEnergyLevels::readEnergyLevelsExp(request.fileName, measured))
        throw cli::Failure{
            tr("%1 cannot be read as a list of measured levels").arg(request.fileName)};
    const QString fault = LanqorParametricEnergyLevels::findFileFault(request.fileName);
    if (!fault.isEmpty())
        throw cli::Failure{fault};
    cli::enterDataFolder();

    LanqorFitStarts starts(1, [&](int) {
        auto fit = std::make_unique<LanqorParametricEnergyLevels>(nullptr, request.ion.electrons,
                                                                  request.fileName);
        if (!fit->getLastError().isEmpty())
            cli::failOf(*fit);
        cli::showMessages(*fit);
        options.keepFromResults({fit->getProgressFileName(), fit->getResultFileName()});
        fit->setEnergyLevelsExp(measured);
        const FreeIonParameters &ion = request.ion;
        return FitStart{std::move(fit), {ion.F2, ion.F4, ion.F6, ion.zeta}};
    });
    LanqorGSA &annealing = *starts.getAnnealing(1);
    annealing.setNStopMax(request.stepsPerCycle);
    annealing.setGSAParameters(2.5, 2.5, 2.5, request.temperature);
    const cli::FitEnd end = cli::runFits(starts);
    auto &fit = *qobject_cast<LanqorParametricEnergyLevels *>(starts.getBest());
    if (end == cli::FitEnd::Interrupted)
        fit.endOfParametrization(); // the minimiser has not
    if (fit.getSummary().isEmpty())
        throw cli::Failure{tr("the fit ended before its first point")};
    cli::showResults(options, fit.getSummary(),
                     LanqorParametricEnergyLevels::makeTables(fit.getResults()),
                     {request.fileName});
    if (!fit.getLastError().isEmpty())
        cli::failOf(fit);
    cli::note(tr("all levels of the best point are in %1").arg(fit.getResultFileName()));
    return end == cli::FitEnd::Interrupted ? cli::interrupted : cli::success;
}
