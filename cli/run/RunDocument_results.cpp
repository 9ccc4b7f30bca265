#include "run/RunDocument.h"

#include "plots/figures.h"
#include "run/RunReport.h"
#include "text.h"

#include <LanqorEngine/DonorTripletResults.h>

#include <QMap>

#include <algorithm>
#include <cmath>

namespace runDocument {

using cli::tr;

namespace {

constexpr double omegaUnitCm2 = 1.0e-20;
constexpr double cm3PerCubicAngstrom = 1.0e-24;
constexpr double msPerSecond = 1000.0;

/// "1.234e+08"
QString power(double value)
{
    return QString::number(value, 'e', 3);
}

QVector<Block> measuredBlocks(const OmegaExpResults &measured)
{
    QVector<QStringList> rows;
    for (std::size_t J = 0; J < measured.transitions.size(); ++J) {
        const OmegaExpResults::Transition &band = measured.transitions[J];
        rows.append({QStringLiteral("5D0 -> 7F%1").arg(J), QString::number(band.area, 'g', 5),
                     band.barycenter > 0.0 ? fixed(band.barycenter, 0) : QString(),
                     fixed(band.rate, 2), fixed(measured.branchingRatios[J], 2)});
    }
    return {figure(tr("Measured emission: the windows of the bands and, where one is subtracted, "
                      "the baseline"),
                   plots::emissionFigure(measured)),
            table(tr("Measured bands"),
                  {tr("band"), tr("area"), tr("barycentre / cm^-1"), tr("rate / s^-1"),
                   tr("share / %")},
                  rows),
            facts(tr("From the measured spectrum"),
                  {{tr("file"), measured.fileName},
                   {tr("Omega(2)"),
                    fixed(measured.omega2 / omegaUnitCm2, 3) + QStringLiteral(" 1e-20 cm^2")},
                   {tr("Omega(4)"),
                    fixed(measured.omega4 / omegaUnitCm2, 3) + QStringLiteral(" 1e-20 cm^2")},
                   {tr("radiative rate"), fixed(measured.arad, 1) + QStringLiteral(" s^-1")},
                   {tr("lifetime"), measured.lifeTime > 0.0
                                        ? fixed(measured.lifeTime, 4) + QStringLiteral(" ms")
                                        : QString()},
                   {tr("quantum efficiency"),
                    measured.lifeTime > 0.0
                        ? cli::textOfYield(measured.quantumEfficiency) + QStringLiteral(" %")
                        : QString()}})};
}

Block omegaTable(const RunReport &report)
{
    const OmegaResults &omega = *report.omega;
    QVector<QStringList> rows;
    for (const int rank : {2, 4, 6}) {
        QStringList row = {QString::number(rank), fixed(omega.omega[rank] / omegaUnitCm2, 4),
                           fixed(omega.omegaED[rank] / omegaUnitCm2, 4),
                           fixed(omega.omegaDC[rank] / omegaUnitCm2, 4)};
        QString target;
        if (report.fit)
            for (const FittedOmega &fitted : report.fit->omega)
                if (fitted.lambda == rank && std::isfinite(fitted.measured))
                    target = fixed(fitted.measured / omegaUnitCm2, 4);
        rows.append(row << target);
    }
    return table(tr("Intensity parameters / 1e-20 cm^2: in all, by forced electric dipole (ED) and "
                    "dynamic coupling (DC) alone"),
                 {tr("lambda"), tr("Omega"), tr("ED"), tr("DC"), tr("measured")}, rows);
}

/// Of the atoms, with the groups that a fit gave one value each.
Block factorTable(const RunReport &report)
{
    QMap<QString, QString> groups;
    if (report.fit)
        for (const OmegaFitGroup &group : report.fit->groups)
            for (const QString &atom : group.atoms)
                groups.insert(atom, QString::number(group.number));
    QVector<QStringList> rows;
    for (const OmegaResults::Atom &atom : report.omega->atoms) {
        const QString name =
            QStringLiteral("%1 %2").arg(atom.position.label, QString::number(atom.number));
        rows.append({name, fixed(atom.chargeFactor, 4), fixed(atom.alpha / cm3PerCubicAngstrom, 4),
                     groups.value(name)});
    }
    return table(tr("Charge factors and polarisabilities"),
                 {tr("atom"), tr("g"), tr("alpha / Angstrom^3"), tr("group of the fit")}, rows);
}

Block solutionTable(const IntensitySolutions &solutions)
{
    QVector<QStringList> rows;
    for (const IntensitySolutions::Quantity &quantity : solutions.quantities)
        rows.append({QString(quantity.name).replace(QLatin1Char('_'), QLatin1Char(' ')),
                     QString::number(quantity.minimum, 'g', 5),
                     QString::number(quantity.maximum, 'g', 5),
                     quantity.unit == QLatin1String("1") ? QString() : quantity.unit,
                     quantity.isDetermined ? tr("determined") : tr("open")});
    return table(tr("Equally good solutions of the fit: what they leave open (%1 sets)")
                     .arg(solutions.sets.size()),
                 {tr("quantity"), tr("smallest"), tr("largest"), tr("unit"), tr("state")}, rows);
}

QVector<Block> partitionBlocks(const AradPartitionResults &partition)
{
    double total = 0.0;
    for (const AradPartitionResults::AtomShare &atom : partition.atoms)
        total += atom.rate;
    QVector<QStringList> rows;
    const auto add = [&](const QString &name, double rate) {
        rows.append(
            {name, fixed(rate, 2), total != 0.0 ? fixed(100.0 * rate / total, 1) : QString()});
    };
    for (const AradPartitionResults::AtomShare &atom : partition.atoms)
        add(QStringLiteral("%1 %2").arg(atom.label, QString::number(atom.atom)), atom.rate);
    for (const AradPartitionResults::GroupShare &group : partition.groups)
        add(group.group.name, group.rate);
    return {figure(tr("Who brings about the forced electric dipole rate Arad(ED)"),
                   plots::partitionFigure(partition)),
            table(tr("Partition of Arad(ED)"), {tr("atom or ligand"), tr("rate / s^-1"), tr("%")},
                  rows)};
}

Block transferTable(const SpectroscopicResults &yield)
{
    QVector<QStringList> rows;
    for (const TransferResult &transfer : yield.transfers)
        if (transfer.takesPart)
            rows.append({transfer.channel.name,
                         transfer.channel.mechanism == TransferMechanism::Exchange
                             ? tr("exchange")
                             : tr("multipolar"),
                         fixed(transfer.energyMismatch, 0), power(transfer.forwardRate),
                         power(transfer.backwardRate)});
    return table(tr("Energy transfer"),
                 {tr("channel"), tr("mechanism"), tr("donor - acceptor / cm^-1"),
                  tr("transfer / s^-1"), tr("back / s^-1")},
                 rows);
}

Block yieldFacts(const SpectroscopicResults &yield)
{
    const auto rate = [](double value) { return fixed(value, 2) + QStringLiteral(" s^-1"); };
    const auto percent = [](double value) {
        return cli::textOfYield(value) + QStringLiteral(" %");
    };
    return facts(QString(), {{tr("radiative rate Arad"), rate(yield.arad)},
                             {tr("magnetic dipole part"), rate(yield.aradMD)},
                             {tr("non-radiative rate Anrad"), rate(yield.anrad)},
                             {yield.isLifeTimeEstimated ? tr("lifetime of 5D0, estimated")
                                                        : tr("lifetime of 5D0, measured"),
                              fixed(msPerSecond * yield.lifeTime, 4) + QStringLiteral(" ms")},
                             {tr("quantum efficiency"), percent(yield.quantumEfficiency)},
                             {tr("sensitisation"), percent(yield.sensitisation)},
                             {tr("quantum yield"), percent(yield.quantumYield)},
                             {tr("limiting step"), yield.limitingStep},
                             {tr("refractive index"), QString::number(yield.refractiveIndex)}});
}

Block photonTable(const PhotonShares &shares)
{
    const auto row = [](const QString &name, double share) {
        return QStringList{name, cli::textOfYield(100.0 * share)};
    };
    return table(tr("Of 100 absorbed photons"), {tr("what becomes of them"), tr("number")},
                 {row(tr("lost by S1 -> S0"), shares.singletDecay),
                  row(tr("lost by T -> S0"), shares.tripletDecay),
                  row(tr("lost on 5D0 without light"), shares.nonRadiative),
                  row(tr("emitted"), shares.emitted),
                  row(tr("on 5D0 at least once"), shares.reaching5D0),
                  row(tr("lost by the ligands after 5D0 (back-transfer)"), shares.backTransfer)});
}

QString nameOf(const QString &key)
{
    return QString(key).replace(QLatin1Char('_'), QLatin1Char(' '));
}

Block factorFacts(const UncertaintyResults &uncertainty)
{
    QVector<QStringList> rows;
    for (const UncertaintyResults::Factor &factor : uncertainty.factors) {
        const UncertainInput &input = factor.input;
        rows.append(
            {factor.name,
             factor.isEnsemble ? tr("%1 equally likely sets").arg(factor.rows)
             : input.kind == UncertaintyKind::Uniform
                 ? tr("%1 to %2 %3")
                       .arg(QString::number(input.low), QString::number(input.high), input.unit)
                 : tr("%1 +- %2 %3")
                       .arg(QString::number(input.value), QString::number(input.standardDeviation),
                            input.unit)});
    }
    return facts(tr("What is uncertain"), rows);
}

/// Which input decides over the yield, the first quantity.
Block sensitivityTable(const UncertaintyResults &uncertainty)
{
    QVector<QStringList> rows;
    const UncertaintyResults::Quantity &yield = uncertainty.quantities.first();
    for (int i = 0; i < uncertainty.factors.size() && i < yield.total.size(); ++i)
        if (std::isfinite(yield.total.at(i)))
            rows.append({uncertainty.factors.at(i).name,
                         fixed(std::max(0.0, yield.firstOrder.at(i)), 2),
                         fixed(yield.total.at(i), 2)});
    return table(
        tr("Where the variance of the %1 comes from (Sobol indices)").arg(nameOf(yield.name)),
        {tr("input"), tr("alone"), tr("with the others")}, rows);
}

} // namespace

Section intensitySection(const RunReport &report)
{
    Section section{tr("Intensities"), {}};
    section.blocks.append(facts(
        QString(), {{tr("Omega comes from"), report.intensitySource},
                    {tr("geometry"), report.omega ? report.geometryIntensities : QString()}}));
    if (report.measured && report.measured->isCalculated)
        section.blocks += measuredBlocks(*report.measured);
    if (report.omega && report.omega->isCalculated)
        section.blocks << omegaTable(report) << factorTable(report);
    if (report.solutions)
        section.blocks.append(solutionTable(*report.solutions));
    if (report.partition)
        section.blocks += partitionBlocks(*report.partition);
    return section;
}

Section yieldSection(const RunReport &report)
{
    Section section{tr("Energy transfer and quantum yield"), {}};
    if (!report.yield)
        return section;
    const SpectroscopicResults &yield = *report.yield;
    if (report.yieldInputs)
        section.blocks.append(figure(
            tr("Levels of the ligands and of Eu3+, and the ways between them"),
            plots::transferFigure(yield, *report.yieldInputs,
                                  report.triplet ? report.triplet->standardDeviation : 0.0)));
    section.blocks << yieldFacts(yield) << transferTable(yield)
                   << figure(tr("Where the absorbed photons go"), plots::photonFigure(yield));
    if (!yield.populations.isEmpty())
        section.blocks.append(photonTable(yield.shares));
    return section;
}

Section uncertaintySection(const RunReport &report)
{
    Section section{tr("Intervals and what they come from"), {}};
    if (!report.uncertainty || report.uncertainty->quantities.isEmpty())
        return section;
    const UncertaintyResults &uncertainty = *report.uncertainty;
    QVector<QStringList> rows;
    const auto number = [](double value) { return QString::number(value, 'g', 4); };
    for (const UncertaintyResults::Quantity &quantity : uncertainty.quantities)
        rows.append({nameOf(quantity.name), quantity.unit, number(quantity.value),
                     number(quantity.median), number(quantity.low68), number(quantity.high68),
                     number(quantity.low95), number(quantity.high95)});
    section.blocks << factorFacts(uncertainty) << sensitivityTable(uncertainty)
                   << table(tr("Limits of the middle 68 and 95 % of %1 sets of inputs")
                                .arg(2 * uncertainty.samples),
                            {tr("quantity"), tr("unit"), tr("as given"), tr("median"),
                             tr("68 % from"), tr("to"), tr("95 % from"), tr("to")},
                            rows);
    return section;
}

} // namespace runDocument
