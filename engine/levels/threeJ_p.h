#pragma once

/// Wigner 3-j symbols as the textbooks have them. LanqorWignerSymbols keeps the values of earlier
/// versions, which differ from J = 13/2 on; the mixing of multiplets and magnetism need these.
namespace threeJ {

/// The 3-j symbol of the angular momenta and projections, all given doubled; 0 where a selection
/// rule is violated. Racah's formula (G. Racah, Phys. Rev. 62, 438 (1942)) in factorials, to about
/// 14 digits for momenta up to 25/2 with ranks up to 6.
double symbol(int twoJ1, int twoJ2, int twoJ3, int twoM1, int twoM2, int twoM3);

/// The factor of a reduced element in the Wigner-Eckart theorem, (-1)^(J-M) (J k J'; -M q M') with
/// q = M - M'.
double wignerEckart(int twoJ, int twoM, int k, int twoJp, int twoMp);

} // namespace threeJ
