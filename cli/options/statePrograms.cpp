#include "options/statePrograms.h"

namespace cli {

namespace {

constexpr StateProgram programs[] = {
    {"orca", "ORCA", LanqorInputData::OrcaOutput},
    {"gaussian", "Gaussian", LanqorInputData::GaussianOutput},
    {"zindo", "ZINDO", LanqorInputData::ZindoOutput},
};

} // namespace

const StateProgram *stateProgramNamed(const QString &name)
{
    for (const StateProgram &program : programs)
        if (name == QLatin1String(program.name))
            return &program;
    return nullptr;
}

const StateProgram *stateProgramOf(const LanqorInputData &output)
{
    const LanqorInputData::ProgramType type = output.detectProgram();
    for (const StateProgram &program : programs)
        if (program.type == type)
            return &program;
    return nullptr;
}

} // namespace cli
