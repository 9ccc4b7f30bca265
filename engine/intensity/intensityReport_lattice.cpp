// Sections of the report that list complex numbers: harmonics, lattice terms and sums, and
// amplitudes.
#include "intensity/intensityReport_p.h"

#include "core/reportText_p.h"

#include <LanqorEngine/OmegaResults.h>

#include <QStringList>

#include <cmath>

using reportText::exponential;
using reportText::fixed;

namespace {

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

double modulus(const MyComplex &value)
{
    return std::hypot(value.real, value.imag);
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
               exponential(modulus(value), 3, width) + unit + QStringLiteral("      ") + name +
               QStringLiteral(" = ") + exponential(value.real, 3, width) + QStringLiteral(" + ") +
               exponential(value.imag, 3, 11) + QLatin1Char('i') + unit + QLatin1Char('\n');
    }
};

/// Which lines of a lattice section are wanted.
struct LatticeLines
{
    bool ofAtoms = false;
    bool ofSums = false;
};

/// Lattice terms of one mechanism by t and p: of each atom, then their sums. @p units has one unit
/// for each t.
QString latticeLines(const QString &name, const QStringList &units,
                     const QVector<OmegaResults::LatticeTerm> &terms,
                     QVector<MyComplex> OmegaResults::LatticeTerm::*ofAtoms,
                     MyComplex OmegaResults::LatticeTerm::*sum, const LatticeLines &wanted)
{
    QString atomLines;
    QString sumLines;
    for (const OmegaResults::LatticeTerm &term : terms) {
        const QString unit = QLatin1Char(' ') + units.at(term.t / 2);
        const QVector<MyComplex> &values = term.*ofAtoms;
        const int lastAtom = values.size() - 1;
        for (int j = 2; j <= lastAtom; ++j) {
            const QString label = indexed(name, {term.t, term.p, j});
            atomLines += ComplexLine{label, label, unit, padding(j, lastAtom)}.text(values.at(j));
        }
        const QString label = indexed(name, {term.t, term.p});
        sumLines += ComplexLine{label, QStringLiteral("Sum ") + label, unit, 0}.text(term.*sum);
    }
    return (wanted.ofAtoms ? atomLines + QLatin1Char('\n') : QString()) +
           (wanted.ofSums ? sumLines + QLatin1Char('\n') : QString());
}

/// Amplitudes B(lambda,t,p) with t from lambda + @p firstStep to lambda + 1.
QString amplitudeLines(const QString &suffix, const QString &unit, int firstStep,
                       const QVector<OmegaResults::Amplitude> &amplitudes,
                       MyComplex OmegaResults::Amplitude::*part)
{
    QString text;
    for (const OmegaResults::Amplitude &amplitude : amplitudes) {
        if (amplitude.t < amplitude.lambda + firstStep)
            continue;
        const QString label =
            indexed(QStringLiteral("B"), {amplitude.lambda, amplitude.t, amplitude.p}) + suffix;
        text += ComplexLine{label, label, unit, 0}.text(amplitude.*part);
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
    for (const OmegaResults::LatticeTerm &term : results.latticeTerms) {
        for (int j = 2; j <= lastAtom(); ++j) {
            const QString label = indexed(QStringLiteral("Y"), {term.t, term.p, j});
            const int leading = padding(j, lastAtom());
            const MyComplex &value = term.harmonics.at(j);
            text += QLatin1Char('|') + label + QStringLiteral("| = ") +
                    exponential(modulus(value), 3, 10 + leading) + QStringLiteral("      ") +
                    label + QStringLiteral(" = ") + fixed(value.real, 4, 8 + leading) +
                    QStringLiteral(" + ") + fixed(value.imag, 4, 8) + QStringLiteral("i\n");
        }
    }
    return text + QLatin1Char('\n');
}

QString IntensityReport::latticeTermsDC() const
{
    const OmegaPrintingOptions &options = results.printingOptions;
    return QStringLiteral("---------------------------\n"
                          "   Parameters GAMA(t,p,i)  \n"
                          "---------------------------\n\n") +
           latticeLines(QStringLiteral("GAMA"),
                        {QStringLiteral("cm   "), QStringLiteral("cm^-1"), QStringLiteral("cm^-3"),
                         QStringLiteral("cm^-5")},
                        results.latticeTerms, &OmegaResults::LatticeTerm::GAMMA,
                        &OmegaResults::LatticeTerm::GAMMASum,
                        {options.printGAMA, options.printSumGAMA});
}

QString IntensityReport::latticeTermsED() const
{
    const OmegaPrintingOptions &options = results.printingOptions;
    return QStringLiteral("----------------------------------------------\n"
                          " Odd-rank ligand field parameters, gama(t,p,i)\n"
                          "----------------------------------------------\n\n") +
           latticeLines(QStringLiteral("gama"),
                        {QStringLiteral("erg cm^-1"), QStringLiteral("erg cm^-3"),
                         QStringLiteral("erg cm^-5"), QStringLiteral("erg cm^-7")},
                        results.latticeTerms, &OmegaResults::LatticeTerm::gamma,
                        &OmegaResults::LatticeTerm::gammaSum,
                        {options.printgama, options.printSumgama});
}

QString IntensityReport::amplitudesDC() const
{
    // Dynamic coupling has t = lambda + 1 alone.
    return QStringLiteral("-------------------------------------------------\n"
                          "  Dynamics Coupling Bltp Parameters, B(l,t,p) DC \n"
                          "-------------------------------------------------\n\n") +
           amplitudeLines(QStringLiteral(" DC"), QStringLiteral(" cm"), 1, results.amplitudes,
                          &OmegaResults::Amplitude::dynamicCoupling);
}

QString IntensityReport::amplitudesED() const
{
    return QStringLiteral("----------------------------------------------\n"
                          " Electric Dipole Bltp Parameters, B(l,t,p) ED \n"
                          "----------------------------------------------\n\n") +
           amplitudeLines(QStringLiteral(" ED"), QStringLiteral(" cm"), -1, results.amplitudes,
                          &OmegaResults::Amplitude::electricDipole);
}

QString IntensityReport::amplitudes() const
{
    // An amplitude is in cm; readers of this report expect the unit of its square here.
    return QStringLiteral("-------------------------------------------------------\n"
                          " Bltp parameters (B(l,t,p) = B(l,t,p) ED + B(l,t,p) DC)\n"
                          "-------------------------------------------------------\n\n") +
           amplitudeLines(QString(), QStringLiteral(" cm^2"), -1, results.amplitudes,
                          &OmegaResults::Amplitude::total);
}

QString IntensityReport::crystalField() const
{
    return QStringLiteral("----------------------------------------------\n"
                          "    Bkq ligand field parameters, Bkq(k,q)   \n"
                          "----------------------------------------------\n\n") +
           crystalFieldLines(SignOfQ::NotNegative) + QLatin1Char('\n');
}

QString IntensityReport::crystalFieldLines(SignOfQ sign) const
{
    QString text;
    for (const OmegaResults::CrystalFieldParameter &parameter : results.crystalField) {
        if ((parameter.q < 0) != (sign == SignOfQ::Negative))
            continue;
        const MyComplex &value = parameter.value;
        const QString label = indexed(QStringLiteral("Bkq"), {parameter.k, parameter.q});
        text += QLatin1Char('|') + label + QStringLiteral("| = ") + fixed(modulus(value), 2, 10) +
                QStringLiteral(" cm^-1      ") + label + QStringLiteral(" = ") +
                fixed(value.real, 2, 10) + QStringLiteral(" + ") + fixed(value.imag, 2, 10) +
                QStringLiteral("i cm^-1\n");
    }
    return text;
}
