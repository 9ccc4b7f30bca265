#include "TestSupport.h"

#include <QtTest>

using testSupport::ProgramRun;
using testSupport::runProgram;

namespace {

ProgramRun omega(const QString &file, const QString &options)
{
    return runProgram(QStringList{"omega", file} +
                      options.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

/// A field of the row of a table that starts with these fields.
QString field(const QString &output, const QStringList &start, int index)
{
    for (const QString &line : output.split('\n')) {
        const QStringList fields = line.simplified().split(' ');
        if (fields.mid(0, start.size()) == start)
            return fields.value(index);
    }
    return {};
}

/// Nine O about Eu whose parameters are known.
QString nineOxygens()
{
    return testSupport::scratchFile("nine.xyz",
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
    const ProgramRun run = omega(nineOxygens(), "--g O=1 --alpha O=1");
    QCOMPARE(run.exitStatus, 0);
    QCOMPARE(field(run.output, {"2"}, 1), QString("0.0181"));
    QCOMPARE(field(run.output, {"4"}, 1), QString("0.1151"));
    QCOMPARE(field(run.output, {"6"}, 1), QString("0.4887"));
    QVERIFY(run.error.contains("(Read Input Data)"));

    const ProgramRun named = omega(nineOxygens(), "--g 3=0.25,O=1,N=2 --alpha O=1 --n 1.4");
    QCOMPARE(field(named.output, {"O", "3"}, 5), QString("0.2500"));
    QCOMPARE(field(named.output, {"O", "4"}, 5), QString("1.0000"));
    QVERIFY(named.error.contains("no coordinated atom is N"));
}

void TestOmegaCommand::givenCoordinationNumber()
{
    // The fluoride, atom 8, has no bonding distance: it is told, and counts when N is given.
    const QString file = testSupport::dataFile("mopac/eu_f_acac3_rm1_opt.out");
    const ProgramRun counted = omega(file, "--g O=1 --alpha O=1");
    QVERIFY(counted.output.contains("6 atoms") && counted.error.contains("F 8"));
    const QString given = "--g O=1,F=1 --alpha O=1,F=0.5 --coordination ";
    QVERIFY(!field(omega(file, given + "7").output, {"F", "8"}, 2).isEmpty());
    QCOMPARE(omega(file, given + "1000").exitStatus, 1);
}

void TestOmegaCommand::reportsAndGroups()
{
    const QString ligands =
        testSupport::scratchFile("ligands.txt", "# the caps\ncaps 8, 9, 10\nprism 2 3 4 5 6 7\n");
    const QString report = testSupport::scratchFile("omega.txt", "");
    const QString common = "--g O=1 --alpha O=1 --ligands " + ligands;
    const ProgramRun written = omega(nineOxygens(), common + " --report " + report);
    QVERIFY(written.output.contains("Intensity parameters"));
    const QString text = QString::fromUtf8(testSupport::readAll(report));
    const double groups =
        field(text, {"caps"}, 1).toDouble() + field(text, {"prism"}, 1).toDouble();
    COMPARE_NEAR(groups, field(text, {"Sum"}, 1).toDouble(), 0.02);

    const QString shown = omega(nineOxygens(), common + " --print omega,overlap").output;
    QVERIFY(shown.contains("omega(6) =    0.49e-20 cm^2") && shown.contains("ro(2)"));
    QVERIFY(!shown.contains("Chemical Partition"));
}

void TestOmegaCommand::wrongUse_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<QString>("message");
    const QString data = testSupport::dataFile("mopac/");
    const QString ligands = testSupport::scratchFile("bad.txt", "a 2\nb 2\n");
    const QString good = "--g O=1 --alpha O=1 ";
    const auto row = [](const char *name, const QString &file, const QString &options,
                        int exitStatus, const char *message) {
        QTest::newRow(name) << file << options << exitStatus << message;
    };
    const QString chlorides = data + "eu_cl2_h2o6_pm7_allvec_force.out";
    row("atoms out of order", data + "eu_terpy_acac_no3_2_am1_int_unordered.out",
        "--g O=1,N=1 --alpha O=1,N=1", 1, "Reorder");
    row("not europium", data + "gd_no3_3_h2o3_rm1_opt.out", good, 1, "isn't Eu");
    row("no file", "/no/such.out", good, 1, "/no/such.out does not exist");
    row("element without g", chlorides, "--g O=1 --alpha O=1,Cl=2", 2,
        "--g gives no value for element Cl (atom 2)");
    row("atom outside", nineOxygens(), "--g O=1,11=2 --alpha O=1", 2, "atom 11 is not coordinated");
    row("given twice", nineOxygens(), "--g O=1,O=2 --alpha O=1", 2, "\"O\" is given twice");
    row("no number", nineOxygens(), "--g O=x --alpha O=1", 2, "\"O=x\"");
    row("section", nineOxygens(), good + "--print omga", 2, "unknown section \"omga\"");
    row("index", nineOxygens(), good + "--n 0", 2, "--n");
    row("groups", nineOxygens(), good + "--ligands " + ligands, 1, "atom 2 is named twice");
    row("report", nineOxygens(), good + "--report /no/such/r.txt", 1, "/no/such/r.txt");
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
