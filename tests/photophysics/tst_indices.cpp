#include "TestSupport.h"

#include "photophysics/reactivityIndices_p.h"

#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QFileInfo>
#include <QtTest>

#include <algorithm>

using testSupport::dataFile;
using testSupport::readAll;
using testSupport::scratchFile;

namespace {

/// A copy in the scratch folder, so that the ".indeces" file is written there.
QString scratchCopy(const QString &path)
{
    return scratchFile(QFileInfo(path).fileName(), readAll(path));
}

/// Orthonormal orbitals Eu S, O 2S, O PX, bond (O PY + H S) and two virtual ones.
const QByteArray gaussianOutput =
    "     4 alpha electrons        4 beta electrons\n"
    "     Molecular Orbital Coefficients:\n"
    "                              1         2         3         4         5\n"
    "                              O         O         O         O         V\n"
    "     Eigenvalues --  -372.66755-235.72701  -0.50000  -0.25000   0.10000\n"
    "   1 1   Eu 1S          1.00000   0.00000   0.00000   0.00000   0.00000\n"
    "   2 2   O  2S          0.00000   1.00000   0.00000   0.00000   0.00000\n"
    "   3        2PX         0.00000   0.00000   1.00000   0.00000   0.00000\n"
    "   4        2PY         0.00000   0.00000   0.00000   0.70711   0.00000\n"
    "   5        2PZ         0.00000   0.00000   0.00000   0.00000   1.00000\n"
    "   6        9D 0        0.00000   0.00000   0.00000   0.00000   0.00000\n"
    "   7 3   H  1S          0.00000   0.00000   0.00000   0.70711   0.00000\n"
    "                              6\n"
    "                              V\n"
    "     Eigenvalues --     0.20000\n"
    "   1 1   Eu 1S          0.00000\n"
    "   2 2   O  2S          0.00000\n"
    "   3        2PX         0.00000\n"
    "   4        2PY         0.70711\n"
    "   5        2PZ         0.00000\n"
    "   6        9D 0        0.00000\n"
    "   7 3   H  1S         -0.70711\n"
    "     Density Matrix:\n"
    "                              1         2\n"
    "   1 1   Eu 1S          0.90000\n";

} // namespace

class TestIndices : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    /// The first superdelocalizabilities, taken from the files by another program, and the
    /// populations of all atoms, against the charges that MOPAC prints.
    void realOutputs_data()
    {
        QTest::addColumn<QVector<double>>("superdelocalizabilities"); // of atoms 2, 3, ...
        QTest::newRow("eu_acac3_phen_am1_allvec") << QVector<double>{-0.23851, -0.22950, -0.45542};
        QTest::newRow("eu_acac3_h2o_rm1_allvec_force") // two jobs
            << QVector<double>{-0.39731, -0.40183, -0.39221};
        QTest::newRow("eu_cl2_h2o6_pm7_allvec_force") // with d orbitals, two jobs
            << QVector<double>{-0.43857, -0.48325, -0.22094};
        QTest::newRow("ethane_allvec_mopac2016_21_openmopac") // orbitals in the second job
            << QVector<double>{};
    }
    void realOutputs()
    {
        QFETCH(QVector<double>, superdelocalizabilities);
        const QString file = QStringLiteral("mopac/%1.out").arg(QTest::currentDataTag());
        QString path = dataFile(file);
        if (!QFileInfo::exists(path))
            path = testSupport::corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");

        LanqorIndicesCalculation indices(nullptr, scratchCopy(path),
                                         LanqorIndicesCalculation::MopacOutput);
        QVERIFY2(indices.calculateIndices(), qPrintable(indices.getLastError()));
        QCOMPARE(indices.getAtomicCharge().mid(0, 2), QVector<double>(2, 0.0));
        QCOMPARE(indices.getSuperDeslocalizability().mid(0, 2), QVector<double>(2, 0.0));
        for (int i = 0; i < superdelocalizabilities.size(); ++i)
            COMPARE_NEAR(indices.getSuperDeslocalizability(i + 2), superdelocalizabilities.at(i),
                         1.0e-4);

        // The d functions of Cl are left out.
        LanqorInputData structure(nullptr, path);
        QVERIFY(structure.readMopacOutFile(false));
        QCOMPARE(indices.getAtomicCharge().size(), structure.getCoord().size() + 1);
        const QMap<QString, double> valences = {{QStringLiteral("Cl"), 7.0},
                                                {QStringLiteral("O"), 6.0},
                                                {QStringLiteral("N"), 5.0},
                                                {QStringLiteral("C"), 4.0},
                                                {QStringLiteral("H"), 1.0}};
        double smallest = 0.0;
        for (int atom = 2; atom <= structure.getCoord().size(); ++atom) {
            const QString label = structure.getAtomLabel(atom);
            COMPARE_NEAR(indices.getAtomicCharge(atom),
                         valences.value(label) - structure.getAtomicCharges(atom - 1),
                         label == QLatin1String("Cl") ? 0.01 : 5.0e-4);
            smallest = std::min(smallest, indices.getSuperDeslocalizability(atom));
        }
        QCOMPARE(indices.getMinimumSuperDeslocalizability(), smallest);
    }

    /// Closed forms: one function alone, the first of two entries of a function, a function that
    /// the table does not list, and sums in single precision.
    void handMadeTable()
    {
        const QByteArray geometry = "  CARTESIAN COORDINATES\n\n"
                                    "   1    Eu       0.0       0.0       0.0\n"
                                    "   2    H        1.0       0.0       0.0\n"
                                    "   3    O        0.0       2.0       0.0\n\n";
        const QByteArray text = geometry + geometry +
                                "  NO. OF FILLED LEVELS    =          1\n"
                                "  EIGENVECTORS\n\n"
                                "   Root No.       1         2\n\n"
                                "   1 a1g     1 a2u\n\n"
                                "   -16.000     2.000\n \n"
                                "  S   H    2    0.5000    0.8000\n"
                                "  S   H    2    0.7500    0.8000\n"
                                "  S   O    3    0.2500    0.1000\n"
                                "  Py  O    3   -0.2500    0.1000\n"
                                "  Pz  O    3    0.5000    0.1000\n"
                                "  x2  O    3    0.9000    0.1000\n\n\n";
        LanqorIndicesCalculation indices(nullptr, scratchFile(QStringLiteral("hand.out"), text),
                                         LanqorIndicesCalculation::MopacOutput);
        QVERIFY2(indices.calculateIndices(), qPrintable(indices.getLastError()));
        QCOMPARE(indices.getAtomicCharge(2), 2.0 * 0.25);
        QCOMPARE(indices.getSuperDeslocalizability(2), 2.0 * 0.25 / -16.0);
        // Px is missing: -9999.0 enters the sums. Its square and the sum with 0.375 are rounded to
        // multiples of 8.
        QCOMPARE(indices.getAtomicCharge(3), 2.0 * 99980000.0);
        COMPARE_NEAR(indices.getSuperDeslocalizability(3), 2.0 * 9998.5 * 9998.5 / -16.0, 8.0);
        QCOMPARE(indices.getMinimumSuperDeslocalizability(), indices.getSuperDeslocalizability(3));
        QCOMPARE(indices.getAtomicCharge(0), 0.0);
        QCOMPARE(indices.getAtomicCharge(99), 0.0);
    }

    void incompleteOutputsSayWhatIsMissing_data()
    {
        QTest::addColumn<QString>("hint");
        QTest::newRow("mopac/eu_ncs6_rm1_vectors.out") << "ALLVEC";
        QTest::newRow("mopac/acac_anion_mopac7_am1_vectors.out") << "ALLVEC";
        QTest::newRow("mopac/eu_dipic3_pm6_opt.out") << "ALLVEC";           // no orbitals
        QTest::newRow("mopac/h2o_force_mopac2016_cclib.out") << "LEVELS";   // vibrations only
        QTest::newRow("mopac/fecl6_mopac2012_cclib.out") << "closed-shell"; // an open shell
        QTest::newRow("gaussian/g09_benzene_tda_opt_popregular.log") << "pop=full"; // some orbitals
        QTest::newRow("gaussian/g16_h2o_cis5050_natural_orbitals.log") << "pop=full";
    }
    void incompleteOutputsSayWhatIsMissing()
    {
        QFETCH(QString, hint);
        const QString file = QString::fromLatin1(QTest::currentDataTag());
        const QString path = testSupport::corpusFile(file);
        if (path.isEmpty())
            QSKIP("needs LANQOR_CORPUS_DIR");
        LanqorIndicesCalculation indices(nullptr, path, file.startsWith(QLatin1String("gaussian")));
        testSupport::MessageSpy spy(indices);
        QVERIFY(!indices.calculateIndices());
        QVERIFY2(indices.getLastError().contains(hint), qPrintable(indices.getLastError()));
        QCOMPARE(spy.messages.size(), 1);
        QVERIFY(indices.getAtomicCharge().isEmpty());
    }

    void fileHoldsTheTable()
    {
        const QString path =
            scratchCopy(dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out")));
        LanqorIndicesCalculation indices(nullptr, path, LanqorIndicesCalculation::MopacOutput);
        QVERIFY(indices.calculateIndices());
        const QString text = QString::fromUtf8(readAll(indices.getIndicesFileName()));
        QVERIFY(indices.getIndicesFileName().endsWith(
            QLatin1String("/eu_cl2_h2o6_pm7_allvec_force.indeces")));
        QCOMPARE(text, indices.getIndicesTable());
        const AtomIndices last = indices.getResults().atoms.last();
        QCOMPARE(last.atom, 21);
        QCOMPARE(last.superDeslocalizability, indices.getSuperDeslocalizability(21));
        QVERIFY(text.startsWith(QStringLiteral(
            " Atomic Charges (au)             Varno Superdelocalizabilities (au)\n    2 Cl ")));
        // The checks of QDC parameters read it back.
        const auto check = [&indices](double q) {
            const double parameters[3] = {q, 10.0, 6.0};
            return LanqorInputData::readFileIndeces(indices.getIndicesFileName(), 8, parameters, 1);
        };
        QCOMPARE(check(0.12), QString());
        QVERIFY(check(0.13).startsWith(QStringLiteral("Atom 2 (Cl): the charge factor 1.03")));
        // Calculating again gives the same, not twice as many entries.
        const QVector<double> before = indices.getAtomicCharge();
        QVERIFY(indices.calculateIndices());
        QCOMPARE(indices.getAtomicCharge(), before);
    }

    /// Populations are exact, glued energies and d rows do not matter.
    void gaussianTable()
    {
        LanqorIndicesCalculation indices(
            nullptr, scratchFile(QStringLiteral("table.log"), gaussianOutput), 1);
        QVERIFY2(indices.calculateIndices(), qPrintable(indices.getLastError()));
        COMPARE_NEAR(indices.getAtomicCharge(2), 5.0, 1.0e-4);
        COMPARE_NEAR(indices.getAtomicCharge(3), 1.0, 1.0e-4);
        COMPARE_NEAR(indices.getSuperDeslocalizability(2),
                     2.0 * (1.0 / -235.72701 + 1.0 / -0.5 + 0.5 / -0.25), 1.0e-4);
        COMPARE_NEAR(indices.getSuperDeslocalizability(3), 2.0 * 0.5 / -0.25, 1.0e-4);
        QVERIFY(indices.getIndicesTable().contains(QLatin1String("    3 H ")));

        // The last table of an output counts; six occupied orbitals span two blocks.
        QByteArray twice = gaussianOutput;
        twice +=
            QByteArray(gaussianOutput).replace(" 4 alpha", " 6 alpha").replace("4 beta", "6 beta");
        LanqorIndicesCalculation last(nullptr, scratchFile(QStringLiteral("twice.log"), twice), 1);
        QVERIFY2(last.calculateIndicesGAUSSIAN(), qPrintable(last.getLastError()));
        COMPARE_NEAR(last.getAtomicCharge(2), 8.0, 1.0e-4);
        COMPARE_NEAR(last.getAtomicCharge(3), 2.0, 1.0e-4);

        // A table cut within its last block, and a coefficient that does not fit its field.
        const auto refusal = [](const QByteArray &text) {
            LanqorIndicesCalculation refused(nullptr,
                                             scratchFile(QStringLiteral("refused.log"), text), 1);
            return refused.calculateIndices() ? QString() : refused.getLastError();
        };
        QVERIFY(refusal(twice.left(twice.lastIndexOf("   7 3   H")))
                    .contains(QStringLiteral("cannot be read at line")));
        const QByteArray rowText = "   2 2   O  2S       ";
        QByteArray overflown = twice;
        overflown.replace(twice.lastIndexOf(rowText) + rowText.size(), 10, "**********");
        QVERIFY(refusal(overflown).contains(QStringLiteral("orbital 6 with a number")));
        QVERIFY(refusal(QByteArray(gaussianOutput).replace("4 beta", "3 beta"))
                    .contains(QStringLiteral("closed shell")));

        testSupport::damageFile(twice, 60, 400, [](const QString &damaged) {
            LanqorIndicesCalculation calculation(nullptr, damaged, 1);
            if (!calculation.calculateIndices())
                QVERIFY(!calculation.getLastError().isEmpty());
        });
    }

    /// pop=full of a real output with spherical d functions: the sums of an independent script.
    void realGaussianOutput()
    {
        CORPUS_FILE(path, "gaussian/g16_ch2o_td5050_popfull.log");
        LanqorIndicesCalculation indices(nullptr, scratchCopy(path), 1);
        QVERIFY2(indices.calculateIndices(), qPrintable(indices.getLastError()));
        QCOMPARE(indices.getAtomicCharge().size(), 5);
        const double populations[] = {4.34942, 0.35634, 0.35634};
        const double superdelocalizabilities[] = {-16.82185, -2.07243, -2.26215};
        for (int atom = 2; atom <= 4; ++atom) {
            COMPARE_NEAR(indices.getAtomicCharge(atom), populations[atom - 2], 2.0e-5);
            COMPARE_NEAR(indices.getSuperDeslocalizability(atom), superdelocalizabilities[atom - 2],
                         2.0e-5);
        }
    }

    /// Every cut of the file at or before the table must be refused, and no damage may crash.
    void damagedOutputs()
    {
        const QByteArray whole =
            readAll(dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out")));
        const int begin = whole.indexOf("                EIGENVECTORS");
        const int lastOccupied = whole.indexOf("   Root No.      33");
        QVERIFY(begin > 0 && lastOccupied > begin);
        for (int i = 0; i < 40; ++i) {
            const int length = int(qint64(begin) + (lastOccupied - begin - 400) * i / 40);
            LanqorIndicesCalculation indices(
                nullptr, scratchFile(QStringLiteral("cut.out"), whole.left(length)), 0);
            QVERIFY2(!indices.calculateIndices(), qPrintable(QString::number(length)));
        }
        testSupport::damageFile(whole.mid(0, lastOccupied + 3000), 30, 300,
                                [](const QString &path) {
                                    LanqorIndicesCalculation indices(nullptr, path, 0);
                                    if (!indices.calculateIndices())
                                        QVERIFY(!indices.getLastError().isEmpty());
                                });
    }
};

QTEST_GUILESS_MAIN(TestIndices)
#include "tst_indices.moc"
