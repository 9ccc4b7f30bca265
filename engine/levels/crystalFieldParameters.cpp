#include "levels/crystalFieldParameters_p.h"

#include "core/parity_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"
#include "levels/LanqorCrystalField.h"
#include "levels/fieldParameters_p.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>
#include <complex>
#include <cstdlib>
#include <functional>

using Complex = std::complex<double>;

namespace crystalFieldParameters {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorCrystalField", text);
}

/// "B(4,-2)".
QString nameOf(const Parameter &B)
{
    return QStringLiteral("B(%1,%2)").arg(QString::number(B.k), QString::number(B.q));
}

QString faultOf(const Parameter &B, FieldNormalisation normalisation)
{
    if (!fieldParameters::exists(B.k, B.q))
        return tr("there is no %1; k is 2, 4 or 6 and q from -k to k").arg(nameOf(B));
    if (!std::isfinite(B.real) || !std::isfinite(B.imaginary))
        return tr("%1 is no finite number").arg(nameOf(B));
    if (B.imaginary == 0.0)
        return QString();
    if (normalisation != FieldNormalisation::Wybourne)
        return tr("%1 has an imaginary part; Stevens's parameters are real, those of the sine "
                  "type have q < 0")
            .arg(nameOf(B));
    return B.q == 0
               ? tr("%1 has an imaginary part; that of a hermitian operator is 0").arg(nameOf(B))
               : QString();
}

QString faultOfPair(const Parameter &B, const Parameter &other, FieldNormalisation normalisation)
{
    if (other.k != B.k || std::abs(other.q) != std::abs(B.q))
        return QString();
    if (other.q == B.q)
        return tr("%1 stands twice").arg(nameOf(B));
    if (normalisation != FieldNormalisation::Wybourne)
        return QString();
    constexpr double tolerance = 1e-4; // of parameters rounded to five digits
    const Complex own(B.real, B.imaginary);
    const Complex partner = parity(B.q) * Complex(other.real, -other.imaginary);
    return std::abs(own - partner) > tolerance * (1.0 + std::abs(own))
               ? tr("%1 is not (-1)^q times the complex conjugate of %2, as it is for a "
                    "hermitian operator; leave one of the two out")
                     .arg(nameOf(B), nameOf(other))
               : QString();
}

/// k and q from "4 -2", "B4-2" or "B(4,-2)", the values behind them; false when it is something
/// else.
bool parse(const QString &line, Parameter &B)
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\s*(?:[BA]\\(?([0-9])\\s*,?\\s*(-?[0-9])\\)?|([0-9]+)[\\s,;]+(-?[0-9]+))"
                       "[\\s,;]+(\\S+?)(?:[\\s,;]+(\\S+?))?[\\s,;]*$"));
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        return false;
    const bool isNamed = !match.captured(1).isEmpty();
    bool isReal = false;
    bool isImaginary = true;
    B.k = match.captured(isNamed ? 1 : 3).toInt();
    B.q = match.captured(isNamed ? 2 : 4).toInt();
    B.real = match.captured(5).toDouble(&isReal);
    B.imaginary = 0.0;
    if (!match.captured(6).isEmpty())
        B.imaginary = match.captured(6).toDouble(&isImaginary);
    return isReal && isImaginary;
}

/// Hands the lines that hold anything but a comment to @p take, until it tells of a fault. Returns
/// that with file and line, or why the file cannot be opened.
QString readLines(const QString &fileName, const std::function<QString(const QString &)> &take)
{
    LineReader reader(fileName);
    if (!reader.open())
        return missingFile(fileName);
    while (reader.next()) {
        const QString line =
            textFields::toString(reader.line()).section(QLatin1Char('#'), 0, 0).trimmed();
        const QString fault = line.isEmpty() ? QString() : take(line);
        if (!fault.isEmpty())
            return tr("%1, line %2: %3").arg(fileName, QString::number(reader.lineNumber()), fault);
    }
    return QString();
}

} // namespace

QString faultOfLast(const QVector<Parameter> &parameters, FieldNormalisation normalisation)
{
    const Parameter &last = parameters.last();
    QString fault = faultOf(last, normalisation);
    for (int i = 0; fault.isEmpty() && i + 1 < parameters.size(); ++i)
        fault = faultOfPair(last, parameters.at(i), normalisation);
    return fault;
}

} // namespace crystalFieldParameters

bool LanqorCrystalField::readParameters(const QString &fileName,
                                        const FieldNormalisation &normalisation,
                                        QVector<StarkResults::FieldParameter> &parameters,
                                        QString &error)
{
    using namespace crystalFieldParameters;
    QVector<StarkResults::FieldParameter> read;
    error = readLines(fileName, [&read, &normalisation](const QString &line) {
        StarkResults::FieldParameter B;
        if (!parse(line, B))
            return tr("\"%1\" is no parameter; a line holds k, q and the value in cm^-1 (4 -2 "
                      "35.1), of Wybourne's also the imaginary part (4 -2 35.1 -12)")
                .arg(line.left(60));
        read.append(B);
        return faultOfLast(read, normalisation);
    });
    if (error.isEmpty() && read.isEmpty())
        error = tr("%1 holds no parameter of a crystal field").arg(fileName);
    if (error.isEmpty())
        parameters = read;
    return error.isEmpty();
}

bool LanqorCrystalField::readMeasuredLevels(const QString &fileName,
                                            QVector<CrystalFieldResults::MeasuredLevel> &levels,
                                            QString &error)
{
    using namespace crystalFieldParameters;
    constexpr double highest = 1e6; // cm^-1
    QVector<CrystalFieldResults::MeasuredLevel> read;
    error = readLines(fileName, [&read](const QString &line) {
        const QString words = line.simplified();
        bool isNumber = false;
        const double energy = words.section(QLatin1Char(' '), 0, 0).toDouble(&isNumber);
        if (!isNumber || !(energy >= 0.0 && energy < highest))
            return tr("\"%1\" does not begin with an energy in cm^-1 from the ground state")
                .arg(words.left(60));
        read.append({energy, words.section(QLatin1Char(' '), 1)});
        return QString();
    });
    if (error.isEmpty())
        levels = read;
    return error.isEmpty();
}
