#include "intensity/omegaExpReport_p.h"

#include "LanqorOmegaExp.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "intensity/experimentalIntensities_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>

using experimentalIntensities::transitionCount;
using reportText::fixed;

namespace {

QString rule()
{
    return QStringLiteral("---------------------------------------------------\n");
}

QString head(const LanqorOmegaExp &calculation)
{
    return LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
           QStringLiteral(" The data shown below were calculated from the file: \n    ") +
           calculation.getFileName() + QStringLiteral("\n\n") +
           QStringLiteral(" Refractive Index of the Medium Used: ") +
           fixed(calculation.getRefractiveIndex(), 4) + QStringLiteral("\n\n");
}

QString barycentres(const LanqorOmegaExp &calculation)
{
    QString text = rule();
    for (int J = 0; J < transitionCount; ++J)
        text += QStringLiteral("    Sigma(5D0 -> 7F%1) = ").arg(J) +
                fixed(calculation.getBarycenterOfEnergy(J), 2, 10) + QStringLiteral(" cm^-1\n");
    return text;
}

/// Decimals that show areas of any unit to about six figures.
int areaDecimals(double area)
{
    constexpr int most = 30;
    return std::clamp(5 - static_cast<int>(std::floor(std::log10(area))), 2, most);
}

QString areas(const LanqorOmegaExp &calculation)
{
    const int decimals = areaDecimals(calculation.getAreaOfTransition(1));
    QString text = rule();
    for (int J = 0; J < transitionCount; ++J)
        text += (J > 0 ? QStringLiteral("\n") : QString()) +
                QStringLiteral("    5D0 -> 7F%1 = ").arg(J) +
                fixed(calculation.getAreaOfTransition(J), decimals, 18);
    return text + QStringLiteral("\n");
}

QString parameters(const LanqorOmegaExp &calculation)
{
    return rule() + QStringLiteral("    Intensity Ratio I(5D0 -> 7F2) / I(5D0 -> 7F1) = ") +
           fixed(calculation.getAreaOfTransition(2) / calculation.getAreaOfTransition(1), 4) +
           QStringLiteral("\n\n    omega(2) =") +
           fixed(calculation.getOmega2Exp() / lanqor::omegaUnitCm2, 4, 10) +
           QStringLiteral("e-20 cm^2 \n    omega(4) =") +
           fixed(calculation.getOmega4Exp() / lanqor::omegaUnitCm2, 4, 10) +
           QStringLiteral("e-20 cm^2 \n\n    Arad = ") + fixed(calculation.getAradExp(), 2) +
           QStringLiteral(" s^-1\n\n");
}

QString decay(const LanqorOmegaExp &calculation)
{
    const QString heading = rule() +
                            QStringLiteral("Experimental Lifetime and Quantum Efficiency\n") +
                            rule() + QStringLiteral("    Experimental Lifetime Used = ");
    if (calculation.getLifeTime() == 0.0)
        return heading + QStringLiteral("not given\n\n"
                                        "    Anrad = not given\n\n"
                                        "    Quantum Efficiency = not given\n");
    const auto result =
        experimentalIntensities::decay(calculation.getAradExp(), calculation.getLifeTime());
    QString text = heading + fixed(calculation.getLifeTime(), 4) +
                   QStringLiteral(" ms\n\n    Anrad = ") + fixed(result.anrad, 2) +
                   QStringLiteral(" s^-1\n\n    Quantum Efficiency = ") +
                   fixed(result.efficiency, 2) + QStringLiteral(" %\n");
    if (result.anrad < 0.0)
        text += QStringLiteral("\n    Arad exceeds 1/lifetime: areas and lifetime do not fit each "
                               "other.\n");
    return text;
}

} // namespace

QString omegaExpReport(const LanqorOmegaExp &calculation)
{
    return head(calculation) + barycentres(calculation) + areas(calculation) +
           parameters(calculation) + decay(calculation);
}
