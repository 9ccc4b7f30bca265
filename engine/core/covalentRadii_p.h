#pragma once

#include <QString>

/// Covalent radius of an element, Angstrom (B. Cordero et al., Dalton Trans. 2832 (2008), table 2;
/// carbon sp3, low-spin Mn, Fe and Co); 0 for what is no element from H to Cm.
double covalentRadius(const QString &symbol);
