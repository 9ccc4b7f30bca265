#include "photophysics/spectroscopicReport_p.h"

#include "core/reportText_p.h"

using reportText::exponential;
using reportText::fixed;
using namespace transferChannels;
using transferRates::Donor;
using transferRates::Transfer;

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
                    .arg(QLatin1String(name))
                    .arg(lambda)
                    .arg(fixed(values[lambda] / lanqor::omegaUnitCm2, 4, 10));
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
QString chosenState(const char *label, const Donor &donor)
{
    return cell(label, donor.number > 0 ? QString::number(donor.number) : QStringLiteral("-"),
                donorColumn, "");
}

/// The energy label starts in the column after that of the chosen states.
QString energyAndDistance(const char *energyLabel, const char *distanceLabel, const Donor &donor)
{
    return cell(energyLabel, fixed(donor.energy, 2), 34, " cm^-1") +
           cell(distanceLabel, fixed(donor.distance / lanqor::cmPerAngstrom, 4), 26, " Angs\n");
}

QString donorSection(const Transfer &transfer)
{
    const QString heading = QStringLiteral("-------------------------------------------------\n"
                                           " Singlet and Triplet Excited States Energies and \n"
                                           " RL Parameters                                   \n"
                                           "-------------------------------------------------\n\n");
    if (!transfer.isCalculated)
        return heading + missingTransfer();
    const transferRates::Donors &donors = transfer.donors;
    // Of two triplets the chosen one, which feeds 5D4, bears number 2.
    const Donor &chosen = transfer.twoTriplets ? donors.firstTriplet : donors.triplet;
    QString text = heading + chosenState("    Chosen Singlet Excited State =", donors.singlet) +
                   energyAndDistance("    Singlet Energy:", "    RL Singlet:", donors.singlet) +
                   chosenState("    Chosen Triplet Excited State =", chosen) +
                   energyAndDistance("    Triplet Energy:", "    RL Triplet:", chosen);
    if (transfer.twoTriplets) {
        const QString margin(donorColumn, QLatin1Char(' '));
        text +=
            margin + energyAndDistance("    Triplet Energy:", "    RL Triplet1:", donors.triplet);
        text += margin +
                energyAndDistance("    Triplet Energy:", "    RL Triplet2:", donors.firstTriplet);
    }
    return text +
           QStringLiteral("\n RL: distance from the donor state located at the organic ligands \n"
                          " and the Eu3+ ion nucleus.\n\n\n");
}

enum class List { Overlaps, Rates };

/// Name of a channel's donor. The lists of rates never number the triplet of 5G6 and 5L6: these
/// are the labels by which the lines are looked up.
QString donorName(const Channel &channel, bool twoTriplets, List list)
{
    if (channel.donor == S1)
        return QStringLiteral("Singlet");
    if (channel.donor == FirstTriplet)
        return QStringLiteral("Triplet2");
    const bool isNumbered =
        list == List::Overlaps || (channel.acceptor != Level5G6 && channel.acceptor != Level5L6);
    return twoTriplets && isNumbered ? QStringLiteral("Triplet1") : QStringLiteral("Triplet");
}

QString gamaLines(const QString &donorName, const Donor &donor)
{
    QString text = QStringLiteral("    at RL %1:").arg(donorName).leftJustified(22);
    for (const int lambda : {2, 4, 6})
        text += QStringLiteral("  gama(%1) =").arg(lambda) +
                exponential(transferRates::gama(lambda, donor.distance), 2, 10) +
                QStringLiteral(" cm^-4");
    return text + QLatin1Char('\n');
}

QString gamaSection(const Transfer &transfer)
{
    const QString heading = QStringLiteral("---------------------\n"
                                           " gama(l) Parameters  \n"
                                           "---------------------\n\n");
    if (!transfer.isCalculated)
        return heading + missingTransfer();
    QString text = heading + gamaLines(QStringLiteral("Singlet"), transfer.donors.singlet);
    if (transfer.twoTriplets)
        text += gamaLines(QStringLiteral("Triplet1"), transfer.donors.triplet) +
                gamaLines(QStringLiteral("Triplet2"), transfer.donors.firstTriplet);
    else
        text += gamaLines(QStringLiteral("Triplet"), transfer.donors.triplet);
    return text + QStringLiteral("\n\n");
}

std::vector<Channel> openChannels(const Transfer &transfer)
{
    std::vector<Channel> open;
    for (const Channel &channel : channels)
        if (transfer.isOpen(channel))
            open.push_back(channel);
    return open;
}

QString overlapSection(const Transfer &transfer, double bandHalfWidth)
{
    QString text = QStringLiteral("------------------------------------------------------\n"
                                  " Frank Condon's Factor (F), this factor depend on the \n"
                                  "------------------------------------------------------\n\n");
    if (!transfer.isCalculated)
        return text + missingTransfer();
    const std::vector<Channel> open = openChannels(transfer);
    for (std::size_t i = 0; i < open.size(); ++i) {
        const Channel &channel = open[i];
        const double mismatch =
            transfer.tables.energyMismatch[static_cast<std::size_t>(channel.slot)];
        const QString label = QStringLiteral("    F (%1 %2 %3) =")
                                  .arg(donorName(channel, transfer.twoTriplets, List::Overlaps),
                                       QLatin1String(channel.donor == FirstTriplet ? "->" : "-"),
                                       QLatin1String(levelName(channel.acceptor)));
        text += label.leftJustified(26) +
                exponential(transferRates::F(mismatch, bandHalfWidth), 2, 10) +
                QLatin1String(i + 1 < open.size() ? " erg^-1 \n" : " erg^-1");
    }
    return text + QStringLiteral("\n\n\n");
}

QString rateLines(const Transfer &transfer, const char *prefix, const char *lastUnit,
                  double (transferRates::Tables::*rate)(const Channel &) const)
{
    QString text;
    const std::vector<Channel> open = openChannels(transfer);
    for (std::size_t i = 0; i < open.size(); ++i) {
        const QString label =
            QStringLiteral("      %1%2 (%3 -> %4) =")
                .arg(QLatin1String(prefix),
                     QLatin1String(open[i].mechanism == Mechanism::Multipolar ? "MM" : "EX"),
                     donorName(open[i], transfer.twoTriplets, List::Rates),
                     QLatin1String(levelName(open[i].acceptor)));
        text += label.leftJustified(33) + exponential((transfer.tables.*rate)(open[i]), 2, 10) +
                QLatin1String(i + 1 < open.size() ? " s^-1 \n" : lastUnit);
    }
    return text;
}

QString transferRateSection(const Transfer &transfer)
{
    const QString heading =
        QStringLiteral("------------------------------------------------------\n"
                       " Energy Transfer (Wet) and Back-Transfer Rates (Wbt)  \n"
                       "    Wet from the Multipolar Mechanism (WetMM)         \n"
                       "    Wet from the Exchange Mechanism (WetEX)           \n"
                       "------------------------------------------------------\n\n");
    if (!transfer.isCalculated)
        return heading + missingTransfer();
    return heading + QStringLiteral("    Energy Transfer Rates\n") +
           rateLines(transfer, "Wet", " s^-1  \n\n", &transferRates::Tables::forward) +
           QStringLiteral("    Energy Back-Transfer Rates\n") +
           rateLines(transfer, "Wbt", " s^-1 \n\n", &transferRates::Tables::backward) +
           QLatin1Char('\n');
}

QString radiativeSection(const Contents &contents)
{
    QString text =
        QStringLiteral("-------------------------------------\n"
                       " Radiative emission rate (Arad) and  \n"
                       " Branchio Rates (beta)               \n"
                       "-------------------------------------\n\n") +
        cell(" Refractive Index Used =", fixed(contents.refractiveIndex, 4), 34, "\n\n") +
        cell(" Arad =", exponential(contents.arad, 2), 34, " s^-1\n\n") +
        QStringLiteral(" Beta values (contribution of each 5D0 -> 7FJ transition in percentage to "
                       "radiative decay rate)\n\n");
    for (int J = 1; J <= 6; ++J)
        text += QStringLiteral("    5D0 -> 7F%1:").arg(J) +
                fixed(contents.branchingRatios[static_cast<std::size_t>(J)], 2, 10) +
                QStringLiteral(" %\n");
    return text + QStringLiteral("\n\n");
}

QString nonRadiativeSection(const Contents &contents)
{
    constexpr int width = 46;
    constexpr double msPerSecond = 1000.0;
    return QStringLiteral("---------------------------------------\n"
                          " Nonradiative Decay Rate (Anrad) and   \n"
                          " Quantum Efficiency                    \n"
                          "---------------------------------------\n\n") +
           cell("    Chosen Experimental Lifetime =", fixed(contents.lifeTime * msPerSecond, 4),
                width, " ms\n\n") +
           cell("    Anrad =", exponential(contents.anrad, 2), width, " s^-1\n\n") +
           cell("    Quantum Efficiency =", fixed(contents.quantumEfficiency, 2), width,
                " %\n\n\n");
}

/// Lines of the populations, in the order of the report.
struct PopulationLine
{
    State state;
    const char *label;
};
constexpr PopulationLine populationLines[] = {
    {S0, "    Fundamental Singlet Population ="},
    {S1, "\n    Excited Singlet Population     ="},
    {FirstTriplet, "\n    Triplet 2 population           ="},
    {T1, "\n    Triplet Population             ="},
    {Level5D4, "\n    5D4 Population                 ="},
    {Level5G6, "\n    5G6 Population                 ="},
    {Level5L6, "\n    5L6 Population                 ="},
    {Level5D1, "\n    5D1 Population                 ="},
    {Level5D0, "\n    5D0 Population                 ="},
};

QString populationSection(const Contents &contents)
{
    QString text = QStringLiteral("--------------------------------------------------------------"
                                  "--------------\n"
                                  "  Level Population of each State Involved in the Process of "
                                  "Energy Transfer \n"
                                  "--------------------------------------------------------------"
                                  "--------------\n\n");
    if (!contents.scheme)
        return text + QStringLiteral(" No populations were calculated.\n\n\n");
    for (const PopulationLine &line : populationLines)
        if (contents.scheme->holds(line.state))
            text += QLatin1String(line.label) +
                    exponential(contents.populations[static_cast<std::size_t>(line.state)], 4, 12);
    return text + QStringLiteral("\n\n\n");
}

QString yieldSection(const Contents &contents)
{
    return QString(44, QLatin1Char('-')) + QStringLiteral("\nQuantum Yield:") +
           fixed(contents.quantumYield, 4, 12) + QStringLiteral(" %\n");
}

} // namespace

QString transferReport(const Contents &contents, const SpecPrintingOptions &options)
{
    QString text;
    if (options.printInputFile)
        text += QStringLiteral("The data shown below were calculated from the geometry and excited "
                               "states energies read in following file: \n") +
                contents.inputPath + QStringLiteral("\n\n\n");
    if (options.printOmega)
        text += QStringLiteral("-------------------------------------------------------\n"
                               " Theoretical Judd-Ofelt Intensity Parameters, omega(l) \n"
                               "-------------------------------------------------------\n\n") +
                lambdaLines("omega", contents.omega);
    if (options.printOmegaED)
        text += QStringLiteral("-----------------------------------------------------------\n"
                               " Forced Electric Dipole Judd-Ofelt Parameters, omegaED (l)\n"
                               "-----------------------------------------------------------\n\n") +
                lambdaLines("omegaED", contents.omegaEd);
    if (options.printConstants)
        text += constantsSection();
    if (options.printDonorStates)
        text += donorSection(contents.transfer);
    if (options.printGama)
        text += gamaSection(contents.transfer);
    if (options.printFranckCondon)
        text += overlapSection(contents.transfer, contents.bandHalfWidth);
    if (options.printTransferRates)
        text += transferRateSection(contents.transfer);
    if (options.printArad)
        text += radiativeSection(contents);
    return text;
}

QString populationReport(const Contents &contents, const SpecPrintingOptions &options)
{
    QString text;
    if (options.printAnrad)
        text += nonRadiativeSection(contents);
    if (options.printPopulations)
        text += populationSection(contents);
    if (options.printQuantumYield)
        text += yieldSection(contents);
    return text;
}

} // namespace spectroscopicReport
