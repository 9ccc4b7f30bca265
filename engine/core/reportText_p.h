#pragma once

#include <QString>

/// Numbers of reports (C locale) and the writing of report files.
namespace reportText {

/// Heading of the tables of reactivity indices, in reports and in ".indeces" files.
constexpr char indicesHeading[] =
    " Atomic Charges (au)             Varno Superdelocalizabilities (au)\n";

/// Fixed notation, right-aligned in @p width columns.
QString fixed(double value, int decimals, int width = 0);
/// Exponential notation, right-aligned in @p width columns.
QString exponential(double value, int decimals, int width = 0);

/// Writes @p text (UTF-8) to @p fileName by way of a temporary file beside it, so that an
/// existing file is replaced whole or not at all. False with the system's reason in @p error.
bool writeFile(const QString &fileName, const QString &text, QString &error);

} // namespace reportText
