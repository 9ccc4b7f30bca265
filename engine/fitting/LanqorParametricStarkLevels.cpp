#include "LanqorParametricStarkLevels.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "fitting/starkFitReport_p.h"
#include "levels/starkMatrix_p.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Score of a trial that no feasible one reaches.
constexpr double infeasibleResponse = 1.0e25;
/// The best response before there is one.
constexpr double noResponse = 1.0e24;

/// Radius of Eu3+ by coordination number 6 .. 9, Angstrom: R. D. Shannon, Acta Crystallogr. A 32,
/// 751 (1976).
double ionRadius(int coordNumber)
{
    static constexpr double radii[] = {0.947, 1.01, 1.066, 1.12};
    return radii[std::clamp(coordNumber, 6, 9) - 6];
}

/// Radius of a coordinated atom, Angstrom; 0 for elements without one.
double ligandRadius(const QString &symbol)
{
    if (symbol == QLatin1String("O"))
        return 1.016;
    if (symbol == QLatin1String("N"))
        return 1.19;
    if (symbol == QLatin1String("F"))
        return 0.9381249999999999;
    return 0.0;
}

} // namespace

LanqorParametricStarkLevels::LanqorParametricStarkLevels(QObject *parent, const QString &fileName,
                                                         const int &value)
    : LanqorAbstractParametric(parent)
    , structureFile(fileName)
    , starkLevels(fileName, value)
    , coordNumber(starkLevels.getAtomsNumber())
    , chargeFactors(starkLevels.getAtomsNumber() + 2, 0.0)
{
    setLastError(starkLevels.getLastError());
    for (int atom = 1; atom <= getAtomsNumber() + 1; ++atom)
        atomLabels.append(starkLevels.getAtomLabel(atom));
    calculateEffectiveCharge();
}

LanqorParametricStarkLevels::~LanqorParametricStarkLevels() = default;

void LanqorParametricStarkLevels::setCoordNumber(const int &number)
{
    coordNumber = number;
    isSetupChecked = false;
}

void LanqorParametricStarkLevels::setFileName(const QString &baseName)
{
    this->baseName = baseName;
    progress.reset();
    isWritingGivenUp = false;
}

void LanqorParametricStarkLevels::setGLimits(const QVector<GLimits> &limits)
{
    gLimits = limits;
    isSetupChecked = false;
}

void LanqorParametricStarkLevels::setParametersGroup(const QVector<ParametersGroup> &groups)
{
    this->groups = groups;
    isSetupChecked = false;
    forgetBest();
}

void LanqorParametricStarkLevels::setTransitionValues(const QVector<TransitionValues> &transitions)
{
    this->transitions = transitions;
    isSetupChecked = false;
    forgetBest();
}

void LanqorParametricStarkLevels::setRO0(const double &ro0)
{
    starkLevels.setRO0(ro0);
    forgetBest();
}

void LanqorParametricStarkLevels::forgetBest()
{
    bestResponse = noResponse;
    bestPoint = 0;
    bestChargeFactors.clear();
    bestLevels.clear();
}

QString LanqorParametricStarkLevels::groupsError() const
{
    const int last = getAtomsNumber() + 1;
    QVector<bool> isGrouped(last + 1, false);
    for (const ParametersGroup &group : groups) {
        for (const int atom : group.atoms) {
            if (atom < 2 || atom > last)
                return tr("Group %1 names atom %2; the coordinated atoms are 2 to %3.")
                    .arg(group.name)
                    .arg(atom)
                    .arg(last);
            isGrouped[atom] = true;
        }
    }
    for (int atom = 2; atom <= last; ++atom) {
        if (!isGrouped.at(atom))
            return tr("The coordinated atom %1 %2 is in no group.")
                .arg(atomLabels.at(atom - 1))
                .arg(atom);
    }
    return QString();
}

QString LanqorParametricStarkLevels::setupError() const
{
    if (getAtomsNumber() == 0)
        return starkLevels.getLastError();
    if (coordNumber != getAtomsNumber())
        return tr("The coordination number is set to %1, but the structure %2 has %3 coordinated "
                  "atoms.")
            .arg(coordNumber)
            .arg(structureFile)
            .arg(getAtomsNumber());
    QString error = groupsError();
    if (!error.isEmpty())
        return error;
    if (transitions.isEmpty())
        return tr("There are no measured levels to fit.");
    for (const TransitionValues &transition : transitions) {
        if (transition.level < 0 || transition.level > starkMatrix::maximumJ)
            return tr("The measured levels are of 7F%1; there are 7F0 to 7F6.")
                .arg(transition.level);
    }
    return QString();
}

bool LanqorParametricStarkLevels::checkSetup()
{
    isSetupChecked = true;
    const QString error = setupError();
    isSetupValid = error.isEmpty();
    if (!isSetupValid)
        return failWith(error);
    prepareLimits();
    return true;
}

void LanqorParametricStarkLevels::prepareLimits()
{
    constexpr double none = std::numeric_limits<double>::infinity();
    limitsByAtom.fill({-none, none}, getAtomsNumber() + 2);
    for (int atom = 2; atom <= getAtomsNumber() + 1; ++atom) {
        const auto found = std::find_if(gLimits.begin(), gLimits.end(), [&](const GLimits &limits) {
            return limits.name == atomLabels.at(atom - 1);
        });
        if (found != gLimits.end())
            limitsByAtom[atom] = {found->minimum, found->maximum};
    }
}

double LanqorParametricStarkLevels::calculateEffectiveCharge()
{
    const int N = getAtomsNumber();
    effectiveCharge = 0.0;
    if (N == 0)
        return effectiveCharge;
    double sum = 0.0;
    for (int atom = 2; atom <= N + 1; ++atom)
        sum += ligandRadius(atomLabels.at(atom - 1));
    const double d = (sum / N + ionRadius(N)) * 0.5 * lanqor::bohrPerAngstrom;
    effectiveCharge = 3.0 + 14.0 * std::exp(-0.5 * d * d);
    return effectiveCharge;
}

bool LanqorParametricStarkLevels::assignChargeFactors(const double *x)
{
    for (int group = 0; group < groups.size(); ++group) {
        if (!(x[group] >= 0.0))
            return false;
        for (const int atom : groups.at(group).atoms)
            chargeFactors[atom] = x[group];
    }
    for (int atom = 2; atom <= getAtomsNumber() + 1; ++atom) {
        const Limits &limits = limitsByAtom.at(atom);
        if (chargeFactors.at(atom) < limits.minimum || chargeFactors.at(atom) > limits.maximum)
            return false;
    }
    return true;
}

double LanqorParametricStarkLevels::misfit() const
{
    // Kept: the splitting, which no choice of the offset can change, decides.
    constexpr double weightOfSplitting = 100.0;
    double sum = 0.0;
    for (const TransitionValues &t : transitions) {
        const QVector<double> levels = starkLevels.getStarkLevels(t.level);
        const auto [low, high] = std::minmax_element(levels.begin(), levels.end());
        sum += weightOfSplitting *
                   std::abs(std::abs(*high - *low) - std::abs(t.energyHigh - t.energyLow)) +
               std::abs(*low - (t.energyLow - t.offset)) +
               std::abs(*high - (t.energyHigh - t.offset));
    }
    return sum;
}

double LanqorParametricStarkLevels::evaluate(const double *x)
{
    if (!assignChargeFactors(x))
        return infeasibleResponse;
    double *values = chargeFactors.data();
    starkLevels.setChargeFactors(values);
    starkLevels.calculateStarkLevels();
    if (!starkLevels.getLastError().isEmpty()) {
        setLastError(starkLevels.getLastError());
        return infeasibleResponse;
    }
    const double response = misfit();
    return std::isfinite(response) ? response : infeasibleResponse;
}

bool LanqorParametricStarkLevels::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!isSetupChecked)
        checkSetup();
    if (!isSetupValid)
        return true;
    if (n != groups.size() || !x) {
        setLastError(tr("The trial has %1 charge factors, but there are %2 groups of atoms.")
                         .arg(n)
                         .arg(groups.size()));
        return true;
    }
    responseFunction = evaluate(x);
    if (responseFunction < bestResponse) {
        bestResponse = responseFunction;
        keepBest(x);
    }
    return true;
}

void LanqorParametricStarkLevels::keepBest(const double *x)
{
    bestChargeFactors = QVector<double>(x, x + groups.size());
    bestPoint = getPointNumber();
    bestLevels.clear();
    for (int J = 0; J <= starkMatrix::maximumJ; ++J)
        bestLevels.append(starkLevels.getSortedStarkLevels(J));
    // A failure is told once, not at each of some hundred improvements.
    if (!baseName.isEmpty() && !isWritingGivenUp)
        isWritingGivenUp = !writeProgress() || !createOuputFile();
}

bool LanqorParametricStarkLevels::writeProgress()
{
    if (!progress) {
        progress = std::make_unique<QFile>(baseName + QStringLiteral(".progress"));
        progress->open(QIODevice::WriteOnly | QIODevice::Append);
    }
    const QByteArray line = QByteArray::number(getPointNumber()) + "  " +
                            QByteArray::number(responseFunction, 'g', 10) + "\n";
    return (progress->isOpen() && progress->write(line) == line.size() && progress->flush()) ||
           failWith(tr("The progress of the fit cannot be written to %1: %2")
                        .arg(progress->fileName(), progress->errorString()));
}

bool LanqorParametricStarkLevels::createOuputFile()
{
    if (baseName.isEmpty() || bestLevels.isEmpty())
        return failWith(tr("There is no result of a fit to write, or no name for its file."));
    const QString fileName = baseName + QStringLiteral(".stark");
    QString error;
    return reportText::writeFile(fileName, getReport(), error) ||
           failWith(tr("The report %1 cannot be written: %2").arg(fileName, error));
}

QString LanqorParametricStarkLevels::getReport() const
{
    if (bestLevels.isEmpty())
        return QString();
    return starkFitReport({structureFile, effectiveCharge, bestResponse, bestPoint, groups,
                           bestChargeFactors, transitions, bestLevels, requiredCitations});
}
