#include "structure/fragments_p.h"

#include "input/atomGrid_p.h"
#include "input/bondCutOff_p.h"
#include "input/bondLengths_p.h"
#include "input/disorder_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>

using bondLengths::isGroup1Or2Metal;
using bondLengths::isHydrogen;
using bondLengths::isWithinBondLength;
using bondLengths::radiusOf;
using structureFiles::Bond;

namespace fragments {

namespace {

/// Shorter than any bond (H2 0.74), longer than most distances between disordered places.
constexpr double overlapDistance = 0.4; // Angstrom
constexpr double hydrogenRadius = 0.31; // Angstrom, covalent

/// The atoms that each hydrogen atom is bonded to: by the file, else the one within 1.4 Angstrom
/// whose distance is most like a bond, for the nearest may be the other place of a disordered atom;
/// none for other atoms.
QVector<QVector<int>> carriersOfHydrogens(const QVector<Coord> &atoms, const QVector<Bond> &bonds)
{
    QVector<QVector<int>> carriers(atoms.size());
    for (const Bond &bond : bonds) {
        if (isHydrogen(atoms.at(bond.first)))
            carriers[bond.first].append(bond.second);
        if (isHydrogen(atoms.at(bond.second)))
            carriers[bond.second].append(bond.first);
    }
    constexpr double longestBond = 1.4; // Angstrom, in crystal structures
    const AtomGrid grid(atoms, longestBond);
    for (int i = 0; i < atoms.size(); ++i) {
        if (!isHydrogen(atoms.at(i)) || !carriers.at(i).isEmpty())
            continue;
        int carrier = -1;
        double least = 0.0;
        grid.visitEarlier(atoms.at(i), atoms.size(), [&](int other) {
            const double r = distanceOf(atoms.at(i), atoms.at(other));
            const double deviation = std::abs(r - hydrogenRadius - radiusOf(atoms.at(other)));
            if (!isHydrogen(atoms.at(other)) && r < longestBond &&
                (carrier < 0 || deviation < least)) {
                carrier = other;
                least = deviation;
            }
            return false;
        });
        if (carrier >= 0)
            carriers[i].append(carrier);
    }
    return carriers;
}

/// Whether a hydrogen atom on the second place of an atom goes with it. It stays as one of the
/// first place's when that has none, or when it is at the length of a bond from it and not in the
/// place of another: hydrogen atoms on one atom are 1.5 Angstrom or more apart.
bool goesWith(int hydrogen, const SecondPlace &place, const QVector<Coord> &atoms,
              const QVector<QVector<int>> &hydrogens)
{
    const QVector<int> &others = hydrogens.at(place.kept);
    if (others.isEmpty())
        return false;
    constexpr int several = 2; // no atom of a ligand has four
    if (others.size() >= several && hydrogens.at(place.atom).size() >= several)
        return true;
    constexpr double tolerance = 0.2; // Angstrom, narrower than for other bonds
    constexpr double nearest = 1.2;   // Angstrom
    const Coord &atom = atoms.at(hydrogen);
    return distanceOf(atom, atoms.at(place.kept)) >
               radiusOf(atoms.at(place.kept)) + hydrogenRadius + tolerance ||
           std::any_of(others.begin(), others.end(),
                       [&](int other) { return distanceOf(atom, atoms.at(other)) < nearest; });
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

QVector<SecondPlace> secondPlaces(const QVector<Coord> &atoms, const QVector<Bond> &bonds)
{
    QVector<SecondPlace> found;
    QVector<bool> isOmitted(atoms.size(), false);
    const auto omit = [&](int atom, int kept) {
        found.append({atom, kept});
        isOmitted[atom] = true;
    };
    for (const auto &pair : disorder::pairs(atoms)) {
        if (isOmitted.at(pair.first) || isOmitted.at(pair.second))
            continue;
        const bool isIonFirst = LanqorInputData::isLanthanide(atoms.at(pair.first).label);
        const bool isIonSecond = LanqorInputData::isLanthanide(atoms.at(pair.second).label);
        // A ligand atom far too near to the ion is misplaced, yet no place of the ion.
        if (isIonFirst != isIonSecond &&
            distance(atoms.at(pair.first), atoms.at(pair.second)) >= overlapDistance)
            continue;
        const bool isSecondKept = isIonSecond && !isIonFirst;
        omit(isSecondKept ? pair.first : pair.second, isSecondKept ? pair.second : pair.first);
    }
    const QVector<QVector<int>> carriers = carriersOfHydrogens(atoms, bonds);
    QVector<QVector<int>> hydrogens(atoms.size());
    for (int i = 0; i < atoms.size(); ++i)
        for (const int carrier : carriers.at(i))
            hydrogens[carrier].append(i);
    const QVector<SecondPlace> heavy = found;
    for (const SecondPlace &place : heavy) {
        for (const int hydrogen : hydrogens.at(place.atom)) {
            const QVector<int> &own = carriers.at(hydrogen);
            const auto isGone = [&](int atom) { return isOmitted.at(atom); };
            if (!isOmitted.at(hydrogen) && std::all_of(own.begin(), own.end(), isGone) &&
                goesWith(hydrogen, place, atoms, hydrogens))
                omit(hydrogen, hydrogen);
        }
    }
    const AtomGrid grid(atoms, overlapDistance);
    for (int i = 0; i < atoms.size(); ++i) {
        if (!isHydrogen(atoms.at(i)) || isOmitted.at(i))
            continue;
        grid.visitEarlier(atoms.at(i), i, [&](int other) {
            const bool isSame = isHydrogen(atoms.at(other)) && !isOmitted.at(other) &&
                                distance(atoms.at(i), atoms.at(other)) < overlapDistance;
            if (isSame)
                omit(i, other);
            return isSame;
        });
    }
    return found;
}

QVector<Bond> withMissingBonds(const QVector<Coord> &atoms, QVector<Bond> bonds)
{
    QVector<bool> isBonded(atoms.size(), false);
    for (const Bond &bond : qAsConst(bonds))
        isBonded[bond.first] = isBonded[bond.second] = true;
    const AtomGrid cells(atoms, bondLengths::longest);
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
