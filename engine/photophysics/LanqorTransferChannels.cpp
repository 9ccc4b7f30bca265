#include "LanqorTransferChannels.h"

#include "photophysics/transferChannels_p.h"

namespace transferChannels {

namespace {

struct NamedState
{
    const char *name;
    double energy; // of a level of the ion, cm^-1
};

/// By State.
constexpr std::array<NamedState, stateCount> states = {{
    {"S0", 0.0},
    {"S", 0.0},
    {"Ta", 0.0},
    {"T", 0.0},
    {"5D4", 27586.0},
    {"5G6", 26752.0},
    {"5L6", 25325.0},
    {"5D1", 19027.0},
    {"5D0", 17293.0},
}};

} // namespace

double acceptorEnergy(State level)
{
    return states[level].energy;
}

const char *stateName(State state)
{
    return states[state].name;
}

TransferChannel describe(const Channel &channel)
{
    TransferChannel described;
    described.slot = channel.slot;
    described.donor = QLatin1String(stateName(channel.donor));
    described.acceptor = QLatin1String(stateName(channel.acceptor));
    described.name = described.donor + QLatin1Char('-') + described.acceptor;
    described.mechanism = channel.mechanism;
    described.acceptorEnergy = acceptorEnergy(channel.acceptor);
    described.flag = channel.flag;
    return described;
}

bool isOpen(bool Flags::*flag, const Flags &flags, bool twoTriplets)
{
    return flag ? flags.*flag : twoTriplets;
}

} // namespace transferChannels

QVector<TransferChannel> LanqorTransferChannels::getChannels()
{
    QVector<TransferChannel> described;
    for (const transferChannels::Channel &channel : transferChannels::channels)
        described.append(transferChannels::describe(channel));
    return described;
}

bool LanqorTransferChannels::isOpen(const TransferChannel &channel,
                                    const EnergyTransferChannels &switches,
                                    const bool &considerTwoTriplets)
{
    return transferChannels::isOpen(channel.flag, switches, considerTwoTriplets);
}
