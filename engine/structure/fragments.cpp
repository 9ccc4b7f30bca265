#include "structure/fragments_p.h"

#include "core/covalentRadii_p.h"
#include "core/elements_p.h"
#include "input/atomGrid_p.h"
#include "input/bondCutOff_p.h"

#include <algorithm>

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

double radiusOf(const Coord &atom)
{
    const double radius = covalentRadius(atom.label);
    return radius > 0.0 ? radius : defaultRadius;
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

} // namespace

double distance(const Coord &a, const Coord &b)
{
    return distanceOf(a, b);
}

std::optional<std::pair<int, int>> overlappingAtoms(const QVector<Coord> &atoms)
{
    const AtomGrid cells(atoms, overlapDistance);
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
    const AtomGrid cells(atoms, longestBond);
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
