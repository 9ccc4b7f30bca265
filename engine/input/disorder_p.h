#pragma once

#include <LanqorEngine/Coord.h>

#include <QVector>

#include <utility>

/// Places of disordered atoms in a structure.
namespace disorder {

/// Pairs found at the most; a structure with as many is none.
constexpr int maximumPairs = 10000;

/// Pairs (counted from 0, the earlier atom first) of non-hydrogen atoms nearer to each other than
/// 0.6 times the sum of their covalent radii: places of one disordered atom, or an atom given
/// twice. Bonds are longer (0.77 times the sum in N2, 0.65 in UO2), the places of an atom seldom
/// lie more than 0.8 Angstrom apart. Labels that are no element take no part. Geometries of failed
/// optimisations hold donors at 1.4 Angstrom from a lanthanide ion, which make such pairs as well.
QVector<std::pair<int, int>> pairs(const QVector<Coord> &atoms);

} // namespace disorder
