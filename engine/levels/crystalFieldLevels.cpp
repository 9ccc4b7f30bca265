#include "levels/crystalFieldLevels_p.h"

#include "levels/magnetism_p.h"

#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>

using fieldStates::Basis;
using fieldStates::States;
using fieldStates::Strip;
using fieldStates::TensorOperator;

namespace crystalFieldLevels {

namespace {

/// States within this energy of the first belong to one level, cm^-1; input parameters of six
/// digits split what symmetry holds together by less.
constexpr double sameLevel = 1e-3;
/// Components below this weight are not kept.
constexpr double smallestWeight = 1e-4;

/// Diagonalises the moment along z among the states from @p first; the largest value first.
void turn(const Basis &basis, const TensorOperator &moment, Eigen::Index first, Eigen::Index count,
          States &states)
{
    const Eigen::MatrixXcd vectors = states.vectors.middleCols(first, count);
    const Eigen::MatrixXcd along = vectors.adjoint() * moment.apply(basis, 0, vectors);
    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXcd> solver(along);
    if (solver.info() == Eigen::Success)
        states.vectors.middleCols(first, count) =
            vectors * solver.eigenvectors().rowwise().reverse();
}

/// Coefficients over the Russell-Saunders states of the strips' J and M.
using Coefficients = std::vector<Eigen::VectorXcd>;

Coefficients inTerms(const Basis &basis, const Eigen::VectorXcd &state)
{
    Coefficients coefficients;
    for (const Strip &strip : basis.strips)
        coefficients.push_back(
            basis.blocks[std::size_t(strip.block)].vectors.leftCols(strip.count) *
            state.segment(strip.first, strip.count));
    return coefficients;
}

/// Weights that differ by rounding alone rank alike.
long long rank(const CrystalFieldResults::Component &component)
{
    return std::llround(1e8 * std::hypot(component.real, component.imaginary));
}

void nameLevel(const Basis &basis, const Coefficients &coefficients,
               CrystalFieldResults::Level &level)
{
    std::vector<Eigen::VectorXd> weights;
    for (const auto &block : basis.blocks)
        weights.push_back(Eigen::VectorXd::Zero(block.energies.size()));
    for (std::size_t i = 0; i < basis.strips.size(); ++i) {
        const Strip &strip = basis.strips[i];
        const auto &block = basis.blocks[std::size_t(strip.block)];
        const Eigen::VectorXd squares = coefficients[i].cwiseAbs2();
        weights[std::size_t(strip.block)] += squares;
        level.meanJ += 0.25 * block.twoJ * (block.twoJ + 2) * squares.sum();
        for (Eigen::Index j = 0; j < squares.size(); ++j)
            if (squares(j) >= smallestWeight)
                level.components.append({block.labels.at(int(j)), 0.5 * strip.twoM,
                                         coefficients[i](j).real(), coefficients[i](j).imag()});
    }
    level.meanJ = std::sqrt(0.25 + level.meanJ) - 0.5;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        Eigen::Index place = 0;
        const double weight = weights[i].size() > 0 ? weights[i].maxCoeff(&place) : 0.0;
        if (weight <= level.weightOfMultiplet)
            continue;
        level.weightOfMultiplet = weight;
        level.multiplet = basis.blocks[i].labels.at(int(place));
    }
    std::stable_sort(level.components.begin(), level.components.end(),
                     [](const auto &a, const auto &b) { return rank(a) > rank(b); });
}

/// The phase of a state is free: its largest coefficient is made real and positive.
void fixPhase(const Coefficients &coefficients, Coefficients &fixed)
{
    std::complex<double> largest = 0.0;
    for (const Eigen::VectorXcd &part : coefficients)
        for (Eigen::Index i = 0; i < part.size(); ++i)
            if (std::abs(part(i)) > std::abs(largest) + 1e-6)
                largest = part(i);
    fixed = coefficients;
    for (Eigen::VectorXcd &part : fixed)
        part *= std::conj(largest) / std::abs(largest);
}

/// G(a,b) = 2 Re Tr(m_a m_b) over two states of one energy; its eigenvalues are the squares of the
/// principal values (A. Abragam, B. Bleaney, Electron Paramagnetic Resonance of Transition Ions
/// (1970)).
CrystalFieldResults::GTensor gTensor(const Basis &basis, const TensorOperator &moment,
                                     const Eigen::MatrixXcd &doublet)
{
    const magnetism::Components applied = magnetism::apply(basis, moment, doublet);
    std::array<Eigen::Matrix2cd, 3> m;
    for (std::size_t a = 0; a < 3; ++a)
        m[a] = doublet.adjoint() * applied[a];
    Eigen::Matrix3d G;
    for (std::size_t a = 0; a < 3; ++a)
        for (std::size_t b = 0; b < 3; ++b)
            G(Eigen::Index(a), Eigen::Index(b)) = 2.0 * (m[a] * m[b]).trace().real();
    // Rounding must not choose the axes of equal principal values.
    constexpr double negligible = 1e-9;
    const double scale = negligible * G.trace();
    G = G.unaryExpr([scale](double g) { return std::abs(g) < scale ? 0.0 : g; }).eval();
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(G);
    const auto root = [](double square) { return std::sqrt(std::max(0.0, square)); };
    CrystalFieldResults::GTensor g;
    g.x = root(G(0, 0));
    g.y = root(G(1, 1));
    g.z = root(G(2, 2));
    for (Eigen::Index i = 0; i < 3; ++i) {
        g.principal.append(root(solver.eigenvalues()(i)));
        Eigen::Vector3d axis = solver.eigenvectors().col(i);
        Eigen::Index largest = 0;
        axis.array().abs().maxCoeff(&largest);
        if (axis(largest) < 0.0)
            axis = -axis;
        for (const double component : {axis(0), axis(1), axis(2)})
            g.axes.append(component);
    }
    return g;
}

} // namespace

void describe(const Basis &basis, const TensorOperator &moment, double maximumEnergy,
              States &states, CrystalFieldResults &results)
{
    int number = 0;
    for (Eigen::Index first = 0; first < basis.size;) {
        const double energy = states.energies(first);
        Eigen::Index count = 1;
        while (first + count < basis.size && states.energies(first + count) - energy < sameLevel)
            ++count;
        ++number;
        if (energy - states.energies(0) <= maximumEnergy) {
            if (count > 1)
                turn(basis, moment, first, count, states);
            CrystalFieldResults::Level level;
            level.number = number;
            level.energy = states.energies.segment(first, count).mean() - states.energies(0);
            level.degeneracy = int(count);
            Coefficients coefficients;
            fixPhase(inTerms(basis, states.vectors.col(first)), coefficients);
            nameLevel(basis, coefficients, level);
            results.levels.append(level);
            if (count == 2) {
                CrystalFieldResults::GTensor g =
                    gTensor(basis, moment, states.vectors.middleCols(first, 2));
                g.level = number;
                results.gTensors.append(g);
            }
        }
        first += count;
    }
    results.highestNumber = number;
}

} // namespace crystalFieldLevels
