#pragma once

#include <QString>

/// An atom in internal coordinates. Reference atoms are 1-based; 0 stands for none.
struct CoordZMT
{
    QString label;         ///< element symbol
    double distance = 0.0; ///< distance to atom na, Angstrom
    double angle = 0.0;    ///< angle with atoms na and nb, degrees
    double dihedral = 0.0; ///< dihedral angle with atoms na, nb and nc, degrees
    int na = 0;
    int nb = 0;
    int nc = 0;
};
