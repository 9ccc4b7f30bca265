#include "fitting/juddOfelt_p.h"

#include "core/physicalConstants_p.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>

namespace juddOfelt {

namespace {

using lanqor::lightSpeed;
using lanqor::nmPerCm;
using lanqor::absorption::avogadro;
using lanqor::absorption::electronCharge;
using lanqor::absorption::electronMass;
using lanqor::absorption::planck;

constexpr double pi = 3.14159265358979323846;
constexpr double nmPerMicrometre = 1000.0;

double square(double x)
{
    return x * x;
}

/// 8 pi^2 m c sigma/(3h(2J+1)), cm^-2.
double absorptionFactor(double wavenumber, double J)
{
    return 8.0 * pi * pi * electronMass * lightSpeed * wavenumber /
           (3.0 * planck * (2.0 * J + 1.0));
}

/// 64 pi^4 e^2 sigma^3/(3h(2J+1)), s^-1 cm^-2.
double emissionFactor(double wavenumber, double J)
{
    return 64.0 * square(square(pi)) * square(electronCharge) * wavenumber * wavenumber *
           wavenumber / (3.0 * planck * (2.0 * J + 1.0));
}

/// (h/(4 pi m c))^2, cm^2: the square of L + g_s S as a line strength by e^2.
double magneticStrengthUnit()
{
    return square(planck / (4.0 * pi * electronMass * lightSpeed));
}

double interpolated(const RefractiveIndexModel &model, double wavelength)
{
    const QVector<double> &x = model.wavelengths;
    if (x.isEmpty() || x.size() != model.indices.size())
        return std::nan("");
    const auto above = std::lower_bound(x.begin(), x.end(), wavelength);
    if (above == x.begin())
        return model.indices.first();
    if (above == x.end())
        return model.indices.last();
    const int i = int(above - x.begin());
    const double share = (wavelength - x.at(i - 1)) / (x.at(i) - x.at(i - 1));
    return model.indices.at(i - 1) + share * (model.indices.at(i) - model.indices.at(i - 1));
}

/// @p l  micrometre
double sellmeier(const QVector<double> &coefficients, double l)
{
    double sum = coefficients.value(0);
    for (int i = 1; i + 1 < coefficients.size(); i += 2)
        sum += coefficients.at(i) * l * l / (l * l - coefficients.at(i + 1));
    return std::sqrt(sum);
}

double cauchy(const QVector<double> &c, double l)
{
    const double l2 = l * l;
    return c.value(0) + c.value(1) / l2 + c.value(2) / (l2 * l2) + c.value(3) * l2 +
           c.value(4) * l2 * l2;
}

} // namespace

double refractiveIndex(const RefractiveIndexModel &model, double wavenumber)
{
    constexpr double shortest = 0.2; // micrometre
    constexpr double longest = 10.0;
    const double wavelength = nmPerCm / wavenumber;
    const double l = std::clamp(wavelength / nmPerMicrometre, shortest, longest);
    switch (model.kind) {
    case RefractiveIndexModel::Kind::Constant:
        return model.coefficients.value(0);
    case RefractiveIndexModel::Kind::Sellmeier:
        return sellmeier(model.coefficients, l);
    case RefractiveIndexModel::Kind::Cauchy:
        return cauchy(model.coefficients, l);
    case RefractiveIndexModel::Kind::Table:
        break;
    }
    return interpolated(model, wavelength);
}

double wavenumberInVacuum(double wavelengthInAir)
{
    double wavelength = wavelengthInAir;
    for (int i = 0; i < 3; ++i) { // the formula takes the vacuum wavenumber
        const double s2 = square(nmPerMicrometre / wavelength);
        const double refraction =
            1e-8 * (8060.51 + 2480990.0 / (132.274 - s2) + 17455.7 / (39.32957 - s2));
        wavelength = wavelengthInAir * (1.0 + refraction);
    }
    return nmPerCm / wavelength;
}

double strengthFactor(double wavenumber, double n, double J)
{
    return absorptionFactor(wavenumber, J) * square(n * n + 2.0) / (9.0 * n);
}

double magneticOscillatorStrength(double wavenumber, double n, double J, double squareOfElement)
{
    return absorptionFactor(wavenumber, J) * n * magneticStrengthUnit() * squareOfElement;
}

double oscillatorByCrossSection()
{
    return electronMass * square(lightSpeed) / (pi * square(electronCharge));
}

double oscillatorByAbsorption()
{
    constexpr double cm3PerLitre = 1000.0;
    return oscillatorByCrossSection() * std::log(10.0) * cm3PerLitre / avogadro;
}

double electricRate(double wavenumber, double n, double J, double S)
{
    return emissionFactor(wavenumber, J) * n * square(n * n + 2.0) / 9.0 * S;
}

double magneticRate(double wavenumber, double n, double J, double squareOfElement)
{
    return emissionFactor(wavenumber, J) * n * n * n * magneticStrengthUnit() * squareOfElement;
}

Solution solve(const Eigen::MatrixXd &U, const Eigen::VectorXd &S, const Eigen::VectorXd &w)
{
    constexpr double threshold = 1e-10; // of singular values by the largest: rounding
    Solution solution;
    const Eigen::Index unknowns = U.cols();
    const Eigen::MatrixXd A = w.asDiagonal() * U;
    Eigen::JacobiSVD<Eigen::MatrixXd> svd(A, Eigen::ComputeThinU | Eigen::ComputeThinV);
    svd.setThreshold(threshold);
    solution.isDetermined = svd.rank() == unknowns;
    if (!solution.isDetermined)
        return solution;
    const Eigen::VectorXd x = svd.solve(w.cwiseProduct(S));
    solution.omega.head(unknowns) = x;
    solution.misfit = (A * x - w.cwiseProduct(S)).squaredNorm();
    const Eigen::Index freedom = U.rows() - unknowns;
    if (freedom > 0) {
        const Eigen::MatrixXd scaled =
            svd.matrixV() * svd.singularValues().cwiseInverse().asDiagonal();
        solution.covariance.topLeftCorner(unknowns, unknowns) =
            scaled * scaled.transpose() * (solution.misfit / double(freedom));
    }
    return solution;
}

Solution solveNonNegative(const Eigen::MatrixXd &U, const Eigen::VectorXd &S,
                          const Eigen::VectorXd &w)
{
    Solution best;
    best.misfit = w.cwiseProduct(S).squaredNorm(); // all held at 0
    best.isDetermined = true;
    for (int choice = 1; choice < 8; ++choice) {
        std::vector<Eigen::Index> kept;
        for (Eigen::Index k = 0; k < 3; ++k)
            if ((choice >> k) % 2 == 1)
                kept.push_back(k);
        Eigen::MatrixXd part(U.rows(), Eigen::Index(kept.size()));
        for (std::size_t k = 0; k < kept.size(); ++k)
            part.col(Eigen::Index(k)) = U.col(kept[k]);
        const Solution found = solve(part, S, w);
        if (!found.isDetermined || found.omega.minCoeff() < 0.0 || found.misfit >= best.misfit)
            continue;
        best = found;
        best.omega.setZero();
        best.covariance.setZero();
        for (std::size_t i = 0; i < kept.size(); ++i) {
            best.omega(kept[i]) = found.omega(Eigen::Index(i));
            for (std::size_t j = 0; j < kept.size(); ++j)
                best.covariance(kept[i], kept[j]) =
                    found.covariance(Eigen::Index(i), Eigen::Index(j));
        }
    }
    return best;
}

} // namespace juddOfelt
