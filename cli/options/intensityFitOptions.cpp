#include "options/intensityFitOptions.h"

#include "Command.h"
#include "options/complexOptions.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cmath>

namespace cli {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

bool readTarget(const QCommandLineParser &parser, const QString &option, double &value,
                QString &error)
{
    bool ok = false;
    value = parser.value(option).toDouble(&ok);
    if (ok && value >= 0.0 && value < 1.0e6)
        return true;
    error = tr("--%1 needs the measured intensity parameter in 1e-20 cm^2").arg(option);
    return false;
}

/// Counts the coordinated atoms, unless their number is given.
bool readCoordNumber(const QCommandLineParser &parser, IntensityFitOptions &options, QString &error)
{
    LanqorInputData geometry(nullptr, options.fileName);
    if (!geometry.readMopacOutFile(false) || !geometry.createSphericalCoordinate()) {
        error = geometry.getLastError();
        return false;
    }
    if (parser.isSet(QStringLiteral("coordination")))
        return true;
    options.coordNumber = geometry.getCoordNumber();
    error = sphereError(geometry, options.fileName);
    return error.isEmpty();
}

} // namespace

void addIntensityFitOptions(QCommandLineParser &parser)
{
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("MOPAC output of the complex"));
    parser.addOptions({
        {QStringLiteral("omega2"), tr("Measured Omega(2), 1e-20 cm^2."), tr("value")},
        {QStringLiteral("omega4"), tr("Measured Omega(4), 1e-20 cm^2."), tr("value")},
        {QStringLiteral("n"), tr("Refractive index of the medium, for the radiative rates."),
         tr("index"), QStringLiteral("1.5")},
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
         tr("sections"),
         QStringLiteral("coordinates,charge-factors,omega,omega-dc,omega-ed,rates")},
        {QStringLiteral("report"),
         tr("Write the report of the best point to this file instead of standard output."),
         tr("file")},
    });
}

int readIntensityFitOptions(const QCommandLineParser &parser, IntensityFitOptions &options)
{
    constexpr int maximumCoordination = 100;
    constexpr int maximumSteps = 100000000;
    constexpr int maximumStarts = 1000;
    QString error;
    if (parser.positionalArguments().size() != 1)
        return fail(tr("a fit needs one MOPAC output"), usageError);
    options.fileName = parser.positionalArguments().first();
    options.report = parser.value(QStringLiteral("report"));
    if (!readTarget(parser, QStringLiteral("omega2"), options.omega2, error) ||
        !readTarget(parser, QStringLiteral("omega4"), options.omega4, error) ||
        !readRefractiveIndex(parser, options.refractiveIndex, error) ||
        !readCount(parser, QStringLiteral("points"), maximumSteps, options.stepsPerCycle, error) ||
        !readCount(parser, QStringLiteral("starts"), maximumStarts, options.starts, error) ||
        !chooseSections(parser.value(QStringLiteral("print")), options.sections, error))
        return fail(error, usageError);
    if (parser.isSet(QStringLiteral("coordination")) &&
        !readCount(parser, QStringLiteral("coordination"), maximumCoordination, options.coordNumber,
                   error))
        return fail(error, usageError);
    return readCoordNumber(parser, options, error) ? success : fail(error);
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
