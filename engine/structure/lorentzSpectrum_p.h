#pragma once

#include <QVector>

/// An absorption band of Lorentzian shape.
struct LorentzBand
{
    double wavenumber = 0.0; ///< centre p, cm^-1
    double width = 0.0;      ///< full width at half maximum w, cm^-1
    double strength = 0.0;   ///< oscillator strength f
};

/// Sums of the bands at the wavenumbers @p grid, cm^-1:
///     y(x) = sum f (x / p) [w / (4 (x + p)^2 + w^2) + w / (4 (x - p)^2 + w^2)],
/// the imaginary part of the response of damped oscillators, absorption and its mirror image at
/// negative wavenumber.
QVector<double> lorentzSums(const QVector<LorentzBand> &bands, const QVector<double> &grid);
