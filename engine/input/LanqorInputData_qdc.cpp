#include "LanqorInputData.h"

#include "core/chargeFactorBounds_p.h"
#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "input/lineReader_p.h"
#include "input/readerLimits_p.h"
#include "input/textFields_p.h"

#include <QDir>
#include <QFileInfo>

namespace {

/// Indices of the coordinated atoms; index 0 is atom 2.
struct IndicesTable
{
    QStringList labels;
    QVector<float> charges;
    QVector<float> superdelocalizabilities;
};

QString numberOfAtomsError(int coordNumber)
{
    return LanqorInputData::tr("The coordination number must be from 1 to %1, not %2.")
        .arg(QString::number(maximumAtoms), QString::number(coordNumber));
}

/// Fills @p table; returns the reason when an atom is missing or a row cannot be read.
QString readIndices(LineReader &reader, const QString &fileName, int coordNumber,
                    IndicesTable &table)
{
    bool inTable = false;
    textFields::Fields fields;
    while (reader.next() && table.labels.size() < coordNumber) {
        if (!inTable) {
            inTable = textFields::trimmed(reader.line()) ==
                      textFields::trimmed(reportText::indicesHeading);
            continue;
        }
        textFields::split(reader.line(), fields);
        if (fields.empty())
            continue;
        bool ok[3] = {};
        const int atom = textFields::toInt(fields[0], &ok[0]);
        if (ok[0] && atom < 2)
            continue;
        const double charge = fields.size() > 3 ? textFields::toDouble(fields[2], &ok[1]) : 0.0;
        const double index = fields.size() > 3 ? textFields::toDouble(fields[3], &ok[2]) : 0.0;
        if (!ok[0] || !ok[1] || !ok[2] || atom != table.labels.size() + 2)
            return LanqorInputData::tr("Line %1 of the file %2 is not the row of atom %3: its "
                                       "number, label, charge and superdelocalizability.")
                .arg(QString::number(reader.lineNumber()), fileName,
                     QString::number(table.labels.size() + 2));
        table.labels.append(textFields::toString(fields[1]));
        table.charges.append(static_cast<float>(charge));
        table.superdelocalizabilities.append(static_cast<float>(index));
    }
    if (!inTable)
        return LanqorInputData::tr("Cannot find the heading \"%1\" in the file %2.")
            .arg(textFields::toString(textFields::trimmed(reportText::indicesHeading)), fileName);
    if (table.labels.size() < coordNumber)
        return LanqorInputData::tr("The file %1 holds the reactivity indices of %2 coordinated "
                                   "atoms; %3 are needed.")
            .arg(fileName, QString::number(table.labels.size()), QString::number(coordNumber));
    return QString();
}

/// Sentence on an atom outside its bounds.
QString violationText(int atom, const QString &label, double g, double alpha,
                      const ChargeFactorBounds &bounds)
{
    if (!(g >= bounds.minimum && g <= bounds.maximum))
        return LanqorInputData::tr("Atom %1 (%2): the charge factor %3 is outside %4 to %5.")
            .arg(QString::number(atom), label, QString::number(g), QString::number(bounds.minimum),
                 QString::number(bounds.maximum));
    return LanqorInputData::tr("Atom %1 (%2): the polarisability %3 cubic Angstrom is outside %4 "
                               "to %5.")
        .arg(QString::number(atom), label, QString::number(alpha / lanqor::cm3PerCubicAngstrom),
             QString::number(minimumAlpha), QString::number(maximumAlphaQdcFit));
}

/// A line of the list of structures: a name and up to two whole numbers.
struct StructureName
{
    QString name;
    int numbers[2] = {0, 0};
};

StructureName structureName(const textFields::Fields &fields)
{
    std::size_t nameEnd = fields.size();
    while (nameEnd > 1 && fields.size() - nameEnd < 2 && textFields::isInteger(fields[nameEnd - 1]))
        --nameEnd;
    StructureName result;
    for (std::size_t i = nameEnd; i < fields.size(); ++i)
        result.numbers[i - nameEnd] = textFields::toInt(fields[i]);
    QStringList words;
    for (std::size_t i = 0; i < nameEnd; ++i)
        words.append(textFields::toString(fields[i]));
    result.name = words.join(QLatin1Char(' '));
    return result;
}

} // namespace

QString LanqorInputData::readFileIndeces(const QString &fileName, const int &coordNumber,
                                         const double *qdcParameters, int restrictionValue)
{
    LineReader reader(fileName);
    if (!reader.open())
        return missingFile(fileName);
    if (coordNumber < 1 || coordNumber > maximumAtoms)
        return numberOfAtomsError(coordNumber);
    IndicesTable table;
    QString error = readIndices(reader, fileName, coordNumber, table);
    if (!error.isEmpty())
        return error;
    const double d = qdcParameters[1];
    const double c = qdcParameters[2];
    if (!(d > restrictionValue * c))
        return tr("The parameter D (%1) is not larger than %2 times C (%3).")
            .arg(QString::number(d), QString::number(restrictionValue), QString::number(c));
    return checkParametersQDC(table.labels.join(QLatin1Char(' ')), table.charges,
                              table.superdelocalizabilities, coordNumber, qdcParameters);
}

QString LanqorInputData::checkParametersQDC(const QString &labels, const QVector<float> &charges,
                                            const QVector<float> &superdelocalizabilities,
                                            const int &coordNumber, const double *qdcParameters)
{
    const QStringList symbols = labels.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (coordNumber < 1 || coordNumber > maximumAtoms)
        return numberOfAtomsError(coordNumber);
    if (symbols.size() != coordNumber || charges.size() != coordNumber ||
        superdelocalizabilities.size() != coordNumber)
        return tr("%1 labels, %2 charges and %3 superdelocalizabilities are given for %4 "
                  "coordinated atoms.")
            .arg(QString::number(symbols.size()), QString::number(charges.size()),
                 QString::number(superdelocalizabilities.size()), QString::number(coordNumber));
    const double q = qdcParameters[0];
    const double d = qdcParameters[1];
    const double c = qdcParameters[2];
    if (!(c >= 0.0) || !(d >= 0.0))
        return tr("The parameters D (%1) and C (%2) must not be negative.")
            .arg(QString::number(d), QString::number(c));
    ChargeFactorBounds bounds;
    for (int i = 0; i < coordNumber; ++i) {
        const double g = q * static_cast<double>(charges.at(i));
        // In the order of the fit, so that the same trials pass.
        const double alpha =
            static_cast<double>(superdelocalizabilities.at(i)) * d * lanqor::cm3PerCubicAngstrom +
            c * lanqor::cm3PerCubicAngstrom;
        updateQdcFitBounds(symbols.at(i), bounds);
        if (!isWithinBounds(g, alpha, bounds, maximumAlphaQdcFit))
            return violationText(i + 2, symbols.at(i), g, alpha, bounds);
    }
    return QString();
}

QString LanqorInputData::readMolNameFile(QString &directory, QString &prefix, QStringList &names,
                                         QVector<int> &first, QVector<int> &second)
{
    const QFileInfo given(directory);
    const QString path = directory.isEmpty() || given.isDir()
                             ? QDir(directory).filePath(QStringLiteral("mol_name.txt"))
                             : directory;
    LineReader reader(path);
    if (!reader.open())
        return missingFile(path);
    directory = QFileInfo(path).path();
    names.clear();
    first.clear();
    second.clear();
    constexpr std::string_view marker = "tomo:";
    textFields::Fields fields;
    while (reader.next() && names.size() < maximumAtoms) {
        const std::size_t common = reader.line().find(marker);
        if (common != std::string_view::npos) {
            prefix = textFields::toString(
                textFields::trimmed(reader.line().substr(common + marker.size())));
            continue;
        }
        textFields::split(reader.line(), fields);
        if (fields.empty())
            continue;
        const StructureName name = structureName(fields);
        names.append(name.name);
        first.append(name.numbers[0]);
        second.append(name.numbers[1]);
    }
    if (names.isEmpty())
        return tr("Number of structures equal to 0, there has probably been an error.");
    return QString();
}
