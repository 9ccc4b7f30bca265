#include "Command.h"
#include "commands/calculatedEmission.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/chargeFactorSets.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "options/uncertainOptions.h"
#include "plots/figures.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/OmegaResults.h>

#include <QFileInfo>

#include <functional>
#include <optional>

namespace {

using cli::column;
using cli::tr;

constexpr double cm3PerCubicAngstrom = 1.0e-24;
constexpr double omegaUnitCm2 = 1.0e-20;

QString sphereTable(const OmegaResults &results)
{
    QString text = tr("Coordination sphere of %1: %2 atoms\n\n")
                       .arg(results.ion.label, QString::number(results.atoms.size())) +
                   tr("  Atom      R / A  theta / deg  phi / deg         g  alpha / A^3\n");
    for (const OmegaResults::Atom &atom : results.atoms)
        text += QStringLiteral("  %1 %2").arg(atom.position.label.leftJustified(2),
                                              QString::number(atom.number).rightJustified(3)) +
                column(atom.position.r, 4, 9) + column(atom.position.theta, 2, 13) +
                column(atom.position.phi, 2, 11) + column(atom.chargeFactor, 4, 10) +
                column(atom.alpha / cm3PerCubicAngstrom, 4, 13) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString omegaTable(const OmegaResults &results)
{
    QString text = tr("Intensity parameters Omega(lambda) / 1e-20 cm^2: total, by forced electric\n"
                      "dipole (ED) alone and by dynamic coupling (DC) alone\n\n") +
                   tr("  lambda      Omega         ED         DC\n");
    for (const int lambda : {2, 4, 6})
        text += QString::number(lambda).rightJustified(8) +
                column(results.omega[lambda] / omegaUnitCm2, 4, 11) +
                column(results.omegaED[lambda] / omegaUnitCm2, 4, 11) +
                column(results.omegaDC[lambda] / omegaUnitCm2, 4, 11) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString rateTable(const OmegaResults &results)
{
    constexpr double msPerSecond = 1000.0;
    const RadiativeRates &rates = results.rates;
    const auto line = [](const QString &name, double value, int decimals, const char *unit) {
        return QStringLiteral("  %1").arg(name, -40) + column(value, decimals, 11) +
               QLatin1Char(' ') + QLatin1String(unit) + QLatin1Char('\n');
    };
    return tr("Radiative rates of 5D0 at refractive index %1\n\n").arg(results.refractiveIndex) +
           line(tr("electric dipole (ED + DC), Arad(ED)"), rates.electricDipole(), 2, "s^-1") +
           line(tr("magnetic dipole, Arad(MD)"), rates.md, 2, "s^-1") +
           line(tr("sum, Arad"), rates.total(), 2, "s^-1") +
           line(tr("radiative lifetime 1/Arad"), msPerSecond / rates.total(), 4, "ms");
}

QString summary(const OmegaResults &results)
{
    return sphereTable(results) + omegaTable(results) + rateTable(results);
}

/// What the command line asks of the report.
struct ReportRequest
{
    bool isWanted = false;
    QString fileName; ///< empty: standard output
    OmegaPrintingOptions options;
    QString ligandFile;
    QStringList ligands;
    QString plotFile;                   ///< of the error bars or the partition
    QVector<QVector<double>> solutions; ///< of a fit, for the error bars
    cli::EmissionRequest emission;
};

ReportRequest readReportRequest(const cli::OptionReader &options)
{
    ReportRequest request;
    request.plotFile = plots::readOption(options);
    request.emission = cli::readEmissionRequest(options);
    request.ligandFile = options.text("ligands");
    request.fileName = options.text("report");
    request.isWanted =
        options.isSet("print") || !request.fileName.isEmpty() || !request.ligandFile.isEmpty();
    request.options =
        cli::sectionsOf(options.isSet("print") ? options.text("print") : cli::mainSections());
    if (!request.ligandFile.isEmpty() && !options.isSet("print"))
        request.options.printAradPartition = true;
    request.ligands = cli::readLigands(options);
    return request;
}

void addOptions(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Judd-Ofelt intensity parameters of a Eu3+ complex by the simple overlap model.\n\n"
        "FILE is a MOPAC .out or .arc file or a structure (.mop, .zmt, .xyz, .mol2, .cif, .pdb)\n"
        "with Eu as atom 1 and the N coordinated atoms as atoms 2 to N+1; those of a crystal\n"
        "(.cif, .pdb) are brought into that order. Every coordinated atom needs a\n"
        "charge factor g (dimensionless) and a polarisability alpha (cubic Angstrom), given by\n"
        "element or by atom number; an atom's own value beats that of its element.\n\n"
        "Example:\n"
        "  lanqor omega complex.out --g O=0.9,N=1.2,5=0.7 --alpha O=3.1,N=4.0 --n 1.5"));
    options.addArgument(QStringLiteral("FILE"), tr("MOPAC output or structure file"), QString(),
                        cli::structureSuffixes());
    options.addOptions({
        {QStringLiteral("g"), tr("Charge factors, dimensionless, e.g. O=0.9,N=1.2,5=0.7."),
         tr("list")},
        {QStringLiteral("alpha"), tr("Polarisabilities, cubic Angstrom, e.g. O=3.1,N=4.0."),
         tr("list")},
        cli::refractiveIndexOption(tr("Refractive index of the medium, for the radiative rates.")),
        cli::coordinationOption(),
        {QStringLiteral("ro0"),
         tr("Overlap of the nearest atom in the crystal-field section, 0 to below 1; that of the "
            "intensity parameters is always 0.05. \"lanqor stark\" has 0.0801 unless given."),
         tr("overlap"), QStringLiteral("0.05")},
        {QStringLiteral("print"),
         tr("Print the report with these sections, separated by commas: all, %1.")
             .arg(cli::sectionNames()),
         tr("sections")},
        cli::ligandsOption(),
        {QStringLiteral("report"),
         tr("Write the report to this file instead of standard output; without --print it has "
            "the main sections."),
         tr("file")},
    });
    cli::addEmissionOptions(options);
}

/// Groups that leave atoms out do not add up to the rate.
void noteUngroupedAtoms(const AradPartitionResults &partition, const QString &ligandFile)
{
    QVector<int> grouped;
    for (const AradPartitionResults::GroupShare &share : partition.groups)
        grouped += share.group.atoms;
    QStringList others;
    for (const AradPartitionResults::AtomShare &share : partition.atoms)
        if (!grouped.contains(share.atom))
            others.append(QStringLiteral("%1 %2").arg(share.label, QString::number(share.atom)));
    if (!others.isEmpty())
        cli::note(tr("--ligands %1: in no group, so that the shares of the groups do not add up to "
                     "Arad(ED): %2")
                      .arg(ligandFile, others.join(QStringLiteral(", "))));
}

/// What error bars are told of, in the order of the values of a set.
QVector<ResultColumn> uncertainQuantities()
{
    QVector<ResultColumn> quantities;
    for (const char *kind : {"omega_%1", "omega_ed_%1"})
        for (const int lambda : {2, 4, 6})
            quantities.append(
                {QString::fromLatin1(kind).arg(lambda), QStringLiteral("1e-20 cm^2")});
    return quantities << ResultColumn{QStringLiteral("electric_dipole_rate"),
                                      QStringLiteral("s^-1")}
                      << ResultColumn{QStringLiteral("radiative_rate"), QStringLiteral("s^-1")}
                      << ResultColumn{QStringLiteral("radiative_lifetime"), QStringLiteral("ms")};
}

/// Error bars of Omega and the rates of a finished calculation.
/// @param solutions  see cli::readSolutions(); may be empty
UncertaintyResults calcUncertainty(const cli::OptionReader &options,
                                   const cli::UncertainOptions &uncertain,
                                   const QVector<QVector<double>> &solutions,
                                   LanqorInputData &geometry, const OmegaResults &results)
{
    LanqorUncertainty uncertainty;
    uncertain.prepare(uncertainty);
    if (!solutions.isEmpty())
        uncertainty.addEnsemble(QStringLiteral("solutions"), solutions);
    cli::ChargeFactorSets sets(uncertain, geometry, results.atoms.size(), options.text("g"),
                               options.text("alpha"));
    LanqorSpectroscopicCalculation emission(nullptr);
    emission.setLifeTime(1.0); // any: without one, it would be estimated in vain
    const auto rowOf = [&emission](const QVector<double> &omegas, double index) {
        constexpr double msPerSecond = 1000.0;
        emission.setOmegaValues(omegas[0], omegas[1], omegas[2]);
        emission.setRefractiveIndex(index);
        emission.calcArad();
        const double arad = emission.getArad();
        return QVector<double>(omegas) << arad - emission.getAradMD() << arad << msPerSecond / arad;
    };
    const auto omegasOf = [](const auto &total, const auto &ed) {
        QVector<double> omegas;
        for (const auto &part : {std::function<double(int)>(total), std::function<double(int)>(ed)})
            for (const int lambda : {2, 4, 6})
                omegas.append(part(lambda) / omegaUnitCm2);
        return omegas;
    };
    const auto model = [&](const QVector<double> &values) {
        double index = results.refractiveIndex;
        for (const int i : uncertain.numbersOf(QStringLiteral("n")))
            index = values.at(i);
        if (!solutions.isEmpty())
            return rowOf(values.mid(uncertain.numbers().size()), index);
        if (!sets.calc(values))
            return QVector<double>();
        return rowOf(omegasOf([&](int lambda) { return sets.omega().getOmega(lambda); },
                              [&](int lambda) { return sets.omega().getOmegaED(lambda); }),
                     index);
    };
    const QVector<double> asGiven =
        rowOf(omegasOf([&](int lambda) { return results.omega[lambda]; },
                       [&](int lambda) { return results.omegaED[lambda]; }),
              results.refractiveIndex);
    if (!solutions.isEmpty())
        cli::warnOfOtherSolutions(solutions, asGiven.mid(0, 3));
    return uncertainty.calculate(uncertainQuantities(), asGiven, model);
}

/// Makes the report of a finished calculation if one is wanted, and shows the results.
void show(const cli::OptionReader &options, const cli::UncertainOptions &uncertain,
          LanqorInputData &geometry, LanqorOmega &omega, const ReportRequest &request)
{
    const OmegaResults results = omega.getResults();
    if (!results.partition.groupError.isEmpty())
        throw cli::Failure{
            QStringLiteral("%1: %2").arg(request.ligandFile, results.partition.groupError)};
    if (!request.ligandFile.isEmpty())
        noteUngroupedAtoms(results.partition, request.ligandFile);
    QString text = summary(results);
    QString errorBars;
    LanqorResultTables tables = LanqorOmega::makeTables(results);
    std::optional<cli::EmissionSpectrum> emission;
    if (request.emission.isWanted) {
        emission.emplace(request.emission, geometry, results);
        emission->addTables(tables);
    }
    UncertaintyResults uncertainty;
    if (!uncertain.isEmpty() || !request.solutions.isEmpty()) {
        uncertainty = calcUncertainty(options, uncertain, request.solutions, geometry, results);
        cli::addErrorBars(uncertainty, errorBars, tables);
    }
    if (request.isWanted) {
        QString report = omega.createOutFile(QString());
        if (report.isEmpty())
            cli::failOf(omega);
        report += errorBars;
        if (request.fileName.isEmpty())
            text = report;
        else
            cli::writeFile(request.fileName, report.toUtf8());
    }
    if (!request.isWanted || !request.fileName.isEmpty())
        text += errorBars;
    cli::showResults(options, text, tables);
    if (emission)
        emission->draw(QFileInfo(results.geometryFile).fileName());
    if (request.plotFile.isEmpty())
        return;
    if (uncertainty.quantities.isEmpty())
        plots::draw(plots::partitionFigure(results.partition), request.plotFile);
    else
        plots::draw(uncertainty, QFileInfo(results.geometryFile).fileName(), request.plotFile);
}

} // namespace

int omegaCommand(const QStringList &arguments)
{
    cli::OptionReader options("omega");
    addOptions(options);
    cli::UncertainOptions uncertain(options, cli::uncertainChargeFactors()
                                                 << cli::uncertainRefractiveIndex());
    uncertain.addPlotOption(tr("the partition of the radiative rate"));
    uncertain.addSolutionsOption();
    options.addResultOptions();
    options.parse(uncertain.read(arguments));
    uncertain.check();
    const QString fileName =
        options.files(1, tr("omega needs one file; see \"lanqor omega --help\"")).first();
    const double index = cli::readRefractiveIndex(options);
    const double ro0 = cli::readOverlap(options);
    ReportRequest request = readReportRequest(options);
    if (options.isSet("solutions"))
        request.solutions = cli::readSolutions(options, uncertain);

    LanqorInputData geometry(nullptr, fileName);
    geometry.setKeepFileOpen(true);
    cli::showMessages(geometry);
    const int coordNumber = cli::readSphere(options, geometry);
    LanqorOmega omega(nullptr, 0, &geometry);
    if (!omega.getLastError().isEmpty())
        cli::failOf(omega);
    omega.setRefractiveIndex(index);
    omega.setCrystalFieldOverlap(ro0);
    omega.setOmegaPrintingOptions(request.options);
    omega.setLigandAtomsByLigandVector(request.ligands);
    cli::calcOmega(omega, geometry, coordNumber, options.text("g"), options.text("alpha"));
    show(options, uncertain, geometry, omega, request);
    return cli::success;
}
