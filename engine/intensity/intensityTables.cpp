#include "LanqorAradPartition.h"
#include "LanqorOmega.h"
#include "LanqorOmegaExp.h"

#include "core/physicalConstants_p.h"
#include "core/resultColumns_p.h"

#include <LanqorEngine/AradPartitionResults.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/OmegaExpResults.h>
#include <LanqorEngine/OmegaResults.h>

// The records of this room as tables.

using resultColumns::column;
using resultColumns::existing;

namespace {

using Columns = QVector<ResultColumn>;
using Row = QVector<QVariant>;

constexpr char omegaUnit[] = "1e-20 cm^2";
constexpr char rateUnit[] = "s^-1";
constexpr double percent = 100.0;
constexpr double msPerSecond = 1000.0;

QString levelName(int J)
{
    return QStringLiteral("7F%1").arg(J);
}

QString energyUnit(const OmegaResults &results)
{
    return results.orbitalEnergyUnit.isEmpty() ? QStringLiteral("(unit of the orbital energies)")
                                               : results.orbitalEnergyUnit;
}

QString sourceName(OmegaResults::ChargeFactorSource source)
{
    using Source = OmegaResults::ChargeFactorSource;
    if (source == Source::Given)
        return QStringLiteral("given");
    return source == Source::Qdc ? QStringLiteral("qdc") : QStringLiteral("bond estimate");
}

void addIntensityParameters(LanqorResultTables &tables, const OmegaResults &results)
{
    Columns columns = {column("structure_file"), column("coordination_number")};
    Row values = {results.geometryFile, results.atoms.size()};
    const auto add = [&](const QString &name, const ByRank &omega) {
        for (const int lambda : {2, 4, 6}) {
            columns.append({name.arg(lambda), QLatin1String(omegaUnit)});
            values.append(omega[lambda] / lanqor::omegaUnitCm2);
        }
    };
    add(QStringLiteral("omega_%1"), results.omega);
    add(QStringLiteral("omega_ed_%1"), results.omegaED);
    add(QStringLiteral("omega_dc_%1"), results.omegaDC);
    if (results.qdc.isSet) {
        columns += {column("qdc_q", "1/electron"),
                    {QStringLiteral("qdc_d"), QStringLiteral("Angstrom^3 ") + energyUnit(results)},
                    column("qdc_c", "Angstrom^3")};
        values += {results.qdc.Q, results.qdc.D, results.qdc.C};
    }
    columns.append(column("charge_factor_source"));
    values.append(sourceName(results.chargeFactorSource));
    tables.addRecord(QStringLiteral("intensity_parameters"), columns, values);
}

void addAtoms(LanqorResultTables &tables, const OmegaResults &results)
{
    Columns columns = {column("atom_from_1"),
                       column("element"),
                       column("distance", "Angstrom"),
                       column("theta", "deg"),
                       column("phi", "deg"),
                       column("charge_factor", "1"),
                       column("polarisability", "Angstrom^3"),
                       column("overlap", "1"),
                       column("beta_factor", "1")};
    if (results.qdc.hasIndices)
        columns +=
            {column("electron_population", "1"),
             {QStringLiteral("superdelocalizability"), QStringLiteral("1/") + energyUnit(results)}};
    QVector<Row> rows;
    for (const OmegaResults::Atom &atom : results.atoms) {
        rows.append({atom.number, atom.position.label, atom.position.r, atom.position.theta,
                     atom.position.phi, atom.chargeFactor, atom.alpha / lanqor::cm3PerCubicAngstrom,
                     atom.rho, atom.beta});
        if (results.qdc.hasIndices)
            rows.last() += {atom.atomicCharge, atom.superdelocalizability};
    }
    tables.addTable(QStringLiteral("atoms"), columns, rows);
}

void addRates(LanqorResultTables &tables, const OmegaResults &results)
{
    const RadiativeRates &rates = results.rates;
    tables.addRecord(QStringLiteral("emission"),
                     {column("refractive_index", "1"), column("electric_dipole_rate", rateUnit),
                      column("magnetic_dipole_rate", rateUnit), column("radiative_rate", rateUnit),
                      column("radiative_lifetime", "ms")},
                     {results.refractiveIndex, rates.electricDipole(), rates.md, rates.total(),
                      existing(msPerSecond / rates.total())});
    QVector<Row> rows;
    const auto add = [&](int J, double rate) {
        rows.append({levelName(J), rate, existing(percent * rate / rates.total())});
    };
    add(1, rates.md);
    add(2, rates.ed02);
    add(4, rates.ed04);
    add(6, rates.ed06);
    tables.addTable(
        QStringLiteral("emission_bands"),
        {column("level"), column("radiative_rate", rateUnit), column("branching_ratio", "%")},
        rows);
}

void addAmplitudes(LanqorResultTables &tables, const OmegaResults &results)
{
    QVector<Row> rows;
    for (const OmegaResults::Amplitude &B : results.amplitudes)
        rows.append({B.lambda, B.t, B.p, B.electricDipole.real, B.electricDipole.imag,
                     B.dynamicCoupling.real, B.dynamicCoupling.imag});
    tables.addTable(
        QStringLiteral("amplitudes"),
        {column("lambda"), column("t"), column("p"), column("electric_dipole_real_part", "cm"),
         column("electric_dipole_imaginary_part", "cm"), column("dynamic_coupling_real_part", "cm"),
         column("dynamic_coupling_imaginary_part", "cm")},
        rows);
    tables.addRecord(QStringLiteral("crystal_field"), {column("overlap_of_nearest_atom", "1")},
                     {results.crystalFieldOverlap});
    rows.clear();
    for (const OmegaResults::CrystalFieldParameter &B : results.crystalField)
        rows.append({B.k, B.q, B.value.real, B.value.imag});
    tables.addTable(
        QStringLiteral("crystal_field_parameters"),
        {column("k"), column("q"), column("real_part", "cm^-1"), column("imaginary_part", "cm^-1")},
        rows);
}

/// What was integrated and how.
void addSource(LanqorResultTables &tables, const OmegaExpResults::Source &source)
{
    using Options = EmissionSpectrumOptions;
    const auto choose = [](bool isFirst, const char *first, const char *second) {
        return QString::fromLatin1(isFirst ? first : second);
    };
    Columns columns = {column("kind"), column("signal")};
    Row values = {choose(source.isSpectrum, "spectrum", "areas"),
                  choose(source.options.signal == Options::Signal::EmittedPower, "emitted power",
                         "photon counts")};
    if (source.isSpectrum) {
        columns += {column("axis"), column("baseline")};
        values += {choose(source.options.axis == Options::Axis::Nanometre, "nm", "cm^-1"),
                   choose(source.options.baseline == Options::Baseline::Linear, "linear", "none")};
    }
    tables.addRecord(QStringLiteral("emission_source"), columns, values);
}

} // namespace

LanqorResultTables LanqorOmega::makeTables(const OmegaResults &results)
{
    LanqorResultTables tables;
    addIntensityParameters(tables, results);
    addAtoms(tables, results);
    addRates(tables, results);
    tables.append(LanqorAradPartition::makeTables(results.partition));
    addAmplitudes(tables, results);
    return tables;
}

LanqorResultTables LanqorAradPartition::makeTables(const AradPartitionResults &results)
{
    LanqorResultTables tables;
    QVector<Row> rows;
    for (const AradPartitionResults::AtomShare &share : results.atoms)
        rows.append({share.atom, share.label, share.rate});
    tables.addTable(
        QStringLiteral("partition_by_atom"),
        {column("atom_from_1"), column("element"), column("electric_dipole_rate", rateUnit)}, rows);
    rows.clear();
    for (const AradPartitionResults::GroupShare &share : results.groups) {
        QStringList atoms;
        for (const int atom : share.group.atoms)
            atoms.append(QString::number(atom));
        rows.append({rows.size(), share.group.name, atoms.join(QStringLiteral(", ")), share.rate});
    }
    if (!rows.isEmpty())
        tables.addTable(QStringLiteral("partition_by_group"),
                        {column("group_from_0"), column("name"), column("atoms_from_1"),
                         column("electric_dipole_rate", rateUnit)},
                        rows);
    return tables;
}

namespace {

/// What a picture of a measured spectrum shows.
void addSpectrum(LanqorResultTables &tables, const OmegaExpResults &results)
{
    const OmegaExpResults::Spectrum &spectrum = results.spectrum;
    if (spectrum.abscissa.isEmpty())
        return;
    const bool isWavelength =
        results.source.options.axis == EmissionSpectrumOptions::Axis::Nanometre;
    const char *const name = isWavelength ? "wavelength" : "wavenumber";
    const char *const unit = isWavelength ? "nm" : "cm^-1";
    QVector<Row> rows;
    for (const OmegaExpResults::Spectrum::Baseline &baseline : spectrum.baselines) {
        const bool isCovered = baseline.first < baseline.last;
        rows.append({levelName(rows.size())});
        for (const double value :
             {baseline.first, baseline.signalAtFirst, baseline.last, baseline.signalAtLast})
            rows.last() += isCovered ? QVariant(value) : QVariant();
    }
    tables.addTable(isWavelength ? QStringLiteral("baselines_over_wavelength")
                                 : QStringLiteral("baselines_over_wavenumber"),
                    {column("level"), column("first", unit), column("signal_at_first", "arbitrary"),
                     column("last", unit), column("signal_at_last", "arbitrary")},
                    rows);
    rows.clear();
    for (int i = 0; i < spectrum.abscissa.size(); ++i)
        rows.append({spectrum.abscissa.at(i), spectrum.signal.at(i)});
    tables.addTable(isWavelength ? QStringLiteral("spectrum_over_wavelength")
                                 : QStringLiteral("spectrum_over_wavenumber"),
                    {column(name, unit), column("signal", "arbitrary")}, rows);
}

} // namespace

LanqorResultTables LanqorOmegaExp::makeTables(const OmegaExpResults &results)
{
    const auto ofLifeTime = [&results](double value) {
        return results.lifeTime == 0.0 ? QVariant() : existing(value);
    };
    LanqorResultTables tables;
    tables.addRecord(
        QStringLiteral("experimental_intensity_parameters"),
        {column("spectrum_file"), column("refractive_index", "1"), column("omega_2", omegaUnit),
         column("omega_4", omegaUnit), column("r02", "1"), column("radiative_rate", rateUnit),
         column("radiative_lifetime", "ms"), column("lifetime", "ms"),
         column("nonradiative_rate", rateUnit), column("quantum_efficiency", "%")},
        {results.fileName, results.refractiveIndex, results.omega2 / lanqor::omegaUnitCm2,
         results.omega4 / lanqor::omegaUnitCm2, existing(results.r02), results.arad,
         existing(results.radiativeLifeTime), ofLifeTime(results.lifeTime),
         ofLifeTime(results.anrad), ofLifeTime(results.quantumEfficiency)});
    addSource(tables, results.source);
    QVector<Row> rows;
    for (std::size_t J = 0; J < results.transitions.size(); ++J) {
        const OmegaExpResults::Transition &transition = results.transitions[J];
        rows.append({levelName(rows.size()), transition.area,
                     transition.barycenter == 0.0 ? QVariant() : transition.barycenter,
                     transition.rate, existing(results.branchingRatios[J]),
                     results.source.givenAreas[J]});
        if (results.source.isSpectrum)
            rows.last() += {results.source.options.windows[J].lowest,
                            results.source.options.windows[J].highest,
                            percent * results.source.edgeSignals[J]};
    }
    Columns columns = {column("level"),
                       column("area", "arbitrary"),
                       column("barycentre", "cm^-1"),
                       column("radiative_rate", rateUnit),
                       column("branching_ratio", "%"),
                       column("area_as_given", "arbitrary")};
    if (results.source.isSpectrum)
        columns += {column("window_lowest", "cm^-1"), column("window_highest", "cm^-1"),
                    column("signal_at_edge", "%")};
    tables.addTable(QStringLiteral("emission_bands"), columns, rows);
    rows.clear();
    for (const QString &warning : results.warnings)
        rows.append({warning});
    if (!rows.isEmpty())
        tables.addTable(QStringLiteral("warnings"), {column("warning")}, rows);
    addSpectrum(tables, results);
    return tables;
}
