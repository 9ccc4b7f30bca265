#pragma once

#include <LanqorEngine/Coord.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// What a finished run of xtb holds.
struct XtbRunResults
{
    QString outputPath;
    QString version;                    ///< of xtb, "6.5.1"
    QString programCall;                ///< as printed
    int gfn = 0;                        ///< of the method GFN1-xTB the 1
    int charge = 0;                     ///< elementary charges
    int unpairedElectrons = 0;          ///< as asked for in the call
    bool isOptimisation = false;        ///< and converged
    QString solvent;                    ///< "water (ALPB)"; empty in the gas phase
    double electronicTemperature = 0.0; ///< K
    double energy = 0.0;                ///< hartree
    double gap = 0.0;                   ///< between HOMO and LUMO, eV
    double gradientNorm = 0.0;          ///< hartree per bohr
    QStringList elements;               ///< by atom number - 1
    /// Geometry at the end, Angstrom; empty for a run that neither prints nor is given one.
    QVector<Coord> atoms;
    QVector<double> charges; ///< by atom number - 1, elementary charges; empty without their file
    QStringList warnings;    ///< what shifts an energy but does not forbid its use
};
