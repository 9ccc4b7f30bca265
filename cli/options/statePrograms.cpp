#include "options/statePrograms.h"

#include "text.h"

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

QString unknownProgram(const QString &fileName)
{
    const QString kind = LanqorInputData::getFileDescription(fileName);
    return kind.isEmpty()
               ? tr("%1 is not known as an output of ORCA, Gaussian or ZINDO; name the "
                    "program by --program")
                     .arg(fileName)
               : tr("%1 is %2, not an output of ORCA, Gaussian or ZINDO").arg(fileName, kind);
}

} // namespace cli
