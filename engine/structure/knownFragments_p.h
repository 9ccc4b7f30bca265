#pragma once

#include "structure/fragments_p.h"

#include <QString>

#include <optional>

/// The ligands, counter-ions and solvents of data/ligands.json.
namespace knownFragments {

/// The text of the table.
extern const char ligandTable[];

struct Fragment
{
    QString name;
    int charge = 0; ///< elementary charges
};

/// What a fragment is by composition and connectivity, hydrogen atoms included; empty when it is
/// not in the table.
std::optional<Fragment> find(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
                             const QVector<structureFiles::Bond> &bonds);

/// The same of a molecule whose bonds are told from distances.
std::optional<Fragment> find(const QVector<Coord> &molecule);

} // namespace knownFragments
