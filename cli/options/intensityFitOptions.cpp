#include "options/intensityFitOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

#include <cmath>

namespace cli {

namespace {

double readTarget(const OptionReader &reader, const char *option)
{
    return reader.number(
        option, [](double omega) { return omega >= 0.0 && omega < 1.0e6; },
        tr("the measured intensity parameter in 1e-20 cm^2"));
}

/// Counts the coordinated atoms, unless their number is given.
void readCoordNumber(const OptionReader &reader, IntensityFitOptions &options)
{
    LanqorInputData geometry(nullptr, options.fileName);
    if (!geometry.readMopacOutFile(false) || !geometry.createSphericalCoordinate())
        failOf(geometry);
    if (reader.isSet("coordination"))
        return;
    options.coordNumber = geometry.getCoordNumber();
    checkSphere(geometry, options.fileName);
}

} // namespace

void addIntensityFitOptions(OptionReader &reader)
{
    reader.addArgument(QStringLiteral("FILE"), tr("MOPAC output of the complex"));
    reader.addOptions({
        {QStringLiteral("omega2"), tr("Measured Omega(2), 1e-20 cm^2."), tr("value")},
        {QStringLiteral("omega4"), tr("Measured Omega(4), 1e-20 cm^2."), tr("value")},
        refractiveIndexOption(tr("Refractive index of the medium, for the radiative rates.")),
        {QStringLiteral("coordination"),
         tr("Number N of coordinated atoms, which are atoms 2 to N+1; counted by bonding "
            "distances unless given."),
         tr("N")},
        {QStringLiteral("points"), tr("Points tried in each of the 15 annealing cycles."),
         tr("number"), QStringLiteral("15000")},
        {QStringLiteral("starts"),
         tr("Repeat the fit from this many starting points, in as many threads as there are "
            "processors, and keep the best. The first lies in the middle of all ranges; in start "
            "k, parameter j lies at the fraction 1/2 + (k-1) sqrt(p) of its range without the "
            "whole part, p being the prime number j (2, 3, 5, ...)."),
         tr("K"), QStringLiteral("1")},
        {QStringLiteral("print"),
         tr("Sections of the report, separated by commas: all, %1.").arg(sectionNames()),
         tr("sections"), mainSections()},
        {QStringLiteral("report"),
         tr("Write the report of the best point to this file instead of standard output."),
         tr("file")},
    });
}

IntensityFitOptions readIntensityFitOptions(const OptionReader &reader)
{
    constexpr int maximumCoordination = 100;
    constexpr int maximumSteps = 100000000;
    constexpr int maximumStarts = 1000;
    IntensityFitOptions options;
    options.fileName = reader.files(1, tr("a fit needs one MOPAC output")).first();
    options.report = reader.text("report");
    options.omega2 = readTarget(reader, "omega2");
    options.omega4 = readTarget(reader, "omega4");
    options.refractiveIndex = readRefractiveIndex(reader);
    options.stepsPerCycle = reader.count("points", maximumSteps);
    options.starts = reader.count("starts", maximumStarts);
    options.sections = sectionsOf(reader.text("print"));
    if (reader.isSet("coordination"))
        options.coordNumber = reader.count("coordination", maximumCoordination);
    readCoordNumber(reader, options);
    return options;
}

QString fittedOmegaTable(const IntensityFitOptions &options,
                         const std::function<double(int)> &fitted, const QString &advice)
{
    const auto number = [](double value) {
        return QString::number(value, 'f', 2).rightJustified(12);
    };
    QString text = tr("Intensity parameters / 1e-20 cm^2\n\n"
                      "  lambda    measured      fitted\n");
    double largestGap = 0.0;
    for (const int lambda : {2, 4, 6}) {
        const double value = fitted(lambda) / omegaUnitCm2;
        const double target = lambda == 2 ? options.omega2 : options.omega4;
        if (lambda != 6)
            largestGap = std::max(largestGap, std::abs(value - target));
        text += QString::number(lambda).rightJustified(8) +
                (lambda == 6 ? QString(11, QLatin1Char(' ')) + QLatin1Char('-') : number(target)) +
                number(value) + QLatin1Char('\n');
    }
    constexpr double printedHalf = 0.005;
    if (largestGap > printedHalf)
        note(tr("lanqor: the targets were not reached: the best point found is off by %1e-20 "
                "cm^2. %2")
                 .arg(largestGap, 0, 'f', 2)
                 .arg(advice));
    return text + QLatin1Char('\n');
}

void printFit(const IntensityFitOptions &options, int status, const QString &summary,
              const QString &report)
{
    print(summary);
    if (options.report.isEmpty() || status == failure)
        print(QLatin1Char('\n') + report);
}

QString responseLine(double response, qint64 points)
{
    return tr("Response %1 (1e-20 cm^2)^2, best of %2 points\n")
        .arg(response, 0, 'g', 6)
        .arg(points);
}

} // namespace cli
