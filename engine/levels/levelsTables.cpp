#include "LanqorEnergyLevels.h"
#include "LanqorFreeIonParameters.h"
#include "LanqorStarkLevels.h"

#include "core/resultColumns_p.h"
#include "levels/starkReport_p.h"

#include <LanqorEngine/LanqorResultTables.h>

// The records of this room as tables.

using LanqorSpectroscopicTermUtil::textOfLevel;
using resultColumns::column;

namespace {

constexpr const char *wavenumber = "cm^-1";

/// Nothing for a text that is not told.
QVariant told(const QString &text)
{
    return text.isEmpty() ? QVariant() : text;
}

/// Nothing for one that the ion does not have: one electron or hole.
QVariant integral(double value)
{
    return value == 0.0 ? QVariant() : value;
}

} // namespace

LanqorResultTables LanqorFreeIonParameters::makeTables(const QVector<FreeIonParameters> &ions)
{
    QVector<QVector<QVariant>> rows;
    for (const FreeIonParameters &ion : ions)
        rows.append({ion.symbol, ion.electrons, integral(ion.F2), integral(ion.F4),
                     integral(ion.F6), ion.zeta, ion.alpha, ion.beta, ion.gamma, ion.source});
    LanqorResultTables tables;
    tables.addTable(QStringLiteral("free_ion_parameters"),
                    {column("ion"), column("electrons"),
                     column("slater_integral_subscript_2", wavenumber),
                     column("slater_integral_subscript_4", wavenumber),
                     column("slater_integral_subscript_6", wavenumber), column("zeta", wavenumber),
                     column("alpha", wavenumber), column("beta", wavenumber),
                     column("gamma", wavenumber), column("source")},
                    rows);
    return tables;
}

LanqorResultTables LanqorEnergyLevels::makeTables(const FreeIonLevelsResults &results)
{
    const FreeIonParameters &ion = results.parameters;
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("free_ion"),
        {column("ion"), column("electrons"), column("slater_integral_subscript_0", wavenumber),
         column("slater_integral_subscript_2", wavenumber),
         column("slater_integral_subscript_4", wavenumber),
         column("slater_integral_subscript_6", wavenumber), column("zeta", wavenumber),
         column("source"), column("alpha", wavenumber), column("beta", wavenumber),
         column("gamma", wavenumber)},
        {told(ion.symbol), ion.electrons, results.F0, integral(ion.F2), integral(ion.F4),
         integral(ion.F6), ion.zeta, told(ion.source), ion.alpha, ion.beta, ion.gamma});
    QVector<QVector<QVariant>> levels;
    QVector<QVector<QVariant>> components;
    for (const FreeIonLevelsResults::Level &level : results.levels) {
        levels.append({level.number, textOfLevel(level.label), level.J, level.energy});
        for (const CoeffAndLabel &component : level.components)
            components.append({level.number, textOfLevel(component.label), component.coefficient,
                               100.0 * component.coefficient * component.coefficient});
    }
    tables.addTable(
        QStringLiteral("levels"),
        {column("level_from_1"), column("label"), column("j"), column("energy", wavenumber)},
        levels);
    tables.addTable(QStringLiteral("composition"),
                    {column("level_from_1"), column("component"), column("coefficient", "1"),
                     column("weight", "%")},
                    components);
    return tables;
}

LanqorResultTables LanqorEnergyLevels::makeTables(const FreeIonLevelsResults &results,
                                                  const QVector<ReducedSquares> &squares)
{
    QVector<QVector<QVariant>> rows;
    for (const ReducedSquares &pair : squares) {
        const FreeIonLevelsResults::Level &from = results.levels.at(pair.from - 1);
        const FreeIonLevelsResults::Level &to = results.levels.at(pair.to - 1);
        rows.append({pair.from, textOfLevel(from.label), from.energy, pair.to,
                     textOfLevel(to.label), to.energy, pair.U2, pair.U4, pair.U6, pair.magnetic});
    }
    LanqorResultTables tables;
    tables.addTable(QStringLiteral("reduced_squares"),
                    {column("from_level_from_1"), column("from"), column("from_energy", wavenumber),
                     column("to_level_from_1"), column("to"), column("to_energy", wavenumber),
                     column("u2_squared", "1"), column("u4_squared", "1"),
                     column("u6_squared", "1"), column("magnetic_dipole_squared", "hbar^2")},
                    rows);
    return tables;
}

LanqorResultTables LanqorStarkLevels::makeTables(const StarkResults &results)
{
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("crystal_field"),
                     {column("structure_file"), column("coordination_number"),
                      column("overlap_of_nearest_atom", "1"),
                      column("crystal_field_strength", wavenumber), column("reduced_elements")},
                     {results.structureFile, results.coordNumber, results.ro0,
                      results.crystalFieldStrength, starkReport::nameOf(results.reducedElements)});
    QVector<QVector<QVariant>> rows;
    for (const StarkResults::Atom &atom : results.atoms)
        rows.append({atom.number, atom.element, atom.chargeFactor});
    tables.addTable(QStringLiteral("atoms"),
                    {column("atom_from_1"), column("element"), column("charge_factor", "1")}, rows);
    rows.clear();
    for (const StarkResults::FieldParameter &B : results.fieldParameters)
        rows.append({B.k, B.q, B.real, B.imaginary});
    tables.addTable(QStringLiteral("crystal_field_parameters"),
                    {column("k"), column("q"), column("real_part", wavenumber),
                     column("imaginary_part", wavenumber)},
                    rows);
    rows.clear();
    QVector<QVector<QVariant>> levels;
    for (const StarkResults::Manifold &manifold : results.manifolds) {
        rows.append({manifold.J, manifold.splitting});
        for (int i = 0; i < manifold.levels.size(); ++i)
            levels.append({manifold.J, i + 1, manifold.levels.at(i)});
    }
    tables.addTable(QStringLiteral("manifolds"), {column("j"), column("splitting", wavenumber)},
                    rows);
    tables.addTable(QStringLiteral("stark_levels"),
                    {column("j"), column("level_from_1"), column("energy", wavenumber)}, levels);
    return tables;
}
