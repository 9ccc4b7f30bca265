#pragma once

#include "options/uncertainOptions.h"

#include <LanqorEngine/LanqorOmega.h>

#include <QVector>

class LanqorInputData;

namespace cli {

/// Omega by sets of the uncertain numbers of --g and --alpha.
class ChargeFactorSets
{
public:
    /// @param geometry  with spherical coordinates; alive as long as this
    /// @param g, alpha  lists of the command line, with plain values
    ChargeFactorSets(const UncertainOptions &uncertain, LanqorInputData &geometry, int coordNumber,
                     const QString &g, const QString &alpha);

    /// Calculates with @p values of all uncertain numbers; false when that fails.
    bool calc(const QVector<double> &values);
    /// The calculation.
    LanqorOmega &omega() { return calculation; }

private:
    const UncertainOptions &uncertain;
    LanqorOmega calculation;
    QVector<int> sourcesOfG;
    QVector<int> sourcesOfAlpha;
    QVector<double> g;
    QVector<double> alpha; // cm^3
};

} // namespace cli
