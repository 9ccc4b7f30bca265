#include "photophysics/donorCandidates_p.h"

#include "structure/knownFragments_p.h"
#include "structure/ligandGraph_p.h"
#include "structure/ligandName_p.h"

#include <LanqorEngine/LanqorLigandClasses.h>

namespace donorCandidates {

namespace {

constexpr double most = 0.5; // of hole, electron or change of bonds

/// Sum of the shares of some fragments.
double shareOn(const QVector<double> &shares, const QVector<int> &fragments)
{
    double sum = 0.0;
    for (const int fragment : fragments)
        sum += shares.value(fragment);
    return sum;
}

} // namespace

QVector<DonorCandidate> of(const QVector<DonorFragment> &fragments, const QVector<Coord> &atoms)
{
    QVector<DonorCandidate> candidates;
    QVector<LigandGraph> graphs;
    for (int f = 1; f < fragments.size(); ++f) {
        QVector<Coord> ligand;
        for (const int atom : fragments.at(f).atoms)
            ligand.append(atoms.value(atom - 1));
        const LigandGraph graph = LigandGraph::of(ligand);
        int same = 0;
        while (same < graphs.size() && !graphs.at(same).isLike(graph))
            ++same;
        if (same < graphs.size()) {
            candidates[same].fragments.append(f);
            continue;
        }
        DonorCandidate candidate;
        candidate.formula = ligandName::canonical(fragments.at(f).formula);
        if (const auto known = knownFragments::find(ligand))
            candidate.name = known->name;
        candidate.fragments = {f};
        candidate.kind = LanqorLigandClasses::classify(ligand);
        candidates.append(candidate);
        graphs.append(graph);
    }
    return candidates;
}

int lowestState(const QVector<LigandState> &states, const QVector<int> &fragments)
{
    int lowest = 0;
    for (int i = 0; i < states.size(); ++i) {
        const LigandState &state = states.at(i);
        if (state.holeShares.isEmpty() || !(state.chargeTransfer < largestChargeTransfer) ||
            !(shareOn(state.holeShares, fragments) > most) ||
            !(shareOn(state.electronShares, fragments) > most))
            continue;
        if (lowest == 0 || state.energy < states.at(lowest - 1).energy)
            lowest = i + 1;
    }
    return lowest;
}

int named(const QVector<DonorCandidate> &candidates, const QString &ligand)
{
    const QString formula = ligandName::canonical(ligand);
    for (int i = 0; i < candidates.size(); ++i)
        if (candidates.at(i).formula == formula ||
            (!candidates.at(i).name.isEmpty() &&
             candidates.at(i).name.compare(ligand.trimmed(), Qt::CaseInsensitive) == 0))
            return i;
    return -1;
}

int withMost(const QVector<DonorCandidate> &candidates, const QVector<double> &shares)
{
    double sum = 0.0;
    for (const double share : shares)
        sum += share;
    for (int i = 0; i < candidates.size(); ++i)
        if (shareOn(shares, candidates.at(i).fragments) > most * sum)
            return i;
    return -1;
}

int withLowestTriplet(const QVector<DonorCandidate> &candidates)
{
    const auto isBetter = [](const DonorCandidate &one, const DonorCandidate &other) {
        return one.kind.isAntenna != other.kind.isAntenna ? one.kind.isAntenna
                                                          : one.tripletEnergy < other.tripletEnergy;
    };
    int lowest = -1;
    for (int i = 0; i < candidates.size(); ++i)
        if (candidates.at(i).triplet > 0 &&
            (lowest < 0 || isBetter(candidates.at(i), candidates.at(lowest))))
            lowest = i;
    return lowest;
}

} // namespace donorCandidates
