#include "structure/fragments_p.h"

#include "core/elements_p.h"
#include "input/bondCutOff_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

using structureFiles::Bond;

namespace fragments {

namespace {

/// Shorter than any bond (H2 0.74), longer than most distances between disordered places.
constexpr double overlapDistance = 0.4; // Angstrom
/// Angstrom beyond the sum of two covalent radii within which atoms count as bonded: wide enough
/// for the bonds of crystal structures, and narrower than contacts between molecules.
constexpr double bondTolerance = 0.4;
/// Radius of an atom of unknown kind, Angstrom: that of carbon.
constexpr double defaultRadius = 0.76;

/// B. Cordero et al., Dalton Trans. 2832 (2008), table 2; Angstrom, by atomic number from 1 (H) to
/// 96 (Cm); carbon sp3, low-spin Mn, Fe and Co.
constexpr std::array<double, 96> covalentRadii = {
    0.31, 0.28, 1.28, 0.96, 0.84, 0.76, 0.71, 0.66, 0.57, 0.58, 1.66, 1.41, 1.21, 1.11, 1.07, 1.05,
    1.02, 1.06, 2.03, 1.76, 1.70, 1.60, 1.53, 1.39, 1.39, 1.32, 1.26, 1.24, 1.32, 1.22, 1.22, 1.20,
    1.19, 1.20, 1.20, 1.16, 2.20, 1.95, 1.90, 1.75, 1.64, 1.54, 1.47, 1.46, 1.42, 1.39, 1.45, 1.44,
    1.42, 1.39, 1.39, 1.38, 1.39, 1.40, 2.44, 2.15, 2.07, 2.04, 2.03, 2.01, 1.99, 1.98, 1.98, 1.96,
    1.94, 1.92, 1.92, 1.89, 1.90, 1.87, 1.87, 1.75, 1.70, 1.62, 1.51, 1.44, 1.41, 1.36, 1.36, 1.32,
    1.45, 1.46, 1.48, 1.40, 1.50, 1.50, 2.60, 2.21, 2.15, 2.06, 2.00, 1.96, 1.90, 1.87, 1.80, 1.69,
};

double radiusOf(const Coord &atom)
{
    const int number = atomicNumberOf(atom.label);
    if (number < 1 || number > static_cast<int>(covalentRadii.size()))
        return defaultRadius;
    return covalentRadii[static_cast<std::size_t>(number - 1)];
}

bool isGroup1Or2Metal(const Coord &atom)
{
    switch (atomicNumberOf(atom.label)) {
    case 3:
    case 4:
    case 11:
    case 12:
    case 19:
    case 20:
    case 37:
    case 38:
    case 55:
    case 56:
    case 87:
    case 88:
        return true;
    default:
        return false;
    }
}

/// Cells of a cubic grid with the atoms in them, so that neighbours are found without looking at
/// every pair.
class Cells
{
public:
    Cells(const QVector<Coord> &atoms, double edge)
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
        const auto index = [this](double x) { return static_cast<int>(std::floor(x / edge)); };
        return {index(atom.x), index(atom.y), index(atom.z)};
    }

    double edge;
    std::map<Cell, QVector<int>> cells;
};

} // namespace

double distance(const Coord &a, const Coord &b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                     (a.z - b.z) * (a.z - b.z));
}

std::optional<std::pair<int, int>> overlappingAtoms(const QVector<Coord> &atoms)
{
    const Cells cells(atoms, overlapDistance);
    std::optional<std::pair<int, int>> pair;
    for (int i = 0; i < atoms.size() && !pair; ++i) {
        cells.visitEarlier(atoms.at(i), i, [&](int other) {
            if (distance(atoms.at(i), atoms.at(other)) < overlapDistance)
                pair = std::make_pair(other, i);
            return pair.has_value();
        });
    }
    return pair;
}

bool isWithinBondLength(const Coord &a, const Coord &b)
{
    return distance(a, b) < radiusOf(a) + radiusOf(b) + bondTolerance;
}

QVector<Bond> withMissingBonds(const QVector<Coord> &atoms, QVector<Bond> bonds)
{
    QVector<bool> isBonded(atoms.size(), false);
    for (const Bond &bond : qAsConst(bonds))
        isBonded[bond.first] = isBonded[bond.second] = true;
    constexpr double longestBond = 2.0 * 2.60 + bondTolerance; // between the largest atoms
    const Cells cells(atoms, longestBond);
    for (int i = 0; i < atoms.size(); ++i) {
        if (isGroup1Or2Metal(atoms.at(i)))
            continue;
        cells.visitEarlier(atoms.at(i), i, [&](int other) {
            if (!(isBonded.at(i) && isBonded.at(other)) && !isGroup1Or2Metal(atoms.at(other)) &&
                isWithinBondLength(atoms.at(i), atoms.at(other)))
                bonds.append({other, i, QLatin1String(guessedType)});
            return false;
        });
    }
    return bonds;
}

QVector<Fragment> fragmentsAround(int ion, const QVector<Coord> &atoms, const QVector<Bond> &bonds)
{
    QVector<QVector<int>> neighbours(atoms.size());
    QVector<bool> isBondedToIon(atoms.size(), false);
    for (const Bond &bond : bonds) {
        if (bond.first == ion || bond.second == ion) {
            isBondedToIon[bond.first == ion ? bond.second : bond.first] = true;
        } else {
            neighbours[bond.first].append(bond.second);
            neighbours[bond.second].append(bond.first);
        }
    }
    QVector<Fragment> found;
    QVector<bool> isVisited(atoms.size(), false);
    isVisited[ion] = true;
    for (int start = 0; start < atoms.size(); ++start) {
        if (isVisited.at(start))
            continue;
        Fragment fragment;
        QVector<int> pending{start};
        isVisited[start] = true;
        while (!pending.isEmpty()) {
            const int atom = pending.takeLast();
            fragment.atoms.append(atom);
            for (const int next : qAsConst(neighbours[atom])) {
                if (!isVisited.at(next))
                    pending.append(next);
                isVisited[next] = true;
            }
        }
        std::sort(fragment.atoms.begin(), fragment.atoms.end());
        for (const int atom : qAsConst(fragment.atoms)) {
            if (distance(atoms.at(ion), atoms.at(atom)) < bondCutOff(atoms.at(atom).label))
                fragment.coordinated.append(atom);
            fragment.isBondedToIon = fragment.isBondedToIon || isBondedToIon.at(atom);
        }
        found.append(fragment);
    }
    return found;
}

} // namespace fragments
