#pragma once

#include <LanqorEngine/LanqorEngineExport.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

class LanqorEnergyLevels;

/// Reduced matrix elements of the unit tensors U(k) and of the spin in 4f^n, from coefficients of
/// fractional parentage (B. R. Judd, Operator Techniques in Atomic Spectroscopy (1963);
/// B. G. Wybourne, Spectroscopic Properties of Rare Earths (1965), eqs. 2-91, 2-93).
///
/// A level is a term with its J. A violated selection rule gives 0.
///
/// n is the number of electrons as the caller passes it. Beyond the half-filled shell the tables
/// of the 14 - n holes are read and the sign -(-1)^k of the shell of holes is applied when n > 7.
/// Mind what the results then mean: with n itself passed, the magnitude is n/(14 - n) times the
/// true one (the tables are those of 14 - n particles); with 14 - n passed, the magnitude is
/// right and the sign of even k opposite. Squares of elements, as line strengths need them, are
/// right with 14 - n.
class LANQORENGINE_EXPORT LanqorUnitaryMatrixElement
{
public:
    using SpectroscopicTerm = LanqorSpectroscopicTermUtil::SpectroscopicTerm;

    /// <S L||U(k)||S L'> between two terms.
    static double unitaryMatrixElement(const int &n, const double &k, const SpectroscopicTerm &bra,
                                       const SpectroscopicTerm &ket,
                                       const LanqorEnergyLevels &energyLevels);

    /// <S L J||U(k)||S L' J'> between levels of two terms.
    static double unitaryMatrixElementCouppling(const int &n, const double &k,
                                                const SpectroscopicTerm &bra,
                                                const SpectroscopicTerm &ket,
                                                const LanqorEnergyLevels &energyLevels);

    /// The same between two levels in intermediate coupling, those that bear the labels of
    /// @p bra and @p ket in the last calculation; 0 when there is none. Writes a line to the
    /// debug log (category "lanqor.levels") for each pair of components.
    static double mixedUnitaryMatrixElementCouppling(const int &n, const double &k,
                                                     const SpectroscopicTerm &bra,
                                                     const SpectroscopicTerm &ket,
                                                     const LanqorEnergyLevels &energyLevels);

    /// <S L J||S||S L J'>. Between J and J' = J +- 1 the sign is opposite to the order of coupling
    /// (S L)J in which the elements of U(k) are given; kept, as results are compared.
    static double matrixElementSpinOperator(const SpectroscopicTerm &bra,
                                            const SpectroscopicTerm &ket);

    /// Diagonal coefficient f_k of the Slater integral F^k (superscript) in the energy of a term.
    /// With n > 7 see the remark on n above.
    static double calc_fk(const int &n, const double &k, const SpectroscopicTerm &term,
                          const LanqorEnergyLevels &energyLevels);
};
