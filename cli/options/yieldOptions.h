#pragma once

#include <LanqorEngine/EnergyTransferChannels.h>
#include <LanqorEngine/KineticParameters.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QStringList>
#include <QVector>

#include <memory>

namespace cli {
class OptionReader;
}
struct SpectroscopicResults;

/// The command line of "lanqor yield".
namespace yieldOptions {

/// Of a donor state, cm^-1.
constexpr double lowestEnergy = 1000.0;
/// Of the ligands' bands unless another is given, cm^-1.
constexpr double usualBandHalfWidth = 3250.0;

/// What is asked for: energies in cm^-1, distances in Angstrom, Omega in 1e-20 cm^2.
struct Request
{
    QString complexFile; ///< may be empty with explicit Omega
    /// The output of the excited-state calculation, its file open; null: explicit donor states.
    std::unique_ptr<LanqorInputData> excitedStates;
    int programType = -1;
    QString omegaReport; ///< one source of Omega
    QString g;           ///< with alpha another
    QString alpha;
    QVector<double> omega; ///< with omegaEd the third
    QVector<double> omegaEd;
    int singlet = 0; ///< 0: the lowest
    int triplet = 0;
    double singletEnergy = 0.0; ///< here as below 0: that of the output
    double tripletEnergy = 0.0;
    double rlSinglet = 0.0;
    double rlTriplet = 0.0;
    double firstTripletEnergy = 0.0; ///< Ta of two triplets
    double rlFirstTriplet = 0.0;
    double tripletShift = 0.0;
    double minDistance = 0.0; ///< of the ligand atom nearest to the ion
    double refractiveIndex = 0.0;
    double lifetimeMs = 0.0; ///< 0: estimate
    int etModel = 0;
    double overlapExponent = 0.0;
    double bandHalfWidth = 0.0;
    KineticParameters kinetics;
    EnergyTransferChannels openChannels;
    bool areChannelsGiven = false;
    bool twoTriplets = false;
    bool isForced = false;    ///< whatever the atoms of complex and excited states
    bool isExplained = false; ///< in sentences instead of tables
    QString reportFile;
    QString plotFile;
    QString photonPlotFile;

    /// True without an output, without channels that are asked for, with one triplet: the scheme
    /// of the default channels alone, without 5G6 and 5L6.
    bool isOfDefaultChannels() const;
    /// True for the exchange models 0 and 1.
    bool needsMinDistance() const;
    /// The files that are read.
    QStringList inputFiles() const;
};

/// Adds the options and reads the arguments.
Request read(cli::OptionReader &options, const QStringList &arguments);

/// Throws a Failure after results that no molecule can have.
void checkResults(const SpectroscopicResults &results);

} // namespace yieldOptions
