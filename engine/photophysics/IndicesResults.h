#pragma once

#include <QString>
#include <QVector>

/// Reactivity indices of one atom.
struct AtomIndices
{
    int atom = 0;            ///< 1-based; the ion is atom 1
    QString label;           ///< element
    double population = 0.0; ///< electrons
    double superDeslocalizability = 0.0;
};

/// What LanqorIndicesCalculation found, of the atoms from 2 on.
struct IndicesResults
{
    QString outputPath;
    QString energyUnit; ///< of the orbitals, "eV" or "hartree"; superdelocalizabilities are inverse
    QVector<AtomIndices> atoms;
};
