#include "input/juddOfeltBands_p.h"

#include "input/lineReader_p.h"
#include "input/spectrumTable_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>
#include <QMap>

#include <cmath>

namespace {

using Quantity = JuddOfeltBand::Quantity;

constexpr int maximumBands = 1000;

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorJuddOfelt", text);
}

const QMap<QString, Quantity> &quantities()
{
    static const QMap<QString, Quantity> names = {
        {QStringLiteral("f"), Quantity::OscillatorStrength},
        {QStringLiteral("s_cm2"), Quantity::LineStrength},
        {QStringLiteral("cross_section_cm2_nm"), Quantity::CrossSectionOverWavelength},
        {QStringLiteral("cross_section_cm"), Quantity::CrossSectionOverWavenumber},
        {QStringLiteral("absorbance_cm-1"), Quantity::Absorbance}};
    return names;
}

/// Reads the lines below the heading.
class BandReader
{
public:
    explicit BandReader(const QString &fileName)
        : reader(fileName)
    {}
    JuddOfeltBandTable read();

private:
    QString failure(const QString &reason) const
    {
        return tr("%1, line %2: %3")
            .arg(reader.fileName(), QString::number(reader.lineNumber()), reason);
    }
    QStringList cells(const QString &text) const;
    QString readHeading(const QString &text);
    QString readBand(const QStringList &row, JuddOfeltBand &band) const;
    /// A number of a column, as it is where there is none; why it cannot be read.
    QString readNumber(const QStringList &row, const QString &column, double &value) const;

    LineReader reader;
    QChar separator = QLatin1Char(',');
    QStringList columns; // lower case
    QString quantity;
};

QStringList BandReader::cells(const QString &text) const
{
    QStringList parts = text.split(separator);
    for (QString &part : parts)
        part = part.trimmed();
    return parts;
}

QString BandReader::readHeading(const QString &text)
{
    for (const char mark : {';', '\t'})
        if (text.contains(QLatin1Char(mark)))
            separator = QLatin1Char(mark);
    columns = cells(text.toLower());
    const QStringList others = {QStringLiteral("level"),
                                QStringLiteral("wavelength_nm"),
                                QStringLiteral("wavenumber_cm-1"),
                                QStringLiteral("error"),
                                QStringLiteral("u2"),
                                QStringLiteral("u4"),
                                QStringLiteral("u6"),
                                QStringLiteral("f_md"),
                                QStringLiteral("n")};
    int positions = 0;
    for (int i = 0; i < columns.size(); ++i) {
        const QString &column = columns.at(i);
        if (columns.indexOf(column) < i)
            return tr("the column %1 stands twice").arg(column);
        if (quantities().contains(column)) {
            if (!quantity.isEmpty())
                return tr("%1 and %2 are two quantities; give one of them").arg(quantity, column);
            quantity = column;
        } else if (!others.contains(column)) {
            return tr("\"%1\" is none of the columns level, wavelength_nm, wavenumber_cm-1, f, "
                      "S_cm2, cross_section_cm2_nm, cross_section_cm, absorbance_cm-1, error, U2, "
                      "U4, U6, f_MD, n")
                .arg(column);
        }
        positions += column.startsWith(QLatin1String("wave")) ? 1 : 0;
    }
    if (!columns.contains(QStringLiteral("level")) || positions != 1 || quantity.isEmpty())
        return tr("the heading needs the columns level, wavelength_nm or wavenumber_cm-1, and one "
                  "of f, S_cm2, cross_section_cm2_nm, cross_section_cm, absorbance_cm-1");
    const int squares = int(columns.contains(QStringLiteral("u2"))) +
                        int(columns.contains(QStringLiteral("u4"))) +
                        int(columns.contains(QStringLiteral("u6")));
    if (squares != 0 && squares != 3)
        return tr("U2, U4 and U6 belong together");
    return QString();
}

QString BandReader::readNumber(const QStringList &row, const QString &column, double &value) const
{
    const int place = columns.indexOf(column);
    if (place < 0 || row.value(place).isEmpty())
        return QString();
    bool isNumber = false;
    value = row.at(place).toDouble(&isNumber);
    if (isNumber && std::isfinite(value))
        return QString();
    return tr("%1 is \"%2\", no number (decimals have a point)").arg(column, row.at(place));
}

QString BandReader::readBand(const QStringList &row, JuddOfeltBand &band) const
{
    if (row.size() != columns.size())
        return tr("%1 fields where the heading has %2")
            .arg(QString::number(row.size()), QString::number(columns.size()));
    const QString wavelength = QStringLiteral("wavelength_nm");
    band.line = int(reader.lineNumber());
    band.level = row.at(columns.indexOf(QStringLiteral("level")));
    band.isWavelength = columns.contains(wavelength);
    band.quantity = quantities().value(quantity);
    band.value = band.position = qQNaN();
    const std::pair<QString, double *> numbers[] = {
        {band.isWavelength ? wavelength : QStringLiteral("wavenumber_cm-1"), &band.position},
        {quantity, &band.value},
        {QStringLiteral("error"), &band.error},
        {QStringLiteral("u2"), &band.U2},
        {QStringLiteral("u4"), &band.U4},
        {QStringLiteral("u6"), &band.U6},
        {QStringLiteral("f_md"), &band.magneticStrength},
        {QStringLiteral("n"), &band.refractiveIndex}};
    for (const auto &[column, value] : numbers) {
        const QString fault = readNumber(row, column, *value);
        if (!fault.isEmpty())
            return fault;
    }
    if (band.level.isEmpty())
        return tr("no level is named");
    if (std::isnan(band.position) || std::isnan(band.value))
        return tr("the barycentre or the %1 is missing").arg(quantity);
    return QString();
}

JuddOfeltBandTable BandReader::read()
{
    JuddOfeltBandTable table;
    if (!reader.open()) {
        table.error = QStringLiteral("%1: %2").arg(reader.fileName(), reader.errorString());
        return table;
    }
    while (reader.next()) {
        const QString text =
            textFields::toString(reader.line()).section(QLatin1Char('#'), 0, 0).trimmed();
        if (text.isEmpty())
            continue;
        QString fault;
        if (columns.isEmpty()) {
            fault = readHeading(text);
        } else if (table.bands.size() == maximumBands) {
            fault = tr("more than %1 bands").arg(maximumBands);
        } else {
            JuddOfeltBand band;
            fault = readBand(cells(text), band);
            table.bands.append(band);
        }
        if (!fault.isEmpty()) {
            table.error = failure(fault);
            return table;
        }
    }
    if (table.bands.isEmpty())
        table.error = tr("%1: no bands").arg(reader.fileName());
    return table;
}

} // namespace

JuddOfeltBandTable readJuddOfeltBands(const QString &fileName)
{
    return BandReader(fileName).read();
}

QString readRefractiveIndices(const QString &fileName, QVector<double> &wavelengths,
                              QVector<double> &indices)
{
    const SpectrumTable table = readSpectrumTable(fileName);
    if (!table.error.isEmpty())
        return table.error;
    wavelengths = QVector<double>(table.x.begin(), table.x.end());
    indices = QVector<double>(table.y.begin(), table.y.end());
    for (const double n : qAsConst(indices))
        if (!(n >= 1.0 && n < 10.0))
            return tr("%1: a refractive index of %2; the columns are wavelength in nm and n")
                .arg(fileName, QString::number(n));
    return QString();
}
