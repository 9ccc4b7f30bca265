#include "input/fitFileFaults_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace fitFiles {

namespace {

/// What the fields of a line have to be: a letter for each, w a word, i a whole number, d a number,
/// p a positive one; the letter before * stands for any number of fields, none included; those
/// behind | may be left out together.
struct LineForm
{
    const char *extension;
    const char *fields;
};

constexpr LineForm lineForms[] = {
    {".groups", "wi*"}, {".exp", "iddd|pp"}, {".limits", "wdd"}, {".chargefactors", "wi*d"}};

QString tr(const char *text)
{
    return QCoreApplication::translate("fitFiles", text);
}

QString textOf(const LineReader &reader)
{
    return textFields::toString(reader.line());
}

/// One letter for each of @p count fields of a line.
QByteArray lettersOf(const LineForm &form, int count)
{
    QByteArray letters(form.fields);
    const int optional = letters.indexOf('|');
    if (optional >= 0)
        return count > optional ? letters.remove(optional, 1) : letters.left(optional);
    const int star = letters.indexOf('*');
    if (star < 0)
        return letters;
    const int others = letters.size() - 2;
    return letters.left(star - 1) + QByteArray(std::max(0, count - others), letters.at(star - 1)) +
           letters.mid(star + 1);
}

/// What is wrong with a line; empty when nothing is.
QString lineFault(const LineForm &form, const QStringList &fields)
{
    const QByteArray letters = lettersOf(form, fields.size());
    if (fields.size() < letters.size())
        return tr("%1 of %2 fields are missing and count as 0")
            .arg(QString::number(letters.size() - fields.size()), QString::number(letters.size()));
    if (fields.size() > letters.size())
        return tr("fields from \"%1\" on are ignored").arg(fields.at(letters.size()));
    for (int i = 0; i < fields.size(); ++i) {
        bool ok = true;
        if (letters.at(i) == 'i')
            fields.at(i).toInt(&ok);
        else if (letters.at(i) == 'd')
            fields.at(i).toDouble(&ok);
        else if (letters.at(i) == 'p')
            ok = fields.at(i).toDouble() > 0.0;
        if (!ok && letters.at(i) == 'p')
            return tr("\"%1\" is no positive standard deviation and counts as 1").arg(fields.at(i));
        if (!ok)
            return letters.at(i) == 'i'
                       ? tr("\"%1\" is no whole number and counts as 0").arg(fields.at(i))
                       : tr("\"%1\" is no number and counts as 0").arg(fields.at(i));
    }
    return QString();
}

} // namespace

QStringList starkFitFaults(const QString &baseName)
{
    constexpr qint64 maximumLines = 20000; // of each file
    QStringList faults;
    for (const LineForm &form : lineForms) {
        const QString fileName = baseName + QLatin1String(form.extension);
        LineReader reader(fileName);
        if (!reader.open())
            continue;
        while (reader.lineNumber() < maximumLines && reader.next()) {
            const QStringList fields =
                textOf(reader).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
            const QString fault = fields.isEmpty() ? QString() : lineFault(form, fields);
            if (!fault.isEmpty())
                faults.append(QStringLiteral("%1, line %2: %3")
                                  .arg(fileName, QString::number(reader.lineNumber()), fault));
        }
    }
    return faults;
}

QString measuredDeviationFault(const QString &fileName)
{
    LineReader reader(fileName);
    if (!reader.open())
        return QString();
    while (reader.next()) {
        const QStringList fields =
            textOf(reader).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QChar plusMinus(0xb1); // the sign itself, which is not read
        const auto told = std::find_if(fields.begin() + std::min(1, int(fields.size())),
                                       fields.end(), [plusMinus](const QString &field) {
                                           return field.startsWith(QLatin1String("+-")) ||
                                                  field.contains(plusMinus);
                                       });
        if (told == fields.end() || reader.lineNumber() == 1)
            continue;
        const bool isNextNumber = told->size() == 2 && fields.end() - told > 2;
        const double deviation = (isNextNumber ? *(told + 1) : told->mid(2)).toDouble();
        constexpr double smallest = 1.0e-6; // cm^-1
        if (!(deviation >= smallest && std::isfinite(deviation)) || told + 1 == fields.end() ||
            told->contains(plusMinus))
            return tr("%1, line %2: \"+-\" needs a positive standard deviation in cm^-1 between "
                      "label and energy, as in 4I11/2 +-5 2007")
                .arg(fileName, QString::number(reader.lineNumber()));
    }
    return QString();
}

bool hasHeading(const QString &fileName)
{
    static const QRegularExpression level(QStringLiteral(
        "^\\s*[1-8][SPDFGHIKLMNOQ](\\(\\d+\\))?[\\d./]+\\s+([^\\s]+\\s+)*[\\d.]+\\s*$"));
    LineReader reader(fileName);
    return !reader.open() || !reader.next() || !level.match(textOf(reader)).hasMatch();
}

} // namespace fitFiles
