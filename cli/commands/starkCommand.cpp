#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/atomValues.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorStarkLevels.h>

namespace {

using cli::tr;

void addOptions(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Stark levels (cm^-1) of 7F0 to 7F6 of a Eu3+ complex: the splitting of each manifold\n"
        "by the crystal field of the coordinated atoms, by the simple overlap model.\n\n"
        "STRUCTURE is a MOPAC .out or .arc or a structure (.mop, .zmt, .xyz, .mol2, .cif, .pdb)\n"
        "with Eu as atom 1 and the N coordinated atoms as atoms 2 to N+1; those of a crystal\n"
        "(.cif, .pdb) are brought into that order. Every coordinated atom needs\n"
        "a charge factor g (dimensionless), given by element or by atom number; an atom's own\n"
        "value beats that of its element. Levels are given from the barycentre of their\n"
        "manifold: add the free-ion energies to compare them with a spectrum. The parameters\n"
        "B(k,q) are the coefficients of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q) at the overlap --ro0.\n\n"
        "The reduced elements <7FJ||U(k)||7FJ> have their signs, without which 7F2, 7F4, 7F5 and\n"
        "7F6 are split in a wrong order, 7F6 upside down. Earlier versions took their magnitudes:\n"
        "--magnitudes brings those levels back.\n\n"
        "Example:\n"
        "  lanqor stark complex.out --g O=0.6,N=0.9"));
    options.addArgument(QStringLiteral("STRUCTURE"), tr("MOPAC output or structure file"),
                        QString(), cli::structureSuffixes());
    options.addOptions({
        {QStringLiteral("g"), tr("Charge factors, dimensionless, e.g. O=0.6,N=0.9,5=0.4."),
         tr("list")},
        cli::overlapOption(),
        cli::coordinationOption(),
        cli::magnitudesOption(),
        {QStringLiteral("report"), tr("Write the report to this file as well."), tr("file")},
    });
}

} // namespace

int starkCommand(const QStringList &arguments)
{
    cli::OptionReader options("stark");
    addOptions(options);
    options.addResultOptions();
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("stark needs one structure and --g; see \"lanqor stark --help\""))
            .first();
    const double ro0 = cli::readOverlap(options);

    LanqorInputData geometry(nullptr, fileName);
    geometry.setKeepFileOpen(true);
    cli::showMessages(geometry);
    const int coordNumber = cli::readSphere(options, geometry);
    const QVector<double> chargeFactors =
        cli::readAtomValues(geometry, coordNumber, QStringLiteral("--g"), options.text("g"));

    LanqorStarkLevels levels(&geometry, coordNumber);
    levels.setChargeFactors(chargeFactors);
    levels.setRO0(ro0);
    levels.setReducedElements(cli::readElements(options));
    levels.calculateStarkLevels();
    const QString report = levels.createOutFile(QString());
    if (report.isEmpty())
        throw cli::Failure{levels.getLastError()};
    cli::showResults(options, report, LanqorStarkLevels::makeTables(levels.getResults()));
    if (options.isSet("report"))
        cli::writeFile(options.text("report"), report.toUtf8());
    return cli::success;
}
