#include "input/crystal_p.h"

#include "LanqorInputData.h"
#include "input/atomGrid_p.h"
#include "input/bondLengths_p.h"

#include <cmath>

namespace crystals {

namespace {

using Eigen::Vector3d;

/// Angles between neighbours in degrees: of sp2 carbon they add up to 360, of sp3 carbon without
/// its fourth neighbour to about 330.
constexpr double leastSumOfPlanar = 343.0;
constexpr double leastOfLinear = 160.0;
/// Bond lengths, Angstrom: a terminal carbon or nitrogen atom with a shorter one is that of a
/// triple bond (1.14 to 1.18 C-N, 1.20 C-C), a longer one that of a single bond.
constexpr double longestTriple = 1.26;
constexpr double shortestSingle = 1.30;
/// Two bonds longer than this (1.45 to 1.48 C-N of amines; 1.30 to 1.40 of rings and imines) show
/// an amine.
constexpr double shortestAmine = 1.425;

double angleOf(const Vector3d &a, const Vector3d &b)
{
    constexpr double degrees = 57.29577951308232;
    return std::atan2(a.cross(b).norm(), a.dot(b)) * degrees;
}

bool isOpenCarbon(const QVector<Vector3d> &bonds)
{
    switch (bonds.size()) {
    case 0:
        return true;
    case 1:
        return bonds.first().norm() > longestTriple;
    case 2:
        return angleOf(bonds.at(0), bonds.at(1)) < leastOfLinear;
    case 3:
        return angleOf(bonds.at(0), bonds.at(1)) + angleOf(bonds.at(1), bonds.at(2)) +
                   angleOf(bonds.at(2), bonds.at(0)) <
               leastSumOfPlanar;
    default:
        return false;
    }
}

/// @p bonds  without those to the ion
bool isOpenNitrogen(const QVector<Vector3d> &bonds, bool isOnIon)
{
    switch (bonds.size()) {
    case 0:
        return true;
    case 1:
        return bonds.first().norm() > shortestSingle;
    case 2:
        return bonds.at(0).norm() > shortestAmine && bonds.at(1).norm() > shortestAmine &&
               (isOnIon || angleOf(bonds.at(0), bonds.at(1)) < leastOfLinear);
    default:
        return false;
    }
}

/// An oxygen atom with a single neighbour, hydrogen, beside the ion: either is common in crystals.
bool isHydroxide(const Coord &atom, const QStringList &neighbours)
{
    return atom.label == QLatin1String("O") && neighbours.size() == 1 &&
           (neighbours.first() == QLatin1String("H") || neighbours.first() == QLatin1String("D"));
}

} // namespace

QStringList openValences(const QVector<Coord> &atoms, const QStringList &names)
{
    const AtomGrid grid(atoms, bondLengths::longest);
    QStringList open;
    for (int i = 0; i < atoms.size(); ++i) {
        const Coord &atom = atoms.at(i);
        QVector<Vector3d> bonds;
        QStringList neighbours;
        bool isOnMetal = false;
        grid.visitEarlier(atom, atoms.size(), [&](int other) {
            const Coord &next = atoms.at(other);
            if (other == i || !bondLengths::isWithinBondLength(atom, next))
                return false;
            const bool isMetal = LanqorInputData::isLanthanide(next.label);
            isOnMetal = isOnMetal || isMetal;
            if (isMetal)
                return false;
            bonds.append({next.x - atom.x, next.y - atom.y, next.z - atom.z});
            neighbours.append(next.label);
            return false;
        });
        const bool isOpen = atom.label == QLatin1String("C") ? !isOnMetal && isOpenCarbon(bonds)
                            : atom.label == QLatin1String("N")
                                ? isOpenNitrogen(bonds, isOnMetal)
                                : atom.label == QLatin1String("O") && bonds.isEmpty();
        const QString name =
            isHydroxide(atom, neighbours)
                ? LanqorInputData::tr("%1 (unless it is hydroxide)").arg(names.at(i))
                : names.at(i);
        if ((isOpen || name != names.at(i)) && !open.contains(name))
            open.append(name);
    }
    return open;
}

} // namespace crystals
