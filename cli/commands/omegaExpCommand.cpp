#include "Command.h"
#include "commands/commands.h"
#include "options/complexOptions.h"

#include <LanqorEngine/LanqorOmegaExp.h>

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <array>
#include <cmath>

namespace {

constexpr int transitionCount = 6;
using Values = std::array<double, transitionCount>;

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

bool isTransition(int J)
{
    return J >= 0 && J < transitionCount;
}

/// Where areas and barycentres come from.
struct Bands
{
    Values area{};
    Values barycentre{}; ///< cm^-1
    QString source;      ///< named in the report
};

/// Reads the six numbers of an option; false with the reason in @p error.
bool readSix(const QCommandLineParser &parser, const char *option, Values &values, QString &error)
{
    const QStringList entries = parser.value(QLatin1String(option)).split(QLatin1Char(','));
    bool ok = entries.size() == transitionCount;
    for (int J = 0; ok && J < transitionCount; ++J)
        values[static_cast<std::size_t>(J)] = entries.at(J).trimmed().toDouble(&ok);
    if (!ok)
        error = tr("--%1 needs six numbers, those of 7F0 to 7F5, with commas between")
                    .arg(QLatin1String(option));
    return ok;
}

/// Reads lines of J, area and barycentre; false with the reason in @p error.
bool readTable(const QString &fileName, Bands &bands, QString &error)
{
    constexpr qint64 maximumSize = 1 << 16;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        error = QStringLiteral("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    std::array<bool, transitionCount> isGiven{};
    int number = 0;
    for (QString line : QString::fromUtf8(file.read(maximumSize)).split(QLatin1Char('\n'))) {
        ++number;
        line = line.section(QLatin1Char('#'), 0, 0).simplified();
        if (line.isEmpty())
            continue;
        const QStringList fields = line.split(QLatin1Char(' '));
        bool isJ = false;
        bool isArea = false;
        bool isBarycentre = false;
        const int J = fields.at(0).toInt(&isJ);
        const double area = fields.value(1).toDouble(&isArea);
        const double barycentre = fields.value(2).toDouble(&isBarycentre);
        const bool isRow = isJ && isArea && isBarycentre && fields.size() == 3 && isTransition(J);
        const auto level = static_cast<std::size_t>(J);
        if (!isRow || isGiven[level]) {
            error = tr("%1, line %2: each line needs J (0 to 5, each once), area and barycentre "
                       "(cm^-1), such as \"1 1.00 16921\"")
                        .arg(fileName)
                        .arg(number);
            return false;
        }
        isGiven[level] = true;
        bands.area[level] = area;
        bands.barycentre[level] = barycentre;
    }
    bands.source = fileName;
    return true;
}

/// Limits of a band in nm or cm^-1, told apart by their size.
bool readWindow(const QString &text, EmissionSpectrumOptions::Window &window)
{
    constexpr double nmPerCm = 1.0e7;
    constexpr double largestNm = 5000.0;
    const QStringList limits = text.split(QLatin1Char('-'));
    bool isFirst = false;
    bool isLast = false;
    const double first = limits.value(0).toDouble(&isFirst);
    const double last = limits.value(1).toDouble(&isLast);
    if (limits.size() != 2 || !isFirst || !isLast || !(first > 0.0) || !(last > first) ||
        !std::isfinite(last) || (first < largestNm) != (last < largestNm))
        return false;
    if (last < largestNm)
        window = {nmPerCm / last, nmPerCm / first};
    else
        window = {first, last};
    return true;
}

/// Reads "0=570-584,2=604-640" over the default windows; false with the reason in @p error.
bool readWindows(const QString &list, EmissionSpectrumOptions &options, QString &error)
{
    for (const QString &entry : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        bool isJ = false;
        const int J = entry.section(QLatin1Char('='), 0, 0).trimmed().toInt(&isJ);
        EmissionSpectrumOptions::Window window{};
        if (!isJ || !isTransition(J) || !readWindow(entry.section(QLatin1Char('='), 1), window)) {
            error = tr("--windows: \"%1\" is not of the form J=LOW-HIGH with J from 0 to 5 and "
                       "both limits in nm or both in cm^-1, such as 2=604-640")
                        .arg(entry.trimmed());
            return false;
        }
        options.windows[static_cast<std::size_t>(J)] = window;
    }
    return true;
}

bool readSpectrumOptions(const QCommandLineParser &parser, EmissionSpectrumOptions &options,
                         QString &error)
{
    const QString axis = parser.value(QStringLiteral("axis"));
    if (axis == QLatin1String("nm"))
        options.axis = EmissionSpectrumOptions::Axis::Nanometre;
    else if (axis == QLatin1String("cm-1"))
        options.axis = EmissionSpectrumOptions::Axis::Wavenumber;
    else if (axis != QLatin1String("auto"))
        error = tr("--axis is nm, cm-1 or auto");
    const QString baseline = parser.value(QStringLiteral("baseline"));
    if (baseline == QLatin1String("linear"))
        options.baseline = EmissionSpectrumOptions::Baseline::Linear;
    else if (baseline != QLatin1String("none"))
        error = tr("--baseline is none or linear");
    if (parser.isSet(QStringLiteral("photon-counts")))
        options.signal = EmissionSpectrumOptions::Signal::PhotonCounts;
    return error.isEmpty() && readWindows(parser.value(QStringLiteral("windows")), options, error);
}

/// Areas and barycentres from the command line or from a table.
bool readBands(const QCommandLineParser &parser, Bands &bands, QString &error)
{
    if (!parser.positionalArguments().isEmpty()) {
        if (!readTable(parser.positionalArguments().first(), bands, error))
            return false;
    } else if (!readSix(parser, "areas", bands.area, error) ||
               !readSix(parser, "barycentres", bands.barycentre, error)) {
        return false;
    } else {
        bands.source = tr("(areas and barycentres of the command line)");
    }
    if (parser.isSet(QStringLiteral("photon-counts"))) {
        for (std::size_t J = 0; J < bands.area.size(); ++J)
            bands.area[J] *= bands.barycentre[J];
    }
    return true;
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
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
           "its wavenumber. A wrong choice shifts the results by 5 to 15 %.\n"
           "Intensities are taken per unit of the first column. If a program replaced nm by\n"
           "cm^-1 without rescaling the intensities by lambda^2, give the column in nm.\n\n"
           "Example:\n"
           "  lanqor omega-exp --spectrum emission.txt --n 1.5 --lifetime 0.42 --photon-counts"));
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("Table of areas and barycentres"),
                                 QStringLiteral("[FILE]"));
    parser.addOptions({
        {QStringLiteral("spectrum"), tr("Measured spectrum of two columns."), tr("file")},
        {QStringLiteral("areas"),
         tr("Areas of 5D0 -> 7F0 .. 7F5, any one unit, e.g. "
            "0.1,1,8.5,0.2,1.9,0."),
         tr("list")},
        {QStringLiteral("barycentres"),
         tr("Barycentres of 5D0 -> 7F0 .. 7F5, cm^-1, e.g. 17240,16910,16290,15350,14380,0."),
         tr("list")},
        {QStringLiteral("photon-counts"),
         tr("Areas or intensities count photons, not emitted power.")},
        {QStringLiteral("n"), tr("Refractive index of the medium."), tr("index"),
         QStringLiteral("1.5")},
        {QStringLiteral("lifetime"), tr("Measured lifetime of 5D0, ms."), tr("ms")},
        {QStringLiteral("axis"),
         tr("First column of the spectrum: nm, cm-1, or auto (below 5000 it is nm)."), tr("axis"),
         QStringLiteral("auto")},
        {QStringLiteral("windows"),
         tr("Limits of bands in nm or cm^-1, e.g. 0=575-583,1=583-603. Unless given, in nm: "
            "0=570-584, 1=584-604, 2=604-640, 3=640-670, 4=670-725, 5=725-780."),
         tr("list")},
        {QStringLiteral("baseline"),
         tr("none: the spectrum is free of background; linear: subtract from each band the "
            "straight line between the two ends of its window."),
         tr("kind"), QStringLiteral("none")},
        {QStringLiteral("report"), tr("Write the report to this file as well."), tr("file")},
    });
}

/// Reads --lifetime, ms, 0 without it; false with the reason in @p error.
bool readLifeTime(const QCommandLineParser &parser, double &lifeTime, QString &error)
{
    bool isNumber = true;
    const QString text = parser.value(QStringLiteral("lifetime"));
    lifeTime = text.isEmpty() ? 0.0 : text.toDouble(&isNumber);
    if (isNumber && lifeTime >= 0.0 && std::isfinite(lifeTime))
        return true;
    error = tr("--lifetime needs a lifetime in ms");
    return false;
}

/// Hands areas and barycentres to the calculation; an exit status other than success after a
/// message.
int readEmission(const QCommandLineParser &parser, LanqorOmegaExp &calculation)
{
    QString error;
    if (parser.isSet(QStringLiteral("spectrum"))) {
        EmissionSpectrumOptions options;
        if (!readSpectrumOptions(parser, options, error))
            return cli::fail(error, cli::usageError);
        return calculation.readSpectrum(parser.value(QStringLiteral("spectrum")), options)
                   ? cli::success
                   : cli::fail(calculation.getLastError());
    }
    Bands bands;
    if (!readBands(parser, bands, error))
        return cli::fail(error,
                         parser.isSet(QStringLiteral("areas")) ? cli::usageError : cli::failure);
    const Values &S = bands.area;
    const Values &sigma = bands.barycentre;
    calculation.setAreaOfTransition(S[0], S[1], S[2], S[3], S[4], S[5]);
    calculation.setBarycenterOfEnergy(sigma[0], sigma[1], sigma[2], sigma[3], sigma[4], sigma[5]);
    calculation.setFileName(bands.source);
    return cli::success;
}

} // namespace

int omegaExpCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    cli::parse(parser, "omega-exp", arguments);
    if (int(parser.isSet(QStringLiteral("spectrum"))) + int(parser.isSet(QStringLiteral("areas"))) +
            parser.positionalArguments().size() !=
        1)
        return cli::fail(tr("omega-exp needs either --spectrum FILE, or a table FILE, or --areas "
                            "with --barycentres; see \"lanqor omega-exp --help\""),
                         cli::usageError);
    for (const char *option : {"axis", "windows", "baseline"}) {
        if (parser.isSet(QLatin1String(option)) && !parser.isSet(QStringLiteral("spectrum")))
            return cli::fail(tr("--%1 belongs to --spectrum").arg(QLatin1String(option)),
                             cli::usageError);
    }
    double index = 0.0;
    double lifeTime = 0.0;
    QString error;
    if (!cli::readRefractiveIndex(parser, index, error) || !readLifeTime(parser, lifeTime, error))
        return cli::fail(error, cli::usageError);

    LanqorOmegaExp calculation(nullptr, index);
    cli::showMessages(calculation);
    const int status = readEmission(parser, calculation);
    if (status != cli::success)
        return status;
    calculation.setLifeTime(lifeTime);
    if (!calculation.calcOmegaExp())
        return cli::fail(calculation.getLastError());
    const QString report = calculation.createOutputFile(parser.value(QStringLiteral("report")));
    if (report.isEmpty())
        return cli::fail(calculation.getLastError());
    cli::print(report);
    return cli::success;
}
