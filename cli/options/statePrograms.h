#pragma once

#include <LanqorEngine/LanqorInputData.h>

/// A program whose excited states are read.
struct StateProgram
{
    const char *name; ///< value of --program
    const char *title;
    LanqorInputData::ProgramType type;
};

namespace cli {

/// The file that @p text names, or the two of a pair "singlets.out,triplets.out". A file whose own
/// name holds a comma is one file. None of them needs to exist.
QStringList stateFiles(const QString &text);
/// Throws a Failure for the first file that does not exist.
void checkStateFiles(const QStringList &files);
/// Reads both files of a pair, of which @p output has the first, by @p program; nothing for one
/// file. Throws a Failure when they are no pair of MOPAC INDO outputs.
void readPair(LanqorInputData &output, const StateProgram &program, const QStringList &files);
/// What --program takes, for messages: "orca, gaussian, zindo or mopac".
QString programNames();
/// The program of that name; null when there is none.
const StateProgram *stateProgramNamed(const QString &name);
/// The program that wrote the file of @p output; null when it is not known.
const StateProgram *stateProgramOf(const LanqorInputData &output);
/// What a file is instead when stateProgramOf() knows none.
QString unknownProgram(const QString &fileName);

} // namespace cli
