#include "Command.h"
#include "commands/commands.h"
#include "options/atomValues.h"
#include "options/complexOptions.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorStarkLevels.h>

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        tr("Stark levels (cm^-1) of 7F0 to 7F6 of a Eu3+ complex: the splitting of each manifold\n"
           "by the crystal field of the coordinated atoms, by the simple overlap model.\n\n"
           "STRUCTURE is a MOPAC output (.out) or a structure (.mop, .zmt, .xyz, .mol2) with Eu\n"
           "as atom 1 and the N coordinated atoms as atoms 2 to N+1. Every coordinated atom needs\n"
           "a charge factor g (dimensionless), given by element or by atom number; an atom's own\n"
           "value beats that of its element. Levels are given from the barycentre of their\n"
           "manifold: add the free-ion energies to compare them with a spectrum.\n\n"
           "Example:\n"
           "  lanqor stark complex.out --g O=0.6,N=0.9"));
    parser.addPositionalArgument(QStringLiteral("STRUCTURE"), tr("MOPAC output or structure file"));
    parser.addOptions({
        {QStringLiteral("g"), tr("Charge factors, dimensionless, e.g. O=0.6,N=0.9,5=0.4."),
         tr("list")},
        cli::overlapOption(),
        cli::coordinationOption(),
        {QStringLiteral("report"), tr("Write the report to this file as well."), tr("file")},
    });
}

} // namespace

int starkCommand(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    cli::parse(parser, "stark", arguments);
    if (parser.positionalArguments().size() != 1 || !parser.isSet(QStringLiteral("g")))
        return cli::fail(tr("stark needs one structure and --g; see \"lanqor stark --help\""),
                         cli::usageError);
    double ro0 = 0.0;
    QString error;
    if (!cli::readOverlap(parser, ro0, error))
        return cli::fail(error, cli::usageError);

    const QString fileName = parser.positionalArguments().first();
    LanqorInputData geometry(nullptr, fileName);
    cli::showMessages(geometry);
    int coordNumber = 0;
    if (!cli::readSphere(parser, fileName, geometry, coordNumber, error))
        return cli::fail(error);
    cli::AtomValues g(geometry, coordNumber, QStringLiteral("--g"));
    if (!g.read(parser.value(QStringLiteral("g"))))
        return cli::fail(g.error(), cli::usageError);
    QVector<double> chargeFactors = g.values();
    double *chargeFactorArray = chargeFactors.data();

    LanqorStarkLevels levels(fileName, coordNumber);
    levels.setChargeFactors(chargeFactorArray);
    levels.setRO0(ro0);
    levels.calculateStarkLevels();
    const QString report = levels.createOutFile(parser.value(QStringLiteral("report")));
    if (report.isEmpty())
        return cli::fail(levels.getLastError());
    cli::print(report);
    return cli::success;
}
