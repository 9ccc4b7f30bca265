#include "options/statePrograms.h"

namespace cli {

namespace {

constexpr StateProgram programs[] = {
    {"orca", "ORCA", LanqorInputData::OrcaOutput},
    {"gaussian", "Gaussian", LanqorInputData::GaussianOutput},
    {"zindo", "ZINDO", LanqorInputData::ZindoOutput},
};

const StateProgram *programOf(LanqorInputData::ProgramType type)
{
    for (const StateProgram &program : programs)
        if (program.type == type)
            return &program;
    return nullptr;
}

} // namespace

const StateProgram *stateProgramNamed(const QString &name)
{
    for (const StateProgram &program : programs)
        if (name == QLatin1String(program.name))
            return &program;
    return nullptr;
}

const StateProgram *stateProgramOf(const QString &fileName)
{
    return programOf(LanqorInputData::detectProgram(fileName));
}

const StateProgram *stateProgramOf(const LanqorInputData &output)
{
    return programOf(output.detectProgram());
}

} // namespace cli
