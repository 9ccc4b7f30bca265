#pragma once

#include <LanqorEngine/TransferChannel.h>

#include <array>
#include <cstddef>

/// The states of the kinetic scheme of a Eu3+ complex and the channels of energy transfer
/// between them. Rates, rate equations and reports all walk the one table given here, and
/// LanqorTransferChannels shows it to callers.
namespace transferChannels {

/// In the order in which populations are stored. T1 is the triplet that feeds all triplet
/// channels; when two triplets are considered, FirstTriplet feeds 5D4 and T1 the others.
enum State { S0, S1, FirstTriplet, T1, Level5D4, Level5G6, Level5L6, Level5D1, Level5D0 };
constexpr std::size_t stateCount = 9;

/// One channel: donor and acceptor, its place in the tables of rates, and what its rate needs.
struct Channel
{
    int slot;
    bool EnergyTransferChannels::*flag; ///< null: open when two triplets are considered
    State donor;
    State acceptor;
    TransferMechanism mechanism;
    int J;              ///< of the acceptor
    int g;              ///< degeneracy of the donor
    int rank;           ///< lambda of the one reduced element that is not 0; 0 for exchange
    double U2;          ///< its square, <7F0||U(lambda)||acceptor>^2; 0 for exchange
    double spinElement; ///< <7F0||S||acceptor>, exchange alone
};

/// Squared reduced elements of absorption from 7F0. Source not known: those of the aqueous ion are
/// 0.0011, 0.0038 and 0.0155 (W. T. Carnall, P. R. Fields, K. Rajnak, J. Chem. Phys. 49, 4450
/// (1968)).
constexpr double U4Of5D4 = 0.0011;
constexpr double U6Of5G6 = 0.0037;
constexpr double U6Of5L6 = 0.0153;
/// Elements of the ligand-ion spin coupling (O. L. Malta, H. F. Brito, J. F. S. Menezes,
/// F. R. Goncalves e Silva, S. Alves Jr., F. S. Farias Jr., A. V. M. de Andrade, J. Lumin. 75, 255
/// (1997)).
constexpr double spinElementOf5D1 = 0.25;
constexpr double spinElementOf5D0 = 0.2;

using Flags = EnergyTransferChannels;
constexpr TransferMechanism multipolar = TransferMechanism::Multipolar;
constexpr TransferMechanism exchange = TransferMechanism::Exchange;
constexpr std::array<Channel, 11> channels = {{
    {0, &Flags::singletTo5D4, S1, Level5D4, multipolar, 4, 1, 4, U4Of5D4, 0.0},
    {1, &Flags::singletTo5G6, S1, Level5G6, multipolar, 6, 1, 6, U6Of5G6, 0.0},
    {2, &Flags::singletTo5L6, S1, Level5L6, multipolar, 6, 1, 6, U6Of5L6, 0.0},
    {3, &Flags::singletTo5D1, S1, Level5D1, exchange, 1, 1, 0, 0.0, spinElementOf5D1},
    {4, &Flags::singletTo5D0, S1, Level5D0, exchange, 0, 1, 0, 0.0, spinElementOf5D0},
    {5, nullptr, FirstTriplet, Level5D4, multipolar, 4, 3, 4, U4Of5D4, 0.0},
    {10, &Flags::tripletTo5D4, T1, Level5D4, multipolar, 4, 3, 4, U4Of5D4, 0.0},
    {11, &Flags::tripletTo5G6, T1, Level5G6, multipolar, 6, 3, 6, U6Of5G6, 0.0},
    {12, &Flags::tripletTo5L6, T1, Level5L6, multipolar, 6, 3, 6, U6Of5L6, 0.0},
    {13, &Flags::tripletTo5D1, T1, Level5D1, exchange, 1, 3, 0, 0.0, spinElementOf5D1},
    {14, &Flags::tripletTo5D0, T1, Level5D0, exchange, 0, 3, 0, 0.0, spinElementOf5D0},
}};

/// Energy of an Eu3+ level above 7F0, cm^-1; 0 for a ligand state. See LanqorTransferChannels.
double acceptorEnergy(State level);

/// "S0", "S", "Ta" (the first of two triplets), "T", "5D4", "5G6", "5L6", "5D1" or "5D0".
const char *stateName(State state);

/// What callers see of a channel.
TransferChannel describe(const Channel &channel);

/// Whether @p channel takes part when the switches @p flags are set.
bool isOpen(bool Flags::*flag, const Flags &flags, bool twoTriplets);

} // namespace transferChannels
