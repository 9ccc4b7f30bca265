#include "excitedStatesTrial.h"

/// ORCA outputs of excited states.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    tryExcitedStates(file, LanqorInputData::OrcaOutput,
                     {&LanqorInputData::readCoordFromOrcaOutFile,
                      &LanqorInputData::readAbsorptionDataOrca,
                      &LanqorInputData::readMolecularOrbitalOccupancy});
    return 0;
}
