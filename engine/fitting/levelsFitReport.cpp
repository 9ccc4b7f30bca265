#include "fitting/levelsFitReport_p.h"

#include "core/reportText_p.h"

#include <QTextStream>

#include <cmath>

using reportText::fixed;

namespace {

/// Measured and computed energies, and the rms difference of the fitted levels.
QString levelTable(const LevelsFitResults &results)
{
    QString text;
    QTextStream stream(&text);
    stream << "  level            measured    computed  difference   (cm^-1)\n";
    for (const FittedLevel &level : results.levels) {
        stream << "  " << level.label.leftJustified(13) << fixed(level.measured, 2, 10);
        if (std::isnan(level.computed))
            stream << "           -           -   no such level, not fitted\n";
        else
            stream << fixed(level.computed, 2, 12) << fixed(level.computed - level.measured, 2, 12)
                   << (level.isFitted ? "\n" : "   ground level, not fitted\n");
    }
    stream << "  rms difference of " << results.fittedCount << " levels"
           << fixed(results.rmsDifference, 2, 10) << '\n';
    stream.flush();
    return text;
}

} // namespace

QString levelsFitSummary(const LevelsFitResults &results)
{
    QString text;
    QTextStream stream(&text);
    stream << " Free-ion parameters of 4f^" << results.electrons
           << ", fitted to measured levels\n\n";
    for (const FittedParameter &parameter : results.parameters)
        stream << "  " << parameter.name.leftJustified(5) << "= " << fixed(parameter.value, 4, 10)
               << " cm^-1\n";
    stream << "\n  Response Function = " << results.response
           << " (sum of the relative deviations, per cent)\n"
           << "  Points = " << results.points << "\n\n"
           << levelTable(results);
    stream.flush();
    return text;
}
