#pragma once

#include <QString>

/// Distance, Angstrom, below which an atom of this element counts as bound to the ion; 0 for
/// elements that are never counted (fluorine and bromine among them).
double bondCutOff(const QString &label);
