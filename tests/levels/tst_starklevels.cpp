#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorStarkLevels.h>
#include <LanqorEngine/LanqorUnitaryMatrixElement.h>
#include <LanqorEngine/LanqorWignerSymbols.h>

#include "../intensity/testSpheres.h"
#include "TestSupport.h"

#include <Eigen/Eigenvalues>

#include <QtTest>

#include <cmath>
#include <complex>
#include <random>

using Complex = std::complex<double>;
using Eigen::MatrixXcd;

namespace {

/// Structure, charge factors and levels of a sphere.
class Sphere
{
public:
    Sphere(const QVector<Coord> &atoms, const QVector<double> &chargeFactors)
        : g(chargeFactors)
        , file(testSpheres::xyzFile(QStringLiteral("sphere.xyz"), atoms))
        , bkq(file, atoms.size() - 1)
        , levels(file, atoms.size() - 1)
    {
        double *array = g.data();
        bkq.setChargeFactors(array);
        bkq.calculateRO(0.0801);
        levels.setChargeFactors(array);
        levels.calculateStarkLevels();
    }
    explicit Sphere(const QVector<Coord> &atoms)
        : Sphere(atoms, QVector<double>(atoms.size() + 1, 0.6))
    {}

    Complex B(int k, int q) const
    {
        const MyComplex value = bkq.getBkq(k, q);
        return {value.real, value.imag};
    }

    QVector<double> g;
    QString file;
    LanqorBkq bkq;
    LanqorStarkLevels levels;
};

Sphere randomSphere(unsigned seed, int count)
{
    std::mt19937 random(seed);
    const QVector<Coord> atoms = testSpheres::randomSphere(random, count);
    return {atoms, testSpheres::randomValues(random, count, 0.1, 1.2)};
}

/// <f||C(k)||f> = 7 (3 k 3; 0 0 0) (-1)^3 in closed form.
double reducedC(int k)
{
    const double squares[] = {28.0 / 15.0, 14.0 / 11.0, 700.0 / 429.0};
    return (k == 4 ? 1.0 : -1.0) * std::sqrt(squares[k / 2 - 1]);
}

/// The components of a tensor operator of rank k within a manifold J, made from the ladder
/// operators alone: T(k,k) ~ J+^k, T(k,q-1) ~ [J-, T(k,q)]. Normalised to a reduced element of 1,
/// the sign such that <J J|T(k,0)|J J> is positive, as it is for (J k J; -J 0 J).
QVector<MatrixXcd> tensorComponents(int J, int k)
{
    const int n = 2 * J + 1;
    MatrixXcd raise = MatrixXcd::Zero(n, n); // <M+1|J+|M>
    for (int M = -J; M < J; ++M)
        raise(M + 1 + J, M + J) = std::sqrt(double(J * (J + 1) - M * (M + 1)));
    const MatrixXcd lower = raise.adjoint();
    QVector<MatrixXcd> components(2 * k + 1); // by q + k
    components[2 * k] = MatrixXcd::Identity(n, n);
    for (int i = 0; i < k; ++i)
        components[2 * k] = components[2 * k] * raise;
    for (int q = k; q > -k; --q) {
        const MatrixXcd &T = components[q + k];
        components[q + k - 1] =
            (lower * T - T * lower) / std::sqrt(double(k * (k + 1) - q * (q - 1)));
    }
    const double norm = std::sqrt((2 * k + 1) * components[k].squaredNorm());
    const double sign = components[k](n - 1, n - 1).real() < 0.0 ? -1.0 : 1.0;
    for (MatrixXcd &T : components)
        T *= sign / norm;
    return components;
}

/// H = sum of B(k,q) C(k,q) without any 3-j symbol.
MatrixXcd operatorMatrix(const Sphere &sphere, int J)
{
    const int n = 2 * J + 1;
    MatrixXcd H = MatrixXcd::Zero(n, n);
    for (int k = 2; k <= std::min(6, 2 * J); k += 2) {
        const QVector<MatrixXcd> T = tensorComponents(J, k);
        for (int q = -k; q <= k; ++q)
            H += sphere.B(k, q) * reducedC(k) * LanqorStarkLevels::U(k, J) * T.at(q + k);
    }
    return H;
}

QVector<Coord> rotated(const QVector<Coord> &atoms, const Eigen::Matrix3d &rotation)
{
    QVector<Coord> result;
    for (const Coord &atom : atoms) {
        const Eigen::Vector3d place = rotation * Eigen::Vector3d(atom.x, atom.y, atom.z);
        result.append({atom.label, place.x(), place.y(), place.z()});
    }
    return result;
}

} // namespace

class TestStarkLevels : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void operatorsWithoutSymbols();
    void anotherFrame();
    void axialField();
    void signsOfTheElements();
    void withoutInput();
    void valuesAreCopied();
};

void TestStarkLevels::operatorsWithoutSymbols()
{
    for (unsigned seed = 21; seed <= 23; ++seed) {
        const Sphere sphere = randomSphere(seed, 8);
        QCOMPARE(sphere.levels.getStarkLevels(0), QVector<double>{0.0});
        for (int J = 0; J <= 6; ++J) {
            const MatrixXcd H = operatorMatrix(sphere, J);
            const MatrixXcd matrix = sphere.levels.getEnergeticMatrix(J);
            QVERIFY((matrix - matrix.adjoint()).norm() <= 1e-14 * matrix.norm());
            QVERIFY(std::abs(matrix.trace()) <= 1e-14 * matrix.norm());
            // The library's matrix has the phase of a frame turned by 180 degrees about z.
            for (int M = -J; M <= J; ++M)
                for (int Mp = -J; Mp <= J; ++Mp) {
                    const double phase = (M - Mp) % 2 ? -1.0 : 1.0;
                    QVERIFY(std::abs(phase * matrix(M + J, Mp + J) - H(M + J, Mp + J)) < 1e-8);
                }
            const Eigen::VectorXd expected =
                Eigen::SelfAdjointEigenSolver<MatrixXcd>(H, Eigen::EigenvaluesOnly).eigenvalues();
            const QVector<double> levels = sphere.levels.getSortedStarkLevels(J);
            QCOMPARE(levels.size(), 2 * J + 1);
            for (int i = 0; i <= 2 * J; ++i)
                COMPARE_NEAR(levels.at(i), expected(i), 1e-8);
        }
        double sum = 0.0;
        for (int k = 2; k <= 6; k += 2)
            for (int q = -k; q <= k; ++q)
                sum += 4.0 * M_PI / (2 * k + 1) * std::norm(sphere.B(k, q));
        COMPARE_NEAR(sphere.levels.getCrystalFieldStrength() / std::sqrt(sum), 1.0, 1e-10);
    }
}

// No level depends on the frame, though every parameter does. With an atom on the axis, whose field
// is known in closed form, this decides the parameters of all q.
void TestStarkLevels::anotherFrame()
{
    std::mt19937 random(35);
    const QVector<Coord> atoms = testSpheres::randomSphere(random, 7);
    const QVector<double> g = testSpheres::randomValues(random, 7, 0.1, 1.2);
    const Eigen::Matrix3d tilt =
        Eigen::AngleAxisd(0.8, Eigen::Vector3d(1.0, 2.0, 3.0).normalized()).toRotationMatrix();
    const Sphere here(atoms, g);
    const Sphere there(rotated(atoms, tilt), g);
    for (int J = 1; J <= 6; ++J)
        for (int i = 0; i <= 2 * J; ++i)
            COMPARE_NEAR(there.levels.getSortedStarkLevels(J).at(i),
                         here.levels.getSortedStarkLevels(J).at(i), 1e-6);
    QVERIFY(std::abs(there.B(2, 1) - here.B(2, 1)) > 1.0);
    // The field of an octahedron leaves A1 + T1 + T2 + E of J = 4.
    const QVector<double> levels =
        Sphere(rotated(testSpheres::octahedron(2.4), tilt)).levels.getSortedStarkLevels(4);
    QVector<int> gaps;
    for (int i = 1; i < levels.size(); ++i)
        if (levels.at(i) - levels.at(i - 1) > 1e-6)
            gaps.append(i);
    QCOMPARE(gaps.size(), 3);
}

// 7F1 sees rank 2 alone: in an axial field the doublet moves by -sqrt(28/15 * 0.1541/30) B(2,0),
// the singlet twice as far the other way. The field is proportional to g and goes as
// ro0 (2 beta)^3, beta = 1/(1 + ro0).
void TestStarkLevels::axialField()
{
    Sphere sphere(testSpheres::oxygens({{0, 0, 2.4}, {0, 0, -2.4}}));
    const double shift = std::sqrt(28.0 / 15.0 * 0.1541 / 30.0) * sphere.B(2, 0).real();
    QVERIFY(shift > 10.0);
    const QVector<double> levels = sphere.levels.getSortedStarkLevels(1);
    COMPARE_NEAR(levels.at(0), -shift, 1e-9);
    COMPARE_NEAR(levels.at(1), -shift, 1e-9);
    COMPARE_NEAR(levels.at(2), 2.0 * shift, 1e-9);
    for (double &g : sphere.g)
        g *= 2.0;
    sphere.levels.calculateStarkLevels();
    COMPARE_NEAR(sphere.levels.getSplitting(1), 6.0 * shift, 1e-9);
    sphere.levels.setRO0(0.04);
    sphere.levels.calculateStarkLevels();
    COMPARE_NEAR(6.0 * shift / sphere.levels.getSplitting(1),
                 0.0801 / 0.04 * std::pow(1.04 / 1.0801, 3), 1e-12);
}

// The signs are those of pure 7F terms, f^6 being a hole of the half-filled shell of spin up, and
// those between the levels in intermediate coupling. With them 7F6 is what it was upside down.
void TestStarkLevels::signsOfTheElements()
{
    QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
    LanqorEnergyLevels eu(nullptr, 6);
    eu.setParameters(LanqorFreeIonParameters::getParameters(6));
    QVERIFY(eu.calcEnergyLevels(-1.0));
    int negative = 0;
    for (int J = 1; J <= 6; ++J)
        for (int k = 2; k <= std::min(6, 2 * J); k += 2) {
            const double pure = (J + k) % 2 == 0 ? -1.0 : 1.0;
            const double element =
                pure * (2 * J + 1) * LanqorWignerSymbols::calcSixJSymbol(J, J, k, 3, 3, 3);
            const double U = LanqorStarkLevels::signedU(k, J);
            COMPARE_NEAR(U / element, 1.0, 0.05);
            auto level = LanqorSpectroscopicTermUtil::termFromLabel("7F", false);
            level.J = J;
            const double mixed = LanqorUnitaryMatrixElement::mixedUnitaryMatrixElementCouppling(
                6, k, level, level, eu);
            COMPARE_NEAR(U / mixed, 1.0, 0.05);
            COMPARE_NEAR(std::abs(U), LanqorStarkLevels::U(k, J), 0.0);
            negative += U < 0.0 ? 1 : 0;
        }
    QCOMPARE(negative, 7);
    LanqorStarkLevels levels = randomSphere(24, 8).levels;
    QVERIFY(levels.getResults().reducedElements == ReducedElements::Magnitudes);
    levels.setReducedElements(ReducedElements::Signed);
    QVector<double> g(10, 0.6);
    QVERIFY(levels.setChargeFactors(g));
    levels.calculateStarkLevels();
    const QVector<double> right = levels.getSortedStarkLevels(6);
    levels.setReducedElements(ReducedElements::Magnitudes);
    levels.calculateStarkLevels();
    for (int i = 0; i <= 12; ++i)
        COMPARE_NEAR(right.at(i), -levels.getSortedStarkLevels(6).at(12 - i), 1e-9);
}

void TestStarkLevels::withoutInput()
{
    LanqorStarkLevels missing(QStringLiteral("/no/such.xyz"), 0);
    QVERIFY(missing.getLastError().contains(QStringLiteral("/no/such.xyz")));
    double g[] = {0.0, 0.0, 1.0};
    double *array = g;
    missing.setChargeFactors(array);
    missing.calculateStarkLevels();
    QVERIFY(missing.getStarkLevels(1).isEmpty());
    QVERIFY(missing.getLastError().contains(QStringLiteral("/no/such.xyz")));
    QVERIFY(missing.createOutFile(QString()).isEmpty());

    for (const auto &[k, J] : {std::pair<int, int>{2, 7}, {2, -1}, {2, 0}, {3, 2}, {4, 1}, {8, 6}})
        QCOMPARE(LanqorStarkLevels::U(k, J), 0.0);
    LanqorStarkLevels levels(
        testSpheres::xyzFile(QStringLiteral("one.xyz"), testSpheres::oxygens({{0, 0, 2.4}})), 1);
    QCOMPARE(levels.getLastError(), QString());
    QVERIFY(levels.createOutFile(QString()).isEmpty());
    levels.calculateStarkLevels();
    QVERIFY(levels.getLastError().contains(QStringLiteral("charge factors")));
    QVERIFY(levels.getStarkLevels(1).isEmpty());
    QCOMPARE(int(levels.getEnergeticMatrix(1).size()), 0);
    QCOMPARE(levels.getCrystalFieldStrength(), 0.0);
    levels.setChargeFactors(array);
    levels.calculateStarkLevels();
    QCOMPARE(levels.getLastError(), QString());
    QCOMPARE(levels.getStarkLevels(3).size(), 7);
    for (const int J : {-1, 7}) {
        QVERIFY(levels.getStarkLevels(J).isEmpty());
        QCOMPARE(levels.getSplitting(J), 0.0);
        QCOMPARE(int(levels.getEnergeticMatrix(J).size()), 0);
    }
    for (const double impossible : {std::nan(""), 1e308}) {
        g[2] = impossible;
        levels.calculateStarkLevels();
        QVERIFY(!levels.getLastError().isEmpty());
        QVERIFY(levels.getStarkLevels(1).isEmpty());
    }
    g[2] = 1.0;
    levels.setRO0(1.5);
    levels.calculateStarkLevels();
    QVERIFY(levels.getLastError().contains(QStringLiteral("ro0")));
}

void TestStarkLevels::valuesAreCopied()
{
    Sphere sphere = randomSphere(71, 6);
    const QVector<double> levels = sphere.levels.getStarkLevels(4);
    LanqorStarkLevels copy(sphere.levels);
    QVector<double> other(8, 0.2);
    QVERIFY(copy.setChargeFactors(other));
    copy.calculateStarkLevels();
    QVERIFY(copy.getStarkLevels(4) != levels);
    QCOMPARE(sphere.levels.getStarkLevels(4), levels);
    sphere.levels = copy;
    sphere.levels.calculateStarkLevels();
    QCOMPARE(sphere.levels.getStarkLevels(4), copy.getStarkLevels(4));
    QVERIFY(!copy.setChargeFactors(QVector<double>(7, 0.2)));
    copy.calculateStarkLevels();
    QVERIFY(copy.getStarkLevels(4).isEmpty());

    LanqorInputData geometry(nullptr, sphere.file);
    QVERIFY(geometry.readStructureFile());
    LanqorStarkLevels given(&geometry, 6);
    QVERIFY(given.setChargeFactors(other));
    given.calculateStarkLevels();
    QCOMPARE(given.getStarkLevels(4), sphere.levels.getStarkLevels(4));
    QCOMPARE(given.createOutFile(QString()), sphere.levels.createOutFile(QString()));
    QVERIFY(given.createOutFile(QStringLiteral("/no/such/folder/report.txt")).isEmpty());
    QVERIFY(given.getLastError().contains(QStringLiteral("/no/such/folder/report.txt")));
}

QTEST_GUILESS_MAIN(TestStarkLevels)
#include "tst_starklevels.moc"
