#pragma once

/// Which sections of the reports on rates and populations appear, in their order there: the
/// first nine belong to LanqorSpectroscopicCalculation::createOutFileET, the others to
/// createOutFile. A section that is switched off goes with its heading.
struct SpecPrintingOptions
{
    bool printInputFile = true;     ///< the file that the results come from
    bool printOmega = true;         ///< intensity parameters
    bool printOmegaED = true;       ///< their forced electric dipole part
    bool printConstants = true;     ///< constants of the Eu3+ ion
    bool printDonorStates = true;   ///< chosen states, their energies and RL
    bool printGama = true;          ///< gama(l) at the donor distances
    bool printFranckCondon = true;  ///< spectral overlap factors F
    bool printTransferRates = true; ///< transfer and back-transfer rates
    bool printArad = true;          ///< radiative rate and branching ratios
    bool printAnrad = true;         ///< lifetime, non-radiative rate and quantum efficiency
    bool printPopulations = true;   ///< populations of the states
    bool printQuantumYield = true;  ///< emission quantum yield
    bool printSettings = true;      ///< origin of the states, exchange model, kinetic constants
};
