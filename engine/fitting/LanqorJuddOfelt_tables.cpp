#include "LanqorJuddOfelt.h"

#include "core/resultColumns_p.h"
#include "fitting/juddOfelt_p.h"

#include <LanqorEngine/LanqorResultTables.h>

#include <cmath>

using resultColumns::column;
using resultColumns::existing;
using resultColumns::uncertainty;

namespace {

constexpr const char *wavenumber = "cm^-1";
constexpr const char *strength = "1e-20 cm^2";

/// Nothing for a value of 0, which tells that there is none.
QVariant known(double value)
{
    return value == 0.0 ? QVariant() : existing(value);
}

void addBands(const JuddOfeltResults &results, LanqorResultTables &tables)
{
    QVector<QVector<QVariant>> rows;
    for (const JuddOfeltResults::Band &band : results.bands)
        rows.append({band.level, band.wavenumber, band.n, band.U[0], band.U[1], band.U[2],
                     band.measuredF, band.magneticF, band.calculatedF,
                     band.calculatedF - band.measuredF, band.measuredS, known(band.errorS),
                     band.calculatedS, band.calculatedS - band.measuredS});
    tables.addTable(
        QStringLiteral("absorption_bands"),
        {column("level"), column("wavenumber", wavenumber), column("refractive_index", "1"),
         column("u2_squared", "1"), column("u4_squared", "1"), column("u6_squared", "1"),
         column("measured_oscillator_strength", "1"), column("magnetic_oscillator_strength", "1"),
         column("calculated_oscillator_strength", "1"),
         column("difference_of_oscillator_strength", "1"),
         column("measured_line_strength", strength),
         uncertainty("standard_deviation_of_line_strength", "measured_line_strength", strength),
         column("calculated_line_strength", strength),
         column("difference_of_line_strength", strength)},
        rows);
}

void addEmissions(const JuddOfeltResults &results, LanqorResultTables &tables)
{
    QVector<QVector<QVariant>> levels;
    QVector<QVector<QVariant>> transitions;
    for (const JuddOfeltResults::Emission &emission : results.emissions) {
        levels.append({emission.number, emission.level, emission.J, emission.energy, emission.rate,
                       existing(emission.lifetime), known(emission.measuredLifetime),
                       known(emission.quantumEfficiency)});
        for (const JuddOfeltResults::Transition &to : emission.transitions)
            transitions.append({emission.number, emission.level, to.number, to.level, to.wavenumber,
                                to.n, to.U[0], to.U[1], to.U[2], to.magneticSquare, to.electricRate,
                                to.magneticRate, to.branchingRatio});
    }
    tables.addTable(QStringLiteral("emitting_levels"),
                    {column("level_from_1"), column("label"), column("j"),
                     column("energy", wavenumber), column("radiative_rate", "s^-1"),
                     column("radiative_lifetime", "ms"), column("measured_lifetime", "ms"),
                     column("quantum_efficiency", "1")},
                    levels);
    tables.addTable(
        QStringLiteral("emission_transitions"),
        {column("from_level_from_1"), column("from"), column("to_level_from_1"), column("to"),
         column("wavenumber", wavenumber), column("refractive_index", "1"),
         column("u2_squared", "1"), column("u4_squared", "1"), column("u6_squared", "1"),
         column("magnetic_dipole_squared", "hbar^2"), column("electric_dipole_rate", "s^-1"),
         column("magnetic_dipole_rate", "s^-1"), column("branching_ratio", "1")},
        transitions);
}

} // namespace

LanqorResultTables LanqorJuddOfelt::makeTables(const JuddOfeltResults &results)
{
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("judd_ofelt"),
        {column("ion"), column("ground_level"), column("weighting"), column("is_non_negative"),
         column("rms_of_line_strength", strength), column("rms_of_oscillator_strength", "1"),
         column("relative_rms_of_line_strength", "1")},
        {results.ion.symbol, results.ground, juddOfelt::nameOf(results.weighting),
         results.isNonNegative, results.rmsS, results.rmsF, existing(results.relativeRms)});
    QVector<QVector<QVariant>> rows;
    for (int k = 0; k < 3; ++k)
        rows.append({2 * k + 2, results.omega[k], known(results.standardErrors[k]),
                     results.freeOmega[k], known(results.freeErrors[k]),
                     known(results.correlations[k][0]), known(results.correlations[k][1]),
                     known(results.correlations[k][2])});
    tables.addTable(QStringLiteral("judd_ofelt_parameters"),
                    {column("lambda"), column("omega", strength),
                     uncertainty("standard_error", "omega", strength),
                     column("free_omega", strength),
                     uncertainty("free_standard_error", "free_omega", strength),
                     column("correlation_with_2", "1"), column("correlation_with_4", "1"),
                     column("correlation_with_6", "1")},
                    rows);
    addBands(results, tables);
    addEmissions(results, tables);
    return tables;
}
