#pragma once

#include <QString>
#include <QVector>

/// An electronic transition.
struct AbsorptionTransition
{
    double wavelength = 0.0; ///< nm
    double energy = 0.0;     ///< cm^-1
    double oscillatorStrength = 0.0;
    /// The excitation with the largest weight: the orbitals left and reached, numbers as printed;
    /// -1 where the output tells none.
    int fromOrbital = -1;
    int toOrbital = -1;
    double weight = 0.0;   ///< dimensionless
    QString configuration; ///< "HOMO-1 → LUMO", or "12 → 15" where the HOMO is not known
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
    QString measuredFile;                      ///< of a measured spectrum; empty without one
    QVector<double> measuredWavelengths;       ///< nm, ascending
    QVector<double> measuredAbsorption;        ///< largest value in the range of the curve 1
};
