#pragma once

#include <QString>

/// An atom in Cartesian coordinates.
struct Coord
{
    QString label;  ///< element symbol as read; empty for a centre of mass
    double x = 0.0; ///< Angstrom
    double y = 0.0; ///< Angstrom
    double z = 0.0; ///< Angstrom
};
