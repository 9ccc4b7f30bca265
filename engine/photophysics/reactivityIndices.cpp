#include "photophysics/reactivityIndices_p.h"

#include <algorithm>
#include <array>

namespace {

/// Coefficients of one orbital by atom number and function.
class CoefficientTable
{
public:
    explicit CoefficientTable(std::size_t atoms)
        : table(atoms)
    {}

    void take(const OccupiedOrbital &orbital)
    {
        Coefficients missing;
        missing.fill(missingCoefficient);
        std::fill(table.begin(), table.end(), missing);
        // Backwards, so that the first of several entries of a function stays.
        for (auto entry = orbital.entries.rbegin(); entry != orbital.entries.rend(); ++entry) {
            const auto atom = static_cast<std::size_t>(entry->atom);
            if (entry->atom > 0 && atom < table.size())
                table[atom][static_cast<std::size_t>(entry->function)] = entry->coefficient;
        }
    }

    /// Those of S, Px, Py and Pz of an atom; missingCoefficient for a function without entry.
    const float *coeff(std::size_t atom) const { return table[atom].data(); }

private:
    using Coefficients = std::array<float, atomicOrbitalCount>;
    std::vector<Coefficients> table;
};

/// Single-precision sums of one atom, in the order of the orbitals and their functions.
struct AtomSums
{
    float population = 0.0F;
    float superdelocalizability = 0.0F;

    void add(const float *c, int count, float energy)
    {
        for (int k = 0; k < count; ++k)
            population += c[k] * c[k];
        for (int k = 0; k < count; ++k) {
            for (int l = 0; l < count; ++l)
                superdelocalizability += c[k] * c[l] / energy;
        }
    }
};

ReactivityIndices doubled(const std::vector<AtomSums> &sums)
{
    ReactivityIndices indices;
    for (const AtomSums &sum : sums) {
        indices.population.push_back(double(2.0F * sum.population));
        indices.superdelocalizability.push_back(double(2.0F * sum.superdelocalizability));
    }
    return indices;
}

} // namespace

ReactivityIndices calcMinimalBasisIndices(const std::vector<OccupiedOrbital> &orbitals,
                                          const std::vector<int> &functionsOfAtom)
{
    const std::size_t size = std::max<std::size_t>(2, functionsOfAtom.size());
    std::vector<AtomSums> sums(size);
    CoefficientTable coefficients(size);
    for (const OccupiedOrbital &orbital : orbitals) {
        coefficients.take(orbital);
        for (std::size_t atom = 2; atom < functionsOfAtom.size(); ++atom)
            sums[atom].add(coefficients.coeff(atom), functionsOfAtom[atom], orbital.energy);
    }
    return doubled(sums);
}

ReactivityIndices calcIndicesOfAllFunctions(const std::vector<OccupiedOrbital> &orbitals,
                                            int atomCount)
{
    std::vector<AtomSums> sums(static_cast<std::size_t>(std::max(1, atomCount)) + 1);
    std::vector<std::vector<float>> coefficients(sums.size());
    for (const OccupiedOrbital &orbital : orbitals) {
        for (const OrbitalEntry &entry : orbital.entries) {
            const auto atom = static_cast<std::size_t>(entry.atom);
            if (entry.atom > 0 && atom < coefficients.size())
                coefficients[atom].push_back(entry.coefficient);
        }
        for (std::size_t atom = 0; atom < coefficients.size(); ++atom) {
            std::vector<float> &own = coefficients[atom];
            if (atom > 1)
                sums[atom].add(own.data(), static_cast<int>(own.size()), orbital.energy);
            own.clear();
        }
    }
    return doubled(sums);
}
