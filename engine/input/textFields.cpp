#include "input/textFields_p.h"

#include <QByteArray>
#include <QTextCodec>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace textFields {

namespace {

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

QByteArray bytes(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
}

void report(bool *ok, bool value)
{
    if (ok)
        *ok = value;
}

/// Reads a plain decimal ("-12.345678") of at most 15 digits. Digits and power of ten are then
/// exact in a double, and one division rounds to the very bits of the general conversion, at a
/// tenth of its cost: coefficient tables hold millions of such numbers.
bool toPlainDecimal(std::string_view text, double &value)
{
    constexpr int maximumDigits = 15;
    constexpr double powersOfTen[maximumDigits + 1] = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    std::size_t i = 0;
    const bool negative = !text.empty() && text[0] == '-';
    if (negative)
        i = 1;
    std::int64_t digits = 0;
    int count = 0;
    int decimals = -1;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.' && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (c < '0' || c > '9' || ++count > maximumDigits)
            return false;
        digits = 10 * digits + (c - '0');
        if (decimals >= 0)
            ++decimals;
    }
    if (count == 0 || decimals < 1 || count == decimals)
        return false;
    const double magnitude = static_cast<double>(digits) / powersOfTen[decimals];
    value = negative ? -magnitude : magnitude;
    return true;
}

} // namespace

bool contains(std::string_view line, std::string_view text)
{
    return line.find(text) != std::string_view::npos;
}

bool startsWith(std::string_view line, std::string_view text)
{
    return line.substr(0, text.size()) == text;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

void split(std::string_view line, Fields &fields)
{
    fields.clear();
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && isSpace(line[i]))
            ++i;
        const std::size_t begin = i;
        while (i < line.size() && !isSpace(line[i]))
            ++i;
        if (i > begin)
            fields.push_back(line.substr(begin, i - begin));
    }
}

void split(std::string_view line, std::string_view separator, Fields &fields)
{
    fields.clear();
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(separator), line.size());
        if (end > 0)
            fields.push_back(line.substr(0, end));
        line.remove_prefix(std::min(end + separator.size(), line.size()));
    }
}

void copyWithoutMarks(std::string_view line, std::string &copy)
{
    copy.clear();
    bool inTag = false;
    for (const char c : line) {
        inTag = inTag || c == '(';
        copy.push_back(inTag || c == '*' ? ' ' : c);
        inTag = inTag && c != ')';
    }
}

double toDouble(std::string_view text, bool *ok)
{
    text = trimmed(text);
    double value = 0.0;
    bool converted = toPlainDecimal(text, value);
    if (converted) {
        report(ok, true);
        return value;
    }
    value = bytes(text).toDouble(&converted);
    converted = converted && std::isfinite(value);
    report(ok, converted);
    return converted ? value : 0.0;
}

int toInt(std::string_view text, bool *ok)
{
    bool converted = false;
    const int value = bytes(trimmed(text)).toInt(&converted);
    report(ok, converted);
    return converted ? value : 0;
}

bool isInteger(std::string_view text)
{
    bool ok = false;
    toInt(text, &ok);
    return ok;
}

std::vector<int> toInts(const Fields &fields)
{
    std::vector<int> numbers;
    for (const std::string_view field : fields) {
        bool ok = false;
        numbers.push_back(toInt(field, &ok));
        if (!ok)
            return {};
    }
    return numbers;
}

int decimalsOf(std::string_view number)
{
    const std::size_t point = number.find('.');
    return point == std::string_view::npos ? -1 : static_cast<int>(number.size() - point - 1);
}

bool takeFixedDecimal(std::string_view &text, std::size_t decimals, double &value)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    const std::size_t point = text.find('.');
    if (begin == std::string_view::npos || point == std::string_view::npos ||
        text.size() - point <= decimals)
        return false;
    const std::size_t end = point + 1 + decimals;
    bool ok = false;
    value = toDouble(text.substr(begin, end - begin), &ok);
    text.remove_prefix(end);
    return ok;
}

double numberAfter(std::string_view line, std::string_view keyword, bool *ok)
{
    const std::size_t at = line.find(keyword);
    report(ok, false);
    if (at == std::string_view::npos)
        return 0.0;
    line.remove_prefix(at + keyword.size());
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    const std::size_t end = std::min(line.find_first_of(" \t", begin), line.size());
    return toDouble(line.substr(begin, end - begin), ok);
}

double numberBefore(std::string_view line, std::string_view keyword, bool *ok)
{
    const std::size_t at = line.find(keyword);
    report(ok, false);
    if (at == std::string_view::npos)
        return 0.0;
    line = trimmed(line.substr(0, at));
    const std::size_t blank = line.find_last_of(" \t");
    return toDouble(blank == std::string_view::npos ? line : line.substr(blank + 1), ok);
}

QString toString(std::string_view text)
{
    const int size = static_cast<int>(text.size());
    const bool isAscii = std::none_of(text.begin(), text.end(),
                                      [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
    if (isAscii)
        return QString::fromLatin1(text.data(), size);
    QTextCodec::ConverterState state;
    const QString decoded = QTextCodec::codecForName("UTF-8")->toUnicode(text.data(), size, &state);
    const bool isValid = state.invalidChars == 0 && state.remainingChars == 0;
    return isValid ? decoded : QString::fromLatin1(text.data(), size);
}

} // namespace textFields
