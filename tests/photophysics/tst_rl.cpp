#include "TestSupport.h"

#include <LanqorEngine/LanqorRL.h>

#include <QtTest>

using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

// In all fixtures O lies 5 and N 2 Angstrom from the ion.
constexpr double dO = 5.0;
constexpr double dN = 2.0;

/// Copies a fixture to the scratch folder, so that files can be put beside it.
QString copied(const QString &source, const QString &name)
{
    return scratchFile(name, readAll(source));
}

/// Calculates and compares the distances of the first states.
void compareDistances(LanqorRL &calculation, int program, const QVector<double> &singlets,
                      const QVector<double> &triplets, double tolerance = 1e-12)
{
    QVERIFY2(calculation.calcRL(program), qPrintable(calculation.getLastError()));
    QCOMPARE(calculation.getSingletRL(0), 0.0);
    QCOMPARE(calculation.getTripletRL(0), 0.0);
    for (int n = 1; n <= singlets.size(); ++n)
        COMPARE_NEAR(calculation.getSingletRL(n), singlets.at(n - 1), tolerance);
    for (int n = 1; n <= triplets.size(); ++n)
        COMPARE_NEAR(calculation.getTripletRL(n), triplets.at(n - 1), tolerance);
}

} // namespace

class TestRL : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// The ion among the atoms of an ORCA TD-DFT output, atom 2.
    void orcaIonAmongAtoms()
    {
        LanqorRL calculation(nullptr,
                             dataFile(QStringLiteral("orca/eu_tddft_optimisation_v6.out")));
        testSupport::MessageSpy spy(calculation);
        // Sums of c^2 d of the orbitals: 3 has (0.6, 0, 0.8), 4 has (0, 0.6, 0.8), 2 has (1, 0, 0).
        const double of3 = 0.36 * dO + 0.64 * dN;
        const double of4 = 0.64 * dN;
        const double of2 = dO;
        const double c7[] = {2.717131, -11.625625, 131.30264};
        const double norm7 = c7[0] * c7[0] + c7[1] * c7[1] + c7[2] * c7[2];
        const double of7 = c7[0] * c7[0] * dO + c7[2] * c7[2] * dN;
        compareDistances(
            calculation, 1,
            {(of3 + of4) / 2, (of2 + of4 + of3 + of4) / 4, of4}, // orbital 0 is skipped
            {(of3 + of7) / (1 + norm7), of3});
        QCOMPARE(calculation.getMinDistanceLnLigand(), dN);
        QCOMPARE(calculation.getAtomDistance(1), dO);
        QCOMPARE(calculation.getAtomDistance(2), 0.0);
        QCOMPARE(calculation.getStatesNumber(), 3);             // two triplets and entry 0
        QVERIFY(spy.contains(QStringLiteral("triplet 2 (9)"))); // 9 is not printed
        QCOMPARE(spy.messages.filter(QStringLiteral("singlet")).size(), 0);
    }

    void orcaPointCharge()
    {
        const QString fixture = dataFile(QStringLiteral("orca/cis_point_charge_v26.orcout"));
        LanqorRL calculation(nullptr, fixture);
        const double of1 = dN;
        const double of2 = 0.36 * dO + 0.64 * dN;
        const double of3 = 0.64 * dO + 0.36 * dN;
        compareDistances(calculation, 1, {(of2 + of3) / 2, of3},
                         {(of1 + of2) / 2, (of1 + of3) / 2});
        QCOMPARE(calculation.getAtomDistancesCount(), 2);
        QCOMPARE(calculation.getMinDistanceLnLigand(), dN);

        LanqorRL alone(nullptr, copied(fixture, QStringLiteral("alone.orcout")));
        QVERIFY(!alone.calcRL(1));
        QCOMPARE(alone.getLastError(),
                 QStringLiteral("LANQOR could not read the ORCA point charge file."));
        QCOMPARE(alone.getSingletStatesCount(), 2); // what was read is kept
    }

    void gaussian()
    {
        const QString fixture = dataFile(QStringLiteral("gaussian/eu_td5050_two_jobs_g16.log"));
        LanqorRL calculation(nullptr, fixture);
        testSupport::MessageSpy spy(calculation);
        // Orbitals as printed: 99 is all O, 100 has O 0.6, N 0.8, 101 has Eu 0.6, N 0.8, 102 all 1.
        const double of100 = 0.36 * dO + 0.64 * dN;
        const double of101 = 0.64 * dN;
        compareDistances(calculation, 2,
                         {(of100 + of101) / 2, (dO + 2 * dO + 2 * dN) / (1 + 5), of100},
                         {(dO + of101 + of100 + of101) / 4, (2 * dO + 2 * dN) / 5});
        QVERIFY(spy.contains(QStringLiteral("singlet 3 (104); triplet 2 (98)")));
        QCOMPARE(calculation.getMinDistanceLnLigand(), dN);

        QByteArray other = readAll(fixture);
        other.replace("   63  ", "   39  ");
        LanqorRL withoutIon(nullptr, scratchFile(QStringLiteral("yttrium.log"), other));
        QVERIFY(!withoutIon.calcRL(2));
        QVERIFY(withoutIon.getLastError().contains(QStringLiteral("lanthanide")));
    }

    void zindo()
    {
        LanqorRL calculation(nullptr, dataFile(QStringLiteral("zindo/eu_ci.zin")));
        const double of1 = dO;
        const double of2 = dN;
        const double of3 = 0.64 * dN + 0.36 * dO;
        const double of4 = 0.64 * dO + 0.36 * dN;
        // The second time nothing is left of the first.
        for (int time = 0; time < 2; ++time) {
            compareDistances(calculation, 0, {0.0, (of2 + of3 + of1 + of3) / 4, (of2 + of4) / 2},
                             {0.0, (of1 + of4) / 2, 0.0});
            QCOMPARE(calculation.getStatesNumber(), 4);
        }
        QCOMPARE(calculation.getSelExcitateState(), 1);
        QCOMPARE(calculation.getSingletEnergy(2), 25000.5);
        QVERIFY(!calculation.calcRL(7));
        QVERIFY(calculation.getLastError().contains(QStringLiteral("Unknown program type 7")));
        QCOMPARE(calculation.getStatesNumber(), 1);
        QVERIFY(!calculation.calcRL(2)); // not a Gaussian output
        QVERIFY(calculation.getLastError().contains(QStringLiteral("the GAUSSIAN output file")));
    }

    /// A real complex, whole and as the excerpt that the repository carries: distances taken by a
    /// separate script, see the notes of the corpus.
    void completeCase_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("excerpt") << testSupport::sourceFile(
            QStringLiteral("examples/data/eu_l2_zindos_excerpt.orcout"));
        const QString output =
            testSupport::corpusFile(QStringLiteral("orca/orca42_zindos_ligand_s25_t25.out"));
        const QString charge = testSupport::corpusFile(
            QStringLiteral("complete_case/orca42_zindos_ligand_s25_t25.pointcharge"));
        if (output.isEmpty() || charge.isEmpty())
            return;
        copied(charge, QStringLiteral("complete.pointcharge"));
        QTest::newRow("whole") << copied(output, QStringLiteral("complete.orcout"));
    }

    void completeCase()
    {
        QFETCH(const QString, path);
        LanqorRL calculation(nullptr, path);
        compareDistances(calculation, 1, {6.3915, 4.9330, 5.2682, 5.3034},
                         {6.4694, 6.1481, 7.4789, 6.3780}, 5e-5);
        COMPARE_NEAR(calculation.getMinDistanceLnLigand(), 2.41698, 5e-6);
    }

    /// Yttrium in the place of the ion. Shares of hole and electron are those of a script that
    /// builds the transition matrix in atomic orbitals and sums its squares by fragments.
    void mopacIndo()
    {
        LanqorRL calculation(nullptr, dataFile(QStringLiteral("mopac/y_f2_h2co_indo_singlet.out")),
                             dataFile(QStringLiteral("mopac/y_f2_h2co_indo_triplet.out")));
        compareDistances(calculation, 3, {2.9197, 1.2264, 1.2264, 2.6058},
                         {2.9197, 1.2264, 1.2264, 2.6058}, 5e-5);
        COMPARE_NEAR(calculation.getMinDistanceLnLigand(), 2.10238, 1e-5);
        const DonorStatesResults results = calculation.getResults();
        QCOMPARE(results.fragments.size(), 4);
        QCOMPARE(results.fragments.at(1).formula, QStringLiteral("C1 H2 O1"));
        QCOMPARE(results.fragments.at(1).atoms, (QVector<int>{2, 5, 6, 7}));
        const QVector<double> transfers = {0.104, 0.990, 0.988, 0.989};
        for (int i = 0; i < transfers.size(); ++i)
            COMPARE_NEAR(results.singlets.at(i).chargeTransfer, transfers.at(i), 5e-4);
        COMPARE_NEAR(results.triplets.at(3).holeShares.at(3), 0.60, 5e-3);
        COMPARE_NEAR(results.triplets.at(3).electronShares.at(1), 0.95, 5e-3);
    }

    /// Real complexes: distances and transfers of scripts. Where the orbitals spread over three
    /// equal ligands only the signs of the configurations tell that nothing is transferred.
    void mopacIndoCorpus()
    {
        const auto corpus = [](const QString &name, const QString &kind) {
            return testSupport::corpusFile(QStringLiteral("mopac_indo/%1_%2.out").arg(name, kind));
        };
        const QString chelate = QStringLiteral("eu_l2_as_y_indo_cis");
        const QString equal = QStringLiteral("complexes/dipic");
        if (corpus(chelate, QStringLiteral("singlet")).isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorRL calculation(nullptr, corpus(chelate, QStringLiteral("singlet")),
                             corpus(chelate, QStringLiteral("triplet")));
        compareDistances(calculation, 3, {4.6984, 4.6245, 5.1426, 6.4902, 6.0602, 5.0341},
                         {6.4109, 5.1995, 7.3202, 7.3759, 4.7298, 7.1666}, 5e-5);
        COMPARE_NEAR(calculation.getMinDistanceLnLigand(), 2.41827, 5e-6);
        COMPARE_NEAR(calculation.getSingletEnergy(1), 30486.57, 5e-3);
        COMPARE_NEAR(calculation.getTripletEnergy(1), 22421.41, 5e-3);
        COMPARE_NEAR(calculation.getResults().triplets.at(1).chargeTransfer, 0.052, 5e-4);
        LanqorRL spread(nullptr, corpus(equal, QStringLiteral("singlet")),
                        corpus(equal, QStringLiteral("triplet")));
        QVERIFY2(spread.calcRL(3), qPrintable(spread.getLastError()));
        COMPARE_NEAR(spread.getResults().triplets.at(0).chargeTransfer, 0.016, 5e-4);
    }

    /// The ion alone has no ligand; orbitals of atoms that are not there are refused.
    void geometryAndOrbitalsDisagree()
    {
        const QByteArray zindo = readAll(dataFile(QStringLiteral("zindo/eu_ci.zin")));
        QByteArray alone = zindo;
        const int second = alone.indexOf("   2   8    6.0000");
        alone.remove(second, alone.indexOf(" MOMENT") - second);
        alone.insert(second, "\n");
        for (const char *atom : {"   O   2 ", "   N   3 "})
            alone.replace(atom, "   Eu  1 ");
        LanqorRL ion(nullptr, scratchFile(QStringLiteral("alone.zin"), alone));
        QVERIFY2(ion.calcRL(0), qPrintable(ion.getLastError()));
        QCOMPARE(ion.getMinDistanceLnLigand(), 1000.0);
        QCOMPARE(ion.getAtomDistancesCount(), 1);

        QByteArray wrong = zindo;
        wrong.replace("   O   2 2s ", "   O   9 2s ");
        LanqorRL outside(nullptr, scratchFile(QStringLiteral("wrong.zin"), wrong));
        QVERIFY(!outside.calcRL(0));
        QVERIFY(outside.getLastError().contains(QStringLiteral("atom 9")));
    }

    /// The text of the report is held by a stored transcript.
    void report()
    {
        LanqorRL calculation(nullptr, dataFile(QStringLiteral("orca/cis_point_charge_v26.orcout")));
        QVERIFY(calculation.createOutput(QStringLiteral("unused")).isEmpty());
        QVERIFY(calculation.calcRL(1));
        const QString path = scratchFile(QStringLiteral("rl.txt"), QByteArray());
        const QString text = calculation.createOutput(path);
        QVERIFY(!text.isEmpty());
        QCOMPARE(QString::fromUtf8(readAll(path)), text);
        const QString nowhere = QStringLiteral("/no/such/folder/rl.txt");
        QVERIFY(calculation.createOutput(nowhere).isEmpty());
        QVERIFY(calculation.getLastError().contains(nowhere));
    }
};

QTEST_GUILESS_MAIN(TestRL)
#include "tst_rl.moc"
