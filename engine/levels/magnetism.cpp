#include "levels/magnetism_p.h"

#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace magnetism {

namespace {

/// Differences below this count as none, cm^-1.
constexpr double sameEnergy = 1e-6;

/// (p_i - p_j)/(E_j - E_i) of two populations, 1/cm^-1, without loss of digits, from the lower one:
/// p/kT between states of one energy.
double response(double Ei, double Ej, const Eigen::Vector2d &populations, double kT)
{
    const double difference = std::abs(Ej - Ei);
    const double ofLower = Ei <= Ej ? populations(0) : populations(1);
    if (difference < sameEnergy)
        return ofLower / kT;
    return -ofLower * std::expm1(-difference / kT) / difference;
}

/// Abscissas from 0 to 1 and weights of Gauss and Legendre, sum 1.
std::vector<std::pair<double, double>> gaussLegendre(int count)
{
    // Eigenvalues and first components of the Jacobi matrix (G. H. Golub, J. H. Welsch, Math.
    // Comp. 23, 221 (1969)).
    Eigen::MatrixXd jacobi = Eigen::MatrixXd::Zero(count, count);
    for (int i = 1; i < count; ++i)
        jacobi(i, i - 1) = jacobi(i - 1, i) = i / std::sqrt(4.0 * i * i - 1.0);
    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(jacobi);
    std::vector<std::pair<double, double>> points;
    for (int i = 0; i < count; ++i)
        points.emplace_back(0.5 * (1.0 + solver.eigenvalues()(i)),
                            solver.eigenvectors()(0, i) * solver.eigenvectors()(0, i));
    return points;
}

/// The states that a field can make the populated ones, and what the others do to them in second
/// order: sum over those of m_a |j><j| m_b/(E_j - E).
struct FieldProblem
{
    Eigen::VectorXd energies;
    Components moment;
    std::array<std::array<Eigen::MatrixXcd, 3>, 3> ofOthers;
};

FieldProblem makeProblem(const Elements &elements, Eigen::Index count)
{
    FieldProblem problem;
    problem.energies = elements.energies.head(count);
    const Eigen::Index others = elements.energies.size() - count;
    for (std::size_t a = 0; a < 3; ++a)
        problem.moment[a] = elements.ofLowest[a].topLeftCorner(count, count);
    for (std::size_t a = 0; a < 3; ++a)
        for (std::size_t b = 0; b < 3; ++b) {
            Eigen::MatrixXcd &sum = problem.ofOthers[a][b];
            sum = Eigen::MatrixXcd::Zero(count, count);
            for (Eigen::Index i = 0; i < count; ++i)
                for (Eigen::Index k = 0; k < count; ++k) {
                    const double middle = 0.5 * (elements.energies(i) + elements.energies(k));
                    for (Eigen::Index j = count; j < count + others; ++j)
                        sum(i, k) += std::conj(elements.ofLowest[a](j, i)) *
                                     elements.ofLowest[b](j, k) / (elements.energies(j) - middle);
                }
        }
    return problem;
}

/// Mean moment along @p n, Bohr magnetons.
double momentAlong(const FieldProblem &problem, const Eigen::Vector3d &n, double B, double T)
{
    const double zeeman = bohrMagneton * B;
    const Eigen::Index count = problem.energies.size();
    Eigen::MatrixXcd moment = Eigen::MatrixXcd::Zero(count, count);
    Eigen::MatrixXcd second = moment;
    for (int a = 0; a < 3; ++a) {
        moment += n(a) * problem.moment[std::size_t(a)];
        for (int b = 0; b < 3; ++b)
            second += (n(a) * n(b)) * problem.ofOthers[std::size_t(a)][std::size_t(b)];
    }
    Eigen::MatrixXcd hamiltonian = zeeman * moment - (zeeman * zeeman) * second;
    hamiltonian.diagonal() += problem.energies;
    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXcd> solver(hamiltonian);
    const Eigen::MatrixXcd derivative = (2.0 * zeeman) * second - moment;
    double partition = 0.0;
    double sum = 0.0;
    for (Eigen::Index i = 0; i < count; ++i) {
        const double weight =
            std::exp(-(solver.eigenvalues()(i) - solver.eigenvalues()(0)) / (boltzmann * T));
        const Eigen::VectorXcd state = solver.eigenvectors().col(i);
        partition += weight;
        sum += weight * state.dot(derivative * state).real();
    }
    return sum / partition;
}

} // namespace

Components apply(const fieldStates::Basis &basis, const fieldStates::TensorOperator &moment,
                 const Eigen::MatrixXcd &vectors)
{
    // x = (T(-1) - T(1))/sqrt(2), y = i (T(-1) + T(1))/sqrt(2), z = T(0).
    const Eigen::MatrixXcd up = std::sqrt(0.5) * moment.apply(basis, 1, vectors);
    const Eigen::MatrixXcd down = std::sqrt(0.5) * moment.apply(basis, -1, vectors);
    return {down - up, Complex(0.0, 1.0) * (down + up), moment.apply(basis, 0, vectors)};
}

Eigen::Matrix3d susceptibility(const Elements &elements, double T)
{
    const double kT = boltzmann * T;
    const Eigen::VectorXd weights =
        (-(elements.energies.array() - elements.energies(0)) / kT).exp().matrix();
    const Eigen::Index lowest = elements.ofLowest[0].cols();
    Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
    for (Eigen::Index i = 0; i < lowest; ++i)
        for (Eigen::Index j = 0; j < elements.energies.size(); ++j) {
            // Pairs of two lowest states come twice by themselves.
            const double times = j < lowest ? 1.0 : 2.0;
            const double factor = times * response(elements.energies(i), elements.energies(j),
                                                   {weights(i), weights(j)}, kT);
            for (int a = 0; a < 3; ++a)
                for (int b = 0; b < 3; ++b)
                    sum(a, b) += factor * (std::conj(elements.ofLowest[std::size_t(a)](j, i)) *
                                           elements.ofLowest[std::size_t(b)](j, i))
                                              .real();
        }
    return (curieConstant * boltzmann / weights.sum()) * sum;
}

double powderMoment(const Elements &elements, double B, double T)
{
    // What is within reach of temperature and field; the moment of a 4f ion is below 11 mu_B.
    const double reach = 20.0 * boltzmann * T + 200.0 * bohrMagneton * B;
    Eigen::Index count = elements.ofLowest[0].cols();
    while (count > 1 && elements.energies(count - 1) - elements.energies(0) > reach)
        --count;
    const FieldProblem problem = makeProblem(elements, count);
    constexpr int polarPoints = 12;
    constexpr int azimuths = 24;
    double mean = 0.0;
    for (const auto &[cosine, weight] : gaussLegendre(polarPoints))
        for (int i = 0; i < azimuths; ++i) {
            const double phi = 2.0 * M_PI * (i + 0.5) / azimuths;
            const double sine = std::sqrt(1.0 - cosine * cosine);
            mean +=
                weight / azimuths *
                momentAlong(problem, {sine * std::cos(phi), sine * std::sin(phi), cosine}, B, T);
        }
    return mean;
}

} // namespace magnetism
