#include "LanqorParametricEnergyLevels.h"

#include "fitting/measuredLevel_p.h"
#include "input/fitFiles_p.h"

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <cmath>

namespace {

/// 0 for what is no finite number.
double number(const QString &text)
{
    const double value = text.toDouble();
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

EnergyLevelsExp measuredLevel(const QString &label)
{
    EnergyLevelsExp level;
    level.label = label;
    const auto term = LanqorSpectroscopicTermUtil::termFromLabel(label.left(2), false);
    level.S = term.S;
    level.L = term.L;
    QString textOfJ = label.mid(2);
    if (textOfJ.startsWith(QLatin1Char('('))) {
        const int closing = textOfJ.indexOf(QLatin1Char(')'));
        level.index = textOfJ.mid(1, closing - 1).toInt();
        textOfJ = closing < 0 ? QString() : textOfJ.mid(closing + 1);
    }
    level.J = LanqorParametricEnergyLevels::getJDoubleFromString(textOfJ);
    return level;
}

double LanqorParametricEnergyLevels::getJDoubleFromString(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (parts.size() != 2)
        return number(parts.value(0));
    const double denominator = number(parts.at(1));
    return denominator == 0.0 ? 0.0 : number(parts.at(0)) / denominator;
}

bool LanqorParametricEnergyLevels::readEnergyLevelsExp(const QString &fileName,
                                                       QVector<EnergyLevelsExp> &levels)
{
    const auto measured = fitFiles::readMeasuredLevels(fileName);
    if (!measured)
        return false;
    levels.clear();
    for (const fitFiles::MeasuredLevel &row : *measured) {
        levels.append(measuredLevel(row.label));
        levels.last().energy = row.energy;
        levels.last().standardDeviation = row.deviation;
    }
    return true;
}
