#pragma once

#include <LanqorEngine/StarkResults.h>

#include <QCommandLineOption>
#include <QString>
#include <QStringList>

class LanqorInputData;
struct OmegaPrintingOptions;

/// Options that the subcommands for a complex share.
namespace cli {

class OptionReader;

/// The option --n, the refractive index of the medium.
QCommandLineOption refractiveIndexOption(const QString &description);
double readRefractiveIndex(const OptionReader &options);

/// Names of the sections of the intensity report, for a help text.
QString sectionNames();
/// The list of those that a report has unless others are asked for.
QString mainSections();
/// Switches on the sections of a comma-separated list.
OmegaPrintingOptions sectionsOf(const QString &list);

/// Throws a Failure when the coordination sphere of a geometry cannot serve a calculation: no ion,
/// an ion that is not atom 1, no coordinated atom, coordinated atoms in other places than 2 to
/// N + 1.
void checkSphere(const LanqorInputData &geometry);

/// Throws a Failure when atom 1 is not Eu.
void requireEuropium(const LanqorInputData &geometry);
/// Throws a Failure when there is no such file. The message names @p option ("--spectrum ", or
/// empty for the argument of a command) and what is @p needed.
void requireFile(const QString &option, const QString &fileName, const QString &needed);

/// Reads a structure with its spherical coordinates, or throws a Failure.
void readStructure(LanqorInputData &geometry);

/// The option --molecule K of commands that read crystal structures.
QCommandLineOption moleculeOption();
/// Hands it to the reader.
void chooseMolecule(const OptionReader &options, LanqorInputData &structure);

/// The option --coordination N.
QCommandLineOption coordinationOption();
/// Reads a structure and returns N: that of --coordination, or the count of the atoms within
/// bonding distance, which must be atoms 2 to N+1; then notes tell of near atoms that are not
/// counted.
int readSphere(const OptionReader &options, LanqorInputData &geometry);

/// The option --ro0, the overlap of the nearest atom in the crystal field.
QCommandLineOption overlapOption();
double readOverlap(const OptionReader &options);

/// The option --magnitudes, reduced elements of 7FJ without their signs.
QCommandLineOption magnitudesOption();
ReducedElements readElements(const OptionReader &options);

/// The option --ligands, groups of atoms for the partition of the radiative rate.
QCommandLineOption ligandsOption();
/// The lines of its file; none without the option.
QStringList readLigands(const OptionReader &options);

/// Warnings of further ions, of disordered atoms and of distances as in other units.
void warnOfStructure(const LanqorInputData &geometry);

/// Notes on atoms so near the ion that a chemist may count them: donors a little beyond the limit
/// of their element, and elements without one.
void noteNearAtoms(const LanqorInputData &geometry);

} // namespace cli
