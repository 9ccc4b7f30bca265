#pragma once

#include <QString>

/// Numbers of reports (C locale).
namespace reportText {

/// Heading of the tables of reactivity indices, in reports and in ".indeces" files.
constexpr char indicesHeading[] =
    " Atomic Charges (au)             Varno Superdelocalizabilities (au)\n";

/// Fixed notation, right-aligned in @p width columns.
QString fixed(double value, int decimals, int width = 0);
/// Exponential notation, right-aligned in @p width columns.
QString exponential(double value, int decimals, int width = 0);

} // namespace reportText
