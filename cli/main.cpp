#include "Command.h"
#include "commands/commands.h"
#include "plots/plots.h"

#include <LanqorEngine/LanqorOutputFile.h>

#include <QCoreApplication>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// In the order of the help.
const QVector<Command> &commands()
{
    static const QVector<Command> table = {
        {"sphere", "coordination sphere of the ion in a structure file", sphereCommand},
        {"omega", "intensity parameters of a complex from its geometry", omegaCommand},
        {"omega-exp", "experimental intensity parameters from an emission spectrum",
         omegaExpCommand},
        {"fit omega", "charge factors and polarisabilities from measured intensity parameters",
         fitOmegaCommand},
        {"fit qdc", "parameters of the QDC model from measured intensity parameters",
         fitQdcCommand},
        {"levels", "energy levels of a free lanthanide ion", levelsCommand},
        {"fit levels", "Slater integrals and spin-orbit parameter from measured levels",
         fitLevelsCommand},
        {"stark", "Stark levels of 7F0 to 7F6 in the crystal field of a complex", starkCommand},
        {"fit stark", "charge factors from measured Stark levels", fitStarkCommand},
        {"indices", "reactivity indices of the atoms from the orbitals", indicesCommand},
        {"states", "excited states of the ligands and their distances from the ion", statesCommand},
        {"yield", "rates, populations and emission quantum yield", yieldCommand},
        {"organize", "order of atoms that all calculations need, for any structure",
         organizeCommand},
        {"convert", "structure formats and jobs for quantum-chemistry programs", convertCommand},
        {"spectrum", "absorption spectrum of computed excited states", spectrumCommand},
    };
    return table;
}

/// The commands whose name begins with @p word, or all, each with its summary.
QString listOfCommands(const QString &word = QString())
{
    QString text;
    for (const Command &command : commands())
        if (word.isEmpty() || QString::fromLatin1(command.name).startsWith(word + QLatin1Char(' ')))
            text += QStringLiteral("  %1 %2\n")
                        .arg(QString::fromLatin1(command.name).leftJustified(18),
                             QLatin1String(command.summary));
    return text;
}

QString overview()
{
    return QStringLiteral("Usage: lanqor COMMAND [options] ...\n"
                          "Luminescence of lanthanide coordination compounds.\n\n"
                          "Commands:\n") +
           listOfCommands() +
           QStringLiteral("\n\"lanqor COMMAND --help\" tells the options of a command.\n"
                          "Results go to standard output, messages to standard error;\n"
                          "the exit status is 0 on success, 1 when the input or the\n"
                          "calculation fails, 2 when the command line is wrong.\n");
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
    const QString family = first.isEmpty() ? QString() : listOfCommands(first);
    if (!family.isEmpty()) {
        const QString text = QStringLiteral("which \"%1\"? There are:\n").arg(first) + family +
                             QStringLiteral("\"lanqor ... --help\" tells the options of each.\n");
        if (arguments.value(1) == QLatin1String("--help"))
            throw cli::HelpRequest{text};
        throw cli::UsageError{text};
    }
    throw cli::UsageError{
        QStringLiteral("unknown command \"%1\"; see \"lanqor --help\"").arg(arguments.first())};
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
