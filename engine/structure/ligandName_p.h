#pragma once

#include <QString>

/// Formulas by which a user or another room names a ligand.
namespace ligandName {

/// The formula in one form, that of Hill without blanks: "C5 H7 O2", "C5H7O2_1" and "O2C5H7" give
/// "C5H7O2", "H2 O1" gives "H2O". A text that is no formula stays as it is.
QString canonical(const QString &text);

} // namespace ligandName
