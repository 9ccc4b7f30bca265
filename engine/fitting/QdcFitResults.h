#pragma once

#include <LanqorEngine/FittedOmega.h>
#include <LanqorEngine/ParametersQDC.h>

#include <QString>
#include <QVector>

/// A coordinated atom with its reactivity indices and what a fit of Q, D and C made of them.
struct QdcFitAtom
{
    int number = 0; ///< 1-based
    QString element;
    double charge = 0.0;                ///< q, elementary charges
    double superdelocalizability = 0.0; ///< S, in the inverse unit of the orbital energies
    double chargeFactor = 0.0;
    double minimumChargeFactor = 0.0;
    double maximumChargeFactor = 0.0;
    double alpha = 0.0; ///< cm^3, as are its bounds
    double minimumAlpha = 0.0;
    double maximumAlpha = 0.0;
};

/// Result of LanqorParametricQDC: the best trial against its targets.
struct QdcFitResults
{
    bool hasFeasiblePoint = false; ///< without one there are no values of a best trial
    QVector<FittedOmega> omega;    ///< lambda = 2, 4, 6; the target of Omega(6) is 0
    ParametersQDC parameters;
    QVector<QdcFitAtom> atoms; ///< 2 to N+1
    int restrictionValue = 1;  ///< lower limit of D/C
    bool isRestricted = true;  ///< false when the restriction was lifted
    double response = 0.0;     ///< (1e-20 cm^2)^2
    qint64 points = 0;         ///< trials
    QString report;            ///< of the intensity parameters; empty before the end of the fit
};
