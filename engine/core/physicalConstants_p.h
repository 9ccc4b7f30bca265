#pragma once

/// Physical constants and unit factors, Gaussian (CGS) units. Digits are fixed: results are
/// compared across versions to the last figure. Where two calculations use different digits on
/// purpose, each keeps its own beside its formula.
namespace lanqor {

/// pi to twelve digits, and four times it. Other digits of pi stand beside their formulas.
constexpr double pi = 3.14159265359;
constexpr double fourPi = 12.56637061436;

/// Bohr radius, cm (CODATA 2010).
constexpr double bohrRadiusCm = 5.2917721092e-9;
/// Bohr radii in an Angstrom: the inverse of 0.529177249 Angstrom (CODATA 1986).
constexpr double bohrPerAngstrom = 1.889725988579;
/// Centimetres in an Angstrom, by definition.
constexpr double cmPerAngstrom = 1e-8;
/// cm^3 in a cubic Angstrom, the unit in which polarisabilities are printed and entered.
constexpr double cm3PerCubicAngstrom = 1.0e-24;

/// Magnitude of the electron's charge, esu (1.602176565e-19 C, CODATA 2010), and its square,
/// esu^2 = erg cm.
constexpr double elementaryChargeEsu = 4.803204505713468e-10;
constexpr double elementaryChargeSquared = 2.307077352370616e-19;

/// Speed of light, cm/s, by definition.
constexpr double lightSpeed = 29979245800.0;
/// 1/(hc): wavenumber, cm^-1, of an energy of one erg. CODATA 2006 has 5.03411747; the source of
/// the last two digits is not known.
constexpr double wavenumberPerErg = 5.03411751e+15;
/// Energy of one cm^-1, erg: hc with h = 6.62606957417e-27 erg s (CODATA 2010, which gives nine
/// digits).
constexpr double ergPerWavenumber = 1.9864456845196332e-16;
/// Three times Planck's constant and three times the reduced one, erg s (CODATA 2010).
constexpr double threePlanck = 1.987820871e-26;
constexpr double threeHbar = 3.163715178e-27;
/// Multiples of 1/hbar, erg^-1 s^-1, with hbar = 1.054571726e-27 erg s (CODATA 2010).
constexpr double twoPiOverHbar = 5.958044533407109e+27;
constexpr double fourPiOverHbar = 1.1916089066814218e+28;
constexpr double eightPiOverThreeHbar = 7.944059377876147e+27;
/// k, erg/K (CODATA 2010).
constexpr double boltzmannConstant = 1.3806488e-16;
/// Nanometres in a centimetre: a wavelength in nm is this by its wavenumber in cm^-1.
constexpr double nmPerCm = 1.0e7;
/// Wavenumber, cm^-1, of one eV (CODATA 2018).
constexpr double wavenumberPerEv = 8065.543937;
/// Omega(lambda) is printed and entered in this unit, cm^2.
constexpr double omegaUnitCm2 = 1e-20;

/// Constants of the analysis of absorption bands (CODATA 2018): published analyses are recomputed
/// with them.
namespace absorption {
constexpr double electronMass = 9.1093837015e-28;     ///< g
constexpr double electronCharge = 4.803204712570e-10; ///< esu
constexpr double planck = 6.62607015e-27;             ///< erg s
constexpr double avogadro = 6.02214076e23;            ///< mol^-1
} // namespace absorption
/// g factor of the electron spin (CODATA 2018, 2.00231930436256).
constexpr double gOfSpin = 2.00231930436;

/// Constants of the magnetism of a crystal field (CODATA 2018).
namespace magnetic {
constexpr double bohrMagneton = 0.466864477827;  ///< mu_B/(hc), cm^-1/T
constexpr double boltzmann = 0.695034800486;     ///< k/(hc), cm^-1/K
constexpr double curieConstant = 0.375148096121; ///< N_A mu_B^2/k, cm^3 K/mol (CGS)
} // namespace magnetic

} // namespace lanqor
