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
/// twice. The shortest bonds (CO, N2, C2H2) are longer than 0.75 times that sum, the two places of
/// an atom seldom more than 0.8 Angstrom apart. Labels that are no element take no part.
QVector<std::pair<int, int>> pairs(const QVector<Coord> &atoms);

} // namespace disorder
