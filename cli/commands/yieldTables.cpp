#include "commands/yieldTables.h"

#include "text.h"

#include <LanqorEngine/SpectroscopicResults.h>

namespace {

using cli::column;
using cli::powerColumn;
using cli::tr;

constexpr double msPerSecond = 1000.0;
constexpr double omegaUnitCm2 = 1.0e-20;

/// "  name   value unit"
QString line(const QString &name, const QString &valueAndUnit)
{
    return QStringLiteral("  ") + name.leftJustified(34) + valueAndUnit + QLatin1Char('\n');
}

QString donorLine(const QString &kind, const DonorState &donor)
{
    const QString number = donor.number > 0 ? QString::number(donor.number) : tr("given");
    return QStringLiteral("  ") + kind.leftJustified(10) + number.rightJustified(8) +
           column(donor.energy, 2, 16) + column(donor.rl, 4, 10) + QLatin1Char('\n');
}

QString donorTable(const SpectroscopicResults &results)
{
    QString text = tr("Donor states of the ligands\n\n") +
                   tr("              number   energy / cm^-1    RL / A\n") +
                   donorLine(tr("singlet S"), results.singlet);
    if (results.considerTwoTriplets)
        text += donorLine(tr("triplet Ta"), results.firstTriplet);
    text += donorLine(tr("triplet T"), results.triplet);
    for (const ReplacedValue &value : results.replacedValues) {
        const int decimals = value.unit == QLatin1String("cm^-1") ? 2 : 4;
        text += QStringLiteral("  ") + value.quantity.leftJustified(34) +
                column(value.used, decimals, 12) + QLatin1Char(' ') + value.unit;
        if (value.read != 0.0)
            text += tr(", in place of %1").arg(QString::number(value.read, 'f', decimals));
        text += QLatin1Char('\n');
    }
    return text;
}

QString omegaTable(const SpectroscopicResults &results)
{
    QString text =
        tr("\nIntensity parameters / 1e-20 cm^2: total and forced electric dipole part\n\n"
           "  lambda      Omega         ED\n");
    for (const int lambda : {2, 4, 6})
        text += column(lambda, 8) + column(results.omega[lambda] / omegaUnitCm2, 4, 11) +
                column(results.omegaEd[lambda] / omegaUnitCm2, 4, 11) + QLatin1Char('\n');
    return text;
}

QString radiativeTable(const SpectroscopicResults &results)
{
    const auto rate = [](double value) { return column(value, 2, 12) + QStringLiteral(" s^-1"); };
    const bool isEstimated = results.isLifeTimeEstimated;
    return tr("\nEmission of 5D0 at refractive index %1\n\n").arg(results.refractiveIndex) +
           line(tr("Arad 5D0 -> 7F1, magnetic dipole"), rate(results.aradMD)) +
           line(tr("Arad 5D0 -> 7F2"), rate(results.arad02)) +
           line(tr("Arad 5D0 -> 7F4"), rate(results.arad04)) +
           line(tr("Arad 5D0 -> 7F6"), rate(results.arad06)) +
           line(tr("Arad"), rate(results.arad)) +
           line(isEstimated ? tr("Anrad, estimated") : tr("Anrad"), rate(results.anrad)) +
           line(isEstimated ? tr("lifetime, estimated") : tr("lifetime, given"),
                column(results.lifeTime * msPerSecond, 4, 12) + QStringLiteral(" ms")) +
           line(tr("quantum efficiency"),
                column(results.quantumEfficiency, 2, 12) + QStringLiteral(" %"));
}

QString transferTable(const SpectroscopicResults &results)
{
    QString text = tr("\nEnergy transfer, model %1\n\n").arg(results.etModel) +
                   tr("  channel  mechanism   mismatch / cm^-1   transfer / s^-1   back / s^-1\n");
    for (const TransferResult &transfer : results.transfers) {
        if (!transfer.takesPart)
            continue;
        const TransferChannel &channel = transfer.channel;
        const bool isExchange = channel.mechanism == TransferMechanism::Exchange;
        text += QStringLiteral("  ") + channel.name.leftJustified(9) +
                (isExchange ? tr("exchange") : tr("multipolar")).leftJustified(10) +
                column(transfer.energyMismatch, 2, 18) + powerColumn(transfer.forwardRate, 2, 18) +
                powerColumn(transfer.backwardRate, 2, 14) + QLatin1Char('\n');
    }
    return text;
}

QString populationTable(const SpectroscopicResults &results)
{
    QString text = tr("\nPopulations\n\n");
    for (const StatePopulation &entry : results.populations)
        text += line(entry.state, powerColumn(entry.population, 4, 12));
    text += tr("\nKinetic constants\n\n");
    for (const KineticConstant &constant : results.kineticConstants)
        text += line(tr("%1 -> %2").arg(constant.from, constant.to),
                     powerColumn(constant.rate, 2, 12) + QStringLiteral(" s^-1"));
    return text + line(results.kinetics.withDegeneracies
                           ? tr("back-transfer, with degeneracies, at")
                           : tr("back-transfer, no degeneracies, at"),
                       column(results.kinetics.temperature, 2, 12) + QStringLiteral(" K"));
}

/// What the yield is made of, and what becomes of the other photons.
QString shareTable(const SpectroscopicResults &results)
{
    const auto percent = [](double value) {
        return cli::textOfYield(value).rightJustified(12) + QStringLiteral(" %");
    };
    const auto shareLine = [&percent](const QString &name, double share) {
        return line(name, percent(100.0 * share));
    };
    const PhotonShares &shares = results.shares;
    QString text =
        tr("Sensitisation efficiency").leftJustified(36) + percent(results.sensitisation) +
        tr("\n\nWhere the absorbed photons go\n\n") +
        shareLine(tr("lost by S -> S0"), shares.singletDecay) +
        shareLine(results.considerTwoTriplets ? tr("lost by Ta, T -> S0") : tr("lost by T -> S0"),
                  shares.tripletDecay) +
        shareLine(tr("lost by 5D0 without radiation"), shares.nonRadiative) +
        shareLine(tr("emitted"), shares.emitted);
    if (!results.limitingStep.isEmpty())
        text += tr("\nLimiting step: %1\n").arg(results.limitingStep);
    return text;
}

} // namespace

QString yieldTables(const SpectroscopicResults &results)
{
    return donorTable(results) + omegaTable(results) + radiativeTable(results) +
           transferTable(results) + populationTable(results) + QLatin1Char('\n') +
           tr("Quantum yield").leftJustified(36) +
           cli::textOfYield(results.quantumYield).rightJustified(12) + QStringLiteral(" %\n") +
           shareTable(results);
}
