#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// A small system in which a ligand of a complex keeps its triplet, for GFN1-xTB.
struct DonorModelResults
{
    QString ligand;             ///< its formula
    int ligandCharge = 0;       ///< elementary charges
    bool isLigandAlone = false; ///< otherwise with the ion, two more of it and a molecule of water
    QString description;        ///< "[Eu(C5H7O2)3(H2O)]" or "C12H8N2 alone"
    QVector<Coord> atoms;       ///< Angstrom, the ion first where it is there
    int charge = 0;             ///< of all atoms, elementary charges
    QStringList removed;        ///< names of the ligands that were taken away
    /// From the oxygen atom of the water to the nearest atom of a ligand, Angstrom; 0 without it.
    double nearestToWater = 0.0;
};
