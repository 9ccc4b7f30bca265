#include "intensity/simpleOverlapModel_p.h"
#include "testSpheres.h"

#include <QtTest>

using namespace simpleOverlapModel;

namespace {

IntensityParameters kernelOmega(const QVector<Coord> &atoms, const QVector<double> &g,
                                const QVector<double> &alpha)
{
    const CoordinationSphere sphere(testSpheres::toSpherical(atoms), atoms.size() - 1);
    return intensityParameters(sphere.latticeSums(g.constData(), alpha.constData()));
}

/// Rotates about z, then about x.
QVector<Coord> rotated(QVector<Coord> atoms, double aboutZ, double aboutX)
{
    for (Coord &atom : atoms) {
        const Coord old = atom;
        const double x = std::cos(aboutZ) * old.x - std::sin(aboutZ) * old.y;
        const double y = std::sin(aboutZ) * old.x + std::cos(aboutZ) * old.y;
        atom.x = x;
        atom.y = std::cos(aboutX) * y - std::sin(aboutX) * old.z;
        atom.z = std::sin(aboutX) * y + std::cos(aboutX) * old.z;
    }
    return atoms;
}

} // namespace

/// The kernel of the simple overlap model against plain sums, closed forms and symmetry.
class TestOverlapModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void harmonicsAreThoseOfTheLiterature();
    void plainSums();
    void laws();
    void overlapsByElement();
    void latticeTermsOfEachAtom();
    void axialCrystalField();
};

void TestOverlapModel::harmonicsAreThoseOfTheLiterature()
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    for (int trial = 0; trial < 50; ++trial) {
        const double theta = trial == 0 ? 0.0 : trial == 1 ? M_PI : M_PI * uniform(random);
        const double phi = 2.0 * M_PI * uniform(random);
        for (int l = 0; l <= maximumRank; ++l) {
            for (int m = 0; m <= l; ++m) {
                const Complex value = sphericalHarmonic(l, m, theta, phi);
                const Complex expected =
                    std::sph_legendre(static_cast<unsigned>(l), static_cast<unsigned>(m), theta) *
                    std::polar(1.0, m * phi);
                QVERIFY2(std::abs(value - expected) < 1e-13, qPrintable(QString::number(l)));
                const Complex negative = sphericalHarmonic(l, -m, theta, phi);
                QVERIFY(std::abs(negative - (m % 2 ? -1.0 : 1.0) * std::conj(expected)) < 1e-13);
            }
        }
    }
    // Signs of the Condon-Shortley phase, written out.
    COMPARE_NEAR(sphericalHarmonic(1, 1, 1.0, 0.0).real(),
                 -std::sqrt(3 / (8 * M_PI)) * std::sin(1.0), 1e-15);
    COMPARE_NEAR(sphericalHarmonic(2, 1, 1.0, 0.0).real(),
                 -std::sqrt(15 / (8 * M_PI)) * std::sin(1.0) * std::cos(1.0), 1e-15);
}

void TestOverlapModel::plainSums()
{
    std::mt19937 random(3);
    for (const double asymmetry : {0.0, 0.0, 1e-3, 1e-9}) { // of an octahedron; 0: any directions
        const int atomCount = asymmetry > 0.0 ? 6 : 12;
        QVector<Coord> atoms = testSpheres::randomSphere(random, atomCount);
        QVector<double> g = testSpheres::randomValues(random, atomCount, 0.2, 2.0);
        QVector<double> alpha = testSpheres::randomValues(random, atomCount, 0.5e-24, 6e-24);
        if (asymmetry > 0.0) {
            atoms = testSpheres::octahedron(2.4);
            atoms[1].x += asymmetry;
            g.fill(1.0);
            alpha.fill(2e-24);
        }
        const IntensityParameters fast = kernelOmega(atoms, g, alpha);
        const QVector<CoordSPH> positions = testSpheres::toSpherical(atoms);
        const plainOmega::Result plain = plainOmega::omega(positions, g, alpha);
        for (const int lambda : {2, 4, 6}) {
            const auto rank = static_cast<std::size_t>(lambda);
            plainOmega::PairTerm sum;
            for (int i = 2; i <= atomCount + 1; ++i) {
                for (int j = 2; j <= atomCount + 1; ++j) {
                    const auto term = plainOmega::legendreTerm(positions, g, alpha, lambda, i, j);
                    sum.value += term.value;
                    sum.absolute += term.absolute;
                }
            }
            const double tolerance = 1e-12 * sum.absolute;
            COMPARE_NEAR(fast.total[rank], plain.total[rank], tolerance);
            COMPARE_NEAR(fast.total[rank], sum.value, tolerance);
            COMPARE_NEAR(fast.electricDipole[rank], plain.ed[rank], tolerance);
            COMPARE_NEAR(fast.dynamicCoupling[rank], plain.dc[rank], tolerance);
        }
    }
}

void TestOverlapModel::laws()
{
    std::mt19937 random(11);
    const QVector<Coord> atoms = testSpheres::randomSphere(random, 8);
    const QVector<double> g = testSpheres::randomValues(random, 8, 0.2, 2.0);
    const QVector<double> alpha = testSpheres::randomValues(random, 8, 0.5e-24, 6e-24);
    const IntensityParameters omega = kernelOmega(atoms, g, alpha);
    const auto scaled = [](QVector<double> values, double factor) {
        for (double &value : values)
            value *= factor;
        return values;
    };
    const IntensityParameters turned = kernelOmega(rotated(atoms, 0.7, 2.1), g, alpha);
    const IntensityParameters reversed = kernelOmega(atoms, scaled(g, -1.0), scaled(alpha, -1.0));
    const IntensityParameters opposed = kernelOmega(atoms, scaled(g, -1.0), alpha);
    const IntensityParameters stronger = kernelOmega(atoms, scaled(g, 3.0), scaled(alpha, 0.5));
    for (const std::size_t lambda : {2U, 4U, 6U}) {
        const double scale = omega.total[lambda];
        COMPARE_NEAR(turned.total[lambda], scale, 1e-12 * scale);
        COMPARE_NEAR(reversed.total[lambda], scale, 1e-14 * scale);
        COMPARE_NEAR(stronger.electricDipole[lambda], 9.0 * omega.electricDipole[lambda],
                     1e-12 * scale);
        COMPARE_NEAR(stronger.dynamicCoupling[lambda], 0.25 * omega.dynamicCoupling[lambda],
                     1e-12 * scale);
        // (a + b)^2 + (a - b)^2 = 2 a^2 + 2 b^2
        COMPARE_NEAR(omega.total[lambda] + opposed.total[lambda],
                     2.0 * (omega.electricDipole[lambda] + omega.dynamicCoupling[lambda]),
                     1e-12 * scale);
    }
    const QVector<double> equal(8, 1.0);
    const IntensityParameters centrosymmetric =
        kernelOmega(testSpheres::octahedron(2.4), equal, scaled(equal, 1e-24));
    for (const std::size_t lambda : {2U, 4U, 6U})
        QVERIFY(centrosymmetric.total[lambda] < 1e-48); // 1e-28 of the parameters of one atom
}

void TestOverlapModel::overlapsByElement()
{
    const QStringList elements = {QStringLiteral("O"),  QStringLiteral("F"), QStringLiteral("N"),
                                  QStringLiteral("Cl"), QStringLiteral("S"), QStringLiteral("Br")};
    QVector<CoordSPH> positions = {{QStringLiteral("Eu"), 0.0, 0.0, 0.0}};
    for (int i = 0; i < elements.size(); ++i)
        positions.append({elements.at(i), 2.5 * std::pow(2.0, i % 2), 30.0 * i, 50.0 * i});
    const CoordinationSphere sphere(positions, elements.size());
    QCOMPARE(sphere.minDistance(), 2.5);
    const double far = 0.05 / (8.0 * std::sqrt(2.0)); // twice the distance
    const double expectedBeta[] = {1 / 1.05, 1 / (1 + far), 1 / 0.95, 1 / (1 - far), 1.0, 1.0};
    for (int i = 0; i < elements.size(); ++i) {
        COMPARE_NEAR(sphere.rho(i + 2), i % 2 ? far : 0.05, 1e-16);
        COMPARE_NEAR(sphere.beta(i + 2), expectedBeta[i], 1e-15);
    }
}

void TestOverlapModel::latticeTermsOfEachAtom()
{
    std::mt19937 random(9);
    const QVector<CoordSPH> positions =
        testSpheres::toSpherical(testSpheres::randomSphere(random, 3));
    const CoordinationSphere sphere(positions, 3);
    for (int t = 1; t <= 7; t += 2) {
        const double scale = std::pow(positions.at(2).r * 1e-8, -(t + 1));
        for (int p = -t; p <= t; ++p) {
            const Complex y = plainOmega::harmonic(t, std::abs(p), positions.at(2));
            const Complex conjugate = p >= 0 ? std::conj(y) : (p % 2 ? -1.0 : 1.0) * y;
            const Complex dynamic = std::sqrt(4 * M_PI / (2 * t + 1)) * 3e-24 * conjugate * scale;
            const Complex electric = 2.307077352370616e-19 * sphere.rho(3) *
                                     std::pow(2 * sphere.beta(3), t + 1) * 0.7 / 3e-24 * dynamic;
            QVERIFY(std::abs(sphere.GAMMA(t, p, 3, 3e-24) - dynamic) < 1e-36 * scale);
            QVERIFY(std::abs(sphere.gamma(t, p, 3, 0.7) - electric) < 1e-30 * scale);
        }
    }
}

void TestOverlapModel::axialCrystalField()
{
    // An atom on the z axis, in SI units: B(k,0) = r(k) g rho (2 beta)^(k+1) e^2/(4 pi eps0
    // R^(k+1)), over h c.
    const double R = 2.4e-10;
    const double a0 = 5.2917721092e-11;
    const double e2 = 1.602176565e-19 * 1.602176565e-19 / (4 * M_PI * 8.8541878176e-12);
    const double hc = 6.62606957e-34 * 2.99792458e10; // J cm
    const double ro0 = 0.06;
    const double beta = 1.0 / (1.0 - ro0);
    const double moment[] = {0.9175, 2.02, 9.039};
    const CoordinationSphere sphere(
        {{QStringLiteral("Eu"), 0, 0, 0}, {QStringLiteral("N"), 2.4, 0.0, 0.0}}, 1);
    for (int k = 2; k <= 6; k += 2) {
        const double expected = moment[k / 2 - 1] * std::pow(a0, k) * 0.8 * ro0 *
                                std::pow(2.0 * beta, k + 1) * e2 / std::pow(R, k + 1) / hc;
        const Complex value = sphere.crystalField(k, 0, 2, 0.8, ro0);
        COMPARE_NEAR(value.real() / expected, 1.0, 1e-6);
        COMPARE_NEAR(value.imag(), 0.0, 1e-9);
        for (int q = 1; q <= k; ++q)
            COMPARE_NEAR(std::abs(sphere.crystalField(k, q, 2, 0.8, ro0)), 0.0, 1e-9);
    }
}

QTEST_GUILESS_MAIN(TestOverlapModel)
#include "tst_overlapmodel.moc"
