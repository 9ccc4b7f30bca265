#include "Command.h"
#include "commands/commands.h"
#include "commands/yieldTables.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "options/yieldOptions.h"
#include "plots/yieldPlot.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>

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
                .arg(QLatin1String(name))
                .arg(replaced)
                .arg(excitedFile)
                .arg(states->getSingletStatesCount())
                .arg(states->getTripletStatesCount())};
    };
    check("singlet", calculation.getReplacedSinglet());
    check("triplet", calculation.getReplacedTriplet());
}

/// Reads the complex; a report of intensity parameters belongs to a MOPAC output.
void readComplex(LanqorInputData &complex, const Request &request)
{
    complex.setKeepFileOpen(true);
    const bool isRead = request.omegaReport.isEmpty() ? complex.readStructureFile()
                                                      : complex.readMopacOutFile(false);
    if (!isRead || !complex.createSphericalCoordinate())
        cli::failOf(complex);
}

/// Sets the intensity parameters unless a report gave them.
void setOmega(Calculation &calculation, LanqorInputData &complex, const Request &request)
{
    if (!request.omega.isEmpty()) {
        const QVector<double> &ed = request.omegaEd;
        calculation.setOmegaValues(request.omega[0], request.omega[1], request.omega[2]);
        calculation.setOmegaEdValues(ed[0], ed[1], ed[2]);
    }
    if (request.g.isEmpty())
        return;
    cli::checkSphere(complex);
    cli::noteNearAtoms(complex);
    LanqorOmega omega(nullptr, 0, &complex);
    cli::calcOmega(omega, complex, complex.getCoordNumber(), request.g, request.alpha);
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
    if (!request.excitedStates) {
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

void warnIfAny(const QString &text)
{
    if (!text.isEmpty())
        cli::warn(text);
}

QString negativeRate(const SpectroscopicResults &results)
{
    if (results.anrad >= 0.0)
        return QString();
    return tr("the lifetime of %1 ms is longer than the radiative lifetime of %2 ms, so that Anrad "
              "is negative and the efficiency above 100 %: Omega, refractive index or lifetime do "
              "not fit each other")
        .arg(results.lifeTime * msPerSecond, 0, 'f', 4)
        .arg(msPerSecond / results.arad, 0, 'f', 4);
}

} // namespace

int yieldCommand(const QStringList &arguments)
{
    cli::OptionReader options("yield");
    const Request request = yieldOptions::read(options, arguments);
    LanqorInputData complex(nullptr, request.complexFile);
    const bool hasComplex = !request.complexFile.isEmpty();
    if (hasComplex)
        readComplex(complex, request);
    Calculation calculation(nullptr, 0, request.programType, hasComplex ? &complex : nullptr,
                            request.omegaReport, request.excitedStates.get(), request.triplet,
                            request.singlet);
    if (!calculation.getLastError().isEmpty())
        cli::failOf(calculation);
    const LanqorRL *states = calculation.getRLCalculation();
    if (states)
        checkStates(calculation, states->getInputData()->getFileName());
    setOmega(calculation, complex, request);
    run(calculation, request);
    const SpectroscopicResults results = calculation.getResults();
    if (states)
        warnIfAny(states->getComplexMismatch(complex));
    warnIfAny(negativeRate(results));
    cli::showResults(options, yieldTables(results), Calculation::makeTables(results),
                     request.inputFiles());
    if (!request.reportFile.isEmpty())
        writeReport(calculation, request);
    if (!request.plotFile.isEmpty())
        plots::draw(yieldDiagram(results), request.plotFile);
    return cli::success;
}
