#pragma once

#include <LanqorEngine/ByRank.h>
#include <LanqorEngine/CoordSPH.h>

#include <QVector>

#include <array>
#include <complex>
#include <vector>

/// Kernel of the simple overlap model: O. L. Malta, Chem. Phys. Lett. 87, 27 (1982) and 88, 353
/// (1982); its use for intensities: Malta et al., J. Lumin. 75, 255 (1997).
///
/// Atoms are numbered as in the geometry: 1 is the ion, 2 to N+1 are the coordinated atoms.
/// Arrays of charge factors g (dimensionless) and polarisabilities alpha (cm^3) are indexed by
/// this number. Distances are in Angstrom outside the formulas and in cm inside.
namespace simpleOverlapModel {

using Complex = std::complex<double>;

/// Highest rank of the harmonics in use.
constexpr int maximumRank = 7;

/// Overlap of the nearest coordinated atom, and the power of the distance by which the others
/// have less: Malta et al. (1997).
constexpr double nearestOverlap = 0.05;
constexpr double overlapExponent = 3.5;

/// Below this distance, Angstrom, an atom counts as lying on the ion: far below any bond.
constexpr double smallestDistance = 0.1;

/// Spherical harmonic Y(l,m), orthonormal, with the Condon-Shortley phase; l up to maximumRank,
/// m from -l to l, angles in radians.
Complex sphericalHarmonic(int l, int m, double theta, double phi);

/// rho = ro0 (Rmin/R)^3.5.
double overlap(double ro0, double minDistance, double distance);

/// The overlap charge lies at R/(2 beta) from the ion: beta = 1/(1 + rho) for O and F (beyond the
/// middle of the bond), 1/(1 - rho) for N and Cl (short of it). The signs differ on purpose.
/// Other elements keep @p previous.
double betaFactor(const QString &symbol, double rho, double previous = 1.0);

/// Why atoms 2 to @p coordNumber + 1 of the geometry (atom 1 first) are no coordination sphere:
/// there are none or too few, or one lies on the ion. Empty when they are one.
QString sphereError(const QVector<CoordSPH> &geometry, int coordNumber);

/// Lattice sums over the coordinated atoms for one set of g and alpha.
class LatticeSums
{
public:
    /// Sum over j of gamma(t,p,j); t = 1, 3, 5, 7 and p = 0 to t.
    Complex gamma(int t, int p) const { return electric[index(t, p)]; }
    /// Sum over j of GAMMA(t,p,j).
    Complex GAMMA(int t, int p) const { return dynamic[index(t, p)]; }

    /// Amplitudes of the two mechanisms, B(lambda,t,p), for lambda = 2, 4, 6 and
    /// t = lambda - 1, lambda + 1; that of dynamic coupling is 0 for t = lambda - 1.
    Complex BEd(int lambda, int t, int p) const;
    Complex BDc(int lambda, int t, int p) const;

    static constexpr int size = 2 + 4 + 6 + 8;
    /// Place of (t,p) among all sums.
    static constexpr std::size_t index(int t, int p)
    {
        return static_cast<std::size_t>((t * t - 1) / 4 + p);
    }

private:
    friend class CoordinationSphere;
    std::array<Complex, size> electric{};
    std::array<Complex, size> dynamic{};
};

/// Omega(lambda), cm^2, lambda = 2, 4, 6.
struct IntensityParameters
{
    ByRank total;
    ByRank electricDipole;
    ByRank dynamicCoupling;
};

/// Omega(lambda) = (2 lambda + 1) sum over t and p of |B(lambda,t,p)|^2/(2t+1), the terms of -p
/// being equal to those of +p.
IntensityParameters intensityParameters(const LatticeSums &sums);

/// The coordinated atoms about the ion, with everything that depends on the geometry alone:
/// harmonics, powers of the distances, overlaps and beta factors. Built once per geometry, so
/// that a trial of g and alpha costs only their lattice sums.
class CoordinationSphere
{
public:
    /// The geometry must have no sphereError().
    CoordinationSphere(const QVector<CoordSPH> &geometry, int coordNumber);

    int coordNumber() const { return static_cast<int>(atoms.size()); }
    /// Shortest distance of a coordinated atom, Angstrom (10000 when all are farther).
    double minDistance() const { return shortest; }
    double distance(int j) const { return atom(j).distance; } ///< Angstrom
    double rho(int j) const { return atom(j).rho; }
    double beta(int j) const { return atom(j).beta; }

    /// Y(l,m) at atom j, l up to maximumRank, m from -l to l.
    Complex harmonic(int l, int m, int j) const;

    /// Electric term of atom j, erg cm^-t, t = 1, 3, 5, 7 and p = 0 to t:
    ///     e^2 sqrt(4 pi/(2t+1)) rho_j (2 beta_j)^(t+1) g_j conj(Y(t,p)) / R_j^(t+1)
    Complex gamma(int t, int p, int j, double g) const;
    /// Dynamic term of atom j, cm^(2-t): sqrt(4 pi/(2t+1)) alpha_j conj(Y(t,p)) / R_j^(t+1).
    Complex GAMMA(int t, int p, int j, double alpha) const;
    /// Sum of both mechanisms of atom j in B(lambda,t,p), the geometry left out:
    ///     B(lambda,t,p) = sum over j of K(lambda,t,j) GAMMA(t,p,j) at alpha = 1
    double K(int lambda, int t, int j, double g, double alpha) const;

    /// Sums of gamma and GAMMA; @p g and @p alpha are indexed by atom number.
    LatticeSums latticeSums(const double *g, const double *alpha) const;

    /// Even-rank crystal-field parameter of atom j, cm^-1, k = 2, 4, 6, q = -k to k:
    ///     B(k,q) = r(k) e^2 g_j rho_j (2 beta_j)^(k+1) sqrt(4 pi/(2k+1)) conj(Y(k,q)) / R_j^(k+1)
    /// with rho_j = ro0 (Rmin/R_j)^3.5 and beta_j from this overlap.
    Complex crystalField(int k, int q, int j, double g, double ro0) const;

private:
    struct Atom
    {
        QString label;
        double distance = 0.0; // Angstrom
        double rho = 0.0;
        double beta = 1.0;
        std::array<double, maximumRank + 1> inversePower{}; // 1/R^(l+1), cm^-(l+1)
        std::array<double, maximumRank + 1> electric{};     // e^2 rho (2 beta)^(t+1)
        std::array<Complex, (maximumRank + 1) * (maximumRank + 2) / 2> harmonics{}; // m >= 0
        // sqrt(4 pi/(2t+1)) conj(Y(t,p)) / R^(t+1) in the order of the lattice sums
        std::array<Complex, LatticeSums::size> lattice{};
    };
    const Atom &atom(int j) const { return atoms[static_cast<std::size_t>(j - 2)]; }
    Complex lattice(int t, int p, int j) const;
    static Atom makeAtom(const CoordSPH &position, double minDistance);

    std::vector<Atom> atoms;
    double shortest = 0.0;
};

} // namespace simpleOverlapModel
