#pragma once

/// A row of the orbital-energy table.
struct MolecularOrbitalOCC
{
    double number = 0.0;    ///< orbital number as printed (0-based in ORCA)
    double occupancy = 0.0; ///< electrons in the orbital
    double energy = 0.0;    ///< eV
};
