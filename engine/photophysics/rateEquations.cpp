#include "photophysics/rateEquations_p.h"

#include <Eigen/LU>

#include <algorithm>
#include <array>

using namespace transferChannels;

namespace rateEquations {

namespace {

/// k(from -> to) between all states.
class RateTable
{
public:
    double &operator()(State from, State to) { return rates[index(from, to)]; }
    double operator()(State from, State to) const { return rates[index(from, to)]; }

private:
    static std::size_t index(State from, State to)
    {
        return static_cast<std::size_t>(from) * stateCount + static_cast<std::size_t>(to);
    }
    std::array<double, stateCount *stateCount> rates = {};
};

} // namespace

bool Scheme::holds(State state) const
{
    return std::find(states.begin(), states.end(), state) != states.end();
}

bool Scheme::holdsSlot(int slot) const
{
    return std::find(channelSlots.begin(), channelSlots.end(), slot) != channelSlots.end();
}

const Scheme &sixStates()
{
    static const Scheme scheme = {{S0, S1, T1, Level5D4, Level5D1, Level5D0},
                                  {0, 3, 4, 10, 13, 14},
                                  &KineticParameters::tripletDecay};
    return scheme;
}

const Scheme &eightStates()
{
    static const Scheme scheme = {{S0, S1, T1, Level5D4, Level5G6, Level5L6, Level5D1, Level5D0},
                                  {0, 1, 2, 3, 4, 10, 11, 12, 13, 14},
                                  &KineticParameters::tripletDecay};
    return scheme;
}

const Scheme &twoTriplets()
{
    static const Scheme scheme = {{S0, S1, FirstTriplet, T1, Level5D4, Level5D1, Level5D0},
                                  {0, 5, 13, 14},
                                  &KineticParameters::tripletDecayOfTwo};
    return scheme;
}

std::vector<FixedRate> fixedRates(const Scheme &scheme, const KineticParameters &parameters)
{
    std::vector<FixedRate> rates = {{S0, S1, parameters.excitation},
                                    {S1, S0, parameters.singletDecay}};
    for (const State triplet : {FirstTriplet, T1}) {
        if (!scheme.holds(triplet))
            continue;
        rates.push_back({S1, triplet, parameters.intersystemCrossing});
        rates.push_back({triplet, S0, parameters.*scheme.tripletDecay});
    }
    if (scheme.holds(FirstTriplet))
        rates.push_back({FirstTriplet, T1, parameters.tripletCrossing});
    State above = S0;
    for (const State level : scheme.states) {
        if (level < Level5D4)
            continue;
        if (above != S0)
            rates.push_back(
                {above, level,
                 level == Level5D0 ? parameters.lowerCascade : parameters.upperCascade});
        above = level;
    }
    return rates;
}

Eigen::MatrixXd rateMatrix(const Scheme &scheme, const transferRates::Tables &tables,
                           double emissionDecay, const KineticParameters &parameters)
{
    RateTable k;
    for (const FixedRate &fixed : fixedRates(scheme, parameters))
        k(fixed.from, fixed.to) = fixed.rate;
    k(Level5D0, S0) = emissionDecay;
    for (const Channel &channel : channels) {
        if (!scheme.holdsSlot(channel.slot))
            continue;
        k(channel.donor, channel.acceptor) = tables.forward(channel);
        k(channel.acceptor, channel.donor) = tables.backward(channel);
    }
    const auto size = static_cast<Eigen::Index>(scheme.states.size());
    Eigen::MatrixXd A = Eigen::MatrixXd::Zero(size, size);
    for (Eigen::Index i = 0; i < size; ++i) {
        double outflow = 0.0;
        for (Eigen::Index j = 0; j < size; ++j) {
            if (i == j)
                continue;
            A(j, i) = k(scheme.states[static_cast<std::size_t>(i)],
                        scheme.states[static_cast<std::size_t>(j)]);
            outflow += A(j, i);
        }
        A(i, i) = -outflow;
    }
    return A;
}

Eigen::VectorXd steadyState(const Eigen::MatrixXd &rateMatrix)
{
    // Rates span more than fifteen orders of magnitude. Solved for the flux out of each state,
    // y = x * outflow, the coefficients are branching probabilities of one scale.
    Eigen::VectorXd outflow = -rateMatrix.diagonal();
    for (double &rate : outflow)
        if (rate == 0.0)
            rate = 1.0;
    Eigen::MatrixXd A = rateMatrix;
    A.row(0).setOnes();
    A = A * outflow.cwiseInverse().asDiagonal();
    // Scaled far down, the sum of the populations is the last pivot of all: a state that nothing
    // feeds stays at exactly 0.
    const double scale = 1e-100 / A.row(0).cwiseAbs().maxCoeff();
    A.row(0) *= scale;
    Eigen::FullPivLU<Eigen::MatrixXd> solver(A);
    solver.setThreshold(0.0);
    const Eigen::VectorXd b = scale * Eigen::VectorXd::Unit(A.rows(), 0);
    Eigen::VectorXd flux = solver.solve(b);
    flux += solver.solve(b - A * flux); // one step of refinement
    return flux.cwiseQuotient(outflow);
}

} // namespace rateEquations
