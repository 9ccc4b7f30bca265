#include "photophysics/occupiedOrbitals_p.h"

void OrbitalColumns::start(std::vector<OccupiedOrbital> &orbitals, const std::vector<int> &numbers,
                           const std::vector<float> &energies, int occupied)
{
    columns.clear();
    const std::size_t before = orbitals.size();
    std::vector<bool> isKept;
    for (std::size_t i = 0; i < numbers.size() && i < energies.size(); ++i) {
        isKept.push_back(numbers[i] == int(orbitals.size()) + 1 && numbers[i] <= occupied);
        if (isKept.back())
            orbitals.push_back({energies[i], {}});
    }
    std::size_t next = before;
    for (const bool kept : isKept)
        columns.push_back(kept ? &orbitals[next++] : nullptr);
}

void OrbitalColumns::add(std::size_t column, const OrbitalEntry &entry)
{
    if (columns[column])
        columns[column]->entries.push_back(entry);
}
