#pragma once

#include <LanqorEngine/Coord.h>

#include <QVector>

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

/// Distance of two atoms, Angstrom.
inline double distanceOf(const Coord &a, const Coord &b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                     (a.z - b.z) * (a.z - b.z));
}

/// Cells of a cubic grid with the atoms in them, so that neighbours are found without looking at
/// every pair. Atoms are counted from 0.
class AtomGrid
{
public:
    /// @param edge  of a cell, Angstrom; neighbours within this distance are found
    AtomGrid(const QVector<Coord> &atoms, double edge)
        : edge(edge)
    {
        for (int i = 0; i < atoms.size(); ++i)
            cells[cellOf(atoms.at(i))].append(i);
    }

    /// Calls @p visit with each atom of the cells around @p atom whose number is below @p limit,
    /// until it returns true.
    template <typename Visit>
    bool visitEarlier(const Coord &atom, int limit, const Visit &visit) const
    {
        const Cell centre = cellOf(atom);
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                for (int dz = -1; dz <= 1; ++dz) {
                    const auto found = cells.find({centre[0] + dx, centre[1] + dy, centre[2] + dz});
                    if (found == cells.end())
                        continue;
                    for (const int other : found->second) {
                        if (other < limit && visit(other))
                            return true;
                    }
                }
            }
        }
        return false;
    }

private:
    using Cell = std::array<int, 3>;
    Cell cellOf(const Coord &atom) const
    {
        static constexpr double largestIndex = 1e9; // of a cell far outside any structure
        const auto index = [this](double x) {
            return static_cast<int>(std::floor(std::clamp(x / edge, -largestIndex, largestIndex)));
        };
        return {index(atom.x), index(atom.y), index(atom.z)};
    }

    struct CellHash
    {
        std::size_t operator()(const Cell &cell) const
        {
            std::size_t hash = 0;
            for (const int index : cell)
                hash = hash * 0x9E3779B97F4A7C15U + static_cast<std::size_t>(index);
            return hash ^ (hash >> 32U);
        }
    };

    double edge;
    std::unordered_map<Cell, QVector<int>, CellHash> cells;
};
