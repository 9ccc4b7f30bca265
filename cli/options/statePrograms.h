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

/// The program of that name; null when there is none.
const StateProgram *stateProgramNamed(const QString &name);
/// The program that wrote the file of @p output; null when it is not known.
const StateProgram *stateProgramOf(const LanqorInputData &output);
/// What a file is instead when stateProgramOf() knows none.
QString unknownProgram(const QString &fileName);

} // namespace cli
