#pragma once

#include <QString>

/// A trivalent lanthanide ion and the parameters of its free-ion levels, cm^-1.
struct FreeIonParameters
{
    QString symbol; ///< element; empty when only the number of electrons matters
    int electrons = 0;
    double F2 = 0.0; ///< small-denominator (subscript) Slater integrals
    double F4 = 0.0;
    double F6 = 0.0;
    double zeta = 0.0; ///< spin-orbit parameter of the 4f electrons
    QString source;    ///< where the parameters come from; empty: not told
    /// Two-body configuration interaction, alpha L(L+1) + beta G(G2) + gamma G(R7), cm^-1.
    double alpha = 0.0;
    double beta = 0.0;
    double gamma = 0.0;
};
