#include "fitting/intensityFit_p.h"

#include "intensity/citations_p.h"

namespace intensityFit {

double squaredDeviation(double expected, double calculated)
{
    const double difference = (expected - calculated) * 1.0e20;
    return difference * difference;
}

QString citations()
{
    return ::citations::intensityModel() +
           QStringLiteral("Generalised simulated annealing: C. Tsallis, D. A. Stariolo, Physica A "
                          "233, 395 (1996).\n");
}

} // namespace intensityFit
