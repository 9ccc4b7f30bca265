#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/LanqorOmega.h>

#include "../intensity/testSpheres.h"
#include "TestSupport.h"

#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <complex>
#include <random>

using Complex = std::complex<double>;

namespace {

QString structureFixture(const char *name)
{
    return testSupport::dataFile(QLatin1String(name));
}

} // namespace

#define COMPARE_COMPLEX(actual, expected, tolerance)                                               \
    do {                                                                                           \
        const MyComplex value = (actual);                                                          \
        const Complex wanted = (expected);                                                         \
        COMPARE_NEAR(value.real, wanted.real(), tolerance);                                        \
        COMPARE_NEAR(value.imag, wanted.imag(), tolerance);                                        \
    } while (false)

class TestBkq : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unusableStructures_data();
    void unusableStructures();
    void missingInput();
};

void TestBkq::unusableStructures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("coordNumber");
    QTest::addColumn<QString>("message");
    const QString good = structureFixture("structures/eu_acac3_h2o.xyz");
    QTest::newRow("missing") << QStringLiteral("/no/such.xyz") << 0
                             << QStringLiteral("/no/such.xyz does not exist.");
    QTest::newRow("gadolinium") << structureFixture("mopac/gd_no3_3_h2o3_rm1_opt.out") << 0
                                << QStringLiteral("Gd atoms[0] isn't Eu");
    QTest::newRow("unordered") << structureFixture(
                                      "mopac/eu_terpy_acac_no3_2_am1_int_unordered.out")
                               << 0 << QStringLiteral("Reorder");
    QTest::newRow("nothing near") << testSpheres::xyzFile(QStringLiteral("far.xyz"),
                                                          testSpheres::octahedron(4.0))
                                  << 0 << QStringLiteral("far.xyz");
    QTest::newRow("an atom on the ion")
        << testSpheres::xyzFile(QStringLiteral("on.xyz"), testSpheres::oxygens({{0, 0, 0}})) << 1
        << QStringLiteral("lies on the ion");
    QTest::newRow("too many") << good << 100000 << QStringLiteral("100000");
    QTest::newRow("negative") << good << -1 << QStringLiteral("eu_acac3_h2o.xyz");
}

void TestBkq::unusableStructures()
{
    QFETCH(QString, file);
    QFETCH(int, coordNumber);
    QFETCH(QString, message);
    LanqorBkq bkq(file, coordNumber);
    QVERIFY2(bkq.getLastError().contains(message), qPrintable(bkq.getLastError()));
    QCOMPARE(bkq.getAtomsNumber(), 0);
    double g[4] = {};
    double *array = g;
    bkq.setChargeFactors(array);
    QVERIFY(!bkq.calculateRO(0.05));
    QCOMPARE(bkq.getBkq(2, 0).real, 0.0);
    QCOMPARE(bkq.getBkq(2, 0, 1).real, 0.0);
    QVERIFY(!bkq.getLastError().isEmpty());
}

void TestBkq::missingInput()
{
    LanqorBkq bkq(structureFixture("structures/eu_acac3_h2o.xyz"), 0);
    const int N = bkq.getAtomsNumber();
    QVector<double> g(N + 2, 0.8);
    double *array = g.data();
    QVERIFY(bkq.calculateRO(0.05));
    QCOMPARE(bkq.getBkq(2, 0, 1).real, 0.0);
    bkq.setChargeFactors(array);
    QVERIFY(bkq.getBkq(2, 0, 1).real != 0.0);
    for (const double wrong : {-0.1, 1.0, std::nan("")}) {
        QVERIFY(!bkq.calculateRO(wrong));
        QVERIFY(bkq.getLastError().contains(QStringLiteral("ro0")));
        QCOMPARE(bkq.getBkq(2, 0, 1).real, 0.0);
    }
    QVERIFY(bkq.calculateRO(0.05));
    QVERIFY(bkq.getLastError().isEmpty());
    for (const auto &[k, q, a] :
         {std::array<int, 3>{3, 0, 1}, {8, 0, 1}, {2, 3, 1}, {0, 0, 1}, {2, 0, 0}, {2, 0, N + 1}})
        QCOMPARE(bkq.getBkq(k, q, a).real, 0.0);
    QCOMPARE(bkq.getAtomLabel(1), QStringLiteral("Eu"));
    QCOMPARE(bkq.getAtomLabel(0), QString());
    QCOMPARE(bkq.getAtomLabel(1000), QString());
}

QTEST_GUILESS_MAIN(TestBkq)
#include "tst_bkq.moc"
