#pragma once

#include <QString>
#include <QVector>

/// A named group of coordinated atoms.
struct Ligand
{
    QString name;
    QVector<int> atoms; ///< atom numbers of the geometry
};
