#include "LanqorCrystalField.h"

#include "core/parity_p.h"
#include "core/physicalConstants_p.h"
#include "levels/LanqorEnergyLevels.h"
#include "levels/crystalFieldLevels_p.h"
#include "levels/crystalFieldParameters_p.h"
#include "levels/fieldStates_p.h"
#include "levels/magnetism_p.h"
#include "levels/reducedElements_p.h"
#include "levels/stevens_p.h"
#include "levels/threeJ_p.h"

#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <complex>
#include <optional>
#include <vector>

using fieldStates::Field;
using fieldStates::TensorOperator;
using Complex = std::complex<double>;
using Parameter = StarkResults::FieldParameter;

namespace {

constexpr int ranks[] = {2, 4, 6};

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorCrystalField", text);
}

} // namespace

class LanqorCrystalFieldPrivate
{
public:
    explicit LanqorCrystalFieldPrivate(int electrons);

    QString calculate();
    QString calcFreeIon();
    void calcStevensFactors(const TensorOperator *const unitTensors);
    Eigen::MatrixXd momentOf(const Eigen::MatrixXd &magnetic) const;
    Field wybourne() const;
    void describeField(const Field &field);
    void describeFreeIon();
    std::vector<Eigen::Index> keptCounts() const;
    void addMagnetism(const fieldStates::Basis &basis, const TensorOperator &moment,
                      const fieldStates::States &states);
    void addCutOffShift(const fieldStates::Basis &basis, const fieldStates::FieldOperator &field,
                        const fieldStates::States &states);
    double allOf(double limit) const;

    LanqorEnergyLevels ion;
    int electrons;
    FreeIonParameters parameters;
    QVector<Parameter> field;
    FieldNormalisation normalisation = FieldNormalisation::Wybourne;
    double cutOff = 0.0;
    double maximumEnergy = 0.0;
    double spinFactor = lanqor::gOfSpin;
    QVector<double> temperatures;
    QVector<double> magneticFields;
    QString lastError;

    std::vector<fieldStates::Block> blocks; // of the last free ion
    CrystalFieldResults results;
};

LanqorCrystalFieldPrivate::LanqorCrystalFieldPrivate(int electrons)
    : ion(nullptr, electrons)
    , electrons(electrons)
    , lastError(ion.getLastError())
{}

QString LanqorCrystalFieldPrivate::calcFreeIon()
{
    parameters.electrons = electrons;
    ion.setParameters(parameters);
    if (!ion.calcEnergyLevels(-1.0))
        return ion.getLastError();
    blocks = fieldStates::makeBlocks(ion.getResults());
    return QString();
}

/// J + (g - 1) S between the levels, of J + (g_s - 1) S.
Eigen::MatrixXd LanqorCrystalFieldPrivate::momentOf(const Eigen::MatrixXd &magnetic) const
{
    Eigen::MatrixXd angular = Eigen::MatrixXd::Zero(magnetic.rows(), magnetic.cols());
    for (const fieldStates::Block &block : blocks) {
        const double J = 0.5 * block.twoJ;
        for (const Eigen::Index level : block.levels)
            angular(level, level) = std::sqrt(J * (J + 1.0) * (2.0 * J + 1.0));
    }
    return angular + (spinFactor - 1.0) / (lanqor::gOfSpin - 1.0) * (magnetic - angular);
}

/// theta(k) of the lowest level: the element of the state M = J of the sum of C(k)0, divided by
/// that of lambda(k,0) O(k,0).
void LanqorCrystalFieldPrivate::calcStevensFactors(const TensorOperator *const unitTensors)
{
    std::size_t ground = 0;
    for (std::size_t i = 1; i < blocks.size(); ++i)
        if (blocks[i].energies(0) < blocks[ground].energies(0))
            ground = i;
    const int twoJ = blocks[ground].twoJ;
    results.stevensFactors.clear();
    for (std::size_t i = 0; i < std::size(ranks); ++i) {
        const int k = ranks[i];
        const Eigen::MatrixXd &reduced = unitTensors[i].between(int(ground), int(ground));
        if (reduced.size() == 0) {
            results.stevensFactors.append(0.0);
            continue;
        }
        const double element = fieldStates::reducedC(k) * reduced(0, 0) *
                               threeJ::wignerEckart(twoJ, twoJ, k, twoJ, twoJ);
        results.stevensFactors.append(
            element / (stevens::factor(k, 0) * stevens::largestElement(k, 0.5 * twoJ)));
    }
}

/// The coefficients of C(k)q.
Field LanqorCrystalFieldPrivate::wybourne() const
{
    Field sum;
    for (const Parameter &B : field) {
        if (normalisation == FieldNormalisation::Wybourne) {
            sum[{B.k, B.q}] = {B.real, B.imaginary};
            sum[{B.k, -B.q}] = parity(B.q) * Complex(B.real, -B.imaginary);
            continue;
        }
        const double theta = results.stevensFactors.at(B.k / 2 - 1);
        const double scale = normalisation == FieldNormalisation::Stevens ? 1.0 : theta;
        const int q = std::abs(B.q);
        // A theta(k) of 0 has operators of 0.
        const double value = scale == 0.0 ? 0.0 : B.real / (scale * stevens::factor(B.k, q));
        const Complex part = B.q < 0 ? Complex(0.0, value) : Complex(value);
        sum[{B.k, -q}] += part;
        if (q > 0)
            sum[{B.k, q}] += parity(q) * std::conj(part);
    }
    return sum;
}

void LanqorCrystalFieldPrivate::describeField(const Field &field)
{
    double squares = 0.0;
    for (const auto &[kq, B] : field) {
        const auto [k, q] = kq;
        results.fieldParameters.append({k, q, B.real(), B.imag()});
        squares += std::norm(B) * lanqor::fourPi / (2 * k + 1);
        if (q > 0) // the coefficient of C(k)-q
            continue;
        const double lambda = stevens::factor(k, q);
        const double theta = results.stevensFactors.at(k / 2 - 1);
        results.stevensParameters.append({k, -q, lambda * B.real(), theta * lambda * B.real()});
        if (q < 0 && B.imag() != 0.0)
            results.stevensParameters.append({k, q, lambda * B.imag(), theta * lambda * B.imag()});
    }
    results.crystalFieldStrength = std::sqrt(squares);
    std::stable_sort(results.stevensParameters.begin(), results.stevensParameters.end(),
                     [](const auto &a, const auto &b) {
                         return 100 * a.k + std::abs(a.q) < 100 * b.k + std::abs(b.q);
                     });
}

void LanqorCrystalFieldPrivate::describeFreeIon()
{
    for (const auto &level : ion.getResults().levels) {
        if (results.freeIonLevels.isEmpty())
            results.groundMultiplet = level.label;
        if (electrons == 6 && level.label == QLatin1String("7F1"))
            results.vanVleckLambda = level.energy;
        if (level.energy <= allOf(maximumEnergy))
            results.freeIonLevels.append({level.label, level.J, level.energy});
    }
}

double LanqorCrystalFieldPrivate::allOf(double limit) const
{
    constexpr double all = 1e30; // cm^-1
    return limit > 0.0 ? limit : all;
}

/// How many levels of each J lie below the cut-off.
std::vector<Eigen::Index> LanqorCrystalFieldPrivate::keptCounts() const
{
    std::vector<Eigen::Index> counts;
    for (const fieldStates::Block &block : blocks)
        counts.push_back((block.energies.array() <= allOf(results.cutOff)).count());
    return counts;
}

/// The lowest states in second order of the field between them and those that are left out.
void LanqorCrystalFieldPrivate::addCutOffShift(const fieldStates::Basis &basis,
                                               const fieldStates::FieldOperator &field,
                                               const fieldStates::States &states)
{
    constexpr Eigen::Index most = 200;
    if (results.states == results.statesOfConfiguration)
        return;
    std::vector<Eigen::Index> counts;
    for (const fieldStates::Block &block : blocks)
        counts.push_back(block.energies.size());
    const fieldStates::Basis all = fieldStates::makeBasis(blocks, counts);
    const Eigen::Index count = std::min(most, basis.size);
    const Eigen::MatrixXcd coupled = field.apply(all, basis, states.vectors.leftCols(count));
    const std::vector<Eigen::Index> kept = keptCounts();
    Eigen::VectorXd shifts = Eigen::VectorXd::Zero(count);
    for (const fieldStates::Strip &strip : all.strips) {
        const auto block = std::size_t(strip.block);
        for (Eigen::Index level = kept[block]; level < strip.count; ++level)
            for (Eigen::Index i = 0; i < count; ++i)
                shifts(i) += std::norm(coupled(strip.first + level, i)) /
                             (states.energies(i) - blocks[block].energies(level));
    }
    results.shiftedStates = int(count);
    const double groundJ =
        LanqorSpectroscopicTermUtil::termFromLabel(results.groundMultiplet, true).J;
    const Eigen::Index ofGround = std::min(count, Eigen::Index(std::lround(2.0 * groundJ)) + 1);
    results.groundCutOffShift = (shifts.head(ofGround).array() - shifts(0)).abs().maxCoeff();
    results.cutOffShift = (shifts.array() - shifts(0)).abs().maxCoeff();
}

void LanqorCrystalFieldPrivate::addMagnetism(const fieldStates::Basis &basis,
                                             const TensorOperator &moment,
                                             const fieldStates::States &states)
{
    if (temperatures.isEmpty())
        return;
    const double hottest = *std::max_element(temperatures.cbegin(), temperatures.cend());
    // Populations of 1e-13 and below do not count.
    const double reach = 30.0 * magnetism::boltzmann * hottest;
    const Eigen::Index count = (states.energies.array() - states.energies(0) <= reach).count();
    magnetism::Elements elements;
    elements.energies = states.energies;
    elements.ofLowest = magnetism::apply(basis, moment, states.vectors.leftCols(count));
    for (Eigen::MatrixXcd &component : elements.ofLowest)
        component = (states.vectors.adjoint() * component).eval();
    for (const double T : qAsConst(temperatures)) {
        const Eigen::Matrix3d chi = magnetism::susceptibility(elements, T);
        CrystalFieldResults::Susceptibility entry;
        entry.T = T;
        entry.chiTx = chi(0, 0) * T;
        entry.chiTy = chi(1, 1) * T;
        entry.chiTz = chi(2, 2) * T;
        entry.chiT = chi.trace() * T / 3.0;
        entry.effectiveMoment = std::sqrt(3.0 * entry.chiT / magnetism::curieConstant);
        if (results.vanVleckLambda > 0.0)
            entry.vanVleck = LanqorCrystalField::calcVanVleckEuropium(results.vanVleckLambda, T);
        results.susceptibilities.append(entry);
        for (const double B : qAsConst(magneticFields))
            results.magnetisations.append({T, B, magnetism::powderMoment(elements, B, T)});
    }
}

QString LanqorCrystalFieldPrivate::calculate()
{
    QString error = calcFreeIon();
    if (!error.isEmpty())
        return error;
    const freeIon::ReducedElements reduced = freeIon::calcReducedElements(ion, ion.getResults());
    std::vector<TensorOperator> unitTensors;
    for (std::size_t i = 0; i < std::size(ranks); ++i)
        unitTensors.emplace_back(blocks, ranks[i], reduced.U[i]);
    const TensorOperator moment(blocks, 1, momentOf(reduced.magnetic));
    results.ion = parameters;
    results.normalisation = normalisation;
    results.spinFactor = spinFactor;
    calcStevensFactors(unitTensors.data());
    const Field B = wybourne();
    describeField(B);
    describeFreeIon();

    const fieldStates::FieldOperator fieldOperator(B, unitTensors);
    constexpr Eigen::Index largestOfSeconds = 1001;
    constexpr double usualCutOff = 40000.0;
    results.cutOff = std::max(cutOff, 0.0);
    if (cutOff < 0.0 && fieldStates::largestMatrix(fieldStates::makeBasis(blocks, keptCounts()),
                                                   fieldOperator) > largestOfSeconds)
        results.cutOff = usualCutOff;
    const fieldStates::Basis basis = fieldStates::makeBasis(blocks, keptCounts());
    fieldStates::States states = fieldStates::diagonalize(basis, fieldOperator);
    if (states.energies.size() == 0)
        return tr("The matrix of the crystal field cannot be diagonalised; its parameters may be "
                  "far too large.");
    results.states = int(basis.size);
    results.statesOfConfiguration = LanqorCrystalField::getStateCount(electrons);
    results.largestMatrix = states.largestMatrix;
    results.lowestEnergy = states.energies(0);
    crystalFieldLevels::describe(basis, moment, allOf(maximumEnergy), states, results);
    addCutOffShift(basis, fieldOperator, states);
    addMagnetism(basis, moment, states);
    return QString();
}

LanqorCrystalField::LanqorCrystalField(const int &electrons)
    : d(std::make_unique<LanqorCrystalFieldPrivate>(electrons))
{}

LanqorCrystalField::~LanqorCrystalField() = default;

void LanqorCrystalField::setFreeIon(const FreeIonParameters &ion)
{
    d->parameters = ion;
}

bool LanqorCrystalField::setFieldParameters(const QVector<Parameter> &parameters)
{
    return setFieldParameters(parameters, FieldNormalisation::Wybourne);
}

bool LanqorCrystalField::setFieldParameters(const QVector<Parameter> &parameters,
                                            const FieldNormalisation &normalisation)
{
    d->lastError.clear();
    for (int count = 1; d->lastError.isEmpty() && count <= parameters.size(); ++count)
        d->lastError = crystalFieldParameters::faultOfLast(parameters.mid(0, count), normalisation);
    if (!d->lastError.isEmpty())
        return false;
    d->field = parameters;
    d->normalisation = normalisation;
    return true;
}

void LanqorCrystalField::setCutOff(const double &energy)
{
    d->cutOff = energy;
}

void LanqorCrystalField::setSpinFactor(const double &g)
{
    d->spinFactor = g;
}

void LanqorCrystalField::setMaximumEnergy(const double &energy)
{
    d->maximumEnergy = energy;
}

bool LanqorCrystalField::setTemperatures(const QVector<double> &temperatures)
{
    const auto isPossible = [](double T) { return T > 0.0 && std::isfinite(T); };
    if (!std::all_of(temperatures.cbegin(), temperatures.cend(), isPossible)) {
        d->lastError = tr("A temperature must be above 0 K.");
        return false;
    }
    d->temperatures = temperatures;
    return true;
}

bool LanqorCrystalField::setMagneticFields(const QVector<double> &fields)
{
    const auto isPossible = [](double B) { return B >= 0.0 && std::isfinite(B); };
    if (!std::all_of(fields.cbegin(), fields.cend(), isPossible)) {
        d->lastError = tr("A magnetic field must not be negative.");
        return false;
    }
    d->magneticFields = fields;
    return true;
}

bool LanqorCrystalField::calculate()
{
    d->results = {};
    d->lastError = d->calculate();
    if (!d->lastError.isEmpty())
        d->results = {};
    return d->lastError.isEmpty();
}

QString LanqorCrystalField::getLastError() const
{
    return d->lastError;
}

CrystalFieldResults LanqorCrystalField::getResults() const
{
    return d->results;
}

int LanqorCrystalField::getStateCount(const int &electrons)
{
    if (electrons < 0 || electrons > 14)
        return 0;
    int count = 1; // 14 over n
    for (int i = 1; i <= electrons; ++i)
        count = count * (14 - i + 1) / i;
    return count;
}

double LanqorCrystalField::calcVanVleckEuropium(const double &lambda, const double &T)
{
    const double x = lambda / (magnetism::boltzmann * T);
    double above = 24.0; // 7F0, by its temperature-independent part alone
    double below = 1.0;
    for (int J = 1; J <= 6; ++J) {
        const double weight = (2 * J + 1) * std::exp(-0.5 * J * (J + 1) * x);
        above += weight * (2.25 * J * (J + 1) * x - 0.5);
        below += weight;
    }
    // N_A mu_B^2/(3k) (24 + sum (2J+1)(9/4 J(J+1) x - 1/2) exp(-J(J+1)x/2))/(x Z)
    return magnetism::curieConstant / 3.0 / x * above / below;
}
