#pragma once

#include "intensity/emissionSpectrum_p.h"

#include <QString>

namespace emissionSpectrum {

struct ReadResult
{
    Spectrum spectrum;
    QString error; ///< why the file holds no spectrum; empty when it does
};

/// Reads the first two columns of an instrument's text file: abscissa and intensity, separated by
/// blanks, tabs, semicolons or commas. A comma counts as the decimal sign where the columns are
/// separated otherwise; a file with decimal points and commas is refused. Lines before the first
/// two numbers are a heading, lines after the last ones a trailer; "#" starts a comment. The
/// abscissa must ascend or descend throughout.
ReadResult readFile(const QString &fileName, EmissionSpectrumOptions::Axis axis);

} // namespace emissionSpectrum
