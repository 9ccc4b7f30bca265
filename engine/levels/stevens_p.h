#pragma once

/// Stevens's normalisation of crystal fields (K. W. H. Stevens, Proc. Phys. Soc. A 65, 209 (1952);
/// C. Rudowicz, J. Phys. C 18, 1415 (1985)).
namespace stevens {

/// lambda(k,|q|), A(k,q) <r^k> = lambda(k,q) B(k,q) with Wybourne's B(k,q) in the convention
/// B(k,q) (C(k)-q + (-1)^q C(k)q) for the cosine type, q > 0. 0 for other k and q.
double factor(int k, int q);

/// <J J|O(k,0)|J J>, in units of hbar^k.
double largestElement(int k, double J);

} // namespace stevens
