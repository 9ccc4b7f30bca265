#pragma once

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

/// A coefficient of fractional parentage of a term of 4f^n.
struct FractParentCoeff
{
    LanqorSpectroscopicTermUtil::SpectroscopicTerm parent; ///< term of 4f^(n-1)
    double cfp = 0.0;
};
