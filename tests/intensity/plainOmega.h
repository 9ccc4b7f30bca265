#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/CoordSPH.h>

#include <QVector>

#include <cmath>
#include <complex>

/// Omega(lambda) as a sum over pairs of atoms, every power and overlap evaluated anew in every
/// term: slow, without harmonics, and independent of the library's kernel.
namespace plainOmega {

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

/// Weight of conj(Y(t,p)) of an atom in B(lambda,t,p), of both mechanisms.
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

/// A part of Omega(lambda), by all, by forced electric dipole and by dynamic coupling, and the sum
/// of the absolute terms of the first.
struct Term
{
    double value = 0.0;
    double ed = 0.0;
    double dc = 0.0;
    double absolute = 0.0;
};

/// That of a pair: by the addition theorem the sum over p is a Legendre polynomial of the angle
/// between atoms @p i and @p j at the ion. @p atoms from the ion on; g and alpha (cm^3) by atom
/// number.
inline Term pairTerm(const QVector<CoordSPH> &atoms, const QVector<double> &g,
                     const QVector<double> &alpha, int lambda, int i, int j)
{
    const CoordSPH &a = atoms.at(i - 1);
    const CoordSPH &b = atoms.at(j - 1);
    const double rad = M_PI / 180.0;
    const double cosine =
        std::cos(a.theta * rad) * std::cos(b.theta * rad) +
        std::sin(a.theta * rad) * std::sin(b.theta * rad) * std::cos((a.phi - b.phi) * rad);
    Term term;
    for (int t = lambda - 1; t <= lambda + 1; t += 2) {
        const Weights ofA = weights(lambda, t, a, nearest(atoms), g.at(i), alpha.at(i));
        const Weights ofB = weights(lambda, t, b, nearest(atoms), g.at(j), alpha.at(j));
        const double angular =
            (2 * lambda + 1.0) / (4.0 * M_PI) * std::legendre(static_cast<unsigned>(t), cosine);
        const double part = angular * (ofA.ed + ofA.dc) * (ofB.ed + ofB.dc);
        term.value += part;
        term.ed += angular * ofA.ed * ofB.ed;
        term.dc += angular * ofA.dc * ofB.dc;
        term.absolute += std::abs(part);
    }
    return term;
}

struct Result
{
    ByRank total;
    ByRank ed;
    ByRank dc;
    ByRank absolute;
};

inline Result omega(const QVector<CoordSPH> &atoms, const QVector<double> &g,
                    const QVector<double> &alpha)
{
    Result result;
    for (const int lambda : {2, 4, 6})
        for (int i = 2; i <= atoms.size(); ++i)
            for (int j = 2; j <= atoms.size(); ++j) {
                const Term term = pairTerm(atoms, g, alpha, lambda, i, j);
                result.total[lambda] += term.value;
                result.ed[lambda] += term.ed;
                result.dc[lambda] += term.dc;
                result.absolute[lambda] += term.absolute;
            }
    return result;
}

} // namespace plainOmega
