#pragma once

#include <LanqorEngine/SymmetricMatrix.h>

#include <Eigen/Dense>

#include <cmath>

/// The classical Jacobi method written down as it is defined, each rotation as full products of
/// matrices. The lower triangle of R^T A R is kept, in one cell with the upper one.
struct FullProductJacobi
{
    Eigen::MatrixXd a;
    Eigen::MatrixXd v;

    explicit FullProductJacobi(const SymmetricMatrix &matrix)
        : a(matrix.getOrder(), matrix.getOrder())
        , v(Eigen::MatrixXd::Identity(matrix.getOrder(), matrix.getOrder()))
    {
        for (int i = 0; i < matrix.getOrder(); ++i)
            for (int j = 0; j < matrix.getOrder(); ++j)
                a(i, j) = matrix(i, j);
    }

    void run(double tolerance)
    {
        while (a.rows() > 1) {
            Eigen::Index i = 1;
            Eigen::Index j = 0;
            for (Eigen::Index row = 1; row < a.rows(); ++row)
                for (Eigen::Index column = 0; column < row; ++column)
                    if (std::abs(a(row, column)) > std::abs(a(i, j))) {
                        i = row;
                        j = column;
                    }
            if (std::abs(a(i, j)) < tolerance)
                return;
            const double theta = (a(j, j) - a(i, i)) / (2.0 * a(i, j));
            const double sign = theta > 0.0 ? 1.0 : -1.0;
            const double t =
                theta == 0.0 ? 1.0 : 1.0 / (theta + sign * std::sqrt(theta * theta + 1.0));
            const double c = 1.0 / std::sqrt(t * t + 1.0);
            const double s = t * c;
            Eigen::MatrixXd r = Eigen::MatrixXd::Identity(a.rows(), a.cols());
            r(i, i) = r(j, j) = c;
            r(i, j) = s;
            r(j, i) = -s;
            const Eigen::MatrixXd left = r.transpose() * a;
            const Eigen::MatrixXd product = left * r;
            a = product.selfadjointView<Eigen::Lower>();
            v = (v * r).eval();
        }
    }
};
