#pragma once

#include <LanqorEngine/LanqorEngineExport.h>

#include <vector>

/// A real symmetric matrix, stored as its lower triangle, and its eigensystem by the classical
/// Jacobi method (C. G. J. Jacobi, J. reine angew. Math. 30, 51 (1846)). Indices count from 0.
class LANQORENGINE_EXPORT SymmetricMatrix
{
public:
    /// Whether the elements of a matrix of this order can be counted in 32 bits.
    static bool isPossibleOrder(const int &order);

    /// All elements 0; @p order must be possible.
    explicit SymmetricMatrix(const int &order);
    virtual ~SymmetricMatrix();

    int getOrder() const;
    /// (i, j) and (j, i) are one cell.
    double &operator()(const int &i, const int &j);
    double operator()(const int &i, const int &j) const;

    /// Rotates until every element off the diagonal is below @p tolerance in magnitude: then the
    /// eigenvalues are on the diagonal and getEigenvectorComponent() tells the eigenvectors, both
    /// in the order and with the signs in which the rotations leave them.
    ///
    /// Each rotation R of two indices annihilates the largest element off the diagonal, the first
    /// one row by row where several are equal; A becomes (R^T A) R and V becomes V R, of which
    /// only the two rows and columns that change are computed, with the very operations of the
    /// full products.
    ///
    /// False, and nothing done, when an element is not finite or larger than 1e18 times the
    /// tolerance: rounding would keep the rotations from ever reaching the tolerance.
    bool diagonalize(const double &tolerance);

    /// Component @p i of eigenvector @p k, after diagonalize().
    double getEigenvectorComponent(const int &i, const int &k) const;

private:
    int order;
    std::vector<double> elements;     // (i, j) at min + max (max + 1)/2
    std::vector<double> eigenvectors; // component i of vector k at i + k order
};
