#include "Command.h"

#include "text.h"

#include <LanqorEngine/LanqorAbstractObjCalculation.h>
#include <LanqorEngine/LanqorOutputFile.h>

#include <QDateTime>

#include <cstdio>
#include <cstring>
#include <functional>
#include <mutex>

namespace cli {

namespace {

/// What the end of the program tells.
struct Outcome
{
    std::recursive_mutex mutex; // fits run in several threads
    QString heldBack;           ///< a message that may be the error which ends the program
    QString printError;
    bool isFileLost = false;
};

Outcome &outcome()
{
    static Outcome instance;
    return instance;
}

bool write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size;
}

void complain(const QString &message)
{
    tell(QStringLiteral("lanqor: error: ") + message.trimmed());
}

void showHeldBack()
{
    QString message;
    message.swap(outcome().heldBack);
    if (!message.isEmpty())
        warn(message);
}

/// A message of progress begins with its date.
bool isProgress(const QString &message)
{
    const int dateLength = int(std::strlen("2026-01-01T00:00:00"));
    return QStringView{message}.mid(dateLength).startsWith(QLatin1String(" -> (")) &&
           QDateTime::fromString(message.left(dateLength), Qt::ISODate).isValid();
}

void showMessage(const QString &message)
{
    const std::lock_guard<std::recursive_mutex> lock(outcome().mutex);
    if (message != outcome().heldBack)
        showHeldBack();
    if (isProgress(message))
        tell(message.trimmed());
    else
        outcome().heldBack = message;
}

/// Calls @p take for those messages that are neither progress nor the last error.
void onWarning(LanqorAbstractObjCalculation &object,
               const std::function<void(const QString &)> &take)
{
    QObject::connect(&object, &LanqorAbstractObjCalculation::newObjCalculationMessage, &object,
                     [&object, take](const QString &message) {
                         if (!isProgress(message) && message != object.getLastError())
                             take(message);
                     });
}

} // namespace

void print(const QString &text)
{
    if (!write(stdout, text) && outcome().printError.isEmpty())
        outcome().printError = qt_error_string();
}

void tell(const QString &line)
{
    const std::lock_guard<std::recursive_mutex> lock(outcome().mutex);
    showHeldBack();
    write(stderr, line + QLatin1Char('\n'));
}

void note(const QString &text)
{
    tell(QStringLiteral("lanqor: note: ") + text.trimmed());
}

void warn(const QString &text)
{
    tell(QStringLiteral("lanqor: warning: ") + text.trimmed());
}

void showMessages(LanqorAbstractObjCalculation &object)
{
    QObject::connect(&object, &LanqorAbstractObjCalculation::newObjCalculationMessage, &object,
                     showMessage, Qt::DirectConnection);
}

void showWarnings(LanqorAbstractObjCalculation &object)
{
    onWarning(object, warn);
}

void keepWarnings(LanqorAbstractObjCalculation &object, QStringList &warnings)
{
    onWarning(object, [&warnings](const QString &message) {
        warn(message);
        warnings.append(message.trimmed());
    });
}

void failOf(const LanqorAbstractObjCalculation &object)
{
    throw Failure{object.getLastError()};
}

bool writeFile(const QString &fileName, const QByteArray &bytes)
{
    QString reason;
    if (LanqorOutputFile::write(fileName, bytes, reason))
        return true;
    outcome().isFileLost = true;
    complain(tr("%1 cannot be written: %2").arg(fileName, reason));
    return false;
}

int finish(int status, const QString &error)
{
    if (outcome().heldBack.trimmed() == error.trimmed())
        outcome().heldBack.clear();
    showHeldBack();
    if (!error.isEmpty())
        complain(error);
    if (std::fflush(stdout) != 0 && outcome().printError.isEmpty())
        outcome().printError = qt_error_string();
    if (!outcome().printError.isEmpty())
        complain(tr("standard output cannot be written: %1").arg(outcome().printError));
    const bool isLost = outcome().isFileLost || !outcome().printError.isEmpty();
    return isLost && status == success ? failure : status;
}

} // namespace cli
