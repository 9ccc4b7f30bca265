#include "fractionalParentage.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace parentage {

namespace {

constexpr int orbitalL = 3;
constexpr int twiceSpin = 1;
constexpr int maximumL = 12;
constexpr Real tolerance = 1e-9L;

using Vector = Eigen::Matrix<Real, Eigen::Dynamic, 1>;

void require(bool condition, const QString &message)
{
    if (!condition)
        throw std::runtime_error(message.toStdString());
}

Real sign(int exponent)
{
    return exponent % 2 == 0 ? 1.0L : -1.0L;
}

Real factorial(int n)
{
    Real product = 1.0L;
    for (int i = 2; i <= n; ++i)
        product *= i;
    return product;
}

/// The square of the triangle coefficient of twice the momenta; 0 when they form none.
Real triangle(int a, int b, int c)
{
    if (a > b + c || b > a + c || c > a + b)
        return 0.0L;
    return factorial((a + b - c) / 2) * factorial((a - b + c) / 2) * factorial((b + c - a) / 2) /
           factorial((a + b + c) / 2 + 1);
}

/// 6-j symbol of twice the momenta by Racah's formula, to the digits of Real.
Real sixJ(int a, int b, int c, int d, int e, int f)
{
    const int triads[] = {(a + b + c) / 2, (a + e + f) / 2, (d + b + f) / 2, (d + e + c) / 2};
    const int quads[] = {(a + b + d + e) / 2, (b + c + e + f) / 2, (a + c + d + f) / 2};
    Real sum = 0.0L;
    for (int t = *std::max_element(std::begin(triads), std::end(triads));
         t <= *std::min_element(std::begin(quads), std::end(quads)); ++t) {
        Real term = sign(t) * factorial(t + 1);
        for (int triad : triads)
            term /= factorial(t - triad);
        for (int quad : quads)
            term /= factorial(quad - t);
        sum += term;
    }
    return sum *
           std::sqrt(triangle(a, b, c) * triangle(a, e, f) * triangle(d, b, f) * triangle(d, e, c));
}

/// <(j1 j)J12, j; J | (j1 j)J13, j; J> with the last two momenta exchanged; all are Reald.
Real exchange(int j1, int j, int J12, int J13, int J)
{
    return sign((2 * j + J12 + J13) / 2) * std::sqrt((J12 + 1.0L) * (J13 + 1.0L)) *
           sixJ(j, j1, J12, j, J, J13);
}

bool isParent(const Term &parent, int twiceS, int L)
{
    return std::abs(parent.twiceS - twiceS) == twiceSpin && std::abs(parent.L - orbitalL) <= L &&
           L <= parent.L + orbitalL;
}

/// States of one S and L: (parent, state) coefficients.
struct Block
{
    int twiceS;
    int L;
    Matrix cfp;
};

/// <p, f; S L|P|q, f; S L> of the last two electrons; p and q are terms of @p inner.
Real exchangeElement(const Configuration &inner, int p, int q, int twiceS, int L)
{
    const Term &bra = inner.terms[static_cast<std::size_t>(p)];
    const Term &ket = inner.terms[static_cast<std::size_t>(q)];
    Real sum = 0.0L;
    for (int g = 0; g < static_cast<int>(inner.parents.size()); ++g) {
        const Term &core = inner.parents[static_cast<std::size_t>(g)];
        const Real product = inner.cfp(g, p) * inner.cfp(g, q);
        if (product != 0.0L)
            sum += product * exchange(core.twiceS, twiceSpin, bra.twiceS, ket.twiceS, twiceS) *
                   exchange(2 * core.L, 2 * orbitalL, 2 * bra.L, 2 * ket.L, 2 * L);
    }
    return sum;
}

/// The antisymmetric states of n electrons of one S and L. In the products of parent and last
/// electron the antisymmetriser is (1 - (n-1) P)/n with P the exchange of the last two electrons;
/// the grandparents give its matrix. The states are its eigenvectors of eigenvalue 1.
Block antisymmetricStates(const Configuration &inner, int twiceS, int L)
{
    const int n = inner.n + 1;
    std::vector<int> basis;
    for (int p = 0; p < static_cast<int>(inner.terms.size()); ++p)
        if (isParent(inner.terms[static_cast<std::size_t>(p)], twiceS, L))
            basis.push_back(p);

    Block block{twiceS, L, Matrix::Zero(static_cast<Eigen::Index>(inner.terms.size()), 0)};
    const auto size = static_cast<Eigen::Index>(basis.size());
    if (size == 0)
        return block;
    Matrix projector = Matrix::Identity(size, size) / n;
    for (Eigen::Index row = 0; n > 1 && row < size; ++row)
        for (Eigen::Index column = row; column < size; ++column) {
            const int p = basis[static_cast<std::size_t>(row)];
            const int q = basis[static_cast<std::size_t>(column)];
            projector(row, column) -= (n - 1.0L) / n * exchangeElement(inner, p, q, twiceS, L);
            projector(column, row) = projector(row, column);
        }

    const Eigen::SelfAdjointEigenSolver<Matrix> solver(projector);
    for (Eigen::Index k = 0; k < size; ++k) {
        const Real value = solver.eigenvalues()(k);
        require(std::abs(value) < tolerance || std::abs(value - 1.0L) < tolerance,
                QStringLiteral("the antisymmetriser is no projector"));
        if (value < 0.5L)
            continue;
        block.cfp.conservativeResize(Eigen::NoChange, block.cfp.cols() + 1);
        block.cfp.rightCols(1).setZero();
        for (Eigen::Index row = 0; row < size; ++row)
            block.cfp(basis[static_cast<std::size_t>(row)], block.cfp.cols() - 1) =
                solver.eigenvectors()(row, k);
    }
    return block;
}

/// <bra||U(k)||ket> between the states of two blocks of equal S.
Matrix unitTensor(int k, int n, const std::vector<Term> &parents, const Block &bra,
                  const Block &ket)
{
    Vector weights(static_cast<Eigen::Index>(parents.size()));
    for (Eigen::Index p = 0; p < weights.size(); ++p) {
        const int parentL = parents[static_cast<std::size_t>(p)].L;
        weights(p) = sign(parentL + bra.L + orbitalL + k) *
                     sixJ(2 * bra.L, 2 * orbitalL, 2 * parentL, 2 * orbitalL, 2 * ket.L, 2 * k);
    }
    return n * std::sqrt((2.0L * bra.L + 1.0L) * (2.0L * ket.L + 1.0L)) *
           (bra.cfp.transpose() * weights.asDiagonal() * ket.cfp);
}

/// U(k).U(k) within a block; @p blocks holds all states of f^n.
Matrix scalarProduct(int k, int n, const std::vector<Term> &parents,
                     const std::vector<Block> &blocks, const Block &block)
{
    Matrix sum = Matrix::Zero(block.cfp.cols(), block.cfp.cols());
    for (const Block &other : blocks)
        if (other.twiceS == block.twiceS) {
            const Matrix element = unitTensor(k, n, parents, block, other);
            sum += element * element.transpose();
        }
    return sum / (2.0L * block.L + 1.0L);
}

/// A representation by the eigenvalue of its Casimir operator.
struct Representation
{
    int label;
    int eigenvalue;
};

/// (2l-1) G(R7) = (w1 (w1+5) + w2 (w2+3) + w3 (w3+1))/2 = sum_k=1,3,5 (2k+1) U(k).U(k).
constexpr Representation r7[] = {{0, 0},   {100, 3},  {110, 5},  {111, 6},  {200, 7},
                                 {210, 9}, {211, 10}, {220, 12}, {221, 13}, {222, 15}};
/// 12 G(G2) = u1^2 + u1 u2 + u2^2 + 5 u1 + 4 u2 = 3 (3 U(1).U(1) + 11 U(5).U(5)); in the published
/// order.
constexpr Representation g2[] = {{0, 0},   {10, 6},  {11, 12}, {20, 14}, {21, 21},
                                 {22, 30}, {30, 24}, {31, 32}, {40, 36}};

template <std::size_t size> int positionOf(const Representation (&table)[size], int eigenvalue)
{
    for (std::size_t i = 0; i < size; ++i)
        if (table[i].eigenvalue == eigenvalue)
            return static_cast<int>(i);
    throw std::runtime_error("no representation has this Casimir eigenvalue");
}

/// Turns the states of a block into terms of definite W and U, in the published order.
std::vector<Term> classify(int n, const std::vector<Term> &parents,
                           const std::vector<Block> &blocks, Block &block)
{
    const Matrix u1 = scalarProduct(1, n, parents, blocks, block);
    const Matrix u3 = scalarProduct(3, n, parents, blocks, block);
    const Matrix u5 = scalarProduct(5, n, parents, blocks, block);
    // Both operators at once; the scale keeps their eigenvalues apart.
    constexpr int scale = 38;
    const Matrix casimir =
        scale * (3.0L * u1 + 7.0L * u3 + 11.0L * u5) + 3.0L * (3.0L * u1 + 11.0L * u5);
    const Eigen::SelfAdjointEigenSolver<Matrix> solver(casimir);

    struct Found
    {
        Term term;
        int positionOfU;
        Eigen::Index column;
    };
    std::vector<Found> found;
    for (Eigen::Index k = 0; k < block.cfp.cols(); ++k) {
        const Real value = solver.eigenvalues()(k);
        const auto rounded = static_cast<int>(std::lround(value));
        require(std::abs(value - rounded) < 1e-7, QStringLiteral("states of mixed W or U"));
        const int w = r7[positionOf(r7, rounded / scale)].label;
        const int positionOfU = positionOf(g2, rounded % scale);
        // W = (2^a 1^b 0^c) with a = v/2 - S.
        const int twos = (w / 100 == 2) + (w / 10 % 10 == 2) + (w % 10 == 2);
        found.push_back(
            {{block.twiceS, block.L, 2 * twos + block.twiceS, w, g2[positionOfU].label, 0},
             positionOfU,
             k});
    }
    std::stable_sort(found.begin(), found.end(), [](const Found &a, const Found &b) {
        return std::make_pair(a.term.seniority, a.positionOfU) <
               std::make_pair(b.term.seniority, b.positionOfU);
    });

    const Matrix states = block.cfp * solver.eigenvectors();
    std::vector<Term> terms;
    for (std::size_t i = 0; i < found.size(); ++i) {
        terms.push_back(found[i].term);
        terms.back().ordinal = found.size() > 1 ? static_cast<int>(i) + 1 : 0;
        block.cfp.col(static_cast<Eigen::Index>(i)) = states.col(found[i].column);
    }
    return terms;
}

int indexOf(const std::vector<Term> &terms, const QString &name)
{
    for (std::size_t i = 0; i < terms.size(); ++i)
        if (terms[i].name() == name)
            return static_cast<int>(i);
    throw std::runtime_error(("no term " + name).toStdString());
}

/// Rotates the two states of each pair to the published coefficients.
void fixPairs(Configuration &configuration, const Phases &phases)
{
    for (const Phases::Pair &pair : phases.pairs) {
        if (pair.n != configuration.n)
            continue;
        const int a = indexOf(configuration.terms, pair.a);
        const int b = indexOf(configuration.terms, pair.b);
        Matrix2 found;
        for (int parent = 0; parent < 2; ++parent) {
            const int row = indexOf(configuration.parents, pair.parents[parent]);
            found(0, parent) = configuration.cfp(row, a);
            found(1, parent) = configuration.cfp(row, b);
        }
        const Matrix2 rotation = pair.coefficients * found.inverse();
        require((rotation * rotation.transpose()).isIdentity(tolerance),
                QStringLiteral("the published pair %1, %2 does not fit").arg(pair.a, pair.b));
        // The nearest orthogonal matrix, free of the rounding of the inverse.
        const Eigen::JacobiSVD<Matrix2, Eigen::FullPivHouseholderQRPreconditioner> svd(
            rotation, Eigen::ComputeFullU | Eigen::ComputeFullV);
        const Matrix2 exact = svd.matrixU() * svd.matrixV().transpose();
        const Vector first = configuration.cfp.col(a);
        const Vector second = configuration.cfp.col(b);
        configuration.cfp.col(a) = exact(0, 0) * first + exact(0, 1) * second;
        configuration.cfp.col(b) = exact(1, 0) * first + exact(1, 1) * second;
    }
}

/// Gives each term outside the pairs the published sign.
void fixSigns(Configuration &configuration, const Phases &phases)
{
    for (std::size_t i = 0; i < configuration.terms.size(); ++i) {
        auto state = configuration.cfp.col(static_cast<Eigen::Index>(i));
        state = (state.array().abs() < tolerance).select(0.0L, state);
        const QString name = configuration.terms[i].name();
        const auto known =
            phases.firstParents.constFind(QString::number(configuration.n) + ' ' + name);
        if (known == phases.firstParents.constEnd())
            continue;
        Eigen::Index first = 0;
        while (state(first) == 0.0L)
            ++first;
        require(configuration.parents[static_cast<std::size_t>(first)].name() == known->parent,
                QStringLiteral("the first parent of f%1 %2 is not the published one")
                    .arg(configuration.n)
                    .arg(name));
        if (state(first) * known->sign < 0.0L)
            state = -state;
    }
}

Real signedRoot(const QString &square)
{
    const QStringList parts = square.split(QLatin1Char('/'));
    bool ok = false;
    Real value = parts.at(0).toDouble(&ok);
    if (parts.size() == 2)
        value /= parts.at(1).toDouble();
    require(ok && std::isfinite(value), QStringLiteral("no fraction: ") + square);
    return value < 0.0L ? -std::sqrt(-value) : std::sqrt(value);
}

} // namespace

QString Term::name() const
{
    static const QString letters = QStringLiteral("SPDFGHIKLMNOQ");
    QString text = QString::number(twiceS + 1) + letters.at(L);
    return ordinal > 0 ? text + QString::number(ordinal) : text;
}

Phases readPhases(const QString &fileName)
{
    QFile file(fileName);
    require(file.open(QIODevice::ReadOnly), fileName + ": " + file.errorString());
    Phases phases;
    while (!file.atEnd()) {
        const QString line = QString::fromLatin1(file.readLine()).simplified();
        const QStringList fields = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (fields.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        require(fields.size() == 4 || fields.size() == 9, QStringLiteral("cannot read: ") + line);
        if (fields.size() == 4) {
            phases.firstParents.insert(fields[0] + ' ' + fields[1],
                                       {fields[2], fields[3] == QLatin1String("-") ? -1.0L : 1.0L});
            continue;
        }
        Phases::Pair pair{fields[0].toInt(), fields[1], fields[2], {fields[3], fields[4]}, {}};
        for (int i = 0; i < 4; ++i)
            pair.coefficients(i / 2, i % 2) = signedRoot(fields[5 + i]);
        phases.pairs.append(pair);
    }
    return phases;
}

Configuration closedShell()
{
    return {0, {{0, 0, 0, 0, 0, 0}}, {}, Matrix(0, 1)};
}

Configuration addElectron(const Configuration &configuration, const Phases &phases)
{
    const int n = configuration.n + 1;
    std::vector<Block> blocks;
    for (int twiceS = n; twiceS >= 0; twiceS -= 2)
        for (int L = 0; L <= maximumL; ++L) {
            const Block block = antisymmetricStates(configuration, twiceS, L);
            if (block.cfp.cols() > 0)
                blocks.push_back(block);
        }

    const auto &parents = configuration.terms;
    Configuration result{n, {}, parents, Matrix(static_cast<Eigen::Index>(parents.size()), 0)};
    for (const Block &block : blocks) {
        Block sorted = block;
        const std::vector<Term> terms = classify(n, parents, blocks, sorted);
        result.terms.insert(result.terms.end(), terms.begin(), terms.end());
        result.cfp.conservativeResize(Eigen::NoChange, result.cfp.cols() + sorted.cfp.cols());
        result.cfp.rightCols(sorted.cfp.cols()) = sorted.cfp;
    }
    fixPairs(result, phases);
    fixSigns(result, phases);
    return result;
}

std::array<Matrix, 4> racahCoefficients(const Configuration &configuration)
{
    const int n = configuration.n;
    const auto size = static_cast<Eigen::Index>(configuration.terms.size());
    std::vector<Block> blocks;
    std::vector<Eigen::Index> starts;
    for (Eigen::Index i = 0; i < size; ++i) {
        const Term &term = configuration.terms[static_cast<std::size_t>(i)];
        if (term.ordinal <= 1) {
            blocks.push_back({term.twiceS, term.L, Matrix(configuration.cfp.rows(), 0)});
            starts.push_back(i);
        }
        Matrix &cfp = blocks.back().cfp;
        cfp.conservativeResize(Eigen::NoChange, cfp.cols() + 1);
        cfp.rightCols(1) = configuration.cfp.col(i);
    }

    std::array<Matrix, 4> racah;
    racah.fill(Matrix::Zero(size, size));
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        const Eigen::Index states = blocks[b].cfp.cols();
        // Coefficients g of F0, F2, F4, F6 (small denominators D):
        // g_k = D_k (7^2/2) (3 k 3; 0 0 0)^2 (U(k).U(k) - n/7).
        const std::array<Real, 3> weights{225.0L * 24.5L * 4.0L / 105.0L,
                                          1089.0L * 24.5L * 2.0L / 77.0L,
                                          184041.0L / 25.0L * 24.5L * 100.0L / 3003.0L};
        std::array<Matrix, 4> slater;
        slater[0] = Matrix::Identity(states, states) * (n * (n - 1) / 2);
        for (int k = 2; k <= 6; k += 2) {
            const Matrix product = scalarProduct(k, n, configuration.parents, blocks, blocks[b]);
            slater[static_cast<std::size_t>(k / 2)] =
                weights[static_cast<std::size_t>(k / 2 - 1)] *
                (product - Matrix::Identity(states, states) * n / 7.0L);
        }
        // sum e_i E_i = sum g_k F_k with E0 = F0 - 10 F2 - 33 F4 - 286 F6,
        // E1 = (70 F2 + 231 F4 + 2002 F6)/9, E2 = (F2 - 3 F4 + 7 F6)/9,
        // E3 = (5 F2 + 6 F4 - 91 F6)/3.
        Eigen::Matrix<Real, 3, 3> perF;
        perF << 70.0L / 9.0L, 1.0L / 9.0L, 5.0L / 3.0L, //
            231.0L / 9.0L, -3.0L / 9.0L, 6.0L / 3.0L,   //
            2002.0L / 9.0L, 7.0L / 9.0L, -91.0L / 3.0L;
        const Eigen::Matrix<Real, 3, 3> inverse = perF.inverse();
        const std::array<Real, 3> ofE0{-10.0L, -33.0L, -286.0L};
        racah[0].block(starts[b], starts[b], states, states) = slater[0];
        for (Eigen::Index i = 0; i < 3; ++i)
            for (Eigen::Index k = 0; k < 3; ++k) {
                const auto index = static_cast<std::size_t>(k);
                racah[static_cast<std::size_t>(i) + 1].block(starts[b], starts[b], states,
                                                             states) +=
                    inverse(i, k) * (slater[index + 1] - ofE0[index] * slater[0]);
            }
    }
    return racah;
}

} // namespace parentage
