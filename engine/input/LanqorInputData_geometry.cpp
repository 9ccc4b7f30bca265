#include "LanqorInputData.h"

#include "core/covalentRadii_p.h"
#include "input/LanqorInputData_p.h"
#include "input/atomGrid_p.h"
#include "input/bondCutOff_p.h"
#include "input/disorder_p.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int maximumNamed = 5; // atoms or pairs in one sentence

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
        text += QStringLiteral("%1 %2").arg(atoms.at(numbers.at(i) - 1).label,
                                            QString::number(numbers.at(i)));
    }
    return text;
}

/// Lanthanide ions besides atom 1.
QStringList furtherIons(const QVector<Coord> &atoms)
{
    QVector<int> numbers;
    for (int i = 1; i < atoms.size(); ++i) {
        if (LanqorInputData::isLanthanide(atoms.at(i).label))
            numbers.append(i + 1);
    }
    if (numbers.isEmpty() || !LanqorInputData::isLanthanide(atoms.first().label))
        return {};
    return {LanqorInputData::tr("the structure holds further lanthanide ions (%1); all that is "
                                "computed is about atom 1 (%2) alone")
                .arg(listOfAtoms(numbers.mid(0, maximumNamed), atoms), atoms.first().label)};
}

/// Two places of one atom would count twice. A donor too near to an ion is no place of the ion.
QStringList disorderedAtoms(const QVector<Coord> &atoms)
{
    auto pairs = disorder::pairs(atoms);
    const auto isIon = [&atoms](int i) { return LanqorInputData::isLanthanide(atoms.at(i).label); };
    pairs.erase(
        std::remove_if(pairs.begin(), pairs.end(),
                       [&](const auto &pair) { return isIon(pair.first) != isIon(pair.second); }),
        pairs.end());
    QStringList texts;
    for (const auto &[first, second] : pairs.mid(0, maximumNamed))
        texts.append(
            LanqorInputData::tr("%1 and %2 are %3 Angstrom apart")
                .arg(listOfAtoms({first + 1}, atoms), listOfAtoms({second + 1}, atoms),
                     QString::number(distanceOf(atoms.at(first), atoms.at(second)), 'f', 3)));
    if (pairs.size() > maximumNamed)
        texts.append(LanqorInputData::tr("and so on, %1 pairs").arg(pairs.size()));
    if (texts.isEmpty())
        return {};
    return {LanqorInputData::tr("places of disordered atoms, or atoms given twice: %1; keep one "
                                "place of each")
                .arg(texts.join(QStringLiteral(", ")))};
}

/// A question about the unit of the coordinates when the nearest atoms are not where the donors of
/// a lanthanide ion are, 1.8 to 3 Angstrom from it.
QStringList doubtfulUnits(const QVector<Coord> &atoms)
{
    constexpr double shortestBond = 1.5; // Angstrom; no lanthanide has one as short
    constexpr double farthestNearest = 3.0;
    constexpr double farthestInBohr = 6.0; // 3.2 Angstrom
    constexpr double shortestInPm = 100.0; // 1 Angstrom
    if (atoms.size() < 2 || !LanqorInputData::isLanthanide(atoms.first().label))
        return {};
    const auto distance = [&atoms](int i) { return distanceOf(atoms.first(), atoms.at(i)); };
    int nearest = 1;
    for (int i = 1; i < atoms.size(); ++i) {
        const Coord &atom = atoms.at(i);
        if (distance(i) < distance(nearest))
            nearest = i;
        const bool isOtherKind = covalentRadius(atom.label) == 0.0 ||
                                 atom.label == QLatin1String("H") ||
                                 LanqorInputData::isLanthanide(atom.label);
        if (!isOtherKind && distance(i) < shortestBond)
            return {LanqorInputData::tr("%1 is %2 Angstrom from the ion, nearer than a bond can "
                                        "be; are the coordinates fractional or in nm?")
                        .arg(listOfAtoms({i + 1}, atoms), QString::number(distance(i), 'g', 4))};
    }
    const double r = distance(nearest);
    if (r <= farthestNearest)
        return {};
    const QString unit = r < farthestInBohr ? LanqorInputData::tr("in bohr")
                         : r > shortestInPm ? LanqorInputData::tr("in pm")
                                            : LanqorInputData::tr("in bohr or pm");
    return {LanqorInputData::tr("the atom nearest to the ion, %1, is %2 Angstrom away; are the "
                                "coordinates %3?")
                .arg(listOfAtoms({nearest + 1}, atoms), QString::number(r, 'g', 4), unit)};
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
                .arg(QString::number(first), QString::number(last),
                     QString::number(d->coord.size())));
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
        .arg(ion->label, QString::number(std::distance(coord.begin(), ion) + 1));
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
        .arg(listOfAtoms(counted, d->coord), QString::number(counted.size() + 1),
             listOfAtoms(misplaced, d->coord), listOfAtoms(intruders, d->coord));
}

QString LanqorInputData::getSphereError() const
{
    const QString ionError = getIonError();
    if (!ionError.isEmpty())
        return QStringLiteral("%1: %2").arg(d->fileName, ionError);
    if (d->coordNumber == 0)
        return (QStringList(tr("%1: no atom is within bonding distance of atom 1 (%2)")
                                .arg(d->fileName, getAtomLabel(1))) +
                doubtfulUnits(d->coord))
            .join(QStringLiteral("; "));
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
            QStringLiteral("%1 %2 (%3)")
                .arg(spherical.label, QString::number(atom), QString::number(spherical.r, 'f', 3));
        if (limit > 0.0 && spherical.r >= limit && spherical.r < limit + marginOfLimit)
            notes.append(tr("%1 is not counted: the limit of its element is %2 Angstrom")
                             .arg(where, QString::number(limit)));
        else if (limit == 0.0 && spherical.label != QLatin1String("H") &&
                 spherical.r < nearWithoutLimit)
            notes.append(tr("%1 is not counted: its element has no bonding limit").arg(where));
    }
    return notes;
}

QStringList LanqorInputData::getStructureWarnings() const
{
    return furtherIons(d->coord) + disorderedAtoms(d->coord) + doubtfulUnits(d->coord);
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
