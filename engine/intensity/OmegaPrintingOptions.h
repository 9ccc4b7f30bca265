#pragma once

/// Sections of the intensity report, each switched on by its field. Title, geometry file and
/// citations always appear.
struct OmegaPrintingOptions
{
    bool printSOM = false;                  ///< rho and beta of the simple overlap model
    bool printBltp = false;                 ///< total B(l,t,p)
    bool printBltpDC = false;               ///< dynamic-coupling B(l,t,p)
    bool printBltpED = false;               ///< forced-electric-dipole B(l,t,p)
    bool printConstants = false;            ///< constants of the Eu3+ ion
    bool printGAMA = false;                 ///< dynamic lattice term of each atom
    bool printSumGAMA = false;              ///< dynamic lattice sums
    bool printChargeFactors = false;        ///< charge factors and polarisabilities
    bool printOmega = false;                ///< omega(l)
    bool printOmegaDC = false;              ///< omegaDC(l)
    bool printOmegaED = false;              ///< omegaED(l)
    bool printSphericalCoordinates = false; ///< coordination polyhedron
    bool printSphericalHarmonics = false;   ///< Y(t,p) of each atom
    bool printgama = false;                 ///< electric lattice term of each atom
    bool printSumgama = false;              ///< electric lattice sums
    bool printArad = false;                 ///< radiative rates
    bool printAradPartition = false;        ///< chemical partition of Arad(ED)
    bool printBkq = false;                  ///< even-rank crystal-field parameters
};
