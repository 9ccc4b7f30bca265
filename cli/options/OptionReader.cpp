#include "options/OptionReader.h"

#include "Command.h"
#include "text.h"

#include <QFileInfo>

namespace cli {

OptionReader::OptionReader(const char *command)
    : program(QStringLiteral("lanqor ") + QLatin1String(command))
{}

void OptionReader::setDescription(const QString &text)
{
    parser.setApplicationDescription(text);
}

void OptionReader::addArgument(const QString &name, const QString &description,
                               const QString &syntax)
{
    parser.addPositionalArgument(name, description, syntax);
}

void OptionReader::addOption(const QCommandLineOption &option)
{
    parser.addOption(option);
}

void OptionReader::addOptions(const QList<QCommandLineOption> &options)
{
    parser.addOptions(options);
}

void OptionReader::setHint(const QString &text)
{
    hint = text;
}

void OptionReader::parse(const QStringList &arguments)
{
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOption(help);
    if (!parser.parse(QStringList(program) + arguments))
        throw UsageError{QStringLiteral("%1\nSee \"%2 --help\".").arg(parser.errorText(), program)};
    if (!parser.isSet(help))
        return;
    // The usage line of the parser names the executable only.
    QString text = parser.helpText();
    const int end = text.indexOf(QLatin1Char('\n'));
    const int options = text.indexOf(QStringLiteral(" [options]"));
    if (options > 0 && options < end)
        text = QStringLiteral("Usage: ") + program + text.mid(options);
    throw HelpRequest{text};
}

QStringList OptionReader::files() const
{
    return parser.positionalArguments();
}

QStringList OptionReader::files(int count, const QString &complaint) const
{
    if (files().size() != count)
        refuse(complaint);
    return files();
}

bool OptionReader::isSet(const char *option) const
{
    return parser.isSet(QLatin1String(option));
}

QString OptionReader::text(const char *option) const
{
    return parser.value(QLatin1String(option));
}

double OptionReader::number(const char *option, const std::function<bool(double)> &isAllowed,
                            const QString &needed) const
{
    bool isNumber = false;
    const double value = text(option).toDouble(&isNumber);
    if (!isNumber || !isAllowed(value))
        refuse(tr("--%1 needs %2").arg(QLatin1String(option), needed));
    return value;
}

int OptionReader::wholeNumber(const char *option, int minimum, int maximum,
                              const QString &needed) const
{
    bool isNumber = false;
    const int value = text(option).toInt(&isNumber);
    if (!isNumber || value < minimum || value > maximum)
        refuse(tr("--%1 needs %2").arg(QLatin1String(option), needed));
    return value;
}

int OptionReader::count(const char *option, int maximum) const
{
    return wholeNumber(option, 1, maximum, tr("a whole number from 1 to %1").arg(maximum));
}

int OptionReader::wholeNumber(const char *option) const
{
    bool isNumber = false;
    const int value = text(option).toInt(&isNumber);
    if (!isNumber)
        refuse(tr("--%1 %2 is not a whole number").arg(QLatin1String(option), text(option)));
    return value;
}

QStringList OptionReader::list(const char *option) const
{
    QStringList entries = text(option).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (QString &entry : entries)
        entry = entry.trimmed();
    return entries;
}

QVector<double> OptionReader::numbers(const char *option) const
{
    QVector<double> values;
    for (const QString &entry : text(option).split(QLatin1Char(','))) {
        bool isNumber = false;
        values.append(entry.trimmed().toDouble(&isNumber));
        if (!isNumber)
            return {};
    }
    return values;
}

QString OptionReader::outputFile(const char *option) const
{
    return text(option).isEmpty() ? QString() : QFileInfo(text(option)).absoluteFilePath();
}

void OptionReader::refuse(const QString &message) const
{
    throw UsageError{message + hint};
}

} // namespace cli
