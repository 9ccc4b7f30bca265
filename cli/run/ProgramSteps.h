#pragma once

#include "programs/ProgramRunner.h"
#include "run/DonorOutput.h"
#include "run/RunComplex.h"
#include "run/RunFolder.h"
#include "run/RunProgress.h"
#include "run/RunRequest.h"

#include <LanqorEngine/DonorModelResults.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/XtbRunResults.h>

#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace cli {

/// Ctrl-C or its like ended a run. Thrown, and caught by the command.
struct RunInterrupted
{
};

/// The atoms of --donor-model. Throws a Failure.
DonorModelResults donorModelOf(const RunRequest &request, const RunComplex &complex);

/// A run of xtb that is a step, or why there is none.
struct XtbStep
{
    std::optional<XtbRunResults> results;
    QString reason;
};

/// The steps 02 to 05 of a run, which outside programs do, side by side where they may be.
class ProgramSteps
{
public:
    /// The references must outlive this object.
    ProgramSteps(const RunRequest &request, const RunComplex &complex, const RunFolder &folder,
                 RunProgress &progress);
    ~ProgramSteps();
    ProgramSteps(const ProgramSteps &) = delete;
    ProgramSteps &operator=(const ProgramSteps &) = delete;

    /// Does the steps that are asked for. Throws a Failure when one that the run needs fails, and
    /// RunInterrupted.
    void run();

    /// The chosen geometry with its spherical coordinates, and its order of atoms.
    LanqorInputData &geometry() { return *geometryData; }
    const OrganizeResults &sphere() const { return sphereResults; }
    /// The output of MOPAC with it, when that made it.
    QString mopacOutput() const;
    /// What made it.
    QString geometryTitle() const { return stageOf(RunStepId::Geometry).title; }
    QString statesGeometryTitle() const { return statesGeometry; }
    QString tripletGeometryTitle() const { return tripletGeometry; }

    /// The GFN1 pair that gives a triplet: of the complex, or of the model.
    bool isModel() const { return modelGroundState.has_value(); }
    const XtbStep &groundState() const { return modelGroundState ? *modelGroundState : xtbGround; }
    const XtbStep &triplet() const { return xtbTriplet; }
    /// Of the complex itself, also where the triplet is that of a model.
    const XtbStep &groundStateOfComplex() const { return xtbGround; }
    /// Whether the states belong to the GFN1 geometry of the complex.
    bool areStatesAtGroundState() const { return xtbGround.results.has_value(); }

    /// The excited states with their distances; empty when none are asked for.
    const DonorOutput &states() const { return donorOutput; }

    const QStringList &warnings() const { return remarks; }

private:
    /// A job that starts from files in the folder of its step.
    using MakeJob = std::function<programs::ProgramJob(const QString &folder)>;

    struct Stage
    {
        enum class State { Waiting, Running, Settled };

        State state = State::Waiting;
        bool isNeeded = false; ///< the run fails with it
        QString title;
        StepInputs inputs;
        QVector<programs::ProgramJob> jobs;
        /// Further jobs, one after another, when those before have ended well.
        QVector<MakeJob> nextJobs;
        /// What is tried when the first job has failed.
        QVector<MakeJob> secondTry;
        /// Adds files of our own to the folder.
        std::function<void(const QString &folder)> complete;
        /// Reads the results and tells them in a line; throws a Failure.
        std::function<QString(const QString &folder)> load;
        /// Takes the reason why there are no results.
        std::function<void(const QString &reason)> giveUp;

        int pending = 0;
        RunStep step; ///< with what the programs told
        QString fault;
        QString firstFault; ///< of a job that was tried a second time
        bool isFaultFinal = true;
    };

    Stage &stageOf(RunStepId id) { return stages.at(std::size_t(id)); }
    const Stage &stageOf(RunStepId id) const { return stages.at(std::size_t(id)); }
    bool isSettled(RunStepId id) const;

    void startWhatCan();
    void start(RunStepId id);
    void prepareGeometry(Stage &stage);
    void prepareGroundState(Stage &stage);
    void prepareTriplet(Stage &stage);
    void prepareModel(Stage &stage);
    void prepareStates(Stage &stage);
    void prepareIndo(Stage &stage);
    void leaveOut(RunStepId id, const QString &reason);
    void addJobs(RunStepId id, const QVector<programs::ProgramJob> &jobs);
    void takeOutcome(RunStepId id, const programs::ProgramOutcome &outcome);
    void conclude(RunStepId id);
    void settleFailed(RunStepId id, RunStep::State state, const QString &reason);
    /// Calls @p work; what it throws ends the run.
    void guarded(const std::function<void()> &work);

    programs::ProgramJob xtbJob(const QVector<Coord> &atoms, int charge, int unpaired,
                                const QString &folder, const QString &name) const;
    void setGroundState(Stage &stage, const QVector<Coord> &atoms, int charge) const;
    QString versionOfProgram(const programs::ProgramJob &job);
    void writeGeometry(LanqorInputData &source, const QString &folder) const;
    QString loadGeometry(const QString &folder);
    QString loadStates(const QStringList &files);

    const RunRequest &request;
    const RunComplex &complex;
    const RunFolder &folder;
    RunProgress &progress;
    programs::ProgramRunner runner;
    std::array<Stage, runStepCount> stages;
    QMap<QString, QString> versions;
    std::function<void()> failure; ///< throws it
    QStringList remarks;

    std::unique_ptr<LanqorInputData> geometryData;
    OrganizeResults sphereResults;
    XtbStep xtbGround;
    XtbStep xtbTriplet;
    std::optional<XtbStep> modelGroundState;
    QString statesGeometry;
    QString tripletGeometry;
    DonorOutput donorOutput;
};

} // namespace cli
