#include "options/yieldOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/kineticOptions.h"
#include "options/plausibility.h"
#include "options/statePrograms.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorTransferChannels.h>
#include <LanqorEngine/SpectroscopicResults.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <functional>

namespace yieldOptions {

using cli::OptionReader;
using cli::tr;

namespace {

constexpr int maximumState = 100000;

QString option(const char *name)
{
    return QLatin1String(name);
}

double number(const OptionReader &options, const char *name, double minimum, double maximum)
{
    return options.number(
        name, [=](double value) { return value >= minimum && value <= maximum; },
        tr("a number from %1 to %2, not \"%3\"")
            .arg(QString::number(minimum), QString::number(maximum), options.text(name)));
}

/// A whole number within [minimum, maximum]; 0 when there is none, nor a default.
int wholeNumber(const OptionReader &options, const char *name, int minimum, int maximum)
{
    if (options.text(name).trimmed().isEmpty() && !options.isSet(name))
        return 0;
    return options.wholeNumber(
        name, minimum, maximum,
        tr("a whole number from %1 to %2, not \"%3\"")
            .arg(QString::number(minimum), QString::number(maximum), options.text(name).trimmed()));
}

/// Three values of Omega, lambda = 2, 4, 6.
QVector<double> omegas(const OptionReader &options, const char *name)
{
    const QVector<double> values = options.numbers(name);
    const bool areAllowed = std::all_of(values.begin(), values.end(), [](double value) {
        return value >= 0.0 && std::isfinite(value);
    });
    if (values.size() != 3 || !areAllowed)
        options.refuse(tr("--%1 needs the three values for lambda = 2, 4, 6 in units of 1e-20 "
                          "cm^2, none below 0, e.g. 12.5,3.4,0.2")
                           .arg(option(name)));
    for (const double value : values) {
        const QString doubt = cli::doubtOfOmega(name, value);
        if (!doubt.isEmpty())
            cli::warn(doubt);
    }
    return values;
}

/// The channels that can be switched, of one donor ("S", "T") or of both, and of one mechanism.
QStringList channelNames(const QString &donor,
                         const std::function<bool(const TransferChannel &)> &isWanted)
{
    QStringList names;
    for (const TransferChannel &channel : LanqorTransferChannels::getChannels())
        if (channel.flag && channel.name.startsWith(donor) && isWanted(channel))
            names.append(channel.name);
    return names;
}

QStringList channelNames(const QString &donor = QString())
{
    return channelNames(donor, [](const TransferChannel &) { return true; });
}

QString channelHelp()
{
    const auto isExchange = [](const TransferChannel &channel) {
        return channel.mechanism == TransferMechanism::Exchange;
    };
    const auto isMultipolar = [&](const TransferChannel &channel) { return !isExchange(channel); };
    const QString singlet = QStringLiteral("S");
    const QString between = QStringLiteral(", ");
    const QStringList triplets = channelNames(QStringLiteral("T"));
    return tr("Open channels of transfer, separated by commas: %1 (multipolar), %2 (exchange) from "
              "the singlet, %3 to %4 from the triplet, all or none.")
        .arg(channelNames(singlet, isMultipolar).join(between),
             channelNames(singlet, isExchange).join(between), triplets.first(), triplets.last());
}

/// The channels that are open unless others are asked for.
QString usualChannels(bool ofTwoTriplets)
{
    const auto isOpen = [=](const TransferChannel &channel) {
        return LanqorTransferChannels::isOpen(channel, EnergyTransferChannels(), ofTwoTriplets);
    };
    return channelNames(QString(), isOpen).join(QLatin1Char(','));
}

void openChannel(const OptionReader &options, const QString &name, EnergyTransferChannels &open)
{
    bool isKnown = name == QLatin1String("none");
    for (const TransferChannel &channel : LanqorTransferChannels::getChannels()) {
        if (!channel.flag ||
            (name != QLatin1String("all") && name.compare(channel.name, Qt::CaseInsensitive) != 0))
            continue;
        open.*(channel.flag) = true;
        isKnown = true;
    }
    if (!isKnown)
        options.refuse(tr("--channels does not know \"%1\"; there are %2, all and none")
                           .arg(name, channelNames().join(QStringLiteral(", "))));
}

EnergyTransferChannels channelList(const OptionReader &options)
{
    options.setInForce("channels", usualChannels(options.isSet("two-triplets")));
    if (!options.isSet("channels"))
        return EnergyTransferChannels();
    EnergyTransferChannels open = {false, false, false, false, false,
                                   false, false, false, false, false};
    for (const QString &entry : options.list("channels"))
        openChannel(options, entry, open);
    return open;
}

/// The program that wrote the excited states; found out when it is not named.
const StateProgram &programOf(const OptionReader &options, const LanqorInputData &excitedStates,
                              const QStringList &files)
{
    if (options.isSet("program")) {
        const StateProgram *program = cli::stateProgramNamed(options.text("program"));
        if (!program)
            options.refuse(tr("--program needs to be %1").arg(cli::programNames()));
        return *program;
    }
    for (const QString &file : files)
        if (!QFileInfo::exists(file))
            options.refuse(tr("--excited %1 does not exist; an output of ORCA, Gaussian or ZINDO "
                              "is needed, or a pair of MOPAC INDO outputs.")
                               .arg(file));
    const StateProgram *program = cli::stateProgramOf(excitedStates);
    if (!program)
        options.refuse(cli::unknownProgram(files.first()));
    return *program;
}

void refuseIfSet(const OptionReader &options, std::initializer_list<const char *> names,
                 const QString &why)
{
    for (const char *name : names)
        if (options.isSet(name))
            options.refuse(tr("--%1 %2").arg(option(name), why));
}

void addOptions(OptionReader &options)
{
    options.setDescription(tr(
        "Emission quantum yield of a Eu3+ complex: radiative and non-radiative rates of 5D0,\n"
        "rates of energy transfer from the ligands, populations, yield.\n\n"
        "The donor states come from an excited-state calculation of the ligands in the geometry\n"
        "of the complex (--excited, --program), or are given: energies in cm^-1 and distances RL\n"
        "from the Eu3+ ion in Angstrom. A value that is given takes the place of the calculated\n"
        "one: a measured triplet goes with a calculated RL. An ORCA output of the ligands alone "
        "needs beside it a\n"
        "file of the same name that ends in .pointcharge and holds the place of the ion.\n\n"
        "Intensity parameters come from the report of a fit or of \"lanqor omega\"\n"
        "(--omega-report), from charge factors and polarisabilities of the coordinated atoms (--g\n"
        "and --alpha), or are given (--omega and --omega-ed, 1e-20 cm^2).\n\n"
        "Examples:\n"
        "  lanqor yield complex.out --excited ligand.out --program orca \\\n"
        "      --omega-report omega.txt --lifetime 0.45\n"
        "  lanqor yield --omega 33,4.6,0 --omega-ed 0.3,0.2,0 --lifetime 0.26 \\\n"
        "      --singlet-energy 28000 --triplet-energy 20500 --rl-singlet 4.5 --rl-triplet 5.1"));
    options.addArgument(QStringLiteral("COMPLEX.out"),
                        tr("MOPAC output of the complex, Eu as atom 1; not needed when Omega is "
                           "given."),
                        QStringLiteral("[COMPLEX.out]"), cli::structureSuffixes());

    const QString states = tr("state");
    const QString wavenumber = tr("cm^-1");
    const QString angstrom = tr("Angstrom");
    options.addOptions({
        {option("excited"),
         tr("Output of the excited-state calculation, or \"singlets.out,triplets.out\" of MOPAC "
            "INDO."),
         tr("file")},
        {option("program"),
         tr("Program that wrote it: %1; found out by default.").arg(cli::programNames()),
         tr("name")},
        {option("omega-report"), tr("Report that holds charge factors and polarisabilities."),
         tr("file")},
        {option("g"), tr("Charge factors, dimensionless, by element or atom: O=0.9,N=1.2,5=0.7."),
         tr("list")},
        {option("alpha"), tr("Polarisabilities, cubic Angstrom, likewise: O=3.1,N=4.0."),
         tr("list")},
        cli::coordinationOption(),
        {option("omega"), tr("Omega 2, 4 and 6 in 1e-20 cm^2."), tr("O2,O4,O6")},
        {option("omega-ed"),
         tr("Their forced electric dipole part, which drives dipole-dipole transfer."),
         tr("O2,O4,O6")},
        {option("singlet"), tr("Number of the donor singlet (1-based); the lowest by default."),
         states},
        {option("triplet"), tr("Number of the donor triplet (1-based); the lowest by default."),
         states},
        {option("singlet-energy"), tr("Energy of the donor singlet."), wavenumber},
        {option("triplet-energy"),
         tr("Energy of the donor triplet; of two of T, see "
            "--two-triplets."),
         wavenumber},
        {option("rl-singlet"), tr("Distance RL of the singlet from the ion."), angstrom},
        {option("rl-triplet"), tr("Distance RL of the triplet from the ion."), angstrom},
        {option("ta-energy"), tr("Energy of Ta, the other one of two triplets."), wavenumber},
        {option("rl-ta"), tr("Distance RL of Ta from the ion."), angstrom},
        {option("t1-shift"), tr("Added to the energies of the donor triplets, e.g. -500."),
         wavenumber},
        {option("min-distance"),
         tr("Distance of the ligand atom nearest to the ion, for exchange models 0 and 1; by "
            "default that of --excited, or of COMPLEX.out where the states are given."),
         angstrom},
        cli::refractiveIndexOption(tr("Refractive index of the medium.")),
        {option("lifetime"),
         tr("Measured lifetime of 5D0 in ms. Without it the non-radiative rate is an estimate from "
            "the radiative rate."),
         tr("ms")},
        {option("channels"), channelHelp(), tr("list"), usualChannels(false)},
        {option("et-model"),
         tr("Exchange model: 2 with the shielding of the 4f shell; 0 and 1 through the "
            "overlap of 4f shell and ligand, squared or to the fourth power."),
         tr("0|1|2"), QStringLiteral("2")},
        {option("overlap-exponent"), tr("Exponent of the overlap of models 0 and 1 with distance."),
         tr("number"), QStringLiteral("3.5")},
        {option("two-triplets"),
         tr("Two donor triplets: the chosen one (Ta) feeds 5D4, number 2 (T) feeds 5D1 and 5D0.")},
        {option("band-half-width"),
         tr("Half width of the ligands' bands, which the transfer rates need."), wavenumber,
         QString::number(usualBandHalfWidth)},
        {option("force"),
         tr("Compute also when --excited holds other atoms than the complex, ions aside.")},
        {option("explain"),
         tr("Print the road from Omega to the yield in sentences with its numbers, and what other "
            "triplets and channels would give.")},
        {option("report"), tr("Write the full report to this file."), tr("file")},
    });
    options.setSuffixes("excited", cli::stateSuffixes());
}

/// A value in place of that of a state, or 0.
double given(const OptionReader &options, const char *name, double minimum, double maximum)
{
    return options.isSet(name) ? number(options, name, minimum, maximum) : 0.0;
}

double givenEnergy(const OptionReader &options, const char *name)
{
    return given(options, name, lowestEnergy, 200000.0);
}

double givenDistance(const OptionReader &options, const char *name)
{
    return given(options, name, 0.5, 1000.0);
}

/// What is given of the donor states, and the channels between them and the ion.
void readDonors(const OptionReader &options, Request &request)
{
    constexpr double widestShift = 20000.0;
    request.singletEnergy = givenEnergy(options, "singlet-energy");
    request.tripletEnergy = givenEnergy(options, "triplet-energy");
    request.rlSinglet = givenDistance(options, "rl-singlet");
    request.rlTriplet = givenDistance(options, "rl-triplet");
    request.twoTriplets = options.isSet("two-triplets");
    if (!request.twoTriplets)
        refuseIfSet(options, {"ta-energy", "rl-ta"}, tr("needs --two-triplets"));
    request.firstTripletEnergy = givenEnergy(options, "ta-energy");
    request.rlFirstTriplet = givenDistance(options, "rl-ta");
    request.tripletShift = given(options, "t1-shift", -widestShift, widestShift);
    request.minDistance = given(options, "min-distance", 0.5, 20.0);
    request.openChannels = channelList(options);
    request.areChannelsGiven = options.isSet("channels");
    request.bandHalfWidth = number(options, "band-half-width", 1.0, 100000.0);
    request.kinetics = cli::readKinetics(options, request.twoTriplets);
}

/// A number of a state that nothing is taken of.
void refuseIdleNumbers(const OptionReader &options, const Request &request)
{
    const QString idle = tr("does not go with both energy and RL of that state, of which nothing "
                            "else would be read");
    if (request.singletEnergy > 0.0 && request.rlSinglet > 0.0)
        refuseIfSet(options, {"singlet"}, idle);
    const bool isGiven = request.twoTriplets
                             ? request.firstTripletEnergy > 0.0 && request.rlFirstTriplet > 0.0
                             : request.tripletEnergy > 0.0 && request.rlTriplet > 0.0;
    if (isGiven)
        refuseIfSet(options, {"triplet"}, idle);
}

/// The options of donor states read from an output.
void readStates(const OptionReader &options, Request &request)
{
    refuseIdleNumbers(options, request);
    const QStringList files = cli::stateFiles(options.text("excited"));
    request.excitedStates = std::make_unique<LanqorInputData>(nullptr, files.first());
    request.excitedStates->setKeepFileOpen(true);
    const StateProgram &program = programOf(options, *request.excitedStates, files);
    request.programType = program.type;
    cli::readPair(*request.excitedStates, program, files);
    request.singlet = wholeNumber(options, "singlet", 1, maximumState);
    request.triplet = wholeNumber(options, "triplet", 1, maximumState);
    request.isForced = options.isSet("force");
}

/// Without an output all of the donor states are given.
void checkGivenStates(const OptionReader &options, const Request &request)
{
    refuseIfSet(options, {"program", "singlet", "triplet", "force"}, tr("needs --excited"));
    for (const char *name : {"singlet-energy", "triplet-energy", "rl-singlet", "rl-triplet"})
        if (!options.isSet(name))
            options.refuse(
                tr("donor states: give --excited with an output of their calculation, or "
                   "all of --singlet-energy, --triplet-energy, --rl-singlet and "
                   "--rl-triplet"));
    if (request.twoTriplets && (request.firstTripletEnergy == 0.0 || request.rlFirstTriplet == 0.0))
        options.refuse(tr("--two-triplets without --excited needs --ta-energy and --rl-ta"));
}

/// The one source of intensity parameters.
void readOmega(const OptionReader &options, Request &request)
{
    const bool isByReport = options.isSet("omega-report");
    const bool isByFactors = options.isSet("g") && options.isSet("alpha");
    const bool isGiven = options.isSet("omega") && options.isSet("omega-ed");
    if (!isByReport && !isByFactors && !isGiven) {
        options.refuse(tr("intensity parameters: give --omega-report, --g and --alpha, or --omega "
                          "and --omega-ed (0,0,0 to leave dipole-dipole transfer out)"));
    }
    if (!isGiven && request.complexFile.isEmpty())
        options.refuse(tr("name the MOPAC output of the complex"));
    const QString alone = tr("does not go with another source of intensity parameters");
    if (!isByFactors)
        refuseIfSet(options, {"coordination"}, tr("needs --g and --alpha"));
    if (isByReport) {
        refuseIfSet(options, {"g", "alpha", "omega", "omega-ed"}, alone);
        request.omegaReport = options.text("omega-report");
        cli::requireFile(QStringLiteral("--omega-report "), request.omegaReport,
                         tr("a report of \"lanqor omega\" or of a fit"));
    } else if (isByFactors) {
        refuseIfSet(options, {"omega", "omega-ed"}, alone);
        request.g = options.text("g");
        request.alpha = options.text("alpha");
    } else {
        refuseIfSet(options, {"g", "alpha"}, alone);
        request.omega = omegas(options, "omega");
        request.omegaEd = omegas(options, "omega-ed");
    }
}

} // namespace

bool Request::isOfDefaultChannels() const
{
    return !excitedStates && !areChannelsGiven && !twoTriplets;
}

bool Request::needsMinDistance() const
{
    return etModel != 2;
}

QStringList Request::inputFiles() const
{
    QStringList files = {complexFile, omegaReport};
    if (excitedStates)
        files << excitedStates->getFileName() << excitedStates->getTripletFileName();
    files.removeAll(QString());
    return files;
}

Request read(OptionReader &options, const QStringList &arguments)
{
    addOptions(options);
    cli::addKineticOptions(options);
    options.addOption(
        {QStringLiteral("plot"),
         tr("Draw levels and transfer, or the scan if there is one (.svg, .png or .pdf)."),
         tr("picture")});
    options.addOption({QStringLiteral("plot-photons"),
                       tr("Draw where the absorbed photons go (.svg, .png or .pdf)."),
                       tr("picture")});
    options.addResultOptions();
    options.parse(arguments);
    options.setHint(tr("\nSee \"lanqor yield --help\"."));
    Request request;
    if (options.files().size() > 1)
        options.refuse(tr("yield takes one file besides those of its options"));
    request.complexFile = options.files().value(0);
    readDonors(options, request);
    if (options.isSet("excited"))
        readStates(options, request);
    else
        checkGivenStates(options, request);
    readOmega(options, request);
    request.refractiveIndex = cli::readRefractiveIndex(options);
    if (options.isSet("lifetime"))
        request.lifetimeMs = number(options, "lifetime", 1e-6, 1e6);
    cli::warnOfLifetime(request.lifetimeMs);
    request.etModel = wholeNumber(options, "et-model", 0, 2);
    if (request.needsMinDistance() && !request.excitedStates && request.minDistance == 0.0 &&
        request.complexFile.isEmpty())
        options.refuse(tr("--et-model %1 needs the distance of the ligand atom nearest to the ion: "
                          "give --min-distance or name the file of the complex; --et-model 2 works "
                          "without it")
                           .arg(request.etModel));
    request.overlapExponent = number(options, "overlap-exponent", 0.0, 100.0);
    request.isExplained = options.isSet("explain");
    request.reportFile = options.text("report");
    request.plotFile = plots::readOption(options);
    request.photonPlotFile = plots::readOption(options, "plot-photons");
    return request;
}

void checkResults(const SpectroscopicResults &results)
{
    constexpr double highest = 100.0 * (1.0 + 1e-9); // per cent, beyond rounding
    if (results.quantumEfficiency > highest || results.quantumYield > highest)
        throw cli::Failure{tr("a quantum efficiency of %1 % and a yield of %2 % cannot be")
                               .arg(cli::textOfYield(results.quantumEfficiency),
                                    cli::textOfYield(results.quantumYield))};
}

} // namespace yieldOptions
