#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/chargeFactorOptions.h"
#include "options/complexOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QFile>

namespace {

using cli::column;
using cli::tr;

constexpr double cm3PerCubicAngstrom = 1.0e-24;
constexpr double omegaUnitCm2 = 1.0e-20;

QString sphereTable(const LanqorInputData &geometry, const LanqorOmega &omega)
{
    QString text = tr("Coordination sphere of %1: %2 atoms\n\n")
                       .arg(geometry.getAtomLabel(1))
                       .arg(omega.getCoordNumber()) +
                   tr("  Atom      R / A  theta / deg  phi / deg         g  alpha / A^3\n");
    for (int atom = 2; atom <= omega.getCoordNumber() + 1; ++atom) {
        const CoordSPH position = geometry.getCoordSPH(atom);
        text += QStringLiteral("  %1 %2").arg(position.label, -2).arg(atom, 3) +
                column(position.r, 4, 9) + column(position.theta, 2, 13) +
                column(position.phi, 2, 11) + column(omega.getChargeFactor(atom), 4, 10) +
                column(omega.getAlpha(atom) / cm3PerCubicAngstrom, 4, 13) + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

QString omegaTable(const LanqorOmega &omega)
{
    QString text = tr("Intensity parameters Omega(lambda) / 1e-20 cm^2: total, by forced electric\n"
                      "dipole (ED) alone and by dynamic coupling (DC) alone\n\n") +
                   tr("  lambda      Omega         ED         DC\n");
    for (const int lambda : {2, 4, 6})
        text += QString::number(lambda).rightJustified(8) +
                column(omega.getOmega(lambda) / omegaUnitCm2, 4, 11) +
                column(omega.getOmegaED(lambda) / omegaUnitCm2, 4, 11) +
                column(omega.getOmegaDC(lambda) / omegaUnitCm2, 4, 11) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

/// What the command line asks of the report.
struct ReportRequest
{
    bool isWanted = false;
    QString fileName; ///< empty: standard output
    OmegaPrintingOptions options;
    QString ligandFile;
    QStringList ligands;
};

ReportRequest readReportRequest(const cli::OptionReader &options)
{
    ReportRequest request;
    request.ligandFile = options.text("ligands");
    request.fileName = options.text("report");
    request.isWanted =
        options.isSet("print") || !request.fileName.isEmpty() || !request.ligandFile.isEmpty();
    request.options =
        cli::sectionsOf(options.isSet("print") ? options.text("print") : cli::mainSections());
    if (!request.ligandFile.isEmpty() && !options.isSet("print"))
        request.options.printAradPartition = true;
    if (request.ligandFile.isEmpty())
        return request;
    QFile file(request.ligandFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        options.refuse(QStringLiteral("%1: %2").arg(request.ligandFile, file.errorString()));
    constexpr qint64 maximumSize = 1 << 20;
    request.ligands = QString::fromUtf8(file.read(maximumSize)).split(QLatin1Char('\n'));
    return request;
}

void addOptions(cli::OptionReader &options)
{
    options.setDescription(
        tr("Judd-Ofelt intensity parameters of a Eu3+ complex by the simple overlap model.\n\n"
           "FILE is a MOPAC output (.out) or a structure (.mop, .zmt, .xyz, .mol2) with Eu as\n"
           "atom 1 and the N coordinated atoms as atoms 2 to N+1. Every coordinated atom needs a\n"
           "charge factor g (dimensionless) and a polarisability alpha (cubic Angstrom), given by\n"
           "element or by atom number; an atom's own value beats that of its element.\n\n"
           "Example:\n"
           "  lanqor omega complex.out --g O=0.9,N=1.2,5=0.7 --alpha O=3.1,N=4.0 --n 1.5"));
    options.addArgument(QStringLiteral("FILE"), tr("MOPAC output or structure file"));
    options.addOptions({
        {QStringLiteral("g"), tr("Charge factors, dimensionless, e.g. O=0.9,N=1.2,5=0.7."),
         tr("list")},
        {QStringLiteral("alpha"), tr("Polarisabilities, cubic Angstrom, e.g. O=3.1,N=4.0."),
         tr("list")},
        cli::refractiveIndexOption(tr("Refractive index of the medium, for the radiative rates.")),
        cli::coordinationOption(),
        {QStringLiteral("print"),
         tr("Print the report with these sections, separated by commas: all, %1.")
             .arg(cli::sectionNames()),
         tr("sections")},
        {QStringLiteral("ligands"),
         tr("Groups of atoms for the partition of the radiative rate: one group on each line, a "
            "name, then atom numbers (\"acac 2 3\"); # starts a comment."),
         tr("file")},
        {QStringLiteral("report"),
         tr("Write the report to this file instead of standard output; without --print it has "
            "the main sections."),
         tr("file")},
    });
}

/// Prints the summary and makes the report of a finished calculation.
void show(LanqorOmega &omega, LanqorInputData &geometry, double index, const ReportRequest &request)
{
    LanqorInputData *shared = &geometry;
    LanqorAradPartition partition(nullptr, shared, omega.getCoordNumber(), index);
    double electricDipoleRate = 0.0;
    for (const int lambda : {2, 4, 6})
        electricDipoleRate += partition.calcConstArad(lambda) * omega.getOmega(lambda);
    const QString summary =
        sphereTable(geometry, omega) + omegaTable(omega) +
        tr("Forced electric dipole rate Arad(ED) of 5D0 at refractive index %1: %2 s^-1\n")
            .arg(index)
            .arg(electricDipoleRate, 0, 'f', 2);
    if (!request.isWanted) {
        cli::print(summary);
        return;
    }
    if (!request.ligands.isEmpty() && !partition.setLigandsVector(request.ligands))
        throw cli::Failure{
            QStringLiteral("%1: %2").arg(request.ligandFile, partition.getLastError())};
    omega.setRefractiveIndex(index);
    omega.setOmegaPrintingOptions(request.options);
    omega.setLigandAtomsByLigandVector(request.ligands);
    const QString report = omega.createOutFile(request.fileName);
    if (report.isEmpty())
        cli::failOf(omega);
    cli::print(request.fileName.isEmpty() ? report : summary);
}

} // namespace

int omegaCommand(const QStringList &arguments)
{
    cli::OptionReader options("omega");
    addOptions(options);
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("omega needs one file; see \"lanqor omega --help\"")).first();
    const double index = cli::readRefractiveIndex(options);
    const ReportRequest request = readReportRequest(options);

    LanqorInputData geometry(nullptr, fileName);
    cli::showMessages(geometry);
    const int coordNumber = cli::readSphere(options, geometry, fileName);
    LanqorOmega omega(nullptr, 0, fileName, fileName);
    if (!omega.getLastError().isEmpty())
        cli::failOf(omega);
    cli::calcOmega(omega, geometry, coordNumber, options.text("g"), options.text("alpha"));
    show(omega, geometry, index, request);
    return cli::success;
}
