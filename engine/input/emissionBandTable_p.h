#pragma once

#include <QString>

#include <array>

/// Bands 5D0 -> 7FJ, J = 0 to 5, as a file lists them.
struct EmissionBandTable
{
    std::array<double, 6> area{};       ///< any one unit; 0 for a band that is not listed
    std::array<double, 6> barycenter{}; ///< cm^-1
    QString error;                      ///< why the file holds no table; empty when it does
};

/// Reads lines of J, area and barycentre (cm^-1), each J at most once; "#" starts a comment.
EmissionBandTable readEmissionBandTable(const QString &fileName);
