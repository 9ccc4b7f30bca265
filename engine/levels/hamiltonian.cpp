#include "levels/hamiltonian_p.h"

#include "LanqorEnergyLevels.h"
#include "core/parity_p.h"
#include "levels/fShell_p.h"

#include <LanqorEngine/LanqorWignerSymbols.h>

#include <cmath>

using LanqorSpectroscopicTermUtil::isSameTerm;
using LanqorSpectroscopicTermUtil::termLetterList;

namespace freeIon {

namespace {

/// Shortest text with up to six digits: "2", "3.5".
QString shortNumber(double value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

QString levelLabel(const SpectroscopicTerm &level)
{
    QString label = shortNumber(2.0 * level.S + 1.0) + termLetterList.value(level.L);
    if (level.termIndex >= 1)
        label += QStringLiteral("(%1)").arg(level.termIndex);
    return label + shortNumber(level.J);
}

double calculateV1X(const LanqorEnergyLevels &ion, int n, const SpectroscopicTerm &bra,
                    const SpectroscopicTerm &ket)
{
    constexpr int l = fShell::orbitalL;
    constexpr double s = fShell::electronSpin;
    const QVector<FractParentCoeff> ofBra = ion.getFractParentCoeffVector(bra);
    const QVector<FractParentCoeff> ofKet = ion.getFractParentCoeffVector(ket);
    double sum = 0.0;
    for (const FractParentCoeff &p : ofBra)
        for (const FractParentCoeff &q : ofKet) {
            if (!isSameTerm(p.parent, q.parent))
                continue;
            const SpectroscopicTerm &core = p.parent;
            const double spin = LanqorWignerSymbols::calcSixJSymbol(bra.S, ket.S, 1, s, s, core.S);
            const double orbital =
                LanqorWignerSymbols::calcSixJSymbol(bra.L, ket.L, 1, l, l, core.L);
            sum += parity(static_cast<int>(core.L + core.S + bra.S + bra.L + s + l + 2.0)) * p.cfp *
                   q.cfp * spin * orbital;
        }
    const double factor =
        n * std::sqrt((2.0 * bra.S + 1.0) * s * (s + 1.0) * (2.0 * s + 1.0) * (2.0 * bra.L + 1.0) *
                      (2.0 * ket.S + 1.0) * (2.0 * ket.L + 1.0));
    return sum * factor;
}

AngularBlock angularBlock(const LanqorEnergyLevels &ion, int n, bool moreThanHalfFilled, double J)
{
    QVector<SpectroscopicTerm> basis;
    for (SpectroscopicTerm term : ion.getSpectroscopicTermVector())
        if (LanqorEnergyLevels::getJVector(term.S, term.L).contains(J)) {
            term.J = J;
            basis.append(term);
        }
    AngularBlock block;
    for (const SpectroscopicTerm &level : qAsConst(basis)) {
        block.labels.append(levelLabel(level));
        block.twoBody.append(ion.getTwoBodyVector(level));
    }
    for (int i = 0; i < basis.size(); ++i)
        for (int j = i; j < basis.size(); ++j) {
            const SpectroscopicTerm &bra = basis.at(i);
            const SpectroscopicTerm &ket = basis.at(j);
            AngularElement element;
            element.racah = ion.getElectrostaticMatrixVector(bra, ket);
            element.sixJ = LanqorWignerSymbols::calcSixJSymbol(bra.S, ket.S, 1, ket.L, bra.L, J);
            if (element.sixJ != 0.0) {
                const double v11 = calculateV1X(ion, n, bra, ket);
                element.v11 = moreThanHalfFilled ? -v11 : v11;
                element.phase = parity(static_cast<int>(bra.L + J + ket.S));
            }
            block.elements.append(element);
        }
    return block;
}

double matrixElementElectrostaticInteraction(const AngularElement &element,
                                             const Parameters &parameters)
{
    const double F0 = parameters.F0;
    const double F2 = parameters.F2;
    const double F4 = parameters.F4;
    const double F6 = parameters.F6;
    // E0 to E3 (G. Racah, Phys. Rev. 76, 1352 (1949)), cm^-1.
    const double racah[] = {
        F0 - 10.0 * F2 - 33.0 * F4 - 286.0 * F6, (70.0 * F2 + 231.0 * F4 + 2002.0 * F6) / 9.0,
        (F2 - 3.0 * F4 + 7.0 * F6) / 9.0, (5.0 * F2 + 6.0 * F4 - 91.0 * F6) / 3.0};
    double sum = 0.0;
    for (int i = 0; i < 4; ++i)
        sum += element.racah.at(i) * racah[i];
    return sum;
}

double matrixElementSpinOrbit(const AngularElement &element, const Parameters &parameters)
{
    constexpr int l = fShell::orbitalL;
    if (element.sixJ == 0.0)
        return 0.0;
    return element.v11 * parameters.zeta * std::sqrt(l * (l + 1.0) * (2.0 * l + 1.0)) *
           element.phase * element.sixJ;
}

double twoBodyEnergy(const AngularBlock &block, int position, const Parameters &parameters)
{
    const QVector<double> &of = block.twoBody.at(position);
    return of.isEmpty()
               ? 0.0
               : parameters.alpha * of[0] + parameters.beta * of[1] + parameters.gamma * of[2];
}

SymmetricMatrix hamiltonian(const AngularBlock &block, const Parameters &parameters)
{
    SymmetricMatrix matrix(block.labels.size());
    auto element = block.elements.constBegin();
    for (int i = 0; i < matrix.getOrder(); ++i)
        for (int j = i; j < matrix.getOrder(); ++j, ++element)
            matrix(i, j) = matrixElementSpinOrbit(*element, parameters) +
                           matrixElementElectrostaticInteraction(*element, parameters);
    // Only where they are wanted: adding 0 could turn the sign of a 0.
    if (parameters.alpha != 0.0 || parameters.beta != 0.0 || parameters.gamma != 0.0)
        for (int i = 0; i < matrix.getOrder(); ++i)
            matrix(i, i) += twoBodyEnergy(block, i, parameters);
    return matrix;
}

} // namespace freeIon
