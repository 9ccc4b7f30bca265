#include "options/chargeFactorOptions.h"

#include "Command.h"
#include "options/atomValues.h"
#include "options/plausibility.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QVector>

namespace cli {

namespace {

constexpr double cm3PerCubicAngstrom = 1.0e-24;

} // namespace

void calcOmega(LanqorOmega &omega, const LanqorInputData &geometry, int coordNumber,
               const QString &g, const QString &alpha)
{
    const QVector<double> chargeFactors =
        readAtomValues(geometry, coordNumber, QStringLiteral("--g"), g);
    QVector<double> alphasCm3 =
        readAtomValues(geometry, coordNumber, QStringLiteral("--alpha"), alpha);
    warnOfAlphas(geometry, alphasCm3);
    for (double &value : alphasCm3)
        value *= cm3PerCubicAngstrom;
    omega.setCoordNumber(coordNumber);
    if (!omega.setChargeFactorAndAlpha(chargeFactors, alphasCm3) || !omega.calcOmega())
        failOf(omega);
}

} // namespace cli
