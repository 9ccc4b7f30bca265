#include "LanqorIntensitySolutions.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "core/resultColumns_p.h"

#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/OmegaResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <Eigen/Dense>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <random>

using Eigen::MatrixXd;
using Eigen::VectorXd;
using resultColumns::column;

namespace {

constexpr int lambdaCount = 3; // 2, 4, 6
constexpr int lambdas[lambdaCount] = {2, 4, 6};

/// Uniform numbers, the same on every machine.
class Random
{
public:
    /// From -1 to 1.
    double draw() { return double(generator()) / 4294967295.0 * 2.0 - 1.0; }
    /// A whole number from 0 to before @p end.
    int below(int end) { return int(generator() % std::mt19937::result_type(end)); }

private:
    std::mt19937 generator; // of the default seed
};

} // namespace

class LanqorIntensitySolutionsPrivate
{
public:
    using Forms = std::array<MatrixXd, lambdaCount>;

    std::unique_ptr<LanqorOmega> makeOmega() const;
    /// Matrices of Omega(lambda), 1e-20 cm^2, as quadratic forms in the parameters.
    Forms makeForms() const;
    double responseOf(const Forms &forms, const VectorXd &x) const;
    bool isFeasible(const VectorXd &x) const;
    /// How far from @p x along @p direction the bounds allow to go.
    double reach(const VectorXd &x, const VectorXd &direction) const;
    /// Newton's method to the values @p goal of the fitted Omega, by the smallest change relative
    /// to the ranges.
    bool returnTo(const Forms &forms, const VectorXd &goal, VectorXd &x) const;
    std::optional<VectorXd> walk(const Forms &forms, const VectorXd &from, const VectorXd &reached,
                                 double limit, Random &random) const;
    /// Adds to the sample the solutions in which each quantity is smallest and largest.
    void addEnds(const Forms &forms, const VectorXd &reached, double limit,
                 std::vector<VectorXd> &sets) const;
    MatrixXd slopesOf(const Forms &forms, const VectorXd &x) const;
    VectorXd valuesOf(const Forms &forms, const VectorXd &x) const;
    void fillQuantities(IntensitySolutions &solutions, const std::vector<VectorXd> &sets) const;
    QVector<double> describe(LanqorOmega &omega, const VectorXd &x,
                             IntensitySolutions &solutions) const;

    LanqorInputData *geometry = nullptr;
    int coordNumber = 0;
    QVector<FitParameter> parameters;
    LanqorIntensitySolutions::MakeDonors makeDonors;
    QVector<FitParameter> reported; // of the results
    std::function<QVector<double>(const QVector<double> &)> toReported;
    std::array<double, lambdaCount> targets{}; // 1e-20 cm^2
    std::array<double, lambdaCount> weights{1.0, 1.0, 0.0};
    double tolerance = 5.0e-5;
    double refractiveIndex = 1.5;
    QStringList ligands;
    std::optional<YieldInputs> yieldInputs;
};

LanqorIntensitySolutions::LanqorIntensitySolutions(LanqorInputData *geometry,
                                                   const int &coordNumber,
                                                   const QVector<FitParameter> &parameters,
                                                   const MakeDonors &makeDonors)
    : d(std::make_unique<LanqorIntensitySolutionsPrivate>())
{
    d->geometry = geometry;
    d->coordNumber = coordNumber;
    d->parameters = parameters;
    d->makeDonors = makeDonors;
    setReported(parameters, [](const QVector<double> &vector) { return vector; });
}

LanqorIntensitySolutions::~LanqorIntensitySolutions() = default;

void LanqorIntensitySolutions::setReported(
    const QVector<FitParameter> &parameters,
    const std::function<QVector<double>(const QVector<double> &)> &toReported)
{
    d->reported = parameters;
    d->toReported = toReported;
}

void LanqorIntensitySolutions::setTargets(const double &omega2, const double &omega4,
                                          const double &weight2, const double &weight4,
                                          const double &weight6)
{
    d->targets = {omega2 / lanqor::omegaUnitCm2, omega4 / lanqor::omegaUnitCm2, 0.0};
    d->weights = {weight2, weight4, weight6};
}

void LanqorIntensitySolutions::setTolerance(const double &excess)
{
    d->tolerance = excess;
}

void LanqorIntensitySolutions::setRefractiveIndex(const double &index)
{
    d->refractiveIndex = index;
}

void LanqorIntensitySolutions::setLigandAtomsByLigandVector(const QStringList &ligands)
{
    d->ligands = ligands;
}

void LanqorIntensitySolutions::setYieldInputs(const YieldInputs &inputs)
{
    d->yieldInputs = inputs;
}

std::unique_ptr<LanqorOmega> LanqorIntensitySolutionsPrivate::makeOmega() const
{
    auto omega = std::make_unique<LanqorOmega>(nullptr, 0, geometry);
    omega->setCoordNumber(coordNumber);
    omega->setRefractiveIndex(refractiveIndex);
    omega->setLigandAtomsByLigandVector(ligands);
    return omega;
}

LanqorIntensitySolutionsPrivate::Forms LanqorIntensitySolutionsPrivate::makeForms() const
{
    const auto n = Eigen::Index(parameters.size());
    const std::unique_ptr<LanqorOmega> omega = makeOmega();
    const auto calc = [&](const QVector<double> &x) {
        QVector<double> g;
        QVector<double> alpha;
        makeDonors(x, g, alpha);
        omega->setChargeFactorAndAlpha(g, alpha);
        omega->calcOmega();
        return std::array<double, lambdaCount>{omega->getOmega(2) / lanqor::omegaUnitCm2,
                                               omega->getOmega(4) / lanqor::omegaUnitCm2,
                                               omega->getOmega(6) / lanqor::omegaUnitCm2};
    };
    Forms forms;
    forms.fill(MatrixXd::Zero(n, n));
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j <= i; ++j) {
            QVector<double> x(parameters.size(), 0.0);
            x[i] = 1.0;
            x[j] = 1.0;
            const auto values = calc(x);
            for (std::size_t l = 0; l < lambdaCount; ++l)
                forms[l](i, j) = values[l];
        }
    }
    // Omega(e_i + e_j) = Q_ii + Q_jj + 2 Q_ij
    for (MatrixXd &form : forms)
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j)
                form(j, i) = form(i, j) = 0.5 * (form(i, j) - form(i, i) - form(j, j));
    return forms;
}

VectorXd LanqorIntensitySolutionsPrivate::valuesOf(const Forms &forms, const VectorXd &x) const
{
    VectorXd values(lambdaCount);
    for (int l = 0; l < lambdaCount; ++l)
        values(l) = x.dot(forms[std::size_t(l)] * x);
    return values;
}

/// Derivatives of the Omega that are fitted, by the parameters that are not fixed, relative to
/// the ranges.
MatrixXd LanqorIntensitySolutionsPrivate::slopesOf(const Forms &forms, const VectorXd &x) const
{
    MatrixXd slopes = MatrixXd::Zero(lambdaCount, x.size());
    for (int l = 0; l < lambdaCount; ++l) {
        if (weights[std::size_t(l)] == 0.0)
            continue;
        slopes.row(l) = 2.0 * (forms[std::size_t(l)] * x).transpose();
        for (int i = 0; i < x.size(); ++i) {
            const FitParameter &p = parameters.at(i);
            slopes(l, i) *= p.isFixed ? 0.0 : p.maximum - p.minimum;
        }
    }
    return slopes;
}

double LanqorIntensitySolutionsPrivate::responseOf(const Forms &forms, const VectorXd &x) const
{
    const VectorXd values = valuesOf(forms, x);
    double response = 0.0;
    for (int l = 0; l < lambdaCount; ++l) {
        const double difference = values(l) - targets[std::size_t(l)];
        response += weights[std::size_t(l)] * difference * difference;
    }
    return response;
}

bool LanqorIntensitySolutionsPrivate::isFeasible(const VectorXd &x) const
{
    for (int i = 0; i < x.size(); ++i)
        if (!(x(i) >= parameters.at(i).minimum && x(i) <= parameters.at(i).maximum))
            return false;
    QVector<double> g;
    QVector<double> alpha;
    return makeDonors(QVector<double>(x.data(), x.data() + x.size()), g, alpha);
}

double LanqorIntensitySolutionsPrivate::reach(const VectorXd &x, const VectorXd &direction) const
{
    double reach = std::numeric_limits<double>::max();
    for (int i = 0; i < x.size(); ++i) {
        const FitParameter &p = parameters.at(i);
        if (direction(i) > 0.0)
            reach = std::min(reach, (p.maximum - x(i)) / direction(i));
        else if (direction(i) < 0.0)
            reach = std::min(reach, (p.minimum - x(i)) / direction(i));
    }
    return reach;
}

bool LanqorIntensitySolutionsPrivate::returnTo(const Forms &forms, const VectorXd &goal,
                                               VectorXd &x) const
{
    constexpr int maximumSteps = 12;
    constexpr double closeEnough = 1.0e-9; // 1e-20 cm^2
    for (int step = 0; step < maximumSteps; ++step) {
        VectorXd missing = goal - valuesOf(forms, x);
        for (int l = 0; l < lambdaCount; ++l)
            missing(l) = weights[std::size_t(l)] == 0.0 ? 0.0 : missing(l);
        if (missing.norm() < closeEnough)
            return true;
        const VectorXd change = slopesOf(forms, x).completeOrthogonalDecomposition().solve(missing);
        for (int i = 0; i < x.size(); ++i) {
            const FitParameter &p = parameters.at(i);
            x(i) = std::clamp(x(i) + change(i) * (p.maximum - p.minimum), p.minimum, p.maximum);
        }
    }
    return false;
}

/// A walk from a solution along a direction in which the fitted Omega keep their values to first
/// order; nothing when it meets no solution.
std::optional<VectorXd> LanqorIntensitySolutionsPrivate::walk(const Forms &forms,
                                                              const VectorXd &from,
                                                              const VectorXd &reached, double limit,
                                                              Random &random) const
{
    // A solution in a corner of the bounds may allow steps only that are so short that nothing is
    // curved.
    constexpr int halvings = 24;
    constexpr int curvedSteps = 6;
    constexpr double endless = 1.0e9;
    VectorXd goal = reached; // within the tolerance of what the best solution gives
    for (int l = 0; l < lambdaCount; ++l)
        if (weights[std::size_t(l)] > 0.0)
            goal(l) += random.draw() * std::sqrt(tolerance / lambdaCount / weights[std::size_t(l)]);
    VectorXd direction(from.size());
    for (Eigen::Index i = 0; i < from.size(); ++i)
        direction(i) = random.draw();
    const MatrixXd slopes = slopesOf(forms, from);
    direction -= slopes.completeOrthogonalDecomposition().solve(slopes * direction);
    for (int i = 0; i < from.size(); ++i) {
        const FitParameter &p = parameters.at(i);
        direction(i) *= p.isFixed ? 0.0 : p.maximum - p.minimum;
        // Away from a bound, which the solution keeps if its targets are out of reach.
        if ((from(i) <= p.minimum && direction(i) < 0.0) ||
            (from(i) >= p.maximum && direction(i) > 0.0))
            direction(i) = -direction(i);
    }
    double length = 0.5 * (1.0 + random.draw()) * reach(from, direction);
    if (!(length < endless))
        length = 0.0;
    for (int i = 0; i < halvings; ++i, length *= 0.5) {
        VectorXd trial = from + length * direction;
        if (i < curvedSteps)
            returnTo(forms, goal, trial);
        if (isFeasible(trial) && responseOf(forms, trial) <= limit)
            return trial;
    }
    return std::nullopt;
}

namespace {

/// Where a quantity grows among the solutions.
struct Ascent
{
    VectorXd along; ///< direction in which no Omega that is fitted changes, in ranges
    VectorXd omega; ///< direction in which the fitted Omega themselves are to change
};

/// @param slopes, gradient  of the fitted Omega and of the quantity, by parameters in ranges
/// @param isAtBound  whether a parameter can go no further to this side
Ascent ascentOf(MatrixXd slopes, VectorXd gradient,
                const std::function<bool(Eigen::Index, double)> &isAtBound)
{
    Ascent ascent;
    for (bool isFree = false; !isFree;) {
        isFree = true;
        ascent.omega = slopes.transpose().completeOrthogonalDecomposition().solve(gradient);
        ascent.along = gradient - slopes.transpose() * ascent.omega;
        for (Eigen::Index i = 0; i < gradient.size(); ++i) {
            if (gradient(i) == 0.0 || !isAtBound(i, ascent.along(i)))
                continue;
            gradient(i) = 0.0;
            slopes.col(i).setZero();
            isFree = false;
        }
    }
    return ascent;
}

} // namespace

void LanqorIntensitySolutionsPrivate::addEnds(const Forms &forms, const VectorXd &reached,
                                              double limit, std::vector<VectorXd> &sets) const
{
    constexpr int maximumSteps = 12;
    constexpr int halvings = 10;
    constexpr double difference = 1.0e-6;     // for derivatives, in ranges
    constexpr double worthwhileGain = 1.0e-4; // of what the sample spans
    constexpr double endless = 1.0e9;
    const std::unique_ptr<LanqorOmega> omega = makeOmega();
    IntensitySolutions scratch;
    const auto n = Eigen::Index(parameters.size());
    VectorXd ranges(n);
    for (int i = 0; i < n; ++i)
        ranges(i) =
            parameters.at(i).isFixed ? 0.0 : parameters.at(i).maximum - parameters.at(i).minimum;
    std::vector<QVector<double>> values;
    for (const VectorXd &set : sets)
        values.push_back(describe(*omega, set, scratch));
    const int count = values.front().size();
    for (int q = 0; q < 2 * count; ++q) {
        const int quantity = q / 2;
        const double sign = q % 2 == 0 ? 1.0 : -1.0;
        const auto ends = std::minmax_element(
            values.begin(), values.end(),
            [quantity](const auto &a, const auto &b) { return a.at(quantity) < b.at(quantity); });
        const double span = ends.second->at(quantity) - ends.first->at(quantity);
        const auto end = sign > 0.0 ? ends.second : ends.first;
        VectorXd x = sets[std::size_t(end - values.begin())];
        QVector<double> here = *end;
        const double before = here.at(quantity);
        const auto isAtBound = [&](Eigen::Index i, double change) {
            const FitParameter &p = parameters.at(int(i));
            return (change > 0.0 && x(i) >= p.maximum) || (change < 0.0 && x(i) <= p.minimum);
        };
        bool isMoved = span > 0.0;
        for (int step = 0; step < maximumSteps && isMoved; ++step) {
            isMoved = false;
            VectorXd gradient(n);
            for (int i = 0; i < n; ++i) {
                VectorXd near = x;
                near(i) += difference * ranges(i);
                gradient(i) = sign / difference *
                              (describe(*omega, near, scratch).at(quantity) - here.at(quantity));
            }
            if (!gradient.allFinite())
                break;
            const Ascent ascent = ascentOf(slopesOf(forms, x), gradient, isAtBound);
            // The farthest values of the fitted Omega that the tolerance allows.
            VectorXd farthest = VectorXd::Zero(lambdaCount);
            double length2 = 0.0;
            for (int l = 0; l < lambdaCount; ++l) {
                if (weights[std::size_t(l)] == 0.0)
                    continue;
                farthest(l) = ascent.omega(l) / weights[std::size_t(l)];
                length2 += farthest(l) * ascent.omega(l);
            }
            if (length2 > 0.0)
                farthest *= (1.0 - difference) * std::sqrt(tolerance / length2);
            const VectorXd direction = ascent.along.cwiseProduct(ranges);
            double length = reach(x, direction);
            if (!(length < endless))
                length = 0.0;
            const VectorXd current = valuesOf(forms, x);
            double share = 1.0;
            for (int i = 0; i < 2 * halvings && !isMoved; ++i) {
                const bool isOmegaKept = i % 2 == 1;
                VectorXd trial = x + share * length * direction;
                VectorXd goal = current;
                if (!isOmegaKept)
                    goal += share * (reached + farthest - current);
                returnTo(forms, goal, trial);
                share *= isOmegaKept ? 0.5 : 1.0;
                if (!isFeasible(trial) || responseOf(forms, trial) > limit)
                    continue;
                const QVector<double> there = describe(*omega, trial, scratch);
                if (sign * (there.at(quantity) - here.at(quantity)) > worthwhileGain * span) {
                    x = trial;
                    here = there;
                    isMoved = true;
                }
            }
        }
        if (here.at(quantity) != before) {
            sets.push_back(x);
            values.push_back(here);
        }
    }
}

IntensitySolutions LanqorIntensitySolutions::sample(const QVector<QVector<double>> &known,
                                                    const int &count) const
{
    constexpr int attemptsPerSolution = 20;
    IntensitySolutions solutions;
    solutions.tolerance = d->tolerance;
    const auto forms = d->makeForms();
    const auto n = Eigen::Index(d->parameters.size());
    std::vector<VectorXd> starts;
    for (const QVector<double> &vector : known)
        if (vector.size() == n)
            starts.push_back(Eigen::Map<const VectorXd>(vector.constData(), n));
    if (starts.empty())
        return solutions;
    const auto best =
        std::min_element(starts.begin(), starts.end(), [&](const VectorXd &a, const VectorXd &b) {
            return d->responseOf(forms, a) < d->responseOf(forms, b);
        });
    std::iter_swap(starts.begin(), best);
    const double limit = d->responseOf(forms, starts.front()) + d->tolerance;
    const VectorXd reached = d->valuesOf(forms, starts.front());
    std::vector<VectorXd> sets;
    for (const VectorXd &start : starts)
        if (d->responseOf(forms, start) <= limit && sets.size() < std::size_t(count))
            sets.push_back(start);
    Random random;
    for (int attempt = 0; int(sets.size()) < count && attempt < attemptsPerSolution * count;
         ++attempt) {
        const VectorXd &from = sets[std::size_t(random.below(int(sets.size())))];
        const auto found = d->walk(forms, from, reached, limit, random);
        if (found)
            sets.push_back(*found);
    }
    d->addEnds(forms, reached, limit, sets);
    for (const VectorXd &set : sets)
        solutions.responses.append(d->responseOf(forms, set));
    d->fillQuantities(solutions, sets);
    return solutions;
}

/// The values of a set, parameters first, and on the first call what they are.
QVector<double> LanqorIntensitySolutionsPrivate::describe(LanqorOmega &omega, const VectorXd &x,
                                                          IntensitySolutions &solutions) const
{
    QVector<IntensitySolutions::Quantity> &quantities = solutions.quantities;
    const bool isFirst = quantities.isEmpty();
    QVector<double> values;
    const auto add = [&](const QString &name, const char *unit, double value,
                         bool isParameter = false) {
        values.append(value);
        if (isFirst)
            quantities.append({name, QLatin1String(unit), isParameter, 0.0, 0.0, false});
    };
    const QVector<double> vector(x.data(), x.data() + x.size());
    const QVector<double> told = toReported(vector);
    for (int i = 0; i < told.size(); ++i)
        add(reported.at(i).name, reported.at(i).unit.toUtf8().constData(), told.at(i), true);
    QVector<double> g;
    QVector<double> alpha;
    makeDonors(vector, g, alpha);
    omega.setChargeFactorAndAlpha(g, alpha);
    omega.calcOmega();
    const OmegaResults results = omega.getResults();
    solutions.groupError = results.partition.groupError;
    for (const int lambda : lambdas)
        add(QStringLiteral("omega_%1").arg(lambda), "1e-20 cm^2",
            results.omega[lambda] / lanqor::omegaUnitCm2);
    for (const int lambda : lambdas)
        add(QStringLiteral("ed_share_of_omega_%1").arg(lambda), "1",
            results.omegaED[lambda] / results.omega[lambda]);
    add(QStringLiteral("rate_7f2"), "s^-1", results.rates.ed02);
    add(QStringLiteral("rate_7f4"), "s^-1", results.rates.ed04);
    add(QStringLiteral("rate_7f6"), "s^-1", results.rates.ed06);
    add(QStringLiteral("radiative_rate"), "s^-1", results.rates.total());
    for (const AradPartitionResults::AtomShare &share : results.partition.atoms)
        add(QStringLiteral("rate_of_%1_%2").arg(share.label, QString::number(share.atom)), "s^-1",
            share.rate);
    for (const AradPartitionResults::GroupShare &share : results.partition.groups)
        add(QStringLiteral("rate_of_ligand_%1").arg(share.group.name), "s^-1", share.rate);
    if (!yieldInputs)
        return values;
    YieldInputs inputs = *yieldInputs;
    inputs.omega = results.omega;
    inputs.omegaEd = results.omegaED;
    inputs.refractiveIndex = refractiveIndex;
    const YieldOutcome yield = LanqorSpectroscopicCalculation::calcYield(inputs);
    solutions.yieldError = yield.error;
    constexpr int transitions = 5; // from each donor: to 5D4, 5G6, 5L6, 5D1, 5D0
    constexpr int firstOfTriplet = 10;
    const auto rates = yield.forwardRates.begin();
    add(QStringLiteral("transfer_from_singlet"), "s^-1",
        std::accumulate(rates, rates + transitions, 0.0));
    add(QStringLiteral("transfer_from_triplet"), "s^-1",
        std::accumulate(rates + firstOfTriplet, rates + firstOfTriplet + transitions, 0.0));
    add(QStringLiteral("quantum_efficiency"), "%", yield.quantumEfficiency);
    add(QStringLiteral("quantum_yield"), "%", yield.quantumYield);
    return values;
}

void LanqorIntensitySolutionsPrivate::fillQuantities(IntensitySolutions &solutions,
                                                     const std::vector<VectorXd> &sets) const
{
    constexpr double agreement = 0.05;
    const std::unique_ptr<LanqorOmega> omega = makeOmega();
    for (const VectorXd &set : sets)
        solutions.sets.append(describe(*omega, set, solutions));
    for (int q = 0; q < solutions.quantities.size(); ++q) {
        IntensitySolutions::Quantity &quantity = solutions.quantities[q];
        quantity.minimum = quantity.maximum = solutions.sets.first().at(q);
        for (const QVector<double> &set : qAsConst(solutions.sets)) {
            quantity.minimum = std::min(quantity.minimum, set.at(q));
            quantity.maximum = std::max(quantity.maximum, set.at(q));
        }
        const double middle = 0.5 * (quantity.minimum + quantity.maximum);
        quantity.isDetermined =
            0.5 * (quantity.maximum - quantity.minimum) <= agreement * std::abs(middle);
    }
    double nearest = std::numeric_limits<double>::infinity();
    for (int s = 0; s < solutions.sets.size(); ++s) {
        double distance = 0.0;
        for (int q = 0; q < reported.size(); ++q) {
            const IntensitySolutions::Quantity &quantity = solutions.quantities.at(q);
            const double range = quantity.maximum - quantity.minimum;
            const double place =
                range > 0.0 ? (solutions.sets.at(s).at(q) - quantity.minimum) / range - 0.5 : 0.0;
            distance += place * place;
        }
        if (distance < nearest) {
            nearest = distance;
            solutions.central = s;
        }
    }
}

LanqorResultTables LanqorIntensitySolutions::makeTables(const IntensitySolutions &solutions,
                                                        const int &chosen)
{
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("solution"),
        {column("chosen_from_1"), column("central_from_1"), column("solutions"),
         column("largest_excess_of_response")},
        {chosen + 1, solutions.central + 1, solutions.sets.size(), solutions.tolerance});
    QVector<QVector<QVariant>> rows;
    for (const IntensitySolutions::Quantity &quantity : solutions.quantities)
        rows.append({quantity.name, quantity.unit, resultColumns::existing(quantity.minimum),
                     resultColumns::existing(quantity.maximum), quantity.isDetermined});
    tables.addTable(QStringLiteral("solution_ranges"),
                    {column("quantity"), column("unit"),
                     column("minimum", resultColumns::unitOfRow),
                     column("maximum", resultColumns::unitOfRow), column("is_determined")},
                    rows);
    return tables;
}

LanqorResultTables LanqorIntensitySolutions::makeSolutionTable(const IntensitySolutions &solutions)
{
    LanqorResultTables tables;
    QVector<ResultColumn> columns = {column("solution_from_1"), column("response")};
    for (const IntensitySolutions::Quantity &quantity : solutions.quantities)
        columns.append(
            {QString(quantity.name).replace(QLatin1Char(':'), QLatin1Char('_')), quantity.unit});
    QVector<QVector<QVariant>> rows;
    for (int s = 0; s < solutions.sets.size(); ++s) {
        QVector<QVariant> row = {s + 1, solutions.responses.at(s)};
        for (const double value : solutions.sets.at(s))
            row.append(resultColumns::existing(value));
        rows.append(row);
    }
    tables.addTable(QStringLiteral("solutions"), columns, rows);
    return tables;
}

QString LanqorIntensitySolutions::makeText(const IntensitySolutions &solutions)
{
    QString text = QStringLiteral(" Equally good solutions\n\n"
                                  "  A sample of %1 sets whose response is at most %2 above the "
                                  "best one's.\n\n"
                                  "  quantity                    smallest     largest\n")
                       .arg(QString::number(solutions.sets.size()),
                            QString::number(solutions.tolerance, 'g', 3));
    QStringList determined;
    QStringList open;
    for (const IntensitySolutions::Quantity &quantity : solutions.quantities) {
        (quantity.isDetermined ? determined : open).append(quantity.name);
        text += QStringLiteral("  %1 %2%3")
                    .arg(quantity.name.leftJustified(24),
                         QString::number(quantity.minimum, 'g', 5).rightJustified(11),
                         QString::number(quantity.maximum, 'g', 5).rightJustified(12));
        if (quantity.unit != QLatin1String("1"))
            text += QStringLiteral("  ") + quantity.unit;
        text += QLatin1Char('\n');
    }
    const auto list = [](const QStringList &names) {
        return names.isEmpty() ? QStringLiteral("nothing") : names.join(QStringLiteral(", "));
    };
    return text + QStringLiteral("\n  Determined within 5 %: %1; not determined: %2.\n")
                      .arg(list(determined), list(open));
}
