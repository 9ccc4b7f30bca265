#pragma once

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitTrace.h>

#include <QVector>

/// A least-squares fit from one start.
struct LeastSquaresResults
{
    QVector<double> vector; ///< of the parameters; empty when there was nothing to fit
    /// Without the number of starts; its misfit is the sum of ((computed - measured)/sd)^2.
    FitAccount account;
    FitTrace trace;
};
