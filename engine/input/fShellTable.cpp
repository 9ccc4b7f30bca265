#include "input/fShellTable_p.h"

#include <QCoreApplication>

#include <cmath>

namespace {

/// The longest table has 3724 lines; keeps a damaged one from taking hours.
constexpr int maximumLines = 20000;

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorEnergyLevels", text);
}

} // namespace

FShellTableReader::FShellTableReader(const QString &fileName)
    : reader(fileName)
{}

bool FShellTableReader::open()
{
    if (reader.open())
        return true;
    fail(reader.errorString());
    return false;
}

bool FShellTableReader::next()
{
    if (!error.isEmpty() || !reader.next() || reader.line().empty())
        return false;
    if (reader.lineNumber() > maximumLines) {
        fail(tr("more than %1 lines").arg(maximumLines));
        return false;
    }
    textFields::split(reader.line(), fields);
    return true;
}

bool FShellTableReader::contains(const QByteArray &text) const
{
    return textFields::contains(reader.line(), {text.constData(), std::size_t(text.size())});
}

QString FShellTableReader::text(std::size_t field) const
{
    return field < fields.size() ? textFields::toString(fields[field]) : QString();
}

double FShellTableReader::number(std::size_t field)
{
    const double value = text(field).toDouble();
    if (std::isfinite(value))
        return value;
    fail(tr("line %1: a number is not finite").arg(reader.lineNumber()));
    return 0.0;
}

void FShellTableReader::fail(const QString &reason)
{
    error = QStringLiteral("Energy Levels Calculation\n") + reader.fileName() +
            QStringLiteral("  ") + reason;
}
