#include "photophysics/adiabaticTriplet_p.h"

#include "structure/fragments_p.h"

#include <LanqorEngine/LanqorDonorTriplet.h>

#include <cmath>

namespace adiabaticTriplet {

namespace {

QString tr(const char *text)
{
    return LanqorDonorTriplet::tr(text);
}

QString medium(const XtbRunResults &run)
{
    return run.solvent.isEmpty() ? tr("in the gas phase") : tr("in %1").arg(run.solvent);
}

} // namespace

QString mismatch(const XtbRunResults &groundState, const XtbRunResults &triplet)
{
    const QString &first = groundState.outputPath;
    const QString &second = triplet.outputPath;
    if (groundState.elements != triplet.elements)
        return tr("%1 and %2 are runs of different complexes, or in another order of atoms")
            .arg(first, second);
    if (groundState.charge != triplet.charge)
        return tr("%1 is a run of charge %2, but %3 of charge %4")
            .arg(first, QString::number(groundState.charge), second,
                 QString::number(triplet.charge));
    if (groundState.unpairedElectrons != 0 || triplet.unpairedElectrons != 2)
        return tr("%1 must be the ground state and %2 the triplet (--uhf 2), but they have %3 and "
                  "%4 unpaired electrons")
            .arg(first, second, QString::number(groundState.unpairedElectrons),
                 QString::number(triplet.unpairedElectrons));
    for (const XtbRunResults *run : {&groundState, &triplet})
        if (!run->isOptimisation)
            return tr("%1 is no optimisation (--opt): the energy is that between two optimised "
                      "geometries")
                .arg(run->outputPath);
    if (groundState.solvent != triplet.solvent)
        return tr("%1 is a run %2, but %3 one %4")
            .arg(first, medium(groundState), second, medium(triplet));
    if (groundState.electronicTemperature != triplet.electronicTemperature)
        return tr("%1 and %2 have different electronic temperatures, %3 and %4 K")
            .arg(first, second, QString::number(groundState.electronicTemperature),
                 QString::number(triplet.electronicTemperature));
    return QString();
}

double energy(const XtbRunResults &groundState, const XtbRunResults &triplet)
{
    return (triplet.energy - groundState.energy) * wavenumberPerHartree;
}

QVector<double> chargeChanges(const XtbRunResults &groundState, const XtbRunResults &triplet,
                              const QVector<DonorFragment> &fragments)
{
    QVector<double> changes;
    if (groundState.charges.isEmpty() || triplet.charges.isEmpty())
        return changes;
    for (const DonorFragment &fragment : fragments) {
        double change = 0.0;
        for (const int atom : fragment.atoms)
            change += triplet.charges.value(atom - 1) - groundState.charges.value(atom - 1);
        changes.append(change);
    }
    return changes;
}

BondChanges bondChanges(const XtbRunResults &groundState, const XtbRunResults &triplet,
                        const QVector<DonorFragment> &fragments)
{
    constexpr double broken = 0.5; // Angstrom; bonds of good triplets change by less than 0.1
    BondChanges changes;
    changes.squares.fill(0.0, fragments.size());
    const QVector<Coord> &before = groundState.atoms;
    const QVector<Coord> &after = triplet.atoms;
    if (before.isEmpty() || before.size() != after.size())
        return changes;
    QVector<int> fragmentOfAtom(before.size(), -1);
    for (int f = 0; f < fragments.size(); ++f)
        for (const int atom : fragments.at(f).atoms)
            if (atom <= fragmentOfAtom.size())
                fragmentOfAtom[atom - 1] = f;
    for (const auto &bond : fragments::withMissingBonds(before, {})) {
        const int fragment = fragmentOfAtom.at(bond.first);
        if (fragment < 0 || fragment != fragmentOfAtom.at(bond.second))
            continue;
        const double change = fragments::distance(after.at(bond.first), after.at(bond.second)) -
                              fragments::distance(before.at(bond.first), before.at(bond.second));
        changes.squares[fragment] += change * change;
        if (change > changes.longest)
            changes.longest = change;
        if (change > broken)
            changes.brokenFragment = fragment;
    }
    return changes;
}

} // namespace adiabaticTriplet
