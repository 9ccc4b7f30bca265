#pragma once

#include <QString>
#include <QStringList>

namespace fitFiles {

/// The lines of the small files of a fit of Stark levels (@p baseName with ".groups", ".exp",
/// ".limits" and ".chargefactors") that their readers take otherwise than they were meant: fields
/// that are missing, ignored or no numbers. A sentence on each, with file and line; files that
/// cannot be opened are passed over.
QStringList starkFitFaults(const QString &baseName);

/// True unless the first line of a file of measured levels reads as a level: it is skipped as a
/// heading whatever it holds.
bool hasHeading(const QString &fileName);

/// The first standard deviation in a file of measured levels that is none; empty without one.
QString measuredDeviationFault(const QString &fileName);

} // namespace fitFiles
