#pragma once

#include <QVector>

/// An electronic transition.
struct AbsorptionTransition
{
    double wavelength = 0.0; ///< nm
    double energy = 0.0;     ///< cm^-1
    double oscillatorStrength = 0.0;
};

/// A computed absorption spectrum.
struct AbsorptionResults
{
    double bandWidth = 0.0;                    ///< full width at half maximum of every band, nm
    double rangeStart = 0.0;                   ///< limits of the spectrum as they were set, nm
    double rangeEnd = 0.0;                     ///< nm
    QVector<AbsorptionTransition> transitions; ///< those in the range, by rising wavelength
    QVector<double> wavelengths;               ///< of the curve, nm, by falling wavelength
    QVector<double> absorption;                ///< of the curve, largest value 1
};
