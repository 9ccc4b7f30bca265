#include "LanqorPhysicalConstants.h"

#include "core/physicalConstants_p.h"

QVector<PhysicalConstant> LanqorPhysicalConstants::getConstants()
{
    struct Row
    {
        const char *key;
        double value;
        const char *unit;
        const char *source;
    };
    static constexpr char codata2010[] = "CODATA 2010";
    static constexpr char codata2018[] = "CODATA 2018";
    static constexpr char definition[] = "definition";
    static constexpr Row rows[] = {
        {"pi", lanqor::pi, "1", "twelve digits"},
        {"bohr_radius", lanqor::bohrRadiusCm, "cm", codata2010},
        {"bohr_per_angstrom", lanqor::bohrPerAngstrom, "Angstrom^-1", "CODATA 1986"},
        {"elementary_charge", lanqor::elementaryChargeEsu, "esu", codata2010},
        {"elementary_charge_squared", lanqor::elementaryChargeSquared, "erg cm", codata2010},
        {"light_speed", lanqor::lightSpeed, "cm s^-1", definition},
        {"wavenumber_per_erg", lanqor::wavenumberPerErg, "cm^-1 erg^-1",
         "CODATA 2006, last two digits of unknown source"},
        {"wavenumber_per_ev", lanqor::wavenumberPerEv, "cm^-1 eV^-1", codata2018},
        {"erg_per_wavenumber", lanqor::ergPerWavenumber, "erg cm", codata2010},
        {"three_planck", lanqor::threePlanck, "erg s", codata2010},
        {"three_hbar", lanqor::threeHbar, "erg s", codata2010},
        {"two_pi_over_hbar", lanqor::twoPiOverHbar, "erg^-1 s^-1", codata2010},
        {"four_pi_over_hbar", lanqor::fourPiOverHbar, "erg^-1 s^-1", codata2010},
        {"eight_pi_over_three_hbar", lanqor::eightPiOverThreeHbar, "erg^-1 s^-1", codata2010},
        {"boltzmann_constant", lanqor::boltzmannConstant, "erg K^-1", codata2010},
        {"electron_mass_of_absorption", lanqor::absorption::electronMass, "g", codata2018},
        {"elementary_charge_of_absorption", lanqor::absorption::electronCharge, "esu", codata2018},
        {"planck_constant_of_absorption", lanqor::absorption::planck, "erg s", codata2018},
        {"avogadro_constant", lanqor::absorption::avogadro, "mol^-1", codata2018},
        {"electron_spin_g_factor", lanqor::gOfSpin, "1", codata2018},
        {"bohr_magneton_wavenumber", lanqor::magnetic::bohrMagneton, "cm^-1 T^-1", codata2018},
        {"boltzmann_constant_wavenumber", lanqor::magnetic::boltzmann, "cm^-1 K^-1", codata2018},
        {"curie_constant_of_bohr_magneton", lanqor::magnetic::curieConstant, "cm^3 K mol^-1",
         codata2018},
        {"nm_per_cm", lanqor::nmPerCm, "nm cm^-1", definition},
        {"angstrom", lanqor::cmPerAngstrom, "cm", definition},
        {"cubic_angstrom", lanqor::cm3PerCubicAngstrom, "cm^3", definition},
        {"omega_unit", lanqor::omegaUnitCm2, "cm^2", definition},
    };
    QVector<PhysicalConstant> constants;
    for (const Row &row : rows)
        constants.append({QLatin1String(row.key), row.value, QLatin1String(row.unit),
                          QLatin1String(row.source)});
    return constants;
}
