#pragma once

#include <LanqorEngine/UncertainInput.h>

#include <QString>
#include <QStringList>
#include <QVector>

/// Results of LanqorUncertainty.
struct UncertaintyResults
{
    /// What is independent of the others: an uncertain number, or an ensemble.
    struct Factor
    {
        QString name;
        bool isEnsemble = false;
        int rows = 0;          ///< of an ensemble
        UncertainInput input;  ///< otherwise
        double cutShare = 0.0; ///< of the distribution beyond what is possible
        double lowest = 0.0;   ///< 2.5 % of the values lie below
        double highest = 0.0;  ///< 2.5 % lie above
    };
    struct Quantity
    {
        QString name;
        QString unit;
        double value = 0.0; ///< with every input at its value
        double median = 0.0;
        double low68 = 0.0; ///< limits of the middle 68 %
        double high68 = 0.0;
        double low95 = 0.0; ///< limits of the middle 95 %
        double high95 = 0.0;
        int missing = 0; ///< of A and B without a finite value, which are left out
        /// Sobol indices by factor: shares of the variance by the factor alone and by the factor
        /// with all its interactions. Not a number when nothing varies.
        QVector<double> firstOrder;
        QVector<double> total;
    };

    int samples = 0; ///< of A, and as many of B
    QVector<Factor> factors;
    QVector<Quantity> quantities;
    QStringList warnings; ///< of distributions that are cut, and of samples without a result
};
