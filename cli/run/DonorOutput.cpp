#include "run/DonorOutput.h"

#include "Command.h"
#include "options/statePrograms.h"
#include "text.h"

namespace cli {

DonorOutput readDonorOutput(const QStringList &files, const QString &programName)
{
    DonorOutput output;
    output.data = std::make_unique<LanqorInputData>(nullptr, files.first());
    output.data->setKeepFileOpen(true);
    const StateProgram *program =
        programName.isEmpty() ? stateProgramOf(*output.data) : stateProgramNamed(programName);
    if (!program)
        throw Failure{unknownProgram(files.first())};
    output.type = program->type;
    readPair(*output.data, *program, files);
    output.rl = std::make_unique<LanqorRL>(nullptr, output.data.get());
    if (!output.rl->calcRL(program->type))
        failOf(*output.rl);
    const DonorStatesResults results = output.rl->getResults();
    if (results.singlets.isEmpty() || results.triplets.isEmpty())
        throw Failure{
            tr("%1 holds no %2: states of both kinds are needed")
                .arg(files.first(), results.singlets.isEmpty() ? tr("singlets") : tr("triplets"))};
    return output;
}

} // namespace cli
