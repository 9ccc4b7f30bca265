#include "Command.h"
#include "commands/commands.h"
#include "help/CommandHelp.h"
#include "options/OptionReader.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr char fromStructure[] = "From a structure";
constexpr char fromIntensities[] = "From measured intensities";
constexpr char fromStates[] = "From excited states of the ligands";
constexpr char fromLevels[] = "From levels of the 4f shell";
constexpr char fromResults[] = "From results";

// In the order of the help.
const QVector<Command> &commands()
{
    static const QVector<Command> table = {
        {fromStructure, "run", "from the structure of a complex to its quantum yield", runCommand},
        {fromStructure, "sphere", "coordination sphere of the ion in a structure file",
         sphereCommand},
        {fromStructure, "organize", "order of atoms that all calculations need, for any structure",
         organizeCommand},
        {fromStructure, "convert", "structure formats and jobs for quantum-chemistry programs",
         convertCommand},
        {fromStructure, "omega", "intensity parameters of a complex from its geometry",
         omegaCommand},
        {fromStructure, "stark", "Stark levels of 7F0 to 7F6 in the crystal field of a complex",
         starkCommand},
        {fromStructure, "indices", "reactivity indices of the atoms from the orbitals",
         indicesCommand},
        {fromIntensities, "omega-exp",
         "experimental intensity parameters from an emission spectrum", omegaExpCommand},
        {fromIntensities, "judd-ofelt",
         "intensity parameters of any lanthanide ion from its absorption bands", juddOfeltCommand},
        {fromIntensities, "fit omega",
         "charge factors and polarisabilities from measured intensity parameters", fitOmegaCommand},
        {fromIntensities, "fit qdc",
         "parameters of the QDC model from measured intensity parameters", fitQdcCommand},
        {fromStates, "states", "excited states of the ligands and their distances from the ion",
         statesCommand},
        {fromStates, "triplet", "triplet energy of the donor ligand, by all that is known of it",
         tripletCommand},
        {fromStates, "spectrum", "absorption spectrum of computed excited states", spectrumCommand},
        {fromStates, "yield", "rates, populations and emission quantum yield", yieldCommand},
        {fromLevels, "levels", "energy levels of a free lanthanide ion", levelsCommand},
        {fromLevels, "crystal-field",
         "all states of a lanthanide ion in a crystal field, magnetism", crystalFieldCommand},
        {fromLevels, "fit levels", "Slater integrals and spin-orbit parameter from measured levels",
         fitLevelsCommand},
        {fromLevels, "fit stark", "charge factors from measured Stark levels", fitStarkCommand},
        {fromResults, "show", "a result that a command wrote as JSON, as text or CSV", showCommand},
    };
    return table;
}

/// Those commands that the function is true for, each with its summary.
template <class IsWanted> QString listOfCommands(IsWanted isWanted)
{
    QString text;
    for (const Command &command : commands())
        if (isWanted(command))
            text += QStringLiteral("  %1 %2\n")
                        .arg(QString::fromLatin1(command.name).leftJustified(18),
                             QLatin1String(command.summary));
    return text;
}

QString overview()
{
    QString text = QStringLiteral("Usage: lanqor COMMAND [options] ...\n"
                                  "Luminescence of lanthanide coordination compounds.\n");
    for (const char *task : {fromStructure, fromIntensities, fromStates, fromLevels, fromResults})
        text += QStringLiteral("\n%1:\n").arg(QLatin1String(task)) +
                listOfCommands([&](const Command &command) { return command.task == task; });
    return text + QStringLiteral("\n\"lanqor COMMAND --help\" tells the options of a command.\n"
                                 "Results go to standard output, messages to standard error;\n"
                                 "the exit status is 0 on success, 1 when the input or the\n"
                                 "calculation fails, 2 when the command line is wrong.\n");
}

/// What all commands tell of their use.
QVector<cli::CommandHelp> helpOfCommands()
{
    QVector<cli::CommandHelp> helps;
    for (const Command &command : commands()) {
        try {
            command.run({QLatin1String(cli::describeArgument)});
        } catch (cli::CommandHelp &help) {
            help.summary = QLatin1String(command.summary);
            helps.append(help);
        }
    }
    return helps;
}

/// Writes the manual pages, the pages of the documentation and the completion of bash, with which
/// the program is installed, to a folder.
int writeManual(const QString &folder)
{
    const QVector<cli::CommandHelp> helps = helpOfCommands();
    const QDir target(folder);
    const auto write = [&target](const QString &file, const QString &text) {
        cli::writeFile(target.filePath(file), text.toUtf8());
    };
    for (const cli::CommandHelp &help : helps) {
        write(cli::pageName(help) + QStringLiteral(".1"), cli::manualPage(help, helps));
        write(cli::pageName(help) + QStringLiteral(".md"), cli::referencePage(help));
    }
    write(QStringLiteral("lanqor.1"), cli::programManualPage(helps, overview()));
    write(QStringLiteral("lanqor.bash"), cli::bashCompletion(helps));
    return cli::success;
}

/// Makes every loss of output an error that is told. A write beyond a limit of file sizes would
/// end the process. Where standard output is closed, the next file to be opened would get its
/// number and the results: a device that cannot be written to takes it.
void takeCareOfOutput()
{
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", O_RDONLY);
    LanqorOutputFile::setInputsProtected(true);
}

/// Runs the command that the first words name.
int run(const QStringList &arguments)
{
    const QString first = arguments.value(0);
    if (first == QLatin1String("--version") || first == QLatin1String("-v")) {
        cli::print(QStringLiteral("lanqor ") + QCoreApplication::applicationVersion() +
                   QLatin1Char('\n'));
        return cli::success;
    }
    if (first == QLatin1String("--help") || first == QLatin1String("-h") ||
        first == QLatin1String("help"))
        throw cli::HelpRequest{overview()};
    if (first == QLatin1String("--write-manual") && arguments.size() == 2)
        return writeManual(arguments.at(1));
    // A command's name may be of two words ("fit omega").
    for (const Command &command : commands()) {
        const QStringList words = QString::fromLatin1(command.name).split(QLatin1Char(' '));
        if (arguments.mid(0, words.size()) == words)
            return command.run(arguments.mid(words.size()));
    }
    if (arguments.isEmpty()) {
        cli::tell(overview());
        return cli::wrongUse;
    }
    const QString family = listOfCommands([&](const Command &command) {
        return QString::fromLatin1(command.name).startsWith(first + QLatin1Char(' '));
    });
    if (!family.isEmpty()) {
        const QString text = QStringLiteral("which \"%1\"? There are:\n").arg(first) + family +
                             QStringLiteral("\"lanqor ... --help\" tells the options of each.\n");
        if (arguments.value(1) == QLatin1String("--help"))
            throw cli::HelpRequest{text};
        throw cli::UsageError{text};
    }
    QStringList names;
    for (const Command &command : commands())
        names.append(QString::fromLatin1(command.name));
    const QString nearest = cli::nearestWord(first, names);
    throw cli::UsageError{
        QStringLiteral("unknown command \"%1\"%2; see \"lanqor --help\"")
            .arg(first, nearest.isEmpty() ? QString()
                                          : QStringLiteral(", did you mean \"%1\"?").arg(nearest))};
}

} // namespace

int main(int argc, char **argv)
{
    takeCareOfOutput();
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const auto application = plots::makeApplication(argc, argv, arguments);
    QCoreApplication::setApplicationName(QStringLiteral("lanqor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LANQOR_VERSION));

    try {
        return cli::finish(run(arguments));
    } catch (const cli::HelpRequest &help) {
        cli::print(help.text);
        return cli::finish(cli::success);
    } catch (const cli::UsageError &error) {
        return cli::finish(cli::wrongUse, error.message);
    } catch (const cli::Failure &error) {
        return cli::finish(cli::failure, error.message);
    }
}
