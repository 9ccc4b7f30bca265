#pragma once

#include <QString>
#include <QVector>

/// An excited state of the ligands, as an output prints it, with its distance from the ion.
struct LigandState
{
    double energy = 0.0;     ///< cm^-1
    double wavelength = 0.0; ///< nm; 0 without an energy
    double oscillatorStrength = 0.0;
    /// Donor-acceptor distance, Angstrom; 0 for a state without printed orbitals.
    double rl = 0.0;
    /// Orbital numbers as printed, in pairs: from and to. A program that numbers orbitals from 1
    /// prints 0 for none.
    QVector<int> configurations;
    /// Of these pairs; 0 where the program prints none.
    QVector<double> weights;
    /// Shares of the hole and of the excited electron on DonorStatesResults::fragments, each of sum
    /// 1; empty where the output gives no coefficients of the excitations with their signs.
    QVector<double> holeShares;
    QVector<double> electronShares;
    /// Share of the excitation whose hole and electron are on different fragments, 0 to 1; known
    /// where the shares are.
    double chargeTransfer = 0.0;
};

/// The ion, or what stays connected when its bonds are cut.
struct DonorFragment
{
    QString formula;    ///< of a ligand; the label of the ion
    QVector<int> atoms; ///< numbers from 1, ascending
};

/// What LanqorRL found. State number n stands at index n - 1.
struct DonorStatesResults
{
    QString outputPath; ///< of the excited-state calculation
    /// Empty when the distances are known; otherwise why all rl are 0.
    QString reasonWithoutDistances;
    /// From the ion to the nearest other atom, Angstrom; 1000 when there is none.
    double minDistanceLnLigand = 0.0;
    QVector<LigandState> singlets;
    QVector<LigandState> triplets;
    QString program; ///< that wrote the output: "ORCA", "Gaussian", "ZINDO" or "MOPAC INDO"
    /// Number of the ground state in both lists (ZINDO); 0 when they start with an excited state.
    int groundState = 0;
    /// The ion, then the ligands in the order of their first atoms; empty where no state has shares
    /// of them.
    QVector<DonorFragment> fragments;
    /// See LanqorInputData::getExcitationShare().
    double excitationShare = 0.0;
};
