#include "fuzzFile.h"

#include <LanqorEngine/LanqorInputData.h>

#include <cmath>

/// MOPAC outputs: a reading that succeeds must leave a finite geometry.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    LanqorInputData input(nullptr, file.path());
    const bool ok = input.readMopacOutFile(size % 2 == 0);
    if (ok != input.getLastError().isEmpty() || (ok && input.getCoord().isEmpty()))
        std::abort();
    const QVector<Coord> atoms = input.getCoord();
    for (const Coord &atom : atoms) {
        if (!std::isfinite(atom.x) || !std::isfinite(atom.y) || !std::isfinite(atom.z))
            std::abort();
    }
    input.createSphericalCoordinate();
    input.getAtomOrderError();
    LanqorInputData::calcCenterOfMass(atoms);
    if (input.readForceConstant(file.path(), 3) && input.getForceConstantsCount() != 3)
        std::abort();
    return 0;
}
