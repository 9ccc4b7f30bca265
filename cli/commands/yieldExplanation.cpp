#include "commands/yieldExplanation.h"

#include "text.h"

#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorTransferChannels.h>
#include <LanqorEngine/SpectroscopicResults.h>
#include <LanqorEngine/YieldInputs.h>

#include <QStringList>

#include <cmath>

namespace {

using cli::tr;
using Calculation = LanqorSpectroscopicCalculation;

constexpr double msPerSecond = 1000.0;
constexpr double omegaUnitCm2 = 1.0e-20;

QString rate(double value)
{
    return QString::number(value, 'g', 3);
}

QString energy(double value)
{
    return QString::number(value, 'f', 0);
}

QString percent(double value)
{
    return cli::textOfYield(value);
}

QString shareText(double share)
{
    return percent(100.0 * share);
}

/// A paragraph in lines of at most 79 characters.
QString wrapped(const QString &paragraph)
{
    constexpr int width = 79;
    QStringList lines = {QString()};
    for (const QString &word : paragraph.split(QLatin1Char(' '))) {
        const bool isFull = lines.last().size() + 1 + word.size() > width;
        if (isFull)
            lines.append(word);
        else
            lines.last() += (lines.last().isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString emission(const SpectroscopicResults &results)
{
    const auto omega = [&results](int lambda) {
        return QString::number(results.omega[lambda] / omegaUnitCm2, 'g', 4);
    };
    return tr("Emission. Omega(2), (4), (6) of %1, %2, %3 (1e-20 cm^2) and the refractive index %4 "
              "give the rates at which 5D0 emits: %5 s^-1 to 7F2, %6 to 7F4, %7 to 7F6. The "
              "magnetic dipole emission to 7F1, %8 s^-1, does not depend on the ligands. The sum "
              "is "
              "Arad = %9 s^-1.")
        .arg(omega(2), omega(4), omega(6), QString::number(results.refractiveIndex),
             rate(results.arad02), rate(results.arad04), rate(results.arad06), rate(results.aradMD),
             rate(results.arad));
}

QString lifetime(const SpectroscopicResults &results)
{
    const QString ms = QString::number(results.lifeTime * msPerSecond, 'g', 4);
    const QString text =
        results.isLifeTimeEstimated
            ? tr("Lifetime. None was measured: an empirical law takes Anrad = %1 s^-1 from Arad, "
                 "which knows nothing of the vibrations that quench here; the lifetime would be %2 "
                 "ms.")
                  .arg(rate(results.anrad), ms)
            : tr("Lifetime. 1 / (Arad + Anrad) is the measured %2 ms, so that 5D0 loses Anrad = %1 "
                 "s^-1 without light.")
                  .arg(rate(results.anrad), ms);
    return text + QLatin1Char(' ') +
           tr("Of the ions that are on 5D0, Arad / (Arad + Anrad) = %1 % emit: the quantum "
              "efficiency. The yield cannot be higher.")
               .arg(percent(results.quantumEfficiency));
}

QString donorText(const QString &name, const DonorState &donor)
{
    return tr("%1 at %2 cm^-1, %3 Angstrom from the ion")
        .arg(name, energy(donor.energy), QString::number(donor.rl, 'f', 2));
}

QString rateOf(const SpectroscopicResults &results, const char *from, const char *to)
{
    for (const KineticConstant &constant : results.kineticConstants)
        if (constant.from == QLatin1String(from) && constant.to == QLatin1String(to))
            return rate(constant.rate);
    return QString();
}

QString ligand(const SpectroscopicResults &results)
{
    QStringList donors = {donorText(tr("the singlet S"), results.singlet)};
    if (results.considerTwoTriplets)
        donors.append(donorText(tr("the triplet Ta"), results.firstTriplet));
    donors.append(donorText(tr("the triplet T"), results.triplet));
    const QString rates =
        results.considerTwoTriplets
            ? tr("crosses to each triplet at %1 s^-1, Ta crosses to T at %2 s^-1, and both decay "
                 "at "
                 "%3 s^-1 unless the ion takes their energy.")
                  .arg(rateOf(results, "S", "T"), rateOf(results, "Ta", "T"),
                       rateOf(results, "T", "S0"))
            : tr("crosses to the triplet at %1 s^-1; the triplet decays at %2 s^-1 unless the ion "
                 "takes its energy.")
                  .arg(rateOf(results, "S", "T"), rateOf(results, "T", "S0"));
    return tr("Ligands. They give energy from %1. Light lifts S0 to S at %2 s^-1. S returns to S0 "
              "at %3 s^-1 and %4 Where no option set them, these are typical rates, not those of "
              "this ligand.")
        .arg(donors.join(tr("; ")), rateOf(results, "S0", "S"), rateOf(results, "S", "S0"), rates);
}

QString channelText(const TransferResult &transfer)
{
    const TransferChannel &channel = transfer.channel;
    const bool isExchange = channel.mechanism == TransferMechanism::Exchange;
    const bool isDownhill = transfer.energyMismatch >= 0.0;
    return tr("  %1 -> %2, %3: %1 lies %4 cm^-1 %5 %2; transfer %6 s^-1, back %7 s^-1.\n")
        .arg(channel.donor, channel.acceptor, isExchange ? tr("exchange") : tr("multipolar"),
             energy(std::abs(transfer.energyMismatch)), isDownhill ? tr("above") : tr("below"),
             rate(transfer.forwardRate), rate(transfer.backwardRate));
}

QString channels(const SpectroscopicResults &results)
{
    QString list;
    for (const TransferResult &transfer : results.transfers)
        if (transfer.takesPart)
            list += channelText(transfer);
    if (list.isEmpty())
        return wrapped(tr("Channels. None is open: the ion stays dark."));
    return wrapped(
               tr("Channels. The energy goes over where a level of the ion overlaps with the band "
                  "of the ligand (half width %1 cm^-1), and returns at exp(-difference / kT) of "
                  "that rate, kT at %2 K%3; nothing else here depends on the temperature. Open "
                  "are:")
                   .arg(energy(results.bandHalfWidth),
                        QString::number(results.kinetics.temperature),
                        results.kinetics.withDegeneracies ? tr(", times the degeneracies")
                                                          : QString())) +
           list;
}

QString defaults(const SpectroscopicResults &results)
{
    if (results.considerTwoTriplets)
        return tr(
            "Of two triplets Ta feeds 5D4, by multipolar transfer, and T feeds 5D1 and 5D0, by "
            "exchange, which from 7F0 allows J = 1, and J = 0 as far as J mixes; S may feed "
            "5D4. --channels closes the ways of S and T.");
    return tr(
        "Open by default are S -> 5D4, T -> 5D1 and T -> 5D0. Crossing is so fast that most "
        "of the energy is on the triplet, and 5D1 and 5D0 are what a triplet of 18000 to "
        "24000 cm^-1 reaches: by exchange, which from 7F0 allows J = 1, and J = 0 as far as J "
        "mixes. The levels above, J = 4 and 6, take multipolar transfer from singlets; 5D4 "
        "lies nearest below most of them. --channels opens the others.");
}

QString ion(const SpectroscopicResults &results)
{
    const QString emitting = QStringLiteral("5D0");
    double back = 0.0;
    for (const TransferResult &transfer : results.transfers)
        if (transfer.takesPart && transfer.channel.acceptor == emitting)
            back += transfer.backwardRate;
    QStringList levels;
    for (const StatePopulation &state : results.populations)
        if (state.state.startsWith(QLatin1Char('5')))
            levels.append(state.state);
    return tr("Ion. It falls down %1, at %2 s^-1 for the last step. There the ways part: emission "
              "%3 s^-1, loss without light %4 s^-1, return to the ligands %5 s^-1.")
        .arg(levels.join(QStringLiteral(" -> ")), rateOf(results, "5D1", "5D0"), rate(results.arad),
             rate(results.anrad), rate(back));
}

double populationOf(const SpectroscopicResults &results, const char *state)
{
    for (const StatePopulation &entry : results.populations)
        if (entry.state == QLatin1String(state))
            return entry.population;
    return 0.0;
}

QString balance(const SpectroscopicResults &results)
{
    const PhotonShares &shares = results.shares;
    QString text =
        tr("Balance. Under steady light the populations no longer change: %1 of S0 and %2 of 5D0. "
           "The yield is emitted over absorbed photons, Arad p(5D0) / (%3 s^-1 p(S0)) = %4 %, or "
           "quantum efficiency %5 % times sensitisation efficiency %6 %.")
            .arg(rate(populationOf(results, "S0")), rate(populationOf(results, "5D0")),
                 rateOf(results, "S0", "S"), percent(results.quantumYield),
                 percent(results.quantumEfficiency), percent(results.sensitisation)) +
        QLatin1Char(' ') +
        tr("Of 100 absorbed photons %1 are lost by S, %2 by triplets, %3 by 5D0, and %4 are "
           "emitted.")
            .arg(shareText(shares.singletDecay), shareText(shares.tripletDecay),
                 shareText(shares.nonRadiative), shareText(shares.emitted));
    if (!results.limitingStep.isEmpty())
        text += tr(" The limiting step: %1.").arg(results.limitingStep);
    return text;
}

/// Yields of other triplet energies, and with all channels open.
QString doubts(const SpectroscopicResults &results, const YieldInputs &inputs)
{
    QStringList yields;
    for (const double offset : {-2000.0, -1000.0, 0.0, 1000.0, 2000.0}) {
        YieldInputs changed = inputs;
        changed.triplet.energy += offset;
        const double yield = Calculation::calcYield(changed).quantumYield;
        if (std::isfinite(yield))
            yields.append(
                tr("%1 % at %2").arg(percent(yield), energy(results.triplet.energy + offset)));
    }
    QString text = tr("Doubts. Calculated triplets are off by 500 to 2000 cm^-1. With the triplet "
                      "elsewhere the yield is %1 cm^-1.")
                       .arg(yields.join(QStringLiteral(", ")));
    if (inputs.scheme == YieldScheme::TwoTriplets)
        return text;
    YieldInputs open = inputs;
    open.scheme = YieldScheme::EightStates;
    for (const TransferChannel &channel : LanqorTransferChannels::getChannels())
        if (channel.flag)
            open.channels.*(channel.flag) = true;
    const YieldOutcome outcome = Calculation::calcYield(open);
    if (outcome.error.isEmpty() && std::isfinite(outcome.quantumYield))
        text += tr(" With all channels open it is %1 %.").arg(percent(outcome.quantumYield));
    return text;
}

} // namespace

QString yieldExplanation(const SpectroscopicResults &results, const YieldInputs &inputs)
{
    const QStringList paragraphs = {wrapped(emission(results)), wrapped(lifetime(results)),
                                    wrapped(ligand(results)),   channels(results),
                                    wrapped(defaults(results)), wrapped(ion(results)),
                                    wrapped(balance(results)),  wrapped(doubts(results, inputs))};
    return paragraphs.join(QLatin1Char('\n'));
}
