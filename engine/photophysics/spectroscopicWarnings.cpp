#include "photophysics/spectroscopicWarnings_p.h"

#include "photophysics/transferChannels_p.h"

#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <algorithm>

namespace {

/// s^-1; about the frequency of a molecular vibration, which no transfer outruns.
constexpr double highestRate = 1e13;

QString tr(const char *text)
{
    return LanqorSpectroscopicCalculation::tr(text);
}

QString number(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

/// "triplet Ta at 18000 cm^-1"
QString donorText(const QString &name, const DonorState &donor)
{
    return tr("%1 at %2 cm^-1").arg(name, number(donor.energy, 0));
}

/// A measured lifetime longer than the radiative one.
QString lifetimeWarning(const SpectroscopicResults &results)
{
    constexpr double msPerSecond = 1000.0;
    if (results.anrad >= 0.0)
        return QString();
    return tr("the lifetime of %1 ms is longer than the radiative lifetime of %2 ms, so that Anrad "
              "is negative and the efficiency above 100 %: Omega, refractive index or lifetime do "
              "not fit each other")
        .arg(number(results.lifeTime * msPerSecond, 4), number(msPerSecond / results.arad, 4));
}

/// The numbers of triplets below both donor triplets.
QStringList lowerTriplets(const SpectroscopicResults &results)
{
    const QVector<LigandState> &triplets = results.ligandStates.triplets;
    const double lowest = std::min(results.firstTriplet.energy, results.triplet.energy);
    QStringList numbers;
    for (int i = results.ligandStates.groundState; i < triplets.size(); ++i)
        if (triplets.at(i).energy < lowest)
            numbers.append(tr("number %1 at %2 cm^-1")
                               .arg(QString::number(i + 1), number(triplets.at(i).energy, 0)));
    return numbers;
}

void addTwoTripletWarnings(const SpectroscopicResults &results, QStringList &warnings)
{
    if (results.firstTriplet.energy < results.triplet.energy)
        warnings.append(tr("the %1 lies below the %2, but the scheme crosses from Ta to T alone")
                            .arg(donorText(tr("triplet Ta"), results.firstTriplet),
                                 donorText(tr("triplet T"), results.triplet)));
    const QStringList lower = lowerTriplets(results);
    if (!lower.isEmpty())
        warnings.append(tr("a triplet below both donor triplets takes no part (%1)")
                            .arg(lower.join(QStringLiteral(", "))));
}

void addDonorWarnings(const SpectroscopicResults &results, QStringList &warnings)
{
    const QString singlet = donorText(tr("singlet"), results.singlet);
    const double emitting = transferChannels::acceptorEnergy(transferChannels::Level5D0);
    const auto check = [&](const QString &name, const DonorState &triplet) {
        if (results.singlet.energy < triplet.energy)
            warnings.append(tr("the donor %1 lies below the %2, to which it is to cross")
                                .arg(singlet, donorText(name, triplet)));
        if (triplet.energy < emitting)
            warnings.append(
                tr("the %1 lies below 5D0 at %2 cm^-1, which it cannot feed but by heat")
                    .arg(donorText(name, triplet), number(emitting, 0)));
    };
    if (results.considerTwoTriplets) {
        check(tr("triplet Ta"), results.firstTriplet);
        check(tr("triplet T"), results.triplet);
        addTwoTripletWarnings(results, warnings);
    } else {
        check(tr("triplet"), results.triplet);
    }
}

void addTransferWarnings(const SpectroscopicResults &results, QStringList &warnings)
{
    QStringList uphill;
    QStringList fast;
    for (const TransferResult &transfer : results.transfers) {
        const double highest = std::max(transfer.forwardRate, transfer.backwardRate);
        if (!transfer.takesPart)
            continue;
        if (transfer.energyMismatch < 0.0)
            uphill.append(tr("%1 by %2 cm^-1")
                              .arg(transfer.channel.name, number(-transfer.energyMismatch, 0)));
        if (highest > highestRate)
            fast.append(
                tr("%1 %2 s^-1").arg(transfer.channel.name, QString::number(highest, 'e', 1)));
    }
    const QString between = QStringLiteral(", ");
    if (!uphill.isEmpty())
        warnings.append(
            tr("uphill transfer, slower than its back-transfer: %1").arg(uphill.join(between)));
    if (!fast.isEmpty())
        warnings.append(tr("rates above 1e13 s^-1, which no molecule has: %1; the distance RL is "
                           "too short or the donor too far below the acceptor for these formulas")
                            .arg(fast.join(between)));
}

/// The donor to which most of the energy returns from 5D0.
QString receiverFrom5D0(const SpectroscopicResults &results)
{
    const QString emitting = QLatin1String(stateName(transferChannels::Level5D0));
    double fastest = -1.0;
    QString receiver;
    for (const TransferResult &transfer : results.transfers) {
        if (!transfer.takesPart || transfer.channel.acceptor != emitting ||
            transfer.backwardRate < fastest)
            continue;
        fastest = transfer.backwardRate;
        receiver = transfer.channel.donor;
    }
    return receiver;
}

QString limitingProcess(const SpectroscopicResults &results)
{
    const QString triplets = results.considerTwoTriplets ? QStringLiteral("Ta, T") : tr("T");
    switch (results.shares.limitingStep) {
    case LimitingStep::SingletDecay:
        return tr("decay S -> S0 before the energy reaches 5D0");
    case LimitingStep::TripletDecay:
        return tr("decay %1 -> S0 before the energy reaches 5D0").arg(triplets);
    case LimitingStep::BackTransfer:
        return tr("back-transfer from 5D0 to %1").arg(receiverFrom5D0(results));
    case LimitingStep::NonRadiativeDecay:
        return tr("non-radiative decay of 5D0");
    case LimitingStep::None:
        break;
    }
    return QString();
}

} // namespace

QString limitingStepText(const SpectroscopicResults &results)
{
    const QString process = limitingProcess(results);
    return process.isEmpty()
               ? process
               : tr("%1 takes %2 %").arg(process, number(100.0 * results.shares.limitingShare, 1));
}

QStringList spectroscopicWarnings(const SpectroscopicResults &results)
{
    QStringList warnings;
    const QString lifetime = lifetimeWarning(results);
    if (!lifetime.isEmpty())
        warnings.append(lifetime);
    if (results.isTransferCalculated) {
        addDonorWarnings(results, warnings);
        addTransferWarnings(results, warnings);
    }
    return warnings;
}
