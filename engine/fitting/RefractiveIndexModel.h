#pragma once

#include <QVector>

/// The refractive index of a medium against the vacuum wavelength l.
struct RefractiveIndexModel
{
    enum class Kind {
        Constant,  ///< coefficients: n
        Sellmeier, ///< A, B1, C1, B2, C2, ...: n^2 = A + sum of B l^2/(l^2 - C), l in micrometre
        Cauchy,    ///< c0, c2, c4, d2, d4: n = c0 + c2/l^2 + c4/l^4 + d2 l^2 + d4 l^4, l likewise
        Table      ///< interpolated between the wavelengths, held at the ends
    };
    Kind kind = Kind::Constant;
    QVector<double> coefficients = {1.5};
    QVector<double> wavelengths; ///< of a table, nm, ascending
    QVector<double> indices;
};
