#pragma once

#include <LanqorEngine/EnergyTransferChannels.h>

#include <QString>

/// How the energy goes over: by the dipole-dipole and dipole-multipole mechanisms together, or by
/// exchange.
enum class TransferMechanism { Multipolar, Exchange };

/// A channel of energy transfer from a state of the ligands to a level of Eu3+.
struct TransferChannel
{
    int slot = 0;     ///< of its rates and its mismatch in LanqorSpectroscopicCalculation
    QString name;     ///< "S-5D4": donor and acceptor
    QString donor;    ///< "S", "T", or "Ta" for the first of two triplets
    QString acceptor; ///< "5D4", "5G6", "5L6", "5D1" or "5D0"
    TransferMechanism mechanism = TransferMechanism::Multipolar;
    double acceptorEnergy = 0.0; ///< of the level above 7F0, cm^-1
    /// The switch of the channel; null: open when two triplets are considered.
    bool EnergyTransferChannels::*flag = nullptr;
};
