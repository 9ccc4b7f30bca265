#pragma once

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class LanqorAbstractObjCalculation;

namespace testSupport {

/// Path of a fixture in tests/data.
QString dataFile(const QString &name);
/// Path of a file of this repository.
QString sourceFile(const QString &name);
/// Path of a file of the optional corpus of real outputs; empty when it is not at hand.
QString corpusFile(const QString &name);
/// Path of a file of the optional reference values; empty when it is not at hand.
QString referenceFile(const QString &name);
QByteArray readAll(const QString &path);
/// Replaces a file by these bytes.
void writeAll(const QString &path, const QByteArray &bytes);
/// Writes @p bytes to a file in the test's scratch folder and returns its path.
QString scratchFile(const QString &name, const QByteArray &bytes);

/// Keeps the messages of a calculation object.
class MessageSpy : public QObject
{
public:
    explicit MessageSpy(LanqorAbstractObjCalculation &object);
    QStringList messages;
    bool contains(const QString &text) const;
};

/// What the lanqor program did.
struct ProgramRun
{
    int exitStatus = -1;
    QString output;
    QString error;
};
/// Runs the lanqor program built here, with changes to the environment if given; with a shell
/// script through bash, in which "$0" "$@" is the command.
ProgramRun runProgram(const QStringList &arguments, const QString &workingDirectory = QString(),
                      const QMap<QString, QString> &environment = {},
                      const QString &shellScript = QString());

/// What tools/schemas.py tells of results in JSON (a pattern of the shell) that it checks by the
/// schemas of share/; with LANQOR_STORE_OUTPUTS set it first makes them of these.
QString schemaFaults(const QString &files);

/// Calls @p read with the file cut at @p cuts places and with @p mutations random mutations
/// (bytes changed, runs deleted, doubled or filled with asterisks); the seed is fixed.
void damageFile(const QByteArray &original, int cuts, int mutations,
                const std::function<void(const QString &path)> &read);

/// Compares a report with a stored one line by line: the same words, line lengths and decimals, and
/// numbers that agree to @p relative or to a step of their last printed digit. Returns the first
/// difference; empty when there is none.
QString reportDifference(const QString &actual, const QString &expected, double relative = 1e-3);

/// |a - b| <= tolerance.
bool isNear(double a, double b, double tolerance);

} // namespace testSupport

/// Compares doubles with an absolute tolerance; a failure prints both.
#define COMPARE_NEAR(actual, expected, tolerance)                                                  \
    do {                                                                                           \
        const double actualValue = (actual);                                                       \
        const double expectedValue = (expected);                                                   \
        QVERIFY2(testSupport::isNear(actualValue, expectedValue, (tolerance)),                     \
                 qPrintable(QStringLiteral(#actual ": got %1, expected %2")                        \
                                .arg(actualValue, 0, 'g', 17)                                      \
                                .arg(expectedValue, 0, 'g', 17)));                                 \
    } while (false)

/// Path of a corpus file, or skips the test function.
#define CORPUS_FILE(variable, name)                                                                \
    const QString variable = testSupport::corpusFile(QStringLiteral(name));                        \
    if (variable.isEmpty())                                                                        \
    QSKIP("needs LANQOR_CORPUS_DIR")
