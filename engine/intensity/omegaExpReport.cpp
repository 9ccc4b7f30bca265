#include "intensity/omegaExpReport_p.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaExpResults.h>

#include <algorithm>
#include <cmath>

using reportText::fixed;

namespace {

QString rule()
{
    return QStringLiteral("---------------------------------------------------\n");
}

QString head(const OmegaExpResults &results)
{
    return LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
           QStringLiteral(" The data shown below were calculated from the file: \n    ") +
           results.fileName + QStringLiteral("\n\n") +
           QStringLiteral(" Refractive Index of the Medium Used: ") +
           fixed(results.refractiveIndex, 4) + QStringLiteral("\n\n");
}

QString barycentres(const OmegaExpResults &results)
{
    QString text = rule();
    int J = 0;
    for (const OmegaExpResults::Transition &transition : results.transitions)
        text += QStringLiteral("    Sigma(5D0 -> 7F%1) = ").arg(J++) +
                fixed(transition.barycenter, 2, 10) + QStringLiteral(" cm^-1\n");
    return text;
}

/// Decimals that show areas of any unit to about six figures.
int areaDecimals(double area)
{
    constexpr int most = 30;
    return std::clamp(5 - static_cast<int>(std::floor(std::log10(area))), 2, most);
}

QString areas(const OmegaExpResults &results)
{
    const int decimals = areaDecimals(results.transitions[1].area);
    QString text = rule();
    int J = 0;
    for (const OmegaExpResults::Transition &transition : results.transitions)
        text += QStringLiteral("    5D0 -> 7F%1 = ").arg(J++) +
                fixed(transition.area, decimals, 18) + QLatin1Char('\n');
    return text;
}

QString parameters(const OmegaExpResults &results)
{
    return rule() + QStringLiteral("    Intensity Ratio I(5D0 -> 7F2) / I(5D0 -> 7F1) = ") +
           fixed(results.transitions[2].area / results.transitions[1].area, 4) +
           QStringLiteral("\n\n    omega(2) =") +
           fixed(results.omega2 / lanqor::omegaUnitCm2, 4, 10) +
           QStringLiteral("e-20 cm^2 \n    omega(4) =") +
           fixed(results.omega4 / lanqor::omegaUnitCm2, 4, 10) +
           QStringLiteral("e-20 cm^2 \n\n    Arad = ") + fixed(results.arad, 2) +
           QStringLiteral(" s^-1\n\n");
}

QString decay(const OmegaExpResults &results)
{
    const QString heading = rule() +
                            QStringLiteral("Experimental Lifetime and Quantum Efficiency\n") +
                            rule() + QStringLiteral("    Experimental Lifetime Used = ");
    if (results.lifeTime == 0.0)
        return heading + QStringLiteral("not given\n\n"
                                        "    Anrad = not given\n\n"
                                        "    Quantum Efficiency = not given\n");
    QString text = heading + fixed(results.lifeTime, 4) + QStringLiteral(" ms\n\n    Anrad = ") +
                   fixed(results.anrad, 2) + QStringLiteral(" s^-1\n\n    Quantum Efficiency = ") +
                   fixed(results.quantumEfficiency, 2) + QStringLiteral(" %\n");
    if (results.anrad < 0.0)
        text += QStringLiteral("\n    Arad exceeds 1/lifetime: areas and lifetime do not fit each "
                               "other.\n");
    return text;
}

QString titled(const char *title)
{
    return QLatin1Char('\n') + rule() + QLatin1String(title) + QLatin1Char('\n') + rule();
}

QString rates(const OmegaExpResults &results)
{
    QString text = titled("Radiative Rates and Branching Ratios");
    for (std::size_t J = 0; J < results.transitions.size(); ++J)
        text += QStringLiteral("    A(5D0 -> 7F%1) = ").arg(J) +
                fixed(results.transitions[J].rate, 2, 10) + QStringLiteral(" s^-1") +
                fixed(results.branchingRatios[J], 2, 10) + QStringLiteral(" %\n");
    return text + QStringLiteral("\n    Radiative Lifetime 1/Arad = ") +
           fixed(results.radiativeLifeTime, 4) + QStringLiteral(" ms\n");
}

QString windows(const OmegaExpResults::Source &source)
{
    constexpr double percent = 100.0;
    QString text = QStringLiteral("    Windows               nm            cm^-1"
                                  "     Signal at Edges (% of Highest Peak)\n");
    for (std::size_t J = 0; J < source.options.windows.size(); ++J) {
        const EmissionSpectrumOptions::Window &window = source.options.windows[J];
        text += QStringLiteral("    5D0 -> 7F%1").arg(J) +
                fixed(lanqor::nmPerCm / window.highest, 1, 9) + QStringLiteral(" -") +
                fixed(lanqor::nmPerCm / window.lowest, 1, 6) + fixed(window.lowest, 0, 9) +
                QStringLiteral(" -") + fixed(window.highest, 0, 6) +
                fixed(percent * source.edgeSignals[J], 2, 12) + QLatin1Char('\n');
    }
    return text;
}

/// What was measured and how it was turned into the areas above.
QString source(const OmegaExpResults &results)
{
    const OmegaExpResults::Source &source = results.source;
    const bool isPower = source.options.signal == EmissionSpectrumOptions::Signal::EmittedPower;
    QString text = titled("Emission as Given");
    if (!source.isSpectrum) {
        text +=
            QStringLiteral("    Areas: ") +
            (isPower ? QStringLiteral("emitted power\n")
                     : QStringLiteral("photon counts, multiplied by their barycentres above\n"));
        const int decimals = areaDecimals(source.givenAreas[1]);
        for (std::size_t J = 0; J < source.givenAreas.size(); ++J)
            text += QStringLiteral("    5D0 -> 7F%1 as given = ").arg(J) +
                    fixed(source.givenAreas[J], decimals, 18) + QLatin1Char('\n');
        return text;
    }
    const bool isWavelength = source.options.axis == EmissionSpectrumOptions::Axis::Nanometre;
    const bool isLinear = source.options.baseline == EmissionSpectrumOptions::Baseline::Linear;
    return text +
           (isWavelength ? QStringLiteral("    Axis: wavelength, nm\n")
                         : QStringLiteral("    Axis: wavenumber, cm^-1\n")) +
           (isPower ? QStringLiteral("    Signal: emitted power\n")
                    : QStringLiteral("    Signal: photon counts, each point multiplied by its "
                                     "wavenumber\n")) +
           (isLinear ? QStringLiteral("    Baseline: straight line between the ends of each "
                                      "window\n")
                     : QStringLiteral("    Baseline: none\n")) +
           windows(source);
}

} // namespace

QString omegaExpReport(const OmegaExpResults &results)
{
    return head(results) + barycentres(results) + areas(results) + parameters(results) +
           decay(results) + rates(results) + source(results);
}
