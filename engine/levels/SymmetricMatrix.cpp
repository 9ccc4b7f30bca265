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

    double element(std::size_t i, std::size_t j) const { return a[i * order + j]; }
    /// Component i of vector k at i + k order.
    std::vector<double> takeVectors() { return std::move(vectors); }

private:
    double *row(std::size_t i) { return a.data() + i * order; }
    std::size_t pivotRow() const;
    void rotate(std::size_t i, std::size_t j);
    static void rotateRows(double *ri, double *rj, std::size_t size, double c, double s);
    void findLargest(std::size_t k);
    void updateLargest(std::size_t k, std::size_t i, std::size_t j);

    std::size_t order;
    std::vector<double> a;
    std::vector<double> vectors;
    // By row: the largest magnitude left of the diagonal and its first column; row 0 has none.
    std::vector<double> largest;
    std::vector<std::size_t> largestColumn;
};

JacobiRotations::JacobiRotations(const SymmetricMatrix &matrix)
    : order(static_cast<std::size_t>(matrix.getOrder()))
    , a(order * order)
    , vectors(order * order, 0.0)
    , largest(order, 0.0)
    , largestColumn(order, 0)
{
    for (std::size_t i = 0; i < order; ++i) {
        for (std::size_t j = 0; j < order; ++j)
            a[i * order + j] = matrix(static_cast<int>(i), static_cast<int>(j));
        vectors[i * order + i] = 1.0;
        findLargest(i);
    }
}

void JacobiRotations::run(double tolerance)
{
    if (order < 2 || largest[pivotRow()] < tolerance)
        return;
    // The sums of the first full products turn every -0 into +0.
    for (double &element : a)
        element += 0.0;
    for (std::size_t i = pivotRow(); !(largest[i] < tolerance); i = pivotRow())
        rotate(i, largestColumn[i]);
}

/// The first row whose largest element is the largest of all.
std::size_t JacobiRotations::pivotRow() const
{
    std::size_t pivot = 1;
    for (std::size_t i = 2; i < order; ++i)
        if (largest[i] > largest[pivot])
            pivot = i;
    return pivot;
}

/// R is 1 but for R(i,i) = R(j,j) = c, R(i,j) = s, R(j,i) = -s, with i > j.
void JacobiRotations::rotate(std::size_t i, std::size_t j)
{
    double *ri = row(i);
    double *rj = row(j);
    const double theta = (rj[j] - ri[i]) / (2.0 * ri[j]);
    const double root = std::sqrt(theta * theta + 1.0);
    const double t = theta == 0.0 ? 1.0 : 1.0 / (theta + (theta > 0.0 ? root : -root));
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = t * c;

    // T = R^T A in rows i and j. The other elements of T R in these rows are those of T.
    rotateRows(ri, rj, order, c, s);
    const double tii = ri[i];
    const double tij = ri[j];
    const double tji = rj[i];
    const double tjj = rj[j];
    ri[i] = tii * c - tij * s;
    rj[j] = tji * s + tjj * c;
    // The two triangles differ by rounding here; the lower one is kept.
    ri[j] = rj[i] = tii * s + tij * c;
    // Columns i and j of T R have the same operands as rows i and j of T.
    for (std::size_t k = 0; k < order; ++k) {
        row(k)[i] = ri[k];
        row(k)[j] = rj[k];
    }
    rotateRows(vectors.data() + i * order, vectors.data() + j * order, order, c, s);

    findLargest(i);
    findLargest(j);
    for (std::size_t k = j + 1; k < order; ++k)
        if (k != i)
            updateLargest(k, i, j);
}

void JacobiRotations::rotateRows(double *ri, double *rj, std::size_t size, double c, double s)
{
    for (std::size_t k = 0; k < size; ++k) {
        const double x = ri[k];
        const double y = rj[k];
        ri[k] = c * x - s * y;
        rj[k] = s * x + c * y;
    }
}

void JacobiRotations::findLargest(std::size_t k)
{
    const double *elements = row(k);
    double magnitude = k > 0 ? std::abs(elements[0]) : 0.0;
    std::size_t found = 0;
    for (std::size_t column = 1; column < k; ++column)
        if (std::abs(elements[column]) > magnitude) {
            magnitude = std::abs(elements[column]);
            found = column;
        }
    largest[k] = magnitude;
    largestColumn[k] = found;
}

/// Row k, of which columns i and j < k have changed.
void JacobiRotations::updateLargest(std::size_t k, std::size_t i, std::size_t j)
{
    const double *elements = row(k);
    double magnitude = largest[k];
    std::size_t column = largestColumn[k];
    if (column == i || column == j) {
        const double now = std::abs(elements[column]);
        if (now < magnitude) {
            findLargest(k);
            return;
        }
        magnitude = now;
    }
    for (const std::size_t changed : {i, j}) {
        const double now = std::abs(elements[changed]);
        if (changed < k && (now > magnitude || (now == magnitude && changed < column))) {
            magnitude = now;
            column = changed;
        }
    }
    largest[k] = magnitude;
    largestColumn[k] = column;
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

int SymmetricMatrix::getOrder() const
{
    return order;
}

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
            elements[cell(i, j)] =
                rotations.element(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
    eigenvectors = rotations.takeVectors();
    return true;
}

double SymmetricMatrix::getEigenvectorComponent(const int &i, const int &k) const
{
    return eigenvectors[static_cast<std::size_t>(i) +
                        static_cast<std::size_t>(k) * static_cast<std::size_t>(order)];
}
