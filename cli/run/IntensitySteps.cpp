#include "run/IntensitySteps.h"

#include "Command.h"
#include "commands/fitProgress.h"
#include "commands/intensityFit.h"
#include "commands/yieldErrorBars.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/chargeFactorSets.h"
#include "options/complexOptions.h"
#include "options/uncertainOptions.h"
#include "options/yieldOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorFitAccount.h>
#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorOmegaExp.h>
#include <LanqorEngine/LanqorParametric.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorYieldScan.h>

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

constexpr double msPerSecond = 1000.0;

/// Omega 2, 4, 6 and Omega-ED 2, 4, 6 of equally good solutions, 1e-20 cm^2.
QVector<QVector<double>> omegasOf(const IntensitySolutions &solutions)
{
    const auto placeOf = [&solutions](const QString &name) {
        for (int i = 0; i < solutions.quantities.size(); ++i)
            if (solutions.quantities.at(i).name == name)
                return i;
        return -1;
    };
    QVector<QVector<double>> rows;
    for (const QVector<double> &set : solutions.sets) {
        QVector<double> totals;
        QVector<double> dipoles;
        for (const int rank : {2, 4, 6}) {
            const double total = set.value(placeOf(QStringLiteral("omega_%1").arg(rank)));
            totals.append(total);
            dipoles.append(total *
                           set.value(placeOf(QStringLiteral("ed_share_of_omega_%1").arg(rank))));
        }
        rows.append(totals + dipoles);
    }
    return rows;
}

/// "C5H7O2" of "C5H7O2_1".
QString formulaOf(const QString &ligand)
{
    return ligand.section(QLatin1Char('_'), 0, 0);
}

QStringList ligandLines(const OrganizeResults &sphere)
{
    QStringList lines;
    for (const OrganizedLigand &ligand : sphere.ligands) {
        if (ligand.coordinatedAtoms.isEmpty())
            continue;
        QString line = ligand.name;
        for (const int atom : ligand.coordinatedAtoms)
            line += QLatin1Char(' ') + QString::number(atom);
        lines.append(line);
    }
    return lines;
}

} // namespace

QMap<int, QStringList> donorGroups(const OrganizeResults &sphere)
{
    QMap<int, QStringList> groups;
    QStringList kinds;
    for (const OrganizedLigand &ligand : sphere.ligands)
        for (const int atom : ligand.coordinatedAtoms) {
            const QString element = sphere.atoms.at(atom - 1).position.label;
            const QString kind = element + QLatin1Char(' ') + formulaOf(ligand.name);
            if (!kinds.contains(kind))
                kinds.append(kind);
            groups[kinds.indexOf(kind) + 1].append(
                QStringLiteral("%1 %2").arg(element, QString::number(atom)));
        }
    return groups;
}

IntensitySteps::IntensitySteps(const OptionReader &reader, const UncertainOptions &uncertain,
                               const RunRequest &request, RunReport &report)
    : reader(reader)
    , uncertain(uncertain)
    , request(request)
    , report(report)
{}

IntensitySteps::~IntensitySteps() = default;

void IntensitySteps::readSpectrum()
{
    if (request.source != IntensitySource::Spectrum)
        return;
    LanqorOmegaExp calculation(nullptr, request.refractiveIndex);
    keepWarnings(calculation, report.warnings);
    if (!calculation.readSpectrum(request.spectrum, request.spectrumOptions))
        failOf(calculation);
    const QString error = calculation.getBarycentreError();
    if (!error.isEmpty())
        throw Failure{error};
    calculation.setLifeTime(request.lifetimeMs);
    if (!calculation.calcOmegaExp())
        failOf(calculation);
    for (const QString &warning : calculation.getWarnings()) {
        report.warnings.append(warning);
        warn(warning);
    }
    report.measured = calculation.getResults();
    spectrumReport = calculation.createOutputFile(QString());
}

/// The fit to measured Omega(2) and Omega(4) as "lanqor fit omega" does it.
void IntensitySteps::fit(LanqorInputData &geometry, const OrganizeResults &sphere)
{
    IntensityFitOptions options;
    options.fileName = geometry.getFileName();
    options.omega2 = request.targets.omega2;
    options.omega4 = request.targets.omega4;
    options.deviation2 = request.targets.deviation2;
    options.deviation4 = request.targets.deviation4;
    options.weights = request.targets.weights;
    if (report.measured) {
        options.omega2 = report.measured->omega2 / omegaUnitCm2;
        options.omega4 = report.measured->omega4 / omegaUnitCm2;
    }
    if (options.weights.isEmpty())
        options.weights = {1.0, 1.0};
    options.refractiveIndex = request.refractiveIndex;
    options.coordNumber = coordNumber;
    options.ligands = ligandLines(sphere);
    options.choice = QStringLiteral("best");
    options.fit = usualFitOptions(intensityFitStarts);
    options.fit.isQuiet = true;
    options.geometry = std::make_unique<LanqorInputData>(nullptr, geometry.getFileName());
    if (!options.geometry->readStructureFile() || !options.geometry->createSphericalCoordinate())
        failOf(*options.geometry);

    IntensityFitKind<LanqorParametric> kind;
    kind.makeFit = [&] {
        auto fit = std::make_unique<LanqorParametric>(nullptr, options.geometry.get(), 0);
        fit->setCoordNumber(coordNumber);
        fit->setGroupsAndAtoms(donorGroups(sphere));
        return fit;
    };
    kind.toSought = [](LanqorParametric &, const QVector<FitParameter> &told) { return told; };
    kind.vectorToSought = [](LanqorParametric &, const QVector<double> &told) { return told; };
    kind.vectorToTold = kind.vectorToSought;
    const auto outcome = runIntensityFit(reader, options, kind);
    isFitInterrupted = outcome.status == interrupted;
    if (!outcome.results.hasFeasiblePoint)
        throw Failure{tr("the fit of charge factors found no point within the bounds")};
    const QString missed = missedTargets(outcome.results.omega);
    if (!missed.isEmpty()) {
        report.warnings.append(missed);
        warn(missed);
    }
    QVector<double> g(coordNumber + 2, 0.0);
    QVector<double> alpha(coordNumber + 2, 0.0);
    for (const OmegaFitGroup &group : outcome.results.groups)
        for (const QString &atom : group.atoms) {
            const int number = atom.section(QLatin1Char(' '), 1).toInt();
            g[number] = group.donor.chargeFactor;
            alpha[number] = group.donor.alpha;
        }
    omega->setCoordNumber(coordNumber);
    if (!omega->setChargeFactorAndAlpha(g, alpha) || !omega->calcOmega())
        failOf(*omega);
    report.fit = outcome.results;
    report.fitAccount = outcome.account;
    report.solutions = outcome.solutions;
}

/// Charge factors and polarisabilities by the QDC model, whose force constants are read from the
/// output of MOPAC with its own order of atoms.
void IntensitySteps::calcQdc(const OrganizeResults &sphere, const QString &mopacOutput)
{
    mopacData = std::make_unique<LanqorInputData>(nullptr, mopacOutput);
    if (!mopacData->readMopacOutFile(false) || !mopacData->createSphericalCoordinate())
        failOf(*mopacData);
    for (int i = 0; i < sphere.atoms.size(); ++i)
        if (sphere.atoms.at(i).sourceAtom != i + 1 || !mopacData->getSphereError().isEmpty())
            throw Failure{tr("the optimisation changed the coordination sphere, so that %1 has the "
                             "coordinated atoms in other places than 2 to N+1; start from its "
                             "geometry: \"lanqor organize %1 NEW.xyz\"")
                              .arg(mopacOutput)};
    LanqorIndicesCalculation indices(nullptr, mopacData.get(),
                                     LanqorIndicesCalculation::MopacOutput);
    if (!indices.calculateIndices())
        failOf(indices);
    omega = makeOmega(*mopacData, sphere);
    omega->setAtomicCharges(indices.getAtomicCharge());
    omega->setSuperDeslocalizability(indices.getSuperDeslocalizability());
    omega->setOrbitalEnergyUnit(QStringLiteral("eV"));
    omega->setParametersQDC(request.qdc[0], request.qdc[1], request.qdc[2]);
    if (!omega->calcOmega())
        failOf(*omega);
}

std::unique_ptr<LanqorOmega> IntensitySteps::makeOmega(LanqorInputData &geometry,
                                                       const OrganizeResults &sphere) const
{
    auto calculation = std::make_unique<LanqorOmega>(nullptr, 0, &geometry);
    if (!calculation->getLastError().isEmpty())
        failOf(*calculation);
    calculation->setRefractiveIndex(request.refractiveIndex);
    calculation->setLigandAtomsByLigandVector(ligandLines(sphere));
    OmegaPrintingOptions sections = sectionsOf(mainSections());
    sections.printAradPartition = true;
    calculation->setOmegaPrintingOptions(sections);
    return calculation;
}

IntensityOutcome IntensitySteps::calcOmega(LanqorInputData &geometry, const OrganizeResults &sphere,
                                           const QString &mopacOutput)
{
    coordNumber = sphere.coordNumber;
    omega = makeOmega(geometry, sphere);
    if (request.isQdc()) {
        report.intensitySource = tr("given parameters of the QDC model");
        calcQdc(sphere, mopacOutput);
    } else if (request.source == IntensitySource::ChargeFactors) {
        report.intensitySource = tr("given charge factors and polarisabilities");
        cli::calcOmega(*omega, geometry, coordNumber, request.g, request.alpha);
    } else {
        report.intensitySource = report.measured ? tr("fit to the measured spectrum")
                                                 : tr("fit to the measured Omega(2) and Omega(4)");
        fit(geometry, sphere);
    }
    report.omega = omega->getResults();
    report.partition = report.omega->partition;
    const auto value = [this](int rank) {
        return QString::number(report.omega->omega[rank] / omegaUnitCm2, 'f', 2);
    };
    IntensityOutcome outcome;
    outcome.line = tr("Omega(2), (4), (6) %1, %2, %3e-20 cm^2").arg(value(2), value(4), value(6));
    outcome.files.append({QStringLiteral("omega.txt"), omega->createOutFile(QString())});
    if (report.measured)
        outcome.files.append({QStringLiteral("omega-exp.txt"), spectrumReport});
    if (report.fitAccount)
        outcome.files.append({QStringLiteral("fit.txt"),
                              LanqorFitAccount::makeText(*report.fitAccount) + QLatin1Char('\n') +
                                  LanqorIntensitySolutions::makeText(*report.solutions)});
    if (report.solutions)
        outcome.files.append(
            {QStringLiteral("solutions.csv"),
             QString::fromUtf8(
                 LanqorIntensitySolutions::makeSolutionTable(*report.solutions).toCsv())});
    return outcome;
}

IntensityOutcome IntensitySteps::calcYield(ProgramSteps &programs, const YieldDonors &donors)
{
    LanqorInputData &geometry = programs.geometry();
    LanqorSpectroscopicCalculation calculation(nullptr, 0, programs.states().type, &geometry,
                                               QString(), programs.states().data.get(),
                                               donors.triplet, donors.singlet);
    if (!calculation.getLastError().isEmpty())
        failOf(calculation);
    keepWarnings(calculation, report.warnings);
    calculation.setTripletEnergy(donors.tripletEnergy);
    const OmegaResults &omegas = *report.omega;
    const auto in = [](const ByRank &values, int rank) { return values[rank] / omegaUnitCm2; };
    calculation.setOmegaValues(in(omegas.omega, 2), in(omegas.omega, 4), in(omegas.omega, 6));
    calculation.setOmegaEdValues(in(omegas.omegaED, 2), in(omegas.omegaED, 4),
                                 in(omegas.omegaED, 6));
    calculation.setRefractiveIndex(request.refractiveIndex);
    calculation.setLifeTime(request.lifetimeMs / msPerSecond);
    calculation.setETModel(2);
    calculation.setBandHalfWidth(yieldOptions::usualBandHalfWidth);
    if (!calculation.calcQuantumYieldNEW())
        failOf(calculation);
    if (!std::isfinite(calculation.getQuantumYield()))
        throw Failure{tr("the rate equations have no finite solution: check energies and distances "
                         "of the donor states")};
    report.yield = calculation.getResults();
    report.yieldInputs = calculation.getYieldInputs();
    for (const QString &warning : report.yield->warnings)
        warn(warning);
    report.warnings += report.yield->warnings;
    yieldOptions::checkResults(*report.yield);
    report.uncertainty = calcErrorBars(calculation, geometry, donors);
    for (const QString &warning : report.uncertainty->warnings)
        warn(warning);
    report.warnings += report.uncertainty->warnings;
    IntensityOutcome outcome;
    outcome.line = tr("quantum yield %1 %").arg(textOfYield(report.yield->quantumYield));
    const QString source = report.omega->geometryFile;
    QString text = LanqorInputData::LANQORTitle + QStringLiteral("\n\n\n") +
                   calculation.createOutFileET(source) + calculation.createOutFile(source);
    if (!report.uncertainty->quantities.isEmpty()) {
        const UncertaintyResults::Quantity &interval = report.uncertainty->quantities.first();
        outcome.line += tr(" (95 %: %1 to %2 %)")
                            .arg(textOfYield(interval.low95), textOfYield(interval.high95));
        text += LanqorUncertainty::makeText(*report.uncertainty);
    }
    outcome.files.append({QStringLiteral("yield.txt"), text});
    return outcome;
}

UncertaintyResults IntensitySteps::calcErrorBars(const LanqorSpectroscopicCalculation &calculation,
                                                 LanqorInputData &geometry,
                                                 const YieldDonors &donors) const
{
    LanqorUncertainty uncertainty;
    uncertain.prepare(uncertainty);
    const auto tripletName = QStringLiteral("triplet-energy");
    const bool isOwn = !donors.isMeasured && donors.tripletSd > 0.0;
    if (isOwn) {
        UncertainInput input;
        input.name = tr("calculated %1").arg(tripletName);
        input.unit = QStringLiteral("cm^-1");
        input.value = donors.tripletEnergy;
        input.standardDeviation = donors.tripletSd;
        input.minimum = LanqorYieldScan::leastOf(tripletName);
        input.maximum = LanqorYieldScan::largestOf(tripletName);
        uncertainty.addInput(input);
    }
    QVector<QVector<double>> solutions;
    if (report.solutions)
        solutions = omegasOf(*report.solutions);
    if (!solutions.isEmpty())
        uncertainty.addEnsemble(tr("equally good fits"), solutions);
    if (uncertainty.isEmpty())
        return {};
    std::unique_ptr<ChargeFactorSets> factors;
    if (request.source == IntensitySource::ChargeFactors)
        factors = std::make_unique<ChargeFactorSets>(uncertain, geometry, coordNumber, request.g,
                                                     request.alpha);
    const auto &numbers = uncertain.numbers();
    const bool isMeasured = donors.isMeasured;
    return calcYieldErrorBars(
        uncertainty, calculation, [&](const QVector<double> &values, YieldInputs &inputs) {
            if (factors) {
                if (!factors->calc(values))
                    return false;
                setOmegas(
                    inputs, [&](int rank) { return factors->omega().getOmega(rank); },
                    [&](int rank) { return factors->omega().getOmegaED(rank); });
            }
            int next = numbers.size();
            for (int i = 0; i < numbers.size(); ++i) {
                if (numbers.at(i).option == tripletName && isMeasured)
                    inputs.triplet.energy = values.at(i);
                else if (numbers.at(i).option == QLatin1String("lifetime"))
                    inputs.lifeTime = values.at(i) / msPerSecond;
                else if (numbers.at(i).option == QLatin1String("n"))
                    inputs.refractiveIndex = values.at(i);
            }
            if (isOwn)
                inputs.triplet.energy = values.at(next++);
            if (!solutions.isEmpty())
                setOmegas(
                    inputs, [&](int rank) { return values.at(next + rank / 2 - 1) * omegaUnitCm2; },
                    [&](int rank) { return values.at(next + rank / 2 + 2) * omegaUnitCm2; });
            return true;
        });
}

} // namespace cli
