#include "Command.h"

#include <LanqorEngine/LanqorAbstractObjCalculation.h>

#include <QCoreApplication>
#include <QTextStream>
#include <QVector>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace cli {

namespace {

void write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
}

} // namespace

void parse(QCommandLineParser &parser, const char *name, const QStringList &arguments)
{
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    const QString program = QStringLiteral("lanqor ") + QLatin1String(name);
    if (!parser.parse(QStringList(program) + arguments)) {
        note(QStringLiteral("lanqor: %1\nSee \"%2 --help\".").arg(parser.errorText(), program));
        std::exit(usageError);
    }
    if (parser.isSet(help)) {
        // The usage line of the parser names the executable only.
        QString text = parser.helpText();
        const int end = text.indexOf(QLatin1Char('\n'));
        const int options = text.indexOf(QStringLiteral(" [options]"));
        if (options > 0 && options < end)
            text = QStringLiteral("Usage: ") + program + text.mid(options);
        print(text);
        std::exit(success);
    }
}

void print(const QString &text)
{
    write(stdout, text);
}

void note(const QString &text)
{
    write(stderr, text + QLatin1Char('\n'));
}

int fail(const QString &message, int status)
{
    note(QStringLiteral("lanqor: ") + message.trimmed());
    return status;
}

void showMessages(LanqorAbstractObjCalculation &object)
{
    QObject::connect(&object, &LanqorAbstractObjCalculation::newObjCalculationMessage, &object,
                     [&object](const QString &message) {
                         if (message != object.getLastError()) // fail() shows that one
                             note(message.trimmed());
                     });
}

bool parsePairs(const QString &text, QVector<QPair<QString, double>> &pairs, QString &error)
{
    const QStringList entries = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &entry : entries) {
        const QStringList parts = entry.split(QLatin1Char('='));
        bool ok = false;
        const double value = parts.size() == 2 ? parts.at(1).trimmed().toDouble(&ok) : 0.0;
        if (!ok || !std::isfinite(value) || parts.at(0).trimmed().isEmpty()) {
            error = QCoreApplication::translate("cli", "\"%1\" is not of the form NAME=NUMBER")
                        .arg(entry.trimmed());
            return false;
        }
        const QString name = parts.at(0).trimmed();
        for (const auto &pair : pairs) {
            if (pair.first == name) {
                error = QCoreApplication::translate("cli", "\"%1\" is given twice").arg(name);
                return false;
            }
        }
        pairs.append({name, value});
    }
    if (pairs.isEmpty())
        error = QCoreApplication::translate("cli", "no NAME=NUMBER given");
    return !pairs.isEmpty();
}

} // namespace cli
