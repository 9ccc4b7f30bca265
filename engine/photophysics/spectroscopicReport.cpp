#include "photophysics/spectroscopicReport_p.h"

#include "core/physicalConstants_p.h"
#include "core/reportText_p.h"
#include "overlap/europium_p.h"

#include <cmath>

using reportText::exponential;
using reportText::fixed;

namespace spectroscopicReport {

namespace {

/// Width of the part of a line that names a chosen state.
constexpr int donorColumn = 37;

/// One cell of a table: label and value fill @p width columns, the unit follows.
QString cell(const char *label, const QString &value, int width, const char *unit)
{
    const QString name = QLatin1String(label);
    return name + value.rightJustified(width - name.size()) + QLatin1String(unit);
}

QString lambdaLines(const char *name, const ByRank &values)
{
    QString text;
    for (const int lambda : {2, 4, 6})
        text += QStringLiteral("%1(%2) =%3e-20 cm^2\n")
                    .arg(QLatin1String(name), QString::number(lambda),
                         fixed(values[lambda] / lanqor::omegaUnitCm2, 4, 10));
    return text + QStringLiteral("\n\n");
}

QString constantsSection()
{
    constexpr int first = 55;
    constexpr int further = 25;
    const auto element = [](int rank) { return fixed(europium::reducedC[rank], 4); };
    const auto sigma = [](int rank) { return fixed(europium::shielding[rank], 3); };
    const auto radial = [](int rank) { return exponential(europium::radialR[rank], 3); };
    return QStringLiteral("-----------------------------------\n"
                          " Constant values for the Eu3+ Ion  \n"
                          "-----------------------------------\n\n") +
           cell("  Racah Tensor Operator Used:  <f|C(2)|f> =", element(2), first, "        ") +
           cell("<f|C(4)|f> =", element(4), further, "        ") +
           cell("<f|C(6)|f> =", element(6), further, "\n") +
           cell(" Shielding Factor Used:         sigma(2) =", sigma(2), first, "        ") +
           cell("sigma(4) =", sigma(4), further, "        ") +
           cell("sigma(6) =", sigma(6), further, "\n") +
           cell(" Radial Integrals:  r(2) =", radial(2), first, " cm^2   ") +
           cell("r(4) =", radial(4), further, " cm^4   ") +
           cell("r(6) =", radial(6), further, " cm^6\n\n\n");
}

QString missingTransfer()
{
    return QStringLiteral(" No energy transfer was calculated.\n\n\n");
}

/// A label that says which state was chosen; values given by hand belong to no list.
QString chosenState(const char *label, const DonorState &donor)
{
    return cell(label, donor.number > 0 ? QString::number(donor.number) : QStringLiteral("-"),
                donorColumn, "");
}

/// The energy label starts in the column after that of the chosen states.
QString energyAndDistance(const char *energyLabel, const char *distanceLabel,
                          const DonorState &donor)
{
    return cell(energyLabel, fixed(donor.energy, 2), 34, " cm^-1") +
           cell(distanceLabel, fixed(donor.rl, 4), 26, " Angs\n");
}

QString donorSection(const SpectroscopicResults &results)
{
    const QString heading = QStringLiteral("-------------------------------------------------\n"
                                           " Singlet and Triplet Excited States Energies and \n"
                                           " RL Parameters                                   \n"
                                           "-------------------------------------------------\n\n");
    if (!results.isTransferCalculated)
        return heading + missingTransfer();
    // Of two triplets the chosen one, which feeds 5D4, bears number 2.
    const DonorState &chosen = results.considerTwoTriplets ? results.firstTriplet : results.triplet;
    QString text = heading + chosenState("    Chosen Singlet Excited State =", results.singlet) +
                   energyAndDistance("    Singlet Energy:", "    RL Singlet:", results.singlet) +
                   chosenState("    Chosen Triplet Excited State =", chosen) +
                   energyAndDistance("    Triplet Energy:", "    RL Triplet:", chosen);
    if (results.considerTwoTriplets) {
        const QString margin(donorColumn, QLatin1Char(' '));
        text +=
            margin + energyAndDistance("    Triplet Energy:", "    RL Triplet1:", results.triplet);
        text += margin +
                energyAndDistance("    Triplet Energy:", "    RL Triplet2:", results.firstTriplet);
    }
    return text +
           QStringLiteral("\n RL: distance from the donor state located at the organic ligands \n"
                          " and the Eu3+ ion nucleus.\n\n\n");
}

enum class List { Overlaps, Rates };

/// Name of a channel's donor. The lists of rates never number the triplet of 5G6 and 5L6: these
/// are the labels by which the lines are looked up.
QString donorName(const TransferChannel &channel, bool twoTriplets, List list)
{
    if (channel.donor == QLatin1String("S"))
        return QStringLiteral("Singlet");
    if (channel.donor == QLatin1String("Ta"))
        return QStringLiteral("Triplet2");
    const bool isNumbered = list == List::Overlaps || (channel.acceptor != QLatin1String("5G6") &&
                                                       channel.acceptor != QLatin1String("5L6"));
    return twoTriplets && isNumbered ? QStringLiteral("Triplet1") : QStringLiteral("Triplet");
}

QString gamaLines(const QString &donorName, const DonorState &donor)
{
    QString text = QStringLiteral("    at RL %1:").arg(donorName).leftJustified(22);
    for (const int lambda : {2, 4, 6})
        text += QStringLiteral("  gama(%1) =").arg(lambda) +
                exponential(donor.gama[lambda], 2, 10) + QStringLiteral(" cm^-4");
    return text + QLatin1Char('\n');
}

QString gamaSection(const SpectroscopicResults &results)
{
    const QString heading = QStringLiteral("---------------------\n"
                                           " gama(l) Parameters  \n"
                                           "---------------------\n\n");
    if (!results.isTransferCalculated)
        return heading + missingTransfer();
    QString text = heading + gamaLines(QStringLiteral("Singlet"), results.singlet);
    if (results.considerTwoTriplets)
        text += gamaLines(QStringLiteral("Triplet1"), results.triplet) +
                gamaLines(QStringLiteral("Triplet2"), results.firstTriplet);
    else
        text += gamaLines(QStringLiteral("Triplet"), results.triplet);
    return text + QStringLiteral("\n\n");
}

QString overlapSection(const SpectroscopicResults &results)
{
    QString text = QStringLiteral("------------------------------------------------------\n"
                                  " Frank Condon's Factor (F), this factor depend on the \n"
                                  "------------------------------------------------------\n\n");
    if (!results.isTransferCalculated)
        return text + missingTransfer();
    for (int i = 0; i < results.transfers.size(); ++i) {
        const TransferChannel &channel = results.transfers.at(i).channel;
        const QString label =
            QStringLiteral("    F (%1 %2 %3) =")
                .arg(donorName(channel, results.considerTwoTriplets, List::Overlaps),
                     QLatin1String(channel.donor == QLatin1String("Ta") ? "->" : "-"),
                     channel.acceptor);
        text += label.leftJustified(26) + exponential(results.transfers.at(i).overlap, 2, 10) +
                QLatin1String(i + 1 < results.transfers.size() ? " erg^-1 \n" : " erg^-1");
    }
    return text + QStringLiteral("\n\n\n");
}

QString rateLines(const SpectroscopicResults &results, const char *prefix, const char *lastUnit,
                  double TransferResult::*rate)
{
    QString text;
    for (int i = 0; i < results.transfers.size(); ++i) {
        const TransferResult &transfer = results.transfers.at(i);
        const bool isMultipolar = transfer.channel.mechanism == TransferMechanism::Multipolar;
        const QString label =
            QStringLiteral("      %1%2 (%3 -> %4) =")
                .arg(QLatin1String(prefix), QLatin1String(isMultipolar ? "MM" : "EX"),
                     donorName(transfer.channel, results.considerTwoTriplets, List::Rates),
                     transfer.channel.acceptor);
        text += label.leftJustified(33) + exponential(transfer.*rate, 2, 10) +
                QLatin1String(i + 1 < results.transfers.size() ? " s^-1 \n" : lastUnit);
    }
    return text;
}

QString transferRateSection(const SpectroscopicResults &results)
{
    const QString heading =
        QStringLiteral("------------------------------------------------------\n"
                       " Energy Transfer (Wet) and Back-Transfer Rates (Wbt)  \n"
                       "    Wet from the Multipolar Mechanism (WetMM)         \n"
                       "    Wet from the Exchange Mechanism (WetEX)           \n"
                       "------------------------------------------------------\n\n");
    if (!results.isTransferCalculated)
        return heading + missingTransfer();
    return heading + QStringLiteral("    Energy Transfer Rates\n") +
           rateLines(results, "Wet", " s^-1  \n\n", &TransferResult::forwardRate) +
           QStringLiteral("    Energy Back-Transfer Rates\n") +
           rateLines(results, "Wbt", " s^-1 \n\n", &TransferResult::backwardRate) +
           QLatin1Char('\n');
}

QString radiativeSection(const SpectroscopicResults &results)
{
    QString text =
        QStringLiteral("-------------------------------------\n"
                       " Radiative emission rate (Arad) and  \n"
                       " Branchio Rates (beta)               \n"
                       "-------------------------------------\n\n") +
        cell(" Refractive Index Used =", fixed(results.refractiveIndex, 4), 34, "\n\n") +
        cell(" Arad =", exponential(results.arad, 2), 34, " s^-1\n\n") +
        QStringLiteral(" Beta values (contribution of each 5D0 -> 7FJ transition in percentage to "
                       "radiative decay rate)\n\n");
    for (int J = 1; J <= 6; ++J)
        text += QStringLiteral("    5D0 -> 7F%1:").arg(J) +
                fixed(results.branchingRatios.value(J), 2, 10) + QStringLiteral(" %\n");
    return text + QStringLiteral("\n\n");
}

QString nonRadiativeSection(const SpectroscopicResults &results)
{
    constexpr int width = 46;
    constexpr double msPerSecond = 1000.0;
    return QStringLiteral("---------------------------------------\n"
                          " Nonradiative Decay Rate (Anrad) and   \n"
                          " Quantum Efficiency                    \n"
                          "---------------------------------------\n\n") +
           cell("    Chosen Experimental Lifetime =", fixed(results.lifeTime * msPerSecond, 4),
                width, " ms\n\n") +
           cell("    Anrad =", exponential(results.anrad, 2), width, " s^-1\n\n") +
           cell("    Quantum Efficiency =", fixed(results.quantumEfficiency, 2), width, " %\n\n\n");
}

/// Labels of the populations.
struct PopulationLabel
{
    const char *state;
    const char *label;
};
constexpr PopulationLabel populationLabels[] = {
    {"S0", "    Fundamental Singlet Population ="},
    {"S", "\n    Excited Singlet Population     ="},
    {"Ta", "\n    Triplet 2 population           ="},
    {"T", "\n    Triplet Population             ="},
};

QString populationLabel(const QString &state)
{
    for (const PopulationLabel &known : populationLabels)
        if (state == QLatin1String(known.state))
            return QLatin1String(known.label);
    return QStringLiteral("\n    %1 Population                 =").arg(state);
}

QString populationSection(const SpectroscopicResults &results)
{
    QString text = QStringLiteral("--------------------------------------------------------------"
                                  "--------------\n"
                                  "  Level Population of each State Involved in the Process of "
                                  "Energy Transfer \n"
                                  "--------------------------------------------------------------"
                                  "--------------\n\n");
    if (results.populations.isEmpty())
        return text + QStringLiteral(" No populations were calculated.\n\n\n");
    for (const StatePopulation &entry : results.populations)
        text += populationLabel(entry.state) + exponential(entry.population, 4, 12);
    return text + QStringLiteral("\n\n\n");
}

QString yieldSection(const SpectroscopicResults &results)
{
    constexpr double leastFixed = 0.01; // three digits are left above it
    const double yield = results.quantumYield;
    const QString text = std::abs(yield) < leastFixed && yield != 0.0
                             ? QString::number(yield, 'g', 3).rightJustified(12)
                             : fixed(yield, 4, 12);
    return QString(44, QLatin1Char('-')) + QStringLiteral("\nQuantum Yield:") + text +
           QStringLiteral(" %\n");
}

/// "    name:                       text"
QString settingLine(const QString &name, const QString &text)
{
    constexpr int width = 36;
    return QStringLiteral("    %1:").arg(name).leftJustified(width) + text + QLatin1Char('\n');
}

QString exchangeModel(const SpectroscopicResults &results)
{
    const QString exponent = QString::number(results.overlapExponent);
    switch (results.etModel) {
    case 0:
        return QStringLiteral("0, square of the overlap 0.05 (Rmin/R)^%1").arg(exponent);
    case 1:
        return QStringLiteral("1, fourth power of the overlap 0.05 (Rmin/R)^%1").arg(exponent);
    case 2:
        return QStringLiteral("2, shielding of the 4f shell (overlap exponent %1 not used)")
            .arg(exponent);
    default:
        return QStringLiteral("%1, unknown: no exchange").arg(results.etModel);
    }
}

/// "    name:                       12.34 %"
QString shareLine(const QString &name, double share)
{
    return settingLine(name, fixed(100.0 * share, 2, 8) + QStringLiteral(" %"));
}

QString sharesSection(const SpectroscopicResults &results)
{
    if (results.populations.isEmpty())
        return QString();
    const PhotonShares &shares = results.shares;
    QString text = QStringLiteral("\n\n-------------------------------\n"
                                  " Where the Absorbed Photons Go \n"
                                  "-------------------------------\n\n") +
                   shareLine(QStringLiteral("Lost by S -> S0"), shares.singletDecay) +
                   shareLine(results.considerTwoTriplets ? QStringLiteral("Lost by Ta, T -> S0")
                                                         : QStringLiteral("Lost by T -> S0"),
                             shares.tripletDecay) +
                   shareLine(QStringLiteral("Lost Non-Radiatively by 5D0"), shares.nonRadiative) +
                   shareLine(QStringLiteral("Emitted"), shares.emitted) +
                   settingLine(QStringLiteral("Sensitisation Efficiency"),
                               fixed(results.sensitisation, 2, 8) + QStringLiteral(" %"));
    if (!results.limitingStep.isEmpty())
        text += settingLine(QStringLiteral("Limiting Step"), results.limitingStep);
    return text;
}

QString temperatureText(const KineticParameters &kinetics)
{
    return QStringLiteral("%1 K, %2; nothing else depends on it")
        .arg(QString::number(kinetics.temperature),
             QLatin1String(kinetics.withDegeneracies ? "with degeneracies"
                                                     : "without degeneracies"));
}

QString replacedLine(const ReplacedValue &value)
{
    QString text = QStringLiteral("%1 %2").arg(QString::number(value.used, 'g', 10), value.unit);
    if (value.read != 0.0)
        text += QStringLiteral(" in place of %1").arg(QString::number(value.read, 'g', 10));
    return settingLine(QStringLiteral("Given ") + value.quantity, text);
}

QString settingsSection(const SpectroscopicResults &results)
{
    QString text;
    if (results.isLifeTimeEstimated)
        text += settingLine(QStringLiteral("Lifetime"),
                            QStringLiteral("not measured: estimated from Arad, as are Anrad and "
                                           "the efficiency"));
    if (results.isTransferCalculated) {
        const DonorStatesResults &states = results.ligandStates;
        text +=
            settingLine(QStringLiteral("Excited States"),
                        states.outputPath.isEmpty()
                            ? QStringLiteral("given values")
                            : QStringLiteral("%1 (%2)").arg(states.outputPath, states.program)) +
            settingLine(QStringLiteral("Exchange Model"), exchangeModel(results)) +
            settingLine(QStringLiteral("Half Width of Ligand Bands"),
                        QStringLiteral("%1 cm^-1").arg(results.bandHalfWidth)) +
            settingLine(QStringLiteral("Temperature of Back-Transfer"),
                        temperatureText(results.kinetics));
        for (const ReplacedValue &value : results.replacedValues)
            text += replacedLine(value);
    }
    if (!results.kineticConstants.isEmpty())
        text += QStringLiteral("    Kinetic Constants:\n");
    for (const KineticConstant &constant : results.kineticConstants)
        text +=
            QStringLiteral("      %1 -> %2 =").arg(constant.from, constant.to).leftJustified(24) +
            exponential(constant.rate, 2, 10) + QStringLiteral(" s^-1\n");
    return text.isEmpty() ? text
                          : QStringLiteral("\n\n-----------------------\n"
                                           " Origin of the Results \n"
                                           "-----------------------\n\n") +
                                text;
}

} // namespace

QString transferReport(const SpectroscopicResults &results, const SpecPrintingOptions &options)
{
    QString text;
    if (options.printInputFile)
        text += QStringLiteral("The data shown below were calculated from the geometry and excited "
                               "states energies read in following file: \n") +
                results.inputPath + QStringLiteral("\n\n\n");
    if (options.printOmega)
        text += QStringLiteral("-------------------------------------------------------\n"
                               " Theoretical Judd-Ofelt Intensity Parameters, omega(l) \n"
                               "-------------------------------------------------------\n\n") +
                lambdaLines("omega", results.omega);
    if (options.printOmegaED)
        text += QStringLiteral("-----------------------------------------------------------\n"
                               " Forced Electric Dipole Judd-Ofelt Parameters, omegaED (l)\n"
                               "-----------------------------------------------------------\n\n") +
                lambdaLines("omegaED", results.omegaEd);
    if (options.printConstants)
        text += constantsSection();
    if (options.printDonorStates)
        text += donorSection(results);
    if (options.printGama)
        text += gamaSection(results);
    if (options.printFranckCondon)
        text += overlapSection(results);
    if (options.printTransferRates)
        text += transferRateSection(results);
    if (options.printArad)
        text += radiativeSection(results);
    return text;
}

QString populationReport(const SpectroscopicResults &results, const SpecPrintingOptions &options)
{
    QString text;
    if (options.printAnrad)
        text += nonRadiativeSection(results);
    if (options.printPopulations)
        text += populationSection(results);
    if (options.printQuantumYield)
        text += yieldSection(results);
    if (options.printSettings)
        text += settingsSection(results) + sharesSection(results);
    return text;
}

} // namespace spectroscopicReport
