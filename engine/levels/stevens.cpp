#include "levels/stevens_p.h"

#include <cmath>
#include <cstdlib>

namespace stevens {

double factor(int k, int q)
{
    switch (10 * k + std::abs(q)) {
    case 20:
        return 0.5;
    case 21:
        return std::sqrt(6.0);
    case 22:
        return std::sqrt(6.0) / 2.0;
    case 40:
        return 1.0 / 8.0;
    case 41:
        return std::sqrt(5.0) / 2.0;
    case 42:
        return std::sqrt(10.0) / 4.0;
    case 43:
        return std::sqrt(35.0) / 2.0;
    case 44:
        return std::sqrt(70.0) / 8.0;
    case 60:
        return 1.0 / 16.0;
    case 61:
        return std::sqrt(42.0) / 8.0;
    case 62:
        return std::sqrt(105.0) / 16.0;
    case 63:
        return std::sqrt(105.0) / 8.0;
    case 64:
        return 3.0 * std::sqrt(14.0) / 16.0;
    case 65:
        return 3.0 * std::sqrt(77.0) / 8.0;
    case 66:
        return std::sqrt(231.0) / 16.0;
    default:
        return 0.0;
    }
}

double largestElement(int k, double J)
{
    // The product of (2J - i)/2 for i = 0 .. k - 1 with the leading coefficients 2, 8 and 16.
    double product = k == 2 ? 2.0 : k == 4 ? 8.0 : 16.0;
    for (int i = 0; i < k; ++i)
        product *= J - 0.5 * i;
    return product;
}

} // namespace stevens
