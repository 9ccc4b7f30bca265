#pragma once

#include <LanqorEngine/StarkResults.h>

/// Matrix elements of the crystal field within the 7FJ manifolds of Eu3+ (B. G. Wybourne,
/// Spectroscopic Properties of Rare Earths (1965)):
///     <J M|H|J M'> = sum over k, q of B(k,q) (-1)^(J-M) (J k J; -M q M') <J||C(k)||J>
///     <J||C(k)||J> = <J||U(k)||J> <f||C(k)||f>,  <f||C(k)||f> = -7 (3 k 3; 0 0 0)
namespace starkMatrix {

constexpr int maximumJ = 6;

/// Ranks of the field.
constexpr int ranks[] = {2, 4, 6};

/// <7FJ||U(k)||7FJ>, the positive square root of its tabulated square, k = 2, 4, 6 and J = 1 .. 6;
/// any other, or k > 2J, gives 0. Squares in intermediate coupling, dimensionless; the source of
/// the digits is not known, those of W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49,
/// 4450 (1968) are near. Some of the true elements are negative. Kept, for results are compared
/// across versions.
double reducedU(int k, int J);

/// 1 for magnitudes, the sign of the true element relative to 7F1 otherwise.
double sign(ReducedElements choice, int k, int J);

/// What stands beside B(k,q), q = M - M', in the matrix element:
///     -7 (-1)^(J-M+q) (3 k 3; 0 0 0) (J k J; -M q M') U(k,J)
/// The (-1)^q, which the formula of the literature lacks, turns the frame by 180 degrees about z:
/// phases of the eigenvectors change, levels do not. From a table that is made once.
/// @param J  0 .. 6; |M|, |M'| <= J
double coefficient(int J, int k, int M, int Mp);

} // namespace starkMatrix
