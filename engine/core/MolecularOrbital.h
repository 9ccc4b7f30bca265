#pragma once

#include <QStringList>
#include <QVector>

/// A molecular orbital as an expansion in atomic orbitals; the three lists run in parallel.
struct MolecularOrbital
{
    QVector<int> atomNumbers;   ///< atom of each term, 1-based
    QStringList atomicOrbitals; ///< label of each term, as printed
    QVector<double> coefficients;
};
