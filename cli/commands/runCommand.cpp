#include "Command.h"
#include "commands/commands.h"
#include "commands/fitProgress.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "options/uncertainOptions.h"
#include "run/Run.h"
#include "run/RunSettings.h"
#include "run/runOutputs.h"
#include "text.h"

#include <LanqorEngine/LanqorYieldScan.h>

#include <QDir>

namespace {

using cli::tr;

QVector<cli::UncertainOption> uncertainOptions()
{
    QVector<cli::UncertainOption> options = cli::uncertainChargeFactors()
                                            << cli::uncertainRefractiveIndex();
    const auto add = [&options](const char *name, const char *unit, UncertaintyKind kind) {
        const QString key = QLatin1String(name);
        options.append({key,
                        QLatin1String(unit),
                        kind,
                        LanqorYieldScan::leastOf(key),
                        LanqorYieldScan::largestOf(key),
                        {}});
    };
    add("lifetime", "ms", UncertaintyKind::LogNormal);
    add("triplet-energy", "cm^-1", UncertaintyKind::Normal);
    return options;
}

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "From the structure of a Eu3+ complex to its emission quantum yield, with the free\n"
        "programs MOPAC and xtb (Debian: apt-get install mopac xtb) for geometry and donor\n"
        "states:\n\n"
        "  lanqor run complex.cif --charge 0 --spectrum emission.csv --lifetime 0.45\n\n"
        "STRUCTURE is a crystal structure (.cif, .pdb), an .xyz, .mol2, .mop, .zmt or .arc file\n"
        "or an output of MOPAC; or a .toml file that says all this (\"lanqor run --example\n"
        "> my.toml\" writes one with explanations).\n\n"
        "The steps, each with a folder below that of the run (--out):\n"
        "  01-structure     the complex, ion first; its charge is checked\n"
        "  02-geometry      optimised by MOPAC (or xtb, or as it is)\n"
        "  03-ground-state  the same by xtb GFN1, where the donor states are calculated\n"
        "  04-triplet       lowest triplet by xtb GFN1, a second opinion\n"
        "  05-states        singlets and triplets by MOPAC INDO: energies, distances RL\n"
        "  06-intensities   Omega(2), (4), (6): from a spectrum, or from measured Omega(2) and\n"
        "                   (4) by a fit of charge factors, or from given charge factors\n"
        "  07-yield         rates, quantum yield, and their intervals\n"
        "Without intensities the run stops after the donor states and tells what is missing.\n\n"
        "The folder gets report.html, report.txt and summary.json, and run.toml, which repeats\n"
        "the run. Steps that are finished are kept when the same run is started again: after\n"
        "Ctrl-C, or with other options, only what these change is done.\n\n"
        "A calculated triplet is known to 500 to 3000 cm^-1: a measured one (--triplet-energy)\n"
        "is worth more than all else that can be given."));
    options.addArgument(QStringLiteral("STRUCTURE"), tr("structure, or .toml file"));
    options.addOption(
        {QStringLiteral("example"), tr("Print a commented .toml file with all settings.")});
}

/// The same command line read twice: with plain values for calculations, and as it is for the
/// file that repeats the run.
QStringList withFile(const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        if (argument.startsWith(QLatin1Char('-')) ||
            !argument.endsWith(QLatin1String(".toml"), Qt::CaseInsensitive))
            continue;
        QStringList all = cli::readRunFile(argument);
        QStringList others = arguments;
        others.removeOne(argument);
        return all + others;
    }
    return arguments;
}

} // namespace

int runCommand(const QStringList &arguments)
{
    cli::OptionReader options("run");
    cli::OptionReader settings("run");
    for (cli::OptionReader *reader : {&options, &settings}) {
        describe(*reader);
        cli::addRunOptions(*reader);
        reader->addResultOptions();
    }
    cli::UncertainOptions uncertain(options, uncertainOptions());
    const cli::UncertainOptions asTyped(settings, uncertainOptions());
    if (arguments.contains(QStringLiteral("--example"))) {
        cli::print(cli::runExample());
        return cli::success;
    }
    const QStringList all = withFile(arguments);
    settings.parse(all);
    options.parse(uncertain.read(all));
    options.setHint(tr("\nSee \"lanqor run --help\"."));
    options.files(1, tr("run needs one structure, or a .toml file that names it"));
    const cli::RunRequest request = cli::readRunRequest(options, uncertain);
    const cli::RunEnd end = cli::performRun(options, settings, uncertain, request);
    cli::showResults(options, cli::runSummary(end.report), makeRunTables(end.report));
    if (end.report.end == RunReport::End::Failed)
        throw cli::Failure{end.report.failure};
    return end.status;
}
