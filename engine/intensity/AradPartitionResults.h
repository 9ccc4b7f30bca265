#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/Ligand.h>

#include <QString>
#include <QVector>

/// Results of LanqorAradPartition: who brings about the forced-electric-dipole rate Arad(ED).
/// Rates are in s^-1; a share may be negative.
struct AradPartitionResults
{
    struct AtomShare
    {
        int atom = 0;  ///< number in the geometry, 2 to N+1
        QString label; ///< element symbol
        double rate = 0.0;
        QVector<double> pairs; ///< with each coordinated atom; index 0 is atom 2
    };
    struct GroupShare
    {
        Ligand group;
        double rate = 0.0;
        QVector<double> pairs; ///< with each group
    };

    double refractiveIndex = 0.0; ///< of the medium
    ByRank rateConstants;         ///< rate per unit of Omega(lambda), s^-1 cm^-2
    QVector<AtomShare> atoms;     ///< in order; empty without a coordination sphere
    QVector<GroupShare> groups;   ///< from 0, in the order in which they were defined
    QString groupError;           ///< why groups that were given cannot be used
};
