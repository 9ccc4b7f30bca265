#pragma once

#include <QString>

/// An atom in spherical coordinates about the lanthanide ion.
struct CoordSPH
{
    QString label;      ///< element symbol
    double r = 0.0;     ///< distance from the ion, Angstrom
    double theta = 0.0; ///< polar angle, degrees, 0 to 180
    double phi = 0.0;   ///< azimuth, degrees, 0 to 360
};
