#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/emissionOptions.h"
#include "options/plausibility.h"
#include "options/showResults.h"
#include "options/uncertainOptions.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/OmegaExpResults.h>

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

using cli::tr;

constexpr int transitionCount = 6;
using Values = std::array<double, transitionCount>;

/// The six numbers of an option.
Values readSix(const cli::OptionReader &options, const char *option)
{
    const QVector<double> numbers = options.numbers(option);
    if (numbers.size() != transitionCount)
        options.refuse(tr("--%1 needs six numbers, those of 7F0 to 7F5, with commas between")
                           .arg(QLatin1String(option)));
    Values values{};
    std::copy(numbers.begin(), numbers.end(), values.begin());
    return values;
}

void addOptions(cli::OptionReader &options)
{
    options.setDescription(
        tr("Experimental intensity parameters Omega(2), Omega(4) and radiative rate of a Eu3+\n"
           "compound from its emission, calibrated by the magnetic dipole band 5D0 -> 7F1; with\n"
           "the lifetime of 5D0 also the non-radiative rate and the quantum efficiency.\n\n"
           "The emission is given in one of three ways:\n"
           "  --spectrum FILE   the instrument's text file: two columns, wavelength (nm) or\n"
           "                    wavenumber (cm^-1) and intensity; it is integrated here\n"
           "  FILE              a table, each line J, area, barycentre (cm^-1) of 5D0 -> 7FJ\n"
           "  --areas, --barycentres   six numbers each\n\n"
           "Power or photons? Areas and intensities count as emitted POWER. If your detector\n"
           "counts photons (a photomultiplier in counting mode, a spectrum in counts or cps that\n"
           "was not converted to power), add --photon-counts: every point is then weighted by\n"
           "its wavenumber. A wrong choice shifts the results by 4 to 15 %.\n"
           "Intensities are taken per unit of the first column. If a program replaced nm by\n"
           "cm^-1 without rescaling the intensities by lambda^2, give the column in nm.\n\n"
           "Example:\n"
           "  lanqor omega-exp --spectrum emission.txt --n 1.5 --lifetime 0.42 --photon-counts"));
    options.addArgument(QStringLiteral("FILE"), tr("Table of areas and barycentres"),
                        QStringLiteral("[FILE]"));
    options.addOptions({
        {QStringLiteral("spectrum"), tr("Measured spectrum of two columns."), tr("file")},
        {QStringLiteral("areas"),
         tr("Areas of 5D0 -> 7F0 .. 7F5, any one unit, e.g. "
            "0.1,1,8.5,0.2,1.9,0."),
         tr("list")},
        {QStringLiteral("barycentres"),
         tr("Barycentres of 5D0 -> 7F0 .. 7F5, cm^-1, e.g. 17240,16910,16290,15350,14380,0."),
         tr("list")},
        cli::photonCountsOption(),
        cli::refractiveIndexOption(tr("Refractive index of the medium.")),
        {QStringLiteral("lifetime"), tr("Measured lifetime of 5D0, ms."), tr("ms")},
    });
    options.addOptions(cli::integrationOptions());
    options.addOption(
        {QStringLiteral("report"), tr("Write the report to this file as well."), tr("file")});
}

/// The lifetime, ms; 0 without one.
double readLifeTime(const cli::OptionReader &options)
{
    if (options.text("lifetime").isEmpty())
        return 0.0;
    const double lifeTime = options.number(
        "lifetime", [](double ms) { return ms >= 0.0 && std::isfinite(ms); },
        tr("a lifetime in ms"));
    cli::warnOfLifetime(lifeTime);
    return lifeTime;
}

/// Hands areas and barycentres to the calculation.
void readEmission(const cli::OptionReader &options, LanqorOmegaExp &calculation)
{
    if (options.isSet("spectrum")) {
        cli::requireFile(QStringLiteral("--spectrum "), options.text("spectrum"),
                         tr("a text file of two columns, wavelength or wavenumber and intensity"));
        if (!calculation.readSpectrum(options.text("spectrum"), cli::readSpectrumOptions(options)))
            cli::failOf(calculation);
        return;
    }
    if (!options.files().isEmpty()) {
        cli::requireFile(QString(), options.files().first(),
                         tr("a table of areas and barycentres (J, area, barycentre in cm^-1)"));
        if (!calculation.readBands(options.files().first()))
            cli::failOf(calculation);
    } else {
        const Values S = readSix(options, "areas");
        const Values sigma = readSix(options, "barycentres");
        calculation.setAreaOfTransition(S[0], S[1], S[2], S[3], S[4], S[5]);
        calculation.setBarycenterOfEnergy(sigma[0], sigma[1], sigma[2], sigma[3], sigma[4],
                                          sigma[5]);
        calculation.setFileName(tr("(areas and barycentres of the command line)"));
    }
    const QString error = calculation.getBarycentreError();
    if (!error.isEmpty())
        throw cli::Failure{error};
    if (options.isSet("photon-counts"))
        calculation.convertPhotonCounts();
}

void noteWaysOut(const cli::OptionReader &options, const LanqorOmegaExp &calculation,
                 bool isDoubtful)
{
    if (!options.isSet("spectrum")) {
        for (const int J : {2, 4})
            if (calculation.getAreaOfTransition(J) == 0.0)
                cli::note(tr("5D0 -> 7F%1 has no area, so that Omega(%1) is 0").arg(J));
    } else if (isDoubtful) {
        cli::note(options.text("baseline") == QLatin1String("linear")
                      ? tr("--windows sets other limits of the bands")
                      : tr("--windows sets other limits of the bands, --baseline linear subtracts "
                           "a background"));
    }
}

QVector<cli::UncertainOption> uncertainOptions()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QStringList levels;
    for (int J = 0; J < transitionCount; ++J)
        levels.append(QStringLiteral("7F%1").arg(J));
    const auto area = QStringLiteral("areas");
    return {{area, QStringLiteral("1"), UncertaintyKind::Normal, 0.0, infinity, levels},
            {QStringLiteral("barycentres"), QStringLiteral("cm^-1"), UncertaintyKind::Normal, 0.0,
             infinity, levels},
            {QStringLiteral("lifetime"),
             QStringLiteral("ms"),
             UncertaintyKind::LogNormal,
             0.0,
             infinity,
             {}},
            cli::uncertainRefractiveIndex()};
}

/// What a set of values of the inputs gives.
const QVector<ResultColumn> &quantities()
{
    static const QVector<ResultColumn> columns = {
        {QStringLiteral("omega_2"), QStringLiteral("1e-20 cm^2")},
        {QStringLiteral("omega_4"), QStringLiteral("1e-20 cm^2")},
        {QStringLiteral("radiative_rate"), QStringLiteral("s^-1")},
        {QStringLiteral("radiative_lifetime"), QStringLiteral("ms")},
        {QStringLiteral("non_radiative_rate"), QStringLiteral("s^-1")},
        {QStringLiteral("quantum_efficiency"), QStringLiteral("%")}};
    return columns;
}

QVector<double> rowOf(const OmegaExpResults &results)
{
    constexpr double omegaUnitCm2 = 1.0e-20;
    const bool hasDecay = results.lifeTime != 0.0;
    QVector<double> row = {results.omega2 / omegaUnitCm2, results.omega4 / omegaUnitCm2,
                           results.arad, results.radiativeLifeTime};
    return hasDecay ? row << results.anrad << results.quantumEfficiency : row;
}

/// Error bars of a finished calculation.
UncertaintyResults calcUncertainty(const cli::OptionReader &options,
                                   const cli::UncertainOptions &uncertain,
                                   const OmegaExpResults &results)
{
    LanqorUncertainty uncertainty;
    uncertain.prepare(uncertainty);
    const bool isGiven = !options.isSet("spectrum");
    const bool countsPhotons = isGiven && options.isSet("photon-counts");
    int impossible = 0;
    int sets = 0;
    const auto model = [&](const QVector<double> &values) {
        Values S{};
        Values sigma{};
        for (std::size_t J = 0; J < transitionCount; ++J) {
            S[J] = countsPhotons ? results.source.givenAreas[J] : results.transitions[J].area;
            sigma[J] = results.transitions[J].barycenter;
        }
        double index = results.refractiveIndex;
        double lifeTime = results.lifeTime;
        for (int i = 0; i < values.size(); ++i) {
            const cli::UncertainOptions::Number &number = uncertain.numbers().at(i);
            if (number.option == QLatin1String("areas"))
                S[std::size_t(number.entry)] = values.at(i);
            else if (number.option == QLatin1String("barycentres"))
                sigma[std::size_t(number.entry)] = values.at(i);
            else
                (number.option == QLatin1String("n") ? index : lifeTime) = values.at(i);
        }
        LanqorOmegaExp calculation(nullptr, index);
        calculation.setAreaOfTransition(S[0], S[1], S[2], S[3], S[4], S[5]);
        calculation.setBarycenterOfEnergy(sigma[0], sigma[1], sigma[2], sigma[3], sigma[4],
                                          sigma[5]);
        if (countsPhotons)
            calculation.convertPhotonCounts();
        calculation.setLifeTime(lifeTime);
        if (!calculation.calcOmegaExp())
            return QVector<double>();
        OmegaExpResults found = calculation.getResults();
        ++sets;
        if (lifeTime != 0.0 && found.anrad < 0.0) {
            ++impossible;
            found.anrad = found.quantumEfficiency = std::nan("");
        }
        return rowOf(found);
    };
    const QVector<double> asGiven = rowOf(results);
    UncertaintyResults errorBars =
        uncertainty.calculate(quantities().mid(0, asGiven.size()), asGiven, model);
    cli::addImpossibleLifetimes(errorBars, impossible, sets);
    return errorBars;
}

} // namespace

int omegaExpCommand(const QStringList &arguments)
{
    cli::OptionReader options("omega-exp");
    addOptions(options);
    cli::UncertainOptions uncertain(options, uncertainOptions());
    uncertain.addPlotOption(tr("the spectrum with the windows of its bands"));
    options.addResultOptions();
    options.parse(uncertain.read(arguments));
    uncertain.check();
    const QString plot = plots::readOption(options);
    if (int(options.isSet("spectrum")) + int(options.isSet("areas")) + options.files().size() != 1)
        options.refuse(tr("omega-exp needs either --spectrum FILE, or a table FILE, or --areas "
                          "with --barycentres; see \"lanqor omega-exp --help\""));
    for (const char *option : {"axis", "windows", "baseline"}) {
        if (options.isSet(option) && !options.isSet("spectrum"))
            options.refuse(tr("--%1 belongs to --spectrum").arg(QLatin1String(option)));
    }
    if (!plot.isEmpty() && uncertain.isEmpty() && !options.isSet("spectrum"))
        options.refuse(tr("--plot: no number is uncertain; give one as value+-sd or low:high, or "
                          "a --spectrum to draw"));
    const double index = cli::readRefractiveIndex(options);
    const double lifeTime = readLifeTime(options);

    LanqorOmegaExp calculation(nullptr, index);
    cli::showMessages(calculation);
    readEmission(options, calculation);
    calculation.setLifeTime(lifeTime);
    if (!calculation.calcOmegaExp())
        cli::failOf(calculation);
    const QStringList warnings = calculation.getWarnings();
    for (const QString &warning : warnings)
        cli::warn(warning);
    noteWaysOut(options, calculation, !warnings.isEmpty());
    QString report = calculation.createOutputFile(QString());
    if (report.isEmpty())
        cli::failOf(calculation);
    const OmegaExpResults results = calculation.getResults();
    LanqorResultTables tables = LanqorOmegaExp::makeTables(results);
    UncertaintyResults errorBars;
    if (!uncertain.isEmpty()) {
        errorBars = calcUncertainty(options, uncertain, results);
        cli::addErrorBars(errorBars, report, tables);
    }
    const QString spectrum = options.text("spectrum");
    cli::showResults(options, report, tables);
    if (options.isSet("report"))
        cli::writeFile(options.text("report"), report.toUtf8());
    if (!plot.isEmpty() && uncertain.isEmpty())
        plots::draw(plots::emissionFigure(results), plot);
    else if (!plot.isEmpty())
        plots::draw(errorBars, QFileInfo(results.fileName).fileName(), plot);
    return cli::success;
}
