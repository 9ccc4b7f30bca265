#include "run/Run.h"

#include "Command.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "programs/MopacRunner.h"
#include "programs/XtbRunner.h"
#include "run/DonorOutput.h"
#include "run/IntensitySteps.h"
#include "run/ProgramSteps.h"
#include "run/RunComplex.h"
#include "run/RunFolder.h"
#include "run/RunSettings.h"
#include "run/runCitations.h"
#include "run/runOutputs.h"
#include "text.h"

#include <LanqorEngine/DonorTripletResults.h>
#include <LanqorEngine/LanqorDonorTriplet.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <functional>

namespace cli {

namespace {

constexpr double msPerSecond = 1000.0;
const auto complexFile = QStringLiteral("complex.xyz");
const auto pageName = QStringLiteral("report.html");
const auto textName = QStringLiteral("report.txt");
const auto summaryName = QStringLiteral("summary.json");

/// States of another complex are refused before anything is calculated.
void checkExcited(const RunRequest &request, const RunComplex &complex, QStringList &warnings)
{
    if (request.excited.isEmpty())
        return;
    const QTemporaryDir scratch;
    const QString file = scratch.filePath(complexFile);
    if (!writeFile(file, complex.xyz))
        throw Failure{tr("the states of --excited cannot be compared with the complex")};
    LanqorInputData geometry(nullptr, file);
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate())
        failOf(geometry);
    const DonorOutput donors = readDonorOutput(request.excited, request.program);
    const QString mismatch =
        donors.rl->getCompositionMismatch(geometry).replace(file, request.structureFile);
    if (!mismatch.isEmpty() && !request.isForced)
        throw Failure{mismatch + tr("; --force computes all the same")};
    if (!mismatch.isEmpty()) {
        warnings.append(mismatch);
        warn(mismatch);
    }
}

/// A run that could not go on without a program is refused before it begins.
void checkPrograms(const RunRequest &request)
{
    const auto require = [&](RunStepId step, const programs::Program &program,
                             const QString &wayOut) {
        QString error;
        if (!request.isAsked(step) || QDir(request.outFolder).exists(folderOf(step)) ||
            !programs::findProgram(program, error).isEmpty())
            return;
        throw Failure{error + QStringLiteral(". ") + wayOut};
    };
    programs::MopacRequest mopacJob;
    mopacJob.path = request.mopacPath;
    programs::XtbRequest xtbJob;
    xtbJob.path = request.xtbPath;
    const programs::Program mopac = programs::makeMopacJob(mopacJob).program;
    if (request.geometry == GeometryMethod::Mopac)
        require(RunStepId::Geometry, mopac,
                tr("Without it, --geometry as-is or xtb gives the geometry, and --excited the "
                   "donor states."));
    if (request.geometry == GeometryMethod::Xtb)
        require(RunStepId::Geometry, programs::makeXtbJob(xtbJob).program,
                tr("Without it, --geometry mopac or as-is gives the geometry."));
    if (request.excited.isEmpty())
        require(RunStepId::States, mopac,
                tr("Without it, --excited takes the donor states from an output of ORCA, Gaussian "
                   "or ZINDO."));
}

/// What a run still lacks for intensities.
QStringList missingThings(const RunRequest &request)
{
    QStringList missing = {
        tr("intensities, one of: a measured emission spectrum (--spectrum FILE); measured Omega(2) "
           "and Omega(4) (--omega2, --omega4); charge factors and polarisabilities (--g, --alpha); "
           "parameters of the QDC model (--q, --d, --c)")};
    if (request.lifetimeMs == 0.0)
        missing.append(tr("the measured lifetime of 5D0 in ms (--lifetime); without it the "
                          "non-radiative rate is an estimate"));
    return missing;
}

/// The coordinated atoms, atoms 2 to N + 1, whatever their distances.
SphereResults sphereOf(const LanqorInputData &geometry, int coordNumber)
{
    SphereResults sphere;
    sphere.structureFile = geometry.getFileName();
    sphere.ion = geometry.getAtomLabel(1);
    sphere.coordNumber = coordNumber;
    for (int atom = 2; atom <= coordNumber + 1; ++atom)
        sphere.atoms.append({atom, geometry.getCoordSPH(atom)});
    return sphere;
}

TripletMethod choiceOf(const QString &name)
{
    if (name == QLatin1String("measured"))
        return TripletMethod::Measured;
    if (name == QLatin1String("indo"))
        return TripletMethod::States;
    return name == QLatin1String("gfn1") ? TripletMethod::Gfn1 : TripletMethod::None;
}

/// A run while it goes on.
class Run
{
public:
    Run(const OptionReader &settings, const RunRequest &request, const RunComplex &complex,
        const RunFolder &folder, RunReport &report, IntensitySteps &intensities)
        : settings(settings)
        , request(request)
        , complex(complex)
        , folder(folder)
        , report(report)
        , intensities(intensities)
        , programs(request, complex, folder, progress)
    {}

    void perform()
    {
        takeStructure();
        runPrograms();
        if (request.until < RunStepId::States)
            return;
        chooseTriplet();
        if (request.until < RunStepId::Intensities)
            return;
        if (request.source == IntensitySource::None) {
            report.end = RunReport::End::Missing;
            report.missing = missingThings(request);
            for (const RunStepId id : {RunStepId::Intensities, RunStepId::Yield})
                if (request.isAsked(id))
                    progress.take(id, {{},
                                       {},
                                       RunStep::State::LeftOut,
                                       tr("no intensities are given"),
                                       {},
                                       {},
                                       {},
                                       0.0});
            return;
        }
        calculate(RunStepId::Intensities, tr("intensity parameters"), intensityInputs(), [this] {
            return intensities.calcOmega(programs.geometry(), programs.sphere(),
                                         programs.mopacOutput());
        });
        if (!request.isAsked(RunStepId::Yield))
            return;
        calculate(RunStepId::Yield, tr("rates and yield"), yieldInputs(),
                  [this] { return intensities.calcYield(programs, donors); });
        report.end = RunReport::End::Complete;
    }

    QVector<RunStep> steps() const { return progress.steps(); }

private:
    void takeStructure()
    {
        report.charge = complex.charge;
        report.chargeSource = complex.chargeSource;
        report.fragments = complex.structure.fragmentCharges;
        const QString name = folderOf(RunStepId::Structure);
        const StepInputs inputs = {{complexFile, hashOf(complex.xyz)}};
        RunStep step;
        step.title = tr("structure of %1").arg(QFileInfo(request.structureFile).fileName());
        step.outcome = complex.summary();
        const bool isKept =
            request.redo != RunStepId::Structure && folder.finished(name, inputs).has_value();
        step.state = isKept ? RunStep::State::Kept : RunStep::State::Done;
        if (!isKept) {
            const QString place = folder.begin(name);
            if (!writeFile(QDir(place).filePath(complexFile), complex.xyz))
                throw Failure{tr("the run cannot go on")};
            folder.finish(name, inputs, {step.title, step.outcome, {}, {}, {}, 0.0, false});
        }
        progress.take(RunStepId::Structure, step);
    }

    void runPrograms()
    {
        if (request.until == RunStepId::Structure)
            return;
        try {
            programs.run();
        } catch (...) {
            report.warnings += programs.warnings();
            throw;
        }
        report.warnings += programs.warnings();
        report.geometryIntensities = programs.geometryTitle();
        report.geometryStates = programs.statesGeometryTitle();
        report.geometryTriplet = programs.tripletGeometryTitle();
        report.sphere = sphereOf(programs.geometry(), programs.sphere().coordNumber);
        report.atoms = programs.geometry().getCoord();
        report.ligands = programs.sphere().ligands;
    }

    void chooseTriplet()
    {
        const LanqorRL &states = *programs.states().rl;
        report.states = states.getResults();
        LanqorDonorTriplet chooser;
        keepWarnings(chooser, report.warnings);
        if (request.measuredTriplet)
            chooser.setMeasured(request.measuredTriplet->value,
                                deviationOf(*request.measuredTriplet));
        chooser.setStates(states);
        if (programs.groundStateOfComplex().results)
            chooser.setGroundState(*programs.groundStateOfComplex().results);
        if (programs.isModel()) {
            if (programs.triplet().results)
                chooser.setModel(*programs.groundState().results, *programs.triplet().results);
        } else if (programs.triplet().results) {
            chooser.setTriplet(*programs.triplet().results);
        }
        if (!programs.triplet().results)
            chooser.setGfn1Missing(programs.groundState().results
                                       ? programs.triplet().reason
                                       : tr("ground state: %1").arg(programs.groundState().reason));
        chooser.setLigand(request.donor.isEmpty() ? request.donorModel : request.donor);
        chooser.setChoice(choiceOf(request.tripletChoice));
        const bool isChosen = chooser.calculate();
        const DonorTripletResults results = chooser.getResults();
        report.triplet = std::make_shared<DonorTripletResults>(results);
        if (!isChosen)
            failOf(chooser);
        for (const QString &warning : results.warnings)
            warn(warning);
        report.warnings += results.warnings;
        if (!results.firstLine.isEmpty())
            report.firstLines.append(results.firstLine);
        donors.singlet = results.singletState;
        donors.triplet = results.tripletState;
        donors.tripletEnergy = results.energy;
        donors.tripletSd = results.standardDeviation;
        donors.isMeasured = results.chosen == TripletMethod::Measured;
    }

    static double deviationOf(const UncertainInput &input)
    {
        return input.kind == UncertaintyKind::Uniform ? (input.high - input.low) / std::sqrt(12.0)
                                                      : input.standardDeviation;
    }

    StepInputs intensityInputs() const
    {
        StepInputs inputs = {
            {programs.geometryTitle(), hashOfFile(folder.file(folderOf(RunStepId::Geometry),
                                                              QStringLiteral("geometry.xyz")))},
            {versionOf(QStringLiteral("lanqor")), report.lanqorVersion},
            {QStringLiteral("settings"), intensitySettings(settings)}};
        if (!request.spectrum.isEmpty())
            inputs.append({QStringLiteral("spectrum"), hashOfFile(request.spectrum)});
        return inputs;
    }

    StepInputs yieldInputs() const
    {
        const auto text = [](double value) { return QString::number(value, 'g', 15); };
        StepInputs inputs = intensityInputs();
        inputs.append(
            {QStringLiteral("triplet"), text(donors.tripletEnergy) + QStringLiteral(" +- ") +
                                            text(donors.tripletSd) + QStringLiteral(" RL ") +
                                            text(report.triplet->tripletDistance)});
        inputs.append({QStringLiteral("singlet"), text(report.triplet->singletEnergy) +
                                                      QStringLiteral(" RL ") +
                                                      text(report.triplet->singletDistance)});
        inputs.append({QStringLiteral("samples"), settings.text("samples")});
        return inputs;
    }

    /// A step of our own. It takes a second, so that a step that is kept is calculated for the
    /// report as well, with the same results.
    void calculate(RunStepId id, const QString &title, const StepInputs &inputs,
                   const std::function<IntensityOutcome()> &work)
    {
        QElapsedTimer timer;
        timer.start();
        const QString name = folderOf(id);
        RunStep step;
        step.title = title;
        const auto mark = request.redo == id ? std::nullopt : folder.finished(name, inputs);
        try {
            const IntensityOutcome outcome = work();
            if (intensities.isInterrupted())
                throw RunInterrupted{};
            step.outcome = outcome.line;
            step.state = mark ? RunStep::State::Kept : RunStep::State::Done;
            step.seconds = mark ? mark->seconds : double(timer.elapsed()) / msPerSecond;
            if (!mark) {
                const QDir place(folder.begin(name));
                for (const auto &file : outcome.files)
                    if (!writeFile(place.filePath(file.first), file.second.toUtf8()))
                        throw Failure{tr("the run cannot go on")};
                folder.finish(name, inputs, {title, step.outcome, {}, {}, {}, step.seconds, false});
            }
        } catch (const Failure &error) {
            step.state = RunStep::State::Failed;
            step.outcome = error.message;
            progress.take(id, step, RunProgress::Reason::ToldLater);
            throw;
        }
        progress.take(id, step);
    }

    const OptionReader &settings;
    const RunRequest &request;
    const RunComplex &complex;
    const RunFolder &folder;
    RunReport &report;
    IntensitySteps &intensities;
    RunProgress progress;
    ProgramSteps programs;
    YieldDonors donors;
};

/// Those of an earlier call told of other settings or of another state.
void removeOutputs(const RunFolder &folder)
{
    for (const QString &name : {pageName, textName, summaryName})
        QFile::remove(folder.file(name));
}

void writeOutputs(const RunFolder &folder, const RunReport &report)
{
    writeFile(folder.file(summaryName), makeRunTables(report).toJson());
    writeFile(folder.file(textName), makeRunText(report).toUtf8());
    writeFile(folder.file(pageName), makeRunPage(report));
}

} // namespace

RunEnd performRun(const OptionReader &reader, const OptionReader &settings,
                  const UncertainOptions &uncertain, const RunRequest &request)
{
    RunEnd end;
    RunReport &report = end.report;
    const RunComplex complex = readRunComplex(request);
    report.warnings += complex.warnings;
    checkExcited(request, complex, report.warnings);
    if (!request.donorModel.isEmpty())
        donorModelOf(request, complex); // which fails here, not after the ground state
    IntensitySteps intensities(reader, uncertain, request, report);
    intensities.readSpectrum();
    RunFolder::check(request.outFolder);
    checkPrograms(request);

    const RunFolder folder(request.outFolder);
    report.name = QFileInfo(request.outFolder).fileName();
    report.lanqorVersion = QCoreApplication::applicationVersion();
    report.structureFile = request.structureFile;
    report.medium = request.solvent.isEmpty() ? tr("gas phase") : request.solvent;
    report.settingsToml = resolvedRunFile(settings, request.structureFile, request.outFolder);
    for (const QString &file : request.inputFiles())
        report.inputs.append({file, hashOfFile(file)});
    if (!writeFile(folder.file(QStringLiteral("run.toml")), report.settingsToml.toUtf8()))
        throw Failure{tr("the run cannot begin")};
    removeOutputs(folder);
    report.end = RunReport::End::Until;
    Run run(settings, request, complex, folder, report, intensities);
    try {
        run.perform();
    } catch (const Failure &error) {
        report.end = RunReport::End::Failed;
        report.failure = error.message;
        end.status = failure;
    } catch (const RunInterrupted &) {
        note(tr("interrupted; the finished steps are kept, and the same command goes on"));
        end.status = interrupted;
    }
    report.steps = run.steps();
    report.citations = runCitations(request, report);
    if (end.status != interrupted)
        writeOutputs(folder, report);
    return end;
}

} // namespace cli
