#include "LanqorDonorModel.h"

#include "core/covalentRadii_p.h"
#include "core/elements_p.h"
#include "structure/fragments_p.h"
#include "structure/knownFragments_p.h"
#include "structure/ligandGraph_p.h"
#include "structure/ligandName_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double pi = 3.14159265358979;
constexpr double waterDistance = 2.45;           // Angstrom, ion to O
constexpr double hydrogenDistance = 0.96;        // Angstrom, O to H
constexpr double halfAngle = 52.25 * pi / 180.0; // of H-O-H
constexpr double leastRoom = 2.0;                // Angstrom, O to the nearest atom of a ligand
constexpr int ligandsNeeded = 3;

/// A ligand or another fragment of the complex.
struct Member
{
    QString name; // in the structure
    QString formula;
    QVector<Coord> atoms;
    LigandGraph graph;
    std::optional<knownFragments::Fragment> known;
};

Member memberOf(const QString &name, const QVector<Coord> &atoms)
{
    return {name, ligandName::canonical(name), atoms, LigandGraph::of(atoms),
            knownFragments::find(atoms)};
}

struct Vector
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

Coord placed(const char *label, const Coord &from, const Vector &along, double length)
{
    return {QLatin1String(label), from.x + length * along.x, from.y + length * along.y,
            from.z + length * along.z};
}

/// Directions that cover the sphere evenly, the k-th of @p count: a spiral of the golden angle.
Vector spiralDirection(int k, int count)
{
    const double goldenAngle = pi * (3.0 - std::sqrt(5.0));
    const double z = 1.0 - (2.0 * k + 1.0) / count;
    const double r = std::sqrt(1.0 - z * z);
    return {r * std::cos(goldenAngle * k), r * std::sin(goldenAngle * k), z};
}

/// From @p place to the surface of the nearest atom, its covalent radius, Angstrom.
double roomAt(const Coord &place, const QVector<Coord> &atoms)
{
    double room = 1000.0;
    for (const Coord &atom : atoms)
        room = std::min(room, fragments::distance(place, atom) - covalentRadius(atom.label));
    return room;
}

/// The direction @p candidate(k) in which the atom that @p placeOf puts there has most room.
template <typename PlaceOf>
int roomiest(int count, const QVector<Coord> &atoms, const PlaceOf &roomOf)
{
    int best = 0;
    double most = -1000.0;
    for (int k = 0; k < count; ++k) {
        const double room = roomOf(k, atoms);
        if (room > most) {
            best = k;
            most = room;
        }
    }
    return best;
}

/// A direction at right angles to @p axis, turned by @p angle about it.
Vector perpendicular(const Vector &axis, double angle)
{
    const bool isAlongZ = std::abs(axis.z) > 0.9;
    const Vector other = isAlongZ ? Vector{1.0, 0.0, 0.0} : Vector{0.0, 0.0, 1.0};
    Vector u = {axis.y * other.z - axis.z * other.y, axis.z * other.x - axis.x * other.z,
                axis.x * other.y - axis.y * other.x};
    const double length = std::sqrt(u.x * u.x + u.y * u.y + u.z * u.z);
    u = {u.x / length, u.y / length, u.z / length};
    const Vector v = {axis.y * u.z - axis.z * u.y, axis.z * u.x - axis.x * u.z,
                      axis.x * u.y - axis.y * u.x};
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {c * u.x + s * v.x, c * u.y + s * v.y, c * u.z + s * v.z};
}

/// O and both H of a molecule of water on @p ion, in the largest gap among @p atoms.
QVector<Coord> waterOn(const Coord &ion, const QVector<Coord> &atoms)
{
    constexpr int directions = 2000; // 4.5 degrees apart
    constexpr int turns = 36;
    const int along = roomiest(directions, atoms, [&](int k, const QVector<Coord> &others) {
        return roomAt(placed("O", ion, spiralDirection(k, directions), waterDistance), others);
    });
    const Vector axis = spiralDirection(along, directions);
    const Coord oxygen = placed("O", ion, axis, waterDistance);
    const auto hydrogens = [&](int turn) {
        QVector<Coord> both;
        for (const double side : {1.0, -1.0}) {
            const Vector across = perpendicular(axis, pi * turn / turns);
            const double c = std::cos(halfAngle);
            const double s = side * std::sin(halfAngle);
            both.append(placed(
                "H", oxygen,
                {c * axis.x + s * across.x, c * axis.y + s * across.y, c * axis.z + s * across.z},
                hydrogenDistance));
        }
        return both;
    };
    const int turn = roomiest(turns, atoms, [&](int k, const QVector<Coord> &others) {
        const QVector<Coord> both = hydrogens(k);
        return std::min(roomAt(both.first(), others), roomAt(both.last(), others));
    });
    return QVector<Coord>{oxygen} + hydrogens(turn);
}

} // namespace

class LanqorDonorModelPrivate
{
    Q_DECLARE_TR_FUNCTIONS(LanqorDonorModel)

public:
    explicit LanqorDonorModelPrivate(const OrganizeResults &structure);

    /// Indices of the ligands and other fragments, those bound to the ion first, that @p name
    /// means; empty when there is none.
    QVector<int> ligandsNamed(const QString &name) const;
    QString namesOfLigands() const;
    std::optional<int> chargeOf(const QVector<int> &wanted) const;
    /// What is wrong; empty when the model is made.
    QString make(const QString &name, DonorModelResults &model) const;
    QString makeTris(const QVector<int> &named, DonorModelResults &model) const;
    bool isAtIon(const Member &member) const;

    Coord ion;
    QVector<Member> members;
    std::optional<int> complexCharge;
    std::optional<int> ligandCharge;
    DonorModelResults results;
};

LanqorDonorModelPrivate::LanqorDonorModelPrivate(const OrganizeResults &structure)
{
    QStringList names;
    for (const OrganizedLigand &ligand : structure.ligands)
        names.append(ligand.name);
    QVector<QVector<Coord>> atoms(names.size());
    for (int i = 0; i < structure.atoms.size(); ++i) {
        const OrganizedAtom &atom = structure.atoms.at(i);
        if (i == 0) {
            ion = atom.position;
            continue;
        }
        int at = names.indexOf(atom.fragment);
        if (at < 0) {
            at = names.size();
            names.append(atom.fragment);
            atoms.append(QVector<Coord>());
        }
        atoms[at].append(atom.position);
    }
    for (int i = 0; i < names.size(); ++i)
        members.append(memberOf(names.at(i), atoms.at(i)));
}

QVector<int> LanqorDonorModelPrivate::ligandsNamed(const QString &name) const
{
    const QString formula = ligandName::canonical(name);
    QVector<int> found;
    for (int i = 0; i < members.size(); ++i) {
        const Member &ligand = members.at(i);
        const bool isNamed =
            ligand.formula == formula ||
            (ligand.known && ligand.known->name.compare(name.trimmed(), Qt::CaseInsensitive) == 0);
        if (isNamed && (found.isEmpty() || ligand.graph.isLike(members.at(found.first()).graph)))
            found.append(i);
    }
    return found;
}

QString LanqorDonorModelPrivate::namesOfLigands() const
{
    QStringList names;
    for (int i = 0; i < members.size(); ++i)
        if (!names.contains(members.at(i).formula))
            names.append(members.at(i).formula);
    return names.join(QStringLiteral(", "));
}

/// 3 of the ion and those of all fragments make the charge of the complex.
std::optional<int> LanqorDonorModelPrivate::chargeOf(const QVector<int> &wanted) const
{
    const Member &ligand = members.at(wanted.first());
    if (ligandCharge || ligand.known)
        return ligandCharge ? *ligandCharge : ligand.known->charge;
    if (!complexCharge)
        return std::nullopt;
    int rest = *complexCharge - 3;
    for (int i = 0; i < members.size(); ++i) {
        if (wanted.contains(i))
            continue;
        if (!members.at(i).known)
            return std::nullopt;
        rest -= members.at(i).known->charge;
    }
    if (rest % wanted.size() != 0)
        return std::nullopt;
    return rest / wanted.size();
}

/// Also in geometries whose bonds are too long to count for the coordination number.
bool LanqorDonorModelPrivate::isAtIon(const Member &member) const
{
    constexpr double longestBond = 3.2; // Angstrom
    return std::any_of(member.atoms.begin(), member.atoms.end(), [this](const Coord &atom) {
        return fragments::distance(ion, atom) < longestBond;
    });
}

QString LanqorDonorModelPrivate::makeTris(const QVector<int> &named, DonorModelResults &model) const
{
    QVector<int> wanted;
    for (const int i : named)
        if (isAtIon(members.at(i)))
            wanted.append(i);
    if (wanted.size() < ligandsNeeded)
        return tr("an anion is calculated as [%1(L)3(H2O)], but the complex holds %2 of %3: give "
                  "a structure with three of them, or a measured triplet energy")
            .arg(ion.label, QString::number(wanted.size()), model.ligand);
    model.atoms = {ion};
    QVector<Coord> ligands;
    for (const int i : wanted.mid(0, ligandsNeeded))
        ligands += members.at(i).atoms;
    bool holdsWater = false;
    for (int i = 0; i < members.size(); ++i) {
        if (wanted.mid(0, ligandsNeeded).contains(i))
            continue;
        model.removed.append(members.at(i).name);
        holdsWater = holdsWater || members.at(i).formula == QLatin1String("H2O");
    }
    if (holdsWater && model.removed.size() == 1)
        return tr("the complex is [%1(%2)3(H2O)] itself: there is no smaller model. Give a "
                  "measured triplet energy.")
            .arg(ion.label, model.ligand);
    const QVector<Coord> water = waterOn(ion, ligands);
    model.nearestToWater = 1000.0;
    for (const Coord &atom : qAsConst(ligands))
        model.nearestToWater =
            std::min(model.nearestToWater, fragments::distance(water.first(), atom));
    if (model.nearestToWater < leastRoom)
        return tr("there is no room for a molecule of water at 2.45 Angstrom from the ion: the "
                  "largest gap leaves %1 Angstrom to the nearest atom. Give a structure with less "
                  "crowded ligands, or a measured triplet energy.")
            .arg(QString::number(model.nearestToWater, 'f', 2));
    model.atoms += ligands + water;
    model.description = QStringLiteral("[%1(%2)3(H2O)]").arg(ion.label, model.ligand);
    return QString();
}

QString LanqorDonorModelPrivate::make(const QString &name, DonorModelResults &model) const
{
    const QVector<int> wanted = ligandsNamed(name);
    if (wanted.isEmpty())
        return tr("the complex has no ligand %1; it has %2").arg(name, namesOfLigands());
    const Member &ligand = members.at(wanted.first());
    const std::optional<int> charge = chargeOf(wanted);
    model.ligand = ligand.formula;
    if (!charge)
        return tr("the charge of %1 is not known: it is no common ligand, and the charges of the "
                  "complex and of its other ligands do not tell it. Give the charge of the "
                  "ligand.")
            .arg(ligand.formula);
    model.ligandCharge = *charge;
    int electrons = -*charge;
    for (const Coord &atom : ligand.atoms)
        electrons += atomicNumberOf(elementLabel(atom.label));
    if (electrons % 2 != 0)
        return tr("%1 of charge %2 has an odd number of electrons: the charge is wrong, or "
                  "hydrogen atoms are missing")
            .arg(ligand.formula, QString::number(*charge));
    if (*charge == -1)
        return makeTris(wanted, model);
    if (*charge != 0)
        return tr("%1 has the charge %2: a model is known for neutral ligands (alone) and for "
                  "those of charge -1 ([%3(L)3(H2O)]) only. Give a measured triplet energy.")
            .arg(ligand.formula, QString::number(*charge), ion.label);
    model.isLigandAlone = true;
    model.atoms = ligand.atoms;
    for (int i = 0; i < members.size(); ++i)
        if (i != wanted.first())
            model.removed.append(members.at(i).name);
    model.description = tr("%1 alone").arg(ligand.formula);
    return QString();
}

LanqorDonorModel::LanqorDonorModel(QObject *parent, const OrganizeResults &structure)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorDonorModelPrivate>(structure))
{}

LanqorDonorModel::~LanqorDonorModel() = default;

void LanqorDonorModel::setComplexCharge(const int &charge)
{
    d->complexCharge = charge;
}

void LanqorDonorModel::setLigandCharge(const int &charge)
{
    d->ligandCharge = charge;
}

bool LanqorDonorModel::build(const QString &ligand)
{
    DonorModelResults model;
    const QString fault = d->make(ligand, model);
    if (!fault.isEmpty())
        return failWith(
            LanqorDonorModelPrivate::tr("No model of the ligand for GFN1: %1").arg(fault));
    d->results = model;
    return true;
}

DonorModelResults LanqorDonorModel::getResults() const
{
    return d->results;
}
