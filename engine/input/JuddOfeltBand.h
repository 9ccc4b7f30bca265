#pragma once

#include <QString>
#include <QtGlobal>

/// An absorption band of a lanthanide ion from its ground level.
struct JuddOfeltBand
{
    enum class Quantity {
        OscillatorStrength,         ///< f, dimensionless, with its magnetic dipole part
        LineStrength,               ///< S of the electric dipole transition, cm^2
        CrossSectionOverWavelength, ///< integral of the cross section over the wavelength, cm^2 nm
        CrossSectionOverWavenumber, ///< over the wavenumber, cm
        Absorbance ///< integral of the decadic absorbance over the wavenumber, cm^-1
    };

    int line = 0;        ///< of its file, from 1; 0 without one
    QString level;       ///< the upper level, or several whose bands overlap: "3P1+1I6"
    double position = 0; ///< barycentre, nm or cm^-1
    bool isWavelength = false;
    Quantity quantity = Quantity::OscillatorStrength;
    double value = 0.0;
    double error = 0.0; ///< of the value, in its unit; 0: not known
    /// Squared reduced elements; not a number: from the eigenvectors of the ion.
    double U2 = qQNaN();
    double U4 = qQNaN();
    double U6 = qQNaN();
    /// Oscillator strength of the magnetic dipole transition; not a number: from the eigenvectors.
    double magneticStrength = qQNaN();
    double refractiveIndex = qQNaN(); ///< at the band; not a number: from the dispersion
};
