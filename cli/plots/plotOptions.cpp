#include "plots/plots.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

namespace plots {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

} // namespace

void addOption(QCommandLineParser &parser)
{
    parser.addOption({QStringLiteral("plot"), tr("Draw a picture (.svg, .png or .pdf)."),
                      QStringLiteral("file")});
}

bool readOption(const QCommandLineParser &parser, QString &file, QString &error)
{
    file = parser.value(QStringLiteral("plot"));
    static const QStringList suffixes = {QStringLiteral("svg"), QStringLiteral("png"),
                                         QStringLiteral("pdf")};
    if (!parser.isSet(QStringLiteral("plot")) ||
        suffixes.contains(QFileInfo(file).suffix().toLower()))
        return true;
    error = tr("--plot %1: a picture is written as .svg, .png or .pdf").arg(file);
    return false;
}

QString superscript(int number)
{
    const QString digits = QString::fromUtf8("⁰¹²³⁴⁵⁶⁷⁸⁹");
    QString text;
    for (const QChar digit : QString::number(number))
        text += digit.isDigit() ? digits.at(digit.digitValue()) : QChar(0x207b); // minus
    return text;
}

} // namespace plots
