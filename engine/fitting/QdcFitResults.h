#pragma once

#include <LanqorEngine/IntensityFitResults.h>
#include <LanqorEngine/ParametersQDC.h>

#include <QString>
#include <QVector>

/// A coordinated atom with its reactivity indices and what a fit of Q, D and C made of them.
struct QdcFitAtom
{
    int number = 0; ///< 1-based
    QString element;
    double charge = 0.0;                ///< electron population q, elementary charges
    double superdelocalizability = 0.0; ///< S, per energy unit
    FittedDonor donor;
};

/// Result of LanqorParametricQDC.
struct QdcFitResults : IntensityFitResults
{
    ParametersQDC parameters;
    QVector<QdcFitAtom> atoms; ///< 2 to N+1
    QString energyUnit;        ///< of the orbitals, and so of 1/S and D: "eV" or "hartree"
    int restrictionValue = 1;  ///< lower limit of D/C
    bool isRestricted = true;  ///< false when the restriction was lifted
};
