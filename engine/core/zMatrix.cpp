#include "core/zMatrix_p.h"

#include "core/angles_p.h"

#include <cmath>

namespace {

struct Vector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

Vector operator-(const Vector &a, const Vector &b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vector scaled(const Vector &a, double factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

double dot(const Vector &a, const Vector &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector cross(const Vector &a, const Vector &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vector position(const Coord &atom)
{
    return {atom.x, atom.y, atom.z};
}

/// Below this length (Angstrom) a vector has no direction.
constexpr double smallestLength = 1e-7;

/// References of atom @p number (1-based) with those of atoms 2 and 3 filled in.
CoordZMT withReferences(CoordZMT row, int number)
{
    if (number == 2 && row.na == 0)
        row.na = 1;
    if (number == 3 && row.na == 0) {
        row.na = 2;
        row.nb = 1;
    }
    if (number == 3 && row.nb == 0)
        row.nb = 3 - row.na;
    return row;
}

bool areReferencesValid(const CoordZMT &row, int number)
{
    const auto exists = [number](int reference) { return reference >= 1 && reference < number; };
    if (number >= 2 && !exists(row.na))
        return false;
    if (number >= 3 && (!exists(row.nb) || row.nb == row.na))
        return false;
    return number < 4 || (exists(row.nc) && row.nc != row.na && row.nc != row.nb);
}

/// With u the unit vector from A (na) to B (nb) and v the unit vector normal to u towards C (nc):
/// D = A + r [u cos(angle) + sin(angle) (v cos(dihedral) + (v x u) sin(dihedral))].
/// A third atom has no C; v is then the y axis.
bool place(const CoordZMT &row, int number, const QVector<Coord> &atoms, Coord &placed)
{
    if (number == 1)
        return true;
    if (number == 2) {
        placed.x = row.distance;
        return true;
    }
    const Vector a = position(atoms.at(row.na - 1));
    const Vector b = position(atoms.at(row.nb - 1));
    const Vector axis = b - a;
    const double axisLength = std::sqrt(dot(axis, axis));
    if (!(axisLength > smallestLength))
        return false;
    const Vector u = scaled(axis, 1.0 / axisLength);
    const double angle = radiansFromDegrees(row.angle);
    const double dihedral = number == 3 ? 0.0 : radiansFromDegrees(row.dihedral);
    Vector v = {0.0, 1.0, 0.0};
    if (number > 3) {
        const Vector toC = position(atoms.at(row.nc - 1)) - b;
        v = toC - scaled(u, dot(toC, u));
        const double length = std::sqrt(dot(v, v));
        const bool onAxis = std::abs(std::sin(angle)) * std::abs(row.distance) < smallestLength;
        if (!(length > smallestLength) && !onAxis)
            return false;
        v = length > smallestLength ? scaled(v, 1.0 / length) : Vector();
    }
    const Vector w = cross(v, u);
    const double along = row.distance * std::cos(angle);
    const double towards = row.distance * std::sin(angle) * std::cos(dihedral);
    const double across = row.distance * std::sin(angle) * std::sin(dihedral);
    placed.x = a.x + along * u.x + towards * v.x + across * w.x;
    placed.y = a.y + along * u.y + towards * v.y + across * w.y;
    placed.z = a.z + along * u.z + towards * v.z + across * w.z;
    return std::isfinite(placed.x) && std::isfinite(placed.y) && std::isfinite(placed.z);
}

} // namespace

ZMatrixGeometry cartesianFromZMatrix(const QVector<CoordZMT> &zMatrix)
{
    ZMatrixGeometry geometry;
    geometry.atoms.reserve(zMatrix.size());
    for (int number = 1; number <= zMatrix.size(); ++number) {
        const CoordZMT row = withReferences(zMatrix.at(number - 1), number);
        Coord placed;
        placed.label = row.label;
        if (!areReferencesValid(row, number) || !place(row, number, geometry.atoms, placed)) {
            geometry.faultyAtom = number;
            return geometry;
        }
        geometry.atoms.append(placed);
    }
    return geometry;
}
