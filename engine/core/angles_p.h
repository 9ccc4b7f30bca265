#pragma once

/// Angles are stored and printed in degrees and used in radians; this is the only conversion.
constexpr double radiansFromDegrees(double degrees)
{
    return degrees * (3.141592653589793 / 180.0);
}
