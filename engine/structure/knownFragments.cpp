#include "structure/knownFragments_p.h"

#include <QHash>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace knownFragments {

namespace {

/// An ion or molecule: atoms with the hydrogens that they bear, and bonds as pairs of their numbers
/// from 1.
struct Species
{
    int charge;
    const char *atoms;
    const char *bonds;
};

constexpr Species knownSpecies[] = {
    {-1, "F", ""},
    {-1, "Cl", ""},
    {-1, "Br", ""},
    {-1, "I", ""},
    {+1, "Li", ""},
    {+1, "Na", ""},
    {+1, "K", ""},
    {+1, "Rb", ""},
    {+1, "Cs", ""},
    {-1, "N O O O", "12 13 14"},                                          // nitrate
    {-1, "Cl O O O O", "12 13 14 15"},                                    // perchlorate
    {-1, "B F F F F", "12 13 14 15"},                                     // tetrafluoroborate
    {-1, "P F F F F F F", "12 13 14 15 16 17"},                           // hexafluorophosphate
    {-1, "C F F F S O O O", "12 13 14 15 56 57 58"},                      // triflate
    {-1, "CH3 C O O", "12 23 24"},                                        // acetate
    {-1, "C F F F C O O", "12 13 14 15 56 57"},                           // trifluoroacetate
    {+1, "OH3", ""},                                                      // hydronium
    {+1, "NH4", ""},                                                      // ammonium
    {+1, "N CH3 CH3 CH3 CH3", "12 13 14 15"},                             // tetramethylammonium
    {+1, "NH CH2 CH3 CH2 CH3 CH2 CH3", "12 23 14 45 16 67"},              // triethylammonium
    {+1, "N CH2 CH3 CH2 CH3 CH2 CH3 CH2 CH3", "12 23 14 45 16 67 18 89"}, // tetraethylammonium
    {0, "OH2", ""},                                                       // water
    {0, "CH3 OH", "12"},                                                  // methanol
    {0, "CH3 CH2 OH", "12 23"},                                           // ethanol
    {0, "CH3 CH OH CH3", "12 23 24"},                                     // 2-propanol
    {0, "CH3 C N", "12 23"},                                              // acetonitrile
    {0, "O CH N CH3 CH3", "12 23 34 35"},                                 // dimethylformamide
    {0, "S O CH3 CH3", "12 13 14"},                                       // dimethyl sulfoxide
    {0, "O CH2 CH2 CH2 CH2", "12 23 34 45 51"},                           // tetrahydrofuran
    {0, "O CH2 CH2 O CH2 CH2", "12 23 34 45 56 61"},                      // 1,4-dioxane
    {0, "CH3 CH2 O CH2 CH3", "12 23 34 45"},                              // diethyl ether
    {0, "C O CH3 CH3", "12 13 14"},                                       // acetone
    {0, "CH3 C O O CH2 CH3", "12 23 24 45 56"},                           // ethyl acetate
    {0, "CH2 Cl Cl", "12 13"},                                            // dichloromethane
    {0, "CH Cl Cl Cl", "12 13 14"},                                       // chloroform
    {0, "CH2 CH2 Cl Cl", "12 13 24"},                                     // 1,2-dichloroethane
    {0, "CH CH CH CH CH CH", "12 23 34 45 56 61"},                        // benzene
    {0, "C CH CH CH CH CH CH3", "12 23 34 45 56 61 17"},                  // toluene
    {0, "N CH CH CH CH CH", "12 23 34 45 56 61"},                         // pyridine
    {0, "CH3 CH2 CH2 CH2 CH2 CH3", "12 23 34 45 56"},                     // hexane
};

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

Graph graphOf(const Species &species)
{
    static const QRegularExpression notation(
        QStringLiteral("^([A-Z][a-z]?)(?:H([0-9]*))?$")); // "Cl", "NH", "CH3"
    Graph graph;
    QVector<int> heavyAtoms;
    for (const QString &text : QString::fromLatin1(species.atoms).split(QLatin1Char(' '))) {
        const QRegularExpressionMatch match = notation.match(text);
        heavyAtoms.append(graph.add(match.captured(1)));
        const QString count = match.captured(2);
        const int hydrogens = count.isNull() ? 0 : count.isEmpty() ? 1 : count.toInt();
        for (int i = 0; i < hydrogens; ++i)
            graph.bond(heavyAtoms.last(), graph.add(QStringLiteral("H")));
    }
    const QStringList bonds =
        QString::fromLatin1(species.bonds).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &pair : bonds)
        graph.bond(heavyAtoms.at(pair.at(0).digitValue() - 1),
                   heavyAtoms.at(pair.at(1).digitValue() - 1));
    return graph;
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
    constexpr int rounds = 6; // bonds across the largest of the known species
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

std::optional<int> chargeOf(const QVector<Coord> &atoms, const fragments::Fragment &fragment,
                            const QVector<structureFiles::Bond> &bonds)
{
    constexpr int mostAtoms = 29; // of tetraethylammonium
    if (fragment.atoms.size() > mostAtoms)
        return std::nullopt;
    const Graph graph = graphOf(atoms, fragment, bonds);
    for (const Species &species : knownSpecies)
        if (areAlike(graph, graphOf(species)))
            return species.charge;
    return std::nullopt;
}

} // namespace knownFragments
