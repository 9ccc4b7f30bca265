// Charge factors and polarisabilities from atomic charges, superdelocalizabilities and the force
// constants of the bonds.
#include "LanqorOmega.h"

#include "core/physicalConstants_p.h"
#include "intensity/LanqorOmega_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>

namespace {

/// Excitation energy of a bond, erg, at the shortest distance; 0 for an element without one.
/// Source of the two factors of each element not known.
double bondEnergy(const QString &symbol)
{
    constexpr double unit = 1e-11;
    if (symbol == QLatin1String("O"))
        return 0.315593115 * 4.2925651759 * unit;
    if (symbol == QLatin1String("N"))
        return 1.7016449683 * 4.4056678455 * unit;
    return 0.0;
}

/// Part of a polarisability that the ligand has without the bond, cubic Angstrom, from its
/// superdelocalizability, au; source of the line not known.
double intrinsicAlpha(double superDeslocalizability)
{
    return 4.2669775857 + 0.0432505996 * superDeslocalizability;
}

} // namespace

QString LanqorOmegaPrivate::calcChargeFactorAndAlpha(double minDistance)
{
    LanqorInputData reader(nullptr, outFile);
    if (!reader.readForceConstant(outFile, coordNumber))
        return reader.getLastError();
    QVector<double> forceConstants(2, 0.0); // by atom number
    for (int i = 0; i < std::min(coordNumber, reader.getForceConstantsCount()); ++i)
        forceConstants.append(reader.getForceConstant(i));

    const int entries = coordNumber + 2;
    if (forceConstants.size() < entries || !hasReactivityIndices())
        return LanqorOmega::tr("Charge factors and polarizabilities of %1 coordinated atoms need "
                               "as many force constants, atomic charges and "
                               "superdelocalizabilities (vectors of %2 entries by atom number); "
                               "there are %3, %4 and %5 entries.")
            .arg(QString::number(coordNumber), QString::number(entries),
                 QString::number(forceConstants.size()), QString::number(atomicCharges.size()),
                 QString::number(superDeslocalizability.size()));
    if (!hasParametersQDC)
        return calcFromBonds(minDistance, forceConstants);
    calcFromQDC();
    return QString();
}

double LanqorOmegaPrivate::chargeFactorQDC(int atom) const
{
    return parameterQ * atomicCharges.at(atom);
}

double LanqorOmegaPrivate::alphaQDC(int atom) const
{
    return (parameterD * superDeslocalizability.at(atom) + parameterC) *
           lanqor::cm3PerCubicAngstrom;
}

void LanqorOmegaPrivate::calcFromQDC()
{
    isBondEstimate = false;
    chargeFactor.fill(0.0, coordNumber + 2);
    alpha.fill(0.0, coordNumber + 2);
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        chargeFactor[atom] = chargeFactorQDC(atom);
        alpha[atom] = alphaQDC(atom);
    }
}

bool LanqorOmegaPrivate::hasReactivityIndices() const
{
    return std::min(atomicCharges.size(), superDeslocalizability.size()) >= coordNumber + 2;
}

bool LanqorOmegaPrivate::agreesWithQDC() const
{
    if (!hasParametersQDC || !hasReactivityIndices())
        return true;
    constexpr double rounding = 1e-9;
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const double g = chargeFactor.at(atom);
        const double a = alpha.at(atom);
        if (!(std::abs(g - chargeFactorQDC(atom)) <= rounding * std::abs(g)) ||
            !(std::abs(a - alphaQDC(atom)) <= rounding * std::abs(a)))
            return false;
    }
    return true;
}

QString LanqorOmegaPrivate::calcFromBonds(double minDistance, const QVector<double> &forceConstants)
{
    constexpr double dynePerCm = 1e5; // of a mdyn/Angstrom
    const int entries = coordNumber + 2;
    QVector<double> g = chargeFactor; // a failure leaves those of before
    QVector<double> a = alpha;
    g.resize(entries);
    a.resize(entries);
    for (int atom = 2; atom < entries; ++atom) {
        const QString label = positions.at(atom - 1).label;
        const double intrinsic = intrinsicAlpha(superDeslocalizability.at(atom));
        if (label == QLatin1String("F") || label == QLatin1String("Cl")) {
            g[atom] = 1.0;
            a[atom] = intrinsic * lanqor::cm3PerCubicAngstrom;
            continue;
        }
        const double distance = sphere->distance(atom) * lanqor::cmPerAngstrom;
        const double energy = minDistance / sphere->distance(atom) * bondEnergy(label);
        if (energy == 0.0) {
            if (atom < chargeFactor.size())
                continue;
            return LanqorOmega::tr("Atom %1 (%2) of %3 has no bond estimate: set its charge factor "
                                   "and polarizability.")
                .arg(QString::number(atom), label, geometryFile);
        }
        if (!(forceConstants.at(atom) > 0.0))
            return LanqorOmega::tr("The force constant of the bond to atom %1 (%2) in %3 is %4 "
                                   "mdyn/Angstrom, not positive: the geometry is no minimum.")
                .arg(QString::number(atom), label, outFile,
                     QString::number(forceConstants.at(atom)));
        const double rho = sphere->rho(atom);
        g[atom] = distance * std::sqrt(forceConstants.at(atom) * dynePerCm / (2.0 * energy));
        a[atom] =
            lanqor::elementaryChargeSquared * rho * rho * distance * distance / (2.0 * energy) +
            intrinsic * lanqor::cm3PerCubicAngstrom;
    }
    chargeFactor = g;
    alpha = a;
    isBondEstimate = true;
    return QString();
}
