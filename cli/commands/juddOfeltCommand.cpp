#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/freeIonOptions.h"
#include "options/plausibility.h"
#include "options/showResults.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorJuddOfelt.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

namespace {

using cli::tr;

struct Request
{
    FreeIonParameters ion;
    QString fileName; ///< absolute
    RefractiveIndexModel refractiveIndex;
    JuddOfeltWeighting weighting = JuddOfeltWeighting::EqualStrength;
    double concentration = 0.0; ///< mol/l
    double path = 0.0;          ///< cm
    QVector<LanqorJuddOfelt::Lifetime> lifetimes;
    QString report; ///< absolute path; empty without
    QString plot;
    QString spectrum;
};

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Judd-Ofelt analysis of absorption bands: Omega(2), (4), (6) of a lanthanide(III) ion "
        "from\n"
        "the strengths of its bands, then rates, branching ratios and lifetimes of emission.\n\n"
        "BANDS.csv has a heading that names its columns, then one band a line:\n"
        "    level, wavelength_nm, f\n"
        "    4I13/2, 1520, 1.86e-6\n"
        "    4F5/2+4F3/2, 446.5, 7.5e-7\n"
        "level     of the band, several joined by + where bands overlap\n"
        "wavelength_nm or wavenumber_cm-1\n"
        "          the barycentre; wavelengths are vacuum values unless --air is given\n"
        "one of    f (oscillator strength), S_cm2 (line strength of the electric dipole),\n"
        "          cross_section_cm2_nm, cross_section_cm (integral of the cross section over\n"
        "          wavelength or wavenumber), absorbance_cm-1 (integral of the decadic absorbance\n"
        "          over wavenumber, with --concentration and --path)\n"
        "if wanted error (of the same quantity), U2, U4, U6 (squared elements in place of those "
        "of\n"
        "          the ion's own eigenvectors), f_MD, n\n\n"
        "The magnetic dipole part is taken off f, cross sections and absorbances. --weighting "
        "changes\n"
        "Omega more than anything else; compare like with like. Where the free solution is "
        "negative\n"
        "the best one of Omega >= 0 is used and both are shown. Modified treatments, as they are\n"
        "proposed for Pr, are not built. Energies and squares of emission are calculated ones.\n\n"
        "Examples:\n"
        "  lanqor judd-ofelt er.csv --ion Er --n 1.96\n"
        "  lanqor judd-ofelt er.csv --ion Er --sellmeier 1,2.63526,0.01608,0.32898,0.07885 \\\n"
        "      --weighting error --emitting 4I13/2,4S3/2 --lifetime 4I13/2=7.9"));
    options.addArgument(QStringLiteral("BANDS.csv"), tr("table of the absorption bands"));
    cli::addFreeIonOptions(options);
    options.addOptions({
        {QStringLiteral("n"), tr("Refractive index, the same for all bands."), tr("n")},
        {QStringLiteral("sellmeier"),
         tr("n^2 = A + B1 l^2/(l^2 - C1) + ..., l in micrometre: A,B1,C1,B2,C2."), tr("list")},
        {QStringLiteral("cauchy"),
         tr("n = c0 + c2/l^2 + c4/l^4 + d2 l^2 + d4 l^4, l in micrometre: c0,c2,c4,d2,d4, or the "
            "first of them."),
         tr("list")},
        {QStringLiteral("n-table"), tr("File of wavelength (nm) and n, interpolated."), tr("file")},
        {QStringLiteral("weighting"),
         tr("equal-strength (all S alike), equal-f (all f alike), error (1/error) or relative "
            "(1/strength)."),
         tr("name"), QStringLiteral("equal-strength")},
        {QStringLiteral("magnetic"),
         tr("computed: the magnetic dipole part from the eigenvectors is taken off; none: only one "
            "that the file tells."),
         tr("name"), QStringLiteral("computed")},
        {QStringLiteral("air"), tr("Wavelengths of the file are those in air.")},
        {QStringLiteral("concentration"), tr("Of the ion, for absorbances, mol/l."), tr("mol/l")},
        {QStringLiteral("path"), tr("Path of the light, for absorbances, cm."), tr("cm")},
        {QStringLiteral("emitting"),
         tr("Levels whose emission is shown, separated by commas; all up to the highest band "
            "unless given."),
         tr("list")},
        {QStringLiteral("lifetime"),
         tr("Measured lifetimes, ms, for the quantum efficiency: 4I13/2=7.9,4S3/2=0.4."),
         tr("list")},
        {QStringLiteral("report"), tr("Write the report to this file as well."), tr("file")},
        {QStringLiteral("plot-spectrum"),
         tr("Draw measured and calculated oscillator strengths as sticks (.svg, .png or .pdf)."),
         tr("file")},
    });
    options.addOption(plots::option());
    options.addResultOptions();
}

/// The numbers of an option's list; refuses a list that is too short.
QVector<double> coefficients(const cli::OptionReader &options, const char *name, int least)
{
    const QVector<double> numbers = options.numbers(name);
    if (numbers.size() < least)
        options.refuse(tr("--%1 needs at least %2 numbers, separated by commas")
                           .arg(QLatin1String(name), QString::number(least)));
    return numbers;
}

RefractiveIndexModel readRefractiveIndex(const cli::OptionReader &options)
{
    using Kind = RefractiveIndexModel::Kind;
    RefractiveIndexModel model;
    int given = 0;
    for (const char *name : {"n", "sellmeier", "cauchy", "n-table"})
        given += options.isSet(name) ? 1 : 0;
    if (given != 1)
        options.refuse(tr("judd-ofelt needs one of --n, --sellmeier, --cauchy and --n-table"));
    if (options.isSet("n")) {
        model.coefficients = {options.number(
            "n", [](double value) { return value >= 1.0 && value < 10.0; },
            tr("a refractive index from 1 to 10"))};
        cli::warnOfRefractiveIndex(model.coefficients.first());
    } else if (options.isSet("sellmeier")) {
        model.kind = Kind::Sellmeier;
        model.coefficients = coefficients(options, "sellmeier", 1);
        if (model.coefficients.size() % 2 == 0)
            options.refuse(tr("--sellmeier needs A and pairs of B and C"));
    } else if (options.isSet("cauchy")) {
        constexpr int most = 5;
        model.kind = Kind::Cauchy;
        model.coefficients = coefficients(options, "cauchy", 1);
        if (model.coefficients.size() > most)
            options.refuse(tr("--cauchy takes c0,c2,c4,d2,d4"));
    } else {
        QString error;
        if (!LanqorJuddOfelt::readRefractiveIndex(options.text("n-table"), model, error))
            throw cli::Failure{error};
    }
    return model;
}

JuddOfeltWeighting readWeighting(const cli::OptionReader &options)
{
    const QVector<QPair<QString, JuddOfeltWeighting>> names = {
        {QStringLiteral("equal-strength"), JuddOfeltWeighting::EqualStrength},
        {QStringLiteral("equal-f"), JuddOfeltWeighting::EqualF},
        {QStringLiteral("error"), JuddOfeltWeighting::Error},
        {QStringLiteral("relative"), JuddOfeltWeighting::Relative}};
    for (const auto &[name, weighting] : names)
        if (options.text("weighting") == name)
            return weighting;
    options.refuse(tr("--weighting needs equal-strength, equal-f, error or relative"));
}

QVector<LanqorJuddOfelt::Lifetime> readLifetimes(const cli::OptionReader &options)
{
    QVector<LanqorJuddOfelt::Lifetime> lifetimes;
    for (const QString &text : options.list("lifetime")) {
        bool isNumber = false;
        const double value = text.section(QLatin1Char('='), 1).toDouble(&isNumber);
        if (!isNumber || !(value > 0.0))
            options.refuse(tr("--lifetime: \"%1\" is no level with a time in ms, such as "
                              "4I13/2=7.9")
                               .arg(text));
        lifetimes.append({text.section(QLatin1Char('='), 0, 0).trimmed(), value});
    }
    return lifetimes;
}

double readPositive(const cli::OptionReader &options, const char *name)
{
    if (!options.isSet(name))
        return 0.0;
    return options.number(
        name, [](double value) { return value > 0.0 && value < 1e6; }, tr("a positive number"));
}

Request readRequest(const cli::OptionReader &options)
{
    Request request;
    request.fileName =
        QFileInfo(options.files(1, tr("judd-ofelt needs one table of bands")).first())
            .absoluteFilePath();
    request.refractiveIndex = readRefractiveIndex(options);
    request.weighting = readWeighting(options);
    request.concentration = readPositive(options, "concentration");
    request.path = readPositive(options, "path");
    request.lifetimes = readLifetimes(options);
    const QString magnetic = options.text("magnetic");
    if (magnetic != QLatin1String("computed") && magnetic != QLatin1String("none"))
        options.refuse(tr("--magnetic needs computed or none"));
    request.report = options.outputFile("report");
    plots::readOption(options);
    request.plot = options.outputFile("plot");
    plots::readOption(options, "plot-spectrum");
    request.spectrum = options.outputFile("plot-spectrum");
    request.ion = cli::readFreeIon(options);
    return request;
}

} // namespace

int juddOfeltCommand(const QStringList &arguments)
{
    cli::OptionReader options("judd-ofelt");
    describe(options);
    options.parse(arguments);
    const Request request = readRequest(options);
    cli::enterDataFolder();

    LanqorJuddOfelt analysis(nullptr, request.ion);
    if (!analysis.getLastError().isEmpty() || !analysis.readBands(request.fileName))
        cli::failOf(analysis);
    analysis.setWavelengthsInAir(options.isSet("air"));
    analysis.setSample(request.concentration, request.path);
    analysis.setRefractiveIndex(request.refractiveIndex);
    analysis.setWeighting(request.weighting);
    analysis.setMagneticPartTakenOff(options.text("magnetic") == QLatin1String("computed"));
    analysis.setEmittingLevels(options.list("emitting"));
    analysis.setLifetimes(request.lifetimes);
    if (!analysis.calcIntensities())
        cli::failOf(analysis);

    const JuddOfeltResults results = analysis.getResults();
    for (const QString &warning : results.warnings)
        cli::warn(warning);
    const QString report = LanqorJuddOfelt::makeReport(results);
    cli::showResults(options, report, LanqorJuddOfelt::makeTables(results));
    if (!request.report.isEmpty())
        cli::writeFile(request.report, report.toUtf8());
    if (!request.plot.isEmpty())
        plots::draw(plots::strengths(results), request.plot);
    if (!request.spectrum.isEmpty())
        plots::draw(plots::sticks(results), request.spectrum);
    return cli::success;
}
