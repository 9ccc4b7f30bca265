#include "structure/knownFragments_p.h"

#include "structure/ligandGraph_p.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace knownFragments {

namespace {

/// An ion or molecule of the table.
struct Species
{
    Fragment what;
    LigandGraph graph;
    bool isOnIonOnly = false; ///< elsewhere it is rather what has lost a hydrogen atom
};

/// Graph of the table's notation: atoms in a row are bonded, brackets hold an atom with the number
/// of hydrogen atoms that it bears, parentheses a branch, and a digit behind an atom bonds it to
/// the one with the same digit. There are no orders of bonds.
LigandGraph graphOf(const QString &text)
{
    static const QRegularExpression token(
        QStringLiteral("\\[([A-Z][a-z]?)H([0-9]*)\\]|([A-Z][a-z]?)|([0-9])|([()])"));
    LigandGraph graph;
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
             graphOf(row[QStringLiteral("graph")].toString()),
             row[QStringLiteral("onIonOnly")].toBool()});
    return table;
}

std::optional<Fragment> find(const LigandGraph &graph, bool isOnIon)
{
    static const QVector<Species> table = readTable();
    for (const Species &species : table)
        if (species.graph.size() == graph.size() && (isOnIon || !species.isOnIonOnly) &&
            graph.isLike(species.graph))
            return species.what;
    return std::nullopt;
}

} // namespace

std::optional<Fragment> find(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
                             const QVector<structureFiles::Bond> &bonds)
{
    return find(LigandGraph::of(atoms, fragment.atoms, bonds), !fragment.coordinated.isEmpty());
}

std::optional<Fragment> find(const QVector<Coord> &molecule)
{
    return find(LigandGraph::of(molecule), false);
}

} // namespace knownFragments
