#pragma once

/// The order in which the parameters B(k,q) of a crystal field are stored: k = 2, 4, 6 and, for
/// each, q = -k .. k.
namespace fieldParameters {

constexpr int count = 5 + 9 + 13;

constexpr bool exists(int k, int q)
{
    return (k == 2 || k == 4 || k == 6) && q >= -k && q <= k;
}

constexpr int place(int k, int q)
{
    return (k * k - k - 2) / 2 + k + q;
}

static_assert(place(2, -2) == 0 && place(4, -4) == 5 && place(6, -6) == 14 &&
              place(6, 6) == count - 1);

} // namespace fieldParameters
