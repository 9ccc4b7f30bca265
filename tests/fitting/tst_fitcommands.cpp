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

    /// A closed terminal stops a fit too; its state goes on, and no worse.
    void stoppedFitsGoOn()
    {
        const QTemporaryDir directory;
        const QString state = directory.filePath(QStringLiteral("state.json"));
        const QString fit =
            QStringLiteral("fit omega %1 --omega2 12 --omega4 9 --groups 1:O2;2:O3 ")
                .arg(fitSupport::mopacFile("eu_acac3_phen_am1_allvec.out"));
        const auto start = [&](QProcess &process, const QString &options) {
            QStringList arguments = (fit + options).split(QLatin1Char(' '));
            arguments[arguments.indexOf(QStringLiteral("1:O2;2:O3"))] =
                QStringLiteral("1: O 2, O 3, O 4; 2: O 5, O 6, O 7; 3: N 8, N 9");
            process.start(QString::fromLocal8Bit(qgetenv("LANQOR_PROGRAM")), arguments);
        };
        const auto response = [](QProcess &process) {
            const QByteArray text = process.readAllStandardOutput();
            return text.mid(text.indexOf("\nResponse ") + 10).split(' ').first().toDouble();
        };
        QProcess stopped;
        start(stopped, QStringLiteral("--no-polish --starts 3 --points 100000000 --save ") + state);
        QVERIFY(stopped.waitForStarted());
        QTest::qWait(1000);
        ::kill(static_cast<pid_t>(stopped.processId()), SIGHUP);
        QVERIFY(stopped.waitForFinished(60000));
        QCOMPARE(stopped.exitCode(), 130);
        const double before = response(stopped);
        QProcess resumed;
        start(resumed, QStringLiteral("--points 20 --continue ") + state);
        QVERIFY(resumed.waitForFinished(60000));
        QCOMPARE(resumed.exitCode(), 0);
        QVERIFY(response(resumed) < before && response(resumed) < 1e-12);
        QVERIFY(resumed.readAllStandardError().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestFitCommands)
#include "tst_fitcommands.moc"
