#pragma once

/// What the kinetic scheme of a Eu3+ complex holds beside the rates of transfer and of the decay of
/// 5D0: rates of the ligand states and of the cascade in the ion, s^-1, and what ties a
/// back-transfer to its transfer.
///
/// The defaults are orders of magnitude that are typical of ligands and ion; source of the numbers
/// not known.
struct KineticParameters
{
    double excitation = 10000.0;              ///< S0 -> S1; weak, so that S0 is hardly emptied
    double singletDecay = 1000000.0;          ///< S1 -> S0
    double intersystemCrossing = 100000000.0; ///< S1 -> T, and to each of two triplets
    double tripletDecay = 100000.0;           ///< T -> S0 of a single donor triplet
    /// Each of two donor triplets -> S0. That scheme was set up with triplets that decay ten times
    /// as fast; its results are comparable with published ones only so.
    double tripletDecayOfTwo = 1000000.0;
    double tripletCrossing = 100000000.0; ///< Ta -> T of two donor triplets
    double upperCascade = 1000000.0; ///< each step from 5D4 down to 5D1, over 5G6 and 5L6 or not
    double lowerCascade = 1000000.0; ///< 5D1 -> 5D0
    /// K; of the Boltzmann factors exp(-difference / kT) of back-transfer, and of nothing else:
    /// transfer, Omega, the decay of 5D0 and the rates above stay as they are given. At 300, kT is
    /// 4.1419464000000004e-14 erg, for any other T it is T times 1.3806488e-16 erg/K (CODATA 2010).
    double temperature = 300.0;
    /// True: detailed balance, a back-transfer is multiplied by g(donor) / g(acceptor), 1 or 3 over
    /// 2J + 1. False: the degeneracies are left out.
    bool withDegeneracies = false;
};
