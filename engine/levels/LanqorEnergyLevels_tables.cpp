#include "LanqorEnergyLevels_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QSet>

#include <cmath>

using LanqorSpectroscopicTermUtil::termFromLabel;
using LanqorSpectroscopicTermUtil::termLetterList;

namespace {

// The largest shell has 119 terms and 3724 lines of coefficients. The limits keep a damaged table
// from taking hours and gigabytes.
constexpr int maximumTerms = 1000;
constexpr int maximumLines = 20000;
constexpr int maximumCoefficients = 40000;

/// The lines of a table, which ends at the first empty one or at the end of the file.
class TableReader
{
public:
    explicit TableReader(const QString &fileName)
        : fileName(fileName)
        , reader(fileName)
    {}

    bool open()
    {
        if (reader.open())
            return true;
        fail(reader.errorString());
        return false;
    }

    /// Moves to the next line; false at the end of the table and after a failure.
    bool next()
    {
        if (!error.isEmpty() || !reader.next() || reader.line().empty())
            return false;
        if (reader.lineNumber() > maximumLines) {
            fail(LanqorEnergyLevels::tr("more than %1 lines").arg(maximumLines));
            return false;
        }
        textFields::split(reader.line(), fields);
        return true;
    }

    bool contains(const QByteArray &text) const
    {
        return textFields::contains(reader.line(), {text.constData(), std::size_t(text.size())});
    }

    /// A field counted from 0; empty when the line has fewer.
    QString text(std::size_t field) const
    {
        return field < fields.size() ? textFields::toString(fields[field]) : QString();
    }

    /// 0 for what is no number; one that is not finite is a failure.
    double number(std::size_t field)
    {
        const double value = text(field).toDouble();
        if (std::isfinite(value))
            return value;
        fail(LanqorEnergyLevels::tr("line %1: a number is not finite").arg(reader.lineNumber()));
        return 0.0;
    }

    void fail(const QString &reason)
    {
        error = QStringLiteral("Energy Levels Calculation\n") + fileName + QStringLiteral("  ") +
                reason;
    }

    /// Empty while all went well.
    QString errorText() const { return error; }

private:
    QString fileName;
    LineReader reader;
    textFields::Fields fields;
    QString error;
};

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
    TableReader table(eleFileName);
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

QString LanqorEnergyLevelsPrivate::readSpectroscopicTerms()
{
    TableReader table(cfpFileName);
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

    TableReader table(cfpFileName);
    if (table.open())
        while (table.next())
            if (table.contains(bytes))
                coefficients.append({termFromLabel(table.text(1), false), table.number(2)});
    return table.errorText();
}
