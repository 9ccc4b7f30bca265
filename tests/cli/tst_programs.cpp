#include "TestSupport.h"

#include "programs/MopacRunner.h"
#include "programs/ProgramRunner.h"
#include "programs/XtbRunner.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorSolvents.h>
#include <LanqorEngine/LanqorXtbRun.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cmath>
#include <csignal>

using programs::MopacRequest;
using programs::ProgramEnd;
using programs::ProgramJob;
using programs::ProgramOutcome;
using programs::ProgramProgress;
using programs::ProgramRunner;
using programs::XtbRequest;

namespace {

/// A program of one's own, a shell script unless it names another interpreter.
void writeProgram(const QString &fileName, const QByteArray &body)
{
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write((body.startsWith('#') ? QByteArray() : "#!/bin/sh\n") + body + "\n");
    file.setPermissions(body.isEmpty() ? QFile::ReadOwner : QFile::ReadOwner | QFile::ExeOwner);
}

MopacRequest mopacOf(const QString &folder, const QString &path = QString())
{
    MopacRequest request;
    request.job = "RM1 GNORM=0.25 CHARGE=0\n\n\nO 0 1 0 1 0 1\nH 1 1 0 1 0 1\nH 0 1 1 1 0 1\n";
    request.folder = folder;
    request.baseName = QStringLiteral("water");
    request.path = path;
    return request;
}

XtbRequest xtbOf(const QString &folder, const QString &path = QString())
{
    XtbRequest request;
    request.atoms = {{"O", 0.0, 0.0, 0.0}, {"H", 1.0, 0.0, 0.0}, {"H", 0.0, 1.0, 0.0}};
    request.folder = folder;
    request.baseName = QStringLiteral("s0");
    request.path = path;
    return request;
}

} // namespace

class TestPrograms : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void faults_data();
    void faults();
    void interrupted();
    void mopac();
    void xtb();

private:
    QTemporaryDir scratch; // of all runs
};

void TestPrograms::initTestCase()
{
    QVERIFY(scratch.isValid());
    qputenv("TMPDIR", scratch.path().toUtf8());
}

void TestPrograms::faults_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const char *program, const char *script, ProgramEnd end,
                        const char *words) {
        QTest::newRow(name) << QString(program) << QByteArray(script) << int(end) << QString(words);
    };
    const char *box = "echo '* Error and normal termination messages reported *' > job.out\n"
                      "echo ' *   *' >> job.out; echo ' * UNABLE TO ACHIEVE SELF-CONSISTENCE *' "
                      ">> job.out\necho ' * JOB ENDED NORMALLY *' >> job.out; touch job.arc";
    row("missing", "mopac", "?", ProgramEnd::Missing, "no such program.*apt-get install mopac");
    row("no interpreter", "xtb", "#!/no/interpreter", ProgramEnd::Missing,
        "cannot be started.*install xtb");
    row("not executable", "xtb", "", ProgramEnd::Missing, "chmod.*apt-get install xtb");
    row("crash", "mopac", "echo out of luck >&2; kill -SEGV $$", ProgramEnd::Failed,
        "crashed \\(Segmentation fault, signal 11\\).*out of luck");
    row("exit status", "xtb", "echo no licence; exit 3", ProgramEnd::Failed,
        "exit status 3; its last words: no licence");
    row("hangs", "mopac", "sleep 60", ProgramEnd::TimeUp, "after 0.5 s, the time limit; --time");
    row("ignores SIGTERM", "xtb", "trap '' TERM; while :; do sleep 0.1; done", ProgramEnd::TimeUp,
        "time limit");
    row("fills the disk with one file", "xtb", "exec cat /dev/zero", ProgramEnd::TooLarge,
        "grew beyond 4 MB");
    row("fills the disk with many", "mopac",
        "i=0; while :; do i=$((i+1)); head -c 1000000 /dev/zero > f$i; done", ProgramEnd::TooLarge,
        "grew beyond 4 MB");
    row("garbage", "states", "echo hello > job.out", ProgramEnd::Failed,
        "does not end as.*last words: hello");
    row("silent", "xtb", "exit 0", ProgramEnd::Failed, "as that of a finished run$");
    row("normal end, no optimum", "mopac", "echo ' * JOB ENDED NORMALLY *' > job.out",
        ProgramEnd::Failed, "no converged SCF");
    row("normal end, no states", "states", "echo ' * JOB ENDED NORMALLY *' > job.out",
        ProgramEnd::Failed, "no table of excited states");
    row("normal end, no energy", "xtb", "xtb \"$@\" | grep -v 'TOTAL ENERGY'", ProgramEnd::Failed,
        "s0.failed.out lacks .*TOTAL ENERGY");
    row("MOPAC does not converge", "mopac", box, ProgramEnd::Failed,
        "SCF of MOPAC did not converge.*UNABLE TO ACHIEVE");
    row("MOPAC's own time is up", "mopac",
        "echo ' - - TIME UP - -' > job.out; echo JOB ENDED NORMALLY >> job.out", ProgramEnd::Failed,
        "T= of the job");
    row("xtb does not converge", "xtb", "exec xtb \"$@\" --iterations 1", ProgramEnd::Failed,
        "iterator did not converge");
    row("NaN at a normal end", "xtb", "xtb \"$@\" | sed 's/ gradient norm .*/ gradient norm NaN/'",
        ProgramEnd::Failed, "value that is no number");
}

void TestPrograms::faults()
{
    QFETCH(QString, program);
    QFETCH(QByteArray, script);
    QFETCH(int, end);
    QFETCH(QString, words);
    QTemporaryDir folder;
    const QString path = folder.filePath("program");
    if (script != "?")
        writeProgram(path, script);
    const QString results = folder.filePath("results");
    QVERIFY(QDir().mkdir(results));
    MopacRequest request = mopacOf(results, path);
    if (program == "states")
        request.kind = MopacRequest::Kind::States;
    ProgramJob job = program == "xtb" ? makeXtbJob(xtbOf(results, path)) : makeMopacJob(request);
    job.timeLimit = end == int(ProgramEnd::TimeUp) ? 0.5 : 30.0;
    job.sizeLimit = 4 << 20;
    const ProgramOutcome outcome = ProgramRunner::run(job);
    QVERIFY2(int(outcome.end) == end, qPrintable(outcome.error));
    QVERIFY2(outcome.error.contains(QRegularExpression(words)), qPrintable(outcome.error));
    // Nothing stands under a final name.
    for (const QString &file : QDir(results).entryList(QDir::Files))
        QVERIFY2(file.contains(".failed."), qPrintable(file));
    QVERIFY(QDir(scratch.path()).entryList({"lanqor-*"}).isEmpty());
}

void TestPrograms::interrupted()
{
    const QTemporaryDir folder;
    const QString slow = folder.filePath("slow");
    const QString child = folder.filePath("child");
    // What a program starts ends with it.
    writeProgram(slow, "echo ' CYCLE:     7 TIME:   0.055 TIME LEFT:  1.43W  GRAD.:     1.547 "
                       "HEAT: -177.6425' > job.out; sleep 60 & echo $! > " +
                           child.toUtf8() + "; wait");
    ProgramRunner runner(2);
    QVector<ProgramEnd> ends;
    const auto note = [&ends](const ProgramOutcome &outcome) { ends.append(outcome.end); };
    ProgramJob job = makeMopacJob(mopacOf(folder.path(), slow));
    ProgramProgress progress;
    job.showProgress = [&progress](const ProgramProgress &point) { progress = point; };
    runner.add(job, note);
    // The end of one makes room for the next; the fourth is never begun.
    for (const char *name : {"first", "second"}) {
        XtbRequest request = xtbOf(folder.path());
        request.baseName = name;
        runner.add(makeXtbJob(request), note);
    }
    runner.add(makeXtbJob(xtbOf(folder.path(), slow)), note);
    runner.add(makeXtbJob(xtbOf(folder.path(), slow)), note);
    QTimer::singleShot(1000, [] { ::raise(SIGTERM); });
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!runner.wait());
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(ends, (QVector<ProgramEnd>{ProgramEnd::Done, ProgramEnd::Done, ProgramEnd::Interrupted,
                                        ProgramEnd::Interrupted}));
    QCOMPARE(QDir(folder.path()).entryList({"*.out"}),
             (QStringList{"first.out", "second.out", "water.failed.out"}));
    QCOMPARE(progress.cycle, 7);
    QCOMPARE(progress.gradient, 1.547);
    QCOMPARE(progress.energy, -177.6425);
    QFile number(child);
    QVERIFY(number.open(QIODevice::ReadOnly));
    QFile command("/proc/" + number.readAll().trimmed() + "/cmdline"); // empty of a dead one
    QVERIFY(!command.open(QIODevice::ReadOnly) || command.readAll().isEmpty());
}

// Water by both programs, by PATH; the values are those of the packages of Debian 12.
void TestPrograms::mopac()
{
    const QTemporaryDir folder;
    ProgramJob job = makeMopacJob(mopacOf(folder.path()));
    const ProgramOutcome outcome = ProgramRunner::run(job);
    QVERIFY2(outcome.isDone(), qPrintable(outcome.error));
    QVERIFY(QRegularExpression("^\\d+\\.\\d+").match(outcome.version).hasMatch());
    LanqorInputData data(nullptr, folder.filePath("water.out"));
    QVERIFY(data.readStructureFile(false));
    const QVector<Coord> atoms = data.getCoord();
    QVERIFY(std::abs(std::hypot(atoms.at(1).x - atoms.at(0).x, atoms.at(1).y - atoms.at(0).y,
                                atoms.at(1).z - atoms.at(0).z) -
                     0.96) < 0.02);
    // A job that is refused ends "normally", too.
    MopacRequest request = mopacOf(folder.path());
    request.job.prepend("NOSUCHWORD ");
    request.baseName = "refused";
    const ProgramOutcome refused = ProgramRunner::run(makeMopacJob(request));
    QVERIFY2(refused.error.contains("UNRECOGNIZED KEY-WORDS: (NOSUCHWORD)"),
             qPrintable(refused.error));
}

// xtb knows every solvent of the table.
void TestPrograms::xtb()
{
    const QTemporaryDir folder;
    ProgramRunner runner(2);
    for (const Solvent &solvent : LanqorSolvents::table()) {
        XtbRequest request = xtbOf(folder.path());
        request.solvent = request.baseName = solvent.name;
        runner.add(makeXtbJob(request), [solvent](const ProgramOutcome &outcome) {
            QVERIFY2(outcome.isDone(), qPrintable(outcome.error));
            QCOMPARE(outcome.commandLine, "xtb start.xyz --chrg 0 --gfn 1; xtb start.xyz --chrg 0 "
                                          "--gfn 1 --opt --alpb " +
                                              solvent.name);
        });
    }
    QVERIFY(runner.wait());
    LanqorXtbRun run(nullptr, folder.filePath("thf.out"));
    QVERIFY2(run.readOutput(folder.filePath("thf.xyz"), folder.filePath("thf.charges")),
             qPrintable(run.getLastError()));
    QCOMPARE(run.getResults().solvent.left(3), QString("thf"));
}

QTEST_GUILESS_MAIN(TestPrograms)
#include "tst_programs.moc"
