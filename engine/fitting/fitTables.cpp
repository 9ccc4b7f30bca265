#include "core/physicalConstants_p.h"
#include "core/resultColumns_p.h"
#include "levels/starkReport_p.h"

#include <LanqorEngine/LanqorParametric.h>
#include <LanqorEngine/LanqorParametricEnergyLevels.h>
#include <LanqorEngine/LanqorParametricQDC.h>
#include <LanqorEngine/LanqorParametricStarkLevels.h>
#include <LanqorEngine/LanqorResultTables.h>

// The records of the fits as tables.

using resultColumns::column;
using resultColumns::existing;

namespace {

using Columns = QVector<ResultColumn>;
using Row = QVector<QVariant>;

/// A value that was entered in the unit of the table and kept in another: as it was entered.
double asEntered(double value)
{
    return QString::number(value, 'g', 15).toDouble();
}

QString numbers(const QVector<int> &values)
{
    QStringList words;
    for (const int value : values)
        words.append(QString::number(value));
    return words.join(QLatin1Char(' '));
}

/// Columns and values of what the two fits of intensity parameters share.
Columns intensityColumns()
{
    constexpr const char *omegaUnit = "1e-20 cm^2";
    return {column("measured_omega_2", omegaUnit), column("measured_omega_4", omegaUnit),
            column("omega_2", omegaUnit),          column("omega_4", omegaUnit),
            column("omega_6", omegaUnit),          column("weight_of_omega_2", "1"),
            column("weight_of_omega_4", "1"),      column("weight_of_omega_6", "1"),
            column("response", "(1e-20 cm^2)^2"),  column("points")};
}

Row intensityValues(const IntensityFitResults &results)
{
    const bool isFitted = results.hasFeasiblePoint;
    Row values;
    for (const FittedOmega &omega : results.omega.mid(0, 2))
        values.append(asEntered(omega.measured / lanqor::omegaUnitCm2));
    for (const FittedOmega &omega : results.omega)
        values.append(isFitted ? QVariant(omega.fitted / lanqor::omegaUnitCm2) : QVariant());
    for (const FittedOmega &omega : results.omega)
        values.append(omega.weight);
    return values + Row{isFitted ? QVariant(results.response) : QVariant(), results.points};
}

Columns donorColumns()
{
    return {column("charge_factor", "1"),
            column("charge_factor_minimum", "1"),
            column("charge_factor_maximum", "1"),
            column("polarisability", "Angstrom^3"),
            column("polarisability_minimum", "Angstrom^3"),
            column("polarisability_maximum", "Angstrom^3")};
}

Row donorValues(const FittedDonor &donor)
{
    constexpr double unit = lanqor::cm3PerCubicAngstrom;
    return {donor.chargeFactor,
            donor.minimumChargeFactor,
            donor.maximumChargeFactor,
            donor.alpha / unit,
            asEntered(donor.minimumAlpha / unit),
            asEntered(donor.maximumAlpha / unit)};
}

} // namespace

LanqorResultTables LanqorParametric::makeTables(const OmegaFitResults &results)
{
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("omega_fit"), intensityColumns(), intensityValues(results));
    QVector<Row> rows;
    for (const OmegaFitGroup &group : results.groups)
        rows.append(Row{group.number, group.atoms.join(QStringLiteral(", "))} +
                    donorValues(group.donor));
    tables.addTable(QStringLiteral("groups"),
                    Columns{column("group"), column("atoms_from_1")} + donorColumns(), rows);
    return tables;
}

LanqorResultTables LanqorParametricQDC::makeTables(const QdcFitResults &results)
{
    const bool isFitted = results.hasFeasiblePoint;
    const auto fitted = [isFitted](double value) {
        return isFitted ? QVariant(value) : QVariant();
    };
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("qdc_fit"),
        intensityColumns() +
            Columns{column("qdc_q", "1/electron"),
                    {QStringLiteral("qdc_d"), QStringLiteral("Angstrom^3 ") + results.energyUnit},
                    column("qdc_c", "Angstrom^3"),
                    column("restriction_value", "1"),
                    column("is_restricted")},
        intensityValues(results) + Row{fitted(results.parameters.Q), fitted(results.parameters.D),
                                       fitted(results.parameters.C),
                                       double(results.restrictionValue), results.isRestricted});
    QVector<Row> rows;
    for (const QdcFitAtom &atom : results.atoms)
        rows.append(Row{atom.number, atom.element, atom.charge, atom.superdelocalizability} +
                    donorValues(atom.donor));
    tables.addTable(QStringLiteral("atoms"),
                    Columns{column("atom_from_1"),
                            column("element"),
                            column("electron_population", "1"),
                            {QStringLiteral("superdelocalizability"),
                             QStringLiteral("1/") + results.energyUnit}} +
                        donorColumns(),
                    rows);
    return tables;
}

LanqorResultTables LanqorParametricStarkLevels::makeTables(const StarkFitResults &results)
{
    const bool isFitted = results.hasFeasiblePoint;
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("stark_fit"),
                     {column("structure_file"), column("effective_charge", "1"),
                      column("response", "cm^-1"), column("best_point_from_1"), column("points"),
                      column("reduced_elements")},
                     {results.structureFile, results.effectiveCharge,
                      isFitted ? QVariant(results.response) : QVariant(),
                      isFitted ? QVariant(results.bestPoint) : QVariant(), results.points,
                      starkReport::nameOf(results.reducedElements)});
    QVector<Row> rows;
    for (const StarkFitGroup &fitted : results.groups)
        rows.append({fitted.group.name, numbers(fitted.group.atoms), fitted.chargeFactor,
                     fitted.minimumChargeFactor, existing(fitted.maximumChargeFactor)});
    tables.addTable(QStringLiteral("groups"),
                    {column("group"), column("atoms_from_1"), column("charge_factor", "1"),
                     column("charge_factor_minimum", "1"), column("charge_factor_maximum", "1")},
                    rows);
    rows.clear();
    for (const StarkFitTransition &t : results.transitions)
        rows.append(
            {t.level, t.offset, t.measuredLow, t.computedLow, t.measuredHigh, t.computedHigh});
    tables.addTable(QStringLiteral("transitions"),
                    {column("j"), column("offset", "cm^-1"), column("measured_lowest", "cm^-1"),
                     column("lowest", "cm^-1"), column("measured_highest", "cm^-1"),
                     column("highest", "cm^-1")},
                    rows);
    rows.clear();
    for (int J = 0; J < results.levels.size(); ++J)
        for (int i = 0; i < results.levels.at(J).size(); ++i)
            rows.append({J, i + 1, results.levels.at(J).at(i)});
    tables.addTable(QStringLiteral("stark_levels"),
                    {column("j"), column("level_from_1"), column("energy", "cm^-1")}, rows);
    return tables;
}

LanqorResultTables LanqorParametricEnergyLevels::makeTables(const LevelsFitResults &results)
{
    const bool isFitted = results.fittedCount > 0;
    LanqorResultTables tables;
    tables.addRecord(QStringLiteral("levels_fit"),
                     {column("electrons"), column("response", "%"), column("points"),
                      column("fitted_levels"), column("rms_difference", "cm^-1")},
                     {results.electrons, isFitted ? QVariant(results.response) : QVariant(),
                      results.points, results.fittedCount,
                      isFitted ? QVariant(results.rmsDifference) : QVariant()});
    QVector<Row> rows;
    for (const FittedParameter &parameter : results.parameters)
        rows.append({parameter.name, parameter.value, parameter.minimum, parameter.maximum});
    tables.addTable(QStringLiteral("parameters"),
                    {column("parameter"), column("value", "cm^-1"), column("minimum", "cm^-1"),
                     column("maximum", "cm^-1")},
                    rows);
    rows.clear();
    for (const FittedLevel &level : results.levels)
        rows.append({level.label, level.measured, existing(level.computed),
                     existing(level.computed - level.measured), level.isFitted});
    tables.addTable(QStringLiteral("levels"),
                    {column("label"), column("measured_energy", "cm^-1"), column("energy", "cm^-1"),
                     column("difference", "cm^-1"), column("is_fitted")},
                    rows);
    return tables;
}
