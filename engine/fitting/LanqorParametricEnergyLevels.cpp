#include "LanqorParametricEnergyLevels.h"

#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>

#include <QFile>
#include <QLoggingCategory>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <cmath>

namespace {

Q_LOGGING_CATEGORY(fitLog, "lanqor.fit", QtInfoMsg)

constexpr int parameterNumber = 4;
constexpr double allLevels = -1.0;

struct Bounds
{
    const char *name;
    double low; ///< cm^-1
    double high;
};
constexpr Bounds bounds[parameterNumber] = {
    {"F2", 100.0, 1000.0}, {"F4", 10.0, 100.0}, {"F6", 1.0, 10.0}, {"zeta", 100.0, 5000.0}};

} // namespace

LanqorParametricEnergyLevels::LanqorParametricEnergyLevels(QObject *parent, const int &electrons,
                                                           const QString &fileName)
    : LanqorAbstractParametric(parent)
    , electrons(electrons)
    , fileNameExp(fileName)
{
    setElectronsNumber(electrons);
}

LanqorParametricEnergyLevels::~LanqorParametricEnergyLevels() = default;

void LanqorParametricEnergyLevels::setElectronsNumber(const int &number)
{
    electrons = number;
    energyLevels = std::make_unique<LanqorEnergyLevels>(nullptr, electrons);
    setLastError(energyLevels->getLastError());
    isSetupChecked = false;
}

void LanqorParametricEnergyLevels::setEnergyLevelsExp(const QVector<EnergyLevelsExp> &levels)
{
    energyLevelsExp = levels;
    isSetupChecked = false;
}

QVector<MixedState> LanqorParametricEnergyLevels::getMixedStateVector() const
{
    return energyLevels->getMixedStatesVector();
}

/// Whether there is something to fit; looked at once.
bool LanqorParametricEnergyLevels::checkSetup()
{
    if (isSetupChecked)
        return isSetupValid;
    isSetupChecked = true;
    isSetupValid = false;
    if (energyLevels->getSpectroscopicTermVector().isEmpty())
        return failWith(energyLevels->getLastError());
    if (energyLevelsExp.size() < 2)
        return failWith(tr("A fit needs measured levels above the ground level, which is the first "
                           "of the list and is not fitted."));
    for (int k = 1; k < energyLevelsExp.size(); ++k) {
        const EnergyLevelsExp &level = energyLevelsExp.at(k);
        if (!(level.energy > 0.0) || !std::isfinite(level.energy))
            return failWith(tr("The measured level %1 (number %2) has no positive energy; only the "
                               "first one, the ground level, is at 0.")
                                .arg(level.label)
                                .arg(k + 1));
    }
    matchLevels();
    if (std::all_of(stateLabels.constBegin() + 1, stateLabels.constEnd(),
                    [](const QString &label) { return label.isEmpty(); }))
        return failWith(tr("None of the measured levels (%1, ...) is a level of 4f^%2; labels are "
                           "of the form 7F1, 5D(3)0 or 4I11/2.")
                            .arg(energyLevelsExp.at(1).label)
                            .arg(electrons));
    warnOfUnmatchedLevels();
    isSetupValid = true;
    return true;
}

/// Finds the label under which each measured level is computed.
void LanqorParametricEnergyLevels::matchLevels()
{
    QSet<QString> computed;
    for (freeIon::SpectroscopicTerm term : energyLevels->getSpectroscopicTermVector())
        for (double J : LanqorEnergyLevels::getJVector(term.S, term.L)) {
            term.J = J;
            computed.insert(freeIon::levelLabel(term));
        }
    stateLabels.clear();
    for (const EnergyLevelsExp &level : qAsConst(energyLevelsExp)) {
        const EnergyLevelsExp named = levelFromLabel(level.label);
        const QString label = freeIon::levelLabel({named.S, named.L, named.index, named.J});
        stateLabels.append(named.L >= 0 && computed.contains(label) ? label : QString());
    }
}

void LanqorParametricEnergyLevels::warnOfUnmatchedLevels()
{
    QStringList unmatched;
    for (int k = 1; k < energyLevelsExp.size(); ++k)
        if (stateLabels.at(k).isEmpty())
            unmatched.append(energyLevelsExp.at(k).label);
    if (!unmatched.isEmpty())
        Q_EMIT newObjCalculationMessage(
            tr("Not fitted, for 4f^%1 has no such level: %2. A term that occurs more than once "
               "needs its number in parentheses, as in 5D(3)0.")
                .arg(electrons)
                .arg(unmatched.join(QStringLiteral(", "))));
    if (energyLevelsExp.first().energy != 0.0)
        Q_EMIT newObjCalculationMessage(
            tr("The first level, %1 at %2 cm^-1, is taken as the ground level and not fitted.")
                .arg(energyLevelsExp.first().label)
                .arg(energyLevelsExp.first().energy));
}

bool LanqorParametricEnergyLevels::checkParameters(double *&x)
{
    for (int i = 0; i < parameterNumber; ++i)
        if (!(x[i] >= bounds[i].low && x[i] <= bounds[i].high)) {
            setLastError(tr("%1 = %2 cm^-1 is outside its bounds, %3 to %4 cm^-1.")
                             .arg(QLatin1String(bounds[i].name))
                             .arg(x[i])
                             .arg(bounds[i].low)
                             .arg(bounds[i].high));
            return false;
        }
    return true;
}

bool LanqorParametricEnergyLevels::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    if (n != parameterNumber)
        return failWith(tr("The fit has 4 parameters, F2, F4, F6 and zeta, not %1.").arg(n));
    F2 = x[0];
    F4 = x[1];
    F6 = x[2];
    zeta = x[3];
    if (!checkParameters(x) || !checkSetup() || !calcResponseFunction())
        return false;
    if (responseFunction < bestResponse)
        keepBestPoint();
    return true;
}

bool LanqorParametricEnergyLevels::calcResponseFunction()
{
    energyLevels->setSlaterIntegral(0.0, F2, F4, F6);
    energyLevels->setZetaParameters(zeta);
    if (!energyLevels->calcEnergyLevels(allLevels))
        return failWith(energyLevels->getLastError());
    const QVector<MixedState> states = energyLevels->getMixedStatesVector();
    double sum = 0.0;
    // Without the ground level, by whose energy of 0 the deviation would be divided.
    for (int k = 1; k < energyLevelsExp.size(); ++k) {
        const double measured = energyLevelsExp.at(k).energy;
        for (const MixedState &state : states)
            if (!stateLabels.at(k).isEmpty() && state.label == stateLabels.at(k))
                sum += 100.0 * std::abs(measured - state.energy) / measured;
    }
    responseFunction = sum;
    qCDebug(fitLog) << pointNumber << responseFunction;
    return true;
}

/// Remembers the point and appends it to the progress file.
void LanqorParametricEnergyLevels::keepBestPoint()
{
    bestResponse = responseFunction;
    bestParameters = {F2, F4, F6, zeta};
    QFile file(getProgressFileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        if (!isProgressLost)
            Q_EMIT newObjCalculationMessage(tr("The progress of the fit is not kept: %1: %2")
                                                .arg(file.fileName(), file.errorString()));
        isProgressLost = true;
        return;
    }
    QTextStream stream(&file);
    stream << "Point Number = " << pointNumber << "\tF2 = " << F2 << "\tF4 = " << F4
           << "\tF6 = " << F6 << "\tzeta = " << zeta << "\t Response Function = " << bestResponse
           << '\n';
}
