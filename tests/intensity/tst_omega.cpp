#include "testSpheres.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/OmegaResults.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using testSpheres::setChargeFactorAndAlpha;
using testSupport::MessageSpy;

namespace {

constexpr double unit = 1e-20; // cm^2

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
    void referenceValues();
    void geometriesThatAreRefused();
    void inputsThatAreRefused();
    void misplacedAtomsAreNamed();
    void calculationReadsNoFile();
    void structureFileAwaitsChargeFactors();
    void modelQDC();
    void estimateFromBonds();
    void reactivityIndicesThatAreRefused();
    void givenGeometryAndVectors();
    void resultsAsTables();
};

void TestOmega::referenceValues()
{
    const QVector<Coord> single = testSpheres::oxygens({{0.0, -2.4, 0.0}});
    const struct
    {
        QVector<Coord> atoms;
        double g;
        double alpha;       // cubic Angstrom
        double expected[3]; // by closed forms of the addition theorem, 1e-20 cm^2
    } cases[] = {
        {single, 1.0, 1.0, {0.4267870003, 0.0211573619, 0.0464909285}},
        {single, 1.0, 0.0, {0.1496615106, 0.0262805432, 0.0687497626}}, // electric dipole
        {single, 0.0, 1.0, {0.5371175960, 0.0324019695, 0.0030082324}}, // dynamic coupling
        {testSpheres::octahedron(2.4), 1.0, 1.0, {0.0, 0.0, 0.0}},
        {testSpheres::nineOxygens(), 1.0, 1.0, {0.0181046555, 0.1151352554, 0.4886761745}},
    };
    for (const auto &sphere : cases) {
        const auto omega = calculationOf(sphere.atoms);
        QCOMPARE(omega->getLastError(), QString());
        QCOMPARE(omega->getCoordNumber(), sphere.atoms.size() - 1);
        setAllEqual(*omega, sphere.g, sphere.alpha * 1e-24);
        QVERIFY2(omega->calcOmega(), qPrintable(omega->getLastError()));
        for (const int lambda : {2, 4, 6}) {
            const double expected = sphere.expected[lambda / 2 - 1];
            COMPARE_NEAR(omega->getOmega(lambda) / unit, expected, 2e-10);
            if (sphere.alpha == 0.0)
                QCOMPARE(omega->getOmegaED(lambda), omega->getOmega(lambda));
            if (sphere.g == 0.0)
                QCOMPARE(omega->getOmegaDC(lambda), omega->getOmega(lambda));
        }
    }
}

void TestOmega::geometriesThatAreRefused()
{
    const QString terbium = testSupport::scratchFile("tb.xyz", "2\n\nTb 0 0 0\nO 0 0 2.4\n");
    const QString last = testSupport::scratchFile("last.xyz", "2\n\nO 0 0 2.4\nEu 0 0 0\n");
    const QMap<QString, QString> errors = {
        {terbium, "Tb atoms[0] isn't Eu"},
        {last, "O atoms[0] isn't Eu"},
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
    for (const double distance : {0.0, 1e-9}) {
        const auto onIon = calculationOf(testSpheres::oxygens({{0, 0, 2.4}, {0, 0, distance}}));
        setAllEqual(*onIon, 1.0, 1e-24);
        QVERIFY(!onIon->calcOmega());
        QVERIFY(onIon->getLastError().contains("Atom 3 (O)"));
    }
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
        const double plain = plainOmega::omega(testSpheres::toSpherical(atoms), g, alpha).total[2];
        COMPARE_NEAR(omega.getOmega(2) / plain, 1.0, 1e-9);
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

void TestOmega::resultsAsTables()
{
    const auto omega = calculationOf(testSpheres::nineOxygens());
    std::mt19937 random(12);
    setChargeFactorAndAlpha(*omega, testSpheres::randomValues(random, 9, 0.2, 2.0),
                            testSpheres::randomValues(random, 9, 1e-24, 6e-24));
    omega->setLigandAtomsByLigandVector({"A 2 3", "B 4 5 6 7 8 9 10"});
    QVERIFY(omega->calcOmega());
    const QJsonObject json =
        QJsonDocument::fromJson(LanqorOmega::makeTables(omega->getResults()).toJson()).object();
    const auto value = [](const QJsonValue &row, const char *key) {
        return row[QLatin1String(key)][QLatin1String("value")].toDouble();
    };
    const QJsonValue parameters = json["intensity_parameters"];
    COMPARE_NEAR(value(parameters, "omega_2") * unit, omega->getOmega(2), 1e-32);
    COMPARE_NEAR(value(parameters, "omega_ed_4") * unit, omega->getOmegaED(4), 1e-32);
    COMPARE_NEAR(value(parameters, "omega_dc_6") * unit, omega->getOmegaDC(6), 1e-32);
    const QJsonValue atom = json["atoms"].toArray().at(3);
    QCOMPARE(atom["atom_from_1"].toInt(), 5);
    COMPARE_NEAR(value(atom, "polarisability"), omega->getAlpha(5) * 1e24, 1e-12);
    const double rate = value(json["emission"], "radiative_rate");
    COMPARE_NEAR(value(json["emission"], "radiative_lifetime") * rate, 1000.0, 1e-9);
    double percent = 0.0;
    for (const QJsonValue band : json["emission_bands"].toArray())
        percent += value(band, "branching_ratio");
    COMPARE_NEAR(percent, 100.0, 1e-9);
    const double electricDipole = value(json["emission"], "electric_dipole_rate");
    for (const char *table : {"partition_by_atom", "partition_by_group"}) {
        double sum = 0.0;
        for (const QJsonValue share : json[QLatin1String(table)].toArray())
            sum += value(share, "electric_dipole_rate");
        COMPARE_NEAR(sum / electricDipole, 1.0, 1e-9);
    }
    double omega2 = 0.0; // from the amplitudes
    for (const QJsonValue B : json["amplitudes"].toArray()) {
        const int t = B["t"].toInt();
        if (B["lambda"].toInt() == 2)
            omega2 += 5.0 / (2 * t + 1) * (B["p"].toInt() == 0 ? 1.0 : 2.0) *
                      (std::pow(value(B, "electric_dipole_real_part") +
                                    value(B, "dynamic_coupling_real_part"),
                                2) +
                       std::pow(value(B, "electric_dipole_imaginary_part") +
                                    value(B, "dynamic_coupling_imaginary_part"),
                                2));
    }
    COMPARE_NEAR(omega2 / omega->getOmega(2), 1.0, 1e-9);
}

QTEST_GUILESS_MAIN(TestOmega)
#include "tst_omega.moc"
