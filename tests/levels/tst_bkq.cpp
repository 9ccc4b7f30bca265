#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/LanqorInputData.h>

#include "../intensity/testSpheres.h"
#include "TestSupport.h"

#include <QtTest>

#include <cmath>

namespace {

QString fixture(const char *name)
{
    return testSupport::dataFile(QLatin1String(name));
}

} // namespace

class TestBkq : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void unusableStructures();
    void missingInput();
    void givenGeometryAndVector();
};

void TestBkq::unusableStructures()
{
    const QString good = fixture("structures/eu_acac3_h2o.xyz");
    const struct
    {
        QString file;
        int coordNumber;
        const char *message;
    } cases[] = {
        {QStringLiteral("/no/such.xyz"), 0, "/no/such.xyz does not exist."},
        {fixture("mopac/gd_no3_3_h2o3_rm1_opt.out"), 0, "Gd atoms[0] isn't Eu"},
        {fixture("mopac/eu_terpy_acac_no3_2_am1_int_unordered.out"), 0, "Reorder"},
        {testSpheres::xyzFile(QStringLiteral("far.xyz"), testSpheres::octahedron(4.0)), 0,
         "far.xyz"},
        {testSpheres::xyzFile(QStringLiteral("on.xyz"), testSpheres::oxygens({{0, 0, 0}})), 1,
         "lies on the ion"},
        {good, 100000, "100000"},
        {good, -1, "eu_acac3_h2o.xyz"},
    };
    const QVector<double> g(4);
    for (const auto &wrong : cases) {
        LanqorBkq bkq(wrong.file, wrong.coordNumber);
        QVERIFY2(bkq.getLastError().contains(QLatin1String(wrong.message)),
                 qPrintable(bkq.getLastError()));
        QCOMPARE(bkq.getAtomsNumber(), 0);
        QVERIFY(!bkq.setChargeFactors(g));
        QVERIFY(!bkq.calculateRO(0.05));
        QCOMPARE(bkq.getBkq(2, 0).real, 0.0);
        QCOMPARE(bkq.getBkq(2, 0, 1).real, 0.0);
        QVERIFY(!bkq.getLastError().isEmpty());
    }
}

void TestBkq::missingInput()
{
    LanqorBkq bkq(fixture("structures/eu_acac3_h2o.xyz"), 0);
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

// The same as of a file and of the caller's array, which is not copied while a vector is.
void TestBkq::givenGeometryAndVector()
{
    const QString file = fixture("structures/eu_acac3_h2o.xyz");
    LanqorInputData geometry(nullptr, file);
    LanqorInputData *const none = nullptr;
    QVERIFY(!LanqorBkq(none, 0).getLastError().isEmpty());
    QVERIFY(!LanqorBkq(&geometry, 0).getLastError().isEmpty());
    QVERIFY(geometry.readStructureFile());
    LanqorBkq given(&geometry, 0);
    LanqorBkq read(file, 0);
    QCOMPARE(given.getAtomsNumber(), read.getAtomsNumber());
    QVector<double> g;
    for (int atom = 0; atom < read.getAtomsNumber() + 2; ++atom)
        g.append(0.5 + 0.1 * atom);
    double *array = g.data();
    read.setChargeFactors(array);
    QVERIFY(given.setChargeFactors(g));
    QVERIFY(given.calculateRO(0.05) && read.calculateRO(0.05));
    QCOMPARE(given.getBkq(6, 3).imag, read.getBkq(6, 3).imag);
    const LanqorBkq copy(given);
    array[3] *= 2.0;
    QCOMPARE(read.getBkq(2, 0, 2).real, 2.0 * given.getBkq(2, 0, 2).real);
    QVERIFY(!given.setChargeFactors(g.mid(1)));
    QVERIFY(given.getLastError().contains(QString::number(g.size())));
    QCOMPARE(given.getBkq(2, 0, 2).real, 0.0);
    QCOMPARE(read.getBkq(2, 0, 2).real, 2.0 * copy.getBkq(2, 0, 2).real);
}

QTEST_GUILESS_MAIN(TestBkq)
#include "tst_bkq.moc"
