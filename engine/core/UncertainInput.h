#pragma once

#include <QString>

#include <limits>

/// How the values of an uncertain number are distributed.
enum class UncertaintyKind {
    Normal,    ///< value is the mean
    LogNormal, ///< value is the median: of rates and lifetimes, which cannot be negative
    Uniform    ///< between low and high
};

/// A number that is known with an uncertainty.
struct UncertainInput
{
    QString name;
    QString unit; ///< "1" when dimensionless
    UncertaintyKind kind = UncertaintyKind::Normal;
    double value = 0.0; ///< of a uniform one the middle of what is possible
    /// Of a normal one. That of the logarithm of a log-normal one is
    /// sqrt(ln(1 + (standardDeviation/value)^2)), for small ones the relative one.
    double standardDeviation = 0.0;
    double low = 0.0; ///< limits of a uniform one
    double high = 0.0;
    /// What is possible; the distribution is cut there.
    double minimum = -std::numeric_limits<double>::infinity();
    double maximum = std::numeric_limits<double>::infinity();
};
