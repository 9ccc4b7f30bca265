#pragma once

#include <QString>

class LanqorInputData;
class QCommandLineParser;
struct OmegaPrintingOptions;

/// Options that the subcommands for a complex share.
namespace cli {

/// Reads --n; false with the reason in @p error.
bool readRefractiveIndex(const QCommandLineParser &parser, double &index, QString &error);

/// Names of the sections of the intensity report, for a help text.
QString sectionNames();
/// Switches on the sections of a comma-separated list; false with the unknown name in @p error.
bool chooseSections(const QString &list, OmegaPrintingOptions &options, QString &error);

/// Reads a structure whose coordinated atoms are atoms 2 to N+1; false with the reason in
/// @p error.
bool readSphere(LanqorInputData &geometry, const QString &fileName, QString &error);

/// Notes, one on each line, on atoms so near the ion that a chemist may count them: donors a
/// little beyond the limit of their element, and elements without one.
QString nearAtomNotes(const LanqorInputData &geometry);

} // namespace cli
