#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/complexOptions.h"
#include "options/yieldOptions.h"
#include "plots/yieldPlot.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <algorithm>
#include <cmath>

using yieldOptions::Request;
using Calculation = LanqorSpectroscopicCalculation;

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

QString donorLine(const QString &kind, int number, double energy, double rl)
{
    return QStringLiteral("  ") + kind.leftJustified(10) +
           (number > 0 ? QString::number(number) : tr("given")).rightJustified(8) +
           column(energy, 2, 16) + column(rl, 4, 10) + QLatin1Char('\n');
}

QString donorTable(const Calculation &calculation, const Request &request)
{
    QString text = tr("Donor states of the ligands\n\n") +
                   tr("              number   energy / cm^-1    RL / A\n");
    const LanqorRL *states = calculation.getRLCalculation();
    if (!states)
        return text + donorLine(tr("singlet"), 0, request.singletEnergy, request.rlSinglet) +
               donorLine(tr("triplet"), 0, request.tripletEnergy, request.rlTriplet);
    const int singlet = calculation.getSelectedSinglet();
    text += donorLine(tr("singlet"), singlet, states->getSingletEnergy(singlet),
                      states->getSingletRL(singlet));
    const auto triplet = [states](const QString &name, int number) {
        return donorLine(name, number, states->getTripletEnergy(number),
                         states->getTripletRL(number));
    };
    if (!request.twoTriplets)
        return text + triplet(tr("triplet"), calculation.getSelectedTriplet());
    return text + triplet(tr("triplet Ta"), calculation.getSelectedTriplet()) +
           triplet(tr("triplet T"), 2);
}

QString omegaTable(const Calculation &calculation)
{
    QString text =
        tr("\nIntensity parameters / 1e-20 cm^2: total and forced electric dipole part\n\n"
           "  lambda      Omega         ED\n");
    for (const int lambda : {2, 4, 6})
        text += QString::number(lambda).rightJustified(8) +
                column(calculation.getOmega(lambda) / omegaUnitCm2, 4, 11) +
                column(calculation.getOmegaEd(lambda) / omegaUnitCm2, 4, 11) + QLatin1Char('\n');
    return text;
}

QString radiativeTable(const Calculation &calculation, const Request &request)
{
    const auto rate = [](double value) { return column(value, 2, 12) + QStringLiteral(" s^-1"); };
    const bool isMeasured = request.lifetimeMs > 0.0;
    return tr("\nEmission of 5D0 at refractive index %1\n\n").arg(request.refractiveIndex) +
           line(tr("Arad 5D0 -> 7F1, magnetic dipole"), rate(calculation.getAradMD())) +
           line(tr("Arad 5D0 -> 7F2"), rate(calculation.getArad02())) +
           line(tr("Arad 5D0 -> 7F4"), rate(calculation.getArad04())) +
           line(tr("Arad 5D0 -> 7F6"), rate(calculation.getArad06())) +
           line(tr("Arad"), rate(calculation.getArad())) +
           line(isMeasured ? tr("Anrad") : tr("Anrad, estimated"), rate(calculation.getAnrad())) +
           line(isMeasured ? tr("lifetime, given") : tr("lifetime, estimated"),
                column(calculation.getLifeTime() * msPerSecond, 4, 12) + QStringLiteral(" ms")) +
           line(tr("quantum efficiency"),
                column(calculation.getQuantumEfficiency(), 2, 12) + QStringLiteral(" %"));
}

QString transferTable(const Calculation &calculation, const Request &request)
{
    QString text = tr("\nEnergy transfer, model %1\n\n").arg(request.etModel) +
                   tr("  channel  mechanism   mismatch / cm^-1   transfer / s^-1   back / s^-1\n");
    for (const yieldOptions::Channel &channel : yieldOptions::channels) {
        if (!yieldOptions::isOpen(channel, request))
            continue;
        const int k = channel.slot;
        text += QStringLiteral("  ") + QString::fromLatin1(channel.name).leftJustified(9) +
                (channel.isExchange ? tr("exchange") : tr("multipolar")).leftJustified(10) +
                column(calculation.getEnergyMismatch(k), 2, 18) +
                powerColumn(channel.isExchange ? calculation.getExchangeForwardRate(k)
                                               : calculation.getForwardRate(k),
                            2, 18) +
                powerColumn(channel.isExchange ? calculation.getExchangeBackwardRate(k)
                                               : calculation.getBackwardRate(k),
                            2, 14) +
                QLatin1Char('\n');
    }
    return text;
}

QString populationTable(const Calculation &calculation, const Request &request)
{
    static const char *const names[] = {"S0", "S1", "Ta", "T", "5D4", "5G6", "5L6", "5D1", "5D0"};
    const bool has5G6 = !request.excitedFile.isEmpty() && !request.twoTriplets;
    QString text = tr("\nPopulations\n\n");
    for (int state = 0; state < 9; ++state) {
        const bool isModelled = state == 2                 ? request.twoTriplets
                                : state == 5 || state == 6 ? has5G6
                                                           : true;
        if (isModelled)
            text += line(QLatin1String(names[state]),
                         powerColumn(calculation.getPopulation(state), 4, 12));
    }
    return text;
}

/// Shortest distance from atom 1 of the complex to another atom, Angstrom; 0 when unknown.
double shortestDistance(const QString &complexFile)
{
    LanqorInputData geometry(nullptr, complexFile);
    if (!geometry.readStructureFile() || !geometry.createSphericalCoordinate())
        return 0.0;
    const int atoms = geometry.getCoord().size();
    double shortest = 0.0;
    for (int atom = 2; atom <= atoms; ++atom) {
        const double r = geometry.getCoordSPH(atom).r;
        shortest = atom == 2 ? r : std::min(shortest, r);
    }
    return shortest;
}

/// States that the library would replace, for they are beyond its lists, are refused here.
void checkStates(const Calculation &calculation, const Request &request)
{
    const LanqorRL *states = calculation.getRLCalculation();
    const auto check = [&](const char *name, int asked, int used) {
        if (asked == 0 || asked == used)
            return;
        throw cli::Failure{
            tr("--%1 %2 cannot be chosen: %3 gives %4 singlet and %5 triplet states, and neither "
               "number may exceed the count of triplets; a ZINDO list has the ground state as "
               "number 1")
                .arg(QLatin1String(name))
                .arg(asked)
                .arg(request.excitedFile)
                .arg(states->getSingletStatesCount())
                .arg(states->getTripletStatesCount())};
    };
    check("singlet", request.singlet, calculation.getSelectedSinglet());
    check("triplet", request.triplet, calculation.getSelectedTriplet());
}

void warnOfOtherComplex(const Calculation &calculation, const Request &request)
{
    constexpr double tolerance = 0.1; // Angstrom
    const double inStates = calculation.getRLCalculation()->getMinDistanceLnLigand();
    const double inComplex = shortestDistance(request.complexFile);
    if (inComplex > 0.0 && std::abs(inStates - inComplex) > tolerance)
        cli::note(tr("lanqor: warning: the atom nearest to the ion is %1 A away in %2 but %3 A in "
                     "%4: are these the same complex in the same geometry?")
                      .arg(inComplex, 0, 'f', 3)
                      .arg(request.complexFile)
                      .arg(inStates, 0, 'f', 3)
                      .arg(request.excitedFile));
}

/// Sets the intensity parameters unless a report gave them.
void setOmega(Calculation &calculation, const Request &request)
{
    if (!request.omega.isEmpty()) {
        const QVector<double> &ed = request.omegaEd;
        calculation.setOmegaValues(request.omega[0], request.omega[1], request.omega[2]);
        calculation.setOmegaEdValues(ed[0], ed[1], ed[2]);
    }
    if (request.g.isEmpty())
        return;
    LanqorInputData geometry(nullptr, request.complexFile);
    const int coordNumber = cli::readSphere(geometry, request.complexFile);
    LanqorOmega omega(nullptr, 0, request.complexFile, request.complexFile);
    cli::calcOmega(omega, geometry, coordNumber, request.g, request.alpha);
    const auto total = [&omega](int lambda) { return omega.getOmega(lambda) / omegaUnitCm2; };
    const auto ed = [&omega](int lambda) { return omega.getOmegaED(lambda) / omegaUnitCm2; };
    calculation.setOmegaValues(total(2), total(4), total(6));
    calculation.setOmegaEdValues(ed(2), ed(4), ed(6));
}

void run(Calculation &calculation, const Request &request)
{
    cli::showMessages(calculation);
    calculation.setRefractiveIndex(request.refractiveIndex);
    calculation.setLifeTime(request.lifetimeMs / msPerSecond);
    calculation.setETModel(request.etModel);
    calculation.setNOverlapIntegral(request.overlapExponent);
    calculation.setEnergyTransferChannels(request.openChannels);
    calculation.setConsiderTwoTriplets(request.twoTriplets);
    bool isDone = false;
    if (request.excitedFile.isEmpty()) {
        calculation.calcArad();
        isDone = calculation.calcQuantumYield(request.rlSinglet, request.rlTriplet,
                                              request.singletEnergy, request.tripletEnergy,
                                              calculation.getArad(), calculation.getAnrad());
    } else {
        isDone = request.twoTriplets ? calculation.calcQuantumYieldTwoTriplets()
                                     : calculation.calcQuantumYieldNEW();
    }
    if (!isDone)
        cli::failOf(calculation);
    if (!std::isfinite(calculation.getQuantumYield()))
        throw cli::Failure{tr("the rate equations have no finite solution: check energies and "
                              "distances of the donor states")};
}

void writeReport(Calculation &calculation, const Request &request)
{
    const QString source =
        request.complexFile.isEmpty() ? tr("(values of the command line)") : request.complexFile;
    const QString text = LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
                         calculation.createOutFileET(source) + calculation.createOutFile(source);
    cli::writeFile(request.reportFile, text.toUtf8());
}

void warnOfNegativeRate(const Calculation &calculation)
{
    if (calculation.getAnrad() >= 0.0)
        return;
    cli::note(
        tr("lanqor: warning: the lifetime of %1 ms is longer than the radiative lifetime of "
           "%2 ms, so that Anrad is negative and the efficiency above 100 %: Omega, refractive "
           "index or lifetime do not fit each other")
            .arg(calculation.getLifeTime() * msPerSecond, 0, 'f', 4)
            .arg(msPerSecond / calculation.getArad(), 0, 'f', 4));
}

void calculate(Calculation &calculation, const Request &request)
{
    if (!calculation.getLastError().isEmpty())
        cli::failOf(calculation);
    if (calculation.getRLCalculation())
        checkStates(calculation, request);
    setOmega(calculation, request);
    run(calculation, request);
    if (calculation.getRLCalculation())
        warnOfOtherComplex(calculation, request);
    warnOfNegativeRate(calculation);
    if (!request.reportFile.isEmpty())
        writeReport(calculation, request);
    if (!request.plotFile.isEmpty())
        plots::draw(yieldDiagram(calculation, request), request.plotFile);
    cli::print(donorTable(calculation, request) + omegaTable(calculation) +
               radiativeTable(calculation, request) + transferTable(calculation, request) +
               populationTable(calculation, request) + QLatin1Char('\n') +
               tr("Quantum yield").leftJustified(36) +
               column(calculation.getQuantumYield(), 2, 12) + QStringLiteral(" %\n"));
}

} // namespace

int yieldCommand(const QStringList &arguments)
{
    const Request request = yieldOptions::read(arguments);
    // Given intensity parameters take the geometry for the check of its ion alone.
    const QString omegaSource =
        request.omegaReport.isEmpty() ? request.complexFile : request.omegaReport;
    Calculation calculation(nullptr, 0, request.programType, request.complexFile, omegaSource,
                            request.excitedFile, request.triplet, request.singlet);
    calculate(calculation, request);
    return cli::success;
}
