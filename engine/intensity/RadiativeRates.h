#pragma once

/// Spontaneous emission rates of the 5D0 level of Eu3+, s^-1, named after the lower level 7FJ.
struct RadiativeRates
{
    double md = 0.0;   ///< magnetic dipole, 7F1
    double ed02 = 0.0; ///< forced electric dipole, 7F2
    double ed04 = 0.0; ///< 7F4
    double ed06 = 0.0; ///< 7F6

    double electricDipole() const { return ed02 + ed04 + ed06; }
    double total() const { return md + ed02 + ed04 + ed06; }
};
