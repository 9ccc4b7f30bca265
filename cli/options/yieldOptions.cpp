#include "options/yieldOptions.h"

#include "Command.h"
#include "options/complexOptions.h"
#include "options/statePrograms.h"
#include "plots/plots.h"

#include <LanqorEngine/LanqorInputData.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>
#include <cstdlib>

namespace yieldOptions {

namespace {

constexpr int maximumState = 100000;

QString tr(const char *text)
{
    return QCoreApplication::translate("cli", text);
}

QString option(const char *name)
{
    return QLatin1String(name);
}

/// Reads the options of one command line and remembers the first that makes no sense.
class OptionReader
{
public:
    explicit OptionReader(const QCommandLineParser &parser)
        : parser(parser)
    {}

    /// A number within [minimum, maximum]; the option's default when it is not given.
    double number(const char *name, double minimum, double maximum)
    {
        bool ok = false;
        const double value = parser.value(option(name)).trimmed().toDouble(&ok);
        if (!ok || !(value >= minimum && value <= maximum))
            refuse(tr("--%1 needs a number from %2 to %3, not \"%4\"")
                       .arg(option(name))
                       .arg(minimum)
                       .arg(maximum)
                       .arg(parser.value(option(name))));
        return value;
    }

    /// A whole number within [minimum, maximum]; 0 when there is none, nor a default.
    int wholeNumber(const char *name, int minimum, int maximum)
    {
        const QString text = parser.value(option(name)).trimmed();
        if (text.isEmpty() && !isSet(name))
            return 0;
        bool ok = false;
        const int value = text.toInt(&ok);
        if (!ok || value < minimum || value > maximum)
            refuse(tr("--%1 needs a whole number from %2 to %3, not \"%4\"")
                       .arg(option(name))
                       .arg(minimum)
                       .arg(maximum)
                       .arg(text));
        return value;
    }

    /// Three values of Omega, lambda = 2, 4, 6.
    QVector<double> omegas(const char *name)
    {
        QVector<double> values;
        const QStringList parts = parser.value(option(name)).split(QLatin1Char(','));
        for (const QString &part : parts) {
            bool ok = false;
            const double value = part.trimmed().toDouble(&ok);
            if (ok && value >= 0.0 && std::isfinite(value))
                values.append(value);
        }
        if (values.size() != 3 || parts.size() != 3)
            refuse(tr("--%1 needs the three values for lambda = 2, 4, 6 in units of 1e-20 cm^2, "
                      "none below 0, e.g. 12.5,3.4,0.2")
                       .arg(option(name)));
        return values;
    }

    EnergyTransferChannels channelList(const char *name)
    {
        if (!parser.isSet(option(name)))
            return EnergyTransferChannels();
        EnergyTransferChannels open = {false, false, false, false, false,
                                       false, false, false, false, false};
        for (const QString &entry :
             parser.value(option(name)).split(QLatin1Char(','), Qt::SkipEmptyParts))
            openChannel(entry.trimmed(), open);
        return open;
    }

    /// The program that wrote the excited states; found out when it is not named.
    int program(const char *name, const QString &fileName)
    {
        if (isSet(name)) {
            const StateProgram *program = cli::stateProgramNamed(parser.value(option(name)));
            if (program)
                return program->type;
            refuse(tr("--%1 needs to be orca, gaussian or zindo").arg(option(name)));
            return LanqorInputData::UnknownOutput;
        }
        if (!QFileInfo::exists(fileName))
            refuse(tr("%1 does not exist.").arg(fileName));
        const StateProgram *program = cli::stateProgramOf(fileName);
        if (program)
            return program->type;
        refuse(tr("%1 is not known as an output of ORCA, Gaussian or ZINDO; name the program by "
                  "--%2")
                   .arg(fileName, option(name)));
        return LanqorInputData::UnknownOutput;
    }

    bool isSet(const char *name) const { return parser.isSet(option(name)); }

    void refuseIfSet(std::initializer_list<const char *> names, const QString &why)
    {
        for (const char *name : names)
            if (isSet(name))
                refuse(tr("--%1 %2").arg(option(name), why));
    }

    void refuse(const QString &message)
    {
        if (error.isEmpty())
            error = message;
    }

    QString error;

private:
    void openChannel(const QString &name, EnergyTransferChannels &open)
    {
        bool isKnown = name == QLatin1String("none");
        for (const Channel &channel : channels) {
            if (!channel.flag || (name != QLatin1String("all") &&
                                  name.compare(QLatin1String(channel.name), Qt::CaseInsensitive)))
                continue;
            open.*(channel.flag) = true;
            isKnown = true;
        }
        if (!isKnown)
            refuse(tr("--channels does not know \"%1\"; there are S-5D4, S-5G6, S-5L6, S-5D1, "
                      "S-5D0, T-5D4, T-5G6, T-5L6, T-5D1, T-5D0, all and none")
                       .arg(name));
    }

    const QCommandLineParser &parser;
};

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(tr(
        "Emission quantum yield of a Eu3+ complex: radiative and non-radiative rates of 5D0,\n"
        "rates of energy transfer from the ligands, populations, yield.\n\n"
        "The donor states come from an excited-state calculation of the ligands in the geometry\n"
        "of the complex (--excited, --program), or are given: energies in cm^-1 and distances RL\n"
        "from the Eu3+ ion in Angstrom. An ORCA output of the ligands alone needs beside it a\n"
        "file of the same name that ends in .pointcharge and holds the place of the ion.\n\n"
        "Intensity parameters come from the report of a fit or of \"lanqor omega\"\n"
        "(--omega-report), from charge factors and polarisabilities of the coordinated atoms (--g\n"
        "and --alpha), or are given (--omega and --omega-ed, 1e-20 cm^2).\n\n"
        "Examples:\n"
        "  lanqor yield complex.out --excited ligand.out --program orca \\\n"
        "      --omega-report omega.txt --lifetime 0.45\n"
        "  lanqor yield --omega 33,4.6,0 --omega-ed 0.3,0.2,0 --lifetime 0.26 \\\n"
        "      --singlet-energy 28000 --triplet-energy 20500 --rl-singlet 4.5 --rl-triplet 5.1"));
    parser.addPositionalArgument(QStringLiteral("COMPLEX.out"),
                                 tr("MOPAC output of the complex, Eu as atom 1; not needed when "
                                    "donor states and Omega are given."),
                                 QStringLiteral("[COMPLEX.out]"));
    const QString states = tr("state");
    const QString wavenumber = tr("cm^-1");
    const QString angstrom = tr("Angstrom");
    parser.addOptions({
        {option("excited"), tr("Output of the excited-state calculation."), tr("file")},
        {option("program"),
         tr("Program that wrote it: orca, gaussian or zindo; found out by default."), tr("name")},
        {option("omega-report"), tr("Report that holds charge factors and polarisabilities."),
         tr("file")},
        {option("g"), tr("Charge factors, dimensionless, by element or atom: O=0.9,N=1.2,5=0.7."),
         tr("list")},
        {option("alpha"), tr("Polarisabilities, cubic Angstrom, likewise: O=3.1,N=4.0."),
         tr("list")},
        {option("omega"), tr("Omega 2, 4 and 6 in 1e-20 cm^2."), tr("O2,O4,O6")},
        {option("omega-ed"),
         tr("Their forced electric dipole part, which drives dipole-dipole transfer."),
         tr("O2,O4,O6")},
        {option("singlet"), tr("Number of the donor singlet (1-based); the lowest by default."),
         states},
        {option("triplet"), tr("Number of the donor triplet (1-based); the lowest by default."),
         states},
        {option("singlet-energy"), tr("Energy of a given donor singlet."), wavenumber},
        {option("triplet-energy"), tr("Energy of a given donor triplet."), wavenumber},
        {option("rl-singlet"), tr("Its distance RL from the ion."), angstrom},
        {option("rl-triplet"), tr("Its distance RL from the ion."), angstrom},
        {option("n"), tr("Refractive index of the medium (default 1.5)."), tr("index"),
         QStringLiteral("1.5")},
        {option("lifetime"),
         tr("Measured lifetime of 5D0 in ms. Without it the non-radiative rate is an estimate from "
            "the radiative rate."),
         tr("ms")},
        {option("channels"),
         tr("Open channels of transfer, separated by commas: S-5D4, S-5G6, S-5L6 (multipolar), "
            "S-5D1, S-5D0 (exchange) from the singlet, T-5D4 to T-5D0 from the triplet, all or "
            "none (default S-5D4,T-5D1,T-5D0)."),
         tr("list")},
        {option("et-model"),
         tr("Exchange model: 2 with the shielding of the 4f shell (default); 0 and 1 through the "
            "overlap of 4f shell and ligand, squared or to the fourth power, for states read from "
            "an output."),
         tr("0|1|2"), QStringLiteral("2")},
        {option("overlap-exponent"),
         tr("Exponent of the overlap of models 0 and 1 with distance (default 3.5)."), tr("number"),
         QStringLiteral("3.5")},
        {option("two-triplets"),
         tr("Two donor triplets: the chosen one (Ta) feeds 5D4, number 2 feeds 5D1 and 5D0.")},
        {option("report"), tr("Write the full report to this file."), tr("file")},
    });
}

/// The options of donor states read from an output.
void readStates(OptionReader &reader, const QCommandLineParser &parser, Request &request)
{
    reader.refuseIfSet({"singlet-energy", "triplet-energy", "rl-singlet", "rl-triplet"},
                       tr("does not go with --excited, which gives the donor states"));
    if (request.complexFile.isEmpty())
        reader.refuse(tr("name the MOPAC output of the complex"));
    request.excitedFile = parser.value(option("excited"));
    request.programType = reader.program("program", request.excitedFile);
    request.singlet = reader.wholeNumber("singlet", 1, maximumState);
    request.triplet = reader.wholeNumber("triplet", 1, maximumState);
    request.openChannels = reader.channelList("channels");
    request.twoTriplets = parser.isSet(option("two-triplets"));
}

/// The options of donor states that are given.
void readGivenStates(OptionReader &reader, Request &request)
{
    reader.refuseIfSet({"program", "singlet", "triplet", "channels", "two-triplets"},
                       tr("needs --excited"));
    for (const char *name : {"singlet-energy", "triplet-energy", "rl-singlet", "rl-triplet"})
        if (!reader.isSet(name))
            reader.refuse(tr("donor states: give --excited with an output of their calculation, or "
                             "all of --singlet-energy, --triplet-energy, --rl-singlet and "
                             "--rl-triplet"));
    if (!reader.error.isEmpty())
        return;
    request.singletEnergy = reader.number("singlet-energy", 1000.0, 200000.0);
    request.tripletEnergy = reader.number("triplet-energy", 1000.0, 200000.0);
    request.rlSinglet = reader.number("rl-singlet", 0.5, 1000.0);
    request.rlTriplet = reader.number("rl-triplet", 0.5, 1000.0);
}

/// The one source of intensity parameters.
void readOmega(OptionReader &reader, const QCommandLineParser &parser, Request &request)
{
    const bool isByReport = reader.isSet("omega-report");
    const bool isByFactors = reader.isSet("g") && reader.isSet("alpha");
    const bool isGiven = reader.isSet("omega") && reader.isSet("omega-ed");
    if (!isByReport && !isByFactors && !isGiven) {
        reader.refuse(tr("intensity parameters: give --omega-report, --g and --alpha, or --omega "
                         "and --omega-ed (0,0,0 to leave dipole-dipole transfer out)"));
        return;
    }
    if (!isGiven && request.complexFile.isEmpty())
        reader.refuse(tr("name the MOPAC output of the complex"));
    const QString alone = tr("does not go with another source of intensity parameters");
    if (isByReport) {
        reader.refuseIfSet({"g", "alpha", "omega", "omega-ed"}, alone);
        request.omegaReport = parser.value(option("omega-report"));
    } else if (isByFactors) {
        reader.refuseIfSet({"omega", "omega-ed"}, alone);
        request.g = parser.value(option("g"));
        request.alpha = parser.value(option("alpha"));
    } else {
        reader.refuseIfSet({"g", "alpha"}, alone);
        request.omega = reader.omegas("omega");
        request.omegaEd = reader.omegas("omega-ed");
    }
}

} // namespace

bool isOpen(const Channel &channel, const Request &request)
{
    return channel.flag ? request.openChannels.*channel.flag : request.twoTriplets;
}

Request read(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    plots::addOption(parser);
    cli::parse(parser, "yield", arguments);
    OptionReader reader(parser);
    Request request;
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        reader.refuse(tr("yield takes one file besides those of its options"));
    request.complexFile = files.value(0);
    if (parser.isSet(option("excited")))
        readStates(reader, parser, request);
    else
        readGivenStates(reader, request);
    readOmega(reader, parser, request);
    QString indexError;
    if (!cli::readRefractiveIndex(parser, request.refractiveIndex, indexError))
        reader.refuse(indexError);
    if (parser.isSet(option("lifetime")))
        request.lifetimeMs = reader.number("lifetime", 1e-6, 1e6);
    request.etModel = reader.wholeNumber("et-model", 0, 2);
    request.overlapExponent = reader.number("overlap-exponent", 0.0, 100.0);
    request.reportFile = parser.value(option("report"));
    QString plotError;
    if (!plots::readOption(parser, request.plotFile, plotError))
        reader.refuse(plotError);
    if (!reader.error.isEmpty()) {
        cli::fail(reader.error + tr("\nSee \"lanqor yield --help\"."));
        std::exit(cli::usageError);
    }
    return request;
}

} // namespace yieldOptions
