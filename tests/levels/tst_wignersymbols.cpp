#include <LanqorEngine/LanqorWignerSymbols.h>

#include "TestSupport.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace {

__extension__ typedef __int128 Integer128;

Integer128 binomial(int n, int k)
{
    Integer128 result = 1;
    for (int i = 0; i < k; ++i)
        result = result * (n - i) / (i + 1);
    return result;
}

long double factorialOf(int n)
{
    return std::tgamma(static_cast<long double>(n) + 1.0L);
}

// Twice the momenta are passed. The alternating sum is exact: integers made of binomials
//   sum_t (-1)^t C(t+1, s1+1) C(q1-s2, t-s2) C(q2-s3, t-s3) C(q3-s4, t-s4),
// s the sums of the triads and q those of the quads.
long double exactSixJ(const std::array<int, 6> &twice)
{
    const auto [a, b, c, d, e, f] = twice;
    const std::array<std::array<int, 3>, 4> triads{{{a, b, c}, {d, e, c}, {a, e, f}, {d, b, f}}};
    std::array<int, 4> s{};
    long double square = 1.0L;
    for (std::size_t i = 0; i < 4; ++i) {
        const auto [x, y, z] = triads[i];
        const int sum = x + y + z;
        if (sum % 2 != 0 || x > y + z || y > x + z || z > x + y)
            return 0.0L;
        s[i] = sum / 2;
        square *= factorialOf((x + y - z) / 2) * factorialOf((x - y + z) / 2) *
                  factorialOf((y + z - x) / 2) / factorialOf(s[i] + 1);
    }
    const std::array<int, 3> q{(a + b + d + e) / 2, (b + c + e + f) / 2, (a + c + d + f) / 2};
    Integer128 sum = 0;
    const int first = *std::max_element(s.begin(), s.end());
    const int last = *std::min_element(q.begin(), q.end());
    for (int t = first; t <= last; ++t) {
        const Integer128 term = binomial(t + 1, s[0] + 1) * binomial(q[0] - s[1], t - s[1]) *
                                binomial(q[1] - s[2], t - s[2]) * binomial(q[2] - s[3], t - s[3]);
        sum += t % 2 == 0 ? term : -term;
    }
    return std::sqrt(square) * factorialOf(s[0] + 1) /
           (factorialOf(q[0] - s[1]) * factorialOf(q[1] - s[2]) * factorialOf(q[2] - s[3])) *
           static_cast<long double>(sum);
}

double calcSixJ(const std::array<int, 6> &twice)
{
    return LanqorWignerSymbols::calcSixJSymbol(0.5 * twice[0], 0.5 * twice[1], 0.5 * twice[2],
                                               0.5 * twice[3], 0.5 * twice[4], 0.5 * twice[5]);
}

// False, with the failure recorded, when a symbol is off.
bool compareSixJ(const std::array<int, 6> &twice)
{
    const double expected = static_cast<double>(exactSixJ(twice));
    const double got = calcSixJ(twice);
    if (std::abs(got - expected) <= 1e-13)
        return true;
    QString message = QStringLiteral("got %1, expected %2 for twice")
                          .arg(got, 0, 'g', 17)
                          .arg(expected, 0, 'g', 17);
    for (const int momentum : twice)
        message += QStringLiteral(" %1").arg(momentum);
    QTest::qFail(qPrintable(message), __FILE__, __LINE__);
    return false;
}

double threeJ(double j1, double j2, double j3, double m1, double m2, double m3)
{
    return LanqorWignerSymbols::calcThreeJSymbol(j1, j2, j3, m1, m2, m3);
}

} // namespace

class TestWignerSymbols : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void threeJClosedForms();
    void threeJOrthogonality();
    void threeJIntegerDenominator();
    void sixJ();
    void argumentsOutsideTheTable();
};

void TestWignerSymbols::threeJClosedForms()
{
    COMPARE_NEAR(threeJ(1, 1, 0, 0, 0, 0), -1.0 / std::sqrt(3.0), 1e-15);
    COMPARE_NEAR(threeJ(0.5, 0.5, 1, 0.5, -0.5, 0), 1.0 / std::sqrt(6.0), 1e-15);
    COMPARE_NEAR(threeJ(0.5, 0.5, 0, 0.5, -0.5, 0), 1.0 / std::sqrt(2.0), 1e-15);
    // (3 k 3; 0 0 0)^2 = 4/105, 2/77, 100/3003 (Condon and Shortley 1935, c^k of f electrons).
    COMPARE_NEAR(threeJ(3, 2, 3, 0, 0, 0), std::sqrt(4.0 / 105.0), 1e-15);
    COMPARE_NEAR(threeJ(3, 4, 3, 0, 0, 0), -std::sqrt(2.0 / 77.0), 1e-15);
    COMPARE_NEAR(threeJ(3, 6, 3, 0, 0, 0), std::sqrt(100.0 / 3003.0), 1e-15);
    // (J 2 J; -J 0 J) = sqrt(J(2J-1) / ((2J+3)(J+1)(2J+1))).
    for (double j = 1.0; j <= 6.0; j += 0.5)
        COMPARE_NEAR(threeJ(j, 2, j, -j, 0, j),
                     std::sqrt(j * (2 * j - 1) / ((2 * j + 3) * (j + 1) * (2 * j + 1))), 1e-14);
}

void TestWignerSymbols::threeJOrthogonality()
{
    // sum over m1, m2 of (2 j3 + 1) (j1 j2 j3; m1 m2 m3)^2 = 1 for each m3.
    for (int j1 = 1; j1 <= 6; ++j1)
        for (int k = 1; k <= 6; ++k)
            for (int j3 = std::abs(j1 - k); j3 <= std::min(6, j1 + k); ++j3)
                for (int m3 = -j3; m3 <= j3; ++m3) {
                    double sum = 0.0;
                    for (int m1 = -j1; m1 <= j1; ++m1) {
                        const double symbol = threeJ(j1, k, j3, m1, -m1 - m3, m3);
                        sum += (2 * j3 + 1) * symbol * symbol;
                    }
                    COMPARE_NEAR(sum, 1.0, 1e-13);
                }
}

void TestWignerSymbols::threeJIntegerDenominator()
{
    // (j j 0; j -j 0) = 1/sqrt(2j+1) has one term, of denominator D = (2j)!. 12! fits the integer;
    // from 13! on the symbol is -(2j)!/2^31 times the true one.
    COMPARE_NEAR(threeJ(6, 6, 0, 6, -6, 0), 1.0 / std::sqrt(13.0), 1e-14);
    COMPARE_NEAR(threeJ(6.5, 6.5, 0, 6.5, -6.5, 0), -6227020800.0 / 2147483648.0 / std::sqrt(14.0),
                 1e-13);
    COMPARE_NEAR(threeJ(10, 10, 0, 10, -10, 0) / 1e8,
                 -24329020081.76640000 / 2147483648.0 / std::sqrt(21.0), 1e-13);
}

void TestWignerSymbols::sixJ()
{
    // Momenta up to 12 coupled by a rank up to 6, as in U(k), V(11) and between levels.
    std::mt19937 random(3);
    const auto upTo = [&random](int limit) {
        return static_cast<int>(random() % unsigned(limit + 1));
    };
    for (int i = 0; i < 50000; ++i) {
        const int f = upTo(12);
        const int a = upTo(24);
        const int b = upTo(24);
        const int e = std::abs(a - f) + 2 * upTo(std::min(a, f));
        const int d = std::abs(b - f) + 2 * upTo(std::min(b, f));
        const int c = std::abs(a - b) + 2 * upTo(std::min(a, b));
        if (!compareSixJ({a, b, c, d, e, f}))
            return;
    }
}

void TestWignerSymbols::argumentsOutsideTheTable()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QVERIFY(std::isnan(threeJ(60, 60, 60, 0, 0, 0)));
    QVERIFY(std::isnan(threeJ(1e8, 1e8, 1e8, 0, 0, 0)));
    QCOMPARE(threeJ(1e300, 1e300, 1e300, 0, 0, 0), 0.0);
    QCOMPARE(threeJ(nan, 1, 1, 0, 0, 0), 0.0);
    QCOMPARE(threeJ(1, 1, 1, 2, -2, 0), 0.0);
    QCOMPARE(threeJ(1, 1, 1, 1, 1, -1), 0.0);
    QCOMPARE(threeJ(0.3, 0.3, 0, 0.3, -0.3, 0), 0.0);
    QCOMPARE(threeJ(1, 1, 3, 0, 0, 0), 0.0);
    QCOMPARE(threeJ(-1, -1, -1, 0, 0, 0), 0.0);
    QCOMPARE(threeJ(infinity, infinity, 1, 0, 0, 0), 0.0);
    for (double x : {nan, infinity, 1e9, 1e300, 90.0})
        QVERIFY(std::isnan(LanqorWignerSymbols::calcSixJSymbol(x, x, x, x, x, x)));
    // A triad of half-integral sum: no symbol, but a defined return.
    QVERIFY(std::isfinite(LanqorWignerSymbols::calcSixJSymbol(1, 1, 0.5, 1, 1, 0.5)));
}

QTEST_GUILESS_MAIN(TestWignerSymbols)
#include "tst_wignersymbols.moc"
