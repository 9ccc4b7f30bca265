#include "TestSupport.h"

#include <LanqorEngine/SymmetricMatrix.h>

#include <Eigen/Dense>

#include <QtTest>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double tolerance = 1e-10;

using Eigen::Index;
using Eigen::MatrixXd;

/// Eigenvalues, on the diagonal, and eigenvectors by the classical Jacobi method as it is defined,
/// each rotation as full products of matrices. The lower triangle of R^T A R is kept.
std::pair<MatrixXd, MatrixXd> fullProductJacobi(MatrixXd a)
{
    MatrixXd v = MatrixXd::Identity(a.rows(), a.cols());
    while (a.rows() > 1) {
        Index i = 1;
        Index j = 0;
        for (Index row = 1; row < a.rows(); ++row)
            for (Index column = 0; column < row; ++column)
                if (std::abs(a(row, column)) > std::abs(a(i, j))) {
                    i = row;
                    j = column;
                }
        if (std::abs(a(i, j)) < tolerance)
            break;
        const double theta = (a(j, j) - a(i, i)) / (2.0 * a(i, j));
        const double sign = theta > 0.0 ? 1.0 : -1.0;
        const double t = theta == 0.0 ? 1.0 : 1.0 / (theta + sign * std::sqrt(theta * theta + 1.0));
        MatrixXd r = MatrixXd::Identity(a.rows(), a.cols());
        r(i, i) = r(j, j) = 1.0 / std::sqrt(t * t + 1.0);
        r(i, j) = t * r(i, i);
        r(j, i) = -r(i, j);
        const MatrixXd rotated = r.transpose() * a;
        a = MatrixXd(rotated * r).selfadjointView<Eigen::Lower>();
        v = MatrixXd(v * r);
    }
    return {a, v};
}

void compareWithFullProducts(SymmetricMatrix matrix)
{
    MatrixXd full(matrix.getOrder(), matrix.getOrder());
    for (int i = 0; i < matrix.getOrder(); ++i)
        for (int j = 0; j < matrix.getOrder(); ++j)
            full(i, j) = matrix(i, j);
    const auto [values, vectors] = fullProductJacobi(full);
    QVERIFY(matrix.diagonalize(tolerance));
    for (int k = 0; k < matrix.getOrder(); ++k) {
        COMPARE_NEAR(matrix(k, k), values(k, k), 0.0);
        for (int i = 0; i < matrix.getOrder(); ++i)
            COMPARE_NEAR(matrix.getEigenvectorComponent(i, k), vectors(i, k), 0.0);
    }
}

enum class Kind { Normal, SmallIntegers, Sparse, Degenerate };

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
            }
    return matrix;
}

} // namespace

class TestSymmetricMatrix : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sameBitsAsFullProducts();
    void refusals();
};

void TestSymmetricMatrix::sameBitsAsFullProducts()
{
    Eigen::setNbThreads(1); // threads cost more than they save
    for (const Kind kind : {Kind::Normal, Kind::SmallIntegers, Kind::Sparse, Kind::Degenerate})
        for (const int order : {1, 2, 3, 7, 16, 40})
            for (unsigned seed = 1; seed <= 3; ++seed) {
                compareWithFullProducts(randomMatrix(order, kind, seed));
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
    // The squares of the orders reach 2^31 - 1.
    for (const int order : {-1, 0, 46340, 46341})
        QCOMPARE(SymmetricMatrix::isPossibleOrder(order), order == 0 || order == 46340);
    SymmetricMatrix empty(0);
    QVERIFY(empty.diagonalize(tolerance));
    SymmetricMatrix ones(2);
    ones(0, 1) = 1.0;
    QVERIFY(!ones.diagonalize(0.0));
}

QTEST_GUILESS_MAIN(TestSymmetricMatrix)
#include "tst_symmetricmatrix.moc"
