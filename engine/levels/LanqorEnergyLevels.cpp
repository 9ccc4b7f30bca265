#include "LanqorEnergyLevels.h"

#include "levels/fShell_p.h"
#include "levels/hamiltonian_p.h"

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

} // namespace

/// Computed when first needed; by position in jValues, empty before.
struct LanqorEnergyLevels::AngularParts
{
    std::vector<freeIon::AngularBlock> blocks;
};

LanqorEnergyLevels::LanqorEnergyLevels(QObject *parent, const int &electrons)
    : LanqorAbstractObjCalculation(parent)
    , numberOfElectrons(electrons)
    , shellElectrons(electrons <= fShell::halfFilled ? electrons
                                                     : fShell::holesAndElectrons - electrons)
    , angularParts(std::make_unique<AngularParts>())
{
    const QString directory = QDir::currentPath() + QStringLiteral("/EnergyLevels4f/");
    cfpFileName = directory + QStringLiteral("f%1.cfp").arg(shellElectrons);
    eleFileName = directory + QStringLiteral("f%1.ele").arg(shellElectrons);
    if (readTables())
        collectJValues();
}

LanqorEnergyLevels::~LanqorEnergyLevels() = default;

void LanqorEnergyLevels::collectJValues()
{
    QStringList texts;
    for (const SpectroscopicTerm &term : qAsConst(spectroscopicTerms))
        for (double J : getJVector(term.S, term.L))
            texts.append(QString::number(J, 'g', 6));
    texts.removeDuplicates();
    for (const QString &text : qAsConst(texts))
        jValues.append(text.toDouble());
    std::sort(jValues.begin(), jValues.end());
}

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
    this->F0 = F0;
    this->F2 = F2;
    this->F4 = F4;
    this->F6 = F6;
}

void LanqorEnergyLevels::setZetaParameters(const double &zeta)
{
    this->zeta = zeta;
}

MixedState LanqorEnergyLevels::getMixedStates(const SpectroscopicTerm &level) const
{
    for (const MixedState &state : mixedStates) {
        const SpectroscopicTerm named = termFromLabel(state.label, true);
        if (isSameTerm(named, level) && named.J == level.J)
            return state;
    }
    return {};
}

QVector<FractParentCoeff>
LanqorEnergyLevels::getFractParentCoeffVector(const SpectroscopicTerm &term) const
{
    for (int i = 0; i < spectroscopicTerms.size(); ++i)
        if (isSameTerm(spectroscopicTerms.at(i), term))
            return fractParentCoeffs.at(i);
    return {};
}

QVector<double> LanqorEnergyLevels::getElectrostaticMatrixVector(const SpectroscopicTerm &bra,
                                                                 const SpectroscopicTerm &ket) const
{
    for (const ElectrostaticElement &element : electrostaticMatrix)
        if ((isSameTerm(element.bra, bra) && isSameTerm(element.ket, ket)) ||
            (isSameTerm(element.bra, ket) && isSameTerm(element.ket, bra)))
            return element.coefficients;
    return QVector<double>(4, 0.0);
}

bool LanqorEnergyLevels::checkParameters()
{
    if (F2 == 0.0 || F4 == 0.0 || F6 == 0.0 || zeta == 0.0)
        return failWith(
            tr("It is need to specify the Slater Integral and Zeta parameters values\n"));
    for (double value : {F0, F2, F4, F6, zeta})
        if (!std::isfinite(value))
            return failWith(tr("Energy Levels Calculation\nF0, F2, F4, F6 and zeta must be finite "
                               "numbers\n"));
    return true;
}

bool LanqorEnergyLevels::calcEnergyLevels(const double &Jsel)
{
    if (!checkParameters())
        return false;
    QVector<MixedState> states;
    for (int i = 0; i < jValues.size(); ++i)
        if ((Jsel == allLevels || jValues.at(i) == Jsel) && !calcBlock(i, states))
            return false;
    if (Jsel == allLevels)
        sortFromGround(states);
    mixedStates = states;
    return true;
}

/// Appends the levels of one J, in the order in which the diagonaliser leaves them; each bears
/// the label of the basis level at its position.
bool LanqorEnergyLevels::calcBlock(int position, QVector<MixedState> &states)
{
    angularParts->blocks.resize(static_cast<std::size_t>(jValues.size()));
    freeIon::AngularBlock &block = angularParts->blocks[static_cast<std::size_t>(position)];
    if (block.labels.isEmpty())
        block = freeIon::angularBlock(*this, shellElectrons, numberOfElectrons > fShell::halfFilled,
                                      jValues.at(position));
    const int order = block.labels.size();
    if (!SymmetricMatrix::isPossibleOrder(order))
        return failWith(
            tr("Energy Levels Calculation\nCannot allocate a matrix of order %1\n").arg(order));
    SymmetricMatrix hamiltonian = freeIon::hamiltonian(block, {F0, F2, F4, F6, zeta});
    if (!hamiltonian.diagonalize(jacobiTolerance))
        return failWith(tr("Energy Levels Calculation\nThe matrix elements are too large; check "
                           "F0, F2, F4, F6 and zeta (cm^-1) and the tables of the 4f shell\n"));

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
    return true;
}

/// Counts the energies from the lowest and sorts levels and components.
void LanqorEnergyLevels::sortFromGround(QVector<MixedState> &states)
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
