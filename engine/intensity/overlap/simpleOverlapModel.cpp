#include "overlap/simpleOverlapModel_p.h"

#include "core/angles_p.h"
#include "core/parity_p.h"
#include "core/physicalConstants_p.h"
#include "overlap/europium_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace simpleOverlapModel {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("simpleOverlapModel", text);
}

/// Ranks of the lattice sums.
constexpr int oddRanks[] = {1, 3, 5, 7};

constexpr std::size_t triangle(int l, int m)
{
    return static_cast<std::size_t>(l * (l + 1) / 2 + m);
}

/// Y(l,m) at phi = 0, m >= 0, by the recurrence in l of the normalised Legendre functions.
double normalisedLegendre(int l, int m, double cosTheta, double sinTheta)
{
    // Harmonics are exact to the last digit; lattice sums have the model's own 4 pi.
    constexpr double inverseFourPi = 1.0 / (4.0 * 3.141592653589793);
    double square = (2 * m + 1) * inverseFourPi;
    double power = parity(m);
    for (int k = 1; k <= m; ++k) {
        square *= (2 * k - 1) / (2.0 * k);
        power *= sinTheta;
    }
    double current = std::sqrt(square) * power; // Y(m,m)
    double before = 0.0;
    for (int n = m + 1; n <= l; ++n) {
        const double a = std::sqrt((4.0 * n * n - 1.0) / (n * n - m * m));
        const int k = n - 1;
        const double b = std::sqrt((k * k - m * m) / (4.0 * k * k - 1.0));
        const double next = a * (cosTheta * current - b * before);
        before = current;
        current = next;
    }
    return current;
}

double integerPower(double base, int exponent)
{
    double result = 1.0;
    for (int i = 0; i < exponent; ++i)
        result *= base;
    return result;
}

double sqrtFourPiOver(int t)
{
    return std::sqrt(lanqor::fourPi / (2 * t + 1));
}

/// -sqrt((lambda+1)(2 lambda+3)/(2 lambda+1)) r(lambda) (1 - sigma) C(lambda), t = lambda + 1.
double dynamicFactor(int lambda, int t)
{
    if (t != lambda + 1)
        return 0.0;
    return -std::sqrt((lambda + 1.0) * (2 * lambda + 3) / (2 * lambda + 1)) *
           europium::radialR[lambda] * (1.0 - europium::shielding[lambda]) *
           europium::reducedC[lambda];
}

/// (2/dE) r(t+1) theta(t, lambda).
double electricFactor(int lambda, int t)
{
    const double radial = t == 7 ? europium::radialR8 : europium::radialR[t + 1];
    return 2.0 / europium::deltaE * radial * europium::tet(t, lambda);
}

} // namespace

Complex sphericalHarmonic(int l, int m, double theta, double phi)
{
    const int order = std::abs(m);
    const double legendre = normalisedLegendre(l, order, std::cos(theta), std::sin(theta));
    const Complex positive = legendre * Complex(std::cos(order * phi), std::sin(order * phi));
    return m >= 0 ? positive : parity(m) * std::conj(positive);
}

double overlap(double ro0, double minDistance, double distance)
{
    return ro0 * std::pow(minDistance / distance, overlapExponent);
}

double betaFactor(const QString &symbol, double rho, double previous)
{
    if (symbol == QLatin1String("O") || symbol == QLatin1String("F"))
        return 1.0 / (1.0 + rho);
    if (symbol == QLatin1String("N") || symbol == QLatin1String("Cl"))
        return 1.0 / (1.0 - rho);
    return previous;
}

QString sphereError(const QVector<CoordSPH> &geometry, int coordNumber)
{
    if (coordNumber < 1)
        return tr("No atom is coordinated to the ion.");
    if (coordNumber >= geometry.size())
        return tr("The coordination number is %1, but the geometry has %2 atoms besides the ion.")
            .arg(QString::number(coordNumber), QString::number(std::max(0, geometry.size() - 1)));
    for (int j = 2; j <= coordNumber + 1; ++j) {
        const CoordSPH &atom = geometry.at(j - 1);
        if (!(atom.r >= smallestDistance))
            return tr("Atom %1 (%2) lies on the ion: their distance is %3 Angstrom.")
                .arg(QString::number(j), atom.label, QString::number(atom.r));
    }
    return QString();
}

Complex LatticeSums::BEd(int lambda, int t, int p) const
{
    return electricFactor(lambda, t) * gamma(t, p);
}

Complex LatticeSums::BDc(int lambda, int t, int p) const
{
    return dynamicFactor(lambda, t) * GAMMA(t, p);
}

IntensityParameters intensityParameters(const LatticeSums &sums)
{
    IntensityParameters omega;
    for (int lambda = 2; lambda <= 6; lambda += 2) {
        double electric = 0.0;
        double dynamic = 0.0;
        double total = 0.0;
        for (int t = lambda - 1; t <= lambda + 1; t += 2) {
            for (int p = 0; p <= t; ++p) {
                const Complex ed = sums.BEd(lambda, t, p);
                const Complex dc = sums.BDc(lambda, t, p);
                const double weight = (p == 0 ? 1.0 : 2.0) / (2 * t + 1);
                electric += weight * std::norm(ed);
                dynamic += weight * std::norm(dc);
                total += weight * std::norm(ed + dc);
            }
        }
        omega.electricDipole[lambda] = (2 * lambda + 1) * electric;
        omega.dynamicCoupling[lambda] = (2 * lambda + 1) * dynamic;
        omega.total[lambda] = (2 * lambda + 1) * total;
    }
    return omega;
}

CoordinationSphere::CoordinationSphere(const QVector<CoordSPH> &geometry, int coordNumber)
{
    constexpr double startOfMinimum = 10000.0; // Angstrom, beyond any coordination sphere
    shortest = startOfMinimum;
    for (int j = 2; j <= coordNumber + 1; ++j)
        shortest = std::min(shortest, geometry.at(j - 1).r);
    atoms.reserve(static_cast<std::size_t>(coordNumber));
    for (int j = 2; j <= coordNumber + 1; ++j)
        atoms.push_back(makeAtom(geometry.at(j - 1), shortest));
}

CoordinationSphere::Atom CoordinationSphere::makeAtom(const CoordSPH &position, double minDistance)
{
    Atom atom;
    atom.label = position.label;
    atom.distance = position.r;
    atom.rho = overlap(nearestOverlap, minDistance, position.r);
    atom.beta = betaFactor(position.label, atom.rho);

    const double distanceCm = position.r * lanqor::cmPerAngstrom;
    const double theta = radiansFromDegrees(position.theta);
    const double phi = radiansFromDegrees(position.phi);
    for (int l = 0; l <= maximumRank; ++l) {
        const auto rank = static_cast<std::size_t>(l);
        atom.inversePower[rank] = 1.0 / integerPower(distanceCm, l + 1);
        atom.electric[rank] =
            lanqor::elementaryChargeSquared * atom.rho * integerPower(2.0 * atom.beta, l + 1);
        for (int m = 0; m <= l; ++m)
            atom.harmonics[triangle(l, m)] = sphericalHarmonic(l, m, theta, phi);
    }
    for (const int t : oddRanks) {
        for (int p = 0; p <= t; ++p)
            atom.lattice[LatticeSums::index(t, p)] =
                sqrtFourPiOver(t) * atom.inversePower[static_cast<std::size_t>(t)] *
                std::conj(atom.harmonics[triangle(t, p)]);
    }
    return atom;
}

Complex CoordinationSphere::harmonic(int l, int m, int j) const
{
    const Complex positive = atom(j).harmonics[triangle(l, std::abs(m))];
    return m >= 0 ? positive : parity(m) * std::conj(positive);
}

Complex CoordinationSphere::lattice(int t, int p, int j) const
{
    return atom(j).lattice[LatticeSums::index(t, p)];
}

Complex CoordinationSphere::gamma(int t, int p, int j, double g) const
{
    return g * atom(j).electric[static_cast<std::size_t>(t)] * lattice(t, p, j);
}

Complex CoordinationSphere::GAMMA(int t, int p, int j, double alpha) const
{
    return alpha * lattice(t, p, j);
}

double CoordinationSphere::K(int lambda, int t, int j, double g, double alpha) const
{
    return electricFactor(lambda, t) * atom(j).electric[static_cast<std::size_t>(t)] * g +
           dynamicFactor(lambda, t) * alpha;
}

LatticeSums CoordinationSphere::latticeSums(const double *g, const double *alpha) const
{
    LatticeSums sums;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        const Atom &atom = atoms[i];
        for (const int t : oddRanks) {
            const double electric = atom.electric[static_cast<std::size_t>(t)] * g[i + 2];
            const std::size_t end = LatticeSums::index(t, t);
            for (std::size_t n = LatticeSums::index(t, 0); n <= end; ++n) {
                sums.electric[n] += electric * atom.lattice[n];
                sums.dynamic[n] += alpha[i + 2] * atom.lattice[n];
            }
        }
    }
    return sums;
}

Complex CoordinationSphere::crystalField(int k, int q, int j, double g, double ro0) const
{
    const auto rank = static_cast<std::size_t>(k);
    const double rhoOfAtom = overlap(ro0, shortest, atom(j).distance);
    const double betaOfAtom = betaFactor(atom(j).label, rhoOfAtom);
    const double radial = europium::radialR[k] * lanqor::elementaryChargeSquared * g * rhoOfAtom *
                          integerPower(2.0 * betaOfAtom, k + 1) * atom(j).inversePower[rank];
    return lanqor::wavenumberPerErg * radial * sqrtFourPiOver(k) * std::conj(harmonic(k, q, j));
}

} // namespace simpleOverlapModel
