#pragma once

#include "structure/fragments_p.h"

#include <optional>

/// Charges of the counter-ions and solvents that crystals of complexes hold beside them.
namespace knownFragments {

/// Charge of a fragment that is one of the known ones by composition and connectivity, hydrogen
/// atoms included; empty for any other.
std::optional<int> chargeOf(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
                            const QVector<structureFiles::Bond> &bonds);

} // namespace knownFragments
