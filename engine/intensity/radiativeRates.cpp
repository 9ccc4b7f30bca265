#include "intensity/radiativeRates_p.h"

#include "overlap/europium_p.h"

namespace radiativeRates {

namespace {

/// Line strength of 5D0 -> 7F1, esu^2 cm^2; source not known.
constexpr double magneticDipoleStrength = 9.6e-42;

/// 64 pi^4 sigma^3 / (3h): rate per unit of line strength and local field.
double ratePerStrength(double sigma)
{
    constexpr double pi4 = lanqor::pi * lanqor::pi * lanqor::pi * lanqor::pi;
    return 64.0 * pi4 * sigma * sigma * sigma / lanqor::threePlanck;
}

} // namespace

double localField(double n)
{
    const double term = n * n + 2.0;
    return n * term * term / 9.0;
}

double constArad(int lambda, double n)
{
    for (const europium::Emission &emission : europium::emissions)
        if (emission.J == lambda)
            return ratePerStrength(emission.sigma) * lanqor::elementaryChargeSquared *
                   localField(n) * emission.U2;
    return 0.0;
}

double magneticDipoleRate(double n)
{
    return ratePerStrength(europium::magneticDipoleSigma) * n * n * n * magneticDipoleStrength;
}

RadiativeRates calcRates(const ByRank &omega, double n)
{
    RadiativeRates rates;
    rates.md = magneticDipoleRate(n);
    rates.ed02 = constArad(2, n) * omega[2];
    rates.ed04 = constArad(4, n) * omega[4];
    rates.ed06 = constArad(6, n) * omega[6];
    return rates;
}

} // namespace radiativeRates
