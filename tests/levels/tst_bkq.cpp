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

/// B(k,q) of one atom by the formula as it is written, k = 2, 4, 6.
Complex plainBkq(int k, int q, const CoordSPH &atom, double minimum, double g, double ro0)
{
    const double e2 = 2.307077352370616e-19;
    const double rho = ro0 * std::pow(minimum / atom.r, 3.5);
    double beta = 1.0;
    if (atom.label == QLatin1String("O") || atom.label == QLatin1String("F"))
        beta = 1.0 / (1.0 + rho);
    else if (atom.label == QLatin1String("N") || atom.label == QLatin1String("Cl"))
        beta = 1.0 / (1.0 - rho);
    const Complex y = q >= 0 ? std::conj(plainOmega::harmonic(k, q, atom))
                             : (q % 2 ? -1.0 : 1.0) * plainOmega::harmonic(k, -q, atom);
    return 5.03411751e+15 * plainOmega::radial(k) * e2 * g * rho * std::pow(2.0 * beta, k + 1) *
           std::sqrt(4.0 * M_PI / (2 * k + 1)) * y / std::pow(atom.r * 1e-8, k + 1);
}

double minimumOf(const QVector<CoordSPH> &atoms)
{
    double minimum = 1e4;
    for (int j = 1; j < atoms.size(); ++j)
        minimum = std::min(minimum, atoms.at(j).r);
    return minimum;
}

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
    void intensityReport();
    void plainFormula();
    void oneAtomOnTheAxis();
    void unusableStructures_data();
    void unusableStructures();
    void missingInput();
    void damagedStructures();
};

void TestBkq::plainFormula()
{
    std::mt19937 random(7);
    for (int sphere = 0; sphere < 5; ++sphere) {
        const QVector<Coord> atoms = testSpheres::randomSphere(random, 5 + sphere);
        const QVector<CoordSPH> positions = testSpheres::toSpherical(atoms);
        const double minimum = minimumOf(positions);
        const int N = atoms.size() - 1;
        QVector<double> g = testSpheres::randomValues(random, N, 0.1, 1.5);
        double *array = g.data();
        LanqorBkq bkq(testSpheres::xyzFile(QStringLiteral("sphere.xyz"), atoms), N);
        QCOMPARE(bkq.getLastError(), QString());
        QCOMPARE(bkq.getAtomsNumber(), N);
        bkq.setChargeFactors(array);
        for (const double ro0 : {0.05, 0.0801}) {
            QVERIFY(bkq.calculateRO(ro0));
            for (int a = 1; a <= N; ++a) {
                QCOMPARE(bkq.getAtomLabel(a + 1), atoms.at(a).label);
                for (int k = 2; k <= 6; k += 2)
                    for (int q = -k; q <= k; ++q)
                        COMPARE_COMPLEX(bkq.getBkq(k, q, a),
                                        plainBkq(k, q, positions.at(a), minimum, g.at(a + 1), ro0),
                                        1e-7);
            }
            Complex sum;
            for (int a = 1; a <= N; ++a)
                sum += Complex(bkq.getBkq(4, 3, a).real, bkq.getBkq(4, 3, a).imag);
            COMPARE_COMPLEX(bkq.getBkq(4, 3), sum, 1e-9);
        }
        // The array is the caller's: a new value shows without another call.
        const double before = bkq.getBkq(2, 0, 1).real;
        g[2] *= 2.0;
        COMPARE_NEAR(bkq.getBkq(2, 0, 1).real, 2.0 * before, 1e-10);
    }
}

// An atom above the ion: Y(k,0) = sqrt((2k+1)/4pi), all others 0. One O at 2.4 Angstrom with
// overlap 0.05 in closed form: e^2/R in cm^-1 is 116140.97/2.4.
void TestBkq::oneAtomOnTheAxis()
{
    LanqorBkq bkq(
        testSpheres::xyzFile(QStringLiteral("axis.xyz"), testSpheres::oxygens({{0.0, 0.0, 2.4}})),
        1);
    double g[] = {0.0, 0.0, 1.0};
    double *array = g;
    bkq.setChargeFactors(array);
    QVERIFY(bkq.calculateRO(0.05));
    const double ratio = 2.0 / 1.05 * 0.52917721092 / 2.4; // 2 beta a0/R
    const double energy = 116140.97 / 2.4 * 0.05 * 2.0 / 1.05;
    COMPARE_NEAR(bkq.getBkq(2, 0).real / (energy * 0.9175 * std::pow(ratio, 2)), 1.0, 1e-6);
    COMPARE_NEAR(bkq.getBkq(4, 0).real / (energy * 2.02 * std::pow(ratio, 4)), 1.0, 1e-6);
    COMPARE_NEAR(bkq.getBkq(6, 0).real / (energy * 9.039 * std::pow(ratio, 6)), 1.0, 1e-6);
    for (int k = 2; k <= 6; k += 2)
        for (int q = 1; q <= k; ++q)
            COMPARE_COMPLEX(bkq.getBkq(k, q), Complex(), 1e-12);
}

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

void TestBkq::damagedStructures()
{
    const QString file = structureFixture("structures/eu_acac3_h2o.xyz");
    QVector<double> g(40, 0.8);
    double *array = g.data();
    int usable = 0;
    testSupport::damageFile(testSupport::readAll(file), 50, 1000, [&](const QString &path) {
        LanqorBkq bkq(path, 8);
        if (bkq.getAtomsNumber() == 0) {
            QVERIFY(!bkq.getLastError().isEmpty());
            return;
        }
        ++usable;
        bkq.setChargeFactors(array);
        QVERIFY(bkq.calculateRO(0.0801));
        QVERIFY(std::isfinite(bkq.getBkq(6, 3).imag));
    });
    QVERIFY(usable > 0);
}

// The intensity report prints the same parameters at its own overlap.
void TestBkq::intensityReport()
{
    const QString file = structureFixture("mopac/eu_acac3_phen_am1_allvec.out");
    QVector<double> g = {0.0, 0.0, 0.5, 0.6, 0.7, 0.8, 0.55, 0.65, 0.9, 1.1};
    QVector<double> alpha(g.size(), 1e-24);
    LanqorOmega omega(nullptr, 0, file, file);
    omega.setCoordNumber(8);
    testSpheres::setChargeFactorAndAlpha(omega, g, alpha);
    QVERIFY2(omega.calcOmega(), qPrintable(omega.getLastError()));
    OmegaPrintingOptions options;
    options.printBkq = true;
    omega.setOmegaPrintingOptions(options);
    const QString report = omega.createOutFile(QString());

    LanqorBkq bkq(file, 0);
    double *array = g.data();
    bkq.setChargeFactors(array);
    QVERIFY(bkq.calculateRO(0.05));
    const QRegularExpression row(
        QStringLiteral("  Bkq\\((\\d),(\\d)\\) = +(-?[0-9.]+) \\+ +(-?[0-9.]+)i cm\\^-1"));
    int rows = 0;
    for (auto match = row.globalMatch(report); match.hasNext(); ++rows) {
        const QRegularExpressionMatch found = match.next();
        COMPARE_COMPLEX(bkq.getBkq(found.captured(1).toInt(), found.captured(2).toInt()),
                        Complex(found.captured(3).toDouble(), found.captured(4).toDouble()),
                        0.00501);
    }
    QCOMPARE(rows, 3 + 5 + 7);
}

QTEST_GUILESS_MAIN(TestBkq)
#include "tst_bkq.moc"
