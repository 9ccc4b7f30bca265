#pragma once

#include <LanqorEngine/ResultTable.h>

#include <QString>
#include <QVariant>

#include <cmath>

/// What the rooms share when they turn their records into tables.
namespace resultColumns {

/// A column of quantities, or without a unit one of indices or texts.
inline ResultColumn column(const char *key, const char *unit = "")
{
    return {QLatin1String(key), QLatin1String(unit)};
}

/// The unit of a quantity whose rows have units of their own, in the column "unit".
constexpr char unitOfRow[] = "unit";

/// A column of uncertainties of the quantity @p of.
inline ResultColumn uncertainty(const char *key, const char *of, const char *unit)
{
    return {QLatin1String(key), QLatin1String(unit), QLatin1String(of)};
}

/// Nothing for a value that does not exist: one that is no number, a limit that is infinite, a
/// ratio with nothing below the line.
inline QVariant existing(double value)
{
    return std::isfinite(value) ? QVariant(value) : QVariant();
}

} // namespace resultColumns
