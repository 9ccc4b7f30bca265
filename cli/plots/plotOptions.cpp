#include "plots/plots.h"

#include "options/OptionReader.h"
#include "text.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace plots {

using cli::tr;

namespace {

/// "80x60", mm, or with "mm" or "cm" behind it.
std::optional<QSizeF> sizeOf(const QString &text)
{
    constexpr double smallestMm = 20.0;
    constexpr double largestMm = 1000.0;
    constexpr double mmPerCm = 10.0;
    static const QRegularExpression form(QStringLiteral("^([0-9.]+)x([0-9.]+) ?(mm|cm)?$"));
    const QRegularExpressionMatch match = form.match(text.trimmed());
    const double unit = match.captured(3) == QLatin1String("cm") ? mmPerCm : 1.0;
    const QSizeF size(unit * match.captured(1).toDouble(), unit * match.captured(2).toDouble());
    const bool isAllowed = std::min(size.width(), size.height()) >= smallestMm &&
                           std::max(size.width(), size.height()) <= largestMm;
    return isAllowed ? std::optional<QSizeF>(size) : std::nullopt;
}

SheetRequest &request()
{
    static SheetRequest ofCommand;
    return ofCommand;
}

} // namespace

const SheetRequest &sheetRequest()
{
    return request();
}

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
    if (options.isSet("title"))
        request().title = options.text("title");
    if (options.isSet("size")) {
        request().sizeMm = sizeOf(options.text("size"));
        if (!request().sizeMm)
            options.refuse(tr("--size %1 is not of the form WIDTHxHEIGHT in mm (80x60, or 8x6cm), "
                              "each from 20 to 1000 mm")
                               .arg(options.text("size")));
    }
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
