#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/showResults.h"
#include "options/statePrograms.h"
#include "text.h"

#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

#include <algorithm>

namespace {

using cli::column;
using cli::tr;

/// Of each state so many excitations are shown, the lesser ones only above this weight.
constexpr int mainExcitations = 3;
constexpr double leastWeight = 0.01;

/// The excitations of greatest weight: "152->156 (42 %), 153->158 (38 %)".
QString mainConfigurations(const LigandState &state)
{
    const QVector<double> &weights = state.weights;
    QVector<int> order;
    for (int i = 0; i < weights.size(); ++i)
        order.append(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return weights.at(a) > weights.at(b); });
    QStringList texts;
    for (const int i : order.mid(0, mainExcitations)) {
        if (weights.at(i) < leastWeight && weights.at(order.first()) > 0.0 && i != order.first())
            break;
        QString text =
            QStringLiteral("%1->%2").arg(QString::number(state.configurations.at(2 * i)),
                                         QString::number(state.configurations.at(2 * i + 1)));
        if (weights.at(i) > 0.0)
            text += QStringLiteral(" (%1 %)").arg(100.0 * weights.at(i), 0, 'f', 0);
        texts.append(text);
    }
    return texts.join(QStringLiteral(", "));
}

QString dash(int width)
{
    return QStringLiteral("-").rightJustified(width);
}

QString stateLine(int number, const LigandState &state, bool hasDistances)
{
    return column(number, 6) + column(state.energy, 1, 12) +
           (state.wavelength > 0.0 ? column(state.wavelength, 1, 10) : dash(10)) +
           column(state.oscillatorStrength, 6, 12) +
           (hasDistances ? column(state.rl, 4, 9) : dash(9)) + QStringLiteral("  ") +
           mainConfigurations(state) + QLatin1Char('\n');
}

QString tableHead(const QString &title)
{
    return QStringLiteral("\n%1\n%2%3%4%5%6  %7\n")
        .arg(title, tr("state").rightJustified(6), tr("E/cm-1").rightJustified(12),
             tr("nm").rightJustified(10), tr("f").rightJustified(12), tr("RL/A").rightJustified(9),
             tr("main excitations (orbitals as printed, weight)"));
}

QString stateTable(const QString &title, const QVector<LigandState> &states, bool hasDistances)
{
    QString text = tableHead(title);
    if (states.isEmpty())
        text += tr("  none in the output\n");
    for (int i = 0; i < states.size(); ++i)
        text += stateLine(i + 1, states.at(i), hasDistances);
    return text;
}

QString stateTables(const DonorStatesResults &results, const char *program)
{
    const bool hasDistances = results.reasonWithoutDistances.isEmpty();
    return tr("Excited states of %1 (%2 output)\n")
               .arg(results.outputPath, QLatin1String(program)) +
           (hasDistances ? tr("Shortest ion-ligand distance: %1 Angstrom\n")
                               .arg(results.minDistanceLnLigand, 0, 'f', 5)
                         : tr("RL not calculated: %1\n").arg(results.reasonWithoutDistances)) +
           stateTable(tr("Singlets"), results.singlets, hasDistances) +
           stateTable(tr("Triplets"), results.triplets, hasDistances);
}

const char *const description =
    "Lists the excited singlets and triplets of an ORCA, Gaussian or ZINDO output:\n"
    "energies in cm^-1, wavelengths in nm, oscillator strengths, the excitations of\n"
    "greatest weight, and RL, the distance in Angstrom from the centre of charge of\n"
    "the state to the lanthanide ion. The ion is the first lanthanide of a Gaussian\n"
    "or an ORCA TD-DFT output, atom 1 of a ZINDO output, and the point charge in the\n"
    "file NAME.pointcharge beside any other ORCA output NAME.orcout (or NAME.out).\n"
    "Without the ion or the table of orbital coefficients the states are listed\n"
    "without RL, and the reason is told.\n\n"
    "Example: lanqor states ligand.orcout --report ligand_rl.txt";

} // namespace

int statesCommand(const QStringList &arguments)
{
    cli::OptionReader options("states");
    options.setDescription(tr(description));
    options.addArgument(QStringLiteral("FILE"), tr("output of the excited-state calculation"));
    options.addOptions(
        {{QStringLiteral("program"),
          tr("program that wrote FILE: orca, gaussian or zindo; told from its text when not given"),
          QStringLiteral("name")},
         {QStringLiteral("report"), tr("write the report of the distances RL to this file"),
          QStringLiteral("file")}});
    options.addResultOptions();
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("one FILE is needed; see \"lanqor states --help\"")).first();
    const QString name = options.text("program");
    if (!QFileInfo::exists(fileName))
        throw cli::Failure{tr("%1 does not exist.").arg(fileName)};
    LanqorInputData output(nullptr, fileName);
    output.setKeepFileOpen(true);
    const StateProgram *program =
        name.isEmpty() ? cli::stateProgramOf(output) : cli::stateProgramNamed(name);
    if (!program && !name.isEmpty())
        options.refuse(tr("unknown program \"%1\"; there are orca, gaussian and zindo").arg(name));
    if (!program)
        throw cli::Failure{cli::unknownProgram(fileName)};

    LanqorRL calculation(nullptr, &output);
    cli::showMessages(calculation);
    calculation.calcRL(program->type);
    const DonorStatesResults results = calculation.getResults();
    if (results.singlets.isEmpty() && results.triplets.isEmpty())
        cli::failOf(calculation);
    cli::showResults(options, stateTables(results, program->title), LanqorRL::makeTables(results),
                     {fileName});
    const QString report = options.text("report");
    if (!report.isEmpty() && calculation.createOutput(report).isEmpty())
        cli::failOf(calculation);
    return cli::success;
}
