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

} // namespace

QString omegaExpReport(const OmegaExpResults &results)
{
    return head(results) + barycentres(results) + areas(results) + parameters(results) +
           decay(results);
}
