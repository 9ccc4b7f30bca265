#include "run/RunRequest.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/emissionOptions.h"
#include "options/plausibility.h"
#include "options/statePrograms.h"
#include "options/uncertainOptions.h"
#include "options/yieldOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorFilesConverter.h>
#include <LanqorEngine/LanqorSolvents.h>

#include <QDir>
#include <QFileInfo>

#include <array>
#include <cmath>

namespace cli {

namespace {

constexpr std::array<const char *, runStepCount> stepNames = {
    "structure", "geometry", "ground-state", "triplet", "states", "intensities", "yield"};

QString absolute(const QString &file)
{
    return file.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(file).absoluteFilePath());
}

/// The place of a text among those that an option takes.
int choiceOf(const OptionReader &reader, const char *option, const QStringList &choices)
{
    const int choice = choices.indexOf(reader.text(option));
    if (choice < 0)
        reader.refuse(tr("--%1 %2 is none of %3")
                          .arg(QLatin1String(option), reader.text(option),
                               choices.join(QStringLiteral(", "))));
    return choice;
}

std::optional<RunStepId> stepOf(const OptionReader &reader, const char *option)
{
    if (!reader.isSet(option))
        return std::nullopt;
    QStringList names;
    for (const char *name : stepNames)
        names.append(QLatin1String(name));
    return RunStepId(choiceOf(reader, option, names));
}

void refuseTogether(const OptionReader &reader, std::initializer_list<const char *> options,
                    const QString &with)
{
    for (const char *option : options)
        if (reader.isSet(option))
            reader.refuse(tr("--%1 does not go with %2: the intensity parameters have one source")
                              .arg(QLatin1String(option), with));
}

void readTriplet(const OptionReader &reader, const UncertainOptions &uncertain, RunRequest &request)
{
    constexpr double highest = 200000.0;
    const auto name = QStringLiteral("triplet-energy");
    if (reader.isSet("t1"))
        choiceOf(reader, "t1",
                 {QStringLiteral("measured"), QStringLiteral("indo"), QStringLiteral("gfn1")});
    request.tripletChoice = reader.text("t1");
    if (reader.isSet("triplet-energy")) {
        UncertainInput triplet;
        for (const int i : uncertain.numbersOf(name))
            triplet = uncertain.numbers().at(i).input;
        triplet.name = name;
        triplet.unit = QStringLiteral("cm^-1");
        triplet.value = reader.number(
            "triplet-energy",
            [](double energy) { return energy >= yieldOptions::lowestEnergy && energy <= highest; },
            tr("the measured energy in cm^-1, as 19500 or 19500+-300"));
        request.measuredTriplet = triplet;
    }
    if (request.tripletChoice == QLatin1String("measured") && !request.measuredTriplet)
        reader.refuse(tr("--t1 measured needs --triplet-energy"));
}

void readStates(const OptionReader &reader, RunRequest &request)
{
    request.donor = reader.text("donor");
    request.donorModel = reader.text("donor-model");
    request.program = reader.text("program");
    if (!reader.isSet("excited")) {
        for (const char *option : {"program", "force"})
            if (reader.isSet(option))
                reader.refuse(tr("--%1 needs --excited").arg(QLatin1String(option)));
        return;
    }
    for (const QString &file : stateFiles(reader.text("excited"))) {
        requireFile(QStringLiteral("--excited "), file,
                    tr("an output of ORCA, Gaussian or ZINDO, or a pair of MOPAC INDO outputs"));
        request.excited.append(absolute(file));
    }
    if (reader.isSet("program") && !stateProgramNamed(request.program))
        reader.refuse(tr("--program needs to be %1").arg(programNames()));
    request.isForced = reader.isSet("force");
}

/// The limits are those of the fit of these parameters.
void readQdc(const OptionReader &reader, RunRequest &request)
{
    constexpr std::array<const char *, 3> names = {"q", "d", "c"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!reader.isSet(names.at(i)))
            reader.refuse(tr("--q, --d and --c belong together"));
        request.qdc.at(i) = reader.number(
            names.at(i), [](double value) { return value >= 0.0 && value < 1.0e6; },
            tr("a parameter of the QDC model, as \"lanqor fit qdc\" gives it"));
    }
    if (request.geometry != GeometryMethod::Mopac)
        reader.refuse(tr("--q, --d and --c need orbitals and force constants of MOPAC: "
                         "--geometry mopac"));
    request.source = IntensitySource::Qdc;
}

void readIntensities(const OptionReader &reader, RunRequest &request)
{
    request.refractiveIndex = readRefractiveIndex(reader);
    if (reader.isSet("lifetime"))
        request.lifetimeMs = reader.number(
            "lifetime", [](double ms) { return ms >= 1e-6 && ms <= 1e6; },
            tr("the measured lifetime of 5D0 in ms"));
    warnOfLifetime(request.lifetimeMs);
    for (const char *option : {"photon-counts", "windows"})
        if (reader.isSet(option) && !reader.isSet("spectrum"))
            reader.refuse(tr("--%1 belongs to --spectrum").arg(QLatin1String(option)));
    if (reader.isSet("spectrum")) {
        refuseTogether(reader, {"omega2", "omega4", "g", "alpha", "q", "d", "c"},
                       QStringLiteral("--spectrum"));
        requireFile(QStringLiteral("--spectrum "), reader.text("spectrum"),
                    tr("a text file of two columns, wavelength or wavenumber and intensity"));
        request.spectrum = absolute(reader.text("spectrum"));
        request.source = IntensitySource::Spectrum;
    } else if (reader.isSet("omega2") || reader.isSet("omega4")) {
        refuseTogether(reader, {"g", "alpha", "q", "d", "c"},
                       QStringLiteral("--omega2 and --omega4"));
        readIntensityTargets(reader, request.targets);
        request.source = IntensitySource::Omega;
    } else if (reader.isSet("g") || reader.isSet("alpha")) {
        refuseTogether(reader, {"q", "d", "c"}, QStringLiteral("--g and --alpha"));
        if (!reader.isSet("g") || !reader.isSet("alpha"))
            reader.refuse(tr("--g and --alpha belong together"));
        request.g = reader.text("g");
        request.alpha = reader.text("alpha");
        request.source = IntensitySource::ChargeFactors;
    } else if (reader.isSet("q") || reader.isSet("d") || reader.isSet("c")) {
        readQdc(reader, request);
    }
    request.spectrumOptions = readSpectrumOptions(reader);
}

/// A program's executable that is named; one without a folder is looked up in PATH.
QString executable(const OptionReader &reader, const char *option)
{
    const QString name = reader.text(option);
    return name.contains(QLatin1Char('/')) ? absolute(name) : name;
}

} // namespace

QString folderOf(RunStepId step)
{
    return QStringLiteral("%1-%2")
        .arg(int(step) + 1, 2, 10, QLatin1Char('0'))
        .arg(QLatin1String(stepNames.at(std::size_t(step))));
}

QStringList RunRequest::inputFiles() const
{
    QStringList files = {structureFile};
    files << excited;
    if (!spectrum.isEmpty())
        files << spectrum;
    return files;
}

RunRequest readRunRequest(const OptionReader &reader, const UncertainOptions &uncertain)
{
    constexpr int mostComplexes = 1000;
    constexpr int mostDonors = 20;
    constexpr int mostMinutes = 60 * 24 * 365;
    constexpr double secondsPerMinute = 60.0;
    RunRequest request;
    request.structureFile = absolute(reader.files().first());
    request.outFolder =
        absolute(reader.isSet("out") ? reader.text("out")
                                     : QFileInfo(request.structureFile).completeBaseName());
    if (reader.isSet("molecule"))
        request.molecule = reader.count("molecule", mostComplexes);
    if (reader.isSet("coordination"))
        request.coordNumber = reader.count("coordination", mostDonors);
    if (reader.isSet("charge"))
        request.charge = reader.wholeNumber("charge");
    request.dropsUnbound = reader.isSet("drop-unbound");
    request.geometry = GeometryMethod(
        choiceOf(reader, "geometry",
                 {QStringLiteral("mopac"), QStringLiteral("xtb"), QStringLiteral("as-is")}));
    choiceOf(reader, "method", LanqorFilesConverter::mopacMethods());
    request.mopacMethod = reader.text("method");
    if (reader.isSet("solvent")) {
        const std::optional<Solvent> solvent = LanqorSolvents::find(reader.text("solvent"));
        if (!solvent)
            reader.refuse(LanqorSolvents::unknownSolvent(reader.text("solvent")));
        request.solvent = solvent->name;
    }
    readTriplet(reader, uncertain, request);
    readStates(reader, request);
    readIntensities(reader, request);
    request.mopacPath = executable(reader, "mopac");
    request.xtbPath = executable(reader, "xtb");
    request.timeLimit = secondsPerMinute * reader.count("time-limit", mostMinutes);
    request.jobs = reader.count("jobs", 2);
    request.until = stepOf(reader, "until").value_or(RunStepId::Yield);
    request.redo = stepOf(reader, "redo");
    return request;
}

} // namespace cli
