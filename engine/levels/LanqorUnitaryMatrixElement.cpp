#include "LanqorUnitaryMatrixElement.h"

#include "LanqorEnergyLevels.h"
#include "core/parity_p.h"
#include "levels/fShell_p.h"

#include <LanqorEngine/LanqorWignerSymbols.h>

#include <QLoggingCategory>

#include <cmath>

using LanqorSpectroscopicTermUtil::isSameTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;

namespace {

Q_LOGGING_CATEGORY(levelsLog, "lanqor.levels", QtInfoMsg)

} // namespace

double LanqorUnitaryMatrixElement::unitaryMatrixElement(const int &n, const double &k,
                                                        const SpectroscopicTerm &bra,
                                                        const SpectroscopicTerm &ket,
                                                        const LanqorEnergyLevels &energyLevels)
{
    constexpr int l = fShell::orbitalL;
    if (bra.S != ket.S)
        return 0.0;
    const QVector<FractParentCoeff> ofBra = energyLevels.getFractParentCoeffVector(bra);
    const QVector<FractParentCoeff> ofKet = energyLevels.getFractParentCoeffVector(ket);
    double sum = 0.0;
    for (const FractParentCoeff &p : ofBra)
        for (const FractParentCoeff &q : ofKet) {
            if (!isSameTerm(p.parent, q.parent))
                continue;
            const double sixJ =
                LanqorWignerSymbols::calcSixJSymbol(bra.L, l, p.parent.L, l, ket.L, k);
            sum += parity(p.parent.L + bra.L + l + static_cast<int>(k)) * p.cfp * sixJ * q.cfp;
        }
    if (sum == 0.0)
        return 0.0;
    const double factor = n * std::sqrt((2.0 * ket.L + 1.0) * (2.0 * bra.L + 1.0));
    return sum * factor * (n > fShell::halfFilled ? -parity(static_cast<int>(k)) : 1.0);
}

double LanqorUnitaryMatrixElement::unitaryMatrixElementCouppling(
    const int &n, const double &k, const SpectroscopicTerm &bra, const SpectroscopicTerm &ket,
    const LanqorEnergyLevels &energyLevels)
{
    const double sixJ = LanqorWignerSymbols::calcSixJSymbol(bra.J, ket.J, k, ket.L, bra.L, bra.S);
    if (sixJ == 0.0)
        return 0.0;
    const double phase = parity(static_cast<int>(bra.S + ket.L + bra.J + k));
    return std::sqrt((2.0 * bra.J + 1.0) * (2.0 * ket.J + 1.0)) * phase * sixJ *
           unitaryMatrixElement(n, k, bra, ket, energyLevels);
}

double LanqorUnitaryMatrixElement::mixedUnitaryMatrixElementCouppling(
    const int &n, const double &k, const SpectroscopicTerm &bra, const SpectroscopicTerm &ket,
    const LanqorEnergyLevels &energyLevels)
{
    const MixedState a = energyLevels.getMixedStates(bra);
    const MixedState b = energyLevels.getMixedStates(ket);
    double sum = 0.0;
    for (const CoeffAndLabel &i : a.components)
        for (const CoeffAndLabel &j : b.components) {
            const double element = unitaryMatrixElementCouppling(
                n, k, termFromLabel(i.label, true), termFromLabel(j.label, true), energyLevels);
            sum += element * i.coefficient * j.coefficient;
            qCDebug(levelsLog) << i.label << i.coefficient << j.label << j.coefficient << k
                               << element;
        }
    return sum;
}

double LanqorUnitaryMatrixElement::matrixElementSpinOperator(const SpectroscopicTerm &bra,
                                                             const SpectroscopicTerm &ket)
{
    if (!isSameTerm(bra, ket))
        return 0.0;
    const double S = bra.S;
    const double sixJ = LanqorWignerSymbols::calcSixJSymbol(S, bra.J, bra.L, ket.J, S, 1.0);
    if (sixJ == 0.0)
        return 0.0;
    const double square =
        S * (S + 1.0) * (2.0 * S + 1.0) * (2.0 * bra.J + 1.0) * (2.0 * ket.J + 1.0);
    return std::sqrt(square) * parity(static_cast<int>(bra.L + S + bra.J + 1.0)) * sixJ;
}

double LanqorUnitaryMatrixElement::calc_fk(const int &n, const double &k,
                                           const SpectroscopicTerm &term,
                                           const LanqorEnergyLevels &energyLevels)
{
    constexpr int l = fShell::orbitalL;
    double sum = 0.0;
    for (const SpectroscopicTerm &other : energyLevels.getSpectroscopicTermVector()) {
        const double element = unitaryMatrixElement(n, k, term, other, energyLevels);
        sum += element * element;
    }
    const double threeJ = LanqorWignerSymbols::calcThreeJSymbol(l, k, l, 0, 0, 0);
    const double width = 2.0 * l + 1.0;
    return 0.5 * (width * width) * (threeJ * threeJ) * (sum / (2.0 * term.L + 1.0) - n / width);
}
