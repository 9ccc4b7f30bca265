#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordZMT.h>

#include <QVector>

/// Conversion between Cartesian and internal coordinates (Z-matrices), in the conventions of the
/// semi-empirical programs: atom 1 at the origin, atom 2 on the positive x axis, atom 3 in the
/// half of the xy plane with y > 0; atom numbers from 1, 0 for no reference. A dihedral angle is
/// positive when, looking from the second atom to the third, the fourth is turned clockwise from
/// the first (IUPAC). Functions of single angles work in radians, records hold degrees.
namespace internalCoordinates {

/// Two atoms nearer than this, Angstrom, share a position.
constexpr double coincidenceLimit = 1e-4;

/// Angle of the plane vectors (a1, a2) and (b1, b2), turned from the first to the second,
/// in (-pi, pi].
double dang(double a1, double a2, double b1, double b2);
/// Bond angle first-vertex-last, 0 to pi.
double bangle(const Coord &first, const Coord &vertex, const Coord &last);
/// Dihedral angle of four atoms, in (-pi, pi]; 0 where three consecutive ones are collinear.
double dihed(const Coord &first, const Coord &second, const Coord &third, const Coord &fourth);

/// Ends the message of a Z-matrix that cannot be built.
constexpr char gmetryFailure[] = "\n THIS IS A FATAL ERROR, RUN STOPPED IN GMETRY";

struct CartesianResult
{
    QVector<Coord> atoms;
    int failedAtom = 0; ///< number of the row that places no atom; 0 when all do
};

/// Cartesian from internal coordinates. A row fails when its references are not distinct
/// earlier atoms, a value is not finite, the distance is not positive, or its dihedral rests on
/// three collinear atoms although an earlier atom lies off that line. While all atoms lie on one
/// line the dihedral means nothing: the first atom off the line is put into the xy plane.
/// @param cartesianRows  numbers of rows that hold x, y, z (Angstrom) in place of internal
///     coordinates, in the frame of atom 1 at the origin, 2 on the x axis and 3 in the xy plane
CartesianResult gmetry(const QVector<CoordZMT> &zMatrix, const QVector<int> &cartesianRows = {});

struct InternalResult
{
    QVector<CoordZMT> rows;
    int coincidentAtoms[2] = {0, 0}; ///< numbers of two atoms at one place; 0 when there are none
};

/// Internal from Cartesian coordinates. Atom na is the nearest earlier atom, nb the one nearest
/// to na and nc the one nearest to nb that give bond angles clear of 0 and 180 degrees; where no
/// earlier atom does, the one farthest from collinear. Labels are kept.
InternalResult xyzint(const QVector<Coord> &atoms);

/// Distances, angles and dihedrals (0 where they are undefined) for the references that stand
/// in @p rows, which has one row for each of @p atoms.
void xyzgeo(const QVector<Coord> &atoms, QVector<CoordZMT> &rows);

} // namespace internalCoordinates
