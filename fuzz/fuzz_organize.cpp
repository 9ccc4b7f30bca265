#include "fuzzFile.h"

#include <LanqorEngine/LanqorOrganizeMolecules.h>

#include <cstdlib>

/// A structure of any kind, most often MOL2, is brought into order or refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzFile file(data, size);
    for (const bool keepUnbound : {true, false}) {
        LanqorOrganizeMolecules structure(nullptr, file.path());
        structure.setKeepUnboundFragments(keepUnbound);
        const bool ok = structure.organize();
        if (ok != structure.getLastError().isEmpty())
            std::abort();
        if (ok && structure.getCoordNumber() >= structure.getCoord().size())
            std::abort();
    }
    return 0;
}
