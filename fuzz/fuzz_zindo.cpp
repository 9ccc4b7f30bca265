#include "excitedStatesTrial.h"

/// ZINDO outputs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    tryExcitedStates(
        file, LanqorInputData::ZindoOutput,
        {&LanqorInputData::readCoordFromZindoOutFile, &LanqorInputData::readAbsorptionDataZindo});
    return 0;
}
