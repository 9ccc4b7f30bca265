#include "levels/threeJ_p.h"

#include "core/parity_p.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <utility>

namespace threeJ {

namespace {

constexpr std::size_t tableSize = 100;

constexpr std::array<double, tableSize> makeFactorials()
{
    std::array<double, tableSize> table{1.0};
    for (std::size_t n = 1; n < tableSize; ++n)
        table[n] = table[n - 1] * static_cast<double>(n);
    return table;
}

constexpr std::array<double, tableSize> factorials = makeFactorials();

double factorial(int n)
{
    return factorials[static_cast<std::size_t>(n)];
}

bool isMomentum(int twoJ, int twoM)
{
    return twoJ >= 0 && std::abs(twoM) <= twoJ && (twoJ + twoM) % 2 == 0;
}

} // namespace

double symbol(int twoJ1, int twoJ2, int twoJ3, int twoM1, int twoM2, int twoM3)
{
    if (!isMomentum(twoJ1, twoM1) || !isMomentum(twoJ2, twoM2) || !isMomentum(twoJ3, twoM3) ||
        twoM1 + twoM2 + twoM3 != 0 || (twoJ1 + twoJ2 + twoJ3) % 2 != 0 || twoJ3 > twoJ1 + twoJ2 ||
        twoJ3 < std::abs(twoJ1 - twoJ2))
        return 0.0;
    const int a = (twoJ1 + twoJ2 - twoJ3) / 2;
    const int b = (twoJ1 - twoJ2 + twoJ3) / 2;
    const int c = (-twoJ1 + twoJ2 + twoJ3) / 2;
    double square =
        factorial(a) * factorial(b) * factorial(c) / factorial((twoJ1 + twoJ2 + twoJ3) / 2 + 1);
    for (const auto &[twoJ, twoM] :
         {std::pair{twoJ1, twoM1}, std::pair{twoJ2, twoM2}, std::pair{twoJ3, twoM3}})
        square *= factorial((twoJ + twoM) / 2) * factorial((twoJ - twoM) / 2);
    // j1 + j2 - j3, j1 - m1, j2 + m2, and what is added to t in the other two.
    const int d = (twoJ1 - twoM1) / 2;
    const int e = (twoJ2 + twoM2) / 2;
    const int f = (twoJ3 - twoJ2 + twoM1) / 2;
    const int g = (twoJ3 - twoJ1 - twoM2) / 2;
    double sum = 0.0;
    for (int t = std::max({0, -f, -g}); t <= std::min({a, d, e}); ++t)
        sum += parity(t) / (factorial(t) * factorial(a - t) * factorial(d - t) * factorial(e - t) *
                            factorial(f + t) * factorial(g + t));
    return parity((twoJ1 - twoJ2 - twoM3) / 2) * std::sqrt(square) * sum;
}

double wignerEckart(int twoJ, int twoM, int k, int twoJp, int twoMp)
{
    return parity((twoJ - twoM) / 2) * symbol(twoJ, 2 * k, twoJp, -twoM, twoM - twoMp, twoMp);
}

} // namespace threeJ
