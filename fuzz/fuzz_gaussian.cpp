#include "excitedStatesTrial.h"

/// Gaussian outputs of excited states.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    tryExcitedStates(file, LanqorInputData::GaussianOutput,
                     {&LanqorInputData::readAbsorptionDataGaussian});
    return 0;
}
