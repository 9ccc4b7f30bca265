#pragma once

#include "fuzzFile.h"

#include <LanqorEngine/LanqorRL.h>

#include <cmath>
#include <cstdlib>
#include <initializer_list>

/// Reads @p file in each of the given ways and by calcRL; a reading that fails must say why, and
/// distances must be finite.
inline void tryExcitedStates(const FuzzFile &file, int programType,
                             std::initializer_list<bool (LanqorInputData::*)()> readers)
{
    for (const auto reader : readers) {
        LanqorInputData input(nullptr, file.path());
        if ((input.*reader)() != input.getLastError().isEmpty())
            std::abort();
    }
    LanqorRL calculation(nullptr, file.path());
    const bool ok = calculation.calcRL(programType);
    if (ok != calculation.getLastError().isEmpty())
        std::abort();
    for (int n = 0; n < calculation.getStatesNumber(); ++n) {
        if (!std::isfinite(calculation.getTripletRL(n)) || calculation.getTripletRL(n) < 0.0)
            std::abort();
    }
    LanqorInputData::detectProgram(file.path());
}
