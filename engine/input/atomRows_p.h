#pragma once

#include "input/structureFiles_p.h"
#include "input/textFields_p.h"

#include <optional>

namespace structureFiles {

/// A row of a MOPAC input or a Z-matrix file: a label, up to three values and up to three
/// references. In a Cartesian file the values are x, y and z.
struct AtomRow
{
    CoordZMT atom;
    std::size_t valueCount = 0;
    bool hasFlags = false;
    bool hasReferences = false; ///< at least one reference is given
};

/// Takes a row apart; nothing when a field is not the number that belongs there.
///
/// With flags, values and flags alternate and the references follow: "O 2.4 1 104.5 1 0 0 1 2 0";
/// whole pairs and references may be left out at the end, and a charge may follow. Without flags,
/// three values stand alone or ahead of three references.
std::optional<AtomRow> parseAtomRow(const textFields::Fields &fields);

/// Fills the Cartesian atoms of a structure from its Z-matrix, dummy atoms left out; on failure
/// an error that names the atom. Rows of @p cartesianRows (numbers) hold x, y, z: the Z-matrix is
/// made anew where there are any.
void buildCartesian(Structure &structure, const QString &fileName,
                    const QVector<int> &cartesianRows = {});

bool isTranslationVector(const QString &label);
bool isDummyAtom(const QString &label);

} // namespace structureFiles
