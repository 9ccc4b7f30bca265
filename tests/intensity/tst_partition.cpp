#include "testSpheres.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>

#include <QtTest>

namespace {

/// A geometry read from made-up coordinates.
std::unique_ptr<LanqorInputData> geometryOf(const QVector<Coord> &atoms)
{
    auto data =
        std::make_unique<LanqorInputData>(nullptr, testSpheres::xyzFile("partition.xyz", atoms));
    if (!data->readXYZFile() || !data->createSphericalCoordinate())
        qFatal("%s", qPrintable(data->getLastError()));
    return data;
}

/// Eight atoms with random g and alpha, partitioned.
struct Case
{
    explicit Case(unsigned seed)
        : random(seed)
        , atoms(testSpheres::randomSphere(random, 8))
        , geometry(geometryOf(atoms))
        , shared(geometry.get())
        , partition(nullptr, shared, 8, 1.5)
    {
        g = testSpheres::randomValues(random, 8, 0.2, 2.0);
        alpha = testSpheres::randomValues(random, 8, 0.5e-24, 6e-24);
        setValues();
    }

    void setValues()
    {
        if (!partition.setChargeFactorAndAlpha(g, alpha))
            qFatal("%s", qPrintable(partition.getLastError()));
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
    void pairTermsAndShares();
    void groups();
    void groupTexts();
    void geometriesThatAreRefused();
};

void TestPartition::pairTermsAndShares()
{
    Case c(1);
    for (int change = 0; change < 2; ++change) { // every new g and alpha counts
        double sum = 0.0;
        for (int i = 2; i <= 9; ++i) {
            sum += c.partition.getSumByAtom(i);
            for (int j = 2; j <= 9; ++j) {
                for (const int lambda : {2, 4, 6}) {
                    const double constant = c.partition.calcConstArad(lambda);
                    const auto term =
                        plainOmega::pairTerm(c.geometry->getCoordSPH(), c.g, c.alpha, lambda, i, j);
                    COMPARE_NEAR(c.partition.aradLambdaByAtom(lambda, i, j), constant * term.value,
                                 1e-12 * constant * term.absolute);
                }
            }
        }
        const plainOmega::Result omega = plainOmega::omega(c.geometry->getCoordSPH(), c.g, c.alpha);
        double rate = 0.0;
        for (const int lambda : {2, 4, 6})
            rate += c.partition.calcConstArad(lambda) * omega.total[lambda];
        COMPARE_NEAR(sum / rate, 1.0, 1e-11);
        c.g[3] += 0.7;
        c.alpha[5] *= 2.0;
        c.setValues();
    }
    for (const int atom : {-1, 0, 1, 10, 1000000})
        QCOMPARE(c.partition.aradByAtom(2, atom), 0.0);
    QCOMPARE(c.partition.aradLambdaByAtom(3, 2, 2), 0.0);
}

void TestPartition::groups()
{
    Case c(3);
    QVERIFY(c.partition.setLigandsVector(QStringList{"A 2 3, 4", "B 5,6", "C 7 8 9"}));
    QCOMPARE(c.partition.getLigandsNumber(), 3);
    QCOMPARE(c.partition.getLigandsName(1), QString("B"));
    QCOMPARE(c.partition.getLigand(1).atoms, (QVector<int>{5, 6}));
    double pairs = 0.0;
    for (const int i : {2, 3, 4})
        pairs += c.partition.aradByAtom(i, 5) + c.partition.aradByAtom(i, 6);
    COMPARE_NEAR(c.partition.aradByLigand(0, 1), pairs, 1e-10);
    double ofAtoms = 0.0;
    double ofGroups = 0.0;
    for (int i = 2; i <= 9; ++i)
        ofAtoms += c.partition.getSumByAtom(i);
    for (int a = -1; a <= 3; ++a) // there are no groups -1 and 3
        ofGroups += c.partition.getSumByLigand(a);
    COMPARE_NEAR(ofGroups, ofAtoms, 1e-9);

    // Groups that leave atoms out count only the pairs among their own atoms.
    QVERIFY(c.partition.setLigandsVector(QString("# two of three\r\nA 2 3 4\r\n\nB 5 6 # last")));
    QCOMPARE(c.partition.getLigandsNumber(), 2);
    double among = 0.0;
    for (int i = 2; i <= 6; ++i) {
        for (int j = 2; j <= 6; ++j)
            among += c.partition.aradByAtom(i, j);
    }
    COMPARE_NEAR(c.partition.getSumByLigand(0) + c.partition.getSumByLigand(1), among, 1e-10);
}

void TestPartition::groupTexts()
{
    const QMap<QString, QString> messages = {
        {"A 2 3 2", "Line 1 of the ligands: atom 2"},
        {"A 2 3\nB 4 3", "Line 2 of the ligands: atom 3"},
        {"A 1 2", "\"1\""}, // the ion
        {"A 2\n\nB 10", "Line 3 of the ligands: \"10\""},
        {"acac ligand 2 3", "\"ligand\""},
        {"A 2.5", "\"2.5\""},
        {"2 3 4", "begins with the number 2"},
        {"A 2\nB # 3", "Line 2 of the ligands: group \"B\""},
        {"# nothing\n\n", "no group"},
    };
    Case c(4);
    for (auto wrong = messages.begin(); wrong != messages.end(); ++wrong) {
        QVERIFY(c.partition.setLigandsVector(QString("A 2\nB 3")));
        testSupport::MessageSpy spy(c.partition);
        QVERIFY2(!c.partition.setLigandsVector(wrong.key()), qPrintable(wrong.key()));
        QCOMPARE(spy.messages, QStringList{c.partition.getLastError()});
        QVERIFY2(spy.contains(wrong.value()), qPrintable(spy.messages.first()));
        QCOMPARE(c.partition.getLigandsNumber(), 0);
    }
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
    QVERIFY(isRefused(geometry.get(), 7) && isRefused(geometry.get(), 0));
    QVERIFY(isRefused(nullptr, 6));
    QVERIFY(geometry->createSphericalCoordinate(1, 4)); // part of the atoms
    QVERIFY(isRefused(geometry.get(), 2));
    QVector<Coord> terbium = testSpheres::octahedron(2.4);
    terbium[0].label = "Tb";
    QVERIFY(isRefused(geometryOf(terbium).get(), 6));
}

QTEST_GUILESS_MAIN(TestPartition)
#include "tst_partition.moc"
