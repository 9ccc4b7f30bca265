// Writes the tables of coefficients of fractional parentage, of electrostatic coefficients and of
// the eigenvalues of the Casimir operators of 4f^1 to 4f^7, f1.cfp .. f7.cfp, f1.ele .. f7.ele and
// f1.cas .. f7.cas, that the energy-level calculation reads:
//
//     generate4fTables tools/publishedPhases4f.txt data/EnergyLevels4f
//
// The numbers come from angular-momentum theory; only signs and the choice within pairs of equal
// representations are read, so that terms and signs are those of the published tables.

#include "fractionalParentage.h"

#include <QDir>
#include <QSaveFile>
#include <QTextStream>

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

using namespace parentage;

/// Below this a computed coefficient is a zero.
constexpr Real zero = 1e-11L;

QString number(Real value)
{
    return std::abs(value) < zero ? QStringLiteral("0")
                                  : QString::number(static_cast<double>(value), 'f', 16);
}

/// The label in the tables. Their ordinals have one digit: the tenth 2F and 2G of f^7 go by the
/// bare label, 2F and 2G.
QString label(const Term &term)
{
    return term.name().left(term.ordinal > 9 ? 2 : 3);
}

void write(const QString &fileName, const QString &text)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toLatin1()) < 0 || !file.commit())
        throw std::runtime_error((fileName + ": " + file.errorString()).toStdString());
}

/// The lines of a term are found by its label, which may stand anywhere in a line. The bare label
/// of the tenth 2F finds the lines of 2F1 to 2F9 too. Only sums over equal parents enter the
/// matrix elements, so its own lines hold the coefficient less those of the other nine.
Real writtenCoefficient(const Configuration &configuration, Eigen::Index parent, std::size_t term)
{
    Real value = configuration.cfp(parent, static_cast<Eigen::Index>(term));
    const int ordinal = configuration.terms[term].ordinal;
    for (int back = 1; ordinal > 9 && back < ordinal; ++back)
        value -= configuration.cfp(parent, static_cast<Eigen::Index>(term) - back);
    return value;
}

QString parentageTable(const Configuration &configuration)
{
    QString text;
    for (std::size_t i = 0; i < configuration.terms.size(); ++i)
        for (std::size_t p = 0; p < configuration.parents.size(); ++p) {
            const Real value = writtenCoefficient(configuration, static_cast<Eigen::Index>(p), i);
            if (std::abs(value) > zero)
                text += label(configuration.terms[i]) + ' ' + label(configuration.parents[p]) +
                        ' ' + number(value) + '\n';
        }
    return text;
}

/// E0 and E1 in closed form: n(n-1)/2 and 9(n-v)/2 + v(v+2)/4 - S(S+1) on the diagonal, 0
/// elsewhere (G. Racah, Phys. Rev. 76, 1352 (1949)); the computed coefficients must agree.
void setClosedForms(const Configuration &configuration, std::array<Matrix, 4> &racah)
{
    const int n = configuration.n;
    for (Eigen::Index i = 0; i < racah[1].rows(); ++i)
        for (Eigen::Index j = 0; j < racah[1].cols(); ++j) {
            const Term &term = configuration.terms[static_cast<std::size_t>(i)];
            const int v = term.seniority;
            const double S = 0.5 * term.twiceS;
            const double exact = i == j ? 4.5 * (n - v) + 0.25 * v * (v + 2) - S * (S + 1.0) : 0.0;
            if (std::abs(racah[1](i, j) - exact) > 1e-9)
                throw std::runtime_error("a coefficient of E1 is wrong: " +
                                         term.name().toStdString());
            racah[1](i, j) = exact;
        }
}

/// Each pair of terms once, without those that do not interact.
QString electrostaticTable(const Configuration &configuration)
{
    std::array<Matrix, 4> racah = racahCoefficients(configuration);
    setClosedForms(configuration, racah);
    QString text;
    const auto size = static_cast<Eigen::Index>(configuration.terms.size());
    for (Eigen::Index i = 0; i < size; ++i)
        for (Eigen::Index j = i; j < size; ++j) {
            QString line = label(configuration.terms[static_cast<std::size_t>(i)]) + ' ' +
                           label(configuration.terms[static_cast<std::size_t>(j)]);
            bool interacts = i == j;
            for (const Matrix &coefficients : racah) {
                line += ' ' + number(coefficients(i, j));
                interacts = interacts || std::abs(coefficients(i, j)) > zero;
            }
            if (interacts)
                text += line + '\n';
        }
    return text;
}

/// G(R7) = (w1 (w1+5) + w2 (w2+3) + w3 (w3+1))/10 of W = (w1 w2 w3).
Real casimirOfR7(int w)
{
    const int w1 = w / 100;
    const int w2 = w / 10 % 10;
    const int w3 = w % 10;
    return (w1 * (w1 + 5) + w2 * (w2 + 3) + w3 * (w3 + 1)) / 10.0L;
}

/// G(G2) = (u1^2 + u1 u2 + u2^2 + 5 u1 + 4 u2)/12 of U = (u1 u2).
Real casimirOfG2(int u)
{
    const int u1 = u / 10;
    const int u2 = u % 10;
    return (u1 * u1 + u1 * u2 + u2 * u2 + 5 * u1 + 4 * u2) / 12.0L;
}

/// A fraction in as many digits as need be: "1.4", "1.166666666666667".
QString shortNumber(Real value)
{
    return QString::number(static_cast<double>(value), 'g', 16);
}

/// Term, seniority, W, U, G(G2), G(R7).
QString casimirTable(const Configuration &configuration)
{
    QString text;
    for (const Term &term : configuration.terms)
        text += QStringLiteral("%1 %2 %3 %4 %5 %6\n")
                    .arg(label(term), QString::number(term.seniority),
                         QStringLiteral("%1").arg(term.w, 3, 10, QLatin1Char('0')),
                         QStringLiteral("%1").arg(term.u, 2, 10, QLatin1Char('0')),
                         shortNumber(casimirOfG2(term.u)), shortNumber(casimirOfR7(term.w)));
    return text;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: generate4fTables PHASES FOLDER\n", stderr);
        return 2;
    }
    try {
        const Phases phases = readPhases(QString::fromLocal8Bit(argv[1]));
        const QDir folder(QString::fromLocal8Bit(argv[2]));
        Configuration configuration = closedShell();
        while (configuration.n < 7) {
            configuration = addElectron(configuration, phases);
            const QString name = folder.filePath(QStringLiteral("f%1.").arg(configuration.n));
            write(name + "cfp", parentageTable(configuration));
            write(name + "ele", electrostaticTable(configuration));
            write(name + "cas", casimirTable(configuration));
        }
    } catch (const std::exception &error) {
        std::fprintf(stderr, "generate4fTables: %s\n", error.what());
        return 1;
    }
    return 0;
}
