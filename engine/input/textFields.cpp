#include "input/textFields_p.h"

#include <QByteArray>

#include <cmath>

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
    bool converted = false;
    const double value = bytes(trimmed(text)).toDouble(&converted);
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

int decimalsOf(std::string_view number)
{
    const std::size_t point = number.find('.');
    return point == std::string_view::npos ? -1 : static_cast<int>(number.size() - point - 1);
}

QString toString(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

} // namespace textFields
