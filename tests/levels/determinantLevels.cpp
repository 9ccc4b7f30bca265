#include "determinantLevels.h"

#include <LanqorEngine/LanqorWignerSymbols.h>

#include <Eigen/Dense>

#include <array>
#include <bitset>
#include <cmath>
#include <map>

namespace {

constexpr int l = 3;
constexpr unsigned orbitals = 14;

int orbitalM(unsigned orbital)
{
    return static_cast<int>(orbital / 2) - l;
}

/// Twice the spin projection.
int spin(unsigned orbital)
{
    return orbital % 2 == 0 ? 1 : -1;
}

/// c^k(l m, l m') of E. U. Condon and G. H. Shortley, The Theory of Atomic Spectra (1935).
double gaunt(int k, int m, int mp)
{
    using W = LanqorWignerSymbols;
    return (m % 2 == 0 ? 1.0 : -1.0) * (2 * l + 1) * W::calcThreeJSymbol(l, k, l, 0, 0, 0) *
           W::calcThreeJSymbol(l, k, l, -m, m - mp, mp);
}

struct Interaction
{
    double oneBody[orbitals][orbitals] = {};
    /// <a b|g|c d>, electron 1 from c to a and electron 2 from d to b.
    std::vector<double> twoBody = std::vector<double>(orbitals * orbitals * orbitals * orbitals);

    double &pair(unsigned a, unsigned b, unsigned c, unsigned d)
    {
        return twoBody[((a * orbitals + b) * orbitals + c) * orbitals + d];
    }

    Interaction(const std::array<double, 3> &slater, double zeta)
    {
        for (unsigned a = 0; a < orbitals; ++a)
            for (unsigned c = 0; c < orbitals; ++c) {
                const int ma = orbitalM(a);
                const int mc = orbitalM(c);
                if (a == c)
                    oneBody[a][c] = zeta * 0.5 * ma * spin(a);
                else if (2 * ma + spin(a) == 2 * mc + spin(c)) // l+ s- and l- s+
                    oneBody[a][c] = zeta * 0.5 * std::sqrt(l * (l + 1.0) - ma * mc);
                for (unsigned b = 0; b < orbitals; ++b)
                    for (unsigned d = 0; d < orbitals; ++d)
                        if (spin(a) == spin(c) && spin(b) == spin(d) &&
                            ma + orbitalM(b) == mc + orbitalM(d))
                            for (int k = 2; k <= 6; k += 2)
                                pair(a, b, c, d) += slater[static_cast<std::size_t>(k / 2 - 1)] *
                                                    gaunt(k, ma, mc) *
                                                    gaunt(k, orbitalM(d), orbitalM(b));
            }
    }
};

/// Sign of removing (or adding) an electron: the number of occupied orbitals before it.
double sign(unsigned determinant, unsigned orbital)
{
    return std::bitset<orbitals>(determinant & ((1u << orbital) - 1u)).count() % 2 == 0 ? 1.0
                                                                                        : -1.0;
}

bool holds(unsigned determinant, unsigned orbital)
{
    return (determinant >> orbital & 1u) != 0;
}

} // namespace

std::vector<double> determinantLevels(int n, double F2, double F4, double F6, double zeta)
{
    Interaction interaction({225.0 * F2, 1089.0 * F4, 184041.0 / 25.0 * F6}, zeta);
    std::map<unsigned, Eigen::Index> basis;
    for (unsigned determinant = 0; determinant < (1u << orbitals); ++determinant) {
        int twiceM = 0;
        for (unsigned a = 0; a < orbitals; ++a)
            twiceM += holds(determinant, a) ? 2 * orbitalM(a) + spin(a) : 0;
        if (static_cast<int>(std::bitset<orbitals>(determinant).count()) == n && twiceM == n % 2)
            basis.emplace(determinant, static_cast<Eigen::Index>(basis.size()));
    }

    const auto size = static_cast<Eigen::Index>(basis.size());
    Eigen::MatrixXd h = Eigen::MatrixXd::Zero(size, size);
    for (const auto &[ket, column] : basis)
        for (unsigned c = 0; c < orbitals; ++c) {
            if (!holds(ket, c))
                continue;
            const unsigned without = ket & ~(1u << c);
            for (unsigned a = 0; a < orbitals; ++a)
                if (!holds(without, a) && interaction.oneBody[a][c] != 0.0)
                    h(basis.at(without | 1u << a), column) +=
                        sign(ket, c) * sign(without, a) * interaction.oneBody[a][c];
            for (unsigned d = 0; d < c; ++d) {
                if (!holds(without, d))
                    continue;
                // sum over a > b of a+ b+ d c (<ab|cd> - <ab|dc>)
                const unsigned core = without & ~(1u << d);
                for (unsigned b = 0; b < orbitals; ++b)
                    for (unsigned a = b + 1; a < orbitals && !holds(core, b); ++a) {
                        const double element =
                            interaction.pair(a, b, c, d) - interaction.pair(a, b, d, c);
                        if (holds(core, a) || element == 0.0)
                            continue;
                        const unsigned half = core | 1u << b;
                        h(basis.at(half | 1u << a), column) += sign(ket, c) * sign(without, d) *
                                                               sign(core, b) * sign(half, a) *
                                                               element;
                    }
            }
        }

    const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(h, Eigen::EigenvaluesOnly);
    std::vector<double> energies;
    for (Eigen::Index i = 0; i < size; ++i)
        energies.push_back(solver.eigenvalues()(i) - solver.eigenvalues()(0));
    return energies;
}
