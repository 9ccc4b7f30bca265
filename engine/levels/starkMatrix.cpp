#include "levels/starkMatrix_p.h"

#include "core/parity_p.h"

#include <LanqorEngine/LanqorWignerSymbols.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace starkMatrix {

namespace {

constexpr int rankCount = 3;
constexpr int largestSize = 2 * maximumJ + 1;

constexpr std::size_t tableSize = std::size_t(maximumJ + 1) * rankCount * largestSize * largestSize;

using Table = std::array<double, tableSize>;

std::size_t place(int J, int k, int M, int Mp)
{
    const int block = (J * rankCount + k / 2 - 1) * largestSize;
    return static_cast<std::size_t>((block + M + J) * largestSize + Mp + J);
}

double calcCoefficient(int J, int k, int M, int Mp)
{
    const int q = M - Mp;
    const double c3 = LanqorWignerSymbols::calcThreeJSymbol(3, k, 3, 0, 0, 0);
    const double cJ = LanqorWignerSymbols::calcThreeJSymbol(J, k, J, -M, q, Mp);
    return -7.0 * parity(J - M + q) * c3 * cJ * reducedU(k, J);
}

Table makeTable()
{
    Table table{};
    for (int J = 1; J <= maximumJ; ++J) {
        for (const int k : ranks) {
            for (int M = -J; M <= J; ++M) {
                for (int Mp = -J; Mp <= J; ++Mp)
                    table[place(J, k, M, Mp)] = calcCoefficient(J, k, M, Mp);
            }
        }
    }
    return table;
}

} // namespace

double reducedU(int k, int J)
{
    static constexpr double squares[maximumJ][rankCount] = {
        {0.1541, 0.0, 0.0},       {0.1, 0.1219, 0.0},       {0.0275, 0.026, 0.0281},
        {0.0117, 0.2841, 0.3528}, {0.2762, 0.2063, 0.3225}, {1.2029, 0.394, 0.0294},
    };
    const bool isTabulated = J >= 1 && J <= maximumJ && (k == 2 || k == 4 || k == 6);
    return isTabulated ? std::sqrt(squares[J - 1][k / 2 - 1]) : 0.0;
}

double sign(ReducedElements choice, int k, int J)
{
    const bool isNegative =
        (J == 2 && k == 4) || (J == 4 && k != 4) || (J == 5 && k == 2) || J == 6;
    return choice == ReducedElements::Signed && isNegative ? -1.0 : 1.0;
}

double coefficient(int J, int k, int M, int Mp)
{
    static const Table table = makeTable();
    return table[place(J, k, M, Mp)];
}

} // namespace starkMatrix
