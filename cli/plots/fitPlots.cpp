#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/FitAccount.h>
#include <LanqorEngine/FitTrace.h>
#include <LanqorEngine/IntensitySolutions.h>

#include <algorithm>

namespace plots {

using cli::tr;

CurvePlot convergence(const QString &title, const QString &yTitle, const QVector<FitTrace> &traces)
{
    /// What is drawn of a misfit that is 0 but for rounding.
    constexpr double smallest = 1.0e-12;
    CurvePlot plot;
    plot.title = title;
    plot.xTitle = tr("points");
    plot.yTitle = yTitle;
    plot.isLogarithmicX = true;
    plot.isLogarithmicY = true;
    for (const FitTrace &trace : traces) {
        CurvePlot::Series series;
        series.style = CurvePlot::Style::Steps;
        for (const FitTrace::Improvement &improvement : trace.improvements)
            if (improvement.response < 1.0e19) // feasible
                series.points.append({double(std::max(1, improvement.point)),
                                      std::max(improvement.response, smallest)});
        plot.series.append(series);
    }
    return plot;
}

CurvePlot comparison(const QString &title, const FitAccount &account)
{
    CurvePlot plot;
    plot.title = title;
    plot.xTitle = tr("measured / cm<sup>-1</sup>");
    plot.yTitle = tr("computed / cm<sup>-1</sup>");
    CurvePlot::Series data;
    double low = 0.0;
    double high = 0.0;
    for (const FitAccount::Datum &datum : account.data) {
        if (!datum.isFitted)
            continue;
        data.points.append({datum.measured, datum.computed});
        low = std::min({low, datum.measured, datum.computed});
        high = std::max({high, datum.measured, datum.computed});
    }
    plot.series = {{{{low, low}, {high, high}}, CurvePlot::Style::Line, QString()}, data};
    return plot;
}

CurvePlot solutionPlane(const QString &title, const IntensitySolutions &solutions)
{
    CurvePlot plot;
    plot.title = title;
    plot.xTitle = tr("charge factor g");
    plot.yTitle = tr("polarisability alpha / Angstrom<sup>3</sup>");
    const auto placeOf = [&](const QString &name) {
        for (int q = 0; q < solutions.quantities.size(); ++q)
            if (solutions.quantities.at(q).name == name)
                return q;
        return -1;
    };
    for (int q = 0; q < solutions.quantities.size(); ++q) {
        const QString name = solutions.quantities.at(q).name;
        const QString group = name.section(QLatin1Char(':'), 1);
        const int alpha = placeOf(QStringLiteral("alpha:") + group);
        if (!name.startsWith(QLatin1String("g:")) || alpha < 0)
            continue;
        CurvePlot::Series series;
        series.name = group;
        for (const QVector<double> &set : solutions.sets)
            series.points.append({set.at(q), set.at(alpha)});
        plot.series.append(series);
    }
    const int D = placeOf(QStringLiteral("D"));
    const int C = placeOf(QStringLiteral("C"));
    if (D >= 0 && C >= 0) {
        plot.xTitle = tr("D / Angstrom<sup>3</sup> eV");
        plot.yTitle = tr("C / Angstrom<sup>3</sup>");
        CurvePlot::Series series;
        for (const QVector<double> &set : solutions.sets)
            series.points.append({set.at(D), set.at(C)});
        plot.series.append(series);
    }
    return plot;
}

} // namespace plots
