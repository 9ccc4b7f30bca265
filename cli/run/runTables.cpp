#include "run/RunReport.h"
#include "run/runOutputs.h"

#include <LanqorEngine/DonorTripletResults.h>
#include <LanqorEngine/LanqorDonorTriplet.h>
#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorIntensitySolutions.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorParametric.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorUncertainty.h>

#include <cmath>

namespace {

using Row = QVector<QVariant>;

constexpr double omegaUnitCm2 = 1.0e-20;

ResultColumn column(const char *key, const char *unit = "")
{
    return {QLatin1String(key), QLatin1String(unit)};
}

QVariant existing(const QString &text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

QString keyOf(RunReport::End end)
{
    switch (end) {
    case RunReport::End::Complete:
        return QStringLiteral("finished");
    case RunReport::End::Missing:
        return QStringLiteral("stopped after states");
    case RunReport::End::Until:
        return QStringLiteral("stopped where asked");
    case RunReport::End::Failed:
        break;
    }
    return QStringLiteral("failed");
}

QString keyOf(RunStep::State state)
{
    switch (state) {
    case RunStep::State::Done:
        return QStringLiteral("done");
    case RunStep::State::Kept:
        return QStringLiteral("kept");
    case RunStep::State::Failed:
        return QStringLiteral("failed");
    case RunStep::State::LeftOut:
        break;
    }
    return QStringLiteral("left out");
}

/// Why a run ended before the yield.
QString reasonOf(const RunReport &report)
{
    return report.end == RunReport::End::Missing ? report.missing.join(QStringLiteral("; "))
                                                 : report.failure;
}

void addRun(LanqorResultTables &tables, const RunReport &report)
{
    const bool isChargeKnown = !report.chargeSource.isEmpty();
    tables.addRecord(
        QStringLiteral("run_state"),
        {column("program_version"), column("name"), column("state"), column("reason"),
         column("structure_file"), column("charge", "e"), column("charge_source"), column("medium"),
         column("geometry_of_states"), column("geometry_of_second_triplet"),
         column("geometry_of_intensities"), column("intensities_from"), column("settings_toml")},
        {report.lanqorVersion, report.name, keyOf(report.end), existing(reasonOf(report)),
         report.structureFile, isChargeKnown ? QVariant(report.charge) : QVariant(),
         existing(report.chargeSource), existing(report.medium), existing(report.geometryStates),
         existing(report.geometryTriplet), existing(report.geometryIntensities),
         existing(report.intensitySource), existing(report.settingsToml)});
}

/// Each quantity with the limits of the middle 68 and 95 %, or one deviation around a triplet.
void addMainResults(LanqorResultTables &tables, const RunReport &report)
{
    QVector<Row> rows;
    const auto add = [&rows](const char *quantity, const char *unit, double value,
                             const QVector<QVariant> &limits = {}) {
        rows.append(Row{QLatin1String(quantity), QLatin1String(unit),
                        std::isfinite(value) ? QVariant(value) : QVariant()} +
                    limits);
    };
    const auto limitsOf = [&report](const char *name) {
        if (report.uncertainty)
            for (const UncertaintyResults::Quantity &quantity : report.uncertainty->quantities)
                if (quantity.name == QLatin1String(name))
                    return Row{quantity.low68, quantity.high68, quantity.low95, quantity.high95};
        return Row();
    };
    if (report.triplet && report.triplet->chosen != TripletMethod::None) {
        const bool hasInterval = report.triplet->standardDeviation > 0.0;
        add("triplet_energy", "cm^-1", report.triplet->energy,
            hasInterval ? Row{report.triplet->low, report.triplet->high} : Row());
        if (report.triplet->singletEnergy > 0.0)
            add("singlet_energy", "cm^-1", report.triplet->singletEnergy);
    }
    if (report.omega && report.omega->isCalculated) {
        add("omega_2", "1e-20 cm^2", report.omega->omega[2] / omegaUnitCm2);
        add("omega_4", "1e-20 cm^2", report.omega->omega[4] / omegaUnitCm2);
        add("omega_6", "1e-20 cm^2", report.omega->omega[6] / omegaUnitCm2);
    }
    if (report.yield) {
        const SpectroscopicResults &yield = *report.yield;
        add("radiative_rate", "s^-1", yield.arad, limitsOf("radiative_rate"));
        add("non_radiative_rate", "s^-1", yield.anrad, limitsOf("non_radiative_rate"));
        add("quantum_efficiency", "%", yield.quantumEfficiency, limitsOf("quantum_efficiency"));
        add("sensitisation", "%", yield.sensitisation, limitsOf("sensitisation"));
        add("quantum_yield", "%", yield.quantumYield, limitsOf("quantum_yield"));
    }
    const auto unitOfRow = QStringLiteral("unit");
    const auto ofValue = QStringLiteral("value");
    tables.addTable(QStringLiteral("main_results"),
                    {column("quantity"),
                     column("unit"),
                     {ofValue, unitOfRow},
                     {QStringLiteral("low_68"), unitOfRow, ofValue},
                     {QStringLiteral("high_68"), unitOfRow, ofValue},
                     {QStringLiteral("low_95"), unitOfRow, ofValue},
                     {QStringLiteral("high_95"), unitOfRow, ofValue}},
                    rows);
}

void addSteps(LanqorResultTables &tables, const RunReport &report)
{
    QVector<Row> rows;
    for (const RunStep &step : report.steps)
        rows.append({step.folder, step.title, keyOf(step.state), step.outcome,
                     existing(step.program), existing(step.version), existing(step.commandLine),
                     step.seconds});
    tables.addTable(QStringLiteral("steps"),
                    {column("folder"), column("title"), column("state"), column("outcome"),
                     column("program"), column("program_version"), column("command_line"),
                     column("time", "s")},
                    rows);
    rows.clear();
    for (const FileHash &file : report.inputs)
        rows.append({file.fileName, file.sha256});
    tables.addTable(QStringLiteral("inputs"), {column("file"), column("sha256")}, rows);
    rows.clear();
    for (const OrganizedLigand &ligand : report.ligands) {
        QStringList atoms;
        for (const int atom : ligand.coordinatedAtoms)
            atoms.append(QString::number(atom));
        rows.append({ligand.name, atoms.join(QStringLiteral(", "))});
    }
    tables.addTable(QStringLiteral("ligands"), {column("ligand"), column("bound_atoms_from_1")},
                    rows);
}

void addTexts(LanqorResultTables &tables, const char *name, const QStringList &texts)
{
    QVector<Row> rows;
    for (const QString &text : texts)
        rows.append({text});
    tables.addTable(QLatin1String(name), {column("text")}, rows);
}

/// Adds the parts of a calculation, with its word in front of the names that others have, too.
void append(LanqorResultTables &tables, const char *word, const LanqorResultTables &parts)
{
    static const QStringList common = {
        QStringLiteral("atoms"),    QStringLiteral("emission"),
        QStringLiteral("groups"),   QStringLiteral("emission_bands"),
        QStringLiteral("warnings"), QStringLiteral("intensity_parameters")};
    for (const ResultTable &part : parts.getTables()) {
        const QString name = common.contains(part.name)
                                 ? QLatin1String(word) + QLatin1Char('_') + part.name
                                 : part.name;
        if (part.isRecord)
            tables.addRecord(name, part.columns, part.rows.value(0));
        else
            tables.addTable(name, part.columns, part.rows);
    }
}

} // namespace

LanqorResultTables makeRunTables(const RunReport &report)
{
    LanqorResultTables tables;
    addRun(tables, report);
    addMainResults(tables, report);
    addSteps(tables, report);
    addTexts(tables, "first_lines", report.firstLines);
    addTexts(tables, "missing", report.missing);
    addTexts(tables, "warnings", report.warnings);
    addTexts(tables, "citations", report.citations);
    if (report.sphere.coordNumber > 0)
        append(tables, "sphere", LanqorInputData::makeTables(report.sphere));
    if (report.states)
        append(tables, "states", LanqorRL::makeTables(*report.states));
    if (report.triplet)
        append(tables, "triplet", LanqorDonorTriplet::makeTables(*report.triplet));
    if (report.measured)
        append(tables, "measured", LanqorOmegaExp::makeTables(*report.measured));
    if (report.fit)
        append(tables, "fit", LanqorParametric::makeTables(*report.fit));
    if (report.fitAccount)
        append(tables, "fit", LanqorFitAccount::makeTables(*report.fitAccount));
    if (report.solutions)
        append(tables, "solutions", LanqorIntensitySolutions::makeTables(*report.solutions, 0));
    if (report.omega)
        append(tables, "omega", LanqorOmega::makeTables(*report.omega));
    if (report.yield)
        append(tables, "yield", LanqorSpectroscopicCalculation::makeTables(*report.yield));
    if (report.uncertainty && !report.uncertainty->quantities.isEmpty())
        append(tables, "uncertainty", LanqorUncertainty::makeTables(*report.uncertainty));
    return tables;
}
