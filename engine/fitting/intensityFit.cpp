#include "fitting/intensityFit_p.h"

#include "core/physicalConstants_p.h"
#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorAbstractParametric.h>
#include <LanqorEngine/LanqorOmega.h>

#include <cmath>

namespace intensityFit {

double squaredDeviation(double expected, double calculated)
{
    const double difference = (expected - calculated) * 1.0e20;
    return difference * difference;
}

void setChargeFactorsAndAlphas(LanqorOmega &omega, QVector<double> &g, QVector<double> &alpha)
{
    double *chargeFactors = g.data();
    double *alphas = alpha.data();
    omega.setChargeFactorAndAlpha(chargeFactors, alphas);
}

bool calcFirst(LanqorOmega &omega, int coordNumber, QVector<double> &g, QVector<double> &alpha)
{
    g.fill(1.0, coordNumber + 2);
    alpha.fill(lanqor::cm3PerCubicAngstrom, coordNumber + 2);
    omega.setCoordNumber(coordNumber); // before the arrays: it tells their length
    setChargeFactorsAndAlphas(omega, g, alpha);
    return omega.calcOmega();
}

void relayMessages(const LanqorOmega &omega, LanqorAbstractParametric &fit)
{
    QObject::connect(
        &omega, &LanqorAbstractObjCalculation::newObjCalculationMessage, &fit,
        [&omega, &fit](const QString &message) {
            if (message == omega.getLastError())
                fit.setLastError(message);
            Q_EMIT fit.newObjCalculationMessage(message);
        },
        Qt::DirectConnection); // the fit may run in another thread than its own
}

std::array<double, 7> omegaOf(const LanqorOmega &omega)
{
    std::array<double, 7> values{};
    for (const int lambda : {2, 4, 6})
        values[static_cast<std::size_t>(lambda)] = omega.getOmega(lambda);
    return values;
}

double valueOf(const std::array<double, 7> &omega, int lambda)
{
    return lambda == 2 || lambda == 4 || lambda == 6 ? omega[static_cast<std::size_t>(lambda)]
                                                     : 0.0;
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
