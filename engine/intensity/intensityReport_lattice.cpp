// Sections of the report that list complex numbers: harmonics, lattice terms and sums, and
// amplitudes.
#include "intensity/intensityReport_p.h"

#include "core/reportText_p.h"
#include "intensity/LanqorOmega.h"
#include "overlap/simpleOverlapModel_p.h"

#include <cmath>

using reportText::exponential;
using reportText::fixed;

namespace {

constexpr int oddRanks[] = {1, 3, 5, 7};

/// "name(a,b,c)".
QString indexed(const QString &name, std::initializer_list<int> indices)
{
    QStringList numbers;
    for (const int index : indices)
        numbers.append(QString::number(index));
    return name + QLatin1Char('(') + numbers.join(QLatin1Char(',')) + QLatin1Char(')');
}

/// Blanks that make up for an atom number of one digit among numbers of two.
int padding(int atom, int lastAtom)
{
    return atom < 10 && lastAtom >= 10 ? 1 : 0;
}

/// A line with the modulus and the parts of a complex number.
struct ComplexLine
{
    QString modulusName;
    QString name;
    QString unit;    ///< behind the modulus and behind the i of the imaginary part
    int leading = 0; ///< blanks before the numbers

    QString text(const MyComplex &value) const
    {
        const int width = 11 + leading;
        return QLatin1Char('|') + modulusName + QStringLiteral("| = ") +
               exponential(std::hypot(value.real, value.imag), 3, width) + unit +
               QStringLiteral("      ") + name + QStringLiteral(" = ") +
               exponential(value.real, 3, width) + QStringLiteral(" + ") +
               exponential(value.imag, 3, 11) + QLatin1Char('i') + unit + QLatin1Char('\n');
    }
};

/// Which lines of a lattice section are wanted.
struct LatticeLines
{
    bool ofAtoms = false;
    bool ofSums = false;
};

/// Lattice terms by t and p: of each atom, then their sums. @p units has one unit for each t,
/// @p term gives the term of (t, p, atom).
template <typename Term>
QString latticeLines(const QString &name, const QStringList &units, int lastAtom,
                     const LatticeLines &wanted, const Term &term)
{
    QString atomLines;
    QString sumLines;
    for (const int t : oddRanks) {
        const QString unit = QLatin1Char(' ') + units.at(t / 2);
        for (int p = 0; p <= t; ++p) {
            MyComplex sum;
            for (int j = 2; j <= lastAtom; ++j) {
                const MyComplex value = term(t, p, j);
                sum.real += value.real;
                sum.imag += value.imag;
                const QString label = indexed(name, {t, p, j});
                atomLines += ComplexLine{label, label, unit, padding(j, lastAtom)}.text(value);
            }
            const QString label = indexed(name, {t, p});
            sumLines += ComplexLine{label, QStringLiteral("Sum ") + label, unit, 0}.text(sum);
        }
    }
    return (wanted.ofAtoms ? atomLines + QLatin1Char('\n') : QString()) +
           (wanted.ofSums ? sumLines + QLatin1Char('\n') : QString());
}

/// Amplitudes B(lambda,t,p) with t from lambda + @p firstStep to lambda + 1.
template <typename Amplitude>
QString amplitudeLines(const QString &suffix, const QString &unit, int firstStep,
                       const Amplitude &amplitude)
{
    QString text;
    for (int lambda = 2; lambda <= 6; lambda += 2) {
        for (int t = lambda + firstStep; t <= lambda + 1; t += 2) {
            for (int p = 0; p <= t; ++p) {
                const QString label = indexed(QStringLiteral("B"), {lambda, t, p}) + suffix;
                text += ComplexLine{label, label, unit, 0}.text(amplitude(lambda, t, p));
            }
        }
    }
    return text + QLatin1Char('\n');
}

} // namespace

QString IntensityReport::sphericalHarmonics() const
{
    QString text =
        QStringLiteral("---------------------------------------------------------------------\n"
                       " Spherical Harmonicals Y(t,p,i), where i represents the ligand atoms \n"
                       "---------------------------------------------------------------------\n\n");
    for (const int t : oddRanks) {
        for (int p = 0; p <= t; ++p) {
            for (int j = 2; j <= lastAtom(); ++j) {
                const QString label = indexed(QStringLiteral("Y"), {t, p, j});
                const int leading = padding(j, lastAtom());
                const auto value = calculation.sphere->harmonic(t, p, j);
                text += QLatin1Char('|') + label + QStringLiteral("| = ") +
                        exponential(std::abs(value), 3, 10 + leading) + QStringLiteral("      ") +
                        label + QStringLiteral(" = ") + fixed(value.real(), 4, 8 + leading) +
                        QStringLiteral(" + ") + fixed(value.imag(), 4, 8) + QStringLiteral("i\n");
            }
        }
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::latticeTermsDC() const
{
    const OmegaPrintingOptions &options = calculation.printingOptions;
    return QStringLiteral("---------------------------\n"
                          "   Parameters GAMA(t,p,i)  \n"
                          "---------------------------\n\n") +
           latticeLines(QStringLiteral("GAMA"),
                        {QStringLiteral("cm   "), QStringLiteral("cm^-1"), QStringLiteral("cm^-3"),
                         QStringLiteral("cm^-5")},
                        lastAtom(), {options.printGAMA, options.printSumGAMA},
                        [this](int t, int p, int j) { return calculation.GAMMA(t, p, j); });
}

QString IntensityReport::latticeTermsED() const
{
    const OmegaPrintingOptions &options = calculation.printingOptions;
    return QStringLiteral("----------------------------------------------\n"
                          " Odd-rank ligand field parameters, gama(t,p,i)\n"
                          "----------------------------------------------\n\n") +
           latticeLines(QStringLiteral("gama"),
                        {QStringLiteral("erg cm^-1"), QStringLiteral("erg cm^-3"),
                         QStringLiteral("erg cm^-5"), QStringLiteral("erg cm^-7")},
                        lastAtom(), {options.printgama, options.printSumgama},
                        [this](int t, int p, int j) { return calculation.gamma(t, p, j); });
}

QString IntensityReport::amplitudesDC() const
{
    // Dynamic coupling has t = lambda + 1 alone.
    return QStringLiteral("-------------------------------------------------\n"
                          "  Dynamics Coupling Bltp Parameters, B(l,t,p) DC \n"
                          "-------------------------------------------------\n\n") +
           amplitudeLines(
               QStringLiteral(" DC"), QStringLiteral(" cm"), 1,
               [this](int lambda, int t, int p) { return calculation.BDc(lambda, t, p); });
}

QString IntensityReport::amplitudesED() const
{
    return QStringLiteral("----------------------------------------------\n"
                          " Electric Dipole Bltp Parameters, B(l,t,p) ED \n"
                          "----------------------------------------------\n\n") +
           amplitudeLines(
               QStringLiteral(" ED"), QStringLiteral(" cm"), -1,
               [this](int lambda, int t, int p) { return calculation.BEd(lambda, t, p); });
}

QString IntensityReport::amplitudes() const
{
    // An amplitude is in cm; readers of this report expect the unit of its square here.
    return QStringLiteral("-------------------------------------------------------\n"
                          " Bltp parameters (B(l,t,p) = B(l,t,p) ED + B(l,t,p) DC)\n"
                          "-------------------------------------------------------\n\n") +
           amplitudeLines(QString(), QStringLiteral(" cm^2"), -1, [this](int lambda, int t, int p) {
               return calculation.Bkq(lambda, t, p);
           });
}

QString IntensityReport::crystalField() const
{
    QString text = QStringLiteral("----------------------------------------------\n"
                                  "    Bkq ligand field parameters, Bkq(k,q)   \n"
                                  "----------------------------------------------\n\n");
    for (int k = 2; k <= 6; k += 2) {
        for (int q = 0; q <= k; ++q) {
            simpleOverlapModel::Complex sum;
            for (int j = 2; j <= lastAtom(); ++j)
                sum += calculation.sphere->crystalField(k, q, j, calculation.chargeFactor.at(j),
                                                        simpleOverlapModel::nearestOverlap);
            const QString label = indexed(QStringLiteral("Bkq"), {k, q});
            text += QLatin1Char('|') + label + QStringLiteral("| = ") +
                    fixed(std::abs(sum), 2, 10) + QStringLiteral(" cm^-1      ") + label +
                    QStringLiteral(" = ") + fixed(sum.real(), 2, 10) + QStringLiteral(" + ") +
                    fixed(sum.imag(), 2, 10) + QStringLiteral("i cm^-1\n");
        }
    }
    return text + QLatin1Char('\n');
}
