#include "TestSupport.h"

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <random>

namespace testSupport {

namespace {

QString optionalFile(const char *directory, const QString &name)
{
    const QString path = QString::fromUtf8(directory) + QLatin1Char('/') + name;
    return *directory && QFileInfo::exists(path) ? path : QString();
}

} // namespace

QString dataFile(const QString &name)
{
    return QStringLiteral(LANQOR_TEST_DATA_DIR "/") + name;
}

QString sourceFile(const QString &name)
{
    return QStringLiteral(LANQOR_SOURCE_DIR "/") + name;
}

QString corpusFile(const QString &name)
{
    return optionalFile(LANQOR_CORPUS_DIR, name);
}

QString referenceFile(const QString &name)
{
    return optionalFile(LANQOR_REFERENCE_DIR, name);
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

QString scratchFile(const QString &name, const QByteArray &bytes)
{
    static const QTemporaryDir directory;
    const QString path = directory.filePath(name);
    // A new file, not an old one cut to nothing: some file systems write those out at once.
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

MessageSpy::MessageSpy(LanqorAbstractObjCalculation &object)
{
    connect(&object, &LanqorAbstractObjCalculation::newObjCalculationMessage, this,
            [this](const QString &message) { messages.append(message); });
}

bool MessageSpy::contains(const QString &text) const
{
    return !messages.filter(text).isEmpty();
}

void writeAll(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

ProgramRun runProgram(const QStringList &arguments, const QString &workingDirectory,
                      const QMap<QString, QString> &environment, const QString &shellScript)
{
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (auto entry = environment.cbegin(); entry != environment.cend(); ++entry)
        variables.insert(entry.key(), entry.value());
    process.setProcessEnvironment(variables);
    if (!workingDirectory.isEmpty())
        process.setWorkingDirectory(workingDirectory);
    const QString program = QString::fromLocal8Bit(qgetenv("LANQOR_PROGRAM"));
    if (shellScript.isEmpty())
        process.start(program, arguments);
    else
        process.start(QStringLiteral("bash"), QStringList{"-c", shellScript, program} + arguments);
    ProgramRun run;
    if (!process.waitForFinished(300000) || process.exitStatus() != QProcess::NormalExit)
        return run;
    run.exitStatus = process.exitCode();
    run.output = QString::fromUtf8(process.readAllStandardOutput());
    run.error = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QString schemaFaults(const QString &files)
{
    const QString line = sourceFile(QStringLiteral("tools/schemas.py")) + QStringLiteral(" --%1 ") +
                         sourceFile(QStringLiteral("share/LanqorEngine/schemas ")) + files;
    if (qEnvironmentVariableIsSet("LANQOR_STORE_OUTPUTS"))
        runProgram({}, {}, {}, line.arg(QStringLiteral("write")));
    const ProgramRun check = runProgram({}, {}, {}, line.arg(QStringLiteral("check")));
    return check.output + check.error;
}

void damageFile(const QByteArray &original, int cuts, int mutations,
                const std::function<void(const QString &path)> &read)
{
    for (int i = 0; i < cuts; ++i) {
        const int length = static_cast<int>(qint64(original.size()) * i / cuts);
        read(scratchFile(QStringLiteral("cut"), original.left(length)));
    }
    std::mt19937 random(20240229);
    const auto draw = [&random](int limit) {
        return limit > 0 ? static_cast<int>(random() % static_cast<unsigned>(limit)) : 0;
    };
    for (int i = 0; i < mutations; ++i) {
        QByteArray bytes = original;
        for (int changes = 1 + draw(8); changes > 0 && !bytes.isEmpty(); --changes) {
            const int at = draw(bytes.size());
            const int length = 1 + draw(std::min(200, bytes.size() - at));
            switch (draw(5)) {
            case 0:
                bytes[at] = static_cast<char>(draw(256));
                break;
            case 1:
                bytes.remove(at, length);
                break;
            case 2:
                bytes.insert(at, bytes.mid(at, length));
                break;
            case 3:
                bytes.replace(at, length, QByteArray(length, '*'));
                break;
            default:
                bytes.replace(at, length, QByteArray(length, ' '));
                break;
            }
        }
        read(scratchFile(QStringLiteral("mutated"), bytes));
    }
}

namespace {

/// A line cut into its numbers and, blanks aside, the text between them.
struct ReportLine
{
    explicit ReportLine(const QString &line)
    {
        static const QRegularExpression number(
            QStringLiteral("[-+]?\\d+(\\.(\\d+))?(e[-+]?\\d+)?"));
        int end = 0;
        for (auto match = number.globalMatch(line); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            words += line.mid(end, found.capturedStart() - end).simplified() + QLatin1Char('#');
            end = found.capturedEnd();
            numbers.append(found.captured().toDouble());
            // All digits of a double, of which a large one is printed without decimals.
            const bool isExact = found.captured(2).size() > 9 || std::abs(numbers.last()) > 1e9;
            hasExact = hasExact || isExact;
            decimals.append(found.captured(2).size());
            lastDigits.append(isExact ? 1e-9 * std::abs(numbers.last())
                                      : std::pow(10.0, found.captured(3).mid(1).toInt() -
                                                           found.captured(2).size()));
        }
        words += line.mid(end).simplified();
    }

    bool agrees(const ReportLine &other, double relative) const
    {
        if (words != other.words || (!other.hasExact && decimals != other.decimals))
            return false;
        for (int i = 0; i < numbers.size(); ++i) {
            const double tolerance =
                std::max(relative * std::abs(other.numbers.at(i)), 1.001 * other.lastDigits.at(i));
            const bool isIndex = other.lastDigits.at(i) == 1.0;
            if (std::abs(numbers.at(i) - other.numbers.at(i)) > (isIndex ? 0.0 : tolerance))
                return false;
        }
        return true;
    }

    QString words;
    QVector<double> numbers;
    QVector<double> lastDigits;
    QVector<int> decimals;
    bool hasExact = false; ///< a number whose last digits may differ between builds
};

} // namespace

QString reportDifference(const QString &actual, const QString &expected, double relative)
{
    const QStringList actualLines = actual.split(QLatin1Char('\n'));
    const QStringList expectedLines = expected.split(QLatin1Char('\n'));
    for (int i = 0; i < std::max(actualLines.size(), expectedLines.size()); ++i) {
        const QString a = actualLines.value(i);
        const QString b = expectedLines.value(i);
        const ReportLine line(b);
        if (i >= actualLines.size() || i >= expectedLines.size() ||
            (a.size() != b.size() && !line.hasExact) || !ReportLine(a).agrees(line, relative))
            return QStringLiteral("line %1:\n  got      \"%2\"\n  expected \"%3\"")
                .arg(i + 1)
                .arg(a, b);
    }
    return QString();
}

bool isNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

} // namespace testSupport
