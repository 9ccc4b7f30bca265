#pragma once

#include <QVector>

/// How the misfit of one start of a fit fell.
struct FitTrace
{
    struct Improvement
    {
        int point = 0;         ///< number of the trial, from 1
        double response = 0.0; ///< of the fit
    };
    int start = 0; ///< its number, from 1
    QVector<Improvement> improvements;
};
