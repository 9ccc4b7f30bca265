#include "LanqorParametric.h"

#include "core/physicalConstants_p.h"
#include "fitting/intensityFit_p.h"
#include "input/fitFiles_p.h"

#include <LanqorEngine/LanqorOmega.h>

#include <algorithm>

using intensityFit::infeasibleResponse;

namespace {
constexpr int noGroup = -1;
} // namespace

class LanqorParametricPrivate
{
public:
    explicit LanqorParametricPrivate(int chargeModel)
        : problem(chargeModel, {updateDirectFitBounds, maximumAlphaDirectFit})
    {}

    void readWeightFile();
    int parameterNumber() const { return 2 * groupsAndAtoms.size(); }
    QString setupError();
    QString assignGroups();
    QString assignAtom(const QString &text, int group);
    void setAtomsToGAndAlpha(const double *x);
    std::vector<ChargeFactorBounds> boundsOfGroups() const;
    QString nameOfGroup(int group) const;

    intensityFit::Problem problem;
    double weights[2] = {1.0, 1.0};
    QMap<int, QStringList> groupsAndAtoms;
    QVector<int> groupOfAtom; // place of its group among the keys, by atom number
};

LanqorParametric::LanqorParametric(QObject *parent, const QString &mopacOutputFile,
                                   const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricPrivate>(value))
{
    requiredCitations = intensityFit::citations();
    d->readWeightFile();
    setLastError(d->problem.readGeometry(mopacOutputFile));
}

LanqorParametric::LanqorParametric(QObject *parent, LanqorInputData *geometry, const int &value)
    : LanqorAbstractParametric(parent)
    , d(std::make_unique<LanqorParametricPrivate>(value))
{
    requiredCitations = intensityFit::citations();
    d->readWeightFile();
    setLastError(d->problem.takeGeometry(geometry));
}

LanqorParametric::~LanqorParametric() = default;

void LanqorParametricPrivate::readWeightFile()
{
    if (const auto read = fitFiles::readWeights(QStringLiteral("pesos.txt")))
        std::copy(read->begin(), read->end(), weights);
}

void LanqorParametric::setGroupsAndAtoms(const QMap<int, QStringList> &groups)
{
    d->groupsAndAtoms = groups;
    d->problem.forgetSetup();
}

void LanqorParametric::setOmegaExp(const double &omega2, const double &omega4)
{
    d->problem.omegaExp2 = omega2;
    d->problem.omegaExp4 = omega4;
}

void LanqorParametric::setRefractiveIndex(const double &index)
{
    d->problem.refractiveIndex = index;
}

void LanqorParametric::setFileNameOmg(const QString &fileName)
{
    d->problem.reportFile = fileName;
}

void LanqorParametric::setFileNameMopacOutputFile(const QString &fileName)
{
    if (fileName != d->problem.getMopacOutput())
        setLastError(d->problem.readGeometry(fileName));
}

void LanqorParametric::setCoordNumber(const int &number)
{
    d->problem.setCoordNumber(number);
}

void LanqorParametric::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    d->problem.printingOptions = options;
}

bool LanqorParametric::checkSetup()
{
    const QString error = d->setupError();
    d->problem.keepSetup(error);
    return error.isEmpty() || failWith(error);
}

QString LanqorParametricPrivate::setupError()
{
    QString error = problem.coordinationError();
    if (error.isEmpty())
        error = assignGroups();
    return error.isEmpty() ? problem.prepareTrials() : error;
}

/// Gives every coordinated atom its group.
QString LanqorParametricPrivate::assignGroups()
{
    groupOfAtom.fill(noGroup, problem.getCoordNumber() + 2);
    int group = 0;
    for (const QStringList &atoms : qAsConst(groupsAndAtoms)) {
        for (const QString &text : atoms) {
            QString error = assignAtom(text, group);
            if (!error.isEmpty())
                return error;
        }
        ++group;
    }
    for (int atom = 2; atom <= problem.getCoordNumber() + 1; ++atom) {
        if (groupOfAtom.at(atom) == noGroup)
            return LanqorParametric::tr("The coordinated atom %1 %2 is in no group.")
                .arg(problem.getAtomLabel(atom), QString::number(atom));
    }
    return QString();
}

/// @param text  symbol and number of an atom, with blanks between
/// @return why it cannot be in the group
QString LanqorParametricPrivate::assignAtom(const QString &text, int group)
{
    const QString symbol = text.section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
    bool ok = false;
    const int atom =
        text.section(QLatin1Char(' '), 1, -1, QString::SectionSkipEmpty).trimmed().toInt(&ok);
    if (!ok)
        return LanqorParametric::tr("\"%1\" names no atom: a symbol and a number are needed, such "
                                    "as \"O 2\".")
            .arg(text);
    const int last = problem.getCoordNumber() + 1;
    if (atom < 2 || atom > last)
        return LanqorParametric::tr("\"%1\" is no coordinated atom: these are atoms 2 to %2.")
            .arg(text, QString::number(last));
    if (symbol != problem.getAtomLabel(atom))
        return LanqorParametric::tr("\"%1\" is in a group, but atom %2 of %3 is %4.")
            .arg(text, QString::number(atom), problem.getMopacOutput(), problem.getAtomLabel(atom));
    if (groupOfAtom.at(atom) != noGroup)
        return LanqorParametric::tr("Atom %1 is named twice in the groups.").arg(text);
    groupOfAtom[atom] = group;
    return QString();
}

bool LanqorParametric::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!d->problem.isSetupChecked())
        checkSetup();
    if (!d->problem.isSetupValid())
        return true;
    if (d->problem.isNewCount(n) && n != d->parameterNumber())
        failWith(tr("The fit of %1 groups has %2 parameters, not %3.")
                     .arg(QString::number(d->groupsAndAtoms.size()),
                          QString::number(d->parameterNumber()), QString::number(n)));
    if (n != d->parameterNumber())
        return true;
    d->setAtomsToGAndAlpha(x);
    if (!d->problem.isTrialWithinBounds())
        return true;
    responseFunction = d->problem.calcMisfit(d->weights[0], d->weights[1], 0.0);
    if (responseFunction < bestResponse) {
        bestResponse = responseFunction;
        d->problem.keepBest();
    }
    return true;
}

void LanqorParametricPrivate::setAtomsToGAndAlpha(const double *x)
{
    const double *alphas = x + groupsAndAtoms.size();
    for (int atom = 2; atom <= problem.getCoordNumber() + 1; ++atom) {
        const int group = groupOfAtom.at(atom);
        problem.setTrial(atom, x[group], lanqor::cm3PerCubicAngstrom * alphas[group]);
    }
}

bool LanqorParametric::makeDonors(const QVector<double> &vector, QVector<double> &g,
                                  QVector<double> &alpha) const
{
    g.clear();
    alpha.clear();
    if (!d->problem.isSetupValid() || vector.size() != d->parameterNumber())
        return false;
    g.fill(0.0, d->problem.getCoordNumber() + 2);
    alpha.fill(0.0, g.size());
    for (int atom = 2; atom < g.size(); ++atom) {
        const int group = d->groupOfAtom.at(atom);
        g[atom] = vector.at(group);
        alpha[atom] = lanqor::cm3PerCubicAngstrom * vector.at(d->groupsAndAtoms.size() + group);
    }
    return d->problem.areWithinBounds(g, alpha);
}

double LanqorParametric::getBestChargeFactor(const int &atom) const
{
    return d->problem.getBestChargeFactor(atom);
}

double LanqorParametric::getBestAlpha(const int &atom) const
{
    return d->problem.getBestAlpha(atom);
}

double LanqorParametric::getWeight(const int &lambda) const
{
    return lambda == 2 ? d->weights[0] : d->weights[1];
}

double LanqorParametric::getBestOmega(const int &lambda) const
{
    return d->problem.getBestOmega(lambda);
}

QMap<int, QStringList> LanqorParametric::makeElementGroups() const
{
    QMap<int, QStringList> groups;
    QStringList elements;
    for (int atom = 2; atom <= d->problem.getCoordNumber() + 1; ++atom) {
        const QString element = d->problem.getAtomLabel(atom);
        if (element.isEmpty())
            break;
        if (!elements.contains(element))
            elements.append(element);
        groups[elements.indexOf(element) + 1].append(
            QStringLiteral("%1 %2").arg(element, QString::number(atom)));
    }
    return groups;
}

/// The bounds of g that all atoms of a group share.
std::vector<ChargeFactorBounds> LanqorParametricPrivate::boundsOfGroups() const
{
    std::vector<ChargeFactorBounds> shared(static_cast<std::size_t>(groupsAndAtoms.size()),
                                           {0.0, 1.0e300});
    for (int atom = 2; atom < groupOfAtom.size(); ++atom) {
        const ChargeFactorBounds own = problem.boundsOf(atom);
        ChargeFactorBounds &ofGroup = shared[static_cast<std::size_t>(groupOfAtom.at(atom))];
        ofGroup.minimum = std::max(ofGroup.minimum, own.minimum);
        ofGroup.maximum = std::min(ofGroup.maximum, own.maximum);
    }
    return shared;
}

/// The element when the group is all of its atoms, else the key.
QString LanqorParametricPrivate::nameOfGroup(int group) const
{
    const QString element = problem.getAtomLabel(groupOfAtom.indexOf(group));
    for (int atom = 2; atom < groupOfAtom.size(); ++atom)
        if ((problem.getAtomLabel(atom) == element) != (groupOfAtom.at(atom) == group))
            return QString::number(groupsAndAtoms.keys().at(group));
    return element;
}

QVector<FitParameter> LanqorParametric::getParameters()
{
    if (!d->problem.isSetupChecked())
        checkSetup();
    QVector<FitParameter> parameters;
    if (!d->problem.isSetupValid())
        return parameters;
    const std::vector<ChargeFactorBounds> bounds = d->boundsOfGroups();
    for (int group = 0; group < d->groupsAndAtoms.size(); ++group) {
        const ChargeFactorBounds &own = bounds[static_cast<std::size_t>(group)];
        parameters.append({QStringLiteral("g:") + d->nameOfGroup(group), QStringLiteral("1"),
                           own.minimum, own.maximum});
    }
    for (int group = 0; group < d->groupsAndAtoms.size(); ++group)
        parameters.append({QStringLiteral("alpha:") + d->nameOfGroup(group),
                           QStringLiteral("Angstrom^3"), minimumAlpha, maximumAlphaDirectFit});
    return parameters;
}

void LanqorParametric::setWeights(const double &weight2, const double &weight4)
{
    d->weights[0] = weight2;
    d->weights[1] = weight4;
}

QVector<double> LanqorParametric::makeStartingVector(const int &number)
{
    if (!d->problem.isSetupChecked())
        checkSetup();
    if (!d->problem.isSetupValid())
        return QVector<double>();
    std::vector<ChargeFactorBounds> ranges = d->boundsOfGroups();
    ranges.resize(2 * ranges.size(), {minimumAlpha, maximumAlphaDirectFit});
    QVector<double> start;
    for (const ChargeFactorBounds &range : ranges)
        start.append(range.minimum + intensityFit::startingFraction(number, start.size()) *
                                         (range.maximum - range.minimum));
    return start;
}

void LanqorParametric::endOfParametrization()
{
    intensityFit::Problem &problem = d->problem;
    problem.report.clear();
    if (!problem.hasBest()) {
        failWith(problem.isSetupChecked() && !problem.isSetupValid()
                     ? getLastError()
                     : tr("No trial of the fit was within the bounds of the charge factors and "
                          "polarizabilities: there is nothing to report."));
        return;
    }
    const std::unique_ptr<LanqorOmega> best = problem.makeBestCalculation(*this, requiredCitations);
    if (best->calcOmega())
        problem.report = best->createOutFile(problem.reportFile);
}

QString LanqorParametric::getReport() const
{
    return d->problem.report;
}

OmegaFitResults LanqorParametric::getResults() const
{
    const intensityFit::Problem &problem = d->problem;
    OmegaFitResults results;
    problem.fill(results, d->weights[0], d->weights[1], 0.0);
    results.response = bestResponse;
    results.points = pointNumber;
    if (!problem.isSetupValid())
        return results;
    const std::vector<ChargeFactorBounds> bounds = d->boundsOfGroups();
    for (auto group = d->groupsAndAtoms.begin(); group != d->groupsAndAtoms.end(); ++group) {
        const int atom = d->groupOfAtom.indexOf(results.groups.size());
        const ChargeFactorBounds &shared = bounds[static_cast<std::size_t>(results.groups.size())];
        results.groups.append({group.key(), *group, problem.makeDonor(atom, shared)});
    }
    return results;
}
