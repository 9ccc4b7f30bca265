#pragma once

#include <LanqorEngine/FitParameter.h>

#include <QString>
#include <QVector>

/// Sets of parameters that reproduce measured intensity parameters equally well.
struct IntensitySolutions
{
    /// What is told of each set: a parameter, or what follows from it.
    struct Quantity
    {
        QString name; ///< "g:O", "omega_6", "rate_of_atom_3"
        QString unit; ///< "1", "1e-20 cm^2", "s^-1"
        bool isParameter = false;
        double minimum = 0.0; ///< over the sets
        double maximum = 0.0;
        /// The sets agree within 5 % of the middle of their values.
        bool isDetermined = false;
    };

    QVector<Quantity> quantities;
    QVector<QVector<double>> sets; ///< the values of the quantities in their order; the best first
    QVector<double> responses;     ///< by set
    int central = 0;               ///< set nearest to the middles of the ranges, relative to these
    double tolerance = 0.0;        ///< largest excess of a response over the best
    QString groupError;            ///< why groups of atoms that were given cannot be used
    QString yieldError;            ///< why there are no yields although their inputs were given
};
