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
/// The program that wrote @p fileName; null when it is not known.
const StateProgram *stateProgramOf(const QString &fileName);
/// The same for the file of @p output.
const StateProgram *stateProgramOf(const LanqorInputData &output);

} // namespace cli
