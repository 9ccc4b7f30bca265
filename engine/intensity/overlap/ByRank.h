#pragma once

#include <array>
#include <cstddef>

/// Values of a quantity that carries a rank, by that rank, 0 to 6; ranks without a meaning hold 0.
struct ByRank
{
    std::array<double, 7> values{};

    constexpr double operator[](int rank) const { return values[static_cast<std::size_t>(rank)]; }
    constexpr double &operator[](int rank) { return values[static_cast<std::size_t>(rank)]; }
    /// The same for any rank; 0 outside 0 to 6.
    constexpr double value(int rank) const
    {
        return rank >= 0 && rank < static_cast<int>(values.size()) ? (*this)[rank] : 0.0;
    }
};
