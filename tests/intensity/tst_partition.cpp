#include "testSpheres.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

namespace {

/// A geometry read from made-up coordinates.
std::unique_ptr<LanqorInputData> geometryOf(const QVector<Coord> &atoms)
{
    auto data = std::make_unique<LanqorInputData>(
        nullptr, testSpheres::xyzFile(QStringLiteral("partition.xyz"), atoms));
    if (!data->readXYZFile() || !data->createSphericalCoordinate())
        qFatal("%s", qPrintable(data->getLastError()));
    return data;
}

/// Eight atoms with random g and alpha, partitioned.
struct Case
{
    explicit Case(unsigned seed, double index = 1.5)
        : random(seed)
        , atoms(testSpheres::randomSphere(random, 8))
        , geometry(geometryOf(atoms))
        , shared(geometry.get())
        , partition(nullptr, shared, 8, index)
    {
        g = testSpheres::randomValues(random, 8, 0.2, 2.0);
        alpha = testSpheres::randomValues(random, 8, 0.5e-24, 6e-24);
        setValues();
    }

    void setValues()
    {
        double *gArray = g.data();
        double *alphaArray = alpha.data();
        partition.setChargeFactorAndAlpha(gArray, alphaArray);
    }

    /// Arad(ED) from the plain sums of Omega.
    double expectedRate() const
    {
        const plainOmega::Result omega = plainOmega::omega(geometry->getCoordSPH(), g, alpha);
        double rate = 0.0;
        for (const int lambda : {2, 4, 6})
            rate += partition.calcConstArad(lambda) * omega.total[static_cast<std::size_t>(lambda)];
        return rate;
    }

    std::mt19937 random;
    QVector<Coord> atoms;
    std::unique_ptr<LanqorInputData> geometry;
    LanqorInputData *shared;
    LanqorAradPartition partition;
    QVector<double> g;
    QVector<double> alpha;
};

} // namespace

class TestPartition : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pairTermsAreThoseOfThePlainSum();
    void sharesSumToTheRate();
    void singleAtomsStandAlone();
    void groups();
    void groupTexts_data();
    void groupTexts();
    void geometriesThatAreRefused();
};

void TestPartition::pairTermsAreThoseOfThePlainSum()
{
    Case c(1);
    const QVector<CoordSPH> positions = c.geometry->getCoordSPH();
    double minimum = 1e4;
    for (int j = 1; j < positions.size(); ++j)
        minimum = std::min(minimum, positions.at(j).r);
    for (const int lambda : {2, 4, 6}) {
        for (int i = 2; i <= 9; ++i) {
            for (int j = 2; j <= 9; ++j) {
                double term = 0.0;
                double scale = 0.0;
                for (int t = lambda - 1; t <= lambda + 1; t += 2) {
                    const auto weight = [&](int atom) {
                        const plainOmega::Weights w =
                            plainOmega::weights(lambda, t, positions.at(atom - 1), minimum,
                                                c.g.at(atom), c.alpha.at(atom));
                        return w.ed + w.dc;
                    };
                    for (int p = -t; p <= t; ++p) {
                        const int q = std::abs(p);
                        const double product =
                            (plainOmega::harmonic(t, q, positions.at(i - 1)) *
                             std::conj(plainOmega::harmonic(t, q, positions.at(j - 1))))
                                .real();
                        const double factor =
                            (2 * lambda + 1.0) / (2 * t + 1) * weight(i) * weight(j);
                        term += factor * product;
                        scale += std::abs(factor * product);
                    }
                }
                COMPARE_NEAR(c.partition.aradLambdaByAtom(lambda, i, j),
                             c.partition.calcConstArad(lambda) * term,
                             1e-12 * c.partition.calcConstArad(lambda) * scale);
            }
        }
    }
    QCOMPARE(c.partition.aradLambdaByAtom(3, 2, 2), 0.0);
    for (const int atom : {-1, 0, 1, 10, 1000000})
        QCOMPARE(c.partition.aradByAtom(2, atom), 0.0);
}

void TestPartition::sharesSumToTheRate()
{
    Case c(2);
    for (int change = 0; change < 3; ++change) { // every new g and alpha counts
        double sum = 0.0;
        double absolute = 0.0;
        for (int i = 2; i <= 9; ++i) {
            sum += c.partition.getSumByAtom(i);
            for (int j = 2; j <= 9; ++j) {
                absolute += std::abs(c.partition.aradByAtom(i, j));
                COMPARE_NEAR(c.partition.aradByAtom(i, j), c.partition.aradByAtom(j, i), 1e-12);
            }
        }
        COMPARE_NEAR(sum, c.expectedRate(), 1e-12 * absolute);
        c.g[3] += 0.7;
        c.alpha[5] *= 2.0;
        c.setValues();
    }
}

void TestPartition::singleAtomsStandAlone()
{
    // The pair of an atom with itself is the rate of a complex with this atom alone at the same
    // overlap: one O at 2.4 Angstrom, whose Omega have closed forms.
    const auto geometry = geometryOf(testSpheres::octahedron(2.4));
    LanqorInputData *shared = geometry.get();
    LanqorAradPartition partition(nullptr, shared, 6, 1.0);
    double g[8] = {0, 0, 1, 1, 1, 1, 1, 1};
    double alpha[8] = {0, 0, 1e-24, 1e-24, 1e-24, 1e-24, 1e-24, 1e-24};
    double *gArray = g;
    double *alphaArray = alpha;
    partition.setChargeFactorAndAlpha(gArray, alphaArray);
    const double omega[] = {0.4267870003, 0.0211573619, 0.0464909285}; // 1e-20 cm^2
    double total = 0.0;
    for (int atom = 2; atom <= 7; ++atom) {
        for (const int lambda : {2, 4, 6})
            COMPARE_NEAR(partition.aradLambdaByAtom(lambda, atom, atom),
                         partition.calcConstArad(lambda) * omega[lambda / 2 - 1] * 1e-20, 1e-7);
        total += partition.getSumByAtom(atom);
    }
    COMPARE_NEAR(total, 0.0, 1e-12); // the whole sphere is centrosymmetric
    // Rate per unit of Omega at n = 1: the local field is 1.
    COMPARE_NEAR(partition.calcConstArad(2) * 1e-20, 30.00 / (1.5 * 4.25 * 4.25 / 9.0), 0.005);
    QCOMPARE(partition.calcConstArad(5), 0.0);
}

void TestPartition::groups()
{
    Case c(3);
    QVERIFY(c.partition.setLigandsVector(QStringList{
        QStringLiteral("A 2 3, 4"), QStringLiteral("B 5,6"), QStringLiteral("C 7 8 9")}));
    QCOMPARE(c.partition.getLigandsNumber(), 3);
    QCOMPARE(c.partition.getLigandsName(1), QStringLiteral("B"));
    QCOMPARE(c.partition.getLigandAtoms(1), (QVector<int>{5, 6}));
    QCOMPARE(c.partition.getLigand(2).atoms.size(), 3);
    double pairs = 0.0;
    for (const int i : {2, 3, 4})
        pairs += c.partition.aradByAtom(i, 5) + c.partition.aradByAtom(i, 6);
    COMPARE_NEAR(c.partition.aradByLigand(0, 1), pairs, 1e-10);
    COMPARE_NEAR(c.partition.aradByLigand(1, 0), pairs, 1e-10);
    double sum = 0.0;
    for (int a = 0; a < 3; ++a)
        sum += c.partition.getSumByLigand(a);
    COMPARE_NEAR(sum, c.expectedRate(), 1e-9);
    for (const int group : {-1, 3})
        QCOMPARE(c.partition.getSumByLigand(group), 0.0);

    // Groups that leave atoms out count only the pairs among their own atoms.
    QVERIFY(
        c.partition.setLigandsVector(QStringLiteral("# two of three\nA 2 3 4\n\nB 5 6 # last")));
    QCOMPARE(c.partition.getLigandsNumber(), 2);
    double among = 0.0;
    for (int i = 2; i <= 6; ++i) {
        for (int j = 2; j <= 6; ++j)
            among += c.partition.aradByAtom(i, j);
    }
    COMPARE_NEAR(c.partition.getSumByLigand(0) + c.partition.getSumByLigand(1), among, 1e-10);
}

void TestPartition::groupTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("named"); // words of the message
    QTest::newRow("repeated in a group")
        << QStringLiteral("A 2 3 2") << QStringList{QStringLiteral("1"), QStringLiteral("atom 2")};
    QTest::newRow("repeated in another")
        << QStringLiteral("A 2 3\nB 4 3")
        << QStringList{QStringLiteral("2"), QStringLiteral("atom 3")};
    QTest::newRow("the ion") << QStringLiteral("A 1 2") << QStringList{QStringLiteral("\"1\"")};
    QTest::newRow("beyond the sphere")
        << QStringLiteral("A 2\n\nB 10")
        << QStringList{QStringLiteral("Line 3"), QStringLiteral("\"10\"")};
    QTest::newRow("no number") << QStringLiteral("acac ligand 2 3")
                               << QStringList{QStringLiteral("\"ligand\"")};
    QTest::newRow("no integer") << QStringLiteral("A 2.5")
                                << QStringList{QStringLiteral("\"2.5\"")};
    QTest::newRow("empty group") << QStringLiteral("A 2\nB # 3")
                                 << QStringList{QStringLiteral("Line 2"), QStringLiteral("\"B\"")};
    QTest::newRow("no group") << QStringLiteral("# nothing\n\n") << QStringList{};
    QTest::newRow("no text") << QString() << QStringList{};
}

void TestPartition::groupTexts()
{
    QFETCH(QString, text);
    QFETCH(QStringList, named);
    Case c(4);
    QVERIFY(c.partition.setLigandsVector(QStringLiteral("A 2\r\nB 3\r\n"))); // as Windows writes
    QCOMPARE(c.partition.getLigandAtoms(0), QVector<int>{2});
    testSupport::MessageSpy spy(c.partition);
    QVERIFY(!c.partition.setLigandsVector(text));
    QCOMPARE(spy.messages, QStringList{c.partition.getLastError()});
    for (const QString &word : named)
        QVERIFY2(spy.contains(word), qPrintable(spy.messages.first()));
    QCOMPARE(c.partition.getLigandsNumber(), 0);
}

void TestPartition::geometriesThatAreRefused()
{
    double values[20] = {};
    double *g = values;
    double *alpha = values;
    const auto isRefused = [&](LanqorInputData *geometry, int coordNumber) {
        LanqorAradPartition partition(nullptr, geometry, coordNumber, 1.5);
        partition.setChargeFactorAndAlpha(g, alpha);
        return !partition.getLastError().isEmpty() && partition.getSumByAtom(2) == 0.0 &&
               partition.aradByAtom(2, 3) == 0.0;
    };
    const auto geometry = geometryOf(testSpheres::octahedron(2.4));
    QVERIFY(!isRefused(geometry.get(), 6));
    QVERIFY(isRefused(geometry.get(), 7));
    QVERIFY(isRefused(geometry.get(), 0));
    QVERIFY(isRefused(nullptr, 6));
    QVERIFY(geometry->createSphericalCoordinate(2, 4)); // part of the atoms
    QVERIFY(isRefused(geometry.get(), 2));
    LanqorInputData unread(nullptr, QStringLiteral("unread"));
    QVERIFY(isRefused(&unread, 6));
    QVector<Coord> terbium = testSpheres::octahedron(2.4);
    terbium[0].label = QStringLiteral("Tb");
    QVERIFY(isRefused(geometryOf(terbium).get(), 6));
}

QTEST_GUILESS_MAIN(TestPartition)
#include "tst_partition.moc"
