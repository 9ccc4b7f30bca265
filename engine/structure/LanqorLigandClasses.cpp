#include "LanqorLigandClasses.h"

#include "structure/ligandGraph_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QMap>

#include <algorithm>

namespace {

QString tr(const char *text)
{
    return LanqorInputData::tr(text);
}

using Ring = QVector<int>;

/// A ligand and its rings.
class Ligand
{
public:
    explicit Ligand(const LigandGraph &graph)
        : graph(graph)
        , fives(conjugated(5))
        , sixes(conjugated(6))
    {}

    bool isPhenazine() const;
    /// Carbon atoms of deprotonated carboxyl groups.
    QVector<int> carboxylates() const;
    /// Whether such a group is bonded to a ring of pyridine, and whether beside its nitrogen.
    bool isOnPyridine(int carboxylate, bool *isBesideNitrogen) const;
    /// What the two carbonyl groups of beta-diketonates bear beside the carbon between them.
    QVector<QPair<int, int>> diketonateEnds() const;
    bool isAryl(int atom) const;
    bool isFluoroalkyl(int atom) const;
    bool isPolypyridine() const;
    QString fiveMemberedRing() const;
    bool isAntenna() const;

private:
    QVector<Ring> conjugated(int size) const;
    bool isConjugated(int atom) const;
    bool isTerminalOxygen(int atom) const { return graph.is(atom, "O") && graph.degree(atom) == 1; }
    int count(const Ring &ring, const char *element) const;
    bool isPyridine(const Ring &ring) const;
    int ringsWith(int first, int second) const;
    QVector<int> terminalOxygens(int carbon) const;

    const LigandGraph &graph;
    const QVector<Ring> fives;
    const QVector<Ring> sixes;
};

/// An atom that may take part in a conjugated ring: carbon with three neighbours, nitrogen with two
/// or three, oxygen, sulphur, selenium and tellurium with two. Bonds to the ion do not count.
bool Ligand::isConjugated(int atom) const
{
    const int degree = graph.degree(atom);
    if (graph.is(atom, "C"))
        return degree == 3;
    if (graph.is(atom, "N"))
        return degree == 2 || degree == 3;
    return degree == 2 && (graph.is(atom, "O") || graph.is(atom, "S") || graph.is(atom, "Se") ||
                           graph.is(atom, "Te"));
}

QVector<Ring> Ligand::conjugated(int size) const
{
    QVector<Ring> rings = graph.rings(size);
    const auto isOther = [this](const Ring &ring) {
        return !std::all_of(ring.begin(), ring.end(),
                            [this](int atom) { return isConjugated(atom); });
    };
    rings.erase(std::remove_if(rings.begin(), rings.end(), isOther), rings.end());
    return rings;
}

int Ligand::count(const Ring &ring, const char *element) const
{
    return static_cast<int>(
        std::count_if(ring.begin(), ring.end(), [&](int atom) { return graph.is(atom, element); }));
}

/// Five carbon atoms and a nitrogen that bears nothing.
bool Ligand::isPyridine(const Ring &ring) const
{
    return count(ring, "C") == 5 && count(ring, "N") == 1 &&
           std::all_of(ring.begin(), ring.end(), [this](int atom) {
               return !graph.is(atom, "N") || graph.degree(atom) == 2;
           });
}

/// Conjugated six-membered rings that hold both atoms.
int Ligand::ringsWith(int first, int second) const
{
    return static_cast<int>(std::count_if(sixes.begin(), sixes.end(), [&](const Ring &ring) {
        return ring.contains(first) && ring.contains(second);
    }));
}

/// A ring of pyrazine between two others: N at places 1 and 4, both bonds of carbon fused.
bool Ligand::isPhenazine() const
{
    for (const Ring &ring : sixes) {
        for (int i = 0; i < 3; ++i) {
            const bool isPyrazine = count(ring, "N") == 2 && count(ring, "C") == 4 &&
                                    graph.is(ring.at(i), "N") && graph.is(ring.at(i + 3), "N");
            if (isPyrazine && ringsWith(ring.at(i + 1), ring.at(i + 2)) > 1 &&
                ringsWith(ring.at((i + 4) % 6), ring.at((i + 5) % 6)) > 1)
                return true;
        }
    }
    return false;
}

QVector<int> Ligand::terminalOxygens(int carbon) const
{
    QVector<int> oxygens = graph.neighboursOf(carbon, "O");
    oxygens.erase(std::remove_if(oxygens.begin(), oxygens.end(),
                                 [this](int atom) { return !isTerminalOxygen(atom); }),
                  oxygens.end());
    return oxygens;
}

QVector<int> Ligand::carboxylates() const
{
    QVector<int> found;
    for (int atom = 0; atom < graph.size(); ++atom)
        if (graph.is(atom, "C") && graph.degree(atom) == 3 && terminalOxygens(atom).size() == 2)
            found.append(atom);
    return found;
}

bool Ligand::isOnPyridine(int carboxylate, bool *isBesideNitrogen) const
{
    for (const Ring &ring : sixes) {
        for (const int atom : graph.neighboursOf(carboxylate, "C")) {
            if (!ring.contains(atom) || count(ring, "N") == 0)
                continue;
            *isBesideNitrogen = !graph.neighboursOf(atom, "N").isEmpty();
            return true;
        }
    }
    return false;
}

/// O=C(R)-CH-C(R')=O outside of rings: what R and R' begin with.
QVector<QPair<int, int>> Ligand::diketonateEnds() const
{
    QVector<QPair<int, int>> ends;
    const auto isInRing = [this](int atom) {
        const auto holds = [atom](const Ring &ring) { return ring.contains(atom); };
        return std::any_of(fives.begin(), fives.end(), holds) ||
               std::any_of(sixes.begin(), sixes.end(), holds);
    };
    /// The end of a carbonyl group beside @p middle; -1 when it is none.
    const auto endOf = [&](int carbon, int middle) {
        if (graph.degree(carbon) != 3 || terminalOxygens(carbon).size() != 1 || isInRing(carbon))
            return -1;
        for (const int next : graph.neighbours.at(carbon))
            if (next != middle && !isTerminalOxygen(next))
                return next;
        return -1;
    };
    for (int middle = 0; middle < graph.size(); ++middle) {
        const QVector<int> carbons = graph.neighboursOf(middle, "C");
        if (!graph.is(middle, "C") || carbons.size() != 2 ||
            graph.neighboursOf(middle, "H").size() != 1 || graph.degree(middle) != 3)
            continue;
        const int first = endOf(carbons.first(), middle);
        const int second = endOf(carbons.last(), middle);
        if (first >= 0 && second >= 0)
            ends.append({first, second});
    }
    return ends;
}

bool Ligand::isAryl(int atom) const
{
    const auto holds = [atom](const Ring &ring) { return ring.contains(atom); };
    return std::any_of(sixes.begin(), sixes.end(), holds) ||
           std::any_of(fives.begin(), fives.end(), holds);
}

bool Ligand::isFluoroalkyl(int atom) const
{
    return graph.is(atom, "C") && graph.degree(atom) == 4 &&
           graph.neighboursOf(atom, "F").size() >= 2;
}

/// Nothing but C, H and N, every N in a ring of pyridine, all other conjugated rings of benzene,
/// and two rings of pyridine bonded beside their nitrogen atoms.
bool Ligand::isPolypyridine() const
{
    const auto isPlain = [this](const Ring &ring) {
        return isPyridine(ring) || count(ring, "C") == ring.size();
    };
    if (!fives.isEmpty() || !std::all_of(sixes.begin(), sixes.end(), isPlain))
        return false;
    QVector<int> nitrogens;
    for (int atom = 0; atom < graph.size(); ++atom) {
        if (graph.is(atom, "N"))
            nitrogens.append(atom);
        else if (!graph.is(atom, "C") && !graph.is(atom, "H"))
            return false;
    }
    const auto isInPyridine = [this](int nitrogen) {
        return std::any_of(sixes.begin(), sixes.end(), [&](const Ring &ring) {
            return ring.contains(nitrogen) && isPyridine(ring);
        });
    };
    if (!std::all_of(nitrogens.begin(), nitrogens.end(), isInPyridine))
        return false;
    for (const int nitrogen : qAsConst(nitrogens))
        for (const int beside : graph.neighboursOf(nitrogen, "C"))
            for (const int across : graph.neighboursOf(beside, "C"))
                for (const int other : graph.neighboursOf(across, "N"))
                    if (other != nitrogen && ringsWith(nitrogen, other) == 0)
                        return true;
    return false;
}

/// The rule of thiophene, furan and pyrrole: all atoms conjugated, one of them bringing two
/// electrons, and no carbonyl group on the ring (pyrazolones are cross-conjugated).
QString Ligand::fiveMemberedRing() const
{
    for (const Ring &ring : fives) {
        const bool bearsOxygen = std::any_of(ring.begin(), ring.end(), [this](int atom) {
            return !terminalOxygens(atom).isEmpty();
        });
        if (bearsOxygen)
            continue;
        QMap<QString, int> counts;
        for (const int atom : ring)
            ++counts[graph.elements.at(atom)];
        QString text;
        for (auto entry = counts.begin(); entry != counts.end(); ++entry)
            text += entry.key() + (entry.value() > 1 ? QString::number(entry.value()) : QString());
        return text;
    }
    return QString();
}

/// Connected carbon and nitrogen atoms that may be conjugated; those of amides and ureas are
/// too few.
bool Ligand::isAntenna() const
{
    constexpr int leastAtoms = 3;
    constexpr int leastCarbons = 2;
    const auto isMember = [this](int atom) {
        return (graph.is(atom, "C") || graph.is(atom, "N")) && isConjugated(atom);
    };
    QVector<bool> isVisited(graph.size(), false);
    for (int start = 0; start < graph.size(); ++start) {
        if (isVisited.at(start) || !isMember(start))
            continue;
        int atoms = 0;
        int carbons = 0;
        bool hasHeteroatom = false;
        QVector<int> pending{start};
        isVisited[start] = true;
        while (!pending.isEmpty()) {
            const int atom = pending.takeLast();
            ++atoms;
            carbons += graph.is(atom, "C") ? 1 : 0;
            hasHeteroatom = hasHeteroatom || graph.is(atom, "N");
            for (const int next : graph.neighbours.at(atom)) {
                hasHeteroatom = hasHeteroatom || graph.is(next, "O") || graph.is(next, "S") ||
                                graph.is(next, "N");
                if (!isVisited.at(next) && isMember(next)) {
                    isVisited[next] = true;
                    pending.append(next);
                }
            }
        }
        if (atoms >= leastAtoms && carbons >= leastCarbons && hasHeteroatom)
            return true;
    }
    return false;
}

LigandClass classOf(const Ligand &ligand, bool *isBesideNitrogen)
{
    if (ligand.isPhenazine())
        return LigandClass::Phenazine;
    const QVector<int> carboxylates = ligand.carboxylates();
    for (const int carbon : carboxylates)
        if (ligand.isOnPyridine(carbon, isBesideNitrogen))
            return LigandClass::PyridineCarboxylate;
    if (!carboxylates.isEmpty())
        return LigandClass::Carboxylate;
    const auto diketonates = ligand.diketonateEnds();
    for (const auto &ends : diketonates)
        if (ligand.isAryl(ends.first) || ligand.isAryl(ends.second))
            return LigandClass::ArylDiketonate;
    for (const auto &ends : diketonates)
        if (ligand.isFluoroalkyl(ends.first) || ligand.isFluoroalkyl(ends.second))
            return LigandClass::FluoroalkylDiketonate;
    return ligand.isPolypyridine() ? LigandClass::Polypyridine : LigandClass::Other;
}

/// What GFN1 is worth for a class: standard deviation and known error, cm^-1, and what these stand
/// on.
struct ClassFacts
{
    LigandClass ligandClass;
    const char *name;
    double standardDeviation;
    const char *error;
    const char *basis;
};

constexpr double knownDirection = 3000.0; // cm^-1
constexpr ClassFacts classFacts[] = {
    {LigandClass::ArylDiketonate, "aryl or heteroaryl beta-diketonates", 500.0, "",
     "RMS error 420 over six ligands"},
    {LigandClass::Polypyridine, "bipyridine, phenanthroline and terpyridine types", 800.0, "",
     "RMS error 790 over five ligands, without a donor beside them"},
    {LigandClass::Carboxylate, "carboxylates", knownDirection, "too high by 1300 to 4200 cm^-1",
     "five ligands"},
    {LigandClass::PyridineCarboxylate, "pyridine carboxylates", knownDirection,
     "too low by 1700 to 5200 cm^-1", "two ligands, picolinate and dipicolinate"},
    {LigandClass::FluoroalkylDiketonate, "beta-diketonates of perfluoroalkyl and alkyl groups",
     knownDirection, "too high by 1500 to 2700 cm^-1", "three ligands"},
    {LigandClass::Phenazine, "phenazines", knownDirection, "too low by 4500 cm^-1",
     "one ligand, dipyridophenazine"},
    {LigandClass::Other, "other ligands", 2000.0, "",
     "errors from -2850 to 3740 over ligands of many kinds"},
};

} // namespace

LigandClassResults LanqorLigandClasses::classify(const QVector<Coord> &ligand)
{
    const LigandGraph graph = LigandGraph::of(ligand);
    const Ligand molecule(graph);
    bool isBesideNitrogen = false;
    LigandClassResults results;
    results.ligandClass = classOf(molecule, &isBesideNitrogen);
    results.fiveMemberedRing = molecule.fiveMemberedRing();
    results.isAntenna = molecule.isAntenna();
    results.hasFiveMemberedRing = !results.fiveMemberedRing.isEmpty();
    for (const ClassFacts &facts : classFacts) {
        if (facts.ligandClass != results.ligandClass)
            continue;
        results.name = tr(facts.name);
        results.gfn1StandardDeviation = facts.standardDeviation;
        results.gfn1Error = tr(facts.error);
        results.gfn1Basis = tr(facts.basis);
    }
    // Picolinates are bonded to the ion by both groups; nicotinates were not looked at.
    if (results.ligandClass == LigandClass::PyridineCarboxylate && !isBesideNitrogen) {
        results.gfn1Error.clear();
        results.gfn1Basis = tr("no ligand whose carboxylate is not beside the nitrogen");
    }
    return results;
}
