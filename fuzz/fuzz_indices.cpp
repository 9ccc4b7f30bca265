#include "fuzzFile.h"

#include "photophysics/reactivityIndices_p.h"

#include <cmath>

namespace {

void check(const std::vector<OccupiedOrbital> &orbitals)
{
    for (const OccupiedOrbital &orbital : orbitals) {
        if (!std::isfinite(orbital.energy))
            std::abort();
        for (const OrbitalEntry &entry : orbital.entries) {
            if (entry.function < 0 || entry.function >= atomicOrbitalCount)
                std::abort();
        }
    }
}

} // namespace

/// Orbital tables of both programs: a reading that succeeds leaves orbitals, a failure its reason.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int atomCount = 12;
    const FuzzFile file(data, size);
    for (const bool isGaussian : {false, true}) {
        std::vector<OccupiedOrbital> orbitals;
        QStringList elements;
        QString error;
        const bool ok = isGaussian ? readGaussianOrbitals(file.path(), orbitals, elements, error)
                                   : readMopacOrbitals(file.path(), atomCount, orbitals, error);
        if (ok != error.isEmpty() || (ok && orbitals.empty()))
            std::abort();
        check(orbitals);
        calcMinimalBasisIndices(orbitals, std::vector<int>(atomCount + 1, atomicOrbitalCount));
        calcIndicesOfAllFunctions(orbitals, elements.size() - 1);
    }
    return 0;
}
