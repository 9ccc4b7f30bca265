#include "options/emissionOptions.h"

#include "options/OptionReader.h"
#include "text.h"

#include <cmath>

namespace cli {

namespace {

constexpr int transitionCount = 6;
constexpr double nmPerCm = 1.0e7;

/// "0=570-584,1=584-604,...", nm.
QString usualWindows()
{
    QStringList windows;
    for (const EmissionSpectrumOptions::Window &window : EmissionSpectrumOptions().windows)
        windows.append(QStringLiteral("%1=%2-%3")
                           .arg(QString::number(windows.size()),
                                QString::number(nmPerCm / window.highest),
                                QString::number(nmPerCm / window.lowest)));
    return windows.join(QLatin1Char(','));
}

/// Limits of a band in nm or cm^-1, told apart by their size.
bool readWindow(const QString &text, EmissionSpectrumOptions::Window &window)
{
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

/// Reads "0=570-584,2=604-640" over the default windows.
void readWindows(const OptionReader &options, EmissionSpectrumOptions &spectrum)
{
    for (const QString &entry : options.list("windows")) {
        bool isJ = false;
        const int J = entry.section(QLatin1Char('='), 0, 0).trimmed().toInt(&isJ);
        EmissionSpectrumOptions::Window window{};
        if (!isJ || J < 0 || J >= transitionCount ||
            !readWindow(entry.section(QLatin1Char('='), 1), window))
            options.refuse(tr("--windows: \"%1\" is not of the form J=LOW-HIGH with J from 0 to 5 "
                              "and both limits in nm or both in cm^-1, such as 2=604-640")
                               .arg(entry));
        spectrum.windows[static_cast<std::size_t>(J)] = window;
    }
}

} // namespace

QCommandLineOption photonCountsOption()
{
    return {QStringLiteral("photon-counts"),
            tr("Areas or intensities count photons, not emitted power.")};
}

QList<QCommandLineOption> integrationOptions()
{
    return {
        {QStringLiteral("axis"),
         tr("First column of the spectrum: nm, cm-1, or auto (below 5000 it is nm)."), tr("axis"),
         QStringLiteral("auto")},
        {QStringLiteral("windows"),
         tr("Limits of bands in nm or cm^-1, e.g. 0=575-583,1=583-603; others stay."), tr("list"),
         usualWindows()},
        {QStringLiteral("baseline"),
         tr("none: the spectrum is free of background; linear: subtract from each band the "
            "straight line between the two ends of its window, which removes a flat background."),
         tr("kind"), QStringLiteral("none")},
    };
}

EmissionSpectrumOptions readSpectrumOptions(const OptionReader &options)
{
    EmissionSpectrumOptions spectrum;
    const QString axis = options.text("axis");
    const QString baseline = options.text("baseline");
    if (baseline == QLatin1String("linear"))
        spectrum.baseline = EmissionSpectrumOptions::Baseline::Linear;
    else if (baseline != QLatin1String("none"))
        options.refuse(tr("--baseline is none or linear"));
    if (axis == QLatin1String("nm"))
        spectrum.axis = EmissionSpectrumOptions::Axis::Nanometre;
    else if (axis == QLatin1String("cm-1"))
        spectrum.axis = EmissionSpectrumOptions::Axis::Wavenumber;
    else if (axis != QLatin1String("auto"))
        options.refuse(tr("--axis is nm, cm-1 or auto"));
    if (options.isSet("photon-counts"))
        spectrum.signal = EmissionSpectrumOptions::Signal::PhotonCounts;
    readWindows(options, spectrum);
    return spectrum;
}

} // namespace cli
