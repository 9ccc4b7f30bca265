#include "LanqorLevelsLeastSquares.h"

#include "fitting/leastSquares_p.h"
#include "fitting/linearBlock_p.h"
#include "fitting/measuredLevel_p.h"
#include "levels/fShell_p.h"
#include "levels/hamiltonian_p.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorParametricEnergyLevels.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Block = LinearBlock<Eigen::MatrixXd>;

constexpr int withTwoBodies = 7; // F2, F4, F6, zeta, alpha, beta, gamma

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorLevelsLeastSquares", text);
}

double deviation(const EnergyLevelsExp &level)
{
    return level.standardDeviation > 0.0 ? level.standardDeviation : 1.0;
}

/// The matrices of the first @p count parameters between the levels of one J.
Block makeBlock(const freeIon::AngularBlock &angular, int count)
{
    Block block;
    const freeIon::Parameters units[withTwoBodies] = {
        {0.0, 1.0},
        {0.0, 0.0, 1.0},
        {0.0, 0.0, 0.0, 1.0},
        {0.0, 0.0, 0.0, 0.0, 1.0},
        {0.0, 0.0, 0.0, 0.0, 0.0, 1.0},
        {0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0},
        {0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0},
    };
    const int order = angular.labels.size();
    for (int k = 0; k < count; ++k) {
        const SymmetricMatrix part = freeIon::hamiltonian(angular, units[k]);
        Eigen::MatrixXd matrix(order, order);
        for (int i = 0; i < order; ++i)
            for (int j = 0; j < order; ++j)
                matrix(i, j) = part(i, j);
        block.parts.push_back(matrix);
    }
    return block;
}

/// Where a measured level is among the computed ones: the place of its J, and that of the state
/// in the order of energy.
struct Place
{
    int block = -1; ///< -1: the ion has no such level
    int state = 0;

    bool operator==(const Place &other) const
    {
        return block == other.block && state == other.state;
    }
};
using Assignment = QVector<Place>; // by measured level

} // namespace

class LanqorLevelsLeastSquaresPrivate
{
public:
    explicit LanqorLevelsLeastSquaresPrivate(int electrons)
        : electrons(electrons)
    {}

    int parameterCount() const { return parameters.size(); }
    /// The matrices of all parameters.
    void makeBlocks();
    Eigen::VectorXd vectorOf(const QVector<double> &x) const;
    QString setLevels(const QVector<EnergyLevelsExp> &levels);
    QVector<QStringList> labelsByEnergy(const QVector<double> &parameters) const;
    Assignment assignByLabel(const QVector<double> &parameters) const;
    void putInOrder(Assignment &assignment) const;
    Assignment assignByEnergy(const Assignment &before, const QVector<double> &x) const;
    QVector<QVector<int>> namesOf(int block, const Assignment &assignment) const;

    std::vector<Block::Levels> calcLevels(const Eigen::VectorXd &x) const;
    leastSquares::Values evaluate(const Assignment &assignment, const Eigen::VectorXd &x) const;
    leastSquares::Problem makeProblem(const Assignment &assignment) const;
    FitAccount describe(const Assignment &assignment, const QVector<double> &x) const;

    int electrons;
    QString lastError;
    QString twoBodyError; // why there are no alpha, beta and gamma; empty when there are
    QVector<FitParameter> parameters = LanqorParametricEnergyLevels::getParameters();
    QVector<double> jValues; // ascending, as are the blocks
    std::vector<freeIon::AngularBlock> angularBlocks;
    std::vector<Block> blocks;
    QVector<QStringList> basisLabels; // by block
    QVector<EnergyLevelsExp> levels;
    QStringList stateLabels;   // of the measured levels, as the computation spells them
    QVector<int> blockOfLevel; // -1: the ion has no such level
    Assignment published;      // by label at the published parameters
};

LanqorLevelsLeastSquares::LanqorLevelsLeastSquares(const int &electrons)
    : d(std::make_unique<LanqorLevelsLeastSquaresPrivate>(electrons))
{
    LanqorEnergyLevels ion(nullptr, electrons);
    d->lastError = ion.getLastError();
    for (const auto &term : ion.getSpectroscopicTermVector())
        for (const double J : LanqorEnergyLevels::getJVector(term.S, term.L))
            if (!d->jValues.contains(J))
                d->jValues.append(J);
    std::sort(d->jValues.begin(), d->jValues.end());
    const bool isMoreThanHalf = electrons > fShell::halfFilled;
    const int shell = isMoreThanHalf ? fShell::holesAndElectrons - electrons : electrons;
    for (const double J : qAsConst(d->jValues)) {
        const freeIon::AngularBlock angular = freeIon::angularBlock(ion, shell, isMoreThanHalf, J);
        d->basisLabels.append(angular.labels);
        d->angularBlocks.push_back(angular);
    }
    d->makeBlocks();
    constexpr double noSuchJ = -2.0; // asks for the tables alone
    ion.setSlaterIntegral(0.0, 1.0, 1.0, 1.0);
    ion.setZetaParameters(1.0);
    ion.setTwoBodyParameters(1.0, 1.0, 1.0);
    if (!ion.calcEnergyLevels(noSuchJ))
        d->twoBodyError = ion.getLastError();
}

void LanqorLevelsLeastSquaresPrivate::makeBlocks()
{
    blocks.clear();
    for (const freeIon::AngularBlock &angular : angularBlocks)
        blocks.push_back(makeBlock(angular, parameterCount()));
}

Eigen::VectorXd LanqorLevelsLeastSquaresPrivate::vectorOf(const QVector<double> &x) const
{
    return Eigen::Map<const Eigen::VectorXd>(x.constData(), parameterCount());
}

LanqorLevelsLeastSquares::~LanqorLevelsLeastSquares() = default;

bool LanqorLevelsLeastSquares::setEnergyLevelsExp(const QVector<EnergyLevelsExp> &levels)
{
    if (!d->blocks.empty())
        d->lastError = d->setLevels(levels);
    if (d->lastError.isEmpty() && d->parameterCount() == withTwoBodies)
        d->lastError = d->twoBodyError;
    return d->lastError.isEmpty();
}

void LanqorLevelsLeastSquares::setParameters(const QVector<FitParameter> &parameters)
{
    const bool isOtherCount = parameters.size() != d->parameterCount();
    d->parameters = parameters;
    if (!isOtherCount)
        return;
    d->makeBlocks();
    if (!d->levels.isEmpty())
        setEnergyLevelsExp(QVector<EnergyLevelsExp>(d->levels));
}

QString LanqorLevelsLeastSquares::getLastError() const
{
    return d->lastError;
}

QStringList LanqorLevelsLeastSquares::getUnknownLabels() const
{
    QStringList labels;
    for (int k = 1; k < d->levels.size(); ++k)
        if (d->blockOfLevel.at(k) < 0)
            labels.append(d->levels.at(k).label);
    return labels;
}

QString LanqorLevelsLeastSquaresPrivate::setLevels(const QVector<EnergyLevelsExp> &measured)
{
    levels = measured;
    stateLabels.clear();
    blockOfLevel.clear();
    for (int k = 1; k < levels.size(); ++k)
        if (!(levels.at(k).energy > 0.0) || !std::isfinite(levels.at(k).energy))
            return tr("The measured level %1 (number %2) has no positive energy; only the first "
                      "one, the ground level, is at 0.")
                .arg(levels.at(k).label, QString::number(k + 1));
    const FreeIonParameters usual = LanqorFreeIonParameters::getParameters(electrons);
    const QVector<double> reference = {usual.F2,    usual.F4,   usual.F6,   usual.zeta,
                                       usual.alpha, usual.beta, usual.gamma};
    const QVector<QStringList> labels = labelsByEnergy(reference);
    int fitted = 0;
    for (const EnergyLevelsExp &level : qAsConst(levels)) {
        const EnergyLevelsExp named = measuredLevel(level.label);
        stateLabels.append(freeIon::levelLabel({named.S, named.L, named.index, named.J}));
        const auto holder = std::find_if(labels.begin(), labels.end(), [&](const QStringList &J) {
            return named.L >= 0 && J.contains(stateLabels.last());
        });
        blockOfLevel.append(holder == labels.end() ? -1 : int(holder - labels.begin()));
        fitted += blockOfLevel.size() > 1 && blockOfLevel.last() >= 0 ? 1 : 0;
    }
    if (fitted == 0)
        return tr("None of the measured levels is a level of 4f^%1 above the ground level, which "
                  "is the first of the list; labels are of the form 7F1, 5D(3)0 or 4I11/2.")
            .arg(electrons);
    published = assignByLabel(reference);
    return QString();
}

/// For each J the labels of its states in the order of energy: a state has the label of the basis
/// level on whose place of the diagonal its eigenvalue settles, as in LanqorEnergyLevels.
QVector<QStringList>
LanqorLevelsLeastSquaresPrivate::labelsByEnergy(const QVector<double> &values) const
{
    constexpr double jacobiTolerance = 1e-10; // cm^-1
    QVector<QStringList> labels;
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        const QStringList &basis = basisLabels.at(int(b));
        SymmetricMatrix matrix(basis.size());
        for (int i = 0; i < basis.size(); ++i)
            for (int j = 0; j <= i; ++j)
                for (int k = 0; k < parameterCount(); ++k)
                    matrix(i, j) += values.at(k) * blocks[b].parts[std::size_t(k)](i, j);
        QVector<int> order;
        for (int i = 0; i < basis.size(); ++i)
            order.append(i);
        if (matrix.diagonalize(jacobiTolerance))
            std::stable_sort(order.begin(), order.end(),
                             [&](int a, int c) { return matrix(a, a) < matrix(c, c); });
        QStringList sorted;
        for (const int i : qAsConst(order))
            sorted.append(basis.at(i));
        labels.append(sorted);
    }
    return labels;
}

Assignment LanqorLevelsLeastSquaresPrivate::assignByLabel(const QVector<double> &values) const
{
    const QVector<QStringList> labels = labelsByEnergy(values);
    Assignment assignment;
    for (int k = 0; k < levels.size(); ++k) {
        const int block = blockOfLevel.at(k);
        const int state = block < 0 ? 0 : labels.at(block).indexOf(stateLabels.at(k));
        assignment.append({state < 0 ? -1 : block, std::max(0, state)});
    }
    putInOrder(assignment);
    return assignment;
}

/// The measured levels of a J, grouped by label, the groups in the order of their mean energy: a
/// level that was measured twice stays one.
QVector<QVector<int>> LanqorLevelsLeastSquaresPrivate::namesOf(int block,
                                                               const Assignment &assignment) const
{
    QVector<QVector<int>> groups;
    QStringList labels;
    for (int k = 0; k < levels.size(); ++k) {
        if (assignment.at(k).block != block)
            continue;
        if (!labels.contains(stateLabels.at(k))) {
            labels.append(stateLabels.at(k));
            groups.append(QVector<int>());
        }
        groups[labels.indexOf(stateLabels.at(k))].append(k);
    }
    const auto meanEnergy = [this](const QVector<int> &group) {
        double sum = 0.0;
        for (const int k : group)
            sum += levels.at(k).energy;
        return sum / group.size();
    };
    std::stable_sort(groups.begin(), groups.end(),
                     [&](const auto &a, const auto &b) { return meanEnergy(a) < meanEnergy(b); });
    return groups;
}

/// Deals the states that the labels of a J name to its measured levels in the order of energy.
void LanqorLevelsLeastSquaresPrivate::putInOrder(Assignment &assignment) const
{
    for (int block = 0; block < jValues.size(); ++block) {
        const QVector<QVector<int>> groups = namesOf(block, assignment);
        QVector<int> states;
        for (const QVector<int> &group : groups)
            states.append(assignment.at(group.first()).state);
        std::sort(states.begin(), states.end());
        for (int i = 0; i < groups.size(); ++i)
            for (const int k : groups.at(i))
                assignment[k].state = states.at(i);
    }
}

/// In each J, the choice of states in ascending order that has the smallest sum of squares for its
/// measured levels in ascending order, by dynamic programming.
Assignment LanqorLevelsLeastSquaresPrivate::assignByEnergy(const Assignment &before,
                                                           const QVector<double> &x) const
{
    const auto computed = calcLevels(vectorOf(x));
    double ground = std::numeric_limits<double>::infinity();
    for (const Block::Levels &block : computed)
        ground = std::min(ground, block.energies(0));
    Assignment assignment = before;
    for (int block = 0; block < jValues.size(); ++block) {
        const QVector<QVector<int>> groups = namesOf(block, before);
        const Eigen::VectorXd &energies = computed[std::size_t(block)].energies;
        const int count = groups.size();
        const int states = int(energies.size());
        if (count == 0 || count > states)
            continue;
        // best(i, s): the smallest sum of the first i groups with states before s.
        Eigen::MatrixXd best = Eigen::MatrixXd::Zero(count + 1, states + 1);
        const auto costOf = [&](int i, int s) {
            double cost = 0.0;
            for (const int k : groups.at(i)) {
                const EnergyLevelsExp &level = levels.at(k);
                const double r = (energies(s) - ground - level.energy) / deviation(level);
                cost += r * r;
            }
            return cost;
        };
        for (int i = 1; i <= count; ++i) {
            best(i, i - 1) = std::numeric_limits<double>::infinity();
            for (int s = i; s <= states; ++s)
                best(i, s) = std::min(best(i, s - 1), best(i - 1, s - 1) + costOf(i - 1, s - 1));
        }
        for (int i = count, s = states; i > 0; --i) {
            while (s > i && best(i, s - 1) <= best(i, s))
                --s;
            --s;
            for (const int k : groups.at(i - 1))
                assignment[k].state = s;
        }
    }
    return assignment;
}

std::vector<Block::Levels>
LanqorLevelsLeastSquaresPrivate::calcLevels(const Eigen::VectorXd &x) const
{
    std::vector<Block::Levels> computed;
    computed.reserve(blocks.size());
    for (const Block &block : blocks)
        computed.push_back(block.calcLevels(x));
    return computed;
}

leastSquares::Values LanqorLevelsLeastSquaresPrivate::evaluate(const Assignment &assignment,
                                                               const Eigen::VectorXd &x) const
{
    const std::vector<Block::Levels> computed = calcLevels(x);
    const auto ground =
        std::min_element(computed.begin(), computed.end(), [](const auto &a, const auto &b) {
            return a.energies(0) < b.energies(0);
        });
    leastSquares::Values values;
    values.residuals.setZero(levels.size());
    values.jacobian.setZero(levels.size(), parameterCount());
    for (int k = 1; k < levels.size(); ++k) {
        const Place place = assignment.at(k);
        if (place.block < 0)
            continue;
        const Block::Levels &block = computed[std::size_t(place.block)];
        const double sd = deviation(levels.at(k));
        values.residuals(k) =
            (block.energies(place.state) - ground->energies(0) - levels.at(k).energy) / sd;
        values.jacobian.row(k) = (block.slopes.row(place.state) - ground->slopes.row(0)) / sd;
    }
    return values;
}

leastSquares::Problem
LanqorLevelsLeastSquaresPrivate::makeProblem(const Assignment &assignment) const
{
    leastSquares::Problem problem;
    problem.parameters = parameters;
    problem.residualCount = levels.size(); // 0 of a level that is not fitted
    problem.evaluate = [this, assignment](const Eigen::VectorXd &x) {
        return evaluate(assignment, x);
    };
    return problem;
}

LeastSquaresResults LanqorLevelsLeastSquares::fit(const QVector<double> &start) const
{
    LeastSquaresResults results;
    if (!d->lastError.isEmpty() || d->published.isEmpty())
        return results;
    Assignment best;
    leastSquares::Minimum minimum;
    int points = 0;
    const auto tryAssignment = [&](const Assignment &assignment, const QVector<double> &from) {
        leastSquares::Minimum found = leastSquares::minimise(d->makeProblem(assignment), from);
        for (FitTrace::Improvement &improvement : found.trace)
            improvement.point += points;
        points += found.points;
        const bool isBetter =
            !found.x.isEmpty() && (minimum.x.isEmpty() || found.chiSquare < minimum.chiSquare);
        if (isBetter) {
            for (const FitTrace::Improvement &improvement : qAsConst(found.trace))
                if (results.trace.improvements.isEmpty() ||
                    improvement.response < results.trace.improvements.last().response)
                    results.trace.improvements.append(improvement);
            best = assignment;
            minimum = found;
        }
        return isBetter;
    };
    tryAssignment(d->published, start);
    const Assignment atStart = d->assignByLabel(start);
    if (!(atStart == d->published))
        tryAssignment(atStart, start);
    constexpr int maximumRounds = 10;
    for (int round = 0; round < maximumRounds && !minimum.x.isEmpty(); ++round) {
        const Assignment next = d->assignByEnergy(best, minimum.x);
        if (next == best || !tryAssignment(next, minimum.x))
            break;
    }
    if (minimum.x.isEmpty())
        return results;
    minimum.points = points;
    results.vector = minimum.x;
    results.account = d->describe(best, minimum.x);
    leastSquares::addOutcome(minimum, results.account);
    return results;
}

FitAccount LanqorLevelsLeastSquares::describe(const QVector<double> &vector) const
{
    if (d->published.isEmpty())
        return {};
    // The labels as they are at this point, unless the energies say otherwise.
    const Assignment labelled = d->assignByLabel(vector);
    return d->describe(d->assignByEnergy(labelled, vector), vector);
}

FitAccount LanqorLevelsLeastSquaresPrivate::describe(const Assignment &assignment,
                                                     const QVector<double> &x) const
{
    FitAccount account;
    account.dataUnit = QStringLiteral("cm^-1");
    const leastSquares::Values values = evaluate(assignment, vectorOf(x));
    account.misfit = values.residuals.squaredNorm();
    account.areDeviationsKnown = true; // of all that is fitted, or their scale is not
    const QVector<QStringList> labels = labelsByEnergy(x);
    for (int k = 0; k < levels.size(); ++k) {
        const EnergyLevelsExp &level = levels.at(k);
        const Place place = assignment.at(k);
        FitAccount::Datum datum;
        datum.label = level.label;
        datum.measured = level.energy;
        datum.standardDeviation = deviation(level);
        datum.isFitted = k > 0 && place.block >= 0;
        datum.computed =
            place.block < 0 ? qQNaN() : level.energy + values.residuals(k) * deviation(level);
        const QString state =
            place.block < 0 ? QString() : labels.at(place.block).value(place.state);
        datum.computedLabel = state == stateLabels.at(k) ? level.label : state;
        account.dataCount += datum.isFitted ? 1 : 0;
        account.areDeviationsKnown =
            account.areDeviationsKnown && (!datum.isFitted || level.standardDeviation > 0.0);
        account.data.append(datum);
    }
    leastSquares::addStatistics(makeProblem(assignment), x, account);
    return account;
}
