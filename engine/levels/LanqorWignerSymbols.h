#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

/// Wigner 3-j and 6-j symbols from a table of factorials.
///
/// All angular momenta are doubles, so that integers and half-integers travel through one
/// interface. The formulas are Racah's (G. Racah, Phys. Rev. 62, 438 (1942)); x! below is the
/// table's entry at x truncated toward zero. Momenta whose formula needs a factorial beyond the
/// table (169!), and 6-j symbols of NaN, give NaN. The operations may be called from any number
/// of threads.
class LANQORENGINE_EXPORT LanqorWignerSymbols
{
public:
    /// There is no data: nothing to assign.
    LanqorWignerSymbols &operator=(const LanqorWignerSymbols &other);

    /// The 3-j symbol (j1 j2 j3; m1 m2 m3), or 0 when an argument is no multiple of 1/2, the
    /// triangle of j1, j2, j3 does not close, m1 + m2 + m3 is not 0 or an |m| exceeds its j.
    ///
    /// The denominator of each term of Racah's sum passes through a 32-bit integer: from 2^31 on
    /// it counts as -2^31, so that many symbols with a j of 7 or more are not those of the
    /// textbooks. Kept on purpose, results are compared across versions; the crystal field of
    /// manifolds with J up to 6 (k up to 6) is not touched by it.
    static double calcThreeJSymbol(const double &j1, const double &j2, const double &j3,
                                   const double &m1, const double &m2, const double &m3);

    /// The 6-j symbol {a b c; d e f}, or 0 when one of the triangles (a b c), (d e c), (a e f),
    /// (d b f) does not close. Whether the sum of each is an integer is not tested: such symbols
    /// do not exist, and their values mean nothing.
    static double calcSixJSymbol(const double &a, const double &b, const double &c, const double &d,
                                 const double &e, const double &f);
};
