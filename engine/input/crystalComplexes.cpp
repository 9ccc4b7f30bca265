#include "input/crystal_p.h"

#include "LanqorInputData.h"
#include "core/elements_p.h"
#include "input/atomGrid_p.h"
#include "input/bondCutOff_p.h"
#include "input/bondLengths_p.h"
#include "input/disorder_p.h"
#include "input/structureFiles_p.h"

#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace crystals {

namespace {

using Eigen::Vector3d;
using Eigen::Vector3i;

/// In the cell, images included: beyond this a crystal is none of small molecules.
constexpr int mostAtoms = 50000;

Coord coordOf(const QString &element, const Vector3d &place)
{
    return {element, place.x(), place.y(), place.z()};
}

bool isLanthanide(const Coord &atom)
{
    return LanqorInputData::isLanthanide(atom.label);
}

/// Whether a bond may be between atoms of these elements.
bool mayBond(const Coord &a, const Coord &b)
{
    using bondLengths::isGroup1Or2Metal;
    using bondLengths::isHydrogen;
    return !isGroup1Or2Metal(a) && !isGroup1Or2Metal(b) && !(isHydrogen(a) && isHydrogen(b)) &&
           !(isLanthanide(a) && (isLanthanide(b) || isHydrogen(b))) &&
           !(isLanthanide(b) && isHydrogen(a));
}

/// Vector between two sites of the asymmetric unit by the shortest way, Angstrom.
double shortestDistance(const Crystal &crystal, const Site &a, const Site &b)
{
    Vector3d way = b.place - a.place;
    if (crystal.isPeriodic)
        way -= way.array().round().matrix();
    return (crystal.toCartesian * way).norm();
}

/// Number of the set of disordered atoms that each site belongs to, -1 for ordered ones: atoms of
/// one assembly near each other, whatever their group.
QVector<int> disorderedSets(const Crystal &crystal)
{
    QVector<int> disordered;
    for (int i = 0; i < crystal.sites.size(); ++i)
        if (crystal.sites.at(i).group != 0)
            disordered.append(i);
    QVector<int> sets(crystal.sites.size(), -1);
    int count = 0;
    for (const int start : qAsConst(disordered)) {
        if (sets.at(start) >= 0)
            continue;
        QVector<int> pending{start};
        sets[start] = count;
        while (!pending.isEmpty()) {
            const Site &site = crystal.sites.at(pending.takeLast());
            for (const int other : qAsConst(disordered)) {
                const Site &next = crystal.sites.at(other);
                if (sets.at(other) >= 0 || next.assembly != site.assembly ||
                    shortestDistance(crystal, site, next) >
                        bondLengths::radiusOf(coordOf(site.element, Vector3d::Zero())) +
                            bondLengths::radiusOf(coordOf(next.element, Vector3d::Zero())) +
                            bondLengths::tolerance)
                    continue;
                sets[other] = count;
                pending.append(other);
            }
        }
        ++count;
    }
    return sets;
}

/// An atom of the cell.
struct CellAtom
{
    int site = 0;
    int operation = 0;
    Vector3d place; ///< fractional, 0 to below 1
    Coord atom;     ///< Angstrom
};

/// An atom of a neighbouring cell, by the atom of the cell and the translation.
struct Neighbour
{
    int atom = 0;
    Vector3i shift;
};

/// All atoms of the cell with their bonds.
class Cell
{
public:
    explicit Cell(const Crystal &crystal);

    bool isTooLarge() const { return tooLarge; }
    QVector<Complex> complexes() const;

private:
    /// Atoms that hang together, by number in the cell and translation, in the order found.
    struct Molecule
    {
        QVector<Neighbour> atoms;
        int dimensions = 0; ///< in which it has no end
    };

    void chooseGroups();
    void fill();
    void connect();
    Molecule grow(int start, const QSet<int> &omitted) const;
    Molecule moleculeOf(int start, QSet<int> &omitted) const;
    int loserOf(const Molecule &molecule) const;
    QSet<int> imageOf(int atom) const;
    Complex complexOf(int ion, QSet<int> &seenSites) const;
    QVector<Coord> placesOf(const Molecule &molecule) const;
    QStringList warningsOf(const Molecule &molecule, const QVector<Coord> &atoms,
                           const QSet<int> &omitted) const;
    QStringList remainderOf(const QSet<int> &seenSites) const;
    Vector3d cartesian(const Vector3d &place) const { return crystal.toCartesian * place; }

    const Crystal &crystal;
    bool tooLarge = false;
    QVector<int> sets;    // of disorder, by site
    QVector<bool> isKept; // by site
    QVector<CellAtom> atoms;
    QVector<QVector<Neighbour>> neighbours;
};

Cell::Cell(const Crystal &crystal)
    : crystal(crystal)
{
    tooLarge = crystal.sites.size() > mostAtoms;
    if (tooLarge)
        return;
    chooseGroups();
    fill();
    if (!tooLarge)
        connect();
}

/// Keeps the group with the highest mean occupancy of each set, of equal ones the one that stands
/// first in the file.
void Cell::chooseGroups()
{
    sets = disorderedSets(crystal);
    isKept.fill(true, crystal.sites.size());
    QMap<int, QVector<int>> groups; // of each set, in the order of the file
    QMap<std::pair<int, int>, std::pair<double, int>> sums;
    for (int i = 0; i < sets.size(); ++i) {
        if (sets.at(i) < 0)
            continue;
        const int group = crystal.sites.at(i).group;
        auto &sum = sums[{sets.at(i), group}];
        if (sum.second++ == 0)
            groups[sets.at(i)].append(group);
        sum.first += crystal.sites.at(i).occupancy;
    }
    QMap<int, int> chosen;
    for (auto set = groups.cbegin(); set != groups.cend(); ++set) {
        constexpr double equal = 1e-6; // mean occupancies differ by more
        double highest = 0.0;
        for (const int group : set.value()) {
            const auto sum = sums.value({set.key(), group});
            if (sum.first / sum.second <= highest + equal)
                continue;
            highest = sum.first / sum.second;
            chosen[set.key()] = group;
        }
    }
    for (int i = 0; i < sets.size(); ++i)
        isKept[i] = sets.at(i) < 0 || crystal.sites.at(i).group == chosen.value(sets.at(i));
}

/// Applies the operations of the crystal; images of an atom on a special position coincide.
void Cell::fill()
{
    constexpr double samePlace = 0.4; // Angstrom, of images of one atom
    for (int i = 0; i < crystal.sites.size(); ++i) {
        if (!isKept.at(i))
            continue;
        const int first = atoms.size();
        for (int k = 0; k < crystal.operations.size(); ++k) {
            const Operation &operation = crystal.operations.at(k);
            Vector3d place = operation.rotation * crystal.sites.at(i).place + operation.shift;
            if (crystal.isPeriodic)
                place -= place.array().floor().matrix();
            const bool isNew =
                std::none_of(atoms.begin() + first, atoms.end(), [&](const CellAtom &other) {
                    Vector3d way = place - other.place;
                    if (crystal.isPeriodic)
                        way -= way.array().round().matrix();
                    return cartesian(way).norm() < samePlace;
                });
            if (isNew)
                atoms.append({i, k, place, coordOf(crystal.sites.at(i).element, cartesian(place))});
        }
        tooLarge = tooLarge || atoms.size() > mostAtoms;
        if (tooLarge)
            return;
    }
}

/// Finds the bonds of all atoms, among the images that lie around the cell.
void Cell::connect()
{
    Vector3i reach = Vector3i::Zero();
    Vector3d margin = Vector3d::Zero();
    if (crystal.isPeriodic) {
        const Eigen::Matrix3d inverse = crystal.toCartesian.inverse();
        for (int i = 0; i < 3; ++i) {
            margin[i] = bondLengths::longest * inverse.row(i).norm();
            reach[i] = static_cast<int>(std::ceil(margin[i]));
        }
    }
    QVector<Coord> around;
    QVector<Neighbour> images;
    for (int i = 0; i < atoms.size(); ++i)
        for (int x = -reach[0]; x <= reach[0]; ++x)
            for (int y = -reach[1]; y <= reach[1]; ++y)
                for (int z = -reach[2]; z <= reach[2]; ++z) {
                    const Vector3i shift(x, y, z);
                    const Vector3d place = atoms.at(i).place + shift.cast<double>();
                    if ((place.array() < -margin.array()).any() ||
                        (place.array() > 1.0 + margin.array()).any())
                        if (crystal.isPeriodic)
                            continue;
                    images.append({i, shift});
                    around.append(coordOf(atoms.at(i).atom.label, cartesian(place)));
                }
    const AtomGrid grid(around, bondLengths::longest);
    neighbours.resize(atoms.size());
    for (int i = 0; i < atoms.size(); ++i) {
        const Coord &atom = atoms.at(i).atom;
        const bool isHydrogen = bondLengths::isHydrogen(atom);
        double least = bondLengths::tolerance;
        grid.visitEarlier(atom, around.size(), [&](int other) {
            const Coord &next = around.at(other);
            const Neighbour &image = images.at(other);
            const double excess =
                distanceOf(atom, next) - bondLengths::radiusOf(atom) - bondLengths::radiusOf(next);
            if ((image.atom == i && image.shift.isZero()) || excess >= least ||
                !mayBond(atom, next))
                return false;
            if (isHydrogen) {
                neighbours[i].clear();
                least = excess;
            }
            neighbours[i].append(image);
            return false;
        });
    }
    // A hydrogen atom is bonded where it is best bonded, and nowhere else.
    for (int i = 0; i < atoms.size(); ++i) {
        if (bondLengths::isHydrogen(atoms.at(i).atom))
            continue;
        QVector<Neighbour> &own = neighbours[i];
        own.erase(std::remove_if(own.begin(), own.end(),
                                 [&](const Neighbour &next) {
                                     if (!bondLengths::isHydrogen(atoms.at(next.atom).atom))
                                         return false;
                                     const QVector<Neighbour> &back = neighbours.at(next.atom);
                                     return back.isEmpty() || back.first().atom != i ||
                                            back.first().shift != -next.shift;
                                 }),
                  own.end());
    }
}

Cell::Molecule Cell::grow(int start, const QSet<int> &omitted) const
{
    Molecule molecule;
    QVector<int> indexOf(atoms.size(), -1);
    Eigen::Matrix<double, Eigen::Dynamic, 3> periods(0, 3);
    molecule.atoms.append({start, Vector3i::Zero()});
    indexOf[start] = 0;
    for (int k = 0; k < molecule.atoms.size(); ++k) {
        const Neighbour current = molecule.atoms.at(k);
        for (const Neighbour &next : neighbours.at(current.atom)) {
            if (omitted.contains(next.atom))
                continue;
            const Vector3i shift = current.shift + next.shift;
            if (indexOf.at(next.atom) < 0) {
                indexOf[next.atom] = molecule.atoms.size();
                molecule.atoms.append({next.atom, shift});
                continue;
            }
            const Vector3i period = shift - molecule.atoms.at(indexOf.at(next.atom)).shift;
            if (period.isZero() || molecule.dimensions == 3)
                continue;
            Eigen::Matrix<double, Eigen::Dynamic, 3> more(periods.rows() + 1, 3);
            more << periods, period.cast<double>().transpose();
            const int rank = static_cast<int>(more.fullPivLu().rank());
            if (rank == molecule.dimensions)
                continue;
            molecule.dimensions = rank;
            periods = more;
        }
    }
    return molecule;
}

QVector<Coord> Cell::placesOf(const Molecule &molecule) const
{
    QVector<Coord> places;
    for (const Neighbour &atom : molecule.atoms)
        places.append(coordOf(atoms.at(atom.atom).atom.label,
                              cartesian(atoms.at(atom.atom).place + atom.shift.cast<double>())));
    return places;
}

/// Of two atoms in one place the one to leave out: the one with the lower occupancy, the later one
/// when they are equal; -1 when there is no such pair.
int Cell::loserOf(const Molecule &molecule) const
{
    for (const auto &pair : disorder::pairs(placesOf(molecule))) {
        const int a = molecule.atoms.at(pair.first).atom;
        const int b = molecule.atoms.at(pair.second).atom;
        const double occupancyOfA = crystal.sites.at(atoms.at(a).site).occupancy;
        const double occupancyOfB = crystal.sites.at(atoms.at(b).site).occupancy;
        if (std::min(occupancyOfA, occupancyOfB) > 0.999 || isLanthanide(atoms.at(a).atom) ||
            isLanthanide(atoms.at(b).atom))
            continue; // no disorder that the file tells of
        if (occupancyOfA != occupancyOfB)
            return occupancyOfA < occupancyOfB ? a : b;
        const auto order = [this](int atom) {
            return std::make_pair(atoms.at(atom).operation, atoms.at(atom).site);
        };
        return order(a) < order(b) ? b : a;
    }
    return -1;
}

/// The disordered atoms that go with one: those of its set by the same operation, or its hydrogen
/// atoms.
QSet<int> Cell::imageOf(int atom) const
{
    QSet<int> image{atom};
    const int set = sets.at(atoms.at(atom).site);
    for (int i = 0; i < atoms.size() && set >= 0; ++i)
        if (sets.at(atoms.at(i).site) == set && atoms.at(i).operation == atoms.at(atom).operation)
            image.insert(i);
    for (const Neighbour &next : neighbours.at(atom))
        if (bondLengths::isHydrogen(atoms.at(next.atom).atom))
            image.insert(next.atom);
    return image;
}

/// The molecule of an atom without second places of disordered atoms.
Cell::Molecule Cell::moleculeOf(int start, QSet<int> &omitted) const
{
    Molecule molecule = grow(start, omitted);
    for (int loser = loserOf(molecule); loser >= 0; loser = loserOf(molecule)) {
        const QSet<int> image = imageOf(loser) - QSet<int>{start};
        if (omitted.contains(image))
            break;
        omitted += image;
        molecule = grow(start, omitted);
    }
    return molecule;
}

QString formulaOf(const QVector<Coord> &atoms)
{
    QMap<QString, int> counts;
    for (const Coord &atom : atoms)
        ++counts[bondLengths::isHydrogen(atom) ? QStringLiteral("H") : atom.label];
    return hillFormula(counts);
}

QStringList Cell::warningsOf(const Molecule &molecule, const QVector<Coord> &places,
                             const QSet<int> &omitted) const
{
    QSet<int> setsOfMolecule;
    QStringList kept;
    QStringList partial;
    QStringList names;
    for (const Neighbour &atom : molecule.atoms) {
        const int index = atoms.at(atom.atom).site;
        const Site &site = crystal.sites.at(index);
        const QString text =
            QStringLiteral("%1 %2").arg(site.name, QString::number(site.occupancy));
        names.append(site.name);
        if (site.occupancy < 0.999 && !partial.contains(text))
            partial.append(text);
        if (sets.at(index) >= 0 && !kept.contains(site.name))
            kept.append(site.name);
        setsOfMolecule.insert(sets.at(index));
    }
    QStringList left;
    for (int i = 0; i < atoms.size(); ++i)
        if (omitted.contains(i))
            left.append(crystal.sites.at(atoms.at(i).site).name);
    for (int i = 0; i < sets.size(); ++i)
        if (!isKept.at(i) && setsOfMolecule.contains(sets.at(i)))
            left.append(crystal.sites.at(i).name);
    left.removeDuplicates();
    QStringList warnings;
    if (!left.isEmpty())
        warnings.append(
            LanqorInputData::tr("of disordered atoms those with the highest occupancy "
                                "are kept (%1); left out are %2")
                .arg(kept.isEmpty() ? LanqorInputData::tr("of equal ones the first") : listOf(kept),
                     listOf(left)));
    if (!partial.isEmpty())
        warnings.append(LanqorInputData::tr("atoms with an occupancy below 1 are taken as whole, "
                                            "each image of them: %1; remove those too many")
                            .arg(listOf(partial)));
    const QStringList open = openValences(places, names);
    if (!open.isEmpty())
        warnings.append(LanqorInputData::tr("hydrogen atoms seem to be missing on %1; add them, "
                                            "since charge and energies are wrong without")
                            .arg(listOf(open)));
    return warnings;
}

Complex Cell::complexOf(int ion, QSet<int> &seenSites) const
{
    QSet<int> omitted;
    Molecule molecule = moleculeOf(ion, omitted);
    for (const Neighbour &atom : molecule.atoms)
        seenSites.insert(atoms.at(atom.atom).site);
    for (const int atom : omitted)
        seenSites.insert(atoms.at(atom).site);
    Complex complex;
    complex.ion = crystal.sites.at(atoms.at(ion).site).name;
    if (molecule.dimensions > 0) {
        const QString kinds[] = {LanqorInputData::tr("a chain"), LanqorInputData::tr("a layer"),
                                 LanqorInputData::tr("a framework")};
        complex.error = LanqorInputData::tr("the bonds around %1 go on without end (%2): an "
                                            "extended solid holds no single complex. Cut out a "
                                            "model of it and give that as .xyz or .mol2")
                            .arg(complex.ion, kinds[molecule.dimensions - 1]);
        return complex;
    }
    const QVector<Coord> places = placesOf(molecule);
    const auto rank = [&](const Neighbour &atom) {
        const Coord place =
            coordOf(atoms.at(atom.atom).atom.label,
                    cartesian(atoms.at(atom.atom).place + atom.shift.cast<double>()));
        return atom.atom == ion                                              ? 0
               : distanceOf(place, places.first()) < bondCutOff(place.label) ? 1
                                                                             : 2;
    };
    std::stable_sort(molecule.atoms.begin(), molecule.atoms.end(),
                     [&](const Neighbour &a, const Neighbour &b) { return rank(a) < rank(b); });
    complex.atoms = placesOf(molecule);
    complex.formula = formulaOf(complex.atoms);
    complex.warnings = warningsOf(molecule, complex.atoms, omitted);
    return complex;
}

/// Formulas of the molecules of sites that no complex holds.
QStringList Cell::remainderOf(const QSet<int> &seenSites) const
{
    QSet<int> seen = seenSites;
    QStringList formulas;
    for (int i = 0; i < atoms.size(); ++i) {
        if (seen.contains(atoms.at(i).site))
            continue;
        QSet<int> omitted;
        const Molecule molecule = moleculeOf(i, omitted);
        for (const Neighbour &atom : molecule.atoms)
            omitted.insert(atom.atom);
        for (const int atom : omitted)
            seen.insert(atoms.at(atom).site);
        formulas.append(formulaOf(placesOf(molecule)));
    }
    formulas.removeDuplicates();
    return formulas;
}

QVector<Complex> Cell::complexes() const
{
    QVector<Complex> found;
    QSet<int> seenSites;
    for (int i = 0; i < atoms.size(); ++i)
        if (isLanthanide(atoms.at(i).atom) && !seenSites.contains(atoms.at(i).site))
            found.append(complexOf(i, seenSites));
    const QStringList rest = remainderOf(seenSites);
    if (!rest.isEmpty())
        for (Complex &complex : found)
            complex.warnings.append(
                LanqorInputData::tr("not bonded to an ion and left out: %1").arg(listOf(rest)));
    return found;
}

} // namespace

QString listOf(const QStringList &names)
{
    constexpr int most = 20;
    return names.mid(0, most).join(QStringLiteral(", ")) +
           (names.size() > most ? LanqorInputData::tr(" and %1 more").arg(names.size() - most)
                                : QString());
}

QVector<Complex> complexesOf(const Crystal &crystal)
{
    const Cell cell(crystal);
    if (!cell.isTooLarge())
        return cell.complexes();
    Complex none;
    none.error = LanqorInputData::tr("the cell holds more than %1 atoms").arg(mostAtoms);
    return {none};
}

} // namespace crystals

namespace structureFiles {

Structure readCrystal(const InputFile &file, Kind kind, int number)
{
    Structure structure;
    const crystals::Crystals crystals =
        kind == Kind::Pdb ? crystals::readPdb(file) : crystals::readCif(file);
    structure.error = crystals.error;
    if (!structure.error.isEmpty())
        return structure;
    QVector<crystals::Complex> complexes;
    for (const crystals::Crystal &crystal : crystals.found) {
        for (crystals::Complex &complex : crystals::complexesOf(crystal)) {
            complex.warnings = crystal.warnings + complex.warnings;
            complexes.append(complex);
        }
    }
    QStringList list;
    for (int i = 0; i < complexes.size(); ++i)
        list.append(QStringLiteral("  %1  %2  %3\n")
                        .arg(QString::number(i + 1), complexes.at(i).ion,
                             complexes.at(i).error.isEmpty() ? complexes.at(i).formula
                                                             : complexes.at(i).error));
    if (complexes.isEmpty())
        structure.error =
            LanqorInputData::tr("\nThere is no lanthanide ion (La to Lu) in: \n") + file.fileName();
    else if (number > complexes.size() || number < 0)
        structure.error =
            LanqorInputData::tr("\nThere is no complex %1 in %2; independent ones are:\n%3")
                .arg(QString::number(number), file.fileName(), list.join(QString()));
    else if (number == 0 && complexes.size() > 1)
        structure.error =
            LanqorInputData::tr("\nThere are %1 independent complexes in %2; choose one by its "
                                "number with --molecule:\n%3")
                .arg(QString::number(complexes.size()), file.fileName(), list.join(QString()));
    if (!structure.error.isEmpty())
        return structure;
    const crystals::Complex &chosen = complexes.at(number == 0 ? 0 : number - 1);
    structure.atoms = chosen.atoms;
    if (chosen.error.isEmpty())
        structure.warnings = chosen.warnings;
    else
        structure.error = QStringLiteral("\n%1: %2.").arg(file.fileName(), chosen.error);
    return structure;
}

} // namespace structureFiles
