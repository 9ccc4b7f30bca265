#include "SymmetricMatrix.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Fully degenerate matrices of order 50 have been seen to rotate for ever from 1e19 on.
constexpr double largestPerTolerance = 1e18;

std::size_t cell(int i, int j)
{
    const auto low = static_cast<std::size_t>(std::min(i, j));
    const auto high = static_cast<std::size_t>(std::max(i, j));
    return low + high * (high + 1) / 2;
}

/// The matrix under rotation with both triangles, the accumulated rotations, and the largest
/// element of each row left of the diagonal.
class JacobiRotations
{
public:
    explicit JacobiRotations(const SymmetricMatrix &matrix);

    /// Rotates until the largest element off the diagonal is below the tolerance.
    void run(double tolerance);

    double element(int i, int j) const { return a[index(i, j)]; }
    /// Component i of vector k at i + k order.
    std::vector<double> takeVectors() { return std::move(vectors); }

private:
    std::size_t index(int i, int j) const
    {
        return static_cast<std::size_t>(i) * static_cast<std::size_t>(order) +
               static_cast<std::size_t>(j);
    }
    double magnitude(int i, int j) const { return std::abs(a[index(i, j)]); }
    int &best(int row) { return bestColumn[static_cast<std::size_t>(row)]; }

    int pivotRow();
    void rotate(int i, int j);
    void rotateVectors(int i, int j, double c, double s);
    void findBest(int row);
    void updateBest(int row, int i, int j, double before);

    int order;
    std::vector<double> a;
    std::vector<double> vectors;
    /// First column of the largest magnitude left of the diagonal; unused for row 0.
    std::vector<int> bestColumn;
};

JacobiRotations::JacobiRotations(const SymmetricMatrix &matrix)
    : order(matrix.getOrder())
    , a(static_cast<std::size_t>(order) * static_cast<std::size_t>(order))
    , vectors(a.size(), 0.0)
    , bestColumn(static_cast<std::size_t>(order), 0)
{
    for (int i = 0; i < order; ++i) {
        for (int j = 0; j < order; ++j)
            a[index(i, j)] = matrix(i, j);
        vectors[index(i, i)] = 1.0;
        findBest(i);
    }
}

void JacobiRotations::run(double tolerance)
{
    const auto isDiagonal = [&](int i) { return magnitude(i, best(i)) < tolerance; };
    if (order < 2 || isDiagonal(pivotRow()))
        return;
    // The sums of the first full products turn every -0 into +0.
    for (double &element : a)
        element += 0.0;
    for (int i = pivotRow(); !isDiagonal(i); i = pivotRow())
        rotate(i, best(i));
}

/// The first row whose largest element is the largest of all.
int JacobiRotations::pivotRow()
{
    int row = 1;
    for (int i = 2; i < order; ++i)
        if (magnitude(i, best(i)) > magnitude(row, best(row)))
            row = i;
    return row;
}

/// R is 1 but for R(i,i) = R(j,j) = c, R(i,j) = s, R(j,i) = -s, with i > j.
void JacobiRotations::rotate(int i, int j)
{
    const double theta = (a[index(j, j)] - a[index(i, i)]) / (2.0 * a[index(i, j)]);
    const double root = std::sqrt(theta * theta + 1.0);
    const double t = theta == 0.0 ? 1.0 : 1.0 / (theta + (theta > 0.0 ? root : -root));
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = t * c;

    // T = R^T A in rows i and j, then T R.
    const double tii = c * a[index(i, i)] - s * a[index(j, i)];
    const double tij = c * a[index(i, j)] - s * a[index(j, j)];
    const double tji = s * a[index(i, i)] + c * a[index(j, i)];
    const double tjj = s * a[index(i, j)] + c * a[index(j, j)];
    a[index(i, i)] = tii * c - tij * s;
    a[index(j, j)] = tji * s + tjj * c;
    // The two triangles differ by rounding here; the lower one is kept.
    a[index(i, j)] = a[index(j, i)] = tii * s + tij * c;

    for (int k = 0; k < order; ++k) {
        if (k == i || k == j)
            continue;
        const double aki = a[index(i, k)];
        const double akj = a[index(j, k)];
        const double before = magnitude(k, best(k));
        a[index(i, k)] = a[index(k, i)] = c * aki - s * akj;
        a[index(j, k)] = a[index(k, j)] = s * aki + c * akj;
        if (k > j)
            updateBest(k, i, j, before);
    }
    findBest(i);
    findBest(j);
    rotateVectors(i, j, c, s);
}

void JacobiRotations::rotateVectors(int i, int j, double c, double s)
{
    double *vi = vectors.data() + index(i, 0);
    double *vj = vectors.data() + index(j, 0);
    for (int k = 0; k < order; ++k) {
        const double vki = vi[k];
        const double vkj = vj[k];
        vi[k] = vki * c - vkj * s;
        vj[k] = vki * s + vkj * c;
    }
}

void JacobiRotations::findBest(int row)
{
    int column = 0;
    for (int j = 1; j < row; ++j)
        if (magnitude(row, j) > magnitude(row, column))
            column = j;
    best(row) = column;
}

/// Columns i and j < row have changed; @p before is the largest magnitude of the row until then.
void JacobiRotations::updateBest(int row, int i, int j, double before)
{
    const int column = best(row);
    if ((column == i || column == j) && magnitude(row, column) < before) {
        findBest(row);
        return;
    }
    for (int changed : {i, j}) {
        const double largest = magnitude(row, best(row));
        const double value = magnitude(row, changed);
        if (changed < row && (value > largest || (value == largest && changed < best(row))))
            best(row) = changed;
    }
}

} // namespace

bool SymmetricMatrix::isPossibleOrder(const int &order)
{
    constexpr qint64 limit = std::numeric_limits<qint32>::max();
    return order >= 0 && qint64(order) * order <= limit;
}

SymmetricMatrix::SymmetricMatrix(const int &order)
    : order(order)
    , elements(static_cast<std::size_t>(order) * (static_cast<std::size_t>(order) + 1) / 2, 0.0)
{}

SymmetricMatrix::~SymmetricMatrix() = default;

double &SymmetricMatrix::operator()(const int &i, const int &j)
{
    return elements[cell(i, j)];
}

double SymmetricMatrix::operator()(const int &i, const int &j) const
{
    return elements[cell(i, j)];
}

bool SymmetricMatrix::diagonalize(const double &tolerance)
{
    const double limit = largestPerTolerance * tolerance;
    if (!std::all_of(elements.begin(), elements.end(),
                     [limit](double x) { return std::abs(x) <= limit; }))
        return false;
    JacobiRotations rotations(*this);
    rotations.run(tolerance);
    for (int i = 0; i < order; ++i)
        for (int j = 0; j <= i; ++j)
            elements[cell(i, j)] = rotations.element(i, j);
    eigenvectors = rotations.takeVectors();
    return true;
}

double SymmetricMatrix::getEigenvectorComponent(const int &i, const int &k) const
{
    return eigenvectors[static_cast<std::size_t>(i) +
                        static_cast<std::size_t>(k) * static_cast<std::size_t>(order)];
}
