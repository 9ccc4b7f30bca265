#include "TestSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

} // namespace

class TestLevelsCommand : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyIonHasParameters();
    void tableOfLevels();
    void conventionsOfTheIntegrals();
    void wrongCommandLines_data();
    void wrongCommandLines();
    void fitInAnotherFolder();
};

// First excited level, cm^-1: measured in solution or LaF3 (Carnall et al. 1968, 1989).
void TestLevelsCommand::everyIonHasParameters()
{
    const QVector<QPair<QString, double>> measured{
        {"Ce", 2250}, {"Pr", 2150},  {"Nd", 2000}, {"Pm", 1600}, {"Sm", 1080},
        {"Eu", 380},  {"Gd", 32100}, {"Tb", 2100}, {"Dy", 3500}, {"Ho", 5100},
        {"Er", 6600}, {"Tm", 5800},  {"Yb", 10250}};
    for (const auto &[ion, energy] : measured) {
        const ProgramRun run = runProgram({"levels", "--ion", ion, "--components", "0"});
        QCOMPARE(run.exitStatus, 0);
        QVERIFY2(run.error.isEmpty(), qPrintable(run.error));
        const QStringList lines = run.output.split(QLatin1Char('\n'));
        const double computed = lines.at(6).simplified().section(QLatin1Char(' '), 1, 1).toDouble();
        QVERIFY2(
            std::abs(computed - energy) < 0.08 * energy,
            qPrintable(QStringLiteral("%1: %2, measured %3").arg(ion).arg(computed).arg(energy)));
    }
}

void TestLevelsCommand::tableOfLevels()
{
    // From any folder, which is not the one of the tables.
    const ProgramRun run =
        runProgram(words("levels --ion Eu --max-energy 17000 --components 2"), QDir::tempPath());
    QCOMPARE(run.exitStatus, 0);
    const QStringList lines = run.output.split(QLatin1Char('\n'));
    QCOMPARE(lines.at(0), QStringLiteral("Free-ion levels of Eu(III), 4f^6"));
    QCOMPARE(lines.at(6).simplified(), QStringLiteral("2 384.96 1 7F1 94.5 % 7F1 2.9 % 5D(1)1"));
    QCOMPARE(lines.size(), 4 + 1 + 8 + 1);
    QCOMPARE(lines.at(12).simplified().section(QLatin1Char(' '), 0, 3),
             QStringLiteral("8 16949.60 0 5D(3)0"));

    const QTemporaryDir folder;
    QCOMPARE(runProgram(words("levels --ion Ce --zeta 640 --report levels.txt"), folder.path())
                 .exitStatus,
             0);
    QVERIFY(testSupport::readAll(folder.filePath(QStringLiteral("levels.txt")))
                .startsWith("1  0\n|2F2.5> = "));
    QCOMPARE(runProgram(words("levels --ion Ce --report /nowhere/levels.txt")).exitStatus, 1);

    const ProgramRun nd = runProgram(words("levels --ion nd --J 11/2 --max-energy 4000"));
    QVERIFY(nd.output.contains(QStringLiteral("1891.45  11/2  4I5.5")));
    QVERIFY(!nd.output.contains(QStringLiteral("4I6.5")));
}

void TestLevelsCommand::conventionsOfTheIntegrals()
{
    const auto levelsOnly = [](const ProgramRun &run) {
        return run.output.mid(run.output.indexOf(QStringLiteral("  No.")));
    };
    const ProgramRun subscript =
        runProgram(words("levels --electrons 11 --F2 440 --F4 66 --F6 7 --zeta 2380"));
    const ProgramRun superscript = runProgram(
        words("levels --electrons 11 --Fk2 99000 --Fk4 71874 --Fk6 51531.48 --zeta 2380"));
    QCOMPARE(subscript.exitStatus, 0);
    QCOMPARE(levelsOnly(superscript), levelsOnly(subscript));
    QVERIFY(!subscript.output.contains(QStringLiteral("J. Chem. Phys.")));
}

void TestLevelsCommand::wrongCommandLines_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::newRow("no ion") << "levels" << 2 << "which ion?";
    QTest::newRow("unknown ion") << "levels --ion La" << 2 << "none of Ce, Pr";
    QTest::newRow("contradiction") << "levels --ion Eu --electrons 7" << 2 << "6 4f electrons";
    QTest::newRow("electrons") << "levels --electrons 14" << 2 << "1 to 13";
    QTest::newRow("negative") << "levels --ion Eu --zeta -5" << 2 << "positive";
    QTest::newRow("infinite") << "levels --ion Eu --zeta inf" << 2 << "positive";
    QTest::newRow("superscript as subscript") << "levels --ion Eu --F2 83125" << 2 << "--Fk2";
    QTest::newRow("subscript as superscript") << "levels --ion Eu --Fk4 56" << 2 << "--F4";
    QTest::newRow("both conventions") << "levels --ion Eu --F2 401 --Fk2 90000" << 2 << "other";
    QTest::newRow("J") << "levels --ion Eu --J 5/3" << 2 << "5/2";
    QTest::newRow("no such J") << "levels --ion Eu --J 5/2" << 1 << "none of the 295";
    QTest::newRow("zeta too large") << "levels --ion Eu --zeta 1e12" << 1 << "too large";
    QTest::newRow("file") << "levels some.out" << 2 << "--ion";
    QTest::newRow("no file to fit") << "fit levels --ion Nd" << 2 << "one file";
    QTest::newRow("file is missing") << "fit levels no.exp --ion Nd" << 1 << "no.exp";
    const auto fit = [](const char *name, const QByteArray &text, const char *message) {
        const QString path =
            testSupport::scratchFile(QLatin1String(name) + QStringLiteral(".exp"), text);
        QTest::newRow(name) << "fit levels " + path + " --ion Nd --zeta 5001" << 1 << message;
    };
    fit("bounds", "Nd\n4I9/2 0\n4I11/2 2007\n", "zeta = 5001");
    fit("heading", "4I9/2 0\n4I11/2 2007\n", "heading");
}

void TestLevelsCommand::wrongCommandLines()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    const ProgramRun run = runProgram(arguments.split(QLatin1Char(' ')));
    QTEST(run.exitStatus, "status");
    QVERIFY(run.output.isEmpty());
    QVERIFY2(run.error.contains(message), qPrintable(run.error));
}

void TestLevelsCommand::fitInAnotherFolder()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("pr.exp")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Pr3+, cm^-1\n3H4 0\n3H5 2082.80\n3H6 4254.55\n3F2 4894.53\n1D2 16740.42\n"
               "3P0 21066.81\n2P0 1\n");
    file.close();
    const ProgramRun run = runProgram(
        words("fit levels pr.exp --ion Pr --F2 306 --F4 46.3 --F6 4.4 --zeta 742 --points 300"),
        folder.path());
    QCOMPARE(run.exitStatus, 0);
    QVERIFY(run.output.simplified().contains(QStringLiteral("3H5 2082.80 ")));
    QVERIFY(run.output.contains(QStringLiteral("rms difference of 5 levels")));
    QVERIFY(run.error.contains(QStringLiteral("no such level: 2P0")));
    QVERIFY(run.error.contains(QStringLiteral("pr.result")));
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("pr.result"))));
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral("pr.output"))));
}

QTEST_GUILESS_MAIN(TestLevelsCommand)
#include "tst_levelscommand.moc"
