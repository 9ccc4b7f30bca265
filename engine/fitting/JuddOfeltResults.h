#pragma once

#include <LanqorEngine/FreeIonParameters.h>
#include <LanqorEngine/JuddOfeltBand.h>
#include <LanqorEngine/RefractiveIndexModel.h>

#include <QStringList>
#include <QVector>

/// What makes the squares of a Judd-Ofelt fit comparable. The choice changes Omega more than
/// anything else.
enum class JuddOfeltWeighting {
    EqualStrength, ///< all line strengths alike
    EqualF,        ///< all oscillator strengths alike
    Error,         ///< each band by 1/error
    Relative       ///< each by 1/strength
};

/// A Judd-Ofelt analysis; line strengths and Omega in 1e-20 cm^2.
struct JuddOfeltResults
{
    struct Band
    {
        int line = 0; ///< of its file; 0 without one
        QString level;
        double wavenumber = 0.0; ///< cm^-1, vacuum
        double n = 0.0;          ///< refractive index
        double U[3] = {};        ///< squares of U(2), U(4), U(6)
        double measuredF = 0.0;  ///< oscillator strength, with its magnetic dipole part
        double magneticF = 0.0;  ///< that part
        double calculatedF = 0.0;
        double measuredS = 0.0; ///< line strength, electric dipole
        double errorS = 0.0;    ///< as given; 0: not known
        double calculatedS = 0.0;
    };
    struct Transition
    {
        int number = 0; ///< of the lower level, from 1
        QString level;
        double wavenumber = 0.0; ///< cm^-1
        double n = 0.0;
        double U[3] = {};
        double magneticSquare = 0.0; ///< of L + g_s S, hbar^2
        double electricRate = 0.0;   ///< s^-1
        double magneticRate = 0.0;   ///< s^-1
        double branchingRatio = 0.0;
    };
    struct Emission
    {
        int number = 0; ///< of the emitting level, from 1
        QString level;
        double J = 0.0;
        double energy = 0.0;             ///< cm^-1, calculated
        double rate = 0.0;               ///< s^-1, radiative, of all transitions
        double lifetime = 0.0;           ///< ms, radiative
        double measuredLifetime = 0.0;   ///< ms; 0: not told
        double quantumEfficiency = 0.0;  ///< measured by radiative lifetime; 0: not told
        QVector<Transition> transitions; ///< by descending energy of the lower level
    };

    FreeIonParameters ion;
    QString ground; ///< level
    double groundJ = 0.0;
    RefractiveIndexModel refractiveIndex;
    JuddOfeltWeighting weighting = JuddOfeltWeighting::EqualStrength;
    bool isMagneticTakenOff = true; ///< by the eigenvectors, where a band does not tell it
    bool isInAir = false;           ///< wavelengths of the bands
    QString fileName;
    QVector<Band> bands;
    double omega[3] = {};           ///< 2, 4, 6
    double standardErrors[3] = {};  ///< from the misfit; 0 without degrees of freedom or at 0
    double correlations[3][3] = {}; ///< likewise
    double freeOmega[3] = {};       ///< of the fit that may be negative
    double freeErrors[3] = {};      ///< likewise
    bool isNonNegative = false;     ///< omega differs from freeOmega: some are held at 0
    double rmsS = 0.0;              ///< square root of the sum of squares/(bands - 3)
    double rmsF = 0.0;              ///< likewise
    double relativeRms = 0.0;       ///< of (calculated - measured)/measured S, by the bands
    QVector<Emission> emissions;    ///< by energy
    QStringList warnings;
};
