#include "core/internalCoordinates_p.h"

#include "core/angles_p.h"

#include <Eigen/Geometry>

#include <cmath>
#include <limits>

namespace internalCoordinates {

namespace {

using Eigen::Vector3d;

/// Sine of an angle under which three atoms count as collinear: far above rounding, and so small
/// that turning such atoms about their line moves none of them by more than 1e-9 Angstrom.
constexpr double collinearSine = 1e-10;
/// References are taken where they make angles of at least 20 degrees with a straight line, so
/// that rounding of printed angles is not magnified: sin(20 degrees).
constexpr double clearSine = 0.3420201433256687;

Vector3d position(const Coord &atom)
{
    return {atom.x, atom.y, atom.z};
}

double distance(const Coord &a, const Coord &b)
{
    return (position(a) - position(b)).norm();
}

/// Sine of the angle first-vertex-last, exact also near 0 and 180 degrees.
double sineOfAngle(const Coord &first, const Coord &vertex, const Coord &last)
{
    const Vector3d a = position(first) - position(vertex);
    const Vector3d b = position(last) - position(vertex);
    const double lengths = a.norm() * b.norm();
    return lengths > 0.0 ? a.cross(b).norm() / lengths : 0.0;
}

double degreesFromRadians(double radians)
{
    return radians / radiansFromDegrees(1.0);
}

bool isFinite(const CoordZMT &row)
{
    return std::isfinite(row.distance) && std::isfinite(row.angle) && std::isfinite(row.dihedral);
}

/// References of row @p atom are distinct earlier atoms, as many as the row needs.
bool hasReferences(const CoordZMT &row, int atom)
{
    const auto isEarlier = [atom](int reference) { return reference >= 1 && reference < atom; };
    if (atom >= 2 && !isEarlier(row.na))
        return false;
    if (atom >= 3 && (!isEarlier(row.nb) || row.nb == row.na))
        return false;
    return atom < 4 || (isEarlier(row.nc) && row.nc != row.na && row.nc != row.nb);
}

/// Files leave out references of atoms 2 and 3: 1, and 2 and 1, unless another atom is named.
CoordZMT withDefaultReferences(CoordZMT row, int atom)
{
    if (atom == 2 && row.na == 0)
        row.na = 1;
    if (atom == 3 && row.na == 0)
        row.na = 2;
    if (atom == 3 && row.nb == 0)
        row.nb = 3 - row.na;
    return row;
}

/// Place of an atom from its references: with the unit vectors e from na to nb and w
/// perpendicular to it on the side of nc,
///     r = r(na) + d [cos(a) e + sin(a) (cos(t) w - sin(t) e x w)].
Vector3d placed(const CoordZMT &row, const Vector3d &origin, const Vector3d &e, const Vector3d &w)
{
    const double angle = radiansFromDegrees(row.angle);
    const double dihedral = radiansFromDegrees(row.dihedral);
    return origin + row.distance *
                        (std::cos(angle) * e + std::sin(angle) * (std::cos(dihedral) * w -
                                                                  std::sin(dihedral) * e.cross(w)));
}

/// Places atom number atoms.size() + 1; false when its row does not determine it.
bool place(CoordZMT row, const QVector<Coord> &atoms, bool allOnLine, Vector3d &result)
{
    const int atom = atoms.size() + 1;
    if (atom == 1) {
        result = Vector3d::Zero();
        return true;
    }
    if (!hasReferences(row, atom) || !isFinite(row) || row.distance < coincidenceLimit)
        return false;
    const Vector3d origin = position(atoms.at(row.na - 1));
    if (atom == 2) {
        result = origin + row.distance * Vector3d::UnitX();
        return true;
    }
    const Vector3d toSecond = position(atoms.at(row.nb - 1)) - origin;
    if (toSecond.norm() < coincidenceLimit)
        return false;
    const Vector3d e = toSecond.normalized();
    if (allOnLine) {
        row.dihedral = 0.0;
        result = placed(row, origin, e, Vector3d::UnitY());
        return true;
    }
    const Vector3d toThird = position(atoms.at(row.nc - 1)) - position(atoms.at(row.nb - 1));
    const Vector3d across = toThird - toThird.dot(e) * e;
    if (across.norm() > collinearSine * toThird.norm()) {
        result = placed(row, origin, e, across.normalized());
        return true;
    }
    // Only the straight continuation of the line needs no third direction.
    const double angle = radiansFromDegrees(row.angle);
    if (std::abs(std::sin(angle)) > collinearSine)
        return false;
    result = origin + row.distance * std::cos(angle) * e;
    return true;
}

/// The earlier atom (number below @p atom, none of @p excluded) nearest to @p nearTo whose sine,
/// as given by @p sineOf, is clear of a straight line; else the one of the largest sine.
template <typename Sine>
int chooseReference(const QVector<Coord> &atoms, int atom, int nearTo, int excluded,
                    const Sine &sineOf)
{
    int nearest = 0;
    int leastCollinear = 0;
    double shortest = std::numeric_limits<double>::max();
    double largestSine = -1.0;
    for (int candidate = 1; candidate < atom; ++candidate) {
        if (candidate == nearTo || candidate == excluded)
            continue;
        const double sine = sineOf(atoms.at(candidate - 1));
        if (leastCollinear == 0 || sine > largestSine) {
            largestSine = sine;
            leastCollinear = candidate;
        }
        const double length = distance(atoms.at(nearTo - 1), atoms.at(candidate - 1));
        if (sine >= clearSine && length < shortest) {
            shortest = length;
            nearest = candidate;
        }
    }
    return nearest > 0 ? nearest : leastCollinear;
}

int nearestEarlierAtom(const QVector<Coord> &atoms, int atom)
{
    int nearest = 1;
    for (int candidate = 2; candidate < atom; ++candidate) {
        if (distance(atoms.at(atom - 1), atoms.at(candidate - 1)) <
            distance(atoms.at(atom - 1), atoms.at(nearest - 1)))
            nearest = candidate;
    }
    return nearest;
}

} // namespace

double dang(double a1, double a2, double b1, double b2)
{
    return std::atan2(a1 * b2 - a2 * b1, a1 * b1 + a2 * b2);
}

double bangle(const Coord &first, const Coord &vertex, const Coord &last)
{
    const Vector3d a = position(first) - position(vertex);
    const Vector3d b = position(last) - position(vertex);
    return std::atan2(a.cross(b).norm(), a.dot(b));
}

double dihed(const Coord &first, const Coord &second, const Coord &third, const Coord &fourth)
{
    if (sineOfAngle(first, second, third) < collinearSine ||
        sineOfAngle(second, third, fourth) < collinearSine)
        return 0.0;
    // Both outer bonds seen along the axis from the second atom to the third.
    const Vector3d axis = (position(third) - position(second)).normalized();
    const Vector3d front = position(first) - position(second);
    const Vector3d rear = position(fourth) - position(third);
    const Vector3d u = (front - front.dot(axis) * axis).normalized();
    const Vector3d v = axis.cross(u);
    return dang(1.0, 0.0, rear.dot(u), rear.dot(v));
}

CartesianResult gmetry(const QVector<CoordZMT> &zMatrix, const QVector<int> &cartesianRows)
{
    CartesianResult result;
    result.atoms.reserve(zMatrix.size());
    bool allOnLine = true;
    for (const CoordZMT &row : zMatrix) {
        const int atom = result.atoms.size() + 1;
        Vector3d r;
        const bool isCartesian = cartesianRows.contains(atom);
        if (isCartesian)
            r = {row.distance, row.angle, row.dihedral};
        else if (!place(withDefaultReferences(row, atom), result.atoms, allOnLine, r))
            r.setConstant(std::numeric_limits<double>::quiet_NaN());
        if (!r.allFinite()) {
            result.failedAtom = atom;
            return result;
        }
        allOnLine = allOnLine && std::hypot(r.y(), r.z()) <= collinearSine * r.norm();
        result.atoms.append({row.label, r.x(), r.y(), r.z()});
    }
    return result;
}

InternalResult xyzint(const QVector<Coord> &atoms)
{
    InternalResult result;
    for (int atom = 1; atom <= atoms.size(); ++atom) {
        const Coord &self = atoms.at(atom - 1);
        CoordZMT row;
        row.label = self.label;
        if (atom >= 2) {
            row.na = nearestEarlierAtom(atoms, atom);
            if (distance(self, atoms.at(row.na - 1)) < coincidenceLimit) {
                result.coincidentAtoms[0] = row.na;
                result.coincidentAtoms[1] = atom;
                return result;
            }
        }
        if (atom >= 3) {
            const Coord &first = atoms.at(row.na - 1);
            row.nb = chooseReference(atoms, atom, row.na, 0, [&](const Coord &second) {
                return sineOfAngle(self, first, second);
            });
        }
        if (atom >= 4) {
            const Coord &first = atoms.at(row.na - 1);
            const Coord &second = atoms.at(row.nb - 1);
            row.nc = chooseReference(atoms, atom, row.nb, row.na, [&](const Coord &third) {
                return sineOfAngle(first, second, third);
            });
        }
        result.rows.append(row);
    }
    xyzgeo(atoms, result.rows);
    return result;
}

void xyzgeo(const QVector<Coord> &atoms, QVector<CoordZMT> &rows)
{
    for (int i = 1; i < rows.size(); ++i) {
        CoordZMT &row = rows[i];
        const Coord &self = atoms.at(i);
        const Coord &first = atoms.at(row.na - 1);
        row.distance = distance(self, first);
        if (row.nb > 0)
            row.angle = degreesFromRadians(bangle(self, first, atoms.at(row.nb - 1)));
        if (row.nc > 0)
            row.dihedral =
                degreesFromRadians(dihed(self, first, atoms.at(row.nb - 1), atoms.at(row.nc - 1)));
    }
}

} // namespace internalCoordinates
