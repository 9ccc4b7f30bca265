#include "structure/knownFragments_p.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace knownFragments {

namespace {

/// Elements and the neighbours of each atom, counted from 0.
struct Graph
{
    QStringList elements;
    QVector<QSet<int>> neighbours;

    int add(const QString &element)
    {
        elements.append(element);
        neighbours.append(QSet<int>());
        return elements.size() - 1;
    }
    void bond(int first, int second)
    {
        neighbours[first].insert(second);
        neighbours[second].insert(first);
    }
};

/// An ion or molecule of the table.
struct Species
{
    Fragment what;
    Graph graph;
};

/// Graph of the table's notation: atoms in a row are bonded, brackets hold an atom with the number
/// of hydrogen atoms that it bears, parentheses a branch, and a digit behind an atom bonds it to
/// the one with the same digit. There are no orders of bonds.
Graph graphOf(const QString &text)
{
    static const QRegularExpression token(
        QStringLiteral("\\[([A-Z][a-z]?)H([0-9]*)\\]|([A-Z][a-z]?)|([0-9])|([()])"));
    Graph graph;
    QVector<int> branches;
    QHash<QString, int> openRings;
    int last = -1;
    for (auto tokens = token.globalMatch(text); tokens.hasNext();) {
        const QRegularExpressionMatch match = tokens.next();
        const QString ring = match.captured(4);
        if (match.captured(5) == QLatin1String("(")) {
            branches.append(last);
        } else if (!match.captured(5).isEmpty()) {
            last = branches.takeLast();
        } else if (!ring.isEmpty() && openRings.contains(ring)) {
            graph.bond(openRings.take(ring), last);
        } else if (!ring.isEmpty()) {
            openRings.insert(ring, last);
        } else {
            const int atom = graph.add(match.captured(1) + match.captured(3));
            if (last >= 0)
                graph.bond(last, atom);
            last = atom;
            const QString count = match.captured(2);
            const int hydrogens = match.captured(1).isEmpty() ? 0
                                  : count.isEmpty()           ? 1
                                                              : count.toInt();
            for (int i = 0; i < hydrogens; ++i)
                graph.bond(atom, graph.add(QStringLiteral("H")));
        }
    }
    return graph;
}

QVector<Species> readTable()
{
    QVector<Species> table;
    const QJsonArray rows = QJsonDocument::fromJson(QByteArray(ligandTable)).array();
    for (const QJsonValue &row : rows)
        table.append(
            {{row[QStringLiteral("name")].toString(), row[QStringLiteral("charge")].toInt()},
             graphOf(row[QStringLiteral("graph")].toString())});
    return table;
}

Graph graphOf(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
              const QVector<structureFiles::Bond> &bonds)
{
    Graph graph;
    QHash<int, int> places;
    for (const int atom : fragment.atoms) {
        const QString &label = atoms.at(atom).label;
        const bool isHydrogen = label == QLatin1String("D") || label == QLatin1String("T");
        places.insert(atom, graph.add(isHydrogen ? QStringLiteral("H") : label));
    }
    for (const structureFiles::Bond &bond : bonds)
        if (places.contains(bond.first) && places.contains(bond.second))
            graph.bond(places.value(bond.first), places.value(bond.second));
    return graph;
}

QStringList sortedElements(const Graph &graph)
{
    QStringList elements = graph.elements;
    elements.sort();
    return elements;
}

/// Gives atoms the same class whose surroundings are the same to as many bonds as there are rounds;
/// equal surroundings in both graphs have equal numbers.
void refineClasses(const Graph &graph, const QVector<int> &classes, QMap<QVector<int>, int> &known,
                   QVector<int> &refined)
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

/// Whether two graphs of the same elements have atoms of the same surroundings: enough to tell
/// isomers of this size apart.
bool areAlike(const Graph &a, const Graph &b)
{
    const QStringList elements = sortedElements(a);
    if (elements != sortedElements(b))
        return false;
    QVector<int> classesOfA;
    QVector<int> classesOfB;
    for (int i = 0; i < elements.size(); ++i) {
        classesOfA.append(elements.indexOf(a.elements.at(i)));
        classesOfB.append(elements.indexOf(b.elements.at(i)));
    }
    constexpr int rounds = 16; // more than the bonds across the largest of the known species
    for (int round = 0; round < rounds; ++round) {
        QMap<QVector<int>, int> known;
        const QVector<int> ofA = classesOfA;
        const QVector<int> ofB = classesOfB;
        refineClasses(a, ofA, known, classesOfA);
        refineClasses(b, ofB, known, classesOfB);
    }
    std::sort(classesOfA.begin(), classesOfA.end());
    std::sort(classesOfB.begin(), classesOfB.end());
    return classesOfA == classesOfB;
}

} // namespace

std::optional<Fragment> find(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
                             const QVector<structureFiles::Bond> &bonds)
{
    static const QVector<Species> table = readTable();
    const auto hasSize = [&](const Species &species) {
        return species.graph.elements.size() == fragment.atoms.size();
    };
    if (std::none_of(table.begin(), table.end(), hasSize))
        return std::nullopt;
    const Graph graph = graphOf(atoms, fragment, bonds);
    for (const Species &species : table)
        if (hasSize(species) && areAlike(graph, species.graph))
            return species.what;
    return std::nullopt;
}

} // namespace knownFragments
