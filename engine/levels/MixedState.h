#pragma once

#include <LanqorEngine/CoeffAndLabel.h>

#include <QString>
#include <QVector>

/// A level in intermediate coupling.
struct MixedState
{
    /// The Russell-Saunders level on whose diagonal position the eigenvalue settled; in a strongly
    /// mixed block that need not be the largest component.
    QString label;
    double energy = 0.0; ///< cm^-1
    /// One for each Russell-Saunders level of its J.
    QVector<CoeffAndLabel> components;
};
