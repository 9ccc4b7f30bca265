#pragma once

#include "input/mol2File_p.h"

#include <LanqorEngine/Coord.h>

#include <QVector>

#include <optional>
#include <utility>

/// Which atoms of a structure belong together. Atoms are counted from 0.
namespace fragments {

/// Coordinates beyond this, Angstrom, are no structure.
constexpr double largestCoordinate = 1e6;

/// Two atoms nearer to each other than any bond is long.
std::optional<std::pair<int, int>> overlappingAtoms(const QVector<Coord> &atoms);

/// An atom and the one that stands in the place of it.
struct SecondPlace
{
    int atom = 0;
    int kept = 0;
};
/// The second places of disordered atoms, then the hydrogen atoms on them that are second places
/// themselves, for which `kept` is the atom itself, and hydrogen atoms next to another one.
QVector<SecondPlace> secondPlaces(const QVector<Coord> &atoms,
                                  const QVector<structureFiles::Bond> &bonds);

/// Type of the bonds that are told from distances: unknown.
constexpr char guessedType[] = "un";
/// @p bonds of a file and, for atoms that it bonds to nothing, those told from distances. Alkali
/// and alkaline-earth ions form none of these.
QVector<structureFiles::Bond> withMissingBonds(const QVector<Coord> &atoms,
                                               QVector<structureFiles::Bond> bonds);

/// Atoms that stay connected once the bonds of the ion are cut.
struct Fragment
{
    QVector<int> atoms;         ///< ascending
    QVector<int> coordinated;   ///< those within the bond cut-off of the ion
    bool isBondedToIon = false; ///< by a bond, whether an atom is coordinated or not
};
/// The fragments around atom @p ion, in the order of their first atoms.
QVector<Fragment> fragmentsAround(int ion, const QVector<Coord> &atoms,
                                  const QVector<structureFiles::Bond> &bonds);

/// Distance of two atoms, Angstrom.
double distance(const Coord &a, const Coord &b);

} // namespace fragments
