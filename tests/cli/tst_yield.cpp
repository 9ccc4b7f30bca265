#include "TestSupport.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using testSupport::ProgramRun;
using testSupport::runProgram;
using testSupport::sourceFile;

/// "lanqor yield" as a chemist meets it. Expected values are those of the library's tests.
class TestYield : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void example();
    void givenStates();
    void threeSourcesOfOmega();
    void report();
    void warnings();
    void refusals_data();
    void refusals();
};

namespace {

const QString complexFile = sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out"));
const QString statesFile = sourceFile(QStringLiteral("examples/data/eu_l2_zindos_excerpt.orcout"));

/// Runs "lanqor yield" with a line of arguments; COMPLEX and STATES stand for the example files.
ProgramRun yield(const QString &line, const QString &directory = QString())
{
    QStringList arguments = {QStringLiteral("yield")};
    for (const QString &word : line.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        arguments << (word == QLatin1String("COMPLEX")  ? complexFile
                      : word == QLatin1String("STATES") ? statesFile
                                                        : word);
    return runProgram(arguments, directory);
}

/// The first number in the line that begins with @p name; NaN when there is no such line.
double valueOf(const QString &name, const QString &output)
{
    const QRegularExpression line(
        QStringLiteral("^ *%1 {2,}([-+.\\de]+)").arg(QRegularExpression::escape(name)),
        QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(output);
    return match.hasMatch() ? match.captured(1).toDouble() : std::nan("");
}

const QString givenOmega =
    QStringLiteral(" --omega 12,5,0.3 --omega-ed 0.4,0.3,0.1 --lifetime 0.5");
const QString givenStatesLine = QStringLiteral(
    " --singlet-energy 28000 --triplet-energy 20500 --rl-singlet 4.5 --rl-triplet 5.1");

} // namespace

void TestYield::example()
{
    const ProgramRun run = yield(QStringLiteral("COMPLEX --excited STATES") + givenOmega);
    QVERIFY2(run.exitStatus == 0, qPrintable(run.error));
    COMPARE_NEAR(valueOf(QStringLiteral("Quantum yield"), run.output), 24.03, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("Arad"), run.output), 485.40, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("Anrad"), run.output), 1514.60, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("quantum efficiency"), run.output), 24.27, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("T-5D1    exchange"), run.output), 1982.90, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("5D0"), run.output), 0.83126, 5e-6);
    QVERIFY(!run.output.contains(QStringLiteral("T-5D4")));
    const ProgramRun named =
        yield(QStringLiteral("COMPLEX --excited STATES --program orca --singlet "
                             "1 --triplet 1 --et-model 2 --n 1.5 --channels "
                             "S-5D4,t-5d1,T-5D0") +
              givenOmega);
    QCOMPARE(named.output, run.output);
    const ProgramRun pair =
        yield(QStringLiteral("COMPLEX --excited STATES --two-triplets") + givenOmega);
    COMPARE_NEAR(valueOf(QStringLiteral("Quantum yield"), pair.output), 24.01, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("Ta-5D4   multipolar"), pair.output), -6576.10, 0.005);
}

void TestYield::givenStates()
{
    const ProgramRun run = yield(
        QStringLiteral("--omega 33,4.6,0 --omega-ed 0.3,0.2,0 --lifetime 0.26") + givenStatesLine);
    QVERIFY2(run.exitStatus == 0, qPrintable(run.error));
    COMPARE_NEAR(valueOf(QStringLiteral("Quantum yield"), run.output), 28.55, 0.005);
    COMPARE_NEAR(valueOf(QStringLiteral("quantum efficiency"), run.output), 28.84, 0.005);
    QVERIFY(run.error.isEmpty());
}

void TestYield::threeSourcesOfOmega()
{
    const QTemporaryDir directory;
    const QString report = directory.filePath(QStringLiteral("omega.txt"));
    const QString factors = QStringLiteral(" --g O=0.9,N=1.2 --alpha O=3.1,N=4.0");
    const ProgramRun omega = runProgram(
        QStringList{QStringLiteral("omega"), complexFile, QStringLiteral("--report"), report} +
        factors.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QVERIFY2(omega.exitStatus == 0, qPrintable(omega.error));
    const QString states = QStringLiteral("COMPLEX --excited STATES --lifetime 0.5");
    const ProgramRun byFactors = yield(states + factors);
    const ProgramRun byReport = yield(states + QStringLiteral(" --omega-report ") + report);
    QVERIFY2(byFactors.exitStatus == 0, qPrintable(byFactors.error));
    QCOMPARE(byFactors.output, byReport.output);
    // The table of "lanqor omega" and that of "lanqor yield" show the same parameters.
    const double omega2 = valueOf(QStringLiteral("2"), omega.output);
    COMPARE_NEAR(valueOf(QStringLiteral("2"), byReport.output), omega2, 1e-4);
    QVERIFY(omega2 > 1.0);
}

void TestYield::report()
{
    const QTemporaryDir directory;
    const ProgramRun run =
        yield(QStringLiteral("COMPLEX --excited STATES --report yield.txt") + givenOmega,
              directory.path());
    QVERIFY2(run.exitStatus == 0, qPrintable(run.error));
    const QString text =
        QString::fromUtf8(testSupport::readAll(directory.filePath(QStringLiteral("yield.txt"))));
    QVERIFY(text.contains(complexFile));
    QVERIFY(text.indexOf(QStringLiteral("WetEX (Triplet -> 5D0) =")) <
            text.indexOf(QStringLiteral("Quantum Yield:     24.0")));
    const ProgramRun nowhere = yield(
        QStringLiteral("COMPLEX --excited STATES --report no/such/folder/yield.txt") + givenOmega);
    QCOMPARE(nowhere.exitStatus, 1);
    QVERIFY(nowhere.error.contains(QStringLiteral("no/such/folder")));
}

void TestYield::warnings()
{
    const ProgramRun longLifetime = yield(
        QStringLiteral("--omega 33,4.6,0 --omega-ed 0,0,0 --lifetime 2.26") + givenStatesLine);
    QCOMPARE(longLifetime.exitStatus, 0);
    QVERIFY(longLifetime.error.contains(QStringLiteral("longer than the radiative lifetime")));
    const ProgramRun anotherComplex =
        yield(testSupport::dataFile(QStringLiteral("mopac/eu_cl6_pm7_1scf_disp.out")) +
              QStringLiteral(" --excited STATES") + givenOmega);
    QVERIFY(anotherComplex.error.contains(QStringLiteral("same complex")));
}

void TestYield::refusals_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, const QString &line, int status, const char *said) {
        QTest::newRow(name) << line << status << QString::fromLatin1(said);
    };
    const QString states = QStringLiteral("COMPLEX --excited STATES");
    const QString all = states + givenOmega;
    row("nothing", QString(), 2, "--excited");
    row("no Omega", states, 2, "--omega-report");
    row("Omega without its ED part", states + " --omega 1,1,1", 2, "--omega-ed");
    row("two values of Omega", states + " --omega 1,1 --omega-ed 0,0,0", 2, "three values");
    row("negative Omega", states + " --omega 1,-1,1 --omega-ed 0,0,0", 2, "three values");
    row("two sources of Omega", all + " --g O=1", 2, "--g");
    row("both kinds of states", all + givenStatesLine, 2, "--singlet-energy");
    row("half a state", "--singlet-energy 28000" + givenOmega, 2, "--rl-triplet");
    row("distance in picometres", givenOmega + QString(givenStatesLine).replace("4.5", "4500"), 2,
        "--rl-singlet");
    row("given states, model 0", givenOmega + givenStatesLine + " --et-model 0", 1,
        "shortest ion-ligand distance");
    row("lifetime 0", all + " --lifetime 0", 2, "--lifetime");
    row("index below 1", all + " --n 0.5", 2, "--n");
    row("model 1.5", all + " --et-model 1.5", 2, "--et-model");
    row("unknown channel", all + " --channels S-7F2", 2, "S-7F2");
    row("unknown program", all + " --program lynx", 2, "--program");
    row("triplet beyond the list", all + " --triplet 5", 1, "--triplet 5");
    row("no states file", "COMPLEX --excited no-such-file" + givenOmega, 2,
        "no-such-file does not exist");
    row("no complex file", "no-such-file --excited STATES" + givenOmega, 1, "no-such-file");
    row("a MOPAC output for the states", "COMPLEX --excited COMPLEX" + givenOmega, 2,
        "is not known");
    row("a report without charge factors", states + " --omega-report STATES", 1, "zindos_excerpt");
}

void TestYield::refusals()
{
    QFETCH(QString, line);
    QFETCH(QString, said);
    const ProgramRun run = yield(line);
    QTEST(run.exitStatus, "status");
    QVERIFY2(run.error.contains(said), qPrintable(run.error));
    QVERIFY(run.output.isEmpty());
}

QTEST_GUILESS_MAIN(TestYield)
#include "tst_yield.moc"
