#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

/// Scanning of single lines of program output, common to all readers. Numbers are read in the C
/// locale; a failed conversion yields 0, as does a number that is not finite.
namespace textFields {

using Fields = std::vector<std::string_view>;

bool contains(std::string_view line, std::string_view text);
bool startsWith(std::string_view line, std::string_view text);
std::string_view trimmed(std::string_view text);
inline bool isBlank(std::string_view line)
{
    return trimmed(line).empty();
}

/// Splits at blanks and tabs, dropping empty parts; @p fields is reused from line to line.
void split(std::string_view line, Fields &fields);
/// Splits at every occurrence of @p separator, dropping empty parts.
void split(std::string_view line, std::string_view separator, Fields &fields);

/// Copies @p line to @p copy with blanks in place of asterisks (marks of optimised values) and of
/// atom tags in parentheses, "C(  1)".
void copyWithoutMarks(std::string_view line, std::string &copy);

double toDouble(std::string_view text, bool *ok = nullptr);
int toInt(std::string_view text, bool *ok = nullptr);
bool isInteger(std::string_view text);
/// The fields as integers; empty when one is none.
std::vector<int> toInts(const Fields &fields);
/// Digits behind the decimal point of a number; -1 without a point.
int decimalsOf(std::string_view number);
/// Takes a number with exactly @p decimals decimals off the front of @p text, as columns of one
/// format are read that may touch ("2.717131-11.625625"). False when there is none.
bool takeFixedDecimal(std::string_view &text, std::size_t decimals, double &value);
/// Number that follows @p keyword, up to the next blank.
double numberAfter(std::string_view line, std::string_view keyword, bool *ok = nullptr);
/// Number that stands before @p keyword, from the blank before it.
double numberBefore(std::string_view line, std::string_view keyword, bool *ok = nullptr);
/// Text of a line for a record or a message: UTF-8, or Latin-1 where it is not valid as such.
QString toString(std::string_view text);

} // namespace textFields
