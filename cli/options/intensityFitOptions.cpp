#include "options/intensityFitOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/plausibility.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>

namespace cli {

namespace {

double readTarget(const OptionReader &reader, const char *option)
{
    const double target = reader.number(
        option, [](double omega) { return omega >= 0.0 && omega < 1.0e6; },
        tr("the measured intensity parameter in 1e-20 cm^2"));
    const QString doubt = doubtOfOmega(option, target);
    if (!doubt.isEmpty())
        reader.refuse(doubt);
    return target;
}

/// Reads the geometry and counts the coordinated atoms, unless their number is given.
void readGeometry(const OptionReader &reader, IntensityFitOptions &options)
{
    options.geometry = std::make_unique<LanqorInputData>(nullptr, options.fileName);
    showWarnings(*options.geometry);
    LanqorInputData &geometry = *options.geometry;
    geometry.setKeepFileOpen(true);
    readStructure(geometry);
    if (!reader.isSet("coordination")) {
        options.coordNumber = geometry.getCoordNumber();
        checkSphere(geometry);
    }
    requireEuropium(geometry);
    warnOfStructure(geometry);
}

} // namespace

void addIntensityFitOptions(OptionReader &reader)
{
    reader.addArgument(QStringLiteral("FILE"), tr("the complex"));
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
    reader.addResultOptions();
}

IntensityFitOptions readIntensityFitOptions(const OptionReader &reader)
{
    constexpr int maximumCoordination = 100;
    constexpr int maximumSteps = 100000000;
    constexpr int maximumStarts = 1000;
    IntensityFitOptions options;
    options.fileName =
        reader
            .files(1, tr("a fit needs one file, that of the complex; see \"lanqor %1 --help\"")
                          .arg(reader.command()))
            .first();
    options.report = reader.text("report");
    options.omega2 = readTarget(reader, "omega2");
    options.omega4 = readTarget(reader, "omega4");
    options.refractiveIndex = readRefractiveIndex(reader);
    options.stepsPerCycle = reader.count("points", maximumSteps);
    options.starts = reader.count("starts", maximumStarts);
    options.sections = sectionsOf(reader.text("print"));
    if (reader.isSet("coordination"))
        options.coordNumber = reader.count("coordination", maximumCoordination);
    readGeometry(reader, options);
    return options;
}

} // namespace cli
