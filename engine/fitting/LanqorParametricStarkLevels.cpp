#include "LanqorParametricStarkLevels.h"

#include "core/physicalConstants_p.h"
#include "fitting/starkFitReport_p.h"
#include "input/fitFileFaults_p.h"
#include "levels/starkMatrix_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOutputFile.h>
#include <LanqorEngine/LanqorStarkLevels.h>

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

/// Radius of a coordinated atom, Angstrom; 0 for elements without one. Source not known.
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

/// Charge of the ion, elementary charges, that its neighbours see at the distance @p d (Bohr
/// radii); source not known.
double effectiveChargeAt(double d)
{
    return 3.0 + 14.0 * std::exp(-0.5 * d * d);
}

/// Limits of g of a coordinated atom or a group.
struct Limits
{
    double minimum;
    double maximum;
};

} // namespace

class LanqorParametricStarkLevelsPrivate
{
public:
    LanqorParametricStarkLevelsPrivate(const QString &fileName, const LanqorStarkLevels &levels);

    QString setupError() const;
    QString groupsError() const;
    void prepareLimits();
    double startOf(const ParametersGroup &group, const QVector<ChargeFactorsGroup> &start) const;
    Limits limitsOf(const ParametersGroup &group) const;
    bool assignChargeFactors(const double *x);
    double misfit() const;
    /// Response of a trial; @p error becomes the reason when nothing can be calculated.
    double evaluate(const double *x, QString &error);
    void keepBest(const double *x, int point);
    void forgetBest();
    QString writeProgress(double response);

    QString structureFile;
    LanqorStarkLevels starkLevels;
    QStringList atomLabels; // of atoms 1 .. N+1
    QVector<ParametersGroup> groups;
    QVector<TransitionValues> transitions;
    QVector<GLimits> gLimits;
    int coordNumber;
    QString baseName;
    double effectiveCharge = 0.0;
    ReducedElements reducedElements = ReducedElements::Magnitudes;

    bool isSetupChecked = false;
    bool isSetupValid = false;
    bool isWritingGivenUp = false;
    QVector<Limits> limitsByAtom;  // by atom number
    QVector<double> chargeFactors; // by atom number, N+2 entries

    int bestPoint = 0;                   // number of the evaluation
    QVector<double> bestChargeFactors;   // by group
    QVector<QVector<double>> bestLevels; // sorted, by J
};

LanqorParametricStarkLevels::LanqorParametricStarkLevels(QObject *parent, const QString &fileName,
                                                         const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricStarkLevelsPrivate>(fileName,
                                                             LanqorStarkLevels(fileName, value)))
{
    setLastError(d->starkLevels.getLastError());
    calculateEffectiveCharge();
}

LanqorParametricStarkLevels::LanqorParametricStarkLevels(QObject *parent, LanqorInputData *geometry,
                                                         const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricStarkLevelsPrivate>(
          geometry ? geometry->getFileName() : QString(), LanqorStarkLevels(geometry, value)))
{
    setLastError(d->starkLevels.getLastError());
    calculateEffectiveCharge();
}

LanqorParametricStarkLevels::~LanqorParametricStarkLevels() = default;

LanqorParametricStarkLevelsPrivate::LanqorParametricStarkLevelsPrivate(
    const QString &fileName, const LanqorStarkLevels &levels)
    : structureFile(fileName)
    , starkLevels(levels)
    , coordNumber(levels.getAtomsNumber())
{
    chargeFactors.fill(0.0, coordNumber + 2);
    for (int atom = 1; atom <= coordNumber + 1; ++atom)
        atomLabels.append(starkLevels.getAtomLabel(atom));
}

QStringList LanqorParametricStarkLevels::findFileFaults(const QString &baseName)
{
    return fitFiles::starkFitFaults(baseName);
}

void LanqorParametricStarkLevels::setCoordNumber(const int &number)
{
    d->coordNumber = number;
    d->isSetupChecked = false;
}

void LanqorParametricStarkLevels::setFileName(const QString &baseName)
{
    d->baseName = baseName;
    d->isWritingGivenUp = false;
}

void LanqorParametricStarkLevels::setGLimits(const QVector<GLimits> &limits)
{
    d->gLimits = limits;
    d->isSetupChecked = false;
}

void LanqorParametricStarkLevels::setParametersGroup(const QVector<ParametersGroup> &groups)
{
    d->groups = groups;
    d->isSetupChecked = false;
    d->forgetBest();
    bestResponse = noResponse;
}

void LanqorParametricStarkLevels::setTransitionValues(const QVector<TransitionValues> &transitions)
{
    d->transitions = transitions;
    d->isSetupChecked = false;
    d->forgetBest();
    bestResponse = noResponse;
}

void LanqorParametricStarkLevels::setRO0(const double &ro0)
{
    d->starkLevels.setRO0(ro0);
    d->forgetBest();
    bestResponse = noResponse;
}

void LanqorParametricStarkLevels::setReducedElements(const ReducedElements &choice)
{
    d->reducedElements = choice;
    d->starkLevels.setReducedElements(choice);
    d->forgetBest();
    bestResponse = noResponse;
}

void LanqorParametricStarkLevelsPrivate::forgetBest()
{
    bestPoint = 0;
    bestChargeFactors.clear();
    bestLevels.clear();
}

QString LanqorParametricStarkLevels::getAtomLabel(const int &i) const
{
    return d->starkLevels.getAtomLabel(i);
}

int LanqorParametricStarkLevels::getAtomsNumber() const
{
    return d->starkLevels.getAtomsNumber();
}

QString LanqorParametricStarkLevelsPrivate::groupsError() const
{
    const int last = starkLevels.getAtomsNumber() + 1;
    QVector<bool> isGrouped(last + 1, false);
    for (const ParametersGroup &group : groups) {
        for (const int atom : group.atoms) {
            if (atom < 2 || atom > last)
                return LanqorParametricStarkLevels::tr(
                           "Group %1 names atom %2; the coordinated atoms are 2 to %3.")
                    .arg(group.name, QString::number(atom), QString::number(last));
            isGrouped[atom] = true;
        }
    }
    for (int atom = 2; atom <= last; ++atom) {
        if (!isGrouped.at(atom))
            return LanqorParametricStarkLevels::tr("The coordinated atom %1 %2 is in no group.")
                .arg(atomLabels.at(atom - 1), QString::number(atom));
    }
    return QString();
}

QString LanqorParametricStarkLevelsPrivate::setupError() const
{
    const int N = starkLevels.getAtomsNumber();
    if (N == 0)
        return starkLevels.getLastError();
    if (coordNumber != N)
        return LanqorParametricStarkLevels::tr("The coordination number is set to %1, but the "
                                               "structure %2 has %3 coordinated atoms.")
            .arg(QString::number(coordNumber), structureFile, QString::number(N));
    QString error = groupsError();
    if (!error.isEmpty())
        return error;
    if (transitions.isEmpty())
        return LanqorParametricStarkLevels::tr("There are no measured levels to fit.");
    for (const TransitionValues &transition : transitions) {
        if (transition.level < 0 || transition.level > starkMatrix::maximumJ)
            return LanqorParametricStarkLevels::tr(
                       "The measured levels are of 7F%1; there are 7F0 to 7F6.")
                .arg(transition.level);
    }
    return QString();
}

bool LanqorParametricStarkLevels::checkSetup()
{
    d->isSetupChecked = true;
    const QString error = d->setupError();
    d->isSetupValid = error.isEmpty();
    if (!d->isSetupValid)
        return failWith(error);
    d->prepareLimits();
    return true;
}

void LanqorParametricStarkLevelsPrivate::prepareLimits()
{
    constexpr double none = std::numeric_limits<double>::infinity();
    limitsByAtom.fill({-none, none}, atomLabels.size() + 1);
    for (int atom = 2; atom <= atomLabels.size(); ++atom) {
        const auto found = std::find_if(gLimits.begin(), gLimits.end(), [&](const GLimits &limits) {
            return limits.name == atomLabels.at(atom - 1);
        });
        if (found != gLimits.end())
            limitsByAtom[atom] = {found->minimum, found->maximum};
    }
}

QVector<double>
LanqorParametricStarkLevels::makeStartingVector(const QVector<ChargeFactorsGroup> &start)
{
    if (!d->isSetupChecked)
        checkSetup();
    QVector<double> vector;
    for (int group = 0; d->isSetupValid && group < d->groups.size(); ++group)
        vector.append(d->startOf(d->groups.at(group), start));
    return vector;
}

double LanqorParametricStarkLevelsPrivate::startOf(const ParametersGroup &group,
                                                   const QVector<ChargeFactorsGroup> &start) const
{
    constexpr double usual = 0.5; // source not known
    double g = usual;
    for (const ChargeFactorsGroup &given : start)
        if (!group.atoms.isEmpty() && given.atoms.contains(group.atoms.first()))
            g = given.chargeFactor;
    for (const int atom : group.atoms)
        for (const GLimits &limits : gLimits)
            if (limits.name == atomLabels.at(atom - 1) && limits.minimum <= limits.maximum)
                g = std::clamp(g, limits.minimum, limits.maximum);
    return std::max(g, 0.0);
}

/// Those that all atoms of a group share; g is never negative.
Limits LanqorParametricStarkLevelsPrivate::limitsOf(const ParametersGroup &group) const
{
    Limits shared{0.0, std::numeric_limits<double>::infinity()};
    for (const int atom : group.atoms) {
        shared.minimum = std::max(shared.minimum, limitsByAtom.at(atom).minimum);
        shared.maximum = std::min(shared.maximum, limitsByAtom.at(atom).maximum);
    }
    return shared;
}

QVector<FitParameter> LanqorParametricStarkLevels::getParameters()
{
    if (!d->isSetupChecked)
        checkSetup();
    QVector<FitParameter> parameters;
    for (const ParametersGroup &group : qAsConst(d->groups)) {
        if (!d->isSetupValid)
            break;
        const Limits limits = d->limitsOf(group);
        parameters.append({QStringLiteral("g:") + group.name, QStringLiteral("1"), limits.minimum,
                           limits.maximum});
    }
    return parameters;
}

double LanqorParametricStarkLevels::calculateEffectiveCharge()
{
    const int N = getAtomsNumber();
    d->effectiveCharge = 0.0;
    if (N == 0)
        return d->effectiveCharge;
    double sum = 0.0;
    for (int atom = 2; atom <= N + 1; ++atom)
        sum += ligandRadius(d->atomLabels.at(atom - 1));
    d->effectiveCharge =
        effectiveChargeAt((sum / N + ionRadius(N)) * 0.5 * lanqor::bohrPerAngstrom);
    return d->effectiveCharge;
}

double LanqorParametricStarkLevels::getEffectiveCharge() const
{
    return d->effectiveCharge;
}

bool LanqorParametricStarkLevelsPrivate::assignChargeFactors(const double *x)
{
    for (int group = 0; group < groups.size(); ++group) {
        if (!(x[group] >= 0.0))
            return false;
        for (const int atom : groups.at(group).atoms)
            chargeFactors[atom] = x[group];
    }
    for (int atom = 2; atom <= atomLabels.size(); ++atom) {
        const Limits &limits = limitsByAtom.at(atom);
        if (chargeFactors.at(atom) < limits.minimum || chargeFactors.at(atom) > limits.maximum)
            return false;
    }
    return true;
}

double LanqorParametricStarkLevelsPrivate::misfit() const
{
    // Kept: the splitting, which no choice of the offset can change, decides. Source not known.
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

double LanqorParametricStarkLevelsPrivate::evaluate(const double *x, QString &error)
{
    if (!assignChargeFactors(x))
        return infeasibleResponse;
    double *values = chargeFactors.data();
    starkLevels.setChargeFactors(values);
    starkLevels.calculateStarkLevels();
    error = starkLevels.getLastError();
    if (!error.isEmpty())
        return infeasibleResponse;
    const double response = misfit();
    return std::isfinite(response) ? response : infeasibleResponse;
}

bool LanqorParametricStarkLevels::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!d->isSetupChecked)
        checkSetup();
    if (!d->isSetupValid)
        return true;
    if (n != d->groups.size() || !x) {
        setLastError(tr("The trial has %1 charge factors, but there are %2 groups of atoms.")
                         .arg(QString::number(n), QString::number(d->groups.size())));
        return true;
    }
    QString error;
    responseFunction = d->evaluate(x, error);
    if (!error.isEmpty())
        setLastError(error);
    if (responseFunction < bestResponse) {
        bestResponse = responseFunction;
        d->keepBest(x, getPointNumber());
        // A failure is told once, not at each of some hundred improvements.
        if (!d->baseName.isEmpty() && !d->isWritingGivenUp) {
            error = d->writeProgress(bestResponse);
            d->isWritingGivenUp = !(error.isEmpty() || failWith(error)) || !createOuputFile();
        }
    }
    return true;
}

void LanqorParametricStarkLevelsPrivate::keepBest(const double *x, int point)
{
    bestChargeFactors = QVector<double>(x, x + groups.size());
    bestPoint = point;
    bestLevels.clear();
    for (int J = 0; J <= starkMatrix::maximumJ; ++J)
        bestLevels.append(starkLevels.getSortedStarkLevels(J));
}

/// Appends a line to the progress file; returns why that failed.
QString LanqorParametricStarkLevelsPrivate::writeProgress(double response)
{
    const QString fileName = baseName + QStringLiteral(".progress");
    const QByteArray line =
        QByteArray::number(bestPoint) + "  " + QByteArray::number(response, 'g', 10) + "\n";
    QString error;
    if (LanqorOutputFile::append(fileName, line, error))
        return QString();
    return LanqorParametricStarkLevels::tr("The progress of the fit cannot be written to %1: %2")
        .arg(fileName, error);
}

bool LanqorParametricStarkLevels::createOuputFile()
{
    if (d->baseName.isEmpty() || d->bestLevels.isEmpty())
        return failWith(tr("There is no result of a fit to write, or no name for its file."));
    const QString fileName = d->baseName + QStringLiteral(".stark");
    QString error;
    return LanqorOutputFile::write(fileName, getReport().toUtf8(), error) ||
           failWith(tr("The report %1 cannot be written: %2").arg(fileName, error));
}

double LanqorParametricStarkLevels::getBestChargeFactor(const int &index) const
{
    return d->bestChargeFactors.value(index);
}

QString LanqorParametricStarkLevels::getReport() const
{
    const StarkFitResults results = getResults();
    return results.hasFeasiblePoint ? starkFitReport(results) : QString();
}

StarkFitResults LanqorParametricStarkLevels::getResults() const
{
    StarkFitResults results;
    results.hasFeasiblePoint = !d->bestLevels.isEmpty();
    results.structureFile = d->structureFile;
    results.effectiveCharge = d->effectiveCharge;
    results.response = bestResponse;
    results.bestPoint = d->bestPoint;
    results.points = pointNumber;
    results.levels = d->bestLevels;
    results.citations = requiredCitations;
    results.reducedElements = d->reducedElements;
    if (!results.hasFeasiblePoint)
        return results;
    for (const ParametersGroup &group : d->groups) {
        const Limits limits = d->limitsOf(group);
        results.groups.append({group, d->bestChargeFactors.value(results.groups.size()),
                               limits.minimum, limits.maximum});
    }
    for (const TransitionValues &t : d->transitions) {
        const QVector<double> &levels = d->bestLevels.at(t.level);
        results.transitions.append({t.level, t.offset, t.energyLow - t.offset,
                                    t.energyHigh - t.offset, levels.first(), levels.last()});
    }
    return results;
}
