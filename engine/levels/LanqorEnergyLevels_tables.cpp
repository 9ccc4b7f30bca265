#include "LanqorEnergyLevels_p.h"

#include "input/fShellTable_p.h"

#include <QSet>

using LanqorSpectroscopicTermUtil::isSameTerm;
using LanqorSpectroscopicTermUtil::termFromLabel;
using LanqorSpectroscopicTermUtil::termLetterList;

namespace {

// The largest shell has 119 terms and 3724 lines of coefficients. The limits keep a damaged table
// from taking hours and gigabytes.
constexpr int maximumTerms = 1000;
constexpr int maximumCoefficients = 40000;

} // namespace

QString LanqorEnergyLevelsPrivate::readTables()
{
    QString error = readElectrostaticMatrix();
    if (error.isEmpty())
        error = readSpectroscopicTerms();
    int total = 0;
    for (int i = 0; error.isEmpty() && i < spectroscopicTerms.size(); ++i) {
        QVector<FractParentCoeff> coefficients;
        error = readFractionalParentageCoefficients(spectroscopicTerms.at(i), coefficients);
        total += coefficients.size();
        if (error.isEmpty() && total > maximumCoefficients)
            error = QStringLiteral("Energy Levels Calculation\n") + cfpFileName +
                    LanqorEnergyLevels::tr("  the labels select more than %1 lines")
                        .arg(maximumCoefficients);
        fractParentCoeffs.append(coefficients);
    }
    if (!error.isEmpty()) {
        spectroscopicTerms.clear();
        fractParentCoeffs.clear();
    }
    return error;
}

QString LanqorEnergyLevelsPrivate::readElectrostaticMatrix()
{
    FShellTableReader table(eleFileName);
    if (table.open())
        while (table.next()) {
            ElectrostaticElement element;
            element.bra = termFromLabel(table.text(0), false);
            element.ket = termFromLabel(table.text(1), false);
            for (std::size_t field = 2; field < 6; ++field)
                element.coefficients.append(table.number(field));
            electrostaticMatrix.append(element);
        }
    if (!table.errorText().isEmpty())
        electrostaticMatrix.clear();
    return table.errorText();
}

/// A term with its seniority, W, U, G(G2) and G(R7) in a line; of all terms or of none.
QString LanqorEnergyLevelsPrivate::readCasimirEigenvalues()
{
    FShellTableReader table(casFileName);
    QVector<QVector<double>> vectors(spectroscopicTerms.size());
    if (table.open())
        while (table.next()) {
            const SpectroscopicTerm named = termFromLabel(table.text(0), false);
            const double ofG2 = table.number(4);
            const double ofR7 = table.number(5);
            for (int i = 0; i < vectors.size(); ++i)
                if (isSameTerm(spectroscopicTerms.at(i), named) && !table.text(5).isEmpty())
                    vectors[i] = {named.L * (named.L + 1.0), ofG2, ofR7};
        }
    for (int i = 0; table.errorText().isEmpty() && i < vectors.size(); ++i)
        if (vectors.at(i).isEmpty()) {
            const SpectroscopicTerm &term = spectroscopicTerms.at(i);
            table.fail(
                LanqorEnergyLevels::tr("the term %1%2 is missing or has no G(G2) and G(R7)")
                    .arg(QString::number(2.0 * term.S + 1.0, 'g', 6) + termLetterList.value(term.L),
                         term.termIndex >= 1 ? QString::number(term.termIndex) : QString()));
        }
    if (table.errorText().isEmpty())
        twoBodyVectors = vectors;
    return table.errorText();
}

QString LanqorEnergyLevelsPrivate::readSpectroscopicTerms()
{
    FShellTableReader table(cfpFileName);
    QSet<QString> seen;
    if (table.open())
        while (table.next()) {
            const QString label = table.text(0);
            if (label.isEmpty() || seen.contains(label))
                continue;
            seen.insert(label);
            SpectroscopicTerm term = termFromLabel(label.left(2), false);
            // An ordinal of two digits is not understood: the term goes by its bare label.
            if (label.size() == 3)
                term.termIndex = label.mid(2).toInt();
            spectroscopicTerms.append(term);
            if (seen.size() > maximumTerms)
                table.fail(LanqorEnergyLevels::tr("more than %1 terms").arg(maximumTerms));
        }
    return table.errorText();
}

/// Takes every line in which the label of the term occurs, even inside another label: the tables
/// are written so that this does no harm.
QString LanqorEnergyLevelsPrivate::readFractionalParentageCoefficients(
    const SpectroscopicTerm &term, QVector<FractParentCoeff> &coefficients) const
{
    QString key = QString::number(2.0 * term.S + 1.0, 'g', 6) + termLetterList.value(term.L);
    if (term.termIndex >= 1)
        key += QString::number(term.termIndex);
    const QByteArray bytes = key.toLatin1();

    FShellTableReader table(cfpFileName);
    if (table.open())
        while (table.next())
            if (table.contains(bytes))
                coefficients.append({termFromLabel(table.text(1), false), table.number(2)});
    return table.errorText();
}
