#pragma once

#include <QString>

#include <vector>

/// The first two columns of an instrument's text file.
struct SpectrumTable
{
    std::vector<double> x; ///< strictly ascending, at least two values
    std::vector<double> y;
    QString error; ///< why the file holds no spectrum; empty when it does
};

/// Reads abscissa and intensity, separated by blanks, tabs, semicolons or commas. A comma counts as
/// the decimal sign where the columns are separated otherwise; a file with decimal points and
/// commas is refused. Lines before the first two numbers are a heading, lines after the last ones
/// a trailer; "#" starts a comment. The abscissa must ascend or descend throughout.
SpectrumTable readSpectrumTable(const QString &fileName);
