#include "testSpheres.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/OmegaResults.h>

#include <QtTest>

using testSpheres::setChargeFactorAndAlpha;
using testSupport::MessageSpy;

namespace {

/// A calculation on made-up coordinates.
std::unique_ptr<LanqorOmega> calculationOf(const QVector<Coord> &atoms)
{
    const QString file = testSpheres::xyzFile("sphere.xyz", atoms);
    return std::make_unique<LanqorOmega>(nullptr, 0, file, file);
}

/// The same g and alpha (cm^3) for every coordinated atom.
void setAllEqual(LanqorOmega &omega, double g, double alpha)
{
    const int entries = std::max(omega.getCoordNumber(), 0) + 2;
    setChargeFactorAndAlpha(omega, QVector<double>(entries, g), QVector<double>(entries, alpha));
}

/// Optimisation and force job of a complex with two Cl (atoms 2 and 3) and six O.
QString outputWithForces()
{
    return testSupport::dataFile("mopac/eu_cl2_h2o6_pm7_allvec_force.out");
}

QString outputWithoutForces()
{
    return testSupport::dataFile("mopac/eu_cl2_h2o6_am1_int.out");
}

} // namespace

class TestOmega : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void geometriesThatAreRefused();
    void inputsThatAreRefused();
    void misplacedAtomsAreNamed();
    void calculationReadsNoFile();
    void structureFileAwaitsChargeFactors();
    void modelQDC();
    void estimateFromBonds();
    void reactivityIndicesThatAreRefused();
    void givenGeometryAndVectors();
};

void TestOmega::geometriesThatAreRefused()
{
    const QString terbium = testSupport::scratchFile("tb.xyz", "2\n\nTb 0 0 0\nO 0 0 2.4\n");
    const QMap<QString, QString> errors = {
        {terbium, "Tb atoms[0] isn't Eu"},
        {testSupport::dataFile("mopac/gd_no3_3_h2o3_rm1_opt.out"), "Gd atoms[0] isn't Eu"},
        {"/no/such.out", "/no/such.out does not exist."},
    };
    for (const QString &file : errors.keys()) {
        LanqorOmega omega(nullptr, 0, file, file.endsWith("xyz") ? file : QString());
        QCOMPARE(omega.getLastError(), errors.value(file));
        omega.setLastError(QString());
        MessageSpy spy(omega);
        setAllEqual(omega, 1.0, 1e-24);
        QVERIFY(!omega.calcOmega());
        QCOMPARE(omega.getLastError(), errors.value(file));
        QCOMPARE(spy.messages, QStringList(errors.value(file)));
    }
    LanqorOmega none;
    QVERIFY(none.getLastError().isEmpty() && !none.calcOmega() && !none.getLastError().isEmpty());
}

void TestOmega::inputsThatAreRefused()
{
    const auto omega = calculationOf(testSpheres::octahedron(2.4));
    QVERIFY(!omega->calcOmega()); // nothing set
    QVERIFY(omega->getLastError().contains("not set"));
    double *null = nullptr;
    omega->setChargeFactorAndAlpha(null, null);
    QVERIFY(!omega->calcOmega());
    for (const int number : {7, 1000000, 0, -3}) {
        omega->setCoordNumber(number);
        setAllEqual(*omega, 1.0, 1e-24);
        QVERIFY2(!omega->calcOmega(), qPrintable(QString::number(number)));
        QVERIFY2(omega->getLastError().contains("oordinat"), qPrintable(omega->getLastError()));
    }
    omega->setCoordNumber(4);
    setAllEqual(*omega, 1.0, 1e-24);
    QVERIFY(omega->calcOmega());
    QVERIFY(!omega->createOutFile(QString()).isEmpty());
    setAllEqual(*omega, 2.0, 1e-24);
    QVERIFY(omega->createOutFile(QString()).isEmpty()); // not those of the last calculation
    omega->setCoordNumber(5);                           // the arrays are too short now
    QVERIFY(!omega->calcOmega());
    for (const double g : {std::nan(""), HUGE_VAL}) {
        setAllEqual(*omega, g, 1e-24);
        QVERIFY(!omega->calcOmega());
        for (const int lambda : {2, 4, 6}) // nothing is left
            QVERIFY(omega->getOmega(lambda) == 0.0 && omega->getOmegaED(lambda) == 0.0);
    }
    const auto onIon = calculationOf(testSpheres::oxygens({{0, 0, 2.4}, {0, 0, 1e-9}}));
    setAllEqual(*onIon, 1.0, 1e-24);
    QVERIFY(!onIon->calcOmega() && onIon->getLastError().contains("Atom 3 (O)"));
}

void TestOmega::misplacedAtomsAreNamed()
{
    const QString file = testSupport::dataFile("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out");
    LanqorOmega omega(nullptr, 0, file, QString());
    setAllEqual(omega, 1.0, 1e-24);
    MessageSpy counted(omega);
    QVERIFY(omega.calcOmega());
    QCOMPARE(counted.messages.size(), 1);
    QVERIFY(counted.contains("N 41") && counted.contains("C 2"));
    omega.setCoordNumber(9); // the caller knows what atoms 2 to 10 are
    MessageSpy chosen(omega);
    setAllEqual(omega, 1.0, 1e-24);
    QVERIFY(omega.calcOmega() && chosen.messages.isEmpty());
}

void TestOmega::calculationReadsNoFile()
{
    const QVector<Coord> atoms = testSpheres::nineOxygens();
    const QString file = testSpheres::xyzFile("passing.xyz", atoms);
    LanqorOmega omega(nullptr, 0, file, file);
    QVERIFY(QFile::remove(file));
    std::mt19937 random(5);
    for (int trial = 0; trial < 2; ++trial) { // nothing of a trial stays for the next
        const QVector<double> g = testSpheres::randomValues(random, 9, 0.1, 2.0);
        const QVector<double> alpha = testSpheres::randomValues(random, 9, 1e-25, 6e-24);
        setChargeFactorAndAlpha(omega, g, alpha);
        QVERIFY(omega.calcOmega());
        const auto plain = plainOmega::omega(testSpheres::toSpherical(atoms), g, alpha);
        for (const int lambda : {2, 4, 6}) {
            COMPARE_NEAR(omega.getOmega(lambda) / plain.total[lambda], 1.0, 1e-9);
            COMPARE_NEAR(omega.getOmegaED(lambda) / plain.ed[lambda], 1.0, 1e-9);
            COMPARE_NEAR(omega.getOmegaDC(lambda) / plain.dc[lambda], 1.0, 1e-9);
        }
        QVERIFY(omega.getChargeFactor(4) == g.at(4) && omega.getAlpha(10) == alpha.at(10));
    }
}

void TestOmega::structureFileAwaitsChargeFactors()
{
    const QString structure = testSpheres::xyzFile("octahedron.xyz", testSpheres::octahedron(2.5));
    LanqorOmega omega(nullptr, 3, outputWithForces(), structure);
    QCOMPARE(omega.getLastError(), QString());
    QCOMPARE(omega.getCoordNumber(), 6); // that of the structure, not of the output
    QCOMPARE(omega.getChargeModel(), 3);
    QCOMPARE(omega.getOmega(2), 0.0);
    MessageSpy spy(omega);
    QCoreApplication::processEvents();
    QVERIFY(spy.contains("zero until"));
}

void TestOmega::modelQDC()
{
    LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
    std::mt19937 random(2);
    const QVector<double> q = testSpheres::randomValues(random, 8, 0.2, 0.8);
    const QVector<double> s = testSpheres::randomValues(random, 8, 10.0, 40.0);
    omega.setAtomicCharges(q);
    omega.setSuperDeslocalizability(s);
    omega.setParametersQDC(1.7, 0.08, 0.9);
    QVERIFY2(omega.calcOmega(), qPrintable(omega.getLastError()));
    for (int k = 2; k <= 9; ++k) {
        COMPARE_NEAR(omega.getChargeFactor(k), q.at(k) * 1.7, 1e-15);
        COMPARE_NEAR(omega.getAlpha(k), s.at(k) * 0.08 * 1e-24 + 0.9 * 1e-24, 1e-38);
    }
    const double omega2 = omega.getOmega(2);
    omega.setAtomicCharges({}); // off again: g and alpha stay
    QVERIFY(omega.calcOmega());
    QCOMPARE(omega.getOmega(2), omega2);
}

void TestOmega::estimateFromBonds()
{
    LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
    omega.setAtomicCharges(QVector<double>(10, -0.5));
    omega.setSuperDeslocalizability(QVector<double>(10, 25.0));
    QVERIFY2(omega.calcOmega(), qPrintable(omega.getLastError()));

    LanqorInputData data(nullptr, outputWithForces());
    QVERIFY(data.readMopacOutFile(false) && data.createSphericalCoordinate());
    QVERIFY(data.readForceConstant(outputWithForces(), 8));
    const double minimum = plainOmega::nearest(data.getCoordSPH().mid(0, 9));
    const double polarisability = 4.2669775857 + 0.0432505996 * 25.0;
    for (int k = 2; k <= 9; ++k) {
        const CoordSPH atom = data.getCoordSPH(k);
        const double rho = plainOmega::rho(atom, minimum);
        // In Angstrom, mdyn and their energy unit mdyn Angstrom = 1e-11 erg.
        const double energy = minimum / atom.r * 0.315593115 * 4.2925651759;
        const double e2 = 2.307077352370616e-19 / 1e-19; // mdyn Angstrom^2
        const bool isChlorine = atom.label == "Cl";
        const double g = atom.r * std::sqrt(data.getForceConstant(k - 2) / (2.0 * energy));
        COMPARE_NEAR(omega.getChargeFactor(k), isChlorine ? 1.0 : g, 1e-9);
        QVERIFY(g > 0.1 && g < 5.0);
        const double ofBond = e2 * rho * rho * atom.r * atom.r / (2.0 * energy);
        COMPARE_NEAR(omega.getAlpha(k) * 1e24, polarisability + (isChlorine ? 0.0 : ofBond), 1e-9);
    }
    QVERIFY(omega.createOutFile(QString()).contains("an estimate from the force constants"));

    // An element without an estimate needs values of its own, at every try.
    QByteArray text = testSupport::readAll(outputWithForces());
    const QString bromide = testSupport::scratchFile("br.out", text.replace(" Cl ", " Br "));
    LanqorOmega without(nullptr, 0, bromide, QString());
    without.setCoordNumber(8);
    without.setAtomicCharges(QVector<double>(10, -0.5));
    without.setSuperDeslocalizability(QVector<double>(10, 25.0));
    for (int attempt = 0; attempt < 2; ++attempt) {
        QVERIFY(!without.calcOmega());
        QVERIFY2(without.getLastError().contains("Br"), qPrintable(without.getLastError()));
    }
    setAllEqual(without, 0.7, 2e-24);
    QVERIFY(without.calcOmega());
    QCOMPARE(without.getChargeFactor(2), 0.7);
}

void TestOmega::reactivityIndicesThatAreRefused()
{
    LanqorOmega noForces(nullptr, 0, outputWithoutForces(), QString());
    const QVector<double> enough(noForces.getCoordNumber() + 2, 0.5);
    noForces.setAtomicCharges(enough);
    noForces.setSuperDeslocalizability(enough);
    noForces.setParametersQDC(1.0, 0.1, 1.0);
    QVERIFY(!noForces.calcOmega());
    LanqorInputData reader(nullptr, outputWithoutForces());
    QVERIFY(!reader.readForceConstant(outputWithoutForces(), noForces.getCoordNumber()));
    QCOMPARE(noForces.getLastError(), reader.getLastError());

    for (const int charges : {9, 10}) { // one vector is too short
        LanqorOmega omega(nullptr, 0, outputWithForces(), QString());
        omega.setAtomicCharges(QVector<double>(charges, 0.5));
        omega.setSuperDeslocalizability(QVector<double>(19 - charges, 0.5));
        QVERIFY(!omega.calcOmega());
        omega.setParametersQDC(1.0, 0.1, 1.0);
        QVERIFY(!omega.calcOmega());
        QVERIFY(omega.getLastError().contains("superdelocalizabilities"));
    }
}

// The same as of a file and of arrays.
void TestOmega::givenGeometryAndVectors()
{
    LanqorInputData data(nullptr, outputWithForces());
    QVERIFY(data.readMopacOutFile(false)); // its spherical coordinates are made
    LanqorOmega given(nullptr, 0, &data);
    LanqorOmega read(nullptr, 0, outputWithForces(), QString());
    std::mt19937 random(11);
    const QVector<double> g = testSpheres::randomValues(random, 8, 0.2, 2.0);
    const QVector<double> alpha = testSpheres::randomValues(random, 8, 1e-24, 6e-24);
    QVERIFY(given.setChargeFactorAndAlpha(g, alpha));
    setChargeFactorAndAlpha(read, g, alpha);
    QVERIFY(given.calcOmega() && read.calcOmega());
    QCOMPARE(given.getOmega(2), read.getOmega(2));
    OmegaPrintingOptions options;
    options.printChargeFactors = true;
    given.setOmegaPrintingOptions(options);
    const QString report = testSupport::scratchFile("given.txt", QByteArray());
    QVERIFY(!given.createOutFile(report).isEmpty());
    COMPARE_NEAR(LanqorOmega(nullptr, 0, &data, report).getOmega(2) / read.getOmega(2), 1.0, 1e-3);
    QVERIFY(LanqorOmega(nullptr, 0, &data, "none").getLastError().contains("none"));

    QVERIFY(!given.setChargeFactorAndAlpha(g, alpha.mid(1)));
    QVERIFY(given.getLastError().contains("there are 10 and 9 entries"));
    QVERIFY(!given.calcOmega());
    given.setAtomicCharges(g); // the force constants are those of the geometry's file
    given.setSuperDeslocalizability(g);
    QVERIFY2(given.calcOmega(), qPrintable(given.getLastError()));

    LanqorInputData *const none = nullptr;
    LanqorOmega without(nullptr, 0, none);
    QVERIFY(!without.getLastError().isEmpty() && !without.setChargeFactorAndAlpha(g, alpha));
    QVERIFY(!without.calcOmega() && !without.getResults().isCalculated);
}

QTEST_GUILESS_MAIN(TestOmega)
#include "tst_omega.moc"
