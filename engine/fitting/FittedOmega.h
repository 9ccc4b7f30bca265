#pragma once

#include <QtGlobal>

/// An intensity parameter Omega(lambda) of a fit, cm^2.
struct FittedOmega
{
    int lambda = 0;
    double measured = qQNaN(); ///< target; not a number for Omega(6), which is never measured
    double fitted = 0.0;
    double weight = 1.0; ///< of its squared difference in the response, dimensionless
};
