#pragma once

#include <QString>
#include <QVector>

class LanqorInputData;

/// Values of the command line that can be but hardly are what was meant: a warning tells of each,
/// with the unit in which it may have been given. What cannot be is refused where it is read.
namespace cli {

/// Polarisabilities of atoms 2 to N+1, cubic Angstrom, by atom number.
void warnOfAlphas(const LanqorInputData &geometry, const QVector<double> &alphas);
/// A refractive index.
void warnOfRefractiveIndex(double index);
/// Lifetime of 5D0, ms.
void warnOfLifetime(double ms);

/// Why a value of the option @p name, Omega in 1e-20 cm^2, is hardly that of a complex; empty for
/// one that is, and for 0.
QString doubtOfOmega(const char *name, double omega);

} // namespace cli
