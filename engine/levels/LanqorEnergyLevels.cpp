#include "LanqorEnergyLevels_p.h"

#include "levels/fShell_p.h"
#include "levels/levelNames_p.h"

#include <QDir>

#include <algorithm>
#include <cmath>

using LanqorSpectroscopicTermUtil::isSameTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;

namespace {

constexpr double allLevels = -1.0;
constexpr double jacobiTolerance = 1e-10; // cm^-1
constexpr double largestEnergy = 1e10;    // cm^-1, above any level

bool coeffLessThan(const CoeffAndLabel &a, const CoeffAndLabel &b)
{
    return std::abs(a.coefficient) > std::abs(b.coefficient);
}

bool energyLessThan(const MixedState &a, const MixedState &b)
{
    return a.energy < b.energy;
}

/// Counts the energies from the lowest and sorts levels and components.
void sortFromGround(QVector<MixedState> &states)
{
    double lowest = largestEnergy;
    for (const MixedState &state : qAsConst(states))
        if (state.energy < lowest)
            lowest = state.energy;
    for (MixedState &state : states) {
        state.energy -= lowest;
        std::stable_sort(state.components.begin(), state.components.end(), coeffLessThan);
    }
    std::stable_sort(states.begin(), states.end(), energyLessThan);
}

} // namespace

LanqorEnergyLevelsPrivate::LanqorEnergyLevelsPrivate(int electrons)
    : numberOfElectrons(electrons)
    , shellElectrons(electrons <= fShell::halfFilled ? electrons
                                                     : fShell::holesAndElectrons - electrons)
{
    const QString directory = QDir::currentPath() + QStringLiteral("/EnergyLevels4f/");
    cfpFileName = directory + QStringLiteral("f%1.cfp").arg(shellElectrons);
    eleFileName = directory + QStringLiteral("f%1.ele").arg(shellElectrons);
    casFileName = directory + QStringLiteral("f%1.cas").arg(shellElectrons);
}

void LanqorEnergyLevelsPrivate::collectJValues()
{
    QStringList texts;
    for (const SpectroscopicTerm &term : qAsConst(spectroscopicTerms))
        for (double J : LanqorEnergyLevels::getJVector(term.S, term.L))
            texts.append(QString::number(J, 'g', 6));
    texts.removeDuplicates();
    for (const QString &text : qAsConst(texts))
        jValues.append(text.toDouble());
    std::sort(jValues.begin(), jValues.end());
    blocks.resize(static_cast<std::size_t>(jValues.size()));
}

LanqorEnergyLevels::LanqorEnergyLevels(QObject *parent, const int &electrons)
    : LanqorAbstractObjCalculation(parent)
    , d(std::make_unique<LanqorEnergyLevelsPrivate>(electrons))
{
    d->tablesError = d->readTables();
    d->casimirError = d->readCasimirEigenvalues();
    setLastError(d->tablesError);
    d->collectJValues();
}

LanqorEnergyLevels::~LanqorEnergyLevels() = default;

QVector<double> LanqorEnergyLevels::getJVector(const double &S, const int &L)
{
    QVector<double> values;
    for (double J = std::abs(S - L); J <= S + L; J += 1.0)
        values.append(J);
    return values;
}

void LanqorEnergyLevels::setSlaterIntegral(const double &F0, const double &F2, const double &F4,
                                           const double &F6)
{
    d->F0 = F0;
    d->parameters.F2 = F2;
    d->parameters.F4 = F4;
    d->parameters.F6 = F6;
    d->parameters.source.clear();
    d->mayLackIntegrals = false;
}

void LanqorEnergyLevels::setZetaParameters(const double &zeta)
{
    d->parameters.zeta = zeta;
    d->parameters.source.clear();
}

void LanqorEnergyLevels::setTwoBodyParameters(const double &alpha, const double &beta,
                                              const double &gamma)
{
    d->parameters.alpha = alpha;
    d->parameters.beta = beta;
    d->parameters.gamma = gamma;
    d->parameters.source.clear();
}

void LanqorEnergyLevels::setParameters(const FreeIonParameters &ion)
{
    d->F0 = 0.0;
    d->parameters = ion;
    d->mayLackIntegrals = d->shellElectrons == 1;
}

MixedState LanqorEnergyLevels::getMixedStates(const SpectroscopicTerm &level) const
{
    for (const MixedState &state : qAsConst(d->mixedStates)) {
        const SpectroscopicTerm named = termFromLabel(state.label, true);
        if (isSameTerm(named, level) && named.J == level.J)
            return state;
    }
    return {};
}

QVector<FractParentCoeff>
LanqorEnergyLevels::getFractParentCoeffVector(const SpectroscopicTerm &term) const
{
    for (int i = 0; i < d->spectroscopicTerms.size(); ++i)
        if (isSameTerm(d->spectroscopicTerms.at(i), term))
            return d->fractParentCoeffs.at(i);
    return {};
}

QVector<double> LanqorEnergyLevels::getElectrostaticMatrixVector(const SpectroscopicTerm &bra,
                                                                 const SpectroscopicTerm &ket) const
{
    for (const ElectrostaticElement &element : qAsConst(d->electrostaticMatrix))
        if ((isSameTerm(element.bra, bra) && isSameTerm(element.ket, ket)) ||
            (isSameTerm(element.bra, ket) && isSameTerm(element.ket, bra)))
            return element.coefficients;
    return QVector<double>(4, 0.0);
}

QVector<double> LanqorEnergyLevels::getTwoBodyVector(const SpectroscopicTerm &term) const
{
    for (int i = 0; i < d->twoBodyVectors.size(); ++i)
        if (isSameTerm(d->spectroscopicTerms.at(i), term))
            return d->twoBodyVectors.at(i);
    return {};
}

QString LanqorEnergyLevelsPrivate::checkParameters() const
{
    const FreeIonParameters &p = parameters;
    const bool lacksIntegral = p.F2 == 0.0 || p.F4 == 0.0 || p.F6 == 0.0;
    if ((lacksIntegral && !mayLackIntegrals) || p.zeta == 0.0)
        return LanqorEnergyLevels::tr(
            "It is need to specify the Slater Integral and Zeta parameters values\n");
    for (double value : {F0, p.F2, p.F4, p.F6, p.zeta})
        if (!std::isfinite(value))
            return LanqorEnergyLevels::tr("Energy Levels Calculation\nF0, F2, F4, F6 and zeta must "
                                          "be finite numbers\n");
    for (double value : {p.alpha, p.beta, p.gamma})
        if (!std::isfinite(value))
            return LanqorEnergyLevels::tr("Energy Levels Calculation\nalpha, beta and gamma must "
                                          "be finite numbers\n");
    const bool hasTwoBody = p.alpha != 0.0 || p.beta != 0.0 || p.gamma != 0.0;
    return hasTwoBody && tablesError.isEmpty() ? casimirError : QString();
}

QString LanqorEnergyLevelsPrivate::calcBlock(const LanqorEnergyLevels &ion, int position,
                                             QVector<MixedState> &states)
{
    freeIon::AngularBlock &block = blocks[static_cast<std::size_t>(position)];
    if (block.labels.isEmpty())
        block = freeIon::angularBlock(ion, shellElectrons, numberOfElectrons > fShell::halfFilled,
                                      jValues.at(position));
    const int order = block.labels.size();
    if (!SymmetricMatrix::isPossibleOrder(order))
        return LanqorEnergyLevels::tr(
                   "Energy Levels Calculation\nCannot allocate a matrix of order %1\n")
            .arg(order);
    SymmetricMatrix hamiltonian = freeIon::hamiltonian(
        block, {F0, parameters.F2, parameters.F4, parameters.F6, parameters.zeta, parameters.alpha,
                parameters.beta, parameters.gamma});
    if (!hamiltonian.diagonalize(jacobiTolerance))
        return LanqorEnergyLevels::tr(
            "Energy Levels Calculation\nThe matrix elements are too large; check F0, F2, F4, F6 "
            "and zeta (cm^-1) and the tables of the 4f shell\n");

    for (int k = 0; k < order; ++k) {
        MixedState state;
        state.label = block.labels.at(k);
        state.energy = hamiltonian(k, k);
        state.components.reserve(order);
        for (int i = 0; i < order; ++i)
            state.components.append(
                {block.labels.at(i), hamiltonian.getEigenvectorComponent(i, k)});
        states.append(state);
    }
    return QString();
}

bool LanqorEnergyLevels::calcEnergyLevels(const double &Jsel)
{
    QString error = d->checkParameters();
    if (error.isEmpty())
        error = d->tablesError;
    QVector<MixedState> states;
    for (int i = 0; error.isEmpty() && i < d->jValues.size(); ++i)
        if (Jsel == allLevels || d->jValues.at(i) == Jsel)
            error = d->calcBlock(*this, i, states);
    if (!error.isEmpty())
        return failWith(error);
    if (Jsel == allLevels)
        sortFromGround(states);
    d->mixedStates = states;
    d->reduced.reset();
    d->usedF0 = d->F0;
    d->usedParameters = d->parameters;
    return true;
}

ReducedSquares LanqorEnergyLevels::getReducedSquares(const int &from, const int &to) const
{
    const int count = d->mixedStates.size();
    ReducedSquares squares;
    squares.from = from;
    squares.to = to;
    if (from < 1 || from > count || to < 1 || to > count)
        return squares;
    if (!d->reduced)
        d->reduced = std::make_unique<freeIon::ReducedElements>(
            freeIon::calcReducedElements(*this, getResults()));
    const auto square = [&](const Eigen::MatrixXd &elements) {
        const double element = elements(from - 1, to - 1);
        return element * element;
    };
    squares.U2 = square(d->reduced->U[0]);
    squares.U4 = square(d->reduced->U[1]);
    squares.U6 = square(d->reduced->U[2]);
    squares.magnetic = square(d->reduced->magnetic);
    return squares;
}

QVector<ReducedSquares> LanqorEnergyLevels::getAllReducedSquares(const double &maximumEnergy,
                                                                 const int &from,
                                                                 const double &threshold) const
{
    QVector<ReducedSquares> all;
    for (int i = 1; i <= d->mixedStates.size(); ++i)
        for (int j = i + 1; j <= d->mixedStates.size(); ++j) {
            if (std::max(d->mixedStates.at(i - 1).energy, d->mixedStates.at(j - 1).energy) >
                    maximumEnergy ||
                (from > 0 && i != from && j != from))
                continue;
            const ReducedSquares pair = getReducedSquares(i, j);
            if (std::max({pair.U2, pair.U4, pair.U6, pair.magnetic}) > threshold)
                all.append(pair);
        }
    return all;
}

QVector<int> LanqorEnergyLevels::findLevels(const QString &name) const
{
    return freeIon::findLevels(name, d->mixedStates);
}

QVector<MixedState> LanqorEnergyLevels::getMixedStatesVector() const
{
    return d->mixedStates;
}

QVector<LanqorEnergyLevels::SpectroscopicTerm>
LanqorEnergyLevels::getSpectroscopicTermVector() const
{
    return d->spectroscopicTerms;
}

FreeIonLevelsResults LanqorEnergyLevels::getResults() const
{
    FreeIonLevelsResults results;
    results.F0 = d->usedF0;
    results.parameters = d->usedParameters;
    results.parameters.electrons = d->numberOfElectrons;
    results.levels.reserve(d->mixedStates.size());
    for (const MixedState &state : qAsConst(d->mixedStates))
        results.levels.append({results.levels.size() + 1, state.label,
                               termFromLabel(state.label, true).J, state.energy, state.components});
    return results;
}
