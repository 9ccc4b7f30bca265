#include "overlap/simpleOverlapModel_p.h"
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

} // namespace

/// The kernel of the simple overlap model against plain sums and closed forms.
class TestOverlapModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void harmonicsAreThoseOfTheLiterature();
    void plainSums();
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
            const double tolerance = 1e-12 * plain.absolute[lambda];
            COMPARE_NEAR(fast.total[lambda], plain.total[lambda], tolerance);
            COMPARE_NEAR(fast.electricDipole[lambda], plain.ed[lambda], tolerance);
            COMPARE_NEAR(fast.dynamicCoupling[lambda], plain.dc[lambda], tolerance);
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
    const CoordinationSphere sphere({{"Eu", 0, 0, 0}, {"N", 2.4, 0.0, 0.0}}, 1);
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
