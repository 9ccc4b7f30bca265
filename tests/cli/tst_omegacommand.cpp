#include "TestSupport.h"

#include <QtTest>

using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

ProgramRun omega(const QString &file, const QString &options)
{
    return runProgram(QStringList{QStringLiteral("omega"), file} +
                      options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

/// The row of a table that starts with these fields, as fields.
QStringList row(const QString &output, const QStringList &start)
{
    for (const QString &line : output.split(QLatin1Char('\n'))) {
        const QStringList fields = line.simplified().split(QLatin1Char(' '));
        if (fields.mid(0, start.size()) == start)
            return fields;
    }
    return {};
}

/// Nine O about Eu whose parameters are known.
QString nineOxygens()
{
    return testSupport::scratchFile(QStringLiteral("nine.xyz"),
                                    "10\n\nEu 0 0 0\nO 2 0 1.4\nO -1 1.732 1.4\nO -1 -1.732 1.4\n"
                                    "O 2 0 -1.4\nO -1 1.732 -1.4\nO -1 -1.732 -1.4\nO -2.45 0 0\n"
                                    "O 1.225 2.12 0\nO 1.225 -2.12 0\n");
}

} // namespace

class TestOmegaCommand : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void parametersByElementAndByAtom();
    void givenCoordinationNumber();
    void reportsAndGroups();
    void wrongUse_data();
    void wrongUse();
};

void TestOmegaCommand::parametersByElementAndByAtom()
{
    const ProgramRun run = omega(nineOxygens(), QStringLiteral("--g O=1 --alpha O=1"));
    QCOMPARE(run.exitStatus, 0);
    QCOMPARE(row(run.output, {QStringLiteral("2")}).value(1), QStringLiteral("0.0181"));
    QCOMPARE(row(run.output, {QStringLiteral("4")}).value(1), QStringLiteral("0.1151"));
    QCOMPARE(row(run.output, {QStringLiteral("6")}).value(1), QStringLiteral("0.4887"));
    QVERIFY(run.output.contains(QStringLiteral("9 atoms")));
    QVERIFY(run.error.contains(QStringLiteral("(Read Input Data)")));

    const ProgramRun named =
        omega(nineOxygens(), QStringLiteral("--g 3=0.25,O=1,N=2 --alpha O=1 --n 1.4"));
    QCOMPARE(named.exitStatus, 0);
    QCOMPARE(row(named.output, {QStringLiteral("O"), QStringLiteral("3")}).value(5),
             QStringLiteral("0.2500"));
    QCOMPARE(row(named.output, {QStringLiteral("O"), QStringLiteral("4")}).value(5),
             QStringLiteral("1.0000"));
    QVERIFY(named.error.contains(QStringLiteral("no coordinated atom is N")));
}

void TestOmegaCommand::givenCoordinationNumber()
{
    // The fluoride, atom 8, has no bonding distance: it is told, and counts when N is given.
    const QString file = testSupport::dataFile(QStringLiteral("mopac/eu_f_acac3_rm1_opt.out"));
    const ProgramRun counted = omega(file, QStringLiteral("--g O=1 --alpha O=1"));
    QCOMPARE(counted.exitStatus, 0);
    QVERIFY(counted.output.contains(QStringLiteral("6 atoms")));
    QVERIFY(counted.error.contains(QStringLiteral("F 8")));
    const QString given = QStringLiteral("--g O=1,F=1 --alpha O=1,F=0.5 --coordination ");
    const ProgramRun whole = omega(file, given + QStringLiteral("7"));
    QCOMPARE(whole.exitStatus, 0);
    QVERIFY(!row(whole.output, {QStringLiteral("F"), QStringLiteral("8")}).isEmpty());
    QCOMPARE(omega(file, given + QStringLiteral("1000")).exitStatus, 1);
}

void TestOmegaCommand::reportsAndGroups()
{
    const QString ligands = testSupport::scratchFile(
        QStringLiteral("ligands.txt"), "# the caps\ncaps 8, 9, 10\nprism 2 3 4 5 6 7\n");
    const QString report = testSupport::scratchFile(QStringLiteral("omega.txt"), "");
    const QString common = QStringLiteral("--g O=1 --alpha O=1 --ligands ") + ligands;
    const ProgramRun written = omega(nineOxygens(), common + QStringLiteral(" --report ") + report);
    QCOMPARE(written.exitStatus, 0);
    QVERIFY(written.output.contains(QStringLiteral("Intensity parameters")));
    const QString text = QString::fromUtf8(testSupport::readAll(report));
    QVERIFY(text.contains(QStringLiteral("omega(6) =    0.49e-20 cm^2")));
    const double sum = row(text, {QStringLiteral("Sum")}).value(1).toDouble();
    const double groups = row(text, {QStringLiteral("caps")}).value(1).toDouble() +
                          row(text, {QStringLiteral("prism")}).value(1).toDouble();
    COMPARE_NEAR(groups, sum, 0.02);

    const ProgramRun shown =
        omega(nineOxygens(), common + QStringLiteral(" --print omega,overlap"));
    QCOMPARE(shown.exitStatus, 0);
    QVERIFY(shown.output.contains(QStringLiteral("omega(6) =    0.49e-20 cm^2")));
    QVERIFY(shown.output.contains(QStringLiteral("ro(2)")));
    QVERIFY(!shown.output.contains(QStringLiteral("Chemical Partition")));
}

void TestOmegaCommand::wrongUse_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<QString>("message");
    const QString unordered =
        testSupport::dataFile(QStringLiteral("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out"));
    const QString chlorides =
        testSupport::dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out"));
    const QString gadolinium =
        testSupport::dataFile(QStringLiteral("mopac/gd_no3_3_h2o3_rm1_opt.out"));
    const QString ligands = testSupport::scratchFile(QStringLiteral("bad.txt"), "a 2\nb 2\n");
    const QString good = QStringLiteral("--g O=1 --alpha O=1 ");
    QTest::newRow("atoms out of order")
        << unordered << QStringLiteral("--g O=1,N=1 --alpha O=1,N=1") << 1
        << QStringLiteral("Reorder");
    QTest::newRow("not europium") << gadolinium << good << 1 << QStringLiteral("isn't Eu");
    QTest::newRow("no file") << QStringLiteral("/no/such.out") << good << 1
                             << QStringLiteral("/no/such.out does not exist");
    QTest::newRow("element without g")
        << chlorides << QStringLiteral("--g O=1 --alpha O=1,Cl=2") << 2
        << QStringLiteral("--g gives no value for element Cl (atom 2)");
    QTest::newRow("element without alpha")
        << chlorides << QStringLiteral("--g O=1,Cl=1 --alpha Cl=1") << 2
        << QStringLiteral("--alpha gives no value for element O");
    QTest::newRow("atom outside") << nineOxygens() << QStringLiteral("--g O=1,11=2 --alpha O=1")
                                  << 2 << QStringLiteral("atom 11 is not coordinated");
    QTest::newRow("given twice") << nineOxygens() << QStringLiteral("--g O=1,O=2 --alpha O=1") << 2
                                 << QStringLiteral("\"O\" is given twice");
    QTest::newRow("no number") << nineOxygens() << QStringLiteral("--g O=x --alpha O=1") << 2
                               << QStringLiteral("\"O=x\"");
    QTest::newRow("section") << nineOxygens() << good + QStringLiteral("--print omga") << 2
                             << QStringLiteral("unknown section \"omga\"");
    QTest::newRow("index") << nineOxygens() << good + QStringLiteral("--n 0") << 2
                           << QStringLiteral("--n");
    QTest::newRow("groups") << nineOxygens() << good + QStringLiteral("--ligands ") + ligands << 1
                            << QStringLiteral("atom 2 is named twice");
    QTest::newRow("report") << nineOxygens() << good + QStringLiteral("--report /no/such/r.txt")
                            << 1 << QStringLiteral("/no/such/r.txt");
}

void TestOmegaCommand::wrongUse()
{
    QFETCH(QString, file);
    QFETCH(QString, options);
    QFETCH(int, exitStatus);
    QFETCH(QString, message);
    const ProgramRun run = omega(file, options);
    QCOMPARE(run.exitStatus, exitStatus);
    QVERIFY2(run.error.contains(message), qPrintable(run.error));
    QVERIFY2(run.output.isEmpty(), qPrintable(run.output));
}

QTEST_GUILESS_MAIN(TestOmegaCommand)
#include "tst_omegacommand.moc"
