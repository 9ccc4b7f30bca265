#include "commands/yieldErrorBars.h"

#include "options/uncertainOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

namespace cli {

namespace {

/// What is told of an outcome, with the rates of @p transfers.
QVector<double> rowOf(const YieldOutcome &outcome, const QVector<TransferResult> &transfers)
{
    QVector<double> row = {outcome.quantumYield, outcome.sensitisation, outcome.quantumEfficiency,
                           outcome.arad, outcome.anrad};
    for (const TransferResult &transfer : transfers) {
        const auto slot = std::size_t(transfer.channel.slot);
        row << outcome.forwardRates.at(slot) << outcome.backwardRates.at(slot);
    }
    return row;
}

QVector<ResultColumn> quantitiesOf(const QVector<TransferResult> &transfers)
{
    const auto percent = QStringLiteral("%");
    const auto rate = QStringLiteral("s^-1");
    QVector<ResultColumn> quantities = {{QStringLiteral("quantum_yield"), percent},
                                        {QStringLiteral("sensitisation"), percent},
                                        {QStringLiteral("quantum_efficiency"), percent},
                                        {QStringLiteral("radiative_rate"), rate},
                                        {QStringLiteral("non_radiative_rate"), rate}};
    for (const TransferResult &transfer : transfers)
        for (const char *kind : {"transfer_%1", "back_transfer_%1"})
            quantities.append({QString::fromLatin1(kind).arg(transfer.channel.name), rate});
    return quantities;
}

} // namespace

void setOmegas(YieldInputs &inputs, const std::function<double(int)> &omega,
               const std::function<double(int)> &omegaEd)
{
    for (const int rank : {2, 4, 6}) {
        inputs.omega[rank] = omega(rank);
        inputs.omegaEd[rank] = omegaEd(rank);
    }
}

UncertaintyResults calcYieldErrorBars(const LanqorUncertainty &uncertainty,
                                      const LanqorSpectroscopicCalculation &calculation,
                                      const SetYieldInputs &set)
{
    QVector<TransferResult> transfers;
    for (const TransferResult &transfer : calculation.getResults().transfers)
        if (transfer.takesPart)
            transfers.append(transfer);
    const YieldInputs asGiven = calculation.getYieldInputs();
    int impossible = 0;
    int sets = 0;
    const auto model = [&](const QVector<double> &values) {
        YieldInputs inputs = asGiven;
        if (!set(values, inputs))
            return QVector<double>();
        const YieldOutcome outcome = LanqorSpectroscopicCalculation::calcYield(inputs);
        if (!outcome.error.isEmpty())
            return QVector<double>();
        ++sets;
        if (outcome.anrad < 0.0) {
            ++impossible;
            return QVector<double>();
        }
        return rowOf(outcome, transfers);
    };
    UncertaintyResults results = uncertainty.calculate(
        quantitiesOf(transfers),
        rowOf(LanqorSpectroscopicCalculation::calcYield(asGiven), transfers), model);
    addImpossibleLifetimes(results, impossible, sets);
    if (calculation.getResults().isLifeTimeEstimated)
        results.warnings.append(
            tr("without --lifetime the non-radiative rate is an estimate, which may be off by "
               "a factor of 100: that is not in the intervals of efficiency and yield"));
    return results;
}

} // namespace cli
