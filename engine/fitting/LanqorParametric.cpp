#include "LanqorParametric.h"

#include "core/chargeFactorBounds_p.h"
#include "core/physicalConstants_p.h"
#include "fitting/intensityFit_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"
#include "intensity/citations_p.h"

#include <LanqorEngine/LanqorOmega.h>

#include <algorithm>

using intensityFit::infeasibleResponse;

namespace {
constexpr int noGroup = -1;
}

LanqorParametric::LanqorParametric(QObject *parent, const QString &mopacOutputFile,
                                   const int &value)
    : LanqorAbstractParametric(parent)
    , fileNameMopacOutputFile(mopacOutputFile)
    , chargeModel(value)
{
    requiredCitations = intensityFit::citations();
    readWeightFile();
    createOmega();
}

LanqorParametric::~LanqorParametric() = default;

void LanqorParametric::createOmega()
{
    omega = std::make_unique<LanqorOmega>(nullptr, chargeModel, fileNameMopacOutputFile, QString());
    setLastError(omega->getLastError());
    isSetupChecked = false;
}

void LanqorParametric::readWeightFile()
{
    LineReader lines(QStringLiteral("pesos.txt"));
    if (!lines.open())
        return;
    for (double &weight : weights) {
        const double value = lines.next() ? textFields::toDouble(lines.line()) : 0.0;
        weight = value == 0.0 ? 1.0 : value;
    }
}

void LanqorParametric::setGroupsAndAtoms(const QMap<int, QStringList> &groups)
{
    groupsAndAtoms = groups;
    isSetupChecked = false;
}

void LanqorParametric::setOmegaExp(const double &omega2, const double &omega4)
{
    omegaExp[0] = omega2;
    omegaExp[1] = omega4;
}

void LanqorParametric::setRefractiveIndex(const double &index)
{
    refractiveIndex = index;
}

void LanqorParametric::setFileNameOmg(const QString &fileName)
{
    fileNameOmg = fileName;
}

void LanqorParametric::setFileNameMopacOutputFile(const QString &fileName)
{
    if (fileName == fileNameMopacOutputFile)
        return;
    fileNameMopacOutputFile = fileName;
    createOmega();
}

void LanqorParametric::setCoordNumber(const int &number)
{
    coordNumber = number;
    isSetupChecked = false;
}

void LanqorParametric::setOmegaPrintingOptions(const OmegaPrintingOptions &options)
{
    omegaPrintingOptions = options;
}

bool LanqorParametric::checkSetup()
{
    isSetupChecked = true;
    isSetupValid = false;
    checkedCount = -1;
    if (coordNumber < 1 || omega->getAtomLabel(coordNumber + 1).isEmpty())
        return failWith(omega->getAtomLabel(1).isEmpty()
                            ? omega->getLastError()
                            : tr("The coordination number is %1, which does not fit the geometry "
                                 "of %2.")
                                  .arg(coordNumber)
                                  .arg(fileNameMopacOutputFile));
    if (!assignGroups())
        return false;
    if (!intensityFit::calcFirst(*omega, coordNumber, g, alpha))
        return failWith(omega->getLastError());
    isSetupValid = true;
    return true;
}

/// Gives every coordinated atom its group and its bounds.
bool LanqorParametric::assignGroups()
{
    groupOfAtom.fill(noGroup, coordNumber + 2);
    int group = 0;
    for (const QStringList &atoms : qAsConst(groupsAndAtoms)) {
        for (const QString &text : atoms) {
            if (!assignAtom(text, group))
                return false;
        }
        ++group;
    }
    bounds.assign(2, ChargeFactorBounds());
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const QString label = omega->getAtomLabel(atom);
        if (groupOfAtom.at(atom) == noGroup)
            return failWith(tr("The coordinated atom %1 %2 is in no group.").arg(label).arg(atom));
        // An element in no class keeps the bounds of the atom before it.
        bounds.push_back(bounds.back());
        updateDirectFitBounds(label, bounds.back());
    }
    return true;
}

/// @param text  symbol and number of an atom, with blanks between
bool LanqorParametric::assignAtom(const QString &text, int group)
{
    const QString symbol = text.section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty);
    bool ok = false;
    const int atom =
        text.section(QLatin1Char(' '), 1, -1, QString::SectionSkipEmpty).trimmed().toInt(&ok);
    if (!ok)
        return failWith(tr("\"%1\" names no atom: a symbol and a number are needed, such as "
                           "\"O 2\".")
                            .arg(text));
    if (atom < 2 || atom > coordNumber + 1)
        return failWith(tr("\"%1\" is no coordinated atom: these are atoms 2 to %2.")
                            .arg(text)
                            .arg(coordNumber + 1));
    if (symbol != omega->getAtomLabel(atom))
        return failWith(tr("\"%1\" is in a group, but atom %2 of %3 is %4.")
                            .arg(text)
                            .arg(atom)
                            .arg(fileNameMopacOutputFile, omega->getAtomLabel(atom)));
    if (groupOfAtom.at(atom) != noGroup)
        return failWith(tr("Atom %1 is named twice in the groups.").arg(text));
    groupOfAtom[atom] = group;
    return true;
}

/// Checks the setup once, and the number of parameters whenever it changes.
bool LanqorParametric::isReadyFor(int n)
{
    if (!isSetupChecked)
        checkSetup();
    if (isSetupValid && n != checkedCount) {
        checkedCount = n;
        if (n != 2 * groupsAndAtoms.size())
            failWith(tr("The fit of %1 groups has %2 parameters, not %3.")
                         .arg(groupsAndAtoms.size())
                         .arg(2 * groupsAndAtoms.size())
                         .arg(n));
    }
    return isSetupValid && n == 2 * groupsAndAtoms.size();
}

bool LanqorParametric::runParametrization(const int &n, double *&x)
{
    LanqorAbstractParametric::runParametrization(n, x);
    responseFunction = infeasibleResponse;
    if (!isReadyFor(n))
        return true;
    setAtomsToGAndAlpha();
    if (!checkParameters())
        return true;

    intensityFit::setChargeFactorsAndAlphas(*omega, g, alpha);
    omega->calcOmega();
    responseFunction =
        weights[0] * intensityFit::squaredDeviation(omegaExp[0], omega->getOmega(2)) +
        weights[1] * intensityFit::squaredDeviation(omegaExp[1], omega->getOmega(4));
    if (responseFunction < bestResponse) {
        bestResponse = responseFunction;
        bestG.resize(g.size());
        bestAlpha.resize(alpha.size());
        std::copy(g.cbegin(), g.cend(), bestG.begin());
        std::copy(alpha.cbegin(), alpha.cend(), bestAlpha.begin());
        bestOmega = intensityFit::omegaOf(*omega);
    }
    return true;
}

void LanqorParametric::setAtomsToGAndAlpha()
{
    const double *alphas = parameters + groupsAndAtoms.size();
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const int group = groupOfAtom.at(atom);
        g[atom] = parameters[group];
        alpha[atom] = lanqor::cm3PerCubicAngstrom * alphas[group];
    }
}

bool LanqorParametric::checkParameters() const
{
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        if (!isWithinBounds(g.at(atom), alpha.at(atom), bounds[static_cast<std::size_t>(atom)],
                            maximumAlphaDirectFit))
            return false;
    }
    return true;
}

double LanqorParametric::getBestOmega(const int &lambda) const
{
    return intensityFit::valueOf(bestOmega, lambda);
}

QVector<double> LanqorParametric::makeStartingVector(const int &number)
{
    if (!isSetupChecked)
        checkSetup();
    if (!isSetupValid)
        return QVector<double>();
    const int groupCount = groupsAndAtoms.size();
    // The bounds that all atoms of a group share.
    std::vector<ChargeFactorBounds> shared(static_cast<std::size_t>(groupCount), {0.0, 1.0e300});
    for (int atom = 2; atom <= coordNumber + 1; ++atom) {
        const ChargeFactorBounds &own = bounds[static_cast<std::size_t>(atom)];
        ChargeFactorBounds &ofGroup = shared[static_cast<std::size_t>(groupOfAtom.at(atom))];
        ofGroup.minimum = std::max(ofGroup.minimum, own.minimum);
        ofGroup.maximum = std::min(ofGroup.maximum, own.maximum);
    }
    QVector<double> start;
    for (int j = 0; j < 2 * groupCount; ++j) {
        const bool isAlpha = j >= groupCount;
        const ChargeFactorBounds range =
            isAlpha ? ChargeFactorBounds{minimumAlpha, maximumAlphaDirectFit}
                    : shared[static_cast<std::size_t>(j)];
        start.append(range.minimum +
                     intensityFit::startingFraction(number, j) * (range.maximum - range.minimum));
    }
    return start;
}

void LanqorParametric::endOfParametrization()
{
    report.clear();
    if (bestG.isEmpty()) {
        failWith(isSetupChecked && !isSetupValid
                     ? getLastError()
                     : tr("No trial of the fit was within the bounds of the charge factors and "
                          "polarizabilities: there is nothing to report."));
        return;
    }
    LanqorOmega best(nullptr, chargeModel, fileNameMopacOutputFile, QString());
    intensityFit::relayMessages(best, *this);
    best.setRefractiveIndex(refractiveIndex);
    best.setCoordNumber(coordNumber);
    intensityFit::setChargeFactorsAndAlphas(best, bestG, bestAlpha);
    best.setOmegaPrintingOptions(omegaPrintingOptions);
    best.setRequiredCitations(citations::required(best.getMopacCitation(), requiredCitations));
    if (best.calcOmega())
        report = best.createOutFile(fileNameOmg);
}
