#pragma once

#include <LanqorEngine/CoeffAndLabel.h>
#include <LanqorEngine/FreeIonParameters.h>

#include <QString>
#include <QVector>

/// What a calculation of free-ion levels used and gave.
struct FreeIonLevelsResults
{
    struct Level
    {
        int number = 0; ///< in the list of all levels, from 1
        QString label;  ///< "7F0", "5D(3)1"; see MixedState::label
        double J = 0.0;
        double energy = 0.0; ///< cm^-1
        /// Descending in magnitude after a calculation of every J.
        QVector<CoeffAndLabel> components;
    };

    double F0 = 0.0;              ///< Slater integral, cm^-1
    FreeIonParameters parameters; ///< the others; symbol and source if they were told
    QVector<Level> levels;        ///< ascending in energy after a calculation of every J
};
