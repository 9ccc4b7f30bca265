#pragma once

/// Parameters of the QDC model, in which an atom with the atomic charge q and the
/// superdelocalizability S has g = Q q and alpha = (D S + C) cubic Angstrom.
struct ParametersQDC
{
    double Q = 0.0; ///< 1/electron (the atomic unit of charge)
    double D = 0.0; ///< cubic Angstrom times the energy unit of S: eV with orbitals of MOPAC
    double C = 0.0; ///< cubic Angstrom
};
