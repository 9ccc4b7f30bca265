#pragma once

#include <LanqorEngine/EnergyTransferChannels.h>

#include <QStringList>
#include <QVector>

#include <array>

/// The command line of "lanqor yield".
namespace yieldOptions {

/// A channel of energy transfer: its name, the slot of its rates in the library and its switch.
struct Channel
{
    const char *name;
    int slot;
    bool isExchange;
    bool EnergyTransferChannels::*flag; ///< null: open with two triplets
};

using Flags = EnergyTransferChannels;
constexpr std::array<Channel, 11> channels = {{
    {"S-5D4", 0, false, &Flags::singletTo5D4},
    {"S-5G6", 1, false, &Flags::singletTo5G6},
    {"S-5L6", 2, false, &Flags::singletTo5L6},
    {"S-5D1", 3, true, &Flags::singletTo5D1},
    {"S-5D0", 4, true, &Flags::singletTo5D0},
    {"Ta-5D4", 5, false, nullptr},
    {"T-5D4", 10, false, &Flags::tripletTo5D4},
    {"T-5G6", 11, false, &Flags::tripletTo5G6},
    {"T-5L6", 12, false, &Flags::tripletTo5L6},
    {"T-5D1", 13, true, &Flags::tripletTo5D1},
    {"T-5D0", 14, true, &Flags::tripletTo5D0},
}};

/// What is asked for: energies in cm^-1, distances in Angstrom, Omega in 1e-20 cm^2.
struct Request
{
    QString complexFile; ///< may be empty with explicit donor states
    QString excitedFile; ///< empty: explicit donor states
    int programType = -1;
    QString omegaReport; ///< one source of Omega
    QString g;           ///< with alpha another
    QString alpha;
    QVector<double> omega; ///< with omegaEd the third
    QVector<double> omegaEd;
    int singlet = 0; ///< 0: the lowest
    int triplet = 0;
    double singletEnergy = 0.0;
    double tripletEnergy = 0.0;
    double rlSinglet = 0.0;
    double rlTriplet = 0.0;
    double refractiveIndex = 0.0;
    double lifetimeMs = 0.0; ///< 0: estimate
    int etModel = 0;
    double overlapExponent = 0.0;
    EnergyTransferChannels openChannels;
    bool twoTriplets = false;
    QString reportFile;
    QString plotFile;
};

/// Whether a channel takes part in the calculation.
bool isOpen(const Channel &channel, const Request &request);

/// Reads the arguments.
Request read(const QStringList &arguments);

} // namespace yieldOptions
