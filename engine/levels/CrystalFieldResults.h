#pragma once

#include <LanqorEngine/FreeIonParameters.h>
#include <LanqorEngine/StarkResults.h>

#include <QString>
#include <QVector>

/// How the parameters of a crystal field are normalised.
enum class FieldNormalisation {
    /// B(k,q), the coefficients of the sums over the electrons of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q).
    Wybourne,
    /// A(k,q) <r^k>, the coefficients of the Stevens operators O(k,q)(J) divided by the factor
    /// theta(k) of the multiplet; q < 0 are the sine-type ones.
    Stevens,
    /// B(k,q) = theta(k) A(k,q) <r^k>, the coefficients of the Stevens operators in the ground
    /// multiplet.
    StevensOperators
};

/// What a calculation of all states of 4f^n in a crystal field used and gave.
struct CrystalFieldResults
{
    /// A parameter of a real operator of Stevens.
    struct StevensParameter
    {
        int k = 0;
        int q = 0;                ///< negative: sine type
        double value = 0.0;       ///< A(k,q) <r^k>, cm^-1
        double ofOperators = 0.0; ///< theta(k) A(k,q) <r^k> of the ground multiplet, cm^-1
    };
    /// Weight of a Russell-Saunders state |S L J M>.
    struct Component
    {
        QString label; ///< "4I4.5"; see MixedState::label
        double M = 0.0;
        double real = 0.0; ///< coefficient
        double imaginary = 0.0;
    };
    struct MeasuredLevel
    {
        double energy = 0.0; ///< cm^-1 from the ground state
        QString label;       ///< may be empty
    };
    struct FreeIonLevel
    {
        QString label;
        double J = 0.0;
        double energy = 0.0; ///< cm^-1
    };
    /// States of one energy.
    struct Level
    {
        int number = 0;      ///< from 1
        double energy = 0.0; ///< cm^-1
        int degeneracy = 0;
        double meanJ = 0.0; ///< that of <J^2> = J(J+1)
        QString multiplet;  ///< 2S+1 L J with the largest weight, labelled as the components
        double weightOfMultiplet = 0.0; ///< dimensionless
        /// Of the state of the level with the largest projection of J, the largest components
        /// first.
        QVector<Component> components;
    };
    /// g of two states of one energy, of an effective spin 1/2.
    struct GTensor
    {
        int level = 0;  ///< its number, from 1
        double x = 0.0; ///< along the axes of the field, sqrt(2 Tr m_a^2)
        double y = 0.0;
        double z = 0.0;
        QVector<double> principal; ///< ascending
        QVector<double> axes;      ///< unit vectors of these, x y z each
    };
    /// Of the linear response, cm^3/mol (CGS).
    struct Susceptibility
    {
        double T = 0.0; ///< K
        double chiTx = 0.0;
        double chiTy = 0.0;
        double chiTz = 0.0;
        double chiT = 0.0;            ///< mean, cm^3 K/mol
        double effectiveMoment = 0.0; ///< sqrt(8 chi T) with the exact constants, Bohr magnetons
        double vanVleck = 0.0;        ///< chi T of pure 7FJ, see @p vanVleckLambda; 0 without it
    };
    /// Of a powder.
    struct Magnetisation
    {
        double T = 0.0;      ///< K
        double B = 0.0;      ///< tesla
        double moment = 0.0; ///< along the field, Bohr magnetons an ion
    };

    FreeIonParameters ion;
    QVector<StarkResults::FieldParameter> fieldParameters;           ///< Wybourne's, q = -k .. k
    FieldNormalisation normalisation = FieldNormalisation::Wybourne; ///< as they were given
    QVector<StevensParameter> stevensParameters;
    QString groundMultiplet;
    QVector<double> stevensFactors;    ///< theta(2), theta(4), theta(6) of the ground multiplet
    double crystalFieldStrength = 0.0; ///< cm^-1, see LanqorStarkLevels
    double spinFactor = 0.0;
    double cutOff = 0.0; ///< energy of a free-ion level up to which it is kept; 0: all
    int statesOfConfiguration = 0;
    int states = 0;        ///< that are kept
    int largestMatrix = 0; ///< order of the largest matrix
    /// Largest shifts, against the lowest state, that the states left out would give in second
    /// order, cm^-1: to the states of the ground multiplet, and to the @p shiftedStates lowest
    /// ones.
    double groundCutOffShift = 0.0;
    double cutOffShift = 0.0;
    int shiftedStates = 0;
    double lowestEnergy = 0.0; ///< of the lowest state, from the lowest free-ion level, cm^-1
    int highestNumber = 0;     ///< number of the highest level, described or not
    QVector<FreeIonLevel> freeIonLevels;
    QVector<Level> levels; ///< ascending, from the lowest
    QVector<GTensor> gTensors;
    QVector<Susceptibility> susceptibilities;
    QVector<Magnetisation> magnetisations;
    /// Of Eu3+ the energy of the free ion's 7F1, cm^-1, as lambda of Van Vleck's formula; 0 for
    /// other ions.
    double vanVleckLambda = 0.0;
};
