#include "options/chargeFactorSets.h"

#include "options/atomValues.h"

#include <LanqorEngine/LanqorInputData.h>

namespace cli {

namespace {

constexpr double cm3PerCubicAngstrom = 1.0e-24;

/// The plain value of each atom.
QVector<double> valuesOf(const QVector<int> &sources, const QString &list)
{
    const QStringList entries = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    QVector<double> values(sources.size(), 0.0);
    for (int atom = 2; atom < sources.size(); ++atom)
        values[atom] =
            entries.at(sources.at(atom)).section(QLatin1Char('='), 1).trimmed().toDouble();
    return values;
}

} // namespace

ChargeFactorSets::ChargeFactorSets(const UncertainOptions &uncertain, LanqorInputData &geometry,
                                   int coordNumber, const QString &gList, const QString &alphaList)
    : uncertain(uncertain)
    , calculation(nullptr, 0, &geometry)
    , sourcesOfG(readAtomSources(geometry, coordNumber, QStringLiteral("--g"), gList))
    , sourcesOfAlpha(readAtomSources(geometry, coordNumber, QStringLiteral("--alpha"), alphaList))
    , g(valuesOf(sourcesOfG, gList))
    , alpha(valuesOf(sourcesOfAlpha, alphaList))
{
    calculation.setCoordNumber(coordNumber);
    for (double &value : alpha)
        value *= cm3PerCubicAngstrom;
}

bool ChargeFactorSets::calc(const QVector<double> &values)
{
    for (int i = 0; i < uncertain.numbers().size(); ++i) {
        const UncertainOptions::Number &number = uncertain.numbers().at(i);
        const bool isG = number.option == QLatin1String("g");
        if (!isG && number.option != QLatin1String("alpha"))
            continue;
        const QVector<int> &sources = isG ? sourcesOfG : sourcesOfAlpha;
        for (int atom = 2; atom < sources.size(); ++atom)
            if (sources.at(atom) == number.entry)
                (isG ? g : alpha)[atom] = values.at(i) * (isG ? 1.0 : cm3PerCubicAngstrom);
    }
    return calculation.setChargeFactorAndAlpha(g, alpha) && calculation.calcOmega();
}

} // namespace cli
