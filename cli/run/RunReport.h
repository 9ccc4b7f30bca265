#pragma once

#include <LanqorEngine/AradPartitionResults.h>
#include <LanqorEngine/Coord.h>
#include <LanqorEngine/DonorStatesResults.h>
#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/IntensitySolutions.h>
#include <LanqorEngine/OmegaExpResults.h>
#include <LanqorEngine/OmegaFitResults.h>
#include <LanqorEngine/OmegaResults.h>
#include <LanqorEngine/OrganizeResults.h>
#include <LanqorEngine/SpectroscopicResults.h>
#include <LanqorEngine/SphereResults.h>
#include <LanqorEngine/UncertaintyResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>
#include <optional>

struct DonorTripletResults;

/// A step of a run, in the order of the folders.
struct RunStep
{
    enum class State {
        Done,    ///< in this call
        Kept,    ///< of an earlier call, for nothing that goes into it has changed
        Failed,  ///< outcome tells why
        LeftOut, ///< outcome tells why
    };

    QString folder; ///< "02-geometry", below that of the run
    QString title;  ///< "geometry by MOPAC RM1, sparkle for Eu"
    State state = State::LeftOut;
    QString outcome; ///< one line: result or reason
    // Of the outside program; empty for our own work.
    QString program;
    QString version;
    QString commandLine;
    double seconds = 0.0; ///< of the call in which the step was done
};

/// A file that was read, as it was.
struct FileHash
{
    QString fileName; ///< as it was named
    QString sha256;   ///< hexadecimal
};

/// All that "lanqor run" tells. Report, page and summary are functions of this record and of
/// nothing else. What a run did not come to, is not there.
struct RunReport
{
    enum class End {
        Complete, ///< to the yield
        Missing,  ///< stopped after the donor states, for want of intensities; see missing
        Until,    ///< stopped where --until asked for it
        Failed,   ///< see failure
    };

    QString name;          ///< of the folder
    QString lanqorVersion; ///< "1.0.0"
    End end = End::Failed;
    QString failure; ///< reason and way out, of a run that failed; else empty
    QString structureFile;
    QVector<FileHash> inputs;
    QString settingsToml; ///< resolved: all that options and files say
    QVector<RunStep> steps;

    QStringList
        firstLines;      ///< what must be known first: "A measured triplet energy is needed: ..."
    QStringList missing; ///< what is needed to go on, one thing each
    QStringList warnings;
    QStringList citations; ///< of every method and program used
    QString medium;        ///< "gas phase" or the solvent

    // The three geometries, each with the method that made it; empty where there is none.
    QString geometryStates;      ///< where singlets, configurations and RL come from
    QString geometryTriplet;     ///< of the second opinion on the triplet
    QString geometryIntensities; ///< of the sphere, Omega and its partition

    int charge = 0;        ///< of the complex, elementary charges
    QString chargeSource;  ///< "given", "from the file", "derived from the fragments"
    QStringList fragments; ///< "3 acetylacetonate (-1)"

    // The chosen geometry, organised: the ion first, then the coordinated atoms.
    SphereResults sphere;
    QVector<Coord> atoms; ///< Angstrom
    QVector<OrganizedLigand> ligands;

    std::optional<DonorStatesResults> states;
    std::shared_ptr<const DonorTripletResults> triplet; ///< the choice among the triplet energies

    std::optional<OmegaExpResults> measured; ///< by the spectrum
    /// How the intensity parameters came about: "fit to the measured spectrum", "given charge
    /// factors", ...
    QString intensitySource;
    std::optional<OmegaFitResults> fit;
    std::optional<FitAccount> fitAccount;
    std::optional<IntensitySolutions> solutions; ///< equally good fits
    std::optional<OmegaResults> omega;
    std::optional<AradPartitionResults> partition; ///< over atoms and ligands

    std::optional<SpectroscopicResults> yield;
    std::optional<YieldInputs> yieldInputs;
    std::optional<UncertaintyResults> uncertainty; ///< of yield and rates
};
