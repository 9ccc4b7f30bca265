#pragma once

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QVector>

/// An entry of the electrostatic table of 4f^n.
struct ElectrostaticElement
{
    LanqorSpectroscopicTermUtil::SpectroscopicTerm bra;
    LanqorSpectroscopicTermUtil::SpectroscopicTerm ket;
    /// Of the Racah parameters E0, E1, E2, E3 in the element between the two terms.
    QVector<double> coefficients;
};
