#include "input/bondLengths_p.h"

#include "core/covalentRadii_p.h"
#include "core/elements_p.h"
#include "input/atomGrid_p.h"

namespace bondLengths {

double radiusOf(const Coord &atom)
{
    constexpr double ofCarbon = 0.76; // Angstrom
    const double radius = covalentRadius(atom.label);
    return radius > 0.0 ? radius : ofCarbon;
}

bool isHydrogen(const Coord &atom)
{
    return atom.label == QLatin1String("H") || atom.label == QLatin1String("D") ||
           atom.label == QLatin1String("T");
}

bool isGroup1Or2Metal(const Coord &atom)
{
    switch (atomicNumberOf(atom.label)) {
    case 3:
    case 4:
    case 11:
    case 12:
    case 19:
    case 20:
    case 37:
    case 38:
    case 55:
    case 56:
    case 87:
    case 88:
        return true;
    default:
        return false;
    }
}

bool isWithinBondLength(const Coord &a, const Coord &b)
{
    return distanceOf(a, b) < radiusOf(a) + radiusOf(b) + tolerance;
}

} // namespace bondLengths
