#include "Command.h"
#include "commands/commands.h"
#include "commands/yieldExplanation.h"
#include "commands/yieldTables.h"
#include "commands/yieldVariation.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "options/yieldOptions.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

#include <QFileInfo>

#include <cmath>

using yieldOptions::Request;
using Calculation = LanqorSpectroscopicCalculation;

namespace {

using cli::tr;

constexpr double msPerSecond = 1000.0;
constexpr double omegaUnitCm2 = 1.0e-20;

/// States that the library replaces, for they are beyond its lists, are refused here.
void checkStates(const Calculation &calculation, const QString &excitedFile)
{
    const LanqorRL *states = calculation.getRLCalculation();
    const auto check = [&](const char *name, int replaced) {
        if (replaced == 0)
            return;
        throw cli::Failure{
            tr("--%1 %2 cannot be chosen: %3 gives %4 singlet and %5 triplet states, and neither "
               "number may exceed the count of triplets; a ZINDO list has the ground state as "
               "number 1")
                .arg(QLatin1String(name), QString::number(replaced), excitedFile,
                     QString::number(states->getSingletStatesCount()),
                     QString::number(states->getTripletStatesCount()))};
    };
    check("singlet", calculation.getReplacedSinglet());
    check("triplet", calculation.getReplacedTriplet());
}

/// Reads the complex and returns its count of coordinated atoms where g and alpha ask for one. A
/// report of intensity parameters belongs to a MOPAC output.
int readComplex(const cli::OptionReader &options, LanqorInputData &complex, const Request &request)
{
    complex.setKeepFileOpen(true);
    if (!request.g.isEmpty())
        return cli::readSphere(options, complex);
    if (request.omegaReport.isEmpty())
        cli::readStructure(complex);
    else if (!complex.readMopacOutFile(false) || !complex.createSphericalCoordinate())
        cli::failOf(complex);
    cli::requireEuropium(complex);
    return 0;
}

/// Sets the intensity parameters unless a report gave them.
void setOmega(Calculation &calculation, LanqorInputData &complex, int coordNumber,
              const Request &request)
{
    if (!request.omega.isEmpty()) {
        const QVector<double> &ed = request.omegaEd;
        calculation.setOmegaValues(request.omega[0], request.omega[1], request.omega[2]);
        calculation.setOmegaEdValues(ed[0], ed[1], ed[2]);
    }
    if (request.g.isEmpty())
        return;
    LanqorOmega omega(nullptr, 0, &complex);
    cli::calcOmega(omega, complex, coordNumber, request.g, request.alpha);
    const auto total = [&omega](int lambda) { return omega.getOmega(lambda) / omegaUnitCm2; };
    const auto ed = [&omega](int lambda) { return omega.getOmegaED(lambda) / omegaUnitCm2; };
    calculation.setOmegaValues(total(2), total(4), total(6));
    calculation.setOmegaEdValues(ed(2), ed(4), ed(6));
}

/// What is given of the donor states takes the place of what was read.
void setDonors(Calculation &calculation, const Request &request)
{
    calculation.setSingletEnergy(request.singletEnergy);
    calculation.setSingletRL(request.rlSinglet);
    calculation.setTripletEnergy(request.tripletEnergy);
    calculation.setTripletRL(request.rlTriplet);
    calculation.setFirstTripletEnergy(request.firstTripletEnergy);
    calculation.setFirstTripletRL(request.rlFirstTriplet);
    calculation.setTripletShift(request.tripletShift);
    calculation.setMinDistanceLnLigand(request.minDistance);
    const YieldInputs inputs = calculation.getYieldInputs();
    const double triplet = inputs.triplet.energy + request.tripletShift;
    if (request.tripletShift < 0.0 && triplet < yieldOptions::lowestEnergy)
        throw cli::Failure{tr("--t1-shift %1 would put the triplet at %2 cm^-1; none lies below %3")
                               .arg(QString::number(request.tripletShift), QString::number(triplet),
                                    QString::number(yieldOptions::lowestEnergy))};
}

/// True when the output, which cannot be used as a whole, and the command line give all values of
/// the donors together: an output without orbitals or without triplets.
bool areDonorsKnown(const Calculation &calculation, const Request &request)
{
    const LanqorRL *states = calculation.getRLCalculation();
    if (!states || states->getSingletStatesCount() + states->getTripletStatesCount() == 0)
        return false;
    const YieldInputs inputs = calculation.getYieldInputs();
    const auto isKnown = [](const DonorValues &donor) {
        return donor.energy > 0.0 && donor.rl > 0.0;
    };
    return isKnown(inputs.singlet) && isKnown(inputs.triplet) &&
           (!request.twoTriplets || isKnown(inputs.firstTriplet));
}

void run(Calculation &calculation, const Request &request)
{
    cli::showMessages(calculation);
    calculation.setRefractiveIndex(request.refractiveIndex);
    calculation.setLifeTime(request.lifetimeMs / msPerSecond);
    calculation.setETModel(request.etModel);
    calculation.setNOverlapIntegral(request.overlapExponent);
    calculation.setEnergyTransferChannels(request.openChannels);
    calculation.setBandHalfWidth(request.bandHalfWidth);
    calculation.setKineticParameters(request.kinetics);
    bool isDone = false;
    if (request.isOfDefaultChannels()) {
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
                              "distances of the donor states, channels and kinetic constants")};
}

void writeReport(Calculation &calculation, const Request &request, const QString &variations)
{
    const QString source = request.inputFiles().value(0, tr("(values of the command line)"));
    const QString text = LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
                         calculation.createOutFileET(source) + calculation.createOutFile(source) +
                         variations;
    cli::writeFile(request.reportFile, text.toUtf8());
}

/// The scan if there is one, else the levels; and the photons.
void draw(const SpectroscopicResults &results, const YieldInputs &inputs,
          const YieldVariation &variation, const Request &request)
{
    if (!request.photonPlotFile.isEmpty())
        plots::draw(plots::photonFigure(results), request.photonPlotFile);
    if (request.plotFile.isEmpty())
        return;
    if (variation.scan().axes.isEmpty()) {
        plots::draw(plots::transferFigure(results, inputs, variation.tripletDeviation()),
                    request.plotFile);
        return;
    }
    const QString path =
        results.inputPath.isEmpty() ? results.ligandStates.outputPath : results.inputPath;
    const QString title = tr("%1: quantum yield %2 %")
                              .arg(path.isEmpty() ? tr("given states") : QFileInfo(path).fileName(),
                                   cli::textOfYield(results.quantumYield)) +
                          variation.intervalOfYield();
    plots::draw(variation.scan(), variation.errorBars(), title, request.plotFile);
}

void warnIfAny(const QString &text)
{
    if (!text.isEmpty())
        cli::warn(text);
}

/// Donor states of another complex give a yield that looks like any other.
void checkComplex(const LanqorRL &states, const LanqorInputData &complex, bool isForced)
{
    const QString mismatch = states.getCompositionMismatch(complex);
    if (!mismatch.isEmpty() && !isForced)
        throw cli::Failure{mismatch + tr("; --force computes all the same")};
    warnIfAny(mismatch);
    warnIfAny(states.getComplexMismatch(complex));
}

} // namespace

int yieldCommand(const QStringList &arguments)
{
    cli::OptionReader options("yield");
    YieldVariation variation(options);
    Request request = yieldOptions::read(options, variation.read(arguments));
    variation.check();
    LanqorInputData complex(nullptr, request.complexFile);
    cli::showWarnings(complex);
    const bool hasComplex = !request.complexFile.isEmpty();
    const int coordNumber = hasComplex ? readComplex(options, complex, request) : 0;
    Calculation calculation(nullptr, 0, request.programType, hasComplex ? &complex : nullptr,
                            request.omegaReport, request.excitedStates.get(), request.triplet,
                            request.singlet);
    calculation.setConsiderTwoTriplets(request.twoTriplets);
    if (request.needsMinDistance() && request.minDistance == 0.0 && hasComplex &&
        calculation.getYieldInputs().minDistance == 0.0)
        request.minDistance = LanqorRL::getShortestDistance(complex);
    setDonors(calculation, request);
    const QString unread = calculation.getLastError().simplified();
    if (!unread.isEmpty() && !areDonorsKnown(calculation, request))
        cli::failOf(calculation);
    if (!unread.isEmpty())
        cli::note(tr("given values stand in for what could not be read: %1").arg(unread));
    const LanqorRL *states = calculation.getRLCalculation();
    if (states)
        checkStates(calculation, states->getInputData()->getFileName());
    if (states && hasComplex)
        checkComplex(*states, complex, request.isForced);
    setOmega(calculation, complex, coordNumber, request);
    run(calculation, request);
    const SpectroscopicResults results = calculation.getResults();
    for (const QString &warning : results.warnings)
        cli::warn(warning);
    const QString text = request.isExplained
                             ? yieldExplanation(results, calculation.getYieldInputs())
                             : yieldTables(results);
    QString variations;
    LanqorResultTables tables = Calculation::makeTables(results);
    variation.run(calculation, complex, coordNumber, request, variations, tables);
    cli::showResults(options, text + variations, tables);
    if (!request.reportFile.isEmpty())
        writeReport(calculation, request, variations);
    draw(results, calculation.getYieldInputs(), variation, request);
    yieldOptions::checkResults(results);
    return cli::success;
}
