#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/CoordZMT.h>

#include <QVector>

/// Cartesian geometry of a Z-matrix.
struct ZMatrixGeometry
{
    QVector<Coord> atoms;
    /// 1-based number of the first atom that cannot be placed: a reference is missing, stands
    /// later or twice, or the references lie on one line. 0 when all atoms were placed.
    int faultyAtom = 0;
};

/// Builds the Cartesian geometry in the frame of the semi-empirical programs: atom 1 at the
/// origin, atom 2 on the positive x axis, atom 3 in the xy plane with y >= 0. The references of
/// atoms 2 and 3 may be left out (0): atom 2 refers to 1, atom 3 to 2 and 1. The dihedral angle
/// of an atom is positive when, looking from na to nb, nc lies clockwise of the atom.
ZMatrixGeometry cartesianFromZMatrix(const QVector<CoordZMT> &zMatrix);
