#include "intensity/experimentalIntensities_p.h"

#include "core/physicalConstants_p.h"
#include "intensity/radiativeRates_p.h"
#include "overlap/europium_p.h"

namespace experimentalIntensities {

namespace {

constexpr double cube(double x)
{
    return x * x * x;
}

/// Rate of 5D0 -> 7F1 per n^3 sigma^3, s^-1 cm^3: C. de Mello Donega, S. Alves, G. F. de Sa,
/// J. Alloys Compd. 250, 422 (1997). The theoretical rate rests on the line strength instead and
/// is 3 % smaller; experimental values are always calibrated by this one.
constexpr double magneticDipoleConstant = 3.0999999999999997e-12;

double omegaFromRate(double rate, double sigma, double chi, double squaredU)
{
    if (rate == 0.0) // a band that is not there has no barycentre either
        return 0.0;
    constexpr double squaredCharge = lanqor::elementaryChargeEsu * lanqor::elementaryChargeEsu;
    const double angularFrequency = 2.0 * lanqor::pi * lanqor::lightSpeed * sigma;
    return lanqor::threeHbar * cube(lanqor::lightSpeed) * rate /
           (4.0 * squaredCharge * cube(angularFrequency) * chi * squaredU);
}

} // namespace

Results calculate(const Emission &emission, double n)
{
    const ByLevel &S = emission.area;
    const ByLevel &sigma = emission.barycenter;
    Results results;
    results.rate[1] = magneticDipoleConstant * cube(n) * cube(sigma[1]);
    for (const std::size_t J : {0U, 2U, 3U, 4U, 5U}) {
        if (S[J] != 0.0)
            results.rate[J] = results.rate[1] * (S[J] / S[1]) * (sigma[1] / sigma[J]);
    }
    const double chi = radiativeRates::localField(n);
    results.omega2 = omegaFromRate(results.rate[2], sigma[2], chi, europium::emissions[0].U2);
    results.omega4 = omegaFromRate(results.rate[4], sigma[4], chi, europium::emissions[1].U2);
    // The fixed numerator, source not known, means nothing for areas in another unit; kept, since
    // stored results rest on it.
    results.r02 = 178305.0 / S[2];
    results.arad = results.rate[1] + results.rate[0] + results.rate[2] + results.rate[3] +
                   results.rate[4] + results.rate[5];
    return results;
}

Decay decay(double arad, double lifeTime)
{
    constexpr double secondsPerMillisecond = 0.001;
    const double totalRate = 1.0 / (lifeTime * secondsPerMillisecond);
    Decay result;
    result.anrad = totalRate - arad;
    result.efficiency = 100.0 * arad / (arad + result.anrad);
    return result;
}

} // namespace experimentalIntensities
