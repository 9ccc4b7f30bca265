#include "TestSupport.h"

#include <QtTest>

using testSupport::dataFile;
using testSupport::ProgramRun;
using testSupport::runProgram;

class TestSphere : public QObject
{
    Q_OBJECT

    static ProgramRun sphere(const QString &file)
    {
        return runProgram({QStringLiteral("sphere"), file});
    }

private Q_SLOTS:
    void tableOfTheSphere()
    {
        const ProgramRun run =
            sphere(testSupport::sourceFile(QStringLiteral("examples/data/eu_l2_rm1_opt.out")));
        QCOMPARE(run.exitStatus, 0);
        QVERIFY(run.error.isEmpty());
        const QStringList lines = run.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2 + 6);
        QCOMPARE(lines.at(0), QStringLiteral("Eu, coordination number 6"));
        QCOMPARE(lines.at(2).simplified(), QStringLiteral("2 O 2.418280 137.5707 155.4347"));
        QCOMPARE(lines.at(7).simplified(), QStringLiteral("7 N 2.560487 46.3351 220.2765"));
    }

    void whatMayBeMissedIsNoted()
    {
        const ProgramRun fluoride =
            sphere(dataFile(QStringLiteral("mopac/eu_f_acac3_rm1_opt.out")));
        QCOMPARE(fluoride.exitStatus, 0);
        QVERIFY(fluoride.error.contains(QStringLiteral("F 8 (2.387) is not counted")));
        const ProgramRun unordered =
            sphere(dataFile(QStringLiteral("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out")));
        QCOMPARE(unordered.exitStatus, 0);
        QVERIFY(unordered.output.contains(QStringLiteral("coordination number 9")));
        QVERIFY(unordered.error.contains(QStringLiteral("not atoms 2 to 10")));
        QVERIFY(unordered.error.contains(QStringLiteral("N 16 (2.664) is not counted: the limit")));
    }

    void failuresSayWhy()
    {
        const QPair<QString, const char *> cases[] = {
            {dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_scf_failed.out")),
             "UNABLE TO ACHIEVE SELF-CONSISTENCE"},
            {testSupport::scratchFile(QStringLiteral("water.xyz"), "2\n\nO 0 0 0\nH 0 0 1\n"),
             "no lanthanide ion"},
            {QStringLiteral("/no/such/file.out"), "/no/such/file.out does not exist."}};
        for (const auto &[file, reason] : cases) {
            const ProgramRun run = sphere(file);
            QCOMPARE(run.exitStatus, 1);
            QVERIFY(run.output.isEmpty());
            QVERIFY2(run.error.contains(QLatin1String(reason)), qPrintable(run.error));
        }
        QCOMPARE(runProgram({QStringLiteral("sphere")}).exitStatus, 2);
    }
};

QTEST_GUILESS_MAIN(TestSphere)
#include "tst_sphere.moc"
