#pragma once

#include <LanqorEngine/FreeIonLevelsResults.h>

#include <Eigen/Core>

#include <QStringList>

#include <array>
#include <complex>
#include <map>
#include <utility>
#include <vector>

/// All states of 4f^n in a crystal field: the free-ion levels in intermediate coupling with their
/// projections M as a basis, the field between all of them, so that levels of different J mix.
namespace fieldStates {

using Complex = std::complex<double>;

/// The free-ion levels of one J.
struct Block
{
    int twoJ = 0;
    std::vector<Eigen::Index> levels; ///< places in the list of all, by ascending energy
    QStringList labels;               ///< of the Russell-Saunders levels
    Eigen::VectorXd energies;         ///< cm^-1
    Eigen::MatrixXd vectors;          ///< (Russell-Saunders level, level)
};

/// The blocks of a calculation of every J, by ascending J.
std::vector<Block> makeBlocks(const FreeIonLevelsResults &freeIon);

/// <f||C(k)||f> = -7 (3 k 3; 0 0 0).
double reducedC(int k);

/// Sum over the electrons of B(k,q) C(k)q, by k and q = -k .. k, cm^-1.
using Field = std::map<std::pair<int, int>, Complex>;

/// The states |level, J, M> of one J and M, the levels in ascending order. A vector over the basis
/// holds the strips one after another.
struct Strip
{
    int block = 0; ///< place of the J
    int twoM = 0;
    Eigen::Index first = 0;
    Eigen::Index count = 0;
};

struct Basis
{
    std::vector<Block> blocks;
    std::vector<Strip> strips;
    Eigen::Index size = 0;
};

/// The basis of the first @p counts levels of each J.
Basis makeBasis(const std::vector<Block> &blocks, const std::vector<Eigen::Index> &counts);

/// A tensor operator by its reduced elements between the levels of two J.
class TensorOperator
{
public:
    /// @param elements  of rank @p k between all levels
    TensorOperator(const std::vector<Block> &blocks, int k, const Eigen::MatrixXd &elements);

    int rank() const { return k; }
    /// Of the pair of places; empty when the rank does not connect them.
    const Eigen::MatrixXd &between(int bra, int ket) const;
    /// The component q of the operator on the columns of @p vectors, which are over @p basis.
    Eigen::MatrixXcd apply(const Basis &basis, int q, const Eigen::MatrixXcd &vectors) const;

private:
    int k;
    int blockCount;
    std::vector<Eigen::MatrixXd> elements;
};

/// The crystal field as an operator.
class FieldOperator
{
public:
    /// @param unitTensors  U(2), U(4), U(6)
    FieldOperator(const Field &field, const std::vector<TensorOperator> &unitTensors);

    /// Its matrix between some strips.
    Eigen::MatrixXcd matrix(const Basis &basis, const std::vector<std::size_t> &strips) const;
    /// The field on the columns of @p vectors over @p from, as vectors over @p to.
    Eigen::MatrixXcd apply(const Basis &to, const Basis &from,
                           const Eigen::MatrixXcd &vectors) const;
    bool isReal() const;
    /// Greatest common divisor of the q that occur; 0 without one.
    int periodOfM() const;

private:
    Eigen::MatrixXcd element(const Basis &to, const Strip &bra, const Basis &from,
                             const Strip &ket) const;

    Field field;
    const std::vector<TensorOperator> &tensors;
};

/// Eigenstates by ascending energy, cm^-1; columns over the basis.
struct States
{
    Eigen::VectorXd energies;
    Eigen::MatrixXcd vectors;
    int largestMatrix = 0; ///< order of the largest matrix that was diagonalised
};

/// The eigenstates of free ion and field. States that the field does not connect are diagonalised
/// apart, those that time reversal makes from others are made so. Empty when a matrix cannot be
/// diagonalised.
States diagonalize(const Basis &basis, const FieldOperator &field);

/// Order of the largest matrix that diagonalize() would meet.
Eigen::Index largestMatrix(const Basis &basis, const FieldOperator &field);

/// (-1)^(J-M) conj of the component M, as the component -M: the state with the time reversed.
Eigen::MatrixXcd timeReversed(const Basis &basis, const Eigen::MatrixXcd &vectors);

} // namespace fieldStates
