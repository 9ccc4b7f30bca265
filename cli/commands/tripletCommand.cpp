#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/showResults.h"
#include "options/statePrograms.h"
#include "text.h"

#include <LanqorEngine/LanqorDonorTriplet.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorUncertainty.h>
#include <LanqorEngine/LanqorXtbRun.h>

#include <QFileInfo>

#include <cmath>

namespace {

using cli::tr;

const char *const description =
    "Chooses the triplet energy of the ligand that feeds the ion: the measured one\n"
    "(--measured), else that of a pair of MOPAC INDO outputs plus 1220 cm^-1, unless the\n"
    "ligand has a conjugated five-membered ring, else the adiabatic one of two GFN1\n"
    "optimisations by xtb (--s0, --t1), which stands beside as a second opinion:\n"
    "  xtb geom.xyz --chrg Q --gfn 1 --opt > s0.out         (xtbopt.xyz, charges)\n"
    "  xtb s0.xyz --chrg Q --gfn 1 --opt --uhf 2 > t1.out   (likewise)\n\n"
    "Beside s0.out the geometry s0.xyz (xtbopt.xyz of the run) and the charges\n"
    "s0.charges (charges of the run) are read where they are there; beside t1.out\n"
    "likewise. Without the charges a false charge transfer cannot be told, and the\n"
    "triplet of GFN1 is refused.\n\n"
    "Example: lanqor triplet --s0 s0.out --t1 t1.out --indo singlets.out,triplets.out";

/// A run of xtb with the files of its geometry and charges that stand beside it.
XtbRunResults readRun(const QString &outputFile)
{
    const QFileInfo info(outputFile);
    const auto beside = [&](const char *suffix) {
        const QString name =
            info.path() + QLatin1Char('/') + info.completeBaseName() + QLatin1String(suffix);
        return QFileInfo::exists(name) ? name : QString();
    };
    const QString geometry = beside(".xyz");
    const QString charges = beside(".charges");
    LanqorXtbRun run(nullptr, outputFile);
    if (!run.readOutput(geometry, charges))
        cli::failOf(run);
    return run.getResults();
}

void takeMeasured(const cli::OptionReader &options, LanqorDonorTriplet &triplet)
{
    const QString text = options.text("measured");
    UncertainInput input;
    bool isNumber = false;
    input.value = text.toDouble(&isNumber);
    if (!isNumber && !LanqorUncertainty::readText(text, input))
        options.refuse(tr("--measured needs an energy in cm^-1, with its standard deviation as "
                          "\"20500+-300\"; it is \"%1\"")
                           .arg(text));
    const bool isRange = input.kind == UncertaintyKind::Uniform;
    triplet.setMeasured(isRange ? 0.5 * (input.low + input.high) : input.value,
                        isRange ? (input.high - input.low) / std::sqrt(12.0)
                                : input.standardDeviation);
}

TripletMethod methodNamed(const cli::OptionReader &options)
{
    const QString name = options.text("method");
    if (name.isEmpty())
        return TripletMethod::None;
    if (name == QLatin1String("measured"))
        return TripletMethod::Measured;
    if (name == QLatin1String("indo"))
        return TripletMethod::States;
    if (name != QLatin1String("gfn1"))
        options.refuse(tr("--method is measured, indo or gfn1, not \"%1\"").arg(name));
    return TripletMethod::Gfn1;
}

void takeStates(const QString &text, LanqorInputData &output, LanqorDonorTriplet &triplet)
{
    const QStringList files = cli::stateFiles(text);
    const StateProgram *program = cli::stateProgramOf(output);
    if (!program)
        throw cli::Failure{cli::unknownProgram(files.first())};
    cli::readPair(output, *program, files);
    LanqorRL states(nullptr, &output);
    cli::showWarnings(states);
    if (!states.calcRL(program->type))
        cli::failOf(states);
    triplet.setStates(states);
}

void addOptions(cli::OptionReader &options)
{
    const QString file = QStringLiteral("file");
    options.addOptions(
        {{QStringLiteral("s0"), tr("output of xtb for the ground state of the complex"), file},
         {QStringLiteral("t1"), tr("output of xtb for its triplet"), file},
         {QStringLiteral("model-s0"),
          tr("the same of a model of the donor ligand (it alone when neutral, three of an anion "
             "and a water with the ion), in place of the pair of the complex"),
          file},
         {QStringLiteral("model-t1"), tr("its triplet"), file},
         {QStringLiteral("indo"),
          tr("pair of MOPAC INDO outputs \"singlets.out,triplets.out\", or the one of the "
             "triplets; an output of ORCA, Gaussian or ZINDO, which gets no shift, is taken as "
             "well"),
          QStringLiteral("files")},
         {QStringLiteral("measured"),
          tr("measured triplet energy in cm^-1, as 20500 or 20500+-300"), tr("energy")},
         {QStringLiteral("ligand"),
          tr("formula (C12H8N2) or name of the donor ligand; the one with the lowest local "
             "triplet when not given"),
          tr("ligand")},
         {QStringLiteral("method"),
          tr("take measured, indo or gfn1 in place of the first that is available"), tr("name")}});
    options.setSuffixes("indo", cli::stateSuffixes());
}

} // namespace

int tripletCommand(const QStringList &arguments)
{
    cli::OptionReader options("triplet");
    options.setDescription(tr(description));
    addOptions(options);
    options.addResultOptions();
    options.parse(arguments);
    options.files(0, tr("the files are named by options; see \"lanqor triplet --help\""));
    if (options.isSet("t1") && !options.isSet("s0"))
        options.refuse(tr("--t1 needs --s0, the run of the ground state"));
    if (options.isSet("model-s0") != options.isSet("model-t1"))
        options.refuse(tr("--model-s0 and --model-t1 go together"));

    LanqorDonorTriplet triplet;
    cli::showMessages(triplet);
    triplet.setChoice(methodNamed(options));
    triplet.setLigand(options.text("ligand"));
    if (options.isSet("measured"))
        takeMeasured(options, triplet);
    const QStringList files =
        options.isSet("indo") ? cli::stateFiles(options.text("indo")) : QStringList();
    cli::checkStateFiles(files);
    LanqorInputData output(nullptr, files.value(0));
    output.setKeepFileOpen(true);
    if (!files.isEmpty())
        takeStates(options.text("indo"), output, triplet);
    if (options.isSet("s0"))
        triplet.setGroundState(readRun(options.text("s0")));
    if (options.isSet("t1"))
        triplet.setTriplet(readRun(options.text("t1")));
    if (options.isSet("model-s0")) {
        const XtbRunResults groundState = readRun(options.text("model-s0"));
        triplet.setModel(groundState, readRun(options.text("model-t1")));
    }
    if (!options.isSet("indo") && !options.isSet("s0") && !options.isSet("model-s0") &&
        !options.isSet("measured"))
        options.refuse(tr("nothing to choose from: give --indo, --s0 with --t1, or --measured"));
    if (!triplet.calculate())
        cli::failOf(triplet);
    const DonorTripletResults results = triplet.getResults();
    for (const QString &warning : results.warnings)
        cli::warn(warning);
    cli::showResults(options, LanqorDonorTriplet::makeText(results),
                     LanqorDonorTriplet::makeTables(results));
    return cli::success;
}
