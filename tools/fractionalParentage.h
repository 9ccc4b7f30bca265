#pragma once

#include <Eigen/Dense>

#include <QMap>
#include <QString>
#include <QVector>

#include <array>
#include <vector>

/// Coefficients of fractional parentage and electrostatic coefficients of f^n from
/// angular-momentum theory (G. Racah, Phys. Rev. 63, 367 (1943) and 76, 1352 (1949)).
/// Failures are thrown as std::runtime_error.
namespace parentage {

/// Rounding grows tenfold and more from one shell to the next: doubles would leave 1e-11 in f^7.
using Real = long double;
using Matrix = Eigen::Matrix<Real, Eigen::Dynamic, Eigen::Dynamic>;
using Matrix2 = Eigen::Matrix<Real, 2, 2>;

/// A Russell-Saunders term of f^n.
struct Term
{
    int twiceS;
    int L;
    int seniority;
    int w;       ///< representation of R7, three digits
    int u;       ///< representation of G2, two digits
    int ordinal; ///< counts the terms of equal S and L from 1; 0 when there is one only

    /// As published: 7F, 5D1, 2F10.
    QString name() const;
};

/// The terms of f^n in the published order, and their coefficients.
struct Configuration
{
    int n;
    std::vector<Term> terms;
    std::vector<Term> parents; ///< the terms of f^(n-1)
    /// (parent, term): coefficients of fractional parentage.
    Matrix cfp;
};

/// What the published tables fix by convention.
struct Phases
{
    /// First parent with a coefficient that is not 0, and the sign of that coefficient.
    struct FirstParent
    {
        QString parent;
        Real sign;
    };
    /// Two terms that agree in W and U; the coefficients of both from two parents.
    struct Pair
    {
        int n;
        QString a, b;
        QString parents[2];
        Matrix2 coefficients; ///< (A or B, parent)
    };
    QMap<QString, FirstParent> firstParents; ///< by n and name, "3 2D1"
    QVector<Pair> pairs;
};

Phases readPhases(const QString &fileName);

/// The one term of f^0.
Configuration closedShell();
/// f^(n+1) from f^n.
Configuration addElectron(const Configuration &configuration, const Phases &phases);

/// Coefficients of the Racah parameters E0, E1, E2, E3 between any two terms, each (term, term);
/// 0 between terms of different S or L.
std::array<Matrix, 4> racahCoefficients(const Configuration &configuration);

} // namespace parentage
