#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/showResults.h"
#include "options/statePrograms.h"
#include "text.h"

#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorResultTables.h>

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

/// "3 (0.92)": the fragment of the greatest share.
QString mainFragment(const QVector<double> &shares)
{
    const int fragment =
        static_cast<int>(std::max_element(shares.begin(), shares.end()) - shares.begin());
    return QStringLiteral("%1 (%2)").arg(QString::number(fragment + 1),
                                         QString::number(shares.at(fragment), 'f', 2));
}

QString characterTable(const QString &title, const QVector<LigandState> &states)
{
    if (states.isEmpty())
        return QString();
    QString text =
        QStringLiteral("\n%1\n%2%3%4%5\n")
            .arg(title, tr("state").rightJustified(6), tr("charge transfer").rightJustified(17),
                 tr("hole").rightJustified(13), tr("electron").rightJustified(13));
    for (int i = 0; i < states.size(); ++i) {
        const LigandState &state = states.at(i);
        text += column(i + 1, 6);
        text += state.holeShares.isEmpty()
                    ? dash(17) + dash(13) + dash(13)
                    : column(state.chargeTransfer, 3, 17) +
                          mainFragment(state.holeShares).rightJustified(13) +
                          mainFragment(state.electronShares).rightJustified(13);
        text += QLatin1Char('\n');
    }
    return text;
}

/// Where hole and electron are, as far as the output tells.
QString characterTables(const DonorStatesResults &results)
{
    if (results.fragments.isEmpty())
        return QString();
    QString text = tr("\nFragments (number, formula, first atom)\n");
    for (int f = 0; f < results.fragments.size(); ++f)
        text += column(f + 1, 6) + QStringLiteral("  ") +
                results.fragments.at(f).formula.leftJustified(24) +
                column(results.fragments.at(f).atoms.first(), 6) + QLatin1Char('\n');
    const QString what = tr(": charge between fragments, and the one with most of hole, electron");
    return text + characterTable(tr("Singlets") + what, results.singlets) +
           characterTable(tr("Triplets") + what, results.triplets);
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
           stateTable(tr("Triplets"), results.triplets, hasDistances) + characterTables(results);
}

const char *const description =
    "Lists the excited singlets and triplets of an ORCA, Gaussian or ZINDO output, or\n"
    "of a pair of MOPAC INDO outputs, given as \"singlets.out,triplets.out\":\n"
    "energies in cm^-1, wavelengths in nm, oscillator strengths, the excitations of\n"
    "greatest weight, and RL, the distance in Angstrom from the centre of charge of\n"
    "the state to the lanthanide ion. The ion is the first lanthanide of a Gaussian\n"
    "or an ORCA TD-DFT output, atom 1 of a ZINDO output, the yttrium of MOPAC INDO\n"
    "outputs, and the point charge in the file NAME.pointcharge beside any other ORCA\n"
    "output NAME.orcout (or NAME.out).\n"
    "Without the ion or the table of orbital coefficients the states are listed\n"
    "without RL, and the reason is told.\n\n"
    "Example: lanqor states ligand.orcout --report ligand_rl.txt";

} // namespace

int statesCommand(const QStringList &arguments)
{
    cli::OptionReader options("states");
    options.setDescription(tr(description));
    options.addArgument(QStringLiteral("FILE"), tr("output of the excited-state calculation"),
                        QString(), cli::stateSuffixes());
    options.addOptions(
        {{QStringLiteral("program"),
          tr("program that wrote FILE: %1; told from its text when not given")
              .arg(cli::programNames()),
          QStringLiteral("name")},
         {QStringLiteral("report"), tr("write the report of the distances RL to this file"),
          QStringLiteral("file")}});
    options.addResultOptions();
    options.parse(arguments);
    const QStringList files = cli::stateFiles(
        options.files(1, tr("one FILE is needed; see \"lanqor states --help\"")).first());
    const QString name = options.text("program");
    cli::checkStateFiles(files);
    LanqorInputData output(nullptr, files.first());
    output.setKeepFileOpen(true);
    const StateProgram *program =
        name.isEmpty() ? cli::stateProgramOf(output) : cli::stateProgramNamed(name);
    if (!program && !name.isEmpty())
        options.refuse(tr("unknown program \"%1\"; there are %2").arg(name, cli::programNames()));
    if (!program)
        throw cli::Failure{cli::unknownProgram(files.first())};
    cli::readPair(output, *program, files);

    LanqorRL calculation(nullptr, &output);
    cli::showMessages(calculation);
    calculation.calcRL(program->type);
    const DonorStatesResults results = calculation.getResults();
    if (results.singlets.isEmpty() && results.triplets.isEmpty())
        cli::failOf(calculation);
    cli::showResults(options, stateTables(results, program->title), LanqorRL::makeTables(results));
    const QString report = options.text("report");
    if (!report.isEmpty() && calculation.createOutput(report).isEmpty())
        cli::failOf(calculation);
    return cli::success;
}
