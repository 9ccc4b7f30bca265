#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/DonorTripletResults.h>

#include <QVector>

/// The ligands of a complex as donors.
namespace donorCandidates {

/// Largest charge transfer of a state that is on a ligand.
constexpr double largestChargeTransfer = 0.3;

/// Equal ligands (the same bonds) among @p fragments, whose first one is the ion. @p atoms are
/// those that their numbers count.
QVector<DonorCandidate> of(const QVector<DonorFragment> &fragments, const QVector<Coord> &atoms);

/// Number, from 1, of the lowest of @p states on the ligands @p fragments; 0 for none. A state may
/// spread over several equal ligands: their shares are added, and the charge transfer between
/// them stays below the limit.
int lowestState(const QVector<LigandState> &states, const QVector<int> &fragments);

/// The candidate that @p ligand names by its formula or its name; -1 for none.
int named(const QVector<DonorCandidate> &candidates, const QString &ligand);

/// The one with more than half of what @p shares have by fragment; -1 for none.
int withMost(const QVector<DonorCandidate> &candidates, const QVector<double> &shares);

/// The antenna with the lowest local triplet, or the ligand when none is an antenna; -1 for none.
int withLowestTriplet(const QVector<DonorCandidate> &candidates);

} // namespace donorCandidates
