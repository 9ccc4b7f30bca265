#pragma once

#include <QString>
#include <QVector>

/// How the diagonal reduced elements <7FJ||U(k)||7FJ> enter a crystal field.
enum class ReducedElements {
    /// Square roots of the tabulated squares: right for 7F1 and 7F3 alone.
    Magnitudes,
    /// The same with the signs that they have relative to 7F1: negative for J = 2, k = 4; J = 4,
    /// k = 2 and 6; J = 5, k = 2; J = 6, all k.
    Signed
};

/// What a calculation of Stark levels used and gave.
struct StarkResults
{
    /// A coordinated atom.
    struct Atom
    {
        int number = 0; ///< in the geometry, from 1; the ion is 1
        QString element;
        double chargeFactor = 0.0; ///< dimensionless
    };
    /// B(k,q), cm^-1, the coefficient of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q) (Wybourne's
    /// normalisation); B(k,-q) = (-1)^q conj(B(k,q)).
    struct FieldParameter
    {
        int k = 0;
        int q = 0;
        double real = 0.0;
        double imaginary = 0.0;
    };
    /// 7FJ.
    struct Manifold
    {
        int J = 0;
        QVector<double> levels; ///< ascending, cm^-1 from the barycentre
        double splitting = 0.0; ///< highest less lowest level, cm^-1
    };

    QString structureFile;
    int coordNumber = 0;
    double ro0 = 0.0; ///< overlap of the nearest atom, dimensionless
    QVector<Atom> atoms;
    QVector<FieldParameter> fieldParameters; ///< k = 2, 4, 6 and q = -k .. k
    double crystalFieldStrength = 0.0;       ///< cm^-1
    QVector<Manifold> manifolds;             ///< by J = 0 .. 6; empty without a calculation
    ReducedElements reducedElements = ReducedElements::Magnitudes;
};
