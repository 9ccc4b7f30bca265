#include "testSpheres.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

using testSpheres::setChargeFactorAndAlpha;
using testSupport::MessageSpy;

Q_DECLARE_METATYPE(Coord)

namespace {

constexpr double unit = 1e-20; // cm^2

/// A calculation on made-up coordinates.
std::unique_ptr<LanqorOmega> calculationOf(const QVector<Coord> &atoms)
{
    const QString file = testSpheres::xyzFile(QStringLiteral("sphere.xyz"), atoms);
    return std::make_unique<LanqorOmega>(nullptr, 0, file, file);
}

QVector<double> allEqual(int coordNumber, double value)
{
    return QVector<double>(coordNumber + 2, value);
}

/// Optimisation and force job of a complex with two Cl (atoms 2 and 3) and six O.
QString outputWithForces()
{
    return testSupport::dataFile(QStringLiteral("mopac/eu_cl2_h2o6_pm7_allvec_force.out"));
}

QString outputWithoutForces()
{
    return testSupport::dataFile(QStringLiteral("mopac/eu_cl2_h2o6_am1_int.out"));
}

} // namespace

class TestOmega : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void referenceValues_data();
    void referenceValues();
    void geometriesThatAreRefused_data();
    void geometriesThatAreRefused();
    void inputsThatAreRefused();
    void failureLeavesNothing();
    void misplacedAtomsAreNamed();
    void calculationReadsNoFile();
    void structureFileAwaitsChargeFactors();
    void modelQDC();
    void estimateFromBonds();
    void reactivityIndicesThatAreRefused();
};

void TestOmega::referenceValues_data()
{
    QTest::addColumn<QVector<Coord>>("atoms");
    QTest::addColumn<double>("g");
    QTest::addColumn<double>("alpha"); // cubic Angstrom
    QTest::addColumn<QVector<double>>("expected");
    const QVector<Coord> single = testSpheres::oxygens({{0.0, 0.0, 2.4}});
    // Closed forms of the addition theorem, evaluated in two ways to 14 digits.
    QTest::newRow("one O") << single << 1.0 << 1.0
                           << QVector<double>{0.4267870003, 0.0211573619, 0.0464909285};
    QTest::newRow("one O, electric dipole")
        << single << 1.0 << 0.0 << QVector<double>{0.1496615106, 0.0262805432, 0.0687497626};
    QTest::newRow("one O, dynamic coupling")
        << single << 0.0 << 1.0 << QVector<double>{0.5371175960, 0.0324019695, 0.0030082324};
    QTest::newRow("one O elsewhere") << testSpheres::oxygens({{0.0, -2.4, 0.0}}) << 1.0 << 1.0
                                     << QVector<double>{0.4267870003, 0.0211573619, 0.0464909285};
    QTest::newRow("octahedron") << testSpheres::octahedron(2.4) << 1.0 << 1.0
                                << QVector<double>{0.0, 0.0, 0.0};
    QTest::newRow("nine O") << testSpheres::nineOxygens() << 1.0 << 1.0
                            << QVector<double>{0.0181046555, 0.1151352554, 0.4886761745};
}

void TestOmega::referenceValues()
{
    QFETCH(QVector<Coord>, atoms);
    QFETCH(double, g);
    QFETCH(double, alpha);
    QFETCH(QVector<double>, expected);
    const int n = atoms.size() - 1;
    const auto omega = calculationOf(atoms);
    QCOMPARE(omega->getLastError(), QString());
    QCOMPARE(omega->getCoordNumber(), n);
    setChargeFactorAndAlpha(*omega, allEqual(n, g), allEqual(n, alpha * 1e-24));
    QVERIFY2(omega->calcOmega(), qPrintable(omega->getLastError()));
    for (int i = 0; i < 3; ++i)
        COMPARE_NEAR(omega->getOmega(2 * i + 2) / unit, expected.at(i), 2e-10);
    if (alpha == 0.0)
        QCOMPARE(omega->getOmegaED(4), omega->getOmega(4));
    if (g == 0.0)
        QCOMPARE(omega->getOmegaDC(4), omega->getOmega(4));
}

void TestOmega::geometriesThatAreRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("terbium") << QByteArray("2\n\nTb 0 0 0\nO 0 0 2.4\n")
                             << QStringLiteral("Tb atoms[0] isn't Eu");
    QTest::newRow("ion not first")
        << QByteArray("2\n\nO 0 0 2.4\nEu 0 0 0\n") << QStringLiteral("O atoms[0] isn't Eu");
}

void TestOmega::geometriesThatAreRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    const QString file = testSupport::scratchFile(QStringLiteral("refused.xyz"), text);
    LanqorOmega omega(nullptr, 0, file, file);
    QCOMPARE(omega.getLastError(), error);
    omega.setLastError(QString());
    MessageSpy spy(omega);
    setChargeFactorAndAlpha(omega, allEqual(1, 1.0), allEqual(1, 1e-24));
    QVERIFY(!omega.calcOmega());
    QCOMPARE(omega.getLastError(), error);
    QCOMPARE(spy.messages, QStringList(error));
    QCOMPARE(omega.getOmega(2), 0.0);

    const QString gadolinium =
        testSupport::dataFile(QStringLiteral("mopac/gd_no3_3_h2o3_rm1_opt.out"));
    QCOMPARE(LanqorOmega(nullptr, 0, gadolinium, QString()).getLastError(),
             QStringLiteral("Gd atoms[0] isn't Eu"));
}

void TestOmega::inputsThatAreRefused()
{
    LanqorOmega none;
    QVERIFY(none.getLastError().isEmpty());
    QVERIFY(!none.calcOmega());
    QVERIFY(!none.getLastError().isEmpty());
    QVERIFY(none.createOutFile(QString()).isEmpty());

    LanqorOmega missing(nullptr, 0, QStringLiteral("/no/such.out"), QString());
    QCOMPARE(missing.getLastError(), QStringLiteral("/no/such.out does not exist."));
    QVERIFY(!missing.calcOmega());
    QCOMPARE(missing.getLastError(), QStringLiteral("/no/such.out does not exist."));

    const auto omega = calculationOf(testSpheres::octahedron(2.4));
    QVERIFY(!omega->calcOmega()); // nothing set
    QVERIFY(omega->getLastError().contains(QStringLiteral("not set")));
    double *null = nullptr;
    omega->setChargeFactorAndAlpha(null, null);
    QVERIFY(!omega->calcOmega());
    for (const int number : {7, 1000000, 0, -3}) {
        omega->setCoordNumber(number);
        setChargeFactorAndAlpha(*omega, allEqual(std::max(number, 0), 1.0),
                                allEqual(std::max(number, 0), 1e-24));
        QVERIFY2(!omega->calcOmega(), qPrintable(QString::number(number)));
        QVERIFY2(omega->getLastError().contains(QStringLiteral("oordinat")),
                 qPrintable(omega->getLastError()));
    }
    omega->setCoordNumber(4);
    setChargeFactorAndAlpha(*omega, allEqual(4, 1.0), allEqual(4, 1e-24));
    QVERIFY(omega->calcOmega());
    omega->setCoordNumber(5); // the arrays are too short now
    QVERIFY(!omega->calcOmega());
    setChargeFactorAndAlpha(*omega, allEqual(5, std::nan("")), allEqual(5, 1e-24));
    QVERIFY(!omega->calcOmega());

    const auto onIon = calculationOf(testSpheres::oxygens({{0, 0, 2.4}, {0, 0, 0}}));
    setChargeFactorAndAlpha(*onIon, allEqual(2, 1.0), allEqual(2, 1e-24));
    QVERIFY(!onIon->calcOmega());
    QVERIFY(onIon->getLastError().contains(QStringLiteral("Atom 3 (O)")));
}

void TestOmega::failureLeavesNothing()
{
    const auto omega = calculationOf(testSpheres::nineOxygens());
    setChargeFactorAndAlpha(*omega, allEqual(9, 1.0), allEqual(9, 1e-24));
    QVERIFY(omega->calcOmega());
    QVERIFY(!omega->createOutFile(QString()).isEmpty());
    setChargeFactorAndAlpha(*omega, allEqual(9, 2.0), allEqual(9, 1e-24));
    QVERIFY(omega->createOutFile(QString()).isEmpty()); // not those of the last calculation
    setChargeFactorAndAlpha(*omega, allEqual(9, HUGE_VAL), allEqual(9, 1e-24));
    QVERIFY(!omega->calcOmega());
    for (const int lambda : {2, 4, 6}) {
        QCOMPARE(omega->getOmega(lambda), 0.0);
        QCOMPARE(omega->getOmegaED(lambda), 0.0);
        QCOMPARE(omega->getOmegaDC(lambda), 0.0);
    }
    QVERIFY(omega->createOutFile(QString()).isEmpty());
}

void TestOmega::misplacedAtomsAreNamed()
{
    const QString file =
        testSupport::dataFile(QStringLiteral("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out"));
    LanqorOmega omega(nullptr, 0, file, QString());
    QCOMPARE(omega.getCoordNumber(), 9);
    setChargeFactorAndAlpha(omega, allEqual(9, 1.0), allEqual(9, 1e-24));
    MessageSpy counted(omega);
    QVERIFY(omega.calcOmega());
    QCOMPARE(counted.messages.size(), 1);
    QVERIFY(counted.contains(QStringLiteral("N 41")));
    QVERIFY(counted.contains(QStringLiteral("C 2")));
    omega.setCoordNumber(9); // the caller knows what atoms 2 to 10 are
    MessageSpy chosen(omega);
    setChargeFactorAndAlpha(omega, allEqual(9, 1.0), allEqual(9, 1e-24));
    QVERIFY(omega.calcOmega());
    QVERIFY(chosen.messages.isEmpty());
}

void TestOmega::calculationReadsNoFile()
{
    const QVector<Coord> atoms = testSpheres::nineOxygens();
    const QString file = testSpheres::xyzFile(QStringLiteral("passing.xyz"), atoms);
    LanqorOmega omega(nullptr, 0, file, file);
    QVERIFY(QFile::remove(file));
    std::mt19937 random(5);
    for (int trial = 0; trial < 3; ++trial) { // nothing of a trial stays for the next
        const QVector<double> g = testSpheres::randomValues(random, 9, 0.1, 2.0);
        const QVector<double> alpha = testSpheres::randomValues(random, 9, 1e-25, 6e-24);
        setChargeFactorAndAlpha(omega, g, alpha);
        QVERIFY(omega.calcOmega());
        const plainOmega::Result plain =
            plainOmega::omega(testSpheres::toSpherical(atoms), g, alpha);
        COMPARE_NEAR(omega.getOmega(2) / plain.total[2], 1.0, 1e-9);
        COMPARE_NEAR(omega.getOmegaED(6) / plain.ed[6], 1.0, 1e-9);
        COMPARE_NEAR(omega.getOmegaDC(4) / plain.dc[4], 1.0, 1e-9);
        QCOMPARE(omega.getChargeFactor(4), g.at(4));
        QCOMPARE(omega.getAlpha(10), alpha.at(10));
    }
}

void TestOmega::structureFileAwaitsChargeFactors()
{
    const QString structure =
        testSpheres::xyzFile(QStringLiteral("octahedron.xyz"), testSpheres::octahedron(2.5));
    LanqorOmega omega(nullptr, 3, outputWithForces(), structure);
    QCOMPARE(omega.getLastError(), QString());
    QCOMPARE(omega.getCoordNumber(), 6); // that of the structure, not of the output
    QCOMPARE(omega.getChargeModel(), 3);
    QCOMPARE(omega.getOmega(2), 0.0);
    MessageSpy spy(omega);
    QCoreApplication::processEvents();
    QVERIFY(spy.contains(QStringLiteral("zero until")));
}

void TestOmega::modelQDC()
{
    LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
    QCOMPARE(omega.getCoordNumber(), 8);
    std::mt19937 random(2);
    const QVector<double> q = testSpheres::randomValues(random, 8, 0.2, 0.8);
    const QVector<double> s = testSpheres::randomValues(random, 8, 10.0, 40.0);
    omega.setAtomicCharges(q);
    omega.setSuperDeslocalizability(s);
    omega.setParametersQDC(1.7, 0.08, 0.9);
    QVERIFY2(omega.calcOmega(), qPrintable(omega.getLastError()));
    LanqorOmega direct(nullptr, 0, outputWithForces(), QString());
    QVector<double> g(10, 0.0);
    QVector<double> alpha(10, 0.0);
    for (int k = 2; k <= 9; ++k) {
        g[k] = q.at(k) * 1.7;
        alpha[k] = s.at(k) * 0.08 * 1e-24 + 0.9 * 1e-24;
        COMPARE_NEAR(omega.getChargeFactor(k), g.at(k), 1e-15);
        COMPARE_NEAR(omega.getAlpha(k), alpha.at(k), 1e-38);
    }
    setChargeFactorAndAlpha(direct, g, alpha);
    QVERIFY(direct.calcOmega());
    for (const int lambda : {2, 4, 6})
        COMPARE_NEAR(omega.getOmega(lambda) / direct.getOmega(lambda), 1.0, 1e-12);
    omega.setAtomicCharges({}); // off again: g and alpha stay
    QVERIFY(omega.calcOmega());
    COMPARE_NEAR(omega.getOmega(2) / direct.getOmega(2), 1.0, 1e-12);
}

void TestOmega::estimateFromBonds()
{
    LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
    QVector<double> s(10, 25.0);
    omega.setAtomicCharges(QVector<double>(10, -0.5));
    omega.setSuperDeslocalizability(s);
    QVERIFY2(omega.calcOmega(), qPrintable(omega.getLastError()));

    LanqorInputData data(nullptr, outputWithForces());
    QVERIFY(data.readMopacOutFile(false) && data.createSphericalCoordinate());
    QVERIFY(data.readForceConstant(outputWithForces(), 8));
    double minimum = 10.0;
    for (int k = 2; k <= 9; ++k)
        minimum = std::min(minimum, data.getCoordSPH(k).r);
    const double polarisability = 4.2669775857 + 0.0432505996 * 25.0;
    for (int k = 2; k <= 9; ++k) {
        const double r = data.getCoordSPH(k).r;
        if (data.getAtomLabel(k) == QLatin1String("Cl")) {
            QCOMPARE(omega.getChargeFactor(k), 1.0);
            COMPARE_NEAR(omega.getAlpha(k) * 1e24, polarisability, 1e-12);
            continue;
        }
        // In Angstrom, mdyn and their energy unit mdyn Angstrom = 1e-11 erg.
        const double energy = minimum / r * 0.315593115 * 4.2925651759;
        const double g = r * std::sqrt(data.getForceConstant(k - 2) / (2.0 * energy));
        const double rho = 0.05 * std::pow(minimum / r, 3.5);
        const double e2 = 2.307077352370616e-19 / 1e-19; // mdyn Angstrom^2
        COMPARE_NEAR(omega.getChargeFactor(k), g, 1e-9);
        QVERIFY(g > 0.1 && g < 5.0);
        COMPARE_NEAR(omega.getAlpha(k) * 1e24,
                     e2 * rho * rho * r * r / (2.0 * energy) + polarisability, 1e-9);
    }
}

void TestOmega::reactivityIndicesThatAreRefused()
{
    const QVector<double> full(10, 0.5);
    LanqorOmega noForces(nullptr, 0, outputWithoutForces(), QString());
    QCOMPARE(noForces.getLastError(), QString());
    const QVector<double> enough(noForces.getCoordNumber() + 2, 0.5);
    setChargeFactorAndAlpha(noForces, enough, enough);
    QVERIFY(noForces.calcOmega());
    noForces.setAtomicCharges(enough);
    noForces.setSuperDeslocalizability(enough);
    noForces.setParametersQDC(1.0, 0.1, 1.0);
    QVERIFY(!noForces.calcOmega());
    LanqorInputData reader(nullptr, outputWithoutForces());
    QVERIFY(!reader.readForceConstant(outputWithoutForces(), noForces.getCoordNumber()));
    QCOMPARE(noForces.getLastError(), reader.getLastError());
    QCOMPARE(noForces.getOmega(2), 0.0);

    for (const bool shortCharges : {true, false}) {
        LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
        omega.setAtomicCharges(shortCharges ? full.mid(1) : full);
        omega.setSuperDeslocalizability(shortCharges ? full : full.mid(1));
        QVERIFY(!omega.calcOmega());
        omega.setParametersQDC(1.0, 0.1, 1.0);
        QVERIFY(!omega.calcOmega());
        QVERIFY(omega.getLastError().contains(QStringLiteral("superdelocalizabilities")));
    }
}

QTEST_GUILESS_MAIN(TestOmega)
#include "tst_omega.moc"
