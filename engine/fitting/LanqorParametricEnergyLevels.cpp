#include "LanqorParametricEnergyLevels.h"

#include "core/title_p.h"
#include "fitting/levelsFitReport_p.h"
#include "fitting/measuredLevel_p.h"
#include "input/fitFileFaults_p.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <QLoggingCategory>
#include <QSet>
#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(fitLog, "lanqor.fit", QtInfoMsg)

constexpr int parameterNumber = 4;
constexpr int withTwoBodies = 7;
constexpr double allLevels = -1.0;

/// Limits of a parameter, cm^-1; source not known.
struct Bounds
{
    const char *name;
    double low;
    double high;
};
constexpr Bounds bounds[withTwoBodies] = {{"F2", 100.0, 1000.0},     {"F4", 10.0, 100.0},
                                          {"F6", 1.0, 10.0},         {"zeta", 100.0, 5000.0},
                                          {"alpha", -100.0, 200.0},  {"beta", -3000.0, 3000.0},
                                          {"gamma", -5000.0, 5000.0}};

QVector<FitParameter> parametersFrom(int first, int end)
{
    QVector<FitParameter> parameters;
    for (int i = first; i < end; ++i)
        parameters.append({QLatin1String(bounds[i].name), QStringLiteral("cm^-1"), bounds[i].low,
                           bounds[i].high});
    return parameters;
}

} // namespace

class LanqorParametricEnergyLevelsPrivate
{
public:
    /// F2, F4, F6, zeta, alpha, beta, gamma, cm^-1.
    using Parameters = std::array<double, withTwoBodies>;

    LanqorParametricEnergyLevelsPrivate(int electrons, const QString &fileName)
        : electrons(electrons)
        , fileNameExp(fileName)
    {}

    QString checkParameters(const Parameters &parameters) const;
    QString setupError();
    void matchLevels();
    QStringList warnings() const;
    /// Levels at these parameters; false when they cannot be calculated.
    bool calcLevels(const Parameters &parameters);
    double calcResponseFunction() const;
    QString appendProgress(int point, double response) const;
    QVector<FittedLevel> compareLevels() const;
    QString companionFile(const QString &suffix) const;

    std::unique_ptr<LanqorEnergyLevels> energyLevels;
    int electrons;
    QString fileNameExp;
    QVector<EnergyLevelsExp> energyLevelsExp;
    QStringList stateLabels; // by measured level: label of its state; empty when it has none
    bool isSetupChecked = false;
    bool isSetupValid = false;
    bool isProgressLost = false; // the progress file cannot be written; said once
    Parameters held = {};        // alpha, beta and gamma of trials without them
    Parameters best = {};
    std::size_t bestCount = parameterNumber; // of the parameters of the best trial
    bool hasBest = false;
    QVector<FittedLevel> bestLevels; // by endOfParametrization()
    QString summary;
    QString report;
};

LanqorParametricEnergyLevels::LanqorParametricEnergyLevels(QObject *parent, const int &electrons,
                                                           const QString &fileName)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricEnergyLevelsPrivate>(electrons, fileName))
{
    setElectronsNumber(electrons);
}

LanqorParametricEnergyLevels::~LanqorParametricEnergyLevels() = default;

QString LanqorParametricEnergyLevels::findFileFault(const QString &fileName)
{
    return fitFiles::hasHeading(fileName)
               ? fitFiles::measuredDeviationFault(fileName)
               : tr("%1: the first line is a level, but it is taken as a heading and skipped; put "
                    "a heading line before it")
                     .arg(fileName);
}

void LanqorParametricEnergyLevels::setElectronsNumber(const int &number)
{
    d->electrons = number;
    d->energyLevels = std::make_unique<LanqorEnergyLevels>(nullptr, number);
    setLastError(d->energyLevels->getLastError());
    d->isSetupChecked = false;
}

void LanqorParametricEnergyLevels::setEnergyLevelsExp(const QVector<EnergyLevelsExp> &levels)
{
    d->energyLevelsExp = levels;
    d->isSetupChecked = false;
}

void LanqorParametricEnergyLevels::setTwoBodyParameters(const double &alpha, const double &beta,
                                                        const double &gamma)
{
    d->held = {0.0, 0.0, 0.0, 0.0, alpha, beta, gamma};
}

QVector<MixedState> LanqorParametricEnergyLevels::getMixedStateVector() const
{
    return d->energyLevels->getMixedStatesVector();
}

QVector<double> LanqorParametricEnergyLevels::getBestParameters() const
{
    return d->hasBest ? QVector<double>(d->best.begin(), d->best.begin() + d->bestCount)
                      : QVector<double>();
}

QString LanqorParametricEnergyLevelsPrivate::companionFile(const QString &suffix) const
{
    const QString exp = QStringLiteral(".exp");
    return (fileNameExp.endsWith(exp) ? fileNameExp.chopped(exp.size()) : fileNameExp) + suffix;
}

QString LanqorParametricEnergyLevels::getProgressFileName() const
{
    return d->companionFile(QStringLiteral(".output"));
}

QString LanqorParametricEnergyLevels::getResultFileName() const
{
    return d->companionFile(QStringLiteral(".result"));
}

/// Why there is nothing to fit; empty when there is.
QString LanqorParametricEnergyLevelsPrivate::setupError()
{
    if (energyLevels->getSpectroscopicTermVector().isEmpty())
        return energyLevels->getLastError();
    if (energyLevelsExp.size() < 2)
        return LanqorParametricEnergyLevels::tr(
            "A fit needs measured levels above the ground level, which is the first of the list "
            "and is not fitted.");
    for (int k = 1; k < energyLevelsExp.size(); ++k) {
        const EnergyLevelsExp &level = energyLevelsExp.at(k);
        if (!(level.energy > 0.0) || !std::isfinite(level.energy))
            return LanqorParametricEnergyLevels::tr(
                       "The measured level %1 (number %2) has no positive energy; only the first "
                       "one, the ground level, is at 0.")
                .arg(level.label, QString::number(k + 1));
    }
    matchLevels();
    if (std::all_of(stateLabels.constBegin() + 1, stateLabels.constEnd(),
                    [](const QString &label) { return label.isEmpty(); }))
        return LanqorParametricEnergyLevels::tr(
                   "None of the measured levels (%1, ...) is a level of 4f^%2; labels are of the "
                   "form 7F1, 5D(3)0 or 4I11/2.")
            .arg(energyLevelsExp.at(1).label, QString::number(electrons));
    return QString();
}

/// Finds the label under which each measured level is computed.
void LanqorParametricEnergyLevelsPrivate::matchLevels()
{
    QSet<QString> computed;
    for (freeIon::SpectroscopicTerm term : energyLevels->getSpectroscopicTermVector())
        for (double J : LanqorEnergyLevels::getJVector(term.S, term.L)) {
            term.J = J;
            computed.insert(freeIon::levelLabel(term));
        }
    stateLabels.clear();
    for (const EnergyLevelsExp &level : qAsConst(energyLevelsExp)) {
        const EnergyLevelsExp named = measuredLevel(level.label);
        const QString label = freeIon::levelLabel({named.S, named.L, named.index, named.J});
        stateLabels.append(named.L >= 0 && computed.contains(label) ? label : QString());
    }
}

/// What the fit leaves out.
QStringList LanqorParametricEnergyLevelsPrivate::warnings() const
{
    QStringList texts;
    QStringList unmatched;
    for (int k = 1; k < energyLevelsExp.size(); ++k)
        if (stateLabels.at(k).isEmpty())
            unmatched.append(energyLevelsExp.at(k).label);
    if (!unmatched.isEmpty())
        texts.append(LanqorParametricEnergyLevels::tr(
                         "Not fitted, for 4f^%1 has no such level: %2. A term that occurs more "
                         "than once needs its number in parentheses, as in 5D(3)0.")
                         .arg(QString::number(electrons), unmatched.join(QStringLiteral(", "))));
    if (energyLevelsExp.first().energy != 0.0)
        texts.append(LanqorParametricEnergyLevels::tr("The first level, %1 at %2 cm^-1, is taken "
                                                      "as the ground level and not fitted.")
                         .arg(energyLevelsExp.first().label,
                              QString::number(energyLevelsExp.first().energy)));
    return texts;
}

/// The first bound that is violated; empty when none is.
QString LanqorParametricEnergyLevelsPrivate::checkParameters(const Parameters &parameters) const
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Bounds &own = bounds[i];
        if (!(parameters[i] >= own.low && parameters[i] <= own.high))
            return LanqorParametricEnergyLevels::tr(
                       "%1 = %2 cm^-1 is outside its bounds, %3 to %4 cm^-1.")
                .arg(QLatin1String(own.name), QString::number(parameters[i]),
                     QString::number(own.low), QString::number(own.high));
    }
    return QString();
}

bool LanqorParametricEnergyLevels::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    if (n != parameterNumber && n != withTwoBodies)
        return failWith(tr("The fit has 4 parameters, F2, F4, F6 and zeta, or 7 with alpha, beta "
                           "and gamma, not %1.")
                            .arg(n));
    LanqorParametricEnergyLevelsPrivate::Parameters trial = d->held;
    std::copy_n(x, n, trial.begin());
    const QString violation = d->checkParameters(trial);
    if (!violation.isEmpty()) {
        setLastError(violation);
        return false;
    }
    if (!d->isSetupChecked) {
        d->isSetupChecked = true;
        const QString error = d->setupError();
        d->isSetupValid = error.isEmpty();
        if (!d->isSetupValid)
            return failWith(error);
        const QStringList warnings = d->warnings();
        for (const QString &warning : warnings)
            Q_EMIT newObjCalculationMessage(warning);
    }
    if (!d->isSetupValid)
        return false;
    if (!d->calcLevels(trial))
        return failWith(d->energyLevels->getLastError());
    responseFunction = d->calcResponseFunction();
    qCDebug(fitLog) << pointNumber << responseFunction;
    if (responseFunction < bestResponse) {
        bestResponse = responseFunction;
        d->best = trial;
        const bool isBare = std::all_of(trial.begin() + parameterNumber, trial.end(),
                                        [](double value) { return value == 0.0; });
        d->bestCount = n == parameterNumber && isBare ? parameterNumber : withTwoBodies;
        d->hasBest = true;
        const QString error = d->appendProgress(pointNumber, bestResponse);
        if (!error.isEmpty() && !std::exchange(d->isProgressLost, true))
            Q_EMIT newObjCalculationMessage(error);
    }
    return true;
}

bool LanqorParametricEnergyLevelsPrivate::calcLevels(const Parameters &parameters)
{
    energyLevels->setSlaterIntegral(0.0, parameters[0], parameters[1], parameters[2]);
    energyLevels->setZetaParameters(parameters[3]);
    energyLevels->setTwoBodyParameters(parameters[4], parameters[5], parameters[6]);
    return energyLevels->calcEnergyLevels(allLevels);
}

double LanqorParametricEnergyLevelsPrivate::calcResponseFunction() const
{
    const QVector<MixedState> states = energyLevels->getMixedStatesVector();
    double sum = 0.0;
    // Without the ground level, by whose energy of 0 the deviation would be divided.
    for (int k = 1; k < energyLevelsExp.size(); ++k) {
        const double measured = energyLevelsExp.at(k).energy;
        for (const MixedState &state : states)
            if (!stateLabels.at(k).isEmpty() && state.label == stateLabels.at(k))
                sum += 100.0 * std::abs(measured - state.energy) / measured;
    }
    return sum;
}

/// Appends the best point to the progress file; returns why that failed.
QString LanqorParametricEnergyLevelsPrivate::appendProgress(int point, double response) const
{
    QString line;
    QTextStream stream(&line);
    stream << "Point Number = " << point << "\tF2 = " << best[0] << "\tF4 = " << best[1]
           << "\tF6 = " << best[2] << "\tzeta = " << best[3]
           << "\t Response Function = " << response;
    for (std::size_t i = parameterNumber; i < bestCount; ++i)
        stream << '\t' << bounds[i].name << " = " << best[i];
    stream << '\n';
    stream.flush();
    const QString fileName = companionFile(QStringLiteral(".output"));
    QString error;
    if (LanqorOutputFile::append(fileName, line.toUtf8(), error))
        return QString();
    return LanqorParametricEnergyLevels::tr("The progress of the fit is not kept: %1: %2")
        .arg(fileName, error);
}

QVector<FittedLevel> LanqorParametricEnergyLevelsPrivate::compareLevels() const
{
    const QVector<MixedState> states = energyLevels->getMixedStatesVector();
    QVector<FittedLevel> rows;
    for (int k = 0; k < energyLevelsExp.size(); ++k) {
        const EnergyLevelsExp &level = energyLevelsExp.at(k);
        const int before = rows.size();
        for (const MixedState &state : states)
            if (!stateLabels.at(k).isEmpty() && state.label == stateLabels.at(k))
                rows.append({level.label, level.energy, state.energy, k > 0});
        if (rows.size() == before)
            rows.append({level.label, level.energy, qQNaN(), false});
    }
    return rows;
}

void LanqorParametricEnergyLevels::endOfParametrization()
{
    d->report.clear();
    d->summary.clear();
    d->bestLevels.clear();
    if (!d->hasBest)
        return;
    setLastError(QString()); // of a trial outside the bounds
    if (!d->calcLevels(d->best)) {
        failWith(d->energyLevels->getLastError());
        return;
    }
    responseFunction = d->calcResponseFunction();
    d->bestLevels = d->compareLevels();
    d->summary = levelsFitSummary(getResults());
    d->report = makeReportTitle() + QLatin1Char('\n') + d->summary + QLatin1Char('\n');
    if (!requiredCitations.isEmpty())
        d->report += requiredCitations + QLatin1Char('\n');
    d->report += d->energyLevels->createOutputFile(QString());
    QString error;
    if (!LanqorOutputFile::write(getResultFileName(), d->report.toUtf8(), error))
        failWith(tr("%1: %2").arg(getResultFileName(), error));
}

LevelsFitResults LanqorParametricEnergyLevels::getResults() const
{
    LevelsFitResults results;
    results.electrons = d->electrons;
    results.response = bestResponse;
    results.points = pointNumber;
    results.levels = d->bestLevels;
    for (std::size_t i = 0; d->hasBest && i < d->bestCount; ++i)
        results.parameters.append(
            {QLatin1String(bounds[i].name), d->best[i], bounds[i].low, bounds[i].high});
    double squares = 0.0;
    for (const FittedLevel &level : d->bestLevels) {
        if (!level.isFitted)
            continue;
        const double difference = level.computed - level.measured;
        squares += difference * difference;
        ++results.fittedCount;
    }
    if (results.fittedCount > 0)
        results.rmsDifference = std::sqrt(squares / results.fittedCount);
    return results;
}

QVector<FitParameter> LanqorParametricEnergyLevels::getParameters()
{
    return parametersFrom(0, parameterNumber);
}

QVector<FitParameter> LanqorParametricEnergyLevels::getTwoBodyParameters()
{
    return parametersFrom(parameterNumber, withTwoBodies);
}

QString LanqorParametricEnergyLevels::getReport() const
{
    return d->report;
}

QString LanqorParametricEnergyLevels::getSummary() const
{
    return d->summary;
}
