#include "LanqorSpectroscopicCalculation.h"
#include "core/physicalConstants_p.h"

#include <LanqorEngine/LanqorResultTables.h>

namespace {

using Row = QVector<QVariant>;

QString key(const char *text)
{
    return QLatin1String(text);
}

void addOmega(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    QVector<ResultColumn> columns;
    Row values;
    const auto add = [&](const QString &name, const ByRank &omega) {
        for (const int lambda : {2, 4, 6}) {
            columns.append({name + QString::number(lambda), key("1e-20 cm^2")});
            values.append(omega[lambda] / lanqor::omegaUnitCm2);
        }
    };
    add(key("omega_"), results.omega);
    add(key("omega_ed_"), results.omegaEd);
    tables.addRecord(key("intensity_parameters"), columns, values);
}

void addEmission(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    constexpr double msPerSecond = 1000.0;
    tables.addRecord(key("emission"),
                     {{key("refractive_index"), key("1")},
                      {key("radiative_rate"), key("s^-1")},
                      {key("nonradiative_rate"), key("s^-1")},
                      {key("lifetime"), key("ms")},
                      {key("is_lifetime_estimated"), QString()},
                      {key("quantum_efficiency"), key("%")}},
                     {results.refractiveIndex, results.arad, results.anrad,
                      results.lifeTime * msPerSecond, results.isLifeTimeEstimated,
                      results.quantumEfficiency});
    tables.addTable(key("emission_bands"),
                    {{key("level"), QString()},
                     {key("radiative_rate"), key("s^-1")},
                     {key("branching_ratio"), key("%")}},
                    {{key("7F1"), results.aradMD, results.branchingRatios.value(1)},
                     {key("7F2"), results.arad02, results.branchingRatios.value(2)},
                     {key("7F4"), results.arad04, results.branchingRatios.value(4)},
                     {key("7F6"), results.arad06, results.branchingRatios.value(6)}});
}

void addDonors(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    QVector<Row> rows;
    const auto add = [&rows](const char *name, const DonorState &donor) {
        rows.append({key(name), donor.number > 0 ? QVariant(donor.number) : QVariant(),
                     donor.energy, donor.rl, donor.gama[2], donor.gama[4], donor.gama[6]});
    };
    add("S", results.singlet);
    if (results.considerTwoTriplets)
        add("Ta", results.firstTriplet);
    add("T", results.triplet);
    tables.addTable(key("donors"),
                    {{key("donor"), QString()},
                     {key("state_from_1"), QString()},
                     {key("energy"), key("cm^-1")},
                     {key("rl"), key("Angstrom")},
                     {key("gama_2"), key("cm^-4")},
                     {key("gama_4"), key("cm^-4")},
                     {key("gama_6"), key("cm^-4")}},
                    rows);
}

void addTransfers(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    QVector<Row> rows;
    for (const TransferResult &transfer : results.transfers) {
        const TransferChannel &channel = transfer.channel;
        const bool isExchange = channel.mechanism == TransferMechanism::Exchange;
        rows.append({channel.name, key(isExchange ? "exchange" : "multipolar"),
                     channel.acceptorEnergy, transfer.energyMismatch, transfer.overlap,
                     transfer.forwardRate, transfer.backwardRate, transfer.takesPart});
    }
    tables.addTable(key("energy_transfer"),
                    {{key("channel"), QString()},
                     {key("mechanism"), QString()},
                     {key("acceptor_energy"), key("cm^-1")},
                     {key("energy_mismatch"), key("cm^-1")},
                     {key("spectral_overlap"), key("erg^-1")},
                     {key("transfer_rate"), key("s^-1")},
                     {key("back_transfer_rate"), key("s^-1")},
                     {key("takes_part"), QString()}},
                    rows);
}

void addShares(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    const PhotonShares &shares = results.shares;
    tables.addRecord(key("photon_shares"),
                     {{key("singlet_decay"), key("1")},
                      {key("triplet_decay"), key("1")},
                      {key("nonradiative_decay"), key("1")},
                      {key("emitted"), key("1")},
                      {key("back_transfer_from_5d0"), key("1")},
                      {key("reaching_5d0"), key("1")},
                      {key("limiting_step"), QString()}},
                     {shares.singletDecay, shares.tripletDecay, shares.nonRadiative, shares.emitted,
                      shares.backTransfer, shares.reaching5D0, results.limitingStep});
    QVector<Row> rows;
    for (const ReplacedValue &value : results.replacedValues)
        rows.append({value.quantity, value.unit, value.read, value.used});
    if (!rows.isEmpty())
        tables.addTable(key("given_values"),
                        {{key("quantity"), QString()},
                         {key("unit"), QString()},
                         {key("read"), QString()},
                         {key("used"), QString()}},
                        rows);
}

void addPopulations(LanqorResultTables &tables, const SpectroscopicResults &results)
{
    const double distance = results.minDistanceLnLigand;
    QVector<Row> rows;
    for (const StatePopulation &entry : results.populations)
        rows.append({entry.state, entry.population});
    tables.addTable(key("populations"), {{key("state"), QString()}, {key("population"), key("1")}},
                    rows);
    tables.addRecord(key("yield"),
                     {{key("energy_transfer_model"), QString()},
                      {key("quantum_yield"), key("%")},
                      {key("overlap_exponent"), key("1")},
                      {key("ligand_band_half_width"), key("cm^-1")},
                      {key("sensitisation_efficiency"), key("%")},
                      {key("temperature"), key("K")},
                      {key("with_degeneracies"), QString()},
                      {key("shortest_distance"), key("Angstrom")}},
                     {results.etModel, results.quantumYield, results.overlapExponent,
                      results.bandHalfWidth, results.sensitisation, results.kinetics.temperature,
                      results.kinetics.withDegeneracies,
                      distance > 0.0 ? QVariant(distance) : QVariant()});
    addShares(tables, results);
    rows.clear();
    for (const KineticConstant &constant : results.kineticConstants)
        rows.append({constant.from, constant.to, constant.rate});
    tables.addTable(
        key("kinetic_constants"),
        {{key("from_state"), QString()}, {key("to_state"), QString()}, {key("rate"), key("s^-1")}},
        rows);
}

} // namespace

LanqorResultTables LanqorSpectroscopicCalculation::makeTables(const SpectroscopicResults &results)
{
    LanqorResultTables tables;
    addOmega(tables, results);
    addEmission(tables, results);
    if (results.isTransferCalculated) {
        addDonors(tables, results);
        addTransfers(tables, results);
    }
    if (!results.populations.isEmpty())
        addPopulations(tables, results);
    if (!results.warnings.isEmpty()) {
        QVector<Row> rows;
        for (const QString &warning : results.warnings)
            rows.append({warning});
        tables.addTable(key("warnings"), {{key("warning"), QString()}}, rows);
    }
    if (!results.ligandStates.outputPath.isEmpty())
        tables.append(LanqorRL::makeTables(results.ligandStates));
    return tables;
}
