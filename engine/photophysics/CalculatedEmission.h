#pragma once

#include <QVector>

/// A calculated emission spectrum of 5D0, see LanqorEmissionCurve.
struct CalculatedEmission
{
    /// 5D0 -> 7FJ.
    struct Band
    {
        int J = 0;
        double barycenter = 0.0; ///< cm^-1; 0 for a band that the model gives no rate
        double rate = 0.0;       ///< s^-1
        double share = 0.0;      ///< of the radiative rate, %
    };
    /// A line to a Stark level of 7FJ.
    struct Line
    {
        int J = 0;
        int level = 0;       ///< from 1, the lowest of its manifold
        double energy = 0.0; ///< cm^-1
        double share = 0.0;  ///< of the radiative rate, %
    };

    double width = 0.0;            ///< full width at half maximum of every line, cm^-1
    QVector<Band> bands;           ///< J = 0 .. 6
    QVector<Line> lines;           ///< by J and level
    QVector<double> wavenumbers;   ///< of the curve, cm^-1, evenly spaced, ascending
    QVector<double> photonDensity; ///< share of the photons per cm^-1, %/cm^-1
    QVector<double> wavelengths;   ///< nm, of vacuum, at the same points
    QVector<double> powerDensity;  ///< emitted power per nm, largest value 1
    double powerScale = 0.0;       ///< %/nm times cm^-1 that powerDensity has as 1
};
