#pragma once

#include <LanqorEngine/CoordSPH.h>

#include <QString>
#include <QVector>

/// A coordinated atom.
struct SphereAtom
{
    int atom = 0;      ///< number in the geometry, the ion being atom 1
    CoordSPH position; ///< about the ion: Angstrom, degrees
};

/// The coordination sphere of a lanthanide ion.
struct SphereResults
{
    QString structureFile;
    QString ion;               ///< label of atom 1
    int coordNumber = 0;       ///< atoms within bonding distance
    QVector<SphereAtom> atoms; ///< these atoms, by number
};
