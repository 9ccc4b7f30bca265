#include "TestSupport.h"
#include "fullProductJacobi.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/SymmetricMatrix.h>

#include <QDir>
#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

constexpr double tolerance = 1e-10;

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void compareWithFullProducts(SymmetricMatrix matrix)
{
    FullProductJacobi expected(matrix);
    expected.run(tolerance);
    QVERIFY(matrix.diagonalize(tolerance));
    for (int k = 0; k < matrix.getOrder(); ++k) {
        QVERIFY2(sameBits(matrix(k, k), expected.eigenvalue(k)),
                 qPrintable(QStringLiteral("eigenvalue %1: got %2, expected %3")
                                .arg(k)
                                .arg(matrix(k, k), 0, 'g', 17)
                                .arg(expected.eigenvalue(k), 0, 'g', 17)));
        for (int i = 0; i < matrix.getOrder(); ++i)
            QVERIFY2(sameBits(matrix.getEigenvectorComponent(i, k), expected.component(i, k)),
                     qPrintable(QStringLiteral("component %1 of vector %2").arg(i).arg(k)));
    }
}

enum class Kind { Normal, SmallIntegers, Sparse, Degenerate, NegativeZeros };

SymmetricMatrix randomMatrix(int order, Kind kind, unsigned seed)
{
    std::mt19937 random(seed);
    const auto uniform = [&random] {
        return static_cast<double>(random()) / std::mt19937::max() - 0.5;
    };
    SymmetricMatrix matrix(order);
    for (int i = 0; i < order; ++i)
        for (int j = 0; j <= i; ++j)
            switch (kind) {
            case Kind::Normal:
                matrix(i, j) = 1e4 * uniform();
                break;
            case Kind::SmallIntegers: // many equal pivots
                matrix(i, j) = std::round(4.0 * uniform());
                break;
            case Kind::Sparse:
                matrix(i, j) = i == j || random() % 5 == 0 ? 100.0 * uniform() : 0.0;
                break;
            case Kind::Degenerate:
                matrix(i, j) = i == j ? 3.0 : 0.5;
                break;
            case Kind::NegativeZeros:
                matrix(i, j) = i == j || random() % 3 == 0 ? uniform() : -0.0;
                break;
            }
    return matrix;
}

} // namespace

class TestSymmetricMatrix : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sameBitsOnRandomMatrices();
    void sameBitsOnRealBlocks();
    void refusals();
};

void TestSymmetricMatrix::sameBitsOnRandomMatrices()
{
    for (const Kind kind :
         {Kind::Normal, Kind::SmallIntegers, Kind::Sparse, Kind::Degenerate, Kind::NegativeZeros})
        for (const int order : {1, 2, 3, 7, 16, 25})
            for (unsigned seed = 1; seed <= 5; ++seed) {
                compareWithFullProducts(randomMatrix(order, kind, seed));
                if (QTest::currentTestFailed())
                    return;
            }
}

void TestSymmetricMatrix::sameBitsOnRealBlocks()
{
    QVERIFY(QDir::setCurrent(testSupport::sourceFile(QStringLiteral("data"))));
    QVector<QPair<int, double>> blocks{{6, 0.0}, {6, 7.0}, {8, 8.0}, {7, 0.5}, {7, 7.5}};
#if !defined(__SANITIZE_ADDRESS__) // minutes with the sanitizers
    blocks += {{6, 4.0}, {7, 3.5}};
#endif
    for (const auto &[electrons, J] : blocks) {
        const LanqorEnergyLevels ion(nullptr, electrons);
        const freeIon::AngularBlock block =
            freeIon::angularBlock(ion, std::min(electrons, 14 - electrons), electrons > 7, J);
        const SymmetricMatrix matrix =
            freeIon::hamiltonian(block, {0.0, 369.60795, 56.240519, 5.6408009, 1326.0});
        QVERIFY(matrix.getOrder() > 13);
        compareWithFullProducts(matrix);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestSymmetricMatrix::refusals()
{
    for (double bad : {std::numeric_limits<double>::quiet_NaN(),
                       std::numeric_limits<double>::infinity(), 1e300, 1e9}) {
        SymmetricMatrix matrix(3);
        matrix(2, 1) = bad;
        QVERIFY(!matrix.diagonalize(tolerance));
    }
    SymmetricMatrix empty(0);
    QVERIFY(empty.diagonalize(tolerance));
    SymmetricMatrix ones(2);
    ones(0, 1) = 1.0;
    QVERIFY(!ones.diagonalize(0.0));
}

QTEST_GUILESS_MAIN(TestSymmetricMatrix)
#include "tst_symmetricmatrix.moc"
