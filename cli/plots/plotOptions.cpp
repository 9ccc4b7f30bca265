#include "plots/plots.h"

#include "options/OptionReader.h"
#include "text.h"

#include <QFileInfo>

namespace plots {

using cli::tr;

QCommandLineOption option()
{
    return {QStringLiteral("plot"), tr("Draw a picture (.svg, .png or .pdf)."),
            QStringLiteral("picture")};
}

QString readOption(const cli::OptionReader &options, const char *name)
{
    QString file = options.text(name);
    if (options.isSet(name) && !cli::pictureSuffixes().contains(QFileInfo(file).suffix().toLower()))
        options.refuse(tr("--%1 %2: a picture is written as .svg, .png or .pdf")
                           .arg(QLatin1String(name), file));
    return file;
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
