#pragma once

#include <QCommandLineOption>
#include <QString>

class LanqorInputData;
class QCommandLineParser;
struct OmegaPrintingOptions;

/// Options that the subcommands for a complex share.
namespace cli {

/// Reads --n; false with the reason in @p error.
bool readRefractiveIndex(const QCommandLineParser &parser, double &index, QString &error);

/// Reads a whole number from 1 to @p maximum; false with the reason in @p error.
bool readCount(const QCommandLineParser &parser, const QString &option, int maximum, int &value,
               QString &error);

/// Names of the sections of the intensity report, for a help text.
QString sectionNames();
/// Switches on the sections of a comma-separated list; false with the unknown name in @p error.
bool chooseSections(const QString &list, OmegaPrintingOptions &options, QString &error);

/// Why the coordination sphere of a geometry cannot serve a calculation: no ion, an ion that is
/// not atom 1, no coordinated atom, coordinated atoms in other places than 2 to N + 1.
QString sphereError(const LanqorInputData &geometry, const QString &fileName);

/// Reads a structure whose coordinated atoms are atoms 2 to N+1; false with the reason in
/// @p error.
bool readSphere(LanqorInputData &geometry, const QString &fileName, QString &error);

/// The option --coordination N.
QCommandLineOption coordinationOption();
/// Reads a structure and N: that of --coordination, or the atoms within bonding distance, which
/// must be atoms 2 to N+1; then notes tell of near atoms that are not counted. False with the
/// reason in @p error.
bool readSphere(const QCommandLineParser &parser, const QString &fileName,
                LanqorInputData &geometry, int &coordNumber, QString &error);

/// The option --ro0, the overlap of the nearest atom in the crystal field.
QCommandLineOption overlapOption();
/// Reads --ro0; false with the reason in @p error.
bool readOverlap(const QCommandLineParser &parser, double &ro0, QString &error);

/// Notes, one on each line, on atoms so near the ion that a chemist may count them: donors a
/// little beyond the limit of their element, and elements without one.
QString nearAtomNotes(const LanqorInputData &geometry);

} // namespace cli
