#pragma once

/// Which paths of energy transfer from the ligand states to levels of Eu3+ are open.
///
/// An aggregate in the order below. Transfer to 5D4, 5G6 and 5L6 is multipolar, to 5D1 and 5D0
/// by exchange. Singlet to 5D4 and triplet to 5D1 and 5D0 are open by default: intersystem crossing
/// leaves most of the energy on the triplet, from which these two levels lie in reach, and 5D4 is
/// the level nearest below most singlets.
struct EnergyTransferChannels
{
    bool singletTo5D4 = true;
    bool singletTo5G6 = false;
    bool singletTo5L6 = false;
    bool singletTo5D1 = false;
    bool singletTo5D0 = false;
    bool tripletTo5D4 = false;
    bool tripletTo5G6 = false;
    bool tripletTo5L6 = false;
    bool tripletTo5D1 = true;
    bool tripletTo5D0 = true;
};
