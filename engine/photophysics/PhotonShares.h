#pragma once

/// The greatest of the losses on the way from the absorbed photon to the emitted one.
enum class LimitingStep {
    None,              ///< no photon is lost
    SingletDecay,      ///< S1 -> S0 before the energy has reached 5D0
    TripletDecay,      ///< a triplet -> S0 before the energy has reached 5D0
    BackTransfer,      ///< from 5D0 to the ligands, where the energy is lost
    NonRadiativeDecay, ///< of 5D0
};

/// Where the absorbed photons go under continuous excitation: shares of 1. The first four sum
/// to 1.
struct PhotonShares
{
    double singletDecay = 0.0; ///< lost by S1 -> S0
    double tripletDecay = 0.0; ///< lost by decay of the donor triplets
    double nonRadiative = 0.0; ///< lost by non-radiative decay of 5D0; as negative as Anrad
    double emitted = 0.0;      ///< the quantum yield

    /// Of the two losses by ligand states, what had been on 5D0 before.
    double backTransfer = 0.0;
    /// Photons whose energy reaches 5D0 at least once.
    double reaching5D0 = 0.0;

    LimitingStep limitingStep = LimitingStep::None;
    double limitingShare = 0.0; ///< what the limiting step takes
};
