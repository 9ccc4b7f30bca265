#include "core/scrambledSobol_p.h"

#include <boost/random/sobol.hpp>

#include <cstdint>

namespace {

using Word = std::uint32_t;
constexpr int bits = 32;
constexpr std::uint64_t seed = 1;

/// A random number that belongs to @p key (G. L. Steele, D. Lea, C. H. Flood, Proc. OOPSLA 2014,
/// 453: SplitMix64).
std::uint64_t randomOf(std::uint64_t key)
{
    std::uint64_t z = (key + 1) * 0x9e3779b97f4a7c15U;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
}

/// Flips each binary digit or not, at random by the digits before it (A. B. Owen, in Monte Carlo
/// and Quasi-Monte Carlo Methods, Springer 1995, 299).
Word scramble(Word x, std::uint64_t coordinate)
{
    const std::uint64_t own = randomOf(randomOf(seed) + coordinate);
    Word flips = 0;
    for (int digit = 0; digit < bits; ++digit) { // from the first behind the point
        const std::uint64_t before = digit == 0 ? 0 : x >> (bits - digit);
        const std::uint64_t node = (std::uint64_t(1) << digit) | before;
        flips = (flips << 1) | Word(randomOf(own ^ node) & 1U);
    }
    return x ^ flips;
}

} // namespace

std::vector<double> scrambledSobol(int count, int dimension)
{
    constexpr double step = 1.0 / 4294967296.0; // 2^-32
    boost::random::sobol_engine<Word, bits> sequence{std::size_t(dimension)};
    std::vector<double> points;
    points.reserve(std::size_t(count) * std::size_t(dimension));
    for (int point = 0; point < count; ++point)
        for (int i = 0; i < dimension; ++i) {
            // The generator leaves out the origin, without which a power of two is no net (A. B.
            // Owen, arXiv:2008.08051).
            const Word x = point == 0 ? 0 : sequence();
            points.push_back((scramble(x, std::uint64_t(i)) + 0.5) * step);
        }
    return points;
}
