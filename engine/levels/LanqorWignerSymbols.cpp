#include "LanqorWignerSymbols.h"

#include "core/parity_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

using FactorialTable = std::array<double, 170>; // 170! exceeds a double

constexpr FactorialTable calcFact()
{
    FactorialTable table{1.0};
    for (std::size_t n = 1; n < table.size(); ++n)
        table[n] = table[n - 1] * static_cast<double>(n);
    return table;
}

/// n! for n = 0 .. 169; there before any thread asks for it.
constexpr FactorialTable fact = calcFact();

/// @p x truncated toward zero; the lowest integer for what a 32-bit integer cannot hold.
int truncated(double x)
{
    constexpr double limit = 2147483648.0; // 2^31
    if (x > -limit - 1.0 && x < limit)
        return static_cast<int>(x);
    return std::numeric_limits<int>::min();
}

bool isMultipleOfHalf(double x)
{
    return static_cast<double>(truncated(2.0 * x)) == 2.0 * x;
}

/// x!, NaN outside the table.
double factorial(double x)
{
    const int n = truncated(x);
    if (n < 0 || n >= static_cast<int>(fact.size()))
        return std::numeric_limits<double>::quiet_NaN();
    return fact[static_cast<std::size_t>(n)];
}

/// The square of the triangle coefficient.
double delta(double a, double b, double c)
{
    return factorial(a - b + c) * factorial(a + b - c) * factorial(b + c - a) /
           factorial(a + b + c + 1.0);
}

/// Whether none of a, b, c exceeds the sum of the others.
bool triangleConditions(double a, double b, double c)
{
    return !(a > b + c || b > a + c || c > a + b);
}

} // namespace

LanqorWignerSymbols &LanqorWignerSymbols::operator=(const LanqorWignerSymbols &) = default;

double LanqorWignerSymbols::calcThreeJSymbol(const double &j1, const double &j2, const double &j3,
                                             const double &m1, const double &m2, const double &m3)
{
    for (double x : {j1, j2, j3, m1, m2, m3})
        if (!isMultipleOfHalf(x))
            return 0.0;
    if (!triangleConditions(j1, j2, j3) || m1 + m2 + m3 != 0.0 || std::abs(m1) > j1 ||
        std::abs(m2) > j2 || std::abs(m3) > j3)
        return 0.0;

    const double square = delta(j1, j2, j3) * factorial(j1 + m1) * factorial(j1 - m1) *
                          factorial(j2 + m2) * factorial(j2 - m2) * factorial(j3 + m3) *
                          factorial(j3 - m3);
    if (std::isnan(square))
        return square;

    const int first = truncated(std::max({0.0, j1 - j3 + m2, j2 - j3 - m1}));
    const int last = truncated(std::min({j1 + j2 - j3, j1 - m1, j2 + m2}));
    if (first > last)
        return 0.0;
    double sum = 0.0;
    for (int k = first; k <= last; ++k) {
        const double product = factorial(k) * factorial(k - (j2 - j3 - m1)) *
                               factorial(k - (j1 - j3 + m2)) * factorial(j1 + j2 - j3 - k) *
                               factorial(j2 + m2 - k) * factorial(j1 - m1 - k);
        // Through a 32-bit integer on purpose; see the header.
        sum += parity(k) / static_cast<double>(truncated(product));
    }
    return std::sqrt(square) * parity(truncated(j1 - j2 - m3)) * sum;
}

double LanqorWignerSymbols::calcSixJSymbol(const double &a, const double &b, const double &c,
                                           const double &d, const double &e, const double &f)
{
    if (!triangleConditions(a, b, c) || !triangleConditions(d, e, c) ||
        !triangleConditions(a, e, f) || !triangleConditions(d, b, f))
        return 0.0;

    const double square = delta(d, e, c) * delta(a, b, c) * delta(d, b, f) * delta(a, e, f);
    if (std::isnan(square))
        return square;

    // Racah's sum over t = a + b + d + e - z.
    const double alpha1 = a + d - c - f;
    const double alpha2 = b + e - c - f;
    const double beta1 = a + b - c;
    const double beta2 = d + e - c;
    const double beta3 = a + e - f;
    const double beta4 = b + d - f;
    const double n = a + b + d + e + 1.0;
    const int first = truncated(std::max({alpha1, alpha2, 0.0}));
    const int last = truncated(std::min({beta4, n, beta3, beta2, beta1}));
    if (first > last)
        return 0.0;
    double sum = 0.0;
    for (int z = first; z <= last; ++z) {
        const double numerator = parity(truncated(n - z)) * -1.0 * factorial(n - z);
        const double denominator = factorial(z - alpha1) * factorial(z) * factorial(z - alpha2) *
                                   factorial(beta1 - z) * factorial(beta2 - z) *
                                   factorial(beta3 - z) * factorial(beta4 - z);
        sum += numerator / denominator;
    }
    return std::sqrt(square) * sum;
}
