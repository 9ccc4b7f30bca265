#include "Command.h"
#include "commands/commands.h"
#include "options/chargeFactorOptions.h"
#include "options/complexOptions.h"

#include <LanqorEngine/LanqorAradPartition.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorOmega.h>

#include <QCoreApplication>
#include <QFile>

namespace {

constexpr double cm3PerCubicAngstrom = 1.0e-24;
constexpr double omegaUnitCm2 = 1.0e-20;

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString column(double value, int decimals, int width)
{
    return QString::number(value, 'f', decimals).rightJustified(width);
}

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

/// Reads the options of the report; false with the reason in @p error.
bool readReportRequest(const QCommandLineParser &parser, ReportRequest &request, QString &error)
{
    request.ligandFile = parser.value(QStringLiteral("ligands"));
    request.fileName = parser.value(QStringLiteral("report"));
    request.isWanted = parser.isSet(QStringLiteral("print")) || !request.fileName.isEmpty() ||
                       !request.ligandFile.isEmpty();
    const QString standard =
        request.ligandFile.isEmpty()
            ? QStringLiteral("coordinates,charge-factors,omega,omega-dc,omega-ed,rates")
            : QStringLiteral("coordinates,charge-factors,omega,omega-dc,omega-ed,rates,partition");
    const QString chosen = parser.value(QStringLiteral("print"));
    if (!cli::chooseSections(parser.isSet(QStringLiteral("print")) ? chosen : standard,
                             request.options, error))
        return false;
    if (request.ligandFile.isEmpty())
        return true;
    QFile file(request.ligandFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        error = QStringLiteral("%1: %2").arg(request.ligandFile, file.errorString());
        return false;
    }
    constexpr qint64 maximumSize = 1 << 20;
    request.ligands = QString::fromUtf8(file.read(maximumSize)).split(QLatin1Char('\n'));
    return true;
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        tr("Judd-Ofelt intensity parameters of a Eu3+ complex by the simple overlap model.\n\n"
           "FILE is a MOPAC output (.out) or a structure (.mop, .zmt, .xyz, .mol2) with Eu as\n"
           "atom 1 and the N coordinated atoms as atoms 2 to N+1. Every coordinated atom needs a\n"
           "charge factor g (dimensionless) and a polarisability alpha (cubic Angstrom), given by\n"
           "element or by atom number; an atom's own value beats that of its element.\n\n"
           "Example:\n"
           "  lanqor omega complex.out --g O=0.9,N=1.2,5=0.7 --alpha O=3.1,N=4.0 --n 1.5"));
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("MOPAC output or structure file"));
    parser.addOptions({
        {QStringLiteral("g"), tr("Charge factors, dimensionless, e.g. O=0.9,N=1.2,5=0.7."),
         tr("list")},
        {QStringLiteral("alpha"), tr("Polarisabilities, cubic Angstrom, e.g. O=3.1,N=4.0."),
         tr("list")},
        {QStringLiteral("n"), tr("Refractive index of the medium, for the radiative rates."),
         tr("index"), QStringLiteral("1.5")},
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

/// Prints the summary and makes the report of a finished calculation; returns the exit status.
int show(LanqorOmega &omega, LanqorInputData &geometry, double index, const ReportRequest &request)
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
        return cli::success;
    }
    if (!request.ligands.isEmpty() && !partition.setLigandsVector(request.ligands))
        return cli::fail(
            QStringLiteral("%1: %2").arg(request.ligandFile, partition.getLastError()));
    omega.setRefractiveIndex(index);
    omega.setOmegaPrintingOptions(request.options);
    omega.setLigandAtomsByLigandVector(request.ligands);
    const QString report = omega.createOutFile(request.fileName);
    if (report.isEmpty())
        return cli::fail(omega.getLastError());
    cli::print(request.fileName.isEmpty() ? report : summary);
    return cli::success;
}

int calculate(const QString &fileName, const QCommandLineParser &parser, double index,
              const ReportRequest &request)
{
    QString error;
    LanqorInputData geometry(nullptr, fileName);
    cli::showMessages(geometry);
    int coordNumber = 0;
    if (!cli::readSphere(parser, fileName, geometry, coordNumber, error))
        return cli::fail(error);
    LanqorOmega omega(nullptr, 0, fileName, fileName);
    if (!omega.getLastError().isEmpty())
        return cli::fail(omega.getLastError());
    const int status =
        cli::calcOmega(omega, geometry, coordNumber, parser.value(QStringLiteral("g")),
                       parser.value(QStringLiteral("alpha")), error);
    if (status != cli::success)
        return cli::fail(error, status);
    return show(omega, geometry, index, request);
}

} // namespace

int omegaCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    cli::parse(parser, "omega", arguments);
    if (parser.positionalArguments().size() != 1)
        return cli::fail(tr("omega needs one file; see \"lanqor omega --help\""), cli::usageError);
    double index = 0.0;
    QString error;
    if (!cli::readRefractiveIndex(parser, index, error))
        return cli::fail(error, cli::usageError);
    ReportRequest request;
    if (!readReportRequest(parser, request, error))
        return cli::fail(error, cli::usageError);
    return calculate(parser.positionalArguments().first(), parser, index, request);
}
