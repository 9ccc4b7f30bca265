#pragma once

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>
#include <LanqorEngine/SymmetricMatrix.h>

#include <QStringList>
#include <QVector>

class LanqorEnergyLevels;

/// The electrostatic, spin-orbit and two-body configuration interaction between the
/// Russell-Saunders levels of one J. What depends on the ion alone is kept apart from the
/// parameters.
namespace freeIon {

using LanqorSpectroscopicTermUtil::SpectroscopicTerm;

/// cm^-1; small-denominator (subscript) Slater integrals.
struct Parameters
{
    double F0 = 0.0;
    double F2 = 0.0;
    double F4 = 0.0;
    double F6 = 0.0;
    double zeta = 0.0;
    double alpha = 0.0;
    double beta = 0.0;
    double gamma = 0.0;
};

/// Angular part of an element. The factors of the spin-orbit part stay apart, so that they are
/// multiplied in one order, V zeta sqrt(84) phase 6-j, whenever they were computed.
struct AngularElement
{
    QVector<double> racah; ///< coefficients of E0, E1, E2, E3
    double v11 = 0.0;      ///< <bra||V(11)||ket>; 0 where the 6-j symbol is
    double phase = 0.0;    ///< (-1)^(L + J + S')
    double sixJ = 0.0;     ///< {S S' 1; L' L J}
};

struct AngularBlock
{
    QStringList labels;               ///< of the levels, "7F0", "5D(1)2"
    QVector<AngularElement> elements; ///< upper triangle row by row
    /// By level: L(L+1), G(G2), G(R7); empty without their table.
    QVector<QVector<double>> twoBody;
};

/// "7F0", with an ordinal "5D(1)2"; J in decimals, "4I5.5".
QString levelLabel(const SpectroscopicTerm &level);

/// The levels of one J in the order of the terms of @p ion. @p n is the number of electrons of
/// the tables, @p moreThanHalfFilled turns the sign of V(11) for a shell of n holes.
AngularBlock angularBlock(const LanqorEnergyLevels &ion, int n, bool moreThanHalfFilled, double J);

/// <bra||V(11)||ket> of n electrons, the double tensor of the spin-orbit interaction.
double calculateV1X(const LanqorEnergyLevels &ion, int n, const SpectroscopicTerm &bra,
                    const SpectroscopicTerm &ket);

double matrixElementElectrostaticInteraction(const AngularElement &element,
                                             const Parameters &parameters);
double matrixElementSpinOrbit(const AngularElement &element, const Parameters &parameters);

/// alpha L(L+1) + beta G(G2) + gamma G(R7) of the level at @p position.
double twoBodyEnergy(const AngularBlock &block, int position, const Parameters &parameters);

/// The order of the block must be possible.
SymmetricMatrix hamiltonian(const AngularBlock &block, const Parameters &parameters);

} // namespace freeIon
