#include "TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using testSupport::ProgramRun;
using testSupport::readAll;
using testSupport::runProgram;
using testSupport::writeAll;

namespace {

const QStringList wholeRun = {
    QStringLiteral("run"),      QStringLiteral("complex.xyz"), QStringLiteral("--charge"),
    QStringLiteral("0"),        QStringLiteral("--geometry"),  QStringLiteral("as-is"),
    QStringLiteral("--omega2"), QStringLiteral("18"),          QStringLiteral("--omega4"),
    QStringLiteral("5"),        QStringLiteral("--lifetime"),  QStringLiteral("0.45+-5%"),
};

/// The files of the steps of a run and its settings; times, and the hashes of texts that hold the
/// name of the folder, are left out.
QMap<QString, QByteArray> filesOf(const QString &folder)
{
    static const QRegularExpression seconds(QStringLiteral("\"seconds\": [^,]*|[0-9a-f]{64}"));
    QMap<QString, QByteArray> files;
    for (QDirIterator place(folder, QDir::Files, QDirIterator::Subdirectories); place.hasNext();) {
        const QString file = place.next();
        static const QRegularExpression reports(QStringLiteral("/(report\\.\\w+|summary\\.json)$"));
        if (file.contains(reports)) // which tell what was kept
            continue;
        files.insert(QDir(folder).relativeFilePath(file),
                     QString::fromUtf8(readAll(file)).remove(seconds).toUtf8());
    }
    return files;
}

QStringList namesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// Runs from a structure to the yield. MOPAC and xtb are scripts that hand out stored outputs of
/// [Eu(acac)3(H2O)], but for the last test.
class TestRun : public QObject
{
    Q_OBJECT

    QTemporaryDir scratch;
    QString path(const QString &name) const { return scratch.filePath(name); }

    void writeScript(const QString &name, const QString &body) const
    {
        writeAll(path(name), "#!/bin/sh\n" + body.toUtf8());
        QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QMap<QString, QString> environment() const
    {
        return {{QStringLiteral("PATH"),
                 path(QStringLiteral("bin")) + QStringLiteral(":/bin:/usr/bin")}};
    }
    ProgramRun run(const QStringList &arguments)
    {
        const QString results = path(QStringLiteral("result%1.json").arg(++runs));
        return runProgram(arguments + QStringList{QStringLiteral("--json"), results},
                          scratch.path(), environment());
    }
    int runs = 0;
    /// The programs that were started since the last call: "s0 t1 singlet triplet".
    QString started() const
    {
        const QString log = QString::fromUtf8(readAll(path(QStringLiteral("log")))).simplified();
        writeAll(path(QStringLiteral("log")), QByteArray());
        return log;
    }

private Q_SLOTS:
    void initTestCase()
    {
        CORPUS_FILE(xtb, "xtb/eu_acac3_h2o/s0.xyz");
        CORPUS_FILE(indo, "mopac_indo/complexes/acac_singlet.out");
        const QString xtbFolder = QFileInfo(xtb).path();
        const QString indoFolder = QFileInfo(indo).path();
        QVERIFY(QDir(scratch.path()).mkdir(QStringLiteral("bin")));
        const QString log = path(QStringLiteral("log"));
        writeAll(log, QByteArray());
        writeAll(path(QStringLiteral("complex.xyz")), readAll(xtb));
        writeScript(
            QStringLiteral("bin/xtb"),
            QStringLiteral("case \"$*\" in --version) echo '* xtb version 6.5.1'; touch asked;\n"
                           "exit;;\n"
                           "*--uhf*) n=t1;; *) n=s0;; esac\necho $n >> %1\ncat %2/$n.out\n"
                           "cp %2/$n.charges charges; cp %2/$n.xyz xtbopt.xyz\n")
                .arg(log, xtbFolder));
        writeScript(
            QStringLiteral("bin/mopac"),
            QStringLiteral("case \"$*\" in --version) echo MOPAC version 22.0.6; exit;; esac\n"
                           "n=triplet; grep -q SINGLET job.mop && n=singlet\n"
                           "echo $n >> %1\nwhile [ -e %1.hold ]; do sleep 0.05; done\n"
                           "cp %2/acac_$n.out job.out\n")
                .arg(log, indoFolder));
    }

    void stepsAreDoneOnceAndAgainWhenWhatGoesInChanges()
    {
        const ProgramRun first = run(wholeRun);
        QVERIFY2(first.exitStatus == 0, qPrintable(first.error));
        QCOMPARE(started(), QStringLiteral("s0 t1 singlet triplet"));
        QVERIFY2(!QFile::exists(path(QStringLiteral("asked"))),
                 "nothing is written to where it runs");
        const QString folder = path(QStringLiteral("complex"));
        QCOMPARE(namesOf(folder).size(), 7);
        for (const char *report : {"report.html", "report.txt", "summary.json"})
            QVERIFY2(readAll(folder + QLatin1Char('/') + QLatin1String(report)).contains("23713"),
                     report);
        // 22493 by INDO and 1220; -78.0359 less -78.1508 hartree by GFN1
        QVERIFY2(first.output.contains(QStringLiteral("23713 +- 1100 cm^-1")),
                 qPrintable(first.output));
        QVERIFY(first.output.contains(QStringLiteral("25218 +- 2000 cm^-1")));
        QVERIFY(first.output.contains(QStringLiteral("do not agree")));
        const auto files = filesOf(folder);

        const ProgramRun again = run({QStringLiteral("run"), QStringLiteral("complex/run.toml")});
        QCOMPARE(again.output, first.output);
        QCOMPARE(started(), QString());
        QVERIFY(filesOf(folder) == files);
        QCOMPARE(again.error.count(QStringLiteral(" kept: ")), 7);

        const ProgramRun other =
            run(QStringList(wholeRun) << QStringLiteral("--lifetime") << QStringLiteral("0.30"));
        QCOMPARE(started(), QString());
        QVERIFY(other.output != first.output);
        QCOMPARE(other.error.count(QStringLiteral(" kept: ")), 5);

        // A file that is no more what the step has made, and a step that is to be done again; what
        // comes out of both is the same, so that nothing follows.
        writeAll(path(QStringLiteral("complex/04-triplet/t1.xyz")), "changed");
        QCOMPARE(run(QStringList(wholeRun) << QStringLiteral("--redo") << QStringLiteral("states"))
                     .output,
                 first.output);
        QCOMPARE(started(), QStringLiteral("t1 singlet triplet"));
        QVERIFY(filesOf(folder) == files);

        QCOMPARE(run(QStringList(wholeRun) << QStringLiteral("--until") << QStringLiteral("triplet")
                                           << QStringLiteral("--out") << QStringLiteral("short"))
                     .exitStatus,
                 0);
        QCOMPARE(namesOf(path(QStringLiteral("short"))).size(), 4);
        started();
    }

    void killedRunGoesOnAndHasNoHalfStep()
    {
        const QString hold = path(QStringLiteral("log.hold"));
        writeAll(hold, QByteArray());
        QProcess killed;
        QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
        surroundings.insert(QStringLiteral("PATH"), environment().value(QStringLiteral("PATH")));
        killed.setProcessEnvironment(surroundings);
        killed.setWorkingDirectory(scratch.path());
        killed.start(qEnvironmentVariable("LANQOR_PROGRAM"),
                     QStringList(wholeRun) << QStringLiteral("--out") << QStringLiteral("killed"));
        QTRY_VERIFY_WITH_TIMEOUT(readAll(path(QStringLiteral("log"))).contains("singlet"), 60000);
        // A second one in the same folder is refused meanwhile.
        const ProgramRun second =
            run(QStringList(wholeRun) << QStringLiteral("--out") << QStringLiteral("killed"));
        QCOMPARE(second.exitStatus, 1);
        QVERIFY(second.error.contains(QStringLiteral("another run is at work in")));
        killed.kill();
        QVERIFY(killed.waitForFinished());
        QFile::remove(hold);
        QVERIFY(!QDir(path(QStringLiteral("killed"))).exists(QStringLiteral("05-states")));
        started();
        const ProgramRun resumed =
            run(QStringList(wholeRun) << QStringLiteral("--out") << QStringLiteral("killed"));
        QVERIFY2(resumed.exitStatus == 0, qPrintable(resumed.error));
        QCOMPARE(started(), QStringLiteral("singlet triplet"));
        QCOMPARE(run(QStringList(wholeRun) << QStringLiteral("--out") << QStringLiteral("whole"))
                     .exitStatus,
                 0);
        started();
        const auto resumedFiles = filesOf(path(QStringLiteral("killed")));
        const auto wholeFiles = filesOf(path(QStringLiteral("whole")));
        QCOMPARE(resumedFiles.keys(), wholeFiles.keys());
        for (const QString &name : wholeFiles.keys())
            QVERIFY2(QByteArray(resumedFiles.value(name)).replace("killed", "whole") ==
                         wholeFiles.value(name),
                     qPrintable(name));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("structure");
        QTest::addColumn<QString>("options");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        const QString water = QStringLiteral("O 2.4 0 0\nH 2.9 0.8 0\nH 2.9 -0.8 0\n");
        const auto row = [](const char *name, const QString &atoms, const char *options, int status,
                            const char *message) {
            const int count = atoms.count(QLatin1Char('\n'));
            QTest::newRow(name) << QStringLiteral("%1\n\n").arg(count) + atoms
                                << QString::fromLatin1(options) << status
                                << QString::fromLatin1(message);
        };
        row("no lanthanide", water, "--charge 0", 1, "no lanthanide");
        row("two", "Eu 0 0 0\nEu 9 0 0\n" + water, "--charge 6", 1, "cut out a complex of one ion");
        row("gadolinium", "Gd 0 0 0\n" + water, "--charge 3", 1, "What can be done");
        row("lutetium", "Lu 0 0 0\n" + water, "--charge 3", 1, "for the states of its ligands.");
        row("yttrium", "Y 0 0 0\n" + water, "--charge 3", 1, "What can be done");
        row("parity", "Eu 0 0 0\n" + water, "--charge 2", 1, "Give the charge with --charge");
        row("no charge", "Eu 0 0 0\nO 2.4 0 0\nN 3.6 0 0\n", "", 1, "give it with --charge");
        row("no sphere", "Eu 0 0 0\nO 9 0 0\n", "--charge 1", 1, "no atom is within bonding");
        row("states of another complex", "Eu 0 0 0\n" + water,
            "--charge 3 --excited EXCITED --geometry as-is", 1, "--force computes all the same");
        row("no such ligand", "Eu 0 0 0\n" + water, "--charge 3 --donor-model C9H9", 1,
            "has no ligand C9H9");
        row("two sources", "Eu 0 0 0\n" + water, "--charge 3 --omega2 1 --omega4 1 --g O=1", 2,
            "have one source");
        row("no measured triplet", "Eu 0 0 0\n" + water, "--charge 3 --t1 measured", 2,
            "needs --triplet-energy");
        row("step", "Eu 0 0 0\n" + water, "--until yeild", 2, "none of structure");
        row("folder", "Eu 0 0 0\n" + water, "--charge 3 --out bin", 1, "holds other files");
        row("no mopac", "Eu 0 0 0\n" + water, "--charge 3 --mopac /no/mopac", 1, "/no/mopac");
        row("no xtb", "Eu 0 0 0\n" + water, "--charge 3 --geometry xtb --xtb /no/xtb", 1,
            "/no/xtb");
    }

    void refusals()
    {
        QFETCH(QString, structure);
        QFETCH(QString, options);
        QFETCH(int, status);
        QFETCH(QString, message);
        CORPUS_FILE(indo, "mopac_indo/complexes/acac_singlet.out");
        writeAll(path(QStringLiteral("refused.xyz")), structure.toUtf8());
        options.replace(
            QStringLiteral("EXCITED"),
            indo + QLatin1Char(',') +
                QString(indo).replace(QStringLiteral("singlet"), QStringLiteral("triplet")));
        const ProgramRun refused =
            run(QStringList{QStringLiteral("run"), QStringLiteral("refused.xyz")} +
                options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        QCOMPARE(refused.exitStatus, status);
        QVERIFY2(refused.error.contains(message), qPrintable(refused.error));
        QVERIFY(refused.output.isEmpty());
        QVERIFY(!QFileInfo::exists(path(QStringLiteral("refused"))));
        QCOMPARE(started(), QString());
    }

    void settingsFile()
    {
        const QString file = path(QStringLiteral("my.toml"));
        const auto errorOf = [&](const QByteArray &text) {
            writeAll(file, text);
            return run({QStringLiteral("run"), file}).error;
        };
        QVERIFY(
            errorOf("structure = 'complex.xyz'\nlifetme = 0.4\n")
                .contains(QStringLiteral("line 2: lifetme is no setting of a run; is lifetime")));
        QVERIFY(errorOf("structure = 'complex.xyz'\n\ncharge = [1]\n")
                    .contains(QStringLiteral("line 3: charge needs a number")));
        QVERIFY(errorOf("structure = 'complex.xyz\n").contains(QStringLiteral("line 1: ")));
        QVERIFY(errorOf("charge = 0\n").contains(QStringLiteral("names no structure")));
        QVERIFY(errorOf("structure = 'a,b.cif'\n").contains(QStringLiteral("/a,b.cif does not")));
        // The example with its own values is a run that gets as far as its missing structure.
        const ProgramRun example = run({QStringLiteral("run"), QStringLiteral("--example")});
        QCOMPARE(example.exitStatus, 0);
        QVERIFY(errorOf(example.output.toUtf8())
                    .contains(QStringLiteral("complex.cif does not exist")));
        // Options and file say the same, and options have the last word.
        writeAll(file, "structure = 'complex.xyz'\ncharge = 0\ngeometry = 'as-is'\nomega2 = 18\n"
                       "omega4 = 5.0\nlifetime = '0.45+-5%'\nout = 'other'\n");
        const ProgramRun byFile =
            run({QStringLiteral("run"), file, QStringLiteral("--out"), QStringLiteral("complex")});
        QCOMPARE(byFile.output, run(wholeRun).output);
        QVERIFY(!QFileInfo::exists(path(QStringLiteral("other"))));
        started();
    }

    void secondOpinionThatFailsIsToldAndKept()
    {
        writeScript(QStringLiteral("bin/xtb-fails"),
                    QStringLiteral("case \"$*\" in --version) exit;; esac\n"
                                   "echo s0 >> %1; echo '[ERROR] no convergence'; exit 1\n")
                        .arg(path(QStringLiteral("log"))));
        const QStringList arguments = QStringList(wholeRun)
                                      << QStringLiteral("--out") << QStringLiteral("alone")
                                      << QStringLiteral("--xtb")
                                      << path(QStringLiteral("bin/xtb-fails"));
        const ProgramRun alone = run(arguments);
        QVERIFY2(alone.exitStatus == 0, qPrintable(alone.error));
        QVERIFY2(alone.output.contains(QStringLiteral("23713 +- 1500 cm^-1")),
                 qPrintable(alone.output));
        // tried again from contacts relaxed by the force field, and not once more in the next call
        QCOMPARE(started(), QStringLiteral("s0 s0 singlet triplet"));
        QCOMPARE(run(arguments).output, alone.output);
        QCOMPARE(started(), QString());
    }

    void resultsFollowTheirSchema()
    {
        QCOMPARE(testSupport::schemaFaults(path(QStringLiteral("result*.json"))), QString());
    }

    void realPrograms()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the programs are tried in the optimised build");
#endif
        for (const char *program : {"mopac", "xtb"})
            if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
                QSKIP("needs mopac and xtb");
        const ProgramRun real =
            runProgram(QStringList(wholeRun) << QStringLiteral("--out") << QStringLiteral("real")
                                             << QStringLiteral("--jobs") << QStringLiteral("2"),
                       scratch.path());
        QVERIFY2(real.exitStatus == 0, qPrintable(real.error));
        static const QRegularExpression triplets(
            QStringLiteral("MOPAC INDO +(\\d+) .*\\n.*GFN1-xTB +(\\d+) "));
        const auto found = triplets.match(real.output);
        COMPARE_NEAR(found.captured(1).toDouble(), 23713.0, 15.0);
        COMPARE_NEAR(found.captured(2).toDouble(), 25218.0, 25.0);
    }
};

QTEST_GUILESS_MAIN(TestRun)
#include "tst_run.moc"
