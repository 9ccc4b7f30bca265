#pragma once

/// (-1)^n.
constexpr double parity(int n)
{
    return n % 2 == 0 ? 1.0 : -1.0;
}
