#pragma once

#include <Eigen/Core>
#include <Eigen/Eigenvalues>

#include <vector>

/// A Hermitian matrix that is linear in the parameters, H = sum over k of x(k) A(k).
template <class Matrix> struct LinearBlock
{
    std::vector<Matrix> parts; ///< A(k)

    /// Eigenvalues in ascending order.
    struct Levels
    {
        Eigen::VectorXd energies;
        Eigen::MatrixXd slopes; ///< by level and parameter: <v|A(k)|v> (Hellmann and Feynman)
    };

    Levels calcLevels(const Eigen::VectorXd &x) const
    {
        Matrix sum = Matrix::Zero(parts.front().rows(), parts.front().cols());
        for (std::size_t k = 0; k < parts.size(); ++k)
            sum += x(Eigen::Index(k)) * parts[k];
        const Eigen::SelfAdjointEigenSolver<Matrix> solver(sum);
        Levels levels;
        levels.energies = solver.eigenvalues();
        levels.slopes.resize(sum.rows(), Eigen::Index(parts.size()));
        const Matrix &v = solver.eigenvectors();
        for (std::size_t k = 0; k < parts.size(); ++k)
            levels.slopes.col(Eigen::Index(k)) =
                v.conjugate().cwiseProduct(parts[k] * v).colwise().sum().real().transpose();
        return levels;
    }
};
