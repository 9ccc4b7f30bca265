#include "input/spectrumTable_p.h"

#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <string>
#include <string_view>

namespace {

/// No instrument records more; keeps a damaged file from filling the memory.
constexpr std::size_t maximumPoints = 2000000;

QString tr(const char *text)
{
    return QCoreApplication::translate("emissionSpectrum", text);
}

std::string_view withoutCommas(std::string_view field)
{
    while (!field.empty() && field.front() == ',')
        field.remove_prefix(1);
    while (!field.empty() && field.back() == ',')
        field.remove_suffix(1);
    return field;
}

double toNumber(std::string_view field, bool &ok)
{
    std::string text(field);
    if (text.find('.') == std::string::npos && std::count(text.begin(), text.end(), ',') == 1)
        std::replace(text.begin(), text.end(), ',', '.');
    return textFields::toDouble(text, &ok);
}

/// True when commas are known to separate the columns of the file, for a line has two numbers with
/// nothing but a comma between, and a decimal point.
bool areCommasSeparators(LineReader &reader)
{
    textFields::Fields columns;
    bool isX = false;
    bool isY = false;
    while (!(isX && isY) && reader.next()) {
        isX = isY = false;
        textFields::split(reader.line(), ",", columns);
        if (columns.size() < 2 || !textFields::contains(reader.line(), "."))
            continue;
        textFields::toDouble(columns[0], &isX);
        textFields::toDouble(columns[1], &isY);
    }
    return isX && isY;
}

/// Splits a line into its columns. Where only commas stand between, they separate the columns;
/// several of them might be decimal signs as well: unless @p areSeparators, such a line has none.
void splitColumns(std::string_view line, bool areSeparators, std::string &copy,
                  textFields::Fields &columns)
{
    copy.assign(line.substr(0, line.find('#')));
    std::replace(copy.begin(), copy.end(), ';', ' ');
    textFields::split(std::string_view(copy), columns);
    for (std::string_view &column : columns)
        column = withoutCommas(column);
    columns.erase(std::remove_if(columns.begin(), columns.end(),
                                 [](std::string_view column) { return column.empty(); }),
                  columns.end());
    if (columns.size() != 1)
        return;
    const std::string_view only = columns.front();
    textFields::split(only, ",", columns);
    if (columns.size() > 2 && !areSeparators)
        columns.clear();
}

/// Gathers the lines of the table and checks their order.
class Table
{
public:
    explicit Table(bool areCommasSeparators)
        : areCommasSeparators(areCommasSeparators)
    {}

    /// Takes the next line; false when the table is broken there.
    bool take(std::string_view line)
    {
        splitColumns(line, areCommasSeparators, copy, columns);
        bool isX = false;
        bool isY = false;
        const double x = columns.size() > 1 ? toNumber(columns[0], isX) : 0.0;
        const double y = columns.size() > 1 ? toNumber(columns[1], isY) : 0.0;
        if (!isX || !isY) {
            isOver = isOver || (!xs.empty() && !textFields::isBlank(copy));
            return true;
        }
        for (const std::string_view number : {columns[0], columns[1]}) {
            hasPoint = hasPoint || textFields::contains(number, ".");
            hasComma = hasComma || textFields::contains(number, ",");
        }
        // With both in use, 1,234 may be a thousand or a little more than one.
        if (isOver || (hasPoint && hasComma) || xs.size() >= maximumPoints)
            return false;
        xs.push_back(x);
        ys.push_back(y);
        const std::size_t n = xs.size();
        if (n < 2)
            return true;
        return xs[1] > xs[0] ? xs[n - 1] > xs[n - 2] : xs[n - 1] < xs[n - 2];
    }

    std::vector<double> xs;
    std::vector<double> ys;

private:
    const bool areCommasSeparators;
    bool hasPoint = false;
    bool hasComma = false;
    bool isOver = false;
    std::string copy;
    textFields::Fields columns;
};

} // namespace

SpectrumTable readSpectrumTable(const QString &fileName)
{
    SpectrumTable result;
    LineReader reader(fileName);
    if (!reader.open()) {
        result.error =
            tr("%1: the spectrum cannot be read: %2").arg(fileName, reader.errorString());
        return result;
    }
    Table table(areCommasSeparators(reader));
    reader.open(); // from the beginning again
    while (reader.next()) {
        if (table.take(reader.line()))
            continue;
        result.error = tr("%1, line %2: the table of the spectrum is broken; its first column must "
                          "ascend or descend throughout, with one decimal sign and without other "
                          "lines between, to at most %3 points.")
                           .arg(fileName, QString::number(reader.lineNumber()),
                                QString::number(maximumPoints));
        return result;
    }
    if (table.xs.size() < 2) {
        result.error = tr("%1: no spectrum found; two columns of numbers are needed, wavelength "
                          "(nm) or wavenumber (cm^-1) and intensity.")
                           .arg(fileName);
        return result;
    }
    if (table.xs.front() > table.xs.back()) {
        std::reverse(table.xs.begin(), table.xs.end());
        std::reverse(table.ys.begin(), table.ys.end());
    }
    result.x = std::move(table.xs);
    result.y = std::move(table.ys);
    return result;
}
