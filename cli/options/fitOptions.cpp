#include "options/fitOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorReadFiles.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr int maximumStarts = 1000;
constexpr double maximumPoints = 1.0e12; // of a state: years
constexpr int annealingSteps = 15000;
constexpr int stepsBeforePolish = 200;
constexpr double usualTemperature = 10.0;

/// "zeta=880" as name and value.
struct Setting
{
    QString name;
    QString value;
};

Setting settingOf(const OptionReader &reader, const char *option, const QString &text)
{
    const int sign = text.indexOf(QLatin1Char('='));
    if (sign < 1)
        reader.refuse(tr("--%1: \"%2\" is no name with a value, such as zeta=880")
                          .arg(QLatin1String(option), text));
    return {text.left(sign).trimmed(), text.mid(sign + 1).trimmed()};
}

FitParameter &find(const OptionReader &reader, const char *option, const QString &name,
                   QVector<FitParameter> &parameters)
{
    QStringList names;
    for (FitParameter &parameter : parameters) {
        if (parameter.name.compare(name, Qt::CaseInsensitive) == 0)
            return parameter;
        names.append(parameter.name);
    }
    reader.refuse(tr("--%1: \"%2\" is no parameter of this fit; these are %3")
                      .arg(QLatin1String(option), name, names.join(QStringLiteral(", "))));
}

QString rangeOf(const FitParameter &parameter)
{
    const QString unit =
        parameter.unit == QLatin1String("1") ? QString() : QLatin1Char(' ') + parameter.unit;
    if (!std::isfinite(parameter.maximum))
        return tr("%1 or more").arg(QString::number(parameter.minimum) + unit);
    return tr("%1 to %2")
        .arg(QString::number(parameter.minimum), QString::number(parameter.maximum) + unit);
}

/// A number within the bounds of a parameter.
double valueOf(const OptionReader &reader, const char *option, const QString &text,
               const FitParameter &parameter)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber || !(value >= parameter.minimum && value <= parameter.maximum))
        reader.refuse(tr("--%1 %2=%3: the fit allows %4")
                          .arg(QLatin1String(option), parameter.name, text, rangeOf(parameter)));
    return value;
}

QJsonArray toJson(const QVector<double> &vector)
{
    QJsonArray array;
    for (const double value : vector)
        array.append(value);
    return array;
}

QStringList namesOf(const QVector<FitParameter> &parameters)
{
    QStringList names;
    for (const FitParameter &parameter : parameters)
        names.append(parameter.name);
    return names;
}

} // namespace

void addFitOptions(OptionReader &reader, int starts)
{
    reader.addOptions({
        {QStringLiteral("points"),
         tr("Points tried in each of the 15 annealing cycles; with --no-polish %1.")
             .arg(annealingSteps),
         tr("number"), QString::number(stepsBeforePolish)},
        {QStringLiteral("starts"),
         tr("Repeat the fit from this many starting points, in as many threads as there are "
            "processors, and keep the best; with --no-polish 1. Start k puts "
            "parameter j at the fraction 1/2 + (k-1) sqrt(p) of its range without the whole part, "
            "p being the prime number j (2, 3, 5, ...); a fit that is given a start begins with "
            "that."),
         tr("K"), QString::number(starts)},
        {QStringLiteral("no-polish"),
         tr("Leave out the local minimisation from the best point of each start. With --starts 1 "
            "this is the annealing of 15 times 15000 points with steps of 1 at most.")},
        {QStringLiteral("temperature"),
         tr("Initial temperature of the annealing, in units of the response."), tr("T"),
         QString::number(usualTemperature)},
        {QStringLiteral("fix"), tr("Hold parameters, separated by commas: alpha:N=3.5,zeta=880."),
         tr("list")},
        {QStringLiteral("bounds"),
         tr("Bounds within those of the fit, separated by commas: zeta=800:900."), tr("list")},
        {QStringLiteral("save"), tr("Keep the state of the fit for --continue."), tr("file")},
        {QStringLiteral("continue"), tr("Go on from the best points of a fit that was saved."),
         tr("file")},
        {QStringLiteral("quiet"), tr("Show no progress.")},
        {QStringLiteral("plot-convergence"),
         tr("Draw the misfit of all starts against the points (.svg, .png or .pdf)."),
         tr("picture")},
    });
    reader.addOption(plots::option());
}

FitOptions usualFitOptions(int starts)
{
    FitOptions options;
    options.starts = starts;
    options.stepsPerCycle = stepsBeforePolish;
    options.temperature = usualTemperature;
    return options;
}

FitOptions readFitOptions(const OptionReader &reader, int starts)
{
    constexpr int maximumSteps = 100000000;
    FitOptions options = usualFitOptions(starts);
    options.isPolished = !reader.isSet("no-polish");
    if (!options.isPolished) {
        options.starts = 1;
        options.stepsPerCycle = annealingSteps;
    }
    if (reader.isSet("starts"))
        options.starts = reader.count("starts", maximumStarts);
    if (reader.isSet("points"))
        options.stepsPerCycle = reader.count("points", maximumSteps);
    reader.setInForce("starts", options.starts);
    reader.setInForce("points", options.stepsPerCycle);
    if (reader.isSet("temperature"))
        options.temperature = reader.number(
            "temperature", [](double T) { return T > 0.0 && T < 1e6; }, tr("a positive number"));
    options.fixed = reader.list("fix");
    options.bounds = reader.list("bounds");
    options.isQuiet = reader.isSet("quiet");
    // Absolute, for a fit may change the folder before it draws.
    plots::readOption(reader);
    options.plot = reader.outputFile("plot");
    plots::readOption(reader, "plot-convergence");
    options.convergencePlot = reader.outputFile("plot-convergence");
    options.stateFile = reader.outputFile("save");
    options.resumedFile = reader.outputFile("continue");
    return options;
}

bool isRestricted(const FitOptions &options)
{
    return !options.fixed.isEmpty() || !options.bounds.isEmpty();
}

QVector<FitParameter> restricted(const OptionReader &reader, const FitOptions &options,
                                 QVector<FitParameter> parameters)
{
    for (const QString &text : options.bounds) {
        const Setting setting = settingOf(reader, "bounds", text);
        FitParameter &parameter = find(reader, "bounds", setting.name, parameters);
        const QStringList ends = setting.value.split(QLatin1Char(':'));
        if (ends.size() != 2)
            reader.refuse(tr("--bounds: \"%1\" needs two numbers, such as zeta=800:900").arg(text));
        const double minimum = valueOf(reader, "bounds", ends.at(0), parameter);
        const double maximum = valueOf(reader, "bounds", ends.at(1), parameter);
        if (minimum > maximum)
            reader.refuse(tr("--bounds: in \"%1\" the first number is the larger one").arg(text));
        parameter.minimum = minimum;
        parameter.maximum = maximum;
    }
    for (const QString &text : options.fixed) {
        const Setting setting = settingOf(reader, "fix", text);
        FitParameter &parameter = find(reader, "fix", setting.name, parameters);
        parameter.fixedValue = valueOf(reader, "fix", setting.value, parameter);
        parameter.isFixed = true;
    }
    return parameters;
}

QVector<double> placeStart(const QVector<double> &vector, const QVector<FitParameter> &widest,
                           const QVector<FitParameter> &own)
{
    QVector<double> start;
    for (int i = 0; i < vector.size(); ++i) {
        const FitParameter &wide = widest.at(i);
        const FitParameter &range = own.at(i);
        double value = vector.at(i);
        const bool isNarrower = range.minimum != wide.minimum || range.maximum != wide.maximum;
        if (isNarrower && std::isfinite(wide.maximum) && wide.maximum > wide.minimum)
            value = range.minimum + (value - wide.minimum) / (wide.maximum - wide.minimum) *
                                        (range.maximum - range.minimum);
        value = std::clamp(value, range.minimum, range.maximum);
        start.append(range.isFixed ? range.fixedValue : value);
    }
    return start;
}

void readState(const OptionReader &reader, FitOptions &options,
               const QVector<FitParameter> &parameters)
{
    if (options.resumedFile.isEmpty())
        return;
    QByteArray bytes;
    QString error;
    if (!LanqorReadFiles::read(options.resumedFile, bytes, error))
        throw Failure{tr("--continue %1: %2").arg(options.resumedFile, error)};
    const QJsonObject state = QJsonDocument::fromJson(bytes).object();
    QStringList names;
    for (const auto &name : state.value(QStringLiteral("parameters")).toArray())
        names.append(name.toString());
    bool isWhole = names == namesOf(parameters) &&
                   state.value(QStringLiteral("command")).toString() == reader.command();
    for (const auto &saved : state.value(QStringLiteral("vectors")).toArray()) {
        QVector<double> vector; // empty of a start that was not made
        for (const auto &value : saved.toArray()) {
            isWhole = isWhole && value.isDouble();
            vector.append(value.toDouble());
        }
        isWhole = isWhole && (vector.isEmpty() || vector.size() == parameters.size());
        options.resumed.append(vector);
    }
    const double points = state.value(QStringLiteral("points")).toDouble(-1.0);
    if (!isWhole || options.resumed.isEmpty() || options.resumed.size() > maximumStarts ||
        !(points >= 0.0 && points <= maximumPoints))
        throw Failure{tr("--continue %1: this is no state that \"lanqor %2 --save\" kept of a fit "
                         "of %3")
                          .arg(options.resumedFile, reader.command(),
                               namesOf(parameters).join(QStringLiteral(", ")))};
    // Fewer would lose points, and the best may be among these.
    options.starts = reader.isSet("starts") ? std::max(options.starts, options.resumed.size())
                                            : options.resumed.size();
    reader.setInForce("starts", options.starts);
    options.resumedPoints = qint64(points);
}

void writeState(const FitOptions &options, const QString &command,
                const QVector<FitParameter> &parameters, const QVector<QVector<double>> &vectors,
                qint64 points)
{
    if (options.stateFile.isEmpty())
        return;
    QJsonArray saved;
    for (const QVector<double> &vector : vectors)
        saved.append(toJson(vector));
    const QJsonObject state = {
        {QStringLiteral("command"), command},
        {QStringLiteral("parameters"), QJsonArray::fromStringList(namesOf(parameters))},
        {QStringLiteral("vectors"), saved},
        {QStringLiteral("points"), double(points)}};
    writeFile(options.stateFile, QJsonDocument(state).toJson());
}

void addConvergence(const FitOptions &options, const QVector<FitTrace> &traces, const QString &unit,
                    LanqorResultTables &tables)
{
    if (options.convergencePlot.isEmpty())
        return;
    constexpr double infeasible = 1.0e19;
    QVector<QVector<QVariant>> rows;
    for (const FitTrace &trace : traces)
        for (const FitTrace::Improvement &improvement : trace.improvements)
            if (improvement.response < infeasible)
                rows.append({trace.start, improvement.point, improvement.response});
    tables.addTable(QStringLiteral("fit_convergence"),
                    {{QStringLiteral("start_from_1"), QString()},
                     {QStringLiteral("point_from_1"), QString()},
                     {QStringLiteral("misfit"), unit.isEmpty() ? QStringLiteral("1") : unit}},
                    rows);
}

} // namespace cli
