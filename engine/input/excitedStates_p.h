#pragma once

#include <LanqorEngine/Coord.h>
#include <LanqorEngine/ExcitateState.h>
#include <LanqorEngine/MolecularOrbital.h>

#include <QVector>

#include <optional>
#include <string_view>

/// One printed one-electron excitation, numbers as printed.
struct Excitation
{
    int from = 0;
    int to = 0;
    bool hasSpin = false;  ///< a spin letter follows the numbers
    std::string_view rest; ///< what follows the second number
};

/// A list of states and the weights of their excitations.
struct StateTable
{
    QVector<ExcitateState> states;
    QVector<QVector<double>> weights; ///< by state, by excitation; 0 where none is printed

    bool isEmpty() const { return states.isEmpty(); }
    /// @param energy  cm^-1
    void addState(double energy, double oscillatorStrength = 0.0);
    /// Adds an excitation to the last state.
    void addExcitation(const Excitation &excitation, double weight);
};

/// What the output of an excited-state calculation holds for one geometry.
struct ExcitedStates
{
    QVector<Coord> atoms;
    /// By printed number less the first number of the program; empty entries where not printed.
    QVector<MolecularOrbital> orbitals;
    bool hasOrbitals = false; ///< the table was there to its end
    StateTable singlets;
    StateTable triplets;
    QVector<double> spectrumEnergies;  ///< cm^-1, transitions allowed by spin
    QVector<double> spectrumStrengths; ///< oscillator strengths
    int unreadableExcitations = 0;
    int unnamedStates = 0; ///< among the triplets: called neither singlet nor triplet

    bool hasStates() const { return !singlets.isEmpty() || !triplets.isEmpty(); }
};

/// True when @p line shows an excitation or de-excitation by its arrow.
bool hasArrow(std::string_view line);

/// Reads "149a -> 158a : ..." or "103 ->108 ..."; a de-excitation ("<-") counts likewise. The
/// spin letter of an orbital is dropped.
std::optional<Excitation> parseExcitation(std::string_view line);
