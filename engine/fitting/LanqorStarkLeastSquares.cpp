#include "LanqorStarkLeastSquares.h"

#include "fitting/leastSquares_p.h"
#include "fitting/linearBlock_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorStarkLevels.h>

#include <array>

namespace {

constexpr int manifoldCount = 7; // 7F0 to 7F6

/// Deviations of data without one.
double deviation(double given)
{
    return given > 0.0 ? given : 1.0;
}

} // namespace

class LanqorStarkLeastSquaresPrivate
{
public:
    using Block = LinearBlock<Eigen::MatrixXcd>;

    explicit LanqorStarkLeastSquaresPrivate(const LanqorStarkLevels &levels)
        : starkLevels(levels)
        , lastError(levels.getLastError())
    {}

    leastSquares::Values evaluate(const Eigen::VectorXd &x) const;

    LanqorStarkLevels starkLevels;
    QString lastError;
    QVector<TransitionValues> transitions;
    leastSquares::Problem problem;
    std::array<Block, manifoldCount> blocks; // by J; a part for each group
};

LanqorStarkLeastSquares::LanqorStarkLeastSquares(LanqorInputData *geometry, const int &value,
                                                 const double &ro0)
    : d(std::make_unique<LanqorStarkLeastSquaresPrivate>(LanqorStarkLevels(geometry, value)))
{
    d->starkLevels.setRO0(ro0);
}

LanqorStarkLeastSquares::~LanqorStarkLeastSquares() = default;

void LanqorStarkLeastSquares::setReducedElements(const ReducedElements &choice)
{
    d->starkLevels.setReducedElements(choice);
}

bool LanqorStarkLeastSquares::setProblem(const QVector<ParametersGroup> &groups,
                                         const QVector<FitParameter> &parameters,
                                         const QVector<TransitionValues> &transitions)
{
    d->blocks = {};
    d->transitions = transitions;
    d->problem.parameters = parameters;
    d->problem.residualCount = 2 * transitions.size();
    d->problem.evaluate = [this](const Eigen::VectorXd &x) { return d->evaluate(x); };
    // An atom in several groups belongs to the last of them.
    QVector<int> groupOfAtom(d->starkLevels.getAtomsNumber() + 2, -1);
    for (int group = 0; group < groups.size(); ++group)
        for (const int atom : groups.at(group).atoms)
            groupOfAtom[atom] = group;
    for (int group = 0; group < groups.size(); ++group) {
        QVector<double> unit(groupOfAtom.size(), 0.0);
        for (int atom = 2; atom < unit.size(); ++atom)
            unit[atom] = groupOfAtom.at(atom) == group ? 1.0 : 0.0;
        if (d->starkLevels.setChargeFactors(unit))
            d->starkLevels.calculateStarkLevels();
        d->lastError = d->starkLevels.getLastError();
        if (!d->lastError.isEmpty())
            return false;
        for (int J = 0; J < manifoldCount; ++J)
            d->blocks[std::size_t(J)].parts.push_back(d->starkLevels.getEnergeticMatrix(J));
    }
    return true;
}

QString LanqorStarkLeastSquares::getLastError() const
{
    return d->lastError;
}

/// The lowest and the highest level of every transition in turn.
leastSquares::Values LanqorStarkLeastSquaresPrivate::evaluate(const Eigen::VectorXd &x) const
{
    leastSquares::Values values;
    values.residuals.resize(problem.residualCount);
    values.jacobian.resize(problem.residualCount, x.size());
    Eigen::Index row = 0;
    for (const TransitionValues &t : transitions) {
        const Block::Levels levels = blocks[std::size_t(t.level)].calcLevels(x);
        for (const bool isHigh : {false, true}) {
            const Eigen::Index place = isHigh ? levels.energies.size() - 1 : 0;
            const double sd = deviation(isHigh ? t.deviationHigh : t.deviationLow);
            const double measured = (isHigh ? t.energyHigh : t.energyLow) - t.offset;
            values.residuals(row) = (levels.energies(place) - measured) / sd;
            values.jacobian.row(row) = levels.slopes.row(place) / sd;
            ++row;
        }
    }
    return values;
}

FitAccount LanqorStarkLeastSquares::describe(const QVector<double> &vector) const
{
    FitAccount account;
    account.dataCount = d->problem.residualCount;
    account.dataUnit = QStringLiteral("cm^-1");
    const leastSquares::Values values =
        d->evaluate(Eigen::Map<const Eigen::VectorXd>(vector.constData(), vector.size()));
    account.misfit = values.residuals.squaredNorm();
    account.areDeviationsKnown = true; // of all, or their scale is not
    for (const TransitionValues &t : d->transitions) {
        for (const bool isHigh : {false, true}) {
            FitAccount::Datum datum;
            datum.label = QStringLiteral("7F%1 %2").arg(QString::number(t.level),
                                                        isHigh ? QStringLiteral("highest")
                                                               : QStringLiteral("lowest"));
            const double given = isHigh ? t.deviationHigh : t.deviationLow;
            account.areDeviationsKnown = account.areDeviationsKnown && given > 0.0;
            datum.standardDeviation = deviation(given);
            datum.measured = (isHigh ? t.energyHigh : t.energyLow) - t.offset;
            datum.computed =
                datum.measured + values.residuals(account.data.size()) * datum.standardDeviation;
            account.data.append(datum);
        }
    }
    leastSquares::addStatistics(d->problem, vector, account);
    return account;
}

LeastSquaresResults LanqorStarkLeastSquares::fit(const QVector<double> &start) const
{
    LeastSquaresResults results;
    const leastSquares::Minimum minimum = leastSquares::minimise(d->problem, start);
    if (minimum.x.isEmpty())
        return results;
    results.vector = minimum.x;
    results.trace.improvements = minimum.trace;
    results.account = describe(minimum.x);
    leastSquares::addOutcome(minimum, results.account);
    return results;
}
