#pragma once

#include <LanqorEngine/DonorStatesResults.h>
#include <LanqorEngine/LigandClassResults.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// Where a triplet energy comes from.
enum class TripletMethod {
    None,
    Measured,
    States, ///< a calculation of excited states, such as MOPAC INDO/S
    Gfn1    ///< adiabatic difference of two GFN1-xTB optimisations
};

/// A triplet energy by one method.
struct TripletValue
{
    QString name; ///< "measured", "MOPAC INDO", "GFN1-xTB"
    bool isAvailable = false;
    QString reason;                 ///< why it is not available
    double raw = 0.0;               ///< as measured or calculated, cm^-1
    double shift = 0.0;             ///< that is added, cm^-1
    double energy = 0.0;            ///< with the shift, cm^-1
    double standardDeviation = 0.0; ///< cm^-1; 0 where none is known
    QString knownError; ///< its direction: "too high by 1300 to 4200 cm^-1"; may be empty
    QString basis;      ///< what shift and standard deviation stand on
};

/// Equal ligands and their lowest states.
struct DonorCandidate
{
    QString formula;
    QString name;           ///< "acetylacetonate"; empty for one that is not common
    QVector<int> fragments; ///< of DonorTripletResults::fragments, from 0
    LigandClassResults kind;
    /// Numbers, from 1, of the lowest states of which most of hole and of electron are on these
    /// ligands, with a charge transfer below 0.3; 0 for none.
    int triplet = 0;
    int singlet = 0;
    double tripletEnergy = 0.0; ///< as calculated, cm^-1
    double singletEnergy = 0.0; ///< as calculated, cm^-1
};

/// Which triplet of which ligand goes on, and why.
struct DonorTripletResults
{
    TripletValue measured;
    TripletValue states;
    TripletValue gfn1;

    /// The ion, then the ligands; empty without a geometry.
    QVector<DonorFragment> fragments;
    QVector<DonorCandidate> candidates; ///< each kind of ligand once
    int donor = -1;                     ///< of candidates; -1 when it is not known
    bool isDonorAskedFor = false;

    /// Of the calculation of excited states, numbers from 1; 0 for none.
    int tripletState = 0;
    int singletState = 0;
    double tripletDistance = 0.0; ///< RL of that triplet, Angstrom; 0 when it is not known
    double singletDistance = 0.0; ///< of that singlet, likewise
    double singletEnergy = 0.0;   ///< as calculated, cm^-1
    QString gfn1System; ///< what GFN1 calculated: "the complex" or "a model of the ligand"
    QVector<DonorFragment> gfn1Fragments; ///< its ion, empty when it has none, then its ligands
    /// Charge of each of these fragments in the triplet less that in the ground state, elementary
    /// charges; empty without the charges of both.
    QVector<double> chargeChanges;
    QString gfn1Donor; ///< formula of the ligand whose bonds change; empty when it is not known
    bool isAtGfn1GroundState = false; ///< the geometry of the excited states

    bool areCompared = false; ///< the calculated ones, both available
    double difference = 0.0;  ///< GFN1 less the other, cm^-1
    bool doAgree = false;     ///< within 1200 cm^-1

    TripletMethod chosen = TripletMethod::None;
    double energy = 0.0;            ///< cm^-1
    double standardDeviation = 0.0; ///< cm^-1; 0 where none is known
    double low = 0.0;               ///< energy less one standard deviation
    double high = 0.0;              ///< energy and one standard deviation
    QStringList levelsReached;      ///< "5D0", "5D1": those between low and high
    /// The energy is calculated and its interval reaches a level or ends below 5D0.
    bool isMeasurementNeeded = false;
    QString firstLine; ///< what must be known first; empty when nothing must

    QStringList remarks;
    QStringList warnings;
};
