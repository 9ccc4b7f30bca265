#include "options/intensityFitOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/plausibility.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

namespace cli {

namespace {

/// Reads "20.5" or "20.5+-0.6"; the deviation is 0 where none is told.
double readTarget(const OptionReader &reader, const char *option, double &deviation)
{
    const QString text = reader.text(option);
    const int sign = text.indexOf(QStringLiteral("+-"));
    bool isNumber = false;
    const double omega = text.left(sign).toDouble(&isNumber);
    bool isDeviation = true;
    deviation = sign < 0 ? 0.0 : text.mid(sign + 2).toDouble(&isDeviation);
    if (!isNumber || !(omega >= 0.0 && omega < 1.0e6) || !isDeviation ||
        (sign >= 0 && !(deviation > 0.0 && deviation < 1.0e6)))
        reader.refuse(tr("--%1 needs the measured intensity parameter in 1e-20 cm^2, with its "
                         "standard deviation or without: 20.5+-0.6")
                          .arg(QLatin1String(option)));
    const QString doubt = doubtOfOmega(option, omega);
    if (!doubt.isEmpty())
        reader.refuse(doubt);
    return omega;
}

void readWeights(const OptionReader &reader, IntensityFitOptions &options)
{
    if (!reader.isSet("weights"))
        return;
    if (!options.weights.isEmpty())
        reader.refuse(tr("--weights: the standard deviations of --omega2 and --omega4 weigh these "
                         "already"));
    options.weights = reader.numbers("weights");
    if (options.weights.size() != 2 || !(options.weights.at(0) >= 0.0) ||
        !(options.weights.at(1) >= 0.0) || !(options.weights.at(0) + options.weights.at(1) > 0.0))
        reader.refuse(tr("--weights %1: two numbers are needed, not negative and not both 0, such "
                         "as 1,2")
                          .arg(reader.text("weights")));
}

QString readChoice(const OptionReader &reader)
{
    const QString choice = reader.text("choose");
    bool isNumber = false;
    if (choice != QLatin1String("best") && choice != QLatin1String("central") &&
        (choice.toInt(&isNumber) < 1 || !isNumber))
        reader.refuse(tr("--choose %1: best, central or the number of a solution in the file of "
                         "--solutions")
                          .arg(choice));
    return choice;
}

} // namespace

QList<QCommandLineOption> intensityTargetOptions()
{
    return {{QStringLiteral("omega2"),
             tr("Measured Omega(2), 1e-20 cm^2, and its standard deviation if that is known: "
                "20.5+-0.6."),
             tr("value")},
            {QStringLiteral("omega4"), tr("Measured Omega(4), likewise."), tr("value")}};
}

void readIntensityTargets(const OptionReader &reader, IntensityFitOptions &options)
{
    options.omega2 = readTarget(reader, "omega2", options.deviation2);
    options.omega4 = readTarget(reader, "omega4", options.deviation4);
    const bool areTold = options.deviation2 > 0.0;
    if (areTold != (options.deviation4 > 0.0))
        reader.refuse(tr("--omega2 and --omega4 need a standard deviation both, or none: it weighs "
                         "them against each other"));
    if (areTold)
        options.weights = {1.0 / (options.deviation2 * options.deviation2),
                           1.0 / (options.deviation4 * options.deviation4)};
}

void addIntensityFitOptions(OptionReader &reader)
{
    reader.addArgument(QStringLiteral("FILE"), tr("the complex"), QString(), structureSuffixes());
    reader.addOptions(intensityTargetOptions());
    reader.addOptions({
        {QStringLiteral("weights"),
         tr("Weights of the squared differences of Omega(2) and Omega(4), e.g. 1,2."), tr("w2,w4")},
        refractiveIndexOption(tr("Refractive index of the medium, for the radiative rates.")),
        {QStringLiteral("coordination"),
         tr("Number N of coordinated atoms, which are atoms 2 to N+1; counted by bonding "
            "distances unless given."),
         tr("N")},
        {QStringLiteral("print"),
         tr("Sections of the report, separated by commas: all, %1.").arg(sectionNames()),
         tr("sections"), mainSections()},
        {QStringLiteral("report"),
         tr("Write the report of the best point to this file instead of standard output."),
         tr("file")},
    });
    reader.addOptions({
        ligandsOption(),
        {QStringLiteral("excited"),
         tr("Output of ORCA, Gaussian or ZINDO with the excited states of the ligands: the ranges "
            "of transfer rates, efficiency and yield as \"lanqor yield\" has them by default."),
         tr("file")},
        {QStringLiteral("lifetime"),
         tr("Measured lifetime of 5D0 for these, ms; estimated unless given."), tr("ms")},
        {QStringLiteral("solutions"),
         tr("Write a sample of the equally good solutions to this file, as CSV."), tr("file")},
        {QStringLiteral("choose"),
         tr("The solution that is reported: best; central, the nearest to the middles of the "
            "ranges; or its number."),
         tr("which"), QStringLiteral("best")},
    });
    addFitOptions(reader, intensityFitStarts);
    reader.addResultOptions();
}

IntensityFitOptions readIntensityFitOptions(const OptionReader &reader)
{
    IntensityFitOptions options;
    options.fileName =
        reader
            .files(1, tr("a fit needs one file, that of the complex; see \"lanqor %1 --help\"")
                          .arg(reader.command()))
            .first();
    options.report = reader.text("report");
    readIntensityTargets(reader, options);
    readWeights(reader, options);
    options.solutions = reader.outputFile("solutions");
    options.choice = readChoice(reader);
    options.ligands = readLigands(reader);
    options.excited = reader.text("excited");
    if (reader.isSet("lifetime"))
        options.lifetimeMs = reader.number(
            "lifetime", [](double ms) { return ms > 0.0 && ms < 1.0e6; },
            tr("the measured lifetime in ms"));
    options.fit = readFitOptions(reader, intensityFitStarts);
    options.refractiveIndex = readRefractiveIndex(reader);
    options.sections = sectionsOf(reader.text("print"));
    options.geometry = std::make_unique<LanqorInputData>(nullptr, options.fileName);
    showWarnings(*options.geometry);
    options.geometry->setKeepFileOpen(true);
    options.coordNumber = readSphere(reader, *options.geometry);
    return options;
}

} // namespace cli
