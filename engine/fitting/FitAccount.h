#pragma once

#include <LanqorEngine/FitParameter.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// What a fit was asked for, how it ended and what it found: the same record for every fit.
struct FitAccount
{
    enum class End { Converged, PointsSpent, Stopped, Refused };

    struct Parameter
    {
        FitParameter range;
        double value = 0.0;
        double standardError = qQNaN(); ///< in its unit; not a number where the fit gives none
        bool isUndetermined = false;    ///< it can change without any change of the data
        bool isAtMinimum = false;       ///< it lies at its bound, and is not fixed
        bool isAtMaximum = false;
    };

    /// Where starts ended.
    struct Minimum
    {
        double misfit = 0.0;
        int starts = 0;         ///< number of them
        QVector<double> values; ///< of the parameters
    };

    /// A measured quantity of a least-squares fit.
    struct Datum
    {
        QString label;
        double measured = 0.0;
        double standardDeviation = 1.0;
        double computed = 0.0;
        QString computedLabel; ///< of the level that it was assigned to, where that is told
        bool isFitted = true;
    };

    QString objective;   ///< what was minimised, in words
    QString otherMisfit; ///< value of the other objective there, in words; may be empty
    QString unit;        ///< of the misfit
    QStringList targets; ///< what was measured, in words; empty when there are data
    double misfit = 0.0; ///< the smallest one
    int dataCount = 0;   ///< number of measured values that were fitted
    End end = End::Stopped;
    qint64 points = 0; ///< trials of all starts
    int starts = 1;
    int bestStart = 1;
    QVector<Parameter> parameters;
    QVector<Minimum> minima; ///< distinct ones in ascending order of the misfit, at most five

    // Of a least-squares fit alone.
    QVector<Datum> data;             ///< in the order of measurement, in @ref dataUnit
    QString dataUnit;                ///< also of the rms difference
    bool areDeviationsKnown = false; ///< otherwise their common factor is taken from the misfit
    QVector<QVector<double>> correlations; ///< by parameter; 0 for what has no standard error
    /// Orthonormal directions, by parameter, along which no datum changes.
    QVector<QVector<double>> undetermined;
};
