#include "fuzzFile.h"

/// MOPAC outputs: geometry, results and force constants.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    LanqorInputData input(nullptr, file.path());
    const bool ok = input.readMopacOutFile(size % 2 == 0);
    requireSound(input, ok);
    if (ok && input.getCoord().isEmpty())
        std::abort();
    input.createSphericalCoordinate();
    input.getAtomOrderError();
    LanqorInputData::calcCenterOfMass(input.getCoord());
    if (input.readForceConstant(file.path(), 3) && input.getForceConstantsCount() != 3)
        std::abort();
    return 0;
}
