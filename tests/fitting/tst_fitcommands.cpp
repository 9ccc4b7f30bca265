#include "fitSupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace fitSupport;
using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

/// Arguments of a fit of a file; @p options are split at blanks.
QStringList fitArguments(const char *kind, const QString &file, const char *options)
{
    return QStringList{QStringLiteral("fit"), QString::fromLatin1(kind), file} +
           QString::fromLatin1(options).split(QLatin1Char(' '));
}

QStringList omegaFit(const QStringList &more)
{
    return fitArguments("omega", mopacFile("eu_acac3_phen_am1_allvec.out"),
                        "--omega2 20.5 --omega4 8.1 --points 3000") +
           more;
}

double response(const QString &output)
{
    return output.section(QLatin1String("Response "), 1).section(QLatin1Char(' '), 0, 0).toDouble();
}

} // namespace

class TestFitCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("LANQOR_PROGRAM"))
            QSKIP("needs LANQOR_PROGRAM");
    }

    void omegaFitWritesItsReport()
    {
        const QTemporaryDir directory;
        const QString report = directory.filePath(QStringLiteral("out.omg"));
        const ProgramRun run = runProgram(omegaFit({QStringLiteral("--report"), report}));
        QVERIFY2(run.exitStatus == 0, qPrintable(run.error));
        QVERIFY(run.output.contains(QLatin1String("       2       20.50       20.50\n")));
        QVERIFY(run.output.contains(QLatin1String("       4        8.10        8.10\n")));
        QVERIFY(run.output.contains(QLatin1String("best of 45000 points")));
        QVERIFY(run.error.contains(QLatin1String("100 % of 45000 points")));
        QVERIFY(!run.error.contains(QLatin1Char('\r'))); // no bar without a terminal
        const QString text = QString::fromUtf8(testSupport::readAll(report));
        COMPARE_NEAR(printed(text, QStringLiteral("omega(2)")), 20.5, 0.001);

        // The default groups are the elements; without a file, the report goes to the output.
        const ProgramRun named =
            runProgram(omegaFit({QStringLiteral("--groups"),
                                 QStringLiteral("1: O 2, O 3, O 4,O 5, O 6, O 7; 2:N 8, N  9")}));
        QVERIFY2(named.output.startsWith(run.output.section(QLatin1Char('\n'), 0, 7)),
                 qPrintable(named.error));
        QVERIFY(named.output.endsWith(text));
    }

    void moreStartsAreNoWorse()
    {
        QStringList arguments = fitArguments("omega", mopacFile("eu_cl2_h2o6_am1_int.out"),
                                             "--omega2 3 --omega4 40 --points 400");
        const ProgramRun one = runProgram(arguments);
        arguments << QStringLiteral("--starts") << QStringLiteral("5");
        const ProgramRun five = runProgram(arguments);
        QVERIFY2(one.exitStatus == 0 && five.exitStatus == 0, qPrintable(one.error + five.error));
        QVERIFY(one.error.contains(QLatin1String("targets were not reached")));
        QVERIFY(response(five.output) > 0.0);
        QVERIFY(response(five.output) <= response(one.output));
        QVERIFY(five.output.contains(QLatin1String("best of 30000 points")));
        QCOMPARE(runProgram(arguments).output, five.output);
    }

    void interruptedFitsReportTheirBestPoint()
    {
        const QTemporaryDir directory;
        const QString report = directory.filePath(QStringLiteral("stopped.omg"));
        QProcess process;
        process.start(QString::fromLocal8Bit(qgetenv("LANQOR_PROGRAM")),
                      fitArguments("omega", mopacFile("eu_acac3_phen_am1_allvec.out"),
                                   "--omega2 20.5 --omega4 8.1 --points 100000000 --starts 3") +
                          QStringList{QStringLiteral("--report"), report});
        QVERIFY(process.waitForStarted());
        QTest::qWait(1500); // long enough to be under way, far too short to finish
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 130);
        const QString text = QString::fromUtf8(testSupport::readAll(report));
        COMPARE_NEAR(printed(text, QStringLiteral("omega(2)")), 20.5, 0.02);
        QVERIFY(process.readAllStandardOutput().contains("best of "));
    }

    void qdcFitAndIndices()
    {
        const QString file = testSupport::scratchFile(
            QStringLiteral("complex.out"),
            testSupport::readAll(mopacFile("eu_cl2_h2o6_pm7_allvec_force.out")));
        const ProgramRun indices = runProgram({QStringLiteral("indices"), file});
        QVERIFY2(indices.exitStatus == 0, qPrintable(indices.error));
        QCOMPARE(indices.output.count(QLatin1Char('\n')), 21);
        QString written = file;
        written.replace(QLatin1String(".out"), QLatin1String(".indeces"));
        QCOMPARE(indices.output.toUtf8(), testSupport::readAll(written));

        const char *options = "--omega2 8 --omega4 6 --points 1000";
        const ProgramRun fit = runProgram(fitArguments("qdc", file, options));
        QVERIFY2(fit.exitStatus == 0, qPrintable(fit.error));
        QVERIFY(fit.output.contains(QLatin1String("QDC Ajusted Values")));
        QVERIFY(fit.output.contains(QLatin1String("best of 15000 points")));

        const ProgramRun noOrbitals =
            runProgram(fitArguments("qdc", mopacFile("eu_cl2_h2o6_am1_int.out"), options));
        QCOMPARE(noOrbitals.exitStatus, 1);
        QVERIFY(noOrbitals.error.contains(QLatin1String("ALLVEC")));
    }

    void wrongCommandLines_data()
    {
        QTest::addColumn<QStringList>("more");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("hint");
        const auto row = [](const char *option, const char *value, int status, const char *hint) {
            QTest::addRow("%s %s", option, value)
                << QStringList{QString::fromLatin1(option), QString::fromLatin1(value)} << status
                << QString::fromLatin1(hint);
        };
        row("--groups", "O 2, O 3", 2, "O 2, O 3");
        row("--groups", "1: O 2; 1: O 3", 2, "1: O 3");
        row("--groups", "1: O 2,,O 3", 2, "--groups");
        row("--groups", "1: O 2", 1, "O 3");
        row("--points", "0", 2, "--points");
        row("--starts", "x", 2, "--starts");
        row("--print", "omga", 2, "omga");
        row("--n", "0.2", 2, "--n");
        row("--omega2", "2O", 2, "--omega2");
        row("--report", "/nowhere/x.omg", 1, "/nowhere/x.omg");
        row("--coordination", "70", 1, "70");
    }
    void wrongCommandLines()
    {
        QFETCH(QStringList, more);
        QFETCH(int, status);
        QFETCH(QString, hint);
        const ProgramRun run = runProgram(omegaFit(more));
        QCOMPARE(run.exitStatus, status);
        QVERIFY2(run.error.contains(hint), qPrintable(run.error));
        // A fit whose report cannot be written shows it.
        QCOMPARE(run.output.contains(QLatin1String("omega(2) =")),
                 more.first() == QLatin1String("--report"));
    }
};

QTEST_GUILESS_MAIN(TestFitCommands)
#include "tst_fitcommands.moc"
