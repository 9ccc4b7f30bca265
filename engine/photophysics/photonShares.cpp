#include "photophysics/photonShares_p.h"

#include <algorithm>
#include <utility>

using namespace transferChannels;

namespace rateEquations {

namespace {

using Populations = std::array<double, stateCount>;

Populations populationsOf(const Scheme &scheme, const transferRates::Tables &tables,
                          double emissionDecay, const KineticParameters &parameters)
{
    const Eigen::VectorXd x = steadyState(rateMatrix(scheme, tables, emissionDecay, parameters));
    Populations populations = {};
    for (std::size_t i = 0; i < scheme.states.size(); ++i)
        populations[scheme.states[i]] = x[static_cast<Eigen::Index>(i)];
    return populations;
}

/// Parts of the absorbed photons that the ligand states lose.
struct LigandLosses
{
    double singlet = 0.0;
    double triplets = 0.0;
};

LigandLosses ligandLosses(const Scheme &scheme, const Populations &x,
                          const KineticParameters &parameters)
{
    const double absorbed = x[S0] * parameters.excitation;
    return {x[S1] * parameters.singletDecay / absorbed,
            (x[FirstTriplet] + x[T1]) * (parameters.*scheme.tripletDecay) / absorbed};
}

/// The same rates without a way back from 5D0: what is lost then never was on 5D0.
transferRates::Tables withoutReturnFrom5D0(transferRates::Tables tables)
{
    for (const Channel &channel : channels) {
        if (channel.acceptor != Level5D0)
            continue;
        const auto slot = static_cast<std::size_t>(channel.slot);
        tables.backwardRates[slot] = 0.0;
        tables.exchangeBackwardRates[slot] = 0.0;
    }
    return tables;
}

void nameLimitingStep(PhotonShares &shares, const LigandLosses &before)
{
    const std::pair<LimitingStep, double> losses[] = {
        {LimitingStep::SingletDecay, before.singlet},
        {LimitingStep::TripletDecay, before.triplets},
        {LimitingStep::BackTransfer, shares.backTransfer},
        {LimitingStep::NonRadiativeDecay, shares.nonRadiative},
    };
    for (const auto &loss : losses) {
        if (!(loss.second > shares.limitingShare))
            continue;
        shares.limitingStep = loss.first;
        shares.limitingShare = loss.second;
    }
}

} // namespace

Solution solve(const Scheme &scheme, const transferRates::Tables &tables, double arad, double anrad,
               const KineticParameters &parameters)
{
    Solution solution;
    const Populations &x = solution.populations =
        populationsOf(scheme, tables, arad + anrad, parameters);
    solution.quantumYield = 100.0 * (x[Level5D0] * arad) / (x[S0] * parameters.excitation);
    const LigandLosses all = ligandLosses(scheme, x, parameters);
    const LigandLosses before = ligandLosses(
        scheme, populationsOf(scheme, withoutReturnFrom5D0(tables), arad + anrad, parameters),
        parameters);
    PhotonShares &shares = solution.shares;
    shares.singletDecay = all.singlet;
    shares.tripletDecay = all.triplets;
    shares.nonRadiative = x[Level5D0] * anrad / (x[S0] * parameters.excitation);
    shares.emitted = solution.quantumYield / 100.0;
    shares.reaching5D0 = 1.0 - before.singlet - before.triplets;
    shares.backTransfer =
        std::max(0.0, all.singlet + all.triplets - before.singlet - before.triplets);
    nameLimitingStep(shares, before);
    return solution;
}

} // namespace rateEquations
