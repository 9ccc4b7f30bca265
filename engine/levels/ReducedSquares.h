#pragma once

/// Squared reduced elements between two levels in intermediate coupling.
struct ReducedSquares
{
    int from = 0; ///< numbers of the levels in the list of all, from 1
    int to = 0;
    double U2 = 0.0; ///< <from||U(k)||to>^2
    double U4 = 0.0;
    double U6 = 0.0;
    double magnetic = 0.0; ///< <from||L + g_s S||to>^2, hbar^2
};
