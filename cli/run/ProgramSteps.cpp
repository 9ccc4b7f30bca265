#include "run/ProgramSteps.h"

#include "Command.h"
#include "programs/MopacRunner.h"
#include "programs/ProgramRun.h"
#include "programs/XtbRunner.h"
#include "text.h"

#include <LanqorEngine/LanqorDonorModel.h>
#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorOrganizeMolecules.h>
#include <LanqorEngine/LanqorXtbRun.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>

namespace cli {

namespace {

constexpr int statesOfEachKind = 25;
const auto complexName = QStringLiteral("complex");
const auto geometryName = QStringLiteral("geometry.xyz");
const auto groundName = QStringLiteral("s0");
const auto tripletName = QStringLiteral("t1");
const auto relaxedName = QStringLiteral("relaxed");
const auto dotXyz = QStringLiteral(".xyz");
const auto dotOut = QStringLiteral(".out");

QString in(const QString &folder, const QString &name)
{
    return QDir(folder).filePath(name);
}

QByteArray contentsOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{tr("%1 cannot be read: %2").arg(fileName, file.errorString())};
    return file.readAll();
}

void readIndices(LanqorInputData &output)
{
    LanqorIndicesCalculation indices(nullptr, &output, LanqorIndicesCalculation::MopacOutput);
    if (!indices.calculateIndices())
        failOf(indices);
}

void writeWhole(const QString &fileName, const QByteArray &bytes)
{
    if (!writeFile(fileName, bytes))
        throw Failure{tr("the run cannot go on without %1").arg(fileName)};
}

XtbRunResults readXtb(const QString &folder, const QString &name)
{
    const QString base = in(folder, name);
    LanqorXtbRun run(nullptr, base + dotOut);
    if (!run.readOutput(base + dotXyz, base + QStringLiteral(".charges")))
        failOf(run);
    return run.getResults();
}

QString energyOf(const XtbRunResults &results)
{
    return tr("energy %1 hartree, gap %2 eV")
        .arg(QString::number(results.energy, 'f', 6), QString::number(results.gap, 'f', 2));
}

QString countOf(const OrganizeResults &structure)
{
    QMap<QString, int> counts;
    for (const OrganizedAtom &atom : structure.atoms)
        if (atom.isCoordinated)
            ++counts[atom.position.label];
    QStringList parts;
    for (auto count = counts.begin(); count != counts.end(); ++count)
        parts.append(QStringLiteral("%1 %2").arg(QString::number(*count), count.key()));
    return parts.join(QStringLiteral(", "));
}

} // namespace

DonorModelResults donorModelOf(const RunRequest &request, const RunComplex &complex)
{
    LanqorDonorModel builder(nullptr, complex.structure);
    builder.setComplexCharge(complex.charge);
    if (!builder.build(request.donorModel))
        throw Failure{QStringLiteral("--donor-model: ") + builder.getLastError()};
    return builder.getResults();
}

ProgramSteps::ProgramSteps(const RunRequest &request, const RunComplex &complex,
                           const RunFolder &folder, RunProgress &progress)
    : request(request)
    , complex(complex)
    , folder(folder)
    , progress(progress)
    , runner(request.jobs)
{}

ProgramSteps::~ProgramSteps() = default;

bool ProgramSteps::isSettled(RunStepId id) const
{
    return !request.isAsked(id) || stageOf(id).state == Stage::State::Settled;
}

void ProgramSteps::run()
{
    guarded([this] { startWhatCan(); });
    const bool isWhole = runner.wait();
    if (failure)
        failure();
    if (!isWhole)
        throw RunInterrupted{};
}

void ProgramSteps::guarded(const std::function<void()> &work)
{
    if (failure)
        return;
    try {
        work();
    } catch (const Failure &error) {
        failure = [error] { throw error; };
    } catch (const UsageError &error) {
        failure = [error] { throw error; };
    }
}

/// Each step as soon as what goes into it is there. A step that is kept may let others start.
void ProgramSteps::startWhatCan()
{
    using Id = RunStepId;
    const auto canStart = [this](Id id) {
        if (!request.isAsked(id) || stageOf(id).state != Stage::State::Waiting)
            return false;
        switch (id) {
        case Id::GroundState:
            return request.geometry != GeometryMethod::Xtb || isSettled(Id::Geometry);
        case Id::Triplet:
            return isSettled(Id::GroundState);
        case Id::States:
            return isSettled(Id::GroundState) &&
                   (areStatesAtGroundState() || isSettled(Id::Geometry));
        default:
            return true;
        }
    };
    for (bool isAny = true; isAny;) {
        isAny = false;
        for (const Id id : {Id::Geometry, Id::GroundState, Id::Triplet, Id::States})
            if (canStart(id)) {
                start(id);
                isAny = true;
            }
    }
}

void ProgramSteps::start(RunStepId id)
{
    Stage &stage = stageOf(id);
    stage.state = Stage::State::Running;
    switch (id) {
    case RunStepId::Geometry:
        prepareGeometry(stage);
        break;
    case RunStepId::GroundState:
        prepareGroundState(stage);
        break;
    case RunStepId::Triplet:
        prepareTriplet(stage);
        break;
    default:
        prepareStates(stage);
        break;
    }
    if (stage.state == Stage::State::Settled)
        return;
    const QString name = folderOf(id);
    for (const programs::ProgramJob &job : qAsConst(stage.jobs)) {
        QByteArray text = job.arguments.join(QLatin1Char(' ')).toUtf8();
        for (const programs::InputFile &input : job.inputs)
            text += '\n' + input.text;
        stage.inputs.append({tr("job %1").arg(job.what), hashOf(text)});
        stage.inputs.append({versionOf(job.program.name), versionOfProgram(job)});
    }
    if (request.redo != id) {
        if (const auto mark = folder.finished(name, stage.inputs)) {
            stage.step = {name,          stage.title,   RunStep::State::Kept, mark->outcome,
                          mark->program, mark->version, mark->commandLine,    mark->seconds};
            if (mark->isFailed) {
                settleFailed(id, RunStep::State::Kept, mark->outcome);
                return;
            }
            stage.load(folder.file(name));
            stage.state = Stage::State::Settled;
            progress.take(id, stage.step);
            return;
        }
    }
    const QString place = folder.begin(name);
    for (programs::ProgramJob &job : stage.jobs)
        for (programs::ResultFile &result : job.results)
            result.fileName = in(place, QFileInfo(result.fileName).fileName());
    if (stage.jobs.isEmpty())
        conclude(id);
    else
        addJobs(id, stage.jobs);
}

void ProgramSteps::addJobs(RunStepId id, const QVector<programs::ProgramJob> &jobs)
{
    Stage &stage = stageOf(id);
    stage.pending += jobs.size();
    for (programs::ProgramJob job : jobs) {
        job.timeLimit = request.timeLimit;
        job.showProgress = [this, id](const programs::ProgramProgress &point) {
            progress.show(id, tr("cycle %1, %2 %3")
                                  .arg(QString::number(point.cycle),
                                       QString::number(point.energy, 'f', 4), point.energyUnit));
        };
        runner.add(job, [this, id](const programs::ProgramOutcome &outcome) {
            guarded([&] {
                takeOutcome(id, outcome);
                startWhatCan();
            });
        });
    }
}

void ProgramSteps::takeOutcome(RunStepId id, const programs::ProgramOutcome &outcome)
{
    Stage &stage = stageOf(id);
    stage.step.version = outcome.version;
    stage.step.seconds += outcome.seconds;
    stage.step.program = stage.jobs.first().program.name;
    stage.step.commandLine +=
        (stage.step.commandLine.isEmpty() ? QString() : QStringLiteral("; ")) + outcome.commandLine;
    for (const QString &remark : outcome.remarks) {
        remarks.append(remark);
        warn(remark);
    }
    if (!outcome.isDone() && stage.fault.isEmpty()) {
        stage.fault = outcome.error;
        stage.isFaultFinal = outcome.end == programs::ProgramEnd::Failed;
    }
    if (--stage.pending > 0 || outcome.end == programs::ProgramEnd::Interrupted)
        return;
    if (!stage.fault.isEmpty() && stage.isFaultFinal && !stage.secondTry.isEmpty()) {
        stage.firstFault.swap(stage.fault);
        stage.nextJobs = stage.secondTry + stage.nextJobs;
    }
    stage.secondTry.clear();
    if (stage.fault.isEmpty() && !stage.nextJobs.isEmpty()) {
        try {
            addJobs(id, {stage.nextJobs.takeFirst()(folder.unfinished(folderOf(id)))});
            return;
        } catch (const Failure &error) {
            stage.fault = error.message;
        }
    }
    conclude(id);
}

void ProgramSteps::conclude(RunStepId id)
{
    Stage &stage = stageOf(id);
    const QString name = folderOf(id);
    const QString place = folder.unfinished(name);
    stage.step.title = stage.title;
    if (stage.fault.isEmpty()) {
        try {
            if (stage.complete)
                stage.complete(place);
            stage.step.outcome = stage.load(place);
            if (!stage.firstFault.isEmpty())
                stage.step.outcome += tr("; second try, from contacts relaxed by GFN-FF");
        } catch (const Failure &error) {
            stage.fault = error.message;
        }
    }
    StepMark mark{stage.title,        stage.step.outcome,     stage.step.program,
                  stage.step.version, stage.step.commandLine, stage.step.seconds};
    if (stage.fault.isEmpty()) {
        folder.finish(name, stage.inputs, mark);
        stage.load(folder.file(name)); // with the final names of the files
        stage.state = Stage::State::Settled;
        stage.step.state = RunStep::State::Done;
        progress.take(id, stage.step);
        return;
    }
    if (!stage.firstFault.isEmpty())
        stage.fault = tr("%1; second try, from contacts relaxed by GFN-FF: %2")
                          .arg(stage.firstFault, stage.fault);
    const bool isAbandoned = stage.isNeeded || !stage.isFaultFinal;
    if (!isAbandoned)
        stage.fault +=
            tr("; --redo %1 tries again").arg(name.mid(name.indexOf(QLatin1Char('-')) + 1));
    stage.fault.replace(place, isAbandoned ? folder.failed(name) : folder.file(name));
    mark.outcome = stage.fault;
    mark.isFailed = true;
    if (isAbandoned)
        folder.abandon(name);
    else
        folder.finish(name, stage.inputs, mark);
    settleFailed(id, RunStep::State::Failed, stage.fault);
}

void ProgramSteps::settleFailed(RunStepId id, RunStep::State state, const QString &reason)
{
    Stage &stage = stageOf(id);
    stage.state = Stage::State::Settled;
    stage.step.title = stage.title;
    stage.step.state = state;
    stage.step.outcome = reason;
    progress.take(id, stage.step,
                  stage.isNeeded ? RunProgress::Reason::ToldLater : RunProgress::Reason::Told);
    if (stage.isNeeded)
        throw Failure{reason};
    stage.giveUp(reason);
}

void ProgramSteps::leaveOut(RunStepId id, const QString &reason)
{
    settleFailed(id, RunStep::State::LeftOut, reason);
}

/// A closed-shell optimisation by GFN1. Near a crystal structure its electrons may collapse into a
/// solution without a gap, which does not happen once the force field of xtb has relaxed the
/// contacts: that is the second try.
void ProgramSteps::setGroundState(Stage &stage, const QVector<Coord> &atoms, int charge) const
{
    stage.jobs = {xtbJob(atoms, charge, 0, folder.path(), groundName)};
    const auto relax = [this, atoms, charge](const QString &place) {
        programs::ProgramJob job = xtbJob(atoms, charge, 0, place, relaxedName);
        const int method = job.arguments.indexOf(QStringLiteral("--gfn"));
        job.arguments.replace(method, QStringLiteral("--gfnff"));
        job.arguments.removeAt(method + 1);
        job.results = {{QStringLiteral("xtbopt.xyz"), in(place, relaxedName + dotXyz), true},
                       {job.outputName, in(place, relaxedName + dotOut), true}};
        job.judge = [](const QDir & /*scratch*/) { return programs::Verdict(); };
        return job;
    };
    const auto again = [this, charge](const QString &place) {
        LanqorInputData relaxed(nullptr, in(place, relaxedName + dotXyz));
        if (!relaxed.readXYZFile())
            failOf(relaxed);
        return xtbJob(relaxed.getCoord(), charge, 0, place, groundName);
    };
    stage.secondTry = {relax, again};
}

programs::ProgramJob ProgramSteps::xtbJob(const QVector<Coord> &atoms, int charge, int unpaired,
                                          const QString &place, const QString &name) const
{
    programs::XtbRequest job;
    job.atoms = atoms;
    job.charge = charge;
    job.unpairedElectrons = unpaired;
    job.solvent = request.solvent;
    job.folder = place;
    job.baseName = name;
    job.path = request.xtbPath;
    return programs::makeXtbJob(job);
}

/// Asked of the program itself, once. What does not know the question may do anything: it is asked
/// in a scratch folder, and ended when it takes long.
QString ProgramSteps::versionOfProgram(const programs::ProgramJob &job)
{
    constexpr int patience = 10000;                   // ms
    constexpr qint64 longestAnswer = qint64(1) << 20; // bytes
    const QString name = job.program.name;
    QString error;
    const QString path = programs::findProgram(job.program, error);
    if (path.isEmpty() || versions.contains(name))
        return versions.value(name);
    static const QRegularExpression pattern(QStringLiteral("[vV]ersion\\s+v?(\\d[\\w.]*)"));
    const QTemporaryDir scratch;
    const QString answer = scratch.filePath(QStringLiteral("version.out"));
    programs::GroupLeader process(longestAnswer);
    process.setWorkingDirectory(scratch.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(answer);
    process.start(path, {QStringLiteral("--version")});
    process.waitForFinished(patience);
    process.endGroup();
    process.waitForFinished();
    const auto match =
        pattern.match(QString::fromUtf8(QFile::exists(answer) ? contentsOf(answer) : QByteArray()));
    versions[name] = match.hasMatch() ? match.captured(1) : hashOfFile(path);
    return versions.value(name);
}

void ProgramSteps::writeGeometry(LanqorInputData &source, const QString &place) const
{
    LanqorOrganizeMolecules organizer(nullptr, &source);
    organizer.setCoordinationNumber(request.coordNumber);
    if (!organizer.organize())
        failOf(organizer);
    writeWhole(in(place, geometryName),
               xyzOf(organizer.getCoord(), stageOf(RunStepId::Geometry).title));
}

void ProgramSteps::prepareGeometry(Stage &stage)
{
    stage.isNeeded = true;
    stage.inputs.append({complexName, hashOf(complex.xyz)});
    if (request.coordNumber > 0)
        stage.inputs.append({tr("coordination number"), QString::number(request.coordNumber)});
    stage.load = [this](const QString &place) { return loadGeometry(place); };
    if (request.geometry == GeometryMethod::AsIs) {
        stage.title = tr("geometry of the file as it is");
        stage.complete = [this](const QString &place) {
            writeWhole(in(place, geometryName), complex.xyz);
        };
        return;
    }
    if (request.geometry == GeometryMethod::Xtb) {
        stage.title = tr("geometry by xtb GFN1");
        setGroundState(stage, complex.atoms(), complex.charge);
        stage.complete = [this](const QString &place) {
            LanqorInputData source(nullptr, in(place, groundName + dotXyz));
            writeGeometry(source, place);
        };
        return;
    }
    stage.title = tr("geometry by MOPAC %1, sparkle for Eu").arg(request.mopacMethod);
    // Its solvent model does not see the charge of a sparkle.
    if (!request.solvent.isEmpty())
        stage.title += tr(", in the gas phase");
    const QTemporaryDir scratch;
    const QString start = scratch.filePath(QStringLiteral("start.xyz"));
    const QString jobFile = scratch.filePath(QStringLiteral("complex.mop"));
    writeWhole(start, complex.xyz);
    LanqorFilesConverter writer(nullptr, start);
    writer.setMopacMethod(request.mopacMethod);
    writer.setMopacJobForQdcFit(request.isQdc());
    writer.setExtraMopacKeywords(
        LanqorFilesConverter::sparkleKeywords(complex.atoms(), complex.charge));
    if (!writer.convertFromOutToMop(jobFile))
        failOf(writer);
    programs::MopacRequest job;
    job.job = contentsOf(jobFile);
    job.folder = folder.path();
    job.baseName = complexName;
    job.path = request.mopacPath;
    stage.jobs = {programs::makeMopacJob(job)};
    stage.complete = [this](const QString &place) {
        LanqorInputData source(nullptr, in(place, complexName + dotOut));
        if (!source.readMopacOutFile(false))
            failOf(source);
        if (request.isQdc()) // writes a table of the indices beside the output
            readIndices(source);
        writeGeometry(source, place);
    };
}

QString ProgramSteps::mopacOutput() const
{
    return in(folder.file(folderOf(RunStepId::Geometry)), complexName + dotOut);
}

/// Reads the chosen geometry and compares its sphere with that of the file.
QString ProgramSteps::loadGeometry(const QString &place)
{
    const bool isFinal = place == folder.file(folderOf(RunStepId::Geometry));
    geometryData = std::make_unique<LanqorInputData>(nullptr, in(place, geometryName));
    if (!geometryData->readStructureFile() || !geometryData->createSphericalCoordinate())
        failOf(*geometryData);
    LanqorOrganizeMolecules organizer(nullptr, geometryData.get());
    organizer.setCoordinationNumber(request.coordNumber);
    if (!organizer.organize())
        failOf(organizer);
    sphereResults = organizer.getResults();
    const QString error = geometryData->getSphereError();
    if (!error.isEmpty() && request.coordNumber == 0)
        throw Failure{error};
    const QString before = countOf(complex.structure);
    const QString now = countOf(sphereResults);
    if (before != now && isFinal) {
        remarks.append(tr("the sphere of the ion changed with the geometry: %1 in the file, %2 "
                          "after %3; look at both, or keep that of the file with --geometry as-is")
                           .arg(before, now, stageOf(RunStepId::Geometry).title));
        warn(remarks.last());
    }
    const bool isCounted = isFinal && request.coordNumber == 0;
    for (const QString &text : isCounted ? geometryData->getNearAtomNotes() : QStringList()) {
        remarks.append(tr("%1; --coordination N takes the N nearest").arg(text));
        warn(remarks.last());
    }
    if (request.geometry == GeometryMethod::Xtb) {
        xtbGround.results = readXtb(place, groundName);
        return tr("sphere of %1; %2").arg(now, energyOf(*xtbGround.results));
    }
    if (request.geometry == GeometryMethod::AsIs)
        return tr("sphere of %1").arg(now);
    LanqorInputData output(nullptr, in(place, complexName + dotOut));
    if (!output.readMopacOutFile(false))
        failOf(output);
    return tr("sphere of %1; heat of formation %2 kcal/mol")
        .arg(now, QString::number(output.getFinalHeat(), 'f', 2));
}

void ProgramSteps::prepareGroundState(Stage &stage)
{
    stage.title = tr("ground state by xtb GFN1");
    stage.giveUp = [this](const QString &reason) {
        if (!xtbGround.results)
            xtbGround.reason = reason;
    };
    if (request.geometry == GeometryMethod::Xtb) {
        leaveOut(
            RunStepId::GroundState,
            tr("the run of %1 is that of the ground state").arg(folderOf(RunStepId::Geometry)));
        return;
    }
    setGroundState(stage, complex.atoms(), complex.charge);
    stage.load = [this](const QString &place) {
        xtbGround.results = readXtb(place, groundName);
        return energyOf(*xtbGround.results);
    };
}

void ProgramSteps::prepareTriplet(Stage &stage)
{
    stage.title = tr("lowest triplet by xtb GFN1");
    stage.giveUp = [this](const QString &reason) { xtbTriplet.reason = reason; };
    if (!request.donorModel.isEmpty()) {
        prepareModel(stage);
        return;
    }
    if (!xtbGround.results) {
        leaveOut(RunStepId::Triplet, tr("there is no ground state from which it could start"));
        return;
    }
    tripletGeometry = tr("optimised by xtb GFN1, ground state and triplet each");
    stage.jobs = {xtbJob(xtbGround.results->atoms, complex.charge, 2, folder.path(), tripletName)};
    stage.load = [this](const QString &place) {
        xtbTriplet.results = readXtb(place, tripletName);
        return energyOf(*xtbTriplet.results);
    };
}

/// The pair of GFN1 runs of one ligand without its neighbours.
void ProgramSteps::prepareModel(Stage &stage)
{
    const DonorModelResults model = donorModelOf(request, complex);
    stage.title = tr("lowest triplet of %1 by xtb GFN1").arg(model.description);
    tripletGeometry =
        tr("%1, optimised by xtb GFN1, ground state and triplet each").arg(model.description);
    modelGroundState = XtbStep();
    setGroundState(stage, model.atoms, model.charge);
    stage.nextJobs = {[this, charge = model.charge](const QString &place) {
        const XtbRunResults ground = readXtb(place, groundName);
        return xtbJob(ground.atoms, charge, 2, place, tripletName);
    }};
    stage.giveUp = [this](const QString &reason) {
        modelGroundState->reason = reason;
        xtbTriplet.reason = reason;
    };
    stage.load = [this](const QString &place) {
        modelGroundState->results = readXtb(place, groundName);
        xtbTriplet.results = readXtb(place, tripletName);
        return energyOf(*xtbTriplet.results);
    };
}

void ProgramSteps::prepareStates(Stage &stage)
{
    stage.isNeeded = true;
    if (request.excited.isEmpty()) {
        prepareIndo(stage);
        return;
    }
    stage.title = tr("excited states of %1").arg(request.excited.join(QStringLiteral(", ")));
    statesGeometry = tr("that of %1").arg(request.excited.first());
    for (const QString &file : request.excited)
        stage.inputs.append({QFileInfo(file).fileName(), hashOfFile(file)});
    stage.load = [this](const QString & /*place*/) { return loadStates(request.excited); };
}

void ProgramSteps::prepareIndo(Stage &stage)
{
    const bool isGround = areStatesAtGroundState();
    stage.title =
        isGround
            ? tr("excited states by MOPAC INDO at the geometry by xtb GFN1")
            : tr("excited states by MOPAC INDO at the %1").arg(stageOf(RunStepId::Geometry).title);
    statesGeometry = isGround ? tr("ground state by xtb GFN1") : stageOf(RunStepId::Geometry).title;
    QVector<Coord> atoms = geometryData ? geometryData->getCoord() : QVector<Coord>();
    if (isGround)
        atoms = xtbGround.results->atoms;
    const QTemporaryDir scratch;
    const QString start = scratch.filePath(QStringLiteral("start.xyz"));
    writeWhole(start, xyzOf(atoms, QString()));
    LanqorFilesConverter writer(nullptr, start);
    writer.setCharge(complex.charge);
    writer.setSolvent(request.solvent);
    if (!request.solvent.isEmpty())
        remarks.append(tr("the states are those in %1; the shift of the INDO triplet and its error "
                          "were found in the gas phase")
                           .arg(request.solvent));
    if (!writer.convertFromOutToMopIndo(scratch.filePath(QStringLiteral("states.mop")),
                                        statesOfEachKind))
        failOf(writer);
    for (const char *kind : {"states_singlet", "states_triplet"}) {
        programs::MopacRequest job;
        job.kind = programs::MopacRequest::Kind::States;
        job.baseName = QLatin1String(kind);
        job.job = contentsOf(scratch.filePath(job.baseName + QStringLiteral(".mop")));
        job.folder = folder.path();
        job.path = request.mopacPath;
        stage.jobs.append(programs::makeMopacJob(job));
    }
    stage.load = [this](const QString &place) {
        return loadStates({in(place, QStringLiteral("states_singlet.out")),
                           in(place, QStringLiteral("states_triplet.out"))});
    };
}

QString ProgramSteps::loadStates(const QStringList &files)
{
    donorOutput = readDonorOutput(files, request.program);
    const DonorStatesResults results = donorOutput.rl->getResults();
    return tr("%1 singlets and %2 triplets by %3")
        .arg(QString::number(results.singlets.size()), QString::number(results.triplets.size()),
             results.program);
}

} // namespace cli
