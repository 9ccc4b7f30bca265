#include "fitSupport.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

/// What no stored output shows of the program's fits.
class TestFitCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// Those starts too that wait for a thread.
    void interruptedFitsReportTheirBestPoint()
    {
        const QTemporaryDir directory;
        const QString report = directory.filePath(QStringLiteral("stopped.omg"));
        QProcess process;
        process.start(QString::fromLocal8Bit(qgetenv("LANQOR_PROGRAM")),
                      QStringLiteral("fit omega %1 --omega2 20.5 --omega4 8.1 --points 100000000 "
                                     "--starts 30 --report %2")
                          .arg(fitSupport::mopacFile("eu_acac3_phen_am1_allvec.out"), report)
                          .split(QLatin1Char(' ')));
        QVERIFY(process.waitForStarted());
        QTest::qWait(1500); // long enough to be under way, far too short to finish
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 130);
        const QString text = QString::fromUtf8(testSupport::readAll(report));
        COMPARE_NEAR(fitSupport::printed(text, QStringLiteral("omega(2)")), 20.5, 0.02);
        QVERIFY(process.readAllStandardOutput().contains("best of "));
    }
};

QTEST_GUILESS_MAIN(TestFitCommands)
#include "tst_fitcommands.moc"
