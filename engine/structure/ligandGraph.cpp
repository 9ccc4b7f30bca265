#include "structure/ligandGraph_p.h"

#include "structure/fragments_p.h"

#include <QHash>
#include <QMap>

#include <algorithm>
#include <numeric>

namespace {

QStringList sortedElements(const LigandGraph &graph)
{
    QStringList elements = graph.elements;
    elements.sort();
    return elements;
}

/// Gives atoms the same class whose surroundings are the same to as many bonds as there are rounds;
/// equal surroundings in both graphs have equal numbers.
void refineClasses(const LigandGraph &graph, const QVector<int> &classes,
                   QMap<QVector<int>, int> &known, QVector<int> &refined)
{
    for (int atom = 0; atom < classes.size(); ++atom) {
        QVector<int> surroundings;
        for (const int neighbour : graph.neighbours.at(atom))
            surroundings.append(classes.at(neighbour));
        std::sort(surroundings.begin(), surroundings.end());
        surroundings.prepend(classes.at(atom));
        refined[atom] = *known.insert(surroundings, known.value(surroundings, known.size()));
    }
}

/// No atom of a ligand has more neighbours; one with more is of a damaged structure.
constexpr int mostNeighbours = 6;

/// Extends @p path, whose first atom is the least one of the ring, to rings of @p size atoms.
void findRings(const LigandGraph &graph, int size, QVector<int> &path, QVector<QVector<int>> &found)
{
    const int last = path.last();
    for (const int next : graph.neighbours.at(last)) {
        // Once round in one direction: the second atom is less than the last one.
        if (path.size() == size && next == path.first() && path.at(1) < last)
            found.append(path);
        if (path.size() == size || next <= path.first() || path.contains(next) ||
            graph.degree(next) > mostNeighbours)
            continue;
        path.append(next);
        findRings(graph, size, path, found);
        path.removeLast();
    }
}

bool hasBondAcross(const LigandGraph &graph, const QVector<int> &ring)
{
    for (const int atom : ring) {
        const QSet<int> &own = graph.neighbours.at(atom);
        if (std::count_if(ring.begin(), ring.end(),
                          [&](int other) { return own.contains(other); }) > 2)
            return true;
    }
    return false;
}

} // namespace

int LigandGraph::add(const QString &element)
{
    elements.append(element);
    neighbours.append(QSet<int>());
    return elements.size() - 1;
}

void LigandGraph::bond(int first, int second)
{
    neighbours[first].insert(second);
    neighbours[second].insert(first);
}

QVector<int> LigandGraph::neighboursOf(int atom, const char *element) const
{
    QVector<int> found;
    for (const int neighbour : neighbours.at(atom))
        if (is(neighbour, element))
            found.append(neighbour);
    std::sort(found.begin(), found.end());
    return found;
}

LigandGraph LigandGraph::of(const QVector<Coord> &atoms, const QVector<int> &members,
                            const QVector<structureFiles::Bond> &bonds)
{
    LigandGraph graph;
    QHash<int, int> places;
    for (const int atom : members) {
        const QString &label = atoms.at(atom).label;
        const bool isHydrogen = label == QLatin1String("D") || label == QLatin1String("T");
        places.insert(atom, graph.add(isHydrogen ? QStringLiteral("H") : label));
    }
    for (const structureFiles::Bond &bond : bonds)
        if (places.contains(bond.first) && places.contains(bond.second))
            graph.bond(places.value(bond.first), places.value(bond.second));
    return graph;
}

LigandGraph LigandGraph::of(const QVector<Coord> &molecule)
{
    QVector<int> members(molecule.size());
    std::iota(members.begin(), members.end(), 0);
    return of(molecule, members, fragments::withMissingBonds(molecule, {}));
}

bool LigandGraph::isLike(const LigandGraph &other) const
{
    const QStringList sorted = sortedElements(*this);
    if (sorted != sortedElements(other))
        return false;
    QVector<int> ownClasses;
    QVector<int> otherClasses;
    for (int i = 0; i < sorted.size(); ++i) {
        ownClasses.append(sorted.indexOf(elements.at(i)));
        otherClasses.append(sorted.indexOf(other.elements.at(i)));
    }
    constexpr int rounds = 16; // more than the bonds across the largest of the known species
    for (int round = 0; round < rounds; ++round) {
        QMap<QVector<int>, int> known;
        const QVector<int> ofOwn = ownClasses;
        const QVector<int> ofOther = otherClasses;
        refineClasses(*this, ofOwn, known, ownClasses);
        refineClasses(other, ofOther, known, otherClasses);
    }
    std::sort(ownClasses.begin(), ownClasses.end());
    std::sort(otherClasses.begin(), otherClasses.end());
    return ownClasses == otherClasses;
}

QVector<QVector<int>> LigandGraph::rings(int size) const
{
    QVector<QVector<int>> found;
    for (int atom = 0; atom < elements.size(); ++atom) {
        QVector<int> path{atom};
        findRings(*this, size, path, found);
    }
    found.erase(std::remove_if(found.begin(), found.end(),
                               [this](const auto &ring) { return hasBondAcross(*this, ring); }),
                found.end());
    std::sort(found.begin(), found.end());
    return found;
}
