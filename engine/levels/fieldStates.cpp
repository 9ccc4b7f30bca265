#include "levels/fieldStates_p.h"

#include "core/parity_p.h"
#include "levels/threeJ_p.h"

#include <Eigen/Eigenvalues>

#include <QHash>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>

namespace fieldStates {

namespace {

using Strips = std::vector<std::size_t>;

Eigen::Index sizeOf(const Basis &basis, const Strips &strips)
{
    Eigen::Index size = 0;
    for (const std::size_t strip : strips)
        size += basis.strips[strip].count;
    return size;
}

/// Remainder from 0 to below @p divisor.
int remainder(int number, int divisor)
{
    return ((number % divisor) + divisor) % divisor;
}

/// The strips that a field of this period connects, by the remainder of 2M; each strip apart
/// without a period.
std::map<int, Strips> classesOf(const Basis &basis, int period)
{
    std::map<int, Strips> classes;
    for (std::size_t i = 0; i < basis.strips.size(); ++i) {
        const int twoM = basis.strips[i].twoM;
        classes[period == 0 ? twoM : remainder(twoM, 2 * period)].push_back(i);
    }
    return classes;
}

/// Unitary matrix to a basis that time reversal leaves as it is, in which a field is real; for an
/// even number of electrons and a class that holds -M with every M:
///     (|M> + (-1)^(J-M) |-M>)/sqrt(2),  i (|M> - (-1)^(J-M) |-M>)/sqrt(2),  and of M = 0 the
///     state itself, times i when J is odd.
class RealBasis
{
public:
    RealBasis(const Basis &basis, const Strips &strips)
        : partner(sizeOf(basis, strips))
        , factor(partner.size())
        , isUpper(partner.size())
    {
        std::map<std::pair<int, int>, int> firstOf; // by block and 2M
        int first = 0;
        for (const std::size_t place : strips) {
            const Strip &strip = basis.strips[place];
            firstOf[{strip.block, strip.twoM}] = first;
            first += int(strip.count);
        }
        for (const std::size_t place : strips) {
            const Strip &strip = basis.strips[place];
            const int here = firstOf[{strip.block, strip.twoM}];
            const int there = firstOf[{strip.block, -strip.twoM}];
            const int twoJ = basis.blocks[std::size_t(strip.block)].twoJ;
            for (int i = 0; i < strip.count; ++i) {
                partner[std::size_t(here + i)] = there + i;
                factor[std::size_t(here + i)] = parity((twoJ - strip.twoM) / 2);
                isUpper[std::size_t(here + i)] = strip.twoM > 0;
            }
        }
    }

    /// The matrix in this basis; the imaginary part is 0 but for rounding.
    Eigen::MatrixXd real(const Eigen::MatrixXcd &matrix) const
    {
        return fromRight(fromRight(matrix).adjoint()).real();
    }
    /// Vectors in this basis, over the states |M>.
    Eigen::MatrixXcd complex(const Eigen::MatrixXd &vectors) const
    {
        Eigen::MatrixXcd result(vectors.rows(), vectors.cols());
        for (Eigen::Index i = 0; i < vectors.rows(); ++i) {
            const Column column = columnOf(i);
            result.row(i) = column.own * vectors.row(i);
            if (column.partner != i)
                result.row(i) += column.fromPartner * vectors.row(column.partner);
        }
        return result;
    }

private:
    /// Where state i stands in the new basis: its own coefficient in new state i, and that in the
    /// new state of its partner.
    struct Column
    {
        Complex own;
        Complex fromPartner;
        Eigen::Index partner;
    };
    Column columnOf(Eigen::Index i) const
    {
        const auto place = std::size_t(i);
        const double half = std::sqrt(0.5);
        const Complex I(0.0, 1.0);
        if (partner[place] == i)
            return {factor[place] > 0.0 ? Complex(1.0) : I, 0.0, i};
        if (isUpper[place]) // new state i is the sum, that of -M the difference
            return {half, I * half, partner[place]};
        const double phase = factor[std::size_t(partner[place])];
        return {-I * phase * half, phase * half, partner[place]};
    }
    /// matrix times W, the columns of W being the new states.
    Eigen::MatrixXcd fromRight(const Eigen::MatrixXcd &matrix) const
    {
        Eigen::MatrixXcd result(matrix.rows(), matrix.cols());
        for (Eigen::Index j = 0; j < matrix.cols(); ++j) {
            // New state j has W(j,j) of |j> and W(p,j) of its partner p.
            const Column mine = columnOf(j);
            result.col(j) = mine.own * matrix.col(j);
            if (mine.partner != j)
                result.col(j) += columnOf(mine.partner).fromPartner * matrix.col(mine.partner);
        }
        return result;
    }

    std::vector<Eigen::Index> partner;
    std::vector<double> factor;
    std::vector<bool> isUpper;
};

/// Eigenstates of one class over its own strips.
struct ClassStates
{
    Eigen::VectorXd energies;
    Eigen::MatrixXcd vectors;
};

template <typename Matrix>
bool solve(const Matrix &matrix, Eigen::VectorXd &energies, Matrix &vectors)
{
    const Eigen::SelfAdjointEigenSolver<Matrix> solver(matrix);
    if (solver.info() != Eigen::Success)
        return false;
    energies = solver.eigenvalues();
    vectors = solver.eigenvectors();
    return energies.allFinite();
}

bool solveClass(const Basis &basis, const FieldOperator &field, const Strips &strips,
                bool isReversible, ClassStates &states)
{
    Eigen::MatrixXcd matrix = field.matrix(basis, strips);
    if (!matrix.allFinite())
        return false;
    Eigen::MatrixXd real;
    if (field.isReal()) {
        if (!solve<Eigen::MatrixXd>(matrix.real(), states.energies, real))
            return false;
        states.vectors = real.cast<Complex>();
        return true;
    }
    if (!isReversible)
        return solve(matrix, states.energies, states.vectors);
    const RealBasis realBasis(basis, strips);
    const Eigen::MatrixXd hamiltonian = realBasis.real(matrix);
    matrix.resize(0, 0);
    if (!solve(hamiltonian, states.energies, real))
        return false;
    states.vectors = realBasis.complex(real);
    return true;
}

} // namespace

double reducedC(int k)
{
    return -7.0 * threeJ::symbol(6, 2 * k, 6, 0, 0, 0);
}

std::vector<Block> makeBlocks(const FreeIonLevelsResults &freeIon)
{
    std::map<int, Block> byJ;
    for (int i = 0; i < freeIon.levels.size(); ++i) {
        const int twoJ = static_cast<int>(std::lround(2.0 * freeIon.levels.at(i).J));
        byJ[twoJ].twoJ = twoJ;
        byJ[twoJ].levels.push_back(i);
    }
    std::vector<Block> blocks;
    for (auto &[twoJ, block] : byJ) {
        QHash<QString, int> rows;
        const auto count = Eigen::Index(block.levels.size());
        block.energies.resize(count);
        block.vectors = Eigen::MatrixXd::Zero(count, count); // as many levels as basis levels
        for (Eigen::Index column = 0; column < count; ++column) {
            const auto &level = freeIon.levels.at(int(block.levels[std::size_t(column)]));
            block.energies(column) = level.energy;
            for (const CoeffAndLabel &component : level.components) {
                if (!rows.contains(component.label)) {
                    rows.insert(component.label, block.labels.size());
                    block.labels.append(component.label);
                }
                block.vectors(rows.value(component.label), column) = component.coefficient;
            }
        }
        blocks.push_back(block);
    }
    return blocks;
}

Basis makeBasis(const std::vector<Block> &blocks, const std::vector<Eigen::Index> &counts)
{
    Basis basis;
    basis.blocks = blocks;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        for (int twoM = -blocks[i].twoJ; counts[i] > 0 && twoM <= blocks[i].twoJ; twoM += 2) {
            basis.strips.push_back({int(i), twoM, basis.size, counts[i]});
            basis.size += counts[i];
        }
    return basis;
}

TensorOperator::TensorOperator(const std::vector<Block> &blocks, int k, const Eigen::MatrixXd &all)
    : k(k)
    , blockCount(int(blocks.size()))
    , elements(blocks.size() * blocks.size())
{
    for (std::size_t i = 0; i < blocks.size(); ++i)
        for (std::size_t j = 0; j < blocks.size(); ++j) {
            const Block &bra = blocks[i];
            const Block &ket = blocks[j];
            if (std::abs(bra.twoJ - ket.twoJ) > 2 * k || bra.twoJ + ket.twoJ < 2 * k)
                continue;
            Eigen::MatrixXd &part = elements[i * blocks.size() + j];
            part.resize(bra.energies.size(), ket.energies.size());
            for (std::size_t row = 0; row < bra.levels.size(); ++row)
                for (std::size_t column = 0; column < ket.levels.size(); ++column)
                    part(Eigen::Index(row), Eigen::Index(column)) =
                        all(bra.levels[row], ket.levels[column]);
        }
}

const Eigen::MatrixXd &TensorOperator::between(int bra, int ket) const
{
    return elements[std::size_t(bra * blockCount + ket)];
}

Eigen::MatrixXcd TensorOperator::apply(const Basis &basis, int q,
                                       const Eigen::MatrixXcd &vectors) const
{
    Eigen::MatrixXcd result = Eigen::MatrixXcd::Zero(basis.size, vectors.cols());
    for (const Strip &bra : basis.strips)
        for (const Strip &ket : basis.strips) {
            const Eigen::MatrixXd &reduced = between(bra.block, ket.block);
            if (bra.twoM - ket.twoM != 2 * q || reduced.size() == 0)
                continue;
            const double factor =
                threeJ::wignerEckart(basis.blocks[std::size_t(bra.block)].twoJ, bra.twoM, k,
                                     basis.blocks[std::size_t(ket.block)].twoJ, ket.twoM);
            if (factor != 0.0)
                result.middleRows(bra.first, bra.count) +=
                    (factor * reduced.topLeftCorner(bra.count, ket.count)) *
                    vectors.middleRows(ket.first, ket.count);
        }
    return result;
}

FieldOperator::FieldOperator(const Field &field, const std::vector<TensorOperator> &unitTensors)
    : field(field)
    , tensors(unitTensors)
{}

bool FieldOperator::isReal() const
{
    return std::all_of(field.begin(), field.end(),
                       [](const auto &entry) { return entry.second.imag() == 0.0; });
}

int FieldOperator::periodOfM() const
{
    int period = 0;
    for (const auto &[kq, B] : field)
        if (B != 0.0)
            period = std::gcd(period, kq.second);
    return period;
}

/// Empty when the field does not connect the strips.
Eigen::MatrixXcd FieldOperator::element(const Basis &to, const Strip &bra, const Basis &from,
                                        const Strip &ket) const
{
    Eigen::MatrixXcd sum;
    const int twoQ = bra.twoM - ket.twoM;
    for (const TensorOperator &tensor : tensors) {
        const int k = tensor.rank();
        const auto found = field.find({k, twoQ / 2});
        const Eigen::MatrixXd &reduced = tensor.between(bra.block, ket.block);
        if (found == field.end() || found->second == 0.0 || reduced.size() == 0)
            continue;
        const double factor =
            reducedC(k) * threeJ::wignerEckart(to.blocks[std::size_t(bra.block)].twoJ, bra.twoM, k,
                                               from.blocks[std::size_t(ket.block)].twoJ, ket.twoM);
        if (factor == 0.0)
            continue;
        if (sum.size() == 0)
            sum = Eigen::MatrixXcd::Zero(bra.count, ket.count);
        sum += (factor * found->second) * reduced.topLeftCorner(bra.count, ket.count);
    }
    return sum;
}

Eigen::MatrixXcd FieldOperator::matrix(const Basis &basis, const Strips &strips) const
{
    const Eigen::Index size = sizeOf(basis, strips);
    Eigen::MatrixXcd matrix = Eigen::MatrixXcd::Zero(size, size);
    Eigen::Index row = 0;
    for (const std::size_t i : strips) {
        const Strip &bra = basis.strips[i];
        Eigen::Index column = 0;
        for (const std::size_t j : strips) {
            const Strip &ket = basis.strips[j];
            if (column > row)
                break; // hermitian
            const Eigen::MatrixXcd part = element(basis, bra, basis, ket);
            if (part.size() > 0) {
                matrix.block(row, column, bra.count, ket.count) = part;
                matrix.block(column, row, ket.count, bra.count) = part.adjoint();
            }
            column += ket.count;
        }
        matrix.block(row, row, bra.count, bra.count).diagonal() +=
            basis.blocks[std::size_t(bra.block)].energies.head(bra.count);
        row += bra.count;
    }
    return matrix;
}

Eigen::MatrixXcd FieldOperator::apply(const Basis &to, const Basis &from,
                                      const Eigen::MatrixXcd &vectors) const
{
    Eigen::MatrixXcd result = Eigen::MatrixXcd::Zero(to.size, vectors.cols());
    for (const Strip &bra : to.strips)
        for (const Strip &ket : from.strips) {
            const Eigen::MatrixXcd part = element(to, bra, from, ket);
            if (part.size() > 0)
                result.middleRows(bra.first, bra.count) +=
                    part * vectors.middleRows(ket.first, ket.count);
        }
    return result;
}

Eigen::MatrixXcd timeReversed(const Basis &basis, const Eigen::MatrixXcd &vectors)
{
    Eigen::MatrixXcd result = Eigen::MatrixXcd::Zero(vectors.rows(), vectors.cols());
    for (const Strip &from : basis.strips)
        for (const Strip &to : basis.strips)
            if (from.block == to.block && from.twoM == -to.twoM)
                result.middleRows(to.first, to.count) =
                    parity((basis.blocks[std::size_t(from.block)].twoJ - from.twoM) / 2) *
                    vectors.middleRows(from.first, from.count).conjugate();
    return result;
}

Eigen::Index largestMatrix(const Basis &basis, const FieldOperator &field)
{
    Eigen::Index largest = 0;
    for (const auto &[name, strips] : classesOf(basis, field.periodOfM()))
        largest = std::max(largest, sizeOf(basis, strips));
    return largest;
}

States diagonalize(const Basis &basis, const FieldOperator &field)
{
    const int period = field.periodOfM();
    const auto classes = classesOf(basis, period);
    const auto reversed = [period](int name) {
        return period == 0 ? -name : remainder(-name, 2 * period);
    };
    const bool isEven = basis.blocks.front().twoJ % 2 == 0;
    States all;
    all.energies.resize(basis.size);
    all.vectors = Eigen::MatrixXcd::Zero(basis.size, basis.size);
    Eigen::Index column = 0;
    for (const auto &[name, strips] : classes) {
        if (name > reversed(name)) // made from the other
            continue;
        ClassStates states;
        if (!solveClass(basis, field, strips, isEven && name == reversed(name), states))
            return {};
        const Eigen::Index count = states.energies.size();
        all.largestMatrix = std::max(all.largestMatrix, int(count));
        Eigen::Index row = 0;
        for (const std::size_t place : strips) {
            const Strip &strip = basis.strips[place];
            all.vectors.block(strip.first, column, strip.count, count) =
                states.vectors.middleRows(row, strip.count);
            row += strip.count;
        }
        all.energies.segment(column, count) = states.energies;
        column += count;
        if (name == reversed(name))
            continue;
        all.vectors.middleCols(column, count) =
            timeReversed(basis, all.vectors.middleCols(column - count, count));
        all.energies.segment(column, count) = states.energies;
        column += count;
    }
    std::vector<Eigen::Index> order(std::size_t(basis.size));
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&all](Eigen::Index a, Eigen::Index b) {
        return all.energies(a) < all.energies(b);
    });
    States sorted;
    sorted.largestMatrix = all.largestMatrix;
    sorted.energies.resize(basis.size);
    sorted.vectors.resize(basis.size, basis.size);
    for (Eigen::Index i = 0; i < basis.size; ++i) {
        sorted.energies(i) = all.energies(order[std::size_t(i)]);
        sorted.vectors.col(i) = all.vectors.col(order[std::size_t(i)]);
    }
    return sorted;
}

} // namespace fieldStates
