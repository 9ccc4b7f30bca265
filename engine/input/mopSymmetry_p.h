#pragma once

#include "input/atomRows_p.h"
#include "input/textFields_p.h"

#include <QString>
#include <QtGlobal>

#include <vector>

/// The keyword SYMMETRY of a MOPAC job: coordinates that are functions of others.
namespace structureFiles {

/// A coordinate of the dependent atom follows from one of the reference atom.
struct SymmetryRelation
{
    int reference = 0; ///< atom, dummy atoms and translation vectors counted, from 1
    int function = 0;  ///< MOPAC's number of the function, from 1
    int dependent = 0; ///< atom, from 1
    double factor = 1.0;
    qint64 line = 0; ///< of the file
};

/// True when the keywords ask for relations: SYMMETRY, which may be cut to SYM.
bool hasSymmetryKeyword(const QString &keywords);

/// Takes the line @p fields apart: reference atom, function, with function 19 a factor, then
/// dependent atoms; words between are passed over as MOPAC does. True while further lines belong
/// to the relations. False at their end: a line without a number, or without a dependent atom.
/// @param error  set when the line holds what is neither
bool appendRelations(const textFields::Fields &fields, qint64 line,
                     std::vector<SymmetryRelation> &relations, QString &error);

/// Applies the relations in their order, again until they all hold. @return empty, or the reason
/// why they cannot be applied
QString applyRelations(const std::vector<SymmetryRelation> &relations, bool isInternal,
                       std::vector<AtomRow> &rows);

} // namespace structureFiles
