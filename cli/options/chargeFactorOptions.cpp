#include "options/chargeFactorOptions.h"

#include "Command.h"
#include "options/atomValues.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QVector>

namespace cli {

namespace {

constexpr double cm3PerCubicAngstrom = 1.0e-24;

} // namespace

int calcOmega(LanqorOmega &omega, const LanqorInputData &geometry, int coordNumber,
              const QString &g, const QString &alpha, QString &error)
{
    AtomValues chargeFactors(geometry, coordNumber, QStringLiteral("--g"));
    AtomValues alphas(geometry, coordNumber, QStringLiteral("--alpha"));
    if (!chargeFactors.read(g) || !alphas.read(alpha)) {
        error = chargeFactors.error().isEmpty() ? alphas.error() : chargeFactors.error();
        return usageError;
    }
    QVector<double> gValues = chargeFactors.values();
    QVector<double> alphasCm3;
    for (const double value : alphas.values())
        alphasCm3.append(value * cm3PerCubicAngstrom);
    double *gArray = gValues.data();
    double *alphaArray = alphasCm3.data();
    omega.setCoordNumber(coordNumber);
    omega.setChargeFactorAndAlpha(gArray, alphaArray);
    if (omega.calcOmega())
        return success;
    error = omega.getLastError();
    return failure;
}

} // namespace cli
