#pragma once

#include "options/intensityFitOptions.h"

#include <LanqorEngine/EmissionSpectrumOptions.h>
#include <LanqorEngine/UncertainInput.h>

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace cli {

class OptionReader;
class UncertainOptions;

/// The steps of a run, in their order.
enum class RunStepId { Structure, Geometry, GroundState, Triplet, States, Intensities, Yield };
constexpr int runStepCount = 7;
/// "02-geometry", the folder of a step.
QString folderOf(RunStepId step);

enum class GeometryMethod { Mopac, Xtb, AsIs };

/// Where the intensity parameters come from.
enum class IntensitySource { None, Spectrum, Omega, ChargeFactors, Qdc };

/// What is asked of a run.
struct RunRequest
{
    QString structureFile; ///< absolute, as all files
    QString outFolder;
    int molecule = 0;
    std::optional<int> charge;
    int coordNumber = 0; ///< 0: by bonding distances
    bool dropsUnbound = false;
    GeometryMethod geometry = GeometryMethod::Mopac;
    QString mopacMethod;
    QString solvent; ///< empty: gas phase

    std::optional<UncertainInput> measuredTriplet; ///< cm^-1
    QString tripletChoice;                         ///< "measured", "indo", "gfn1" or empty
    QString donor;                                 ///< formula of the donor ligand, or empty
    QString donorModel;                            ///< the same of one to calculate on a model
    QStringList excited;                           ///< outputs with the excited states
    QString program;                               ///< that wrote them, or empty
    bool isForced = false;

    IntensitySource source = IntensitySource::None;
    QString spectrum;
    EmissionSpectrumOptions spectrumOptions;
    IntensityFitOptions targets; ///< Omega(2) and Omega(4) with their deviations
    QString g;
    QString alpha;
    std::array<double, 3> qdc = {}; ///< Q, per electron; D, cubic Angstrom eV; C, cubic Angstrom
    double lifetimeMs = 0.0;        ///< 0: not measured
    double refractiveIndex = 1.5;

    QString mopacPath;
    QString xtbPath;
    double timeLimit = 0.0; ///< s
    int jobs = 1;
    RunStepId until = RunStepId::Yield;
    std::optional<RunStepId> redo;

    /// The files that are read.
    QStringList inputFiles() const;
    bool isQdc() const { return source == IntensitySource::Qdc; }
    bool isAsked(RunStepId step) const { return step <= until; }
};

/// Reads the options of a run; a UsageError where they make no sense together.
RunRequest readRunRequest(const OptionReader &reader, const UncertainOptions &uncertain);

} // namespace cli
