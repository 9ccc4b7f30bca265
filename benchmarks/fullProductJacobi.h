#pragma once

#include <LanqorEngine/SymmetricMatrix.h>

#include <cmath>
#include <cstddef>
#include <vector>

/// The classical Jacobi method written down as it is defined, each rotation as full products of
/// matrices. The lower triangle of R^T A R is kept, in one cell with the upper one.
class FullProductJacobi
{
public:
    explicit FullProductJacobi(const SymmetricMatrix &matrix)
        : a(matrix.getOrder())
        , v(matrix.getOrder())
    {
        for (int i = 0; i < a.order; ++i) {
            v(i, i) = 1.0;
            for (int j = 0; j < a.order; ++j)
                a(i, j) = matrix(i, j);
        }
    }

    void run(double tolerance)
    {
        while (a.order > 1) {
            int i = 1;
            int j = 0;
            for (int row = 1; row < a.order; ++row)
                for (int column = 0; column < row; ++column)
                    if (std::abs(a(row, column)) > std::abs(a(i, j))) {
                        i = row;
                        j = column;
                    }
            if (std::abs(a(i, j)) < tolerance)
                return;
            rotate(i, j);
        }
    }

    double eigenvalue(int k) const { return a(k, k); }
    double component(int i, int k) const { return v(i, k); }

private:
    struct Matrix
    {
        int order;
        std::vector<double> elements;

        explicit Matrix(int order)
            : order(order)
            , elements(std::size_t(order) * std::size_t(order), 0.0)
        {}
        double &operator()(int i, int j) { return elements[std::size_t(i * order + j)]; }
        double operator()(int i, int j) const { return elements[std::size_t(i * order + j)]; }
    };

    static Matrix product(const Matrix &x, const Matrix &y)
    {
        Matrix result(x.order);
        for (int i = 0; i < x.order; ++i)
            for (int j = 0; j < x.order; ++j) {
                double sum = 0.0;
                for (int k = 0; k < x.order; ++k)
                    sum += x(i, k) * y(k, j);
                result(i, j) = sum;
            }
        return result;
    }

    void rotate(int i, int j)
    {
        const double theta = (a(j, j) - a(i, i)) / (2.0 * a(i, j));
        const double sign = theta > 0.0 ? 1.0 : -1.0;
        const double t = theta == 0.0 ? 1.0 : 1.0 / (theta + sign * std::sqrt(theta * theta + 1.0));
        const double c = 1.0 / std::sqrt(t * t + 1.0);
        const double s = t * c;
        Matrix r(a.order);
        for (int k = 0; k < a.order; ++k)
            r(k, k) = 1.0;
        r(i, i) = r(j, j) = c;
        r(i, j) = s;
        r(j, i) = -s;
        Matrix transposed = r;
        transposed(i, j) = -s;
        transposed(j, i) = s;
        a = product(product(transposed, a), r);
        for (int row = 0; row < a.order; ++row)
            for (int column = 0; column < row; ++column)
                a(column, row) = a(row, column);
        v = product(v, r);
    }

    Matrix a;
    Matrix v;
};
