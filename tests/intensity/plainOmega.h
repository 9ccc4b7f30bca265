#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/CoordSPH.h>

#include <QVector>

#include <cmath>
#include <complex>

/// Omega(lambda) by the sums of the model as they are written, every harmonic, power and
/// overlap evaluated anew in every term: slow, and independent of the library's kernel.
namespace plainOmega {

/// Orthonormal, with the Condon-Shortley phase; m >= 0.
inline std::complex<double> harmonic(int l, int m, const CoordSPH &atom)
{
    const auto degree = static_cast<unsigned>(l);
    const auto order = static_cast<unsigned>(m);
    return std::sph_legendre(degree, order, atom.theta * M_PI / 180.0) *
           std::polar(1.0, m * atom.phi * M_PI / 180.0);
}

/// Values of the model for Eu3+, in the order of the ranks.
inline double radial(int k)
{
    const double a0 = 5.2917721092e-9;
    const double inPowers[] = {0.9175, 2.02, 9.039, 110.03237};
    return inPowers[k / 2 - 1] * std::pow(a0, k);
}

inline double theta(int t, int lambda)
{
    const double below[] = {-0.17, 0.18, -0.24}; // t = lambda - 1
    const double above[] = {0.345, -0.24, 0.24}; // t = lambda + 1
    return t < lambda ? below[lambda / 2 - 1] : above[lambda / 2 - 1];
}

/// Shortest distance from the ion, the first of the atoms.
inline double nearest(const QVector<CoordSPH> &atoms)
{
    double minimum = 1e4;
    for (int j = 1; j < atoms.size(); ++j)
        minimum = std::min(minimum, atoms.at(j).r);
    return minimum;
}

inline double rho(const CoordSPH &atom, double minimum)
{
    return 0.05 * std::pow(minimum / atom.r, 3.5);
}

inline double beta(const CoordSPH &atom, double minimum)
{
    const double overlap = rho(atom, minimum);
    if (atom.label == QLatin1String("O") || atom.label == QLatin1String("F"))
        return 1.0 / (1.0 + overlap);
    if (atom.label == QLatin1String("N") || atom.label == QLatin1String("Cl"))
        return 1.0 / (1.0 - overlap);
    return 1.0;
}

/// Real weight of conj(Y(t,p)) of an atom in B(lambda,t,p), of both mechanisms.
struct Weights
{
    double ed = 0.0;
    double dc = 0.0;
};

inline Weights weights(int lambda, int t, const CoordSPH &atom, double minimum, double g,
                       double alpha)
{
    const double e2 = 2.307077352370616e-19;
    const double deltaE = -2.383392e-11;
    const double sigma[] = {0.6, 0.139, 0.1};
    const double c[] = {-1.366, 1.128, -1.2774};
    const double common = std::sqrt(4.0 * M_PI / (2 * t + 1)) / std::pow(atom.r * 1e-8, t + 1);
    Weights result;
    result.ed = 2.0 / deltaE * radial(t + 1) * theta(t, lambda) * e2 * rho(atom, minimum) *
                std::pow(2.0 * beta(atom, minimum), t + 1) * g * common;
    if (t == lambda + 1)
        result.dc = -std::sqrt((lambda + 1.0) * (2 * lambda + 3) / (2 * lambda + 1)) *
                    radial(lambda) * (1.0 - sigma[lambda / 2 - 1]) * c[lambda / 2 - 1] * alpha *
                    common;
    return result;
}

struct Result
{
    ByRank total;
    ByRank ed;
    ByRank dc;
};

/// @p atoms from the ion on; g and alpha (cm^3) by atom number.
inline Result omega(const QVector<CoordSPH> &atoms, const QVector<double> &g,
                    const QVector<double> &alpha)
{
    const double minimum = nearest(atoms);
    Result result;
    for (int lambda = 2; lambda <= 6; lambda += 2) {
        for (int t = lambda - 1; t <= lambda + 1; t += 2) {
            for (int p = -t; p <= t; ++p) {
                std::complex<double> ed;
                std::complex<double> dc;
                for (int j = 1; j < atoms.size(); ++j) {
                    const Weights w =
                        weights(lambda, t, atoms.at(j), minimum, g.at(j + 1), alpha.at(j + 1));
                    const std::complex<double> y =
                        p >= 0 ? std::conj(harmonic(t, p, atoms.at(j)))
                               : (p % 2 ? -1.0 : 1.0) * harmonic(t, -p, atoms.at(j));
                    ed += w.ed * y;
                    dc += w.dc * y;
                }
                const double factor = (2 * lambda + 1.0) / (2 * t + 1);
                result.ed[lambda] += factor * std::norm(ed);
                result.dc[lambda] += factor * std::norm(dc);
                result.total[lambda] += factor * std::norm(ed + dc);
            }
        }
    }
    return result;
}

/// A pair's part of Omega(lambda) and the sum of its absolute terms.
struct PairTerm
{
    double value = 0.0;
    double absolute = 0.0;
};

/// The same sums without harmonics: by the addition theorem the sum over p is a Legendre
/// polynomial of the angle between atoms @p i and @p j at the ion.
inline PairTerm legendreTerm(const QVector<CoordSPH> &atoms, const QVector<double> &g,
                             const QVector<double> &alpha, int lambda, int i, int j)
{
    const CoordSPH &a = atoms.at(i - 1);
    const CoordSPH &b = atoms.at(j - 1);
    const double rad = M_PI / 180.0;
    const double cosine =
        std::cos(a.theta * rad) * std::cos(b.theta * rad) +
        std::sin(a.theta * rad) * std::sin(b.theta * rad) * std::cos((a.phi - b.phi) * rad);
    PairTerm term;
    for (int t = lambda - 1; t <= lambda + 1; t += 2) {
        const Weights ofA = weights(lambda, t, a, nearest(atoms), g.at(i), alpha.at(i));
        const Weights ofB = weights(lambda, t, b, nearest(atoms), g.at(j), alpha.at(j));
        const double part = (2 * lambda + 1.0) / (4.0 * M_PI) * (ofA.ed + ofA.dc) *
                            (ofB.ed + ofB.dc) * std::legendre(static_cast<unsigned>(t), cosine);
        term.value += part;
        term.absolute += std::abs(part);
    }
    return term;
}

} // namespace plainOmega
