#include "photophysics/transferChannels_p.h"

namespace transferChannels {

namespace {

struct Level
{
    State state;
    const char *name;
    double energy; // cm^-1
};

constexpr std::array<Level, 5> levels = {{
    {Level5D4, "5D4", 27586.0},
    {Level5G6, "5G6", 26752.0},
    {Level5L6, "5L6", 25325.0},
    {Level5D1, "5D1", 19027.0},
    {Level5D0, "5D0", 17293.0},
}};

} // namespace

double acceptorEnergy(State level)
{
    for (const Level &entry : levels)
        if (entry.state == level)
            return entry.energy;
    return 0.0;
}

const char *levelName(State level)
{
    for (const Level &entry : levels)
        if (entry.state == level)
            return entry.name;
    return "";
}

} // namespace transferChannels
