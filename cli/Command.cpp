#include "Command.h"

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QSaveFile>

#include <cstdio>

namespace cli {

namespace {

void write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

void print(const QString &text)
{
    write(stdout, text);
}

void note(const QString &text)
{
    write(stderr, text + QLatin1Char('\n'));
}

void complain(const QString &message)
{
    note(QStringLiteral("lanqor: ") + message.trimmed());
}

void showMessages(LanqorAbstractObjCalculation &object)
{
    QObject::connect(&object, &LanqorAbstractObjCalculation::newObjCalculationMessage, &object,
                     [&object](const QString &message) {
                         if (message != object.getLastError()) // main() shows that one
                             note(message.trimmed());
                     });
}

void failOf(const LanqorAbstractObjCalculation &object)
{
    throw Failure{object.getLastError()};
}

void writeFile(const QString &fileName, const QByteArray &bytes)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) < 0 || !file.commit())
        throw Failure{QStringLiteral("%1: %2").arg(fileName, file.errorString())};
}

} // namespace cli
