#include "input/intensityReportReader_p.h"

#include "core/physicalConstants_p.h"
#include "input/lineReader_p.h"
#include "input/textFields_p.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The line that tells a report stands below the banner.
constexpr qint64 lastHeadLine = 30;

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorOmega", text);
}

/// An entry "name(number) = value" of a line.
struct Entry
{
    int number = 0;
    double value = 0.0;
    bool isFound = false;
};

/// Finds "name(number) = value" behind a blank or at the start of the line; the value ends at a
/// blank or at the end of what is a number without its unit's power of ten.
Entry findEntry(std::string_view line, std::string_view name)
{
    const std::size_t begin = line.find(name);
    if (begin == std::string_view::npos || (begin > 0 && line[begin - 1] != ' '))
        return {};
    std::string_view rest = line.substr(begin + name.size());
    const std::size_t close = rest.find(')');
    const std::size_t equals = rest.find('=');
    if (close == std::string_view::npos || equals == std::string_view::npos || equals < close)
        return {};
    Entry entry;
    bool isNumber = false;
    entry.number = textFields::toInt(rest.substr(0, close), &isNumber);
    rest.remove_prefix(equals + 1);
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    bool isValue = false;
    entry.value = textFields::toDouble(rest.substr(0, rest.find_first_of(" e")), &isValue);
    entry.isFound = isNumber && isValue;
    return entry;
}

/// Reads the rows of the charge-factor section, whose title line was just read.
bool readChargeFactorRows(LineReader &reader, IntensityReportData &report)
{
    bool hasRows = false;
    while (reader.next()) {
        const Entry g = findEntry(reader.line(), "g(");
        const Entry alpha = findEntry(reader.line(), "alpha(");
        if (!g.isFound && !hasRows)
            continue; // rule and blank line under the title
        if (textFields::isBlank(reader.line()))
            return true;
        if (!g.isFound || g.number != report.chargeFactors.size() || !alpha.isFound ||
            alpha.number != g.number)
            return false;
        report.chargeFactors.append(g.value);
        report.alphas.append(alpha.value * lanqor::cm3PerCubicAngstrom);
        hasRows = true;
    }
    return false; // a whole report has a blank line behind the rows
}

} // namespace

bool isIntensityReport(const QString &fileName)
{
    LineReader reader(fileName);
    if (fileName.isEmpty() || !reader.open())
        return false;
    while (reader.lineNumber() < lastHeadLine && reader.next()) {
        if (textFields::startsWith(reader.line(),
                                   textFields::trimmed(intensityReportText::geometryLine)))
            return true;
    }
    return false;
}

IntensityReportData readIntensityReport(const QString &fileName)
{
    IntensityReportData report;
    LineReader reader(fileName);
    if (!reader.open()) {
        report.error = tr("The report %1 cannot be read: %2.").arg(fileName, reader.errorString());
        return report;
    }
    report.chargeFactors.fill(0.0, 2);
    report.alphas.fill(0.0, 2);
    bool hasRows = false;
    while (reader.next()) {
        if (textFields::contains(reader.line(),
                                 textFields::trimmed(intensityReportText::chargeFactorTitle))) {
            hasRows = !hasRows && readChargeFactorRows(reader, report);
            if (!hasRows) {
                report.error = tr("The charge-factor section of the report %1 is damaged at line "
                                  "%2: it must hold one row for each of atoms 2 to N+1.")
                                   .arg(fileName, QString::number(reader.lineNumber()));
                return report;
            }
        }
        const Entry omega = findEntry(reader.line(), "omega(");
        if (omega.isFound && (omega.number == 2 || omega.number == 4 || omega.number == 6))
            report.omega.insert(omega.number, omega.value);
    }
    if (!hasRows)
        report.error = tr("The report %1 has no section of charge factors and polarizabilities.")
                           .arg(fileName);
    return report;
}
