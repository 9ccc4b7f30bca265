#include "LanqorInputData.h"

#include "input/LanqorInputData_p.h"
#include "input/bondCutOff_p.h"

#include <algorithm>
#include <cmath>

namespace {

/// Azimuth of (dx, dy), degrees, 0 to 360.
double azimuth(double dx, double dy, double degreesPerRadian)
{
    if (dx == 0.0) {
        if (dy == 0.0)
            return 0.0;
        return dy > 0.0 ? 90.0 : 270.0;
    }
    double phi = std::atan(dy / dx) * degreesPerRadian;
    if (dx < 0.0)
        phi += 180.0;
    if (phi < 0.0)
        phi += 360.0;
    return phi;
}

CoordSPH sphericalAbout(const Coord &origin, const Coord &atom)
{
    const double degreesPerRadian = 180.0 / std::acos(-1.0);
    const double dx = atom.x - origin.x;
    const double dy = atom.y - origin.y;
    const double dz = atom.z - origin.z;
    CoordSPH spherical;
    spherical.label = atom.label;
    spherical.r = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (spherical.r > 0.0)
        spherical.theta = std::acos(std::clamp(dz / spherical.r, -1.0, 1.0)) * degreesPerRadian;
    spherical.phi = azimuth(dx, dy, degreesPerRadian);
    return spherical;
}

/// "O 7, O 8 and N 39".
QString listOfAtoms(const QVector<int> &numbers, const QVector<Coord> &atoms)
{
    QString text;
    for (int i = 0; i < numbers.size(); ++i) {
        if (i > 0)
            text += i + 1 < numbers.size() ? QStringLiteral(", ") : LanqorInputData::tr(" and ");
        text += QStringLiteral("%1 %2").arg(atoms.at(numbers.at(i) - 1).label).arg(numbers.at(i));
    }
    return text;
}

} // namespace

/// A little above the bond lengths in lanthanide complexes; source of the values not known.
double bondCutOff(const QString &label)
{
    if (label == QLatin1String("O") || label == QLatin1String("N"))
        return 2.65;
    if (label == QLatin1String("Cl") || label == QLatin1String("S"))
        return 2.9;
    if (label == QLatin1String("I"))
        return 3.0;
    return 0.0;
}

double LanqorInputData::getBondCutOff(const QString &label)
{
    return bondCutOff(label);
}

bool LanqorInputData::createSphericalCoordinate()
{
    return createSphericalCoordinate(1, d->coord.size());
}

bool LanqorInputData::createSphericalCoordinate(const int &first, const int &last)
{
    if (d->coord.isEmpty())
        return failWith(tr("\nThe vector of cartesian coordinates empty. This way, firstly, it is "
                           "necessary to use a specific function to read the desired file. \n"));
    if (first < 1 || last > d->coord.size() || first > last)
        return failWith(
            tr("\nAtoms %1 to %2 were asked for, but the geometry has atoms 1 to %3. \n")
                .arg(first)
                .arg(last)
                .arg(d->coord.size()));
    d->coordSPH.clear();
    d->coordSPH.reserve(last - first + 1);
    d->coordNumber = 0;
    for (int atom = first; atom <= last; ++atom) {
        const CoordSPH spherical = sphericalAbout(d->coord.constFirst(), d->coord.at(atom - 1));
        d->coordSPH.append(spherical);
        if (atom > 1 && spherical.r < bondCutOff(spherical.label))
            ++d->coordNumber;
    }
    emitProgress(tr(" -> (Read Input Data) Cartesian coordinates were successfully converted to "
                    "spherical coordinates. \n"));
    return true;
}

QVector<int> LanqorInputData::getCoordinatedAtoms() const
{
    const QVector<Coord> &coord = d->coord;
    QVector<int> numbers;
    for (int i = 1; i < coord.size(); ++i) {
        if (sphericalAbout(coord.first(), coord.at(i)).r < bondCutOff(coord.at(i).label))
            numbers.append(i + 1);
    }
    return numbers;
}

QString LanqorInputData::getIonError() const
{
    const QVector<Coord> &coord = d->coord;
    if (!coord.isEmpty() && isLanthanide(coord.first().label))
        return QString();
    const auto ion = std::find_if(coord.begin(), coord.end(),
                                  [](const Coord &atom) { return isLanthanide(atom.label); });
    if (ion == coord.end())
        return tr("The structure has no lanthanide ion.");
    return tr("The ion (%1) is atom %2; it must be atom 1. Reorder the structure: the ion first, "
              "then the coordinated atoms, then all others.")
        .arg(ion->label)
        .arg(std::distance(coord.begin(), ion) + 1);
}

QString LanqorInputData::getAtomOrderError() const
{
    const QVector<int> counted = getCoordinatedAtoms();
    if (counted.isEmpty() || counted.last() == counted.size() + 1)
        return QString();
    QVector<int> misplaced;
    std::copy_if(counted.begin(), counted.end(), std::back_inserter(misplaced),
                 [&counted](int atom) { return atom > counted.size() + 1; });
    QVector<int> intruders;
    for (int atom = 2; atom <= counted.size() + 1; ++atom) {
        if (!counted.contains(atom))
            intruders.append(atom);
    }
    return tr("The atoms within bonding distance of the ion are %1, not atoms 2 to %2: %3 must "
              "change places with %4. Reorder the structure: the ion first, then the coordinated "
              "atoms, then all others.")
        .arg(listOfAtoms(counted, d->coord))
        .arg(counted.size() + 1)
        .arg(listOfAtoms(misplaced, d->coord), listOfAtoms(intruders, d->coord));
}

QString LanqorInputData::getSphereError() const
{
    const QString ionError = getIonError();
    if (!ionError.isEmpty())
        return QStringLiteral("%1: %2").arg(d->fileName, ionError);
    if (d->coordNumber == 0)
        return tr("%1: no atom is within bonding distance of atom 1 (%2)")
            .arg(d->fileName, getAtomLabel(1));
    return getAtomOrderError();
}

QStringList LanqorInputData::getNearAtomNotes() const
{
    // Chosen for this note; nothing is computed from them.
    constexpr double marginOfLimit = 0.15;   // Angstrom
    constexpr double nearWithoutLimit = 2.9; // Angstrom
    const QVector<Coord> &coord = d->coord;
    QStringList notes;
    for (int atom = 2; atom <= coord.size(); ++atom) {
        const CoordSPH spherical = sphericalAbout(coord.first(), coord.at(atom - 1));
        const double limit = bondCutOff(spherical.label);
        const QString where =
            QStringLiteral("%1 %2 (%3)").arg(spherical.label).arg(atom).arg(spherical.r, 0, 'f', 3);
        if (limit > 0.0 && spherical.r >= limit && spherical.r < limit + marginOfLimit)
            notes.append(tr("%1 is not counted: the limit of its element is %2 Angstrom")
                             .arg(where)
                             .arg(limit));
        else if (limit == 0.0 && spherical.label != QLatin1String("H") &&
                 spherical.r < nearWithoutLimit)
            notes.append(tr("%1 is not counted: its element has no bonding limit").arg(where));
    }
    return notes;
}

SphereResults LanqorInputData::getSphereResults() const
{
    SphereResults results;
    if (d->coord.isEmpty())
        return results;
    results.structureFile = d->fileName;
    results.ion = getAtomLabel(1);
    for (const int atom : getCoordinatedAtoms())
        results.atoms.append({atom, sphericalAbout(getCoord(1), getCoord(atom))});
    results.coordNumber = results.atoms.size();
    return results;
}

Coord LanqorInputData::calcCenterOfMass(const QVector<Coord> &atoms)
{
    double mass = 0.0;
    double total = 0.0;
    Coord centre;
    for (const Coord &atom : atoms) {
        const auto found = std::find_if(
            elementMassTable.begin(), elementMassTable.end(),
            [&atom](const QPair<QString, double> &element) { return element.first == atom.label; });
        // A label in no table (a dummy atom) counts with the mass before it; kept, since stored
        // results rest on it.
        if (found != elementMassTable.end())
            mass = found->second;
        total += mass;
        centre.x += mass * atom.x;
        centre.y += mass * atom.y;
        centre.z += mass * atom.z;
    }
    if (total == 0.0)
        return Coord();
    centre.x /= total;
    centre.y /= total;
    centre.z /= total;
    return centre;
}
