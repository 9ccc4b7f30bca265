#include "fitSupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

using namespace fitSupport;
using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

QString complexFile()
{
    return mopacFile(QStringLiteral("eu_acac3_phen_am1_allvec.out"));
}

QStringList fitArguments(const QStringList &more = QStringList())
{
    return QStringList{
               QStringLiteral("fit"),      QStringLiteral("omega"),    complexFile(),
               QStringLiteral("--omega2"), QStringLiteral("20.5"),     QStringLiteral("--omega4"),
               QStringLiteral("8.1"),      QStringLiteral("--points"), QStringLiteral("3000")} +
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
        const ProgramRun run = runProgram(fitArguments({QStringLiteral("--report"), report}));
        QVERIFY2(run.exitStatus == 0, qPrintable(run.error));
        QVERIFY(run.output.contains(QLatin1String("       2       20.50       20.50\n")));
        QVERIFY(run.output.contains(QLatin1String("       4        8.10        8.10\n")));
        QVERIFY(run.output.contains(QLatin1String("best of 45000 points")));
        QVERIFY(run.error.contains(QLatin1String("100 % of 45000 points")));
        QVERIFY(!run.error.contains(QLatin1Char('\r'))); // no bar without a terminal
        const QString text = QString::fromUtf8(testSupport::readAll(report));
        COMPARE_NEAR(printed(text, QStringLiteral("omega(2)")), 20.5, 0.001);

        // The default groups are the elements; without a file, the report goes to the output.
        const ProgramRun named = runProgram(
            fitArguments({QStringLiteral("--groups"),
                          QStringLiteral("1: O 2, O 3, O 4,O 5, O 6, O 7; 2:N 8, N  9")}));
        QVERIFY2(named.output.startsWith(run.output.section(QLatin1Char('\n'), 0, 7)),
                 qPrintable(named.error));
        QVERIFY(named.output.endsWith(text));
    }

    void moreStartsAreNoWorse()
    {
        const QString file = mopacFile(QStringLiteral("eu_cl2_h2o6_am1_int.out"));
        QStringList arguments = {
            QStringLiteral("fit"),      QStringLiteral("omega"),    file,
            QStringLiteral("--omega2"), QStringLiteral("3"),        QStringLiteral("--omega4"),
            QStringLiteral("40"),       QStringLiteral("--points"), QStringLiteral("400")};
        const ProgramRun one = runProgram(arguments);
        arguments << QStringLiteral("--starts") << QStringLiteral("5");
        const ProgramRun five = runProgram(arguments);
        QVERIFY2(one.exitStatus == 0 && five.exitStatus == 0, qPrintable(one.error + five.error));
        QVERIFY(one.error.contains(QLatin1String("targets were not reached")));
        QVERIFY(response(five.output) > 0.0);
        QVERIFY(response(five.output) <= response(one.output));
        QVERIFY(five.error.contains(QLatin1String("of 30000 points")));
        QCOMPARE(runProgram(arguments).output, five.output);
    }

    void interruptedFitsReportTheirBestPoint()
    {
        const QTemporaryDir directory;
        const QString report = directory.filePath(QStringLiteral("stopped.omg"));
        QProcess process;
        process.start(QString::fromLocal8Bit(qgetenv("LANQOR_PROGRAM")),
                      fitArguments({QStringLiteral("--points"), QStringLiteral("100000000"),
                                    QStringLiteral("--starts"), QStringLiteral("3"),
                                    QStringLiteral("--report"), report}));
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
            testSupport::readAll(mopacFile(QStringLiteral("eu_cl2_h2o6_pm7_allvec_force.out"))));
        const ProgramRun indices = runProgram({QStringLiteral("indices"), file});
        QVERIFY2(indices.exitStatus == 0, qPrintable(indices.error));
        QCOMPARE(indices.output.count(QLatin1Char('\n')), 21);
        QString written = file;
        written.replace(QLatin1String(".out"), QLatin1String(".indeces"));
        QCOMPARE(indices.output.toUtf8(), testSupport::readAll(written));

        const ProgramRun fit =
            runProgram({QStringLiteral("fit"), QStringLiteral("qdc"), file,
                        QStringLiteral("--omega2"), QStringLiteral("8"), QStringLiteral("--omega4"),
                        QStringLiteral("6"), QStringLiteral("--points"), QStringLiteral("1000")});
        QVERIFY2(fit.exitStatus == 0, qPrintable(fit.error));
        QVERIFY(fit.output.contains(QLatin1String("QDC Ajusted Values")));
        QVERIFY(fit.output.contains(QLatin1String("best of 15000 points")));

        const ProgramRun noOrbitals = runProgram(
            {QStringLiteral("fit"), QStringLiteral("qdc"),
             mopacFile(QStringLiteral("eu_cl2_h2o6_am1_int.out")), QStringLiteral("--omega2"),
             QStringLiteral("8"), QStringLiteral("--omega4"), QStringLiteral("6")});
        QCOMPARE(noOrbitals.exitStatus, 1);
        QVERIFY(noOrbitals.error.contains(QLatin1String("ALLVEC")));
    }

    void wrongCommandLines_data()
    {
        QTest::addColumn<QStringList>("more");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("hint");
        const auto row = [](const char *name, const QString &option, const QString &value,
                            int status, const QString &hint) {
            QTest::newRow(name) << QStringList{option, value} << status << hint;
        };
        const QString groups = QStringLiteral("--groups");
        row("no group number", groups, QStringLiteral("O 2, O 3"), 2, QStringLiteral("O 2, O 3"));
        row("a group twice", groups, QStringLiteral("1: O 2; 1: O 3"), 2, QStringLiteral("1: O 3"));
        row("an empty atom", groups, QStringLiteral("1: O 2,,O 3"), 2, QStringLiteral("--groups"));
        row("an atom left out", groups, QStringLiteral("1: O 2"), 1, QStringLiteral("O 3"));
        row("points", QStringLiteral("--points"), QStringLiteral("0"), 2,
            QStringLiteral("--points"));
        row("starts", QStringLiteral("--starts"), QStringLiteral("x"), 2,
            QStringLiteral("--starts"));
        row("section", QStringLiteral("--print"), QStringLiteral("omga"), 2,
            QStringLiteral("omga"));
        row("index", QStringLiteral("--n"), QStringLiteral("0.2"), 2, QStringLiteral("--n"));
        row("target", QStringLiteral("--omega2"), QStringLiteral("2O"), 2,
            QStringLiteral("--omega2"));
        row("report folder", QStringLiteral("--report"), QStringLiteral("/nowhere/x.omg"), 1,
            QStringLiteral("/nowhere/x.omg"));
        row("coordination", QStringLiteral("--coordination"), QStringLiteral("70"), 1,
            QStringLiteral("70"));
    }
    void wrongCommandLines()
    {
        QFETCH(QStringList, more);
        QFETCH(int, status);
        QFETCH(QString, hint);
        const ProgramRun run = runProgram(fitArguments(more));
        QCOMPARE(run.exitStatus, status);
        QVERIFY2(run.error.contains(hint), qPrintable(run.error));
        // A fit whose report cannot be written shows it.
        QCOMPARE(run.output.contains(QLatin1String("omega(2) =")),
                 more.first() == QLatin1String("--report"));
    }
};

QTEST_GUILESS_MAIN(TestFitCommands)
#include "tst_fitcommands.moc"
