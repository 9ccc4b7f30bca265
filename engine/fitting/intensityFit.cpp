#include "fitting/intensityFit_p.h"

#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorOmega.h>

#include <cmath>

namespace intensityFit {

double squaredDeviation(double expected, double calculated)
{
    const double difference = (expected - calculated) * 1.0e20;
    return difference * difference;
}

std::array<double, 7> omegaOf(const LanqorOmega &omega)
{
    std::array<double, 7> values{};
    for (const int lambda : {2, 4, 6})
        values[static_cast<std::size_t>(lambda)] = omega.getOmega(lambda);
    return values;
}

double startingFraction(int number, int index)
{
    int prime = 1;
    for (int count = -1; count < index;) {
        ++prime;
        bool isPrime = true;
        for (int divisor = 2; divisor * divisor <= prime && isPrime; ++divisor)
            isPrime = prime % divisor != 0;
        count += isPrime ? 1 : 0;
    }
    const double place = 0.5 + (number - 1) * std::sqrt(double(prime));
    return place - std::floor(place);
}

QString citations()
{
    return ::citations::intensityModel() +
           QStringLiteral("Generalised simulated annealing: C. Tsallis, D. A. Stariolo, Physica A "
                          "233, 395 (1996).\n");
}

} // namespace intensityFit
