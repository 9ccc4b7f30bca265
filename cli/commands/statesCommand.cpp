#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/statePrograms.h"
#include "text.h"

#include <LanqorEngine/LanqorRL.h>

#include <QFileInfo>

#include <algorithm>

namespace {

using cli::column;
using cli::tr;

constexpr double nmTimesWavenumber = 1.0e7;
/// Of each state so many excitations are shown, the lesser ones only above this weight.
constexpr int mainExcitations = 3;
constexpr double leastWeight = 0.01;

/// The excitations of greatest weight: "152->156 (42 %), 153->158 (38 %)".
QString mainConfigurations(const ExcitateState &state, const QVector<double> &weights)
{
    QVector<int> order;
    for (int i = 0; i < weights.size(); ++i)
        order.append(i);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return weights.at(a) > weights.at(b); });
    QStringList texts;
    for (const int i : order.mid(0, mainExcitations)) {
        if (weights.at(i) < leastWeight && weights.at(order.first()) > 0.0 && i != order.first())
            break;
        QString text = QStringLiteral("%1->%2")
                           .arg(state.configurations.at(2 * i))
                           .arg(state.configurations.at(2 * i + 1));
        if (weights.at(i) > 0.0)
            text += QStringLiteral(" (%1 %)").arg(100.0 * weights.at(i), 0, 'f', 0);
        texts.append(text);
    }
    return texts.join(QStringLiteral(", "));
}

/// A line of the table; a distance below 0 stands for none.
QString stateLine(int number, const ExcitateState &state, const QVector<double> &weights,
                  double distance)
{
    const QString wavelength = state.energy > 0.0 ? column(nmTimesWavenumber / state.energy, 1, 10)
                                                  : QStringLiteral("-").rightJustified(10);
    const QString rl =
        distance < 0.0 ? QStringLiteral("-").rightJustified(9) : column(distance, 4, 9);
    return QString::number(number).rightJustified(6) + column(state.energy, 1, 12) + wavelength +
           column(state.oscillatorStrength, 6, 12) + rl + QStringLiteral("  ") +
           mainConfigurations(state, weights) + QLatin1Char('\n');
}

QString tableHead(const QString &title)
{
    return QStringLiteral("\n%1\n%2%3%4%5%6  %7\n")
        .arg(title, tr("state").rightJustified(6), tr("E/cm-1").rightJustified(12),
             tr("nm").rightJustified(10), tr("f").rightJustified(12), tr("RL/A").rightJustified(9),
             tr("main excitations (orbitals as printed, weight)"));
}

QString stateTables(const LanqorRL &calculation, bool hasDistances)
{
    const LanqorInputData &data = *calculation.getInputData();
    QString text = tableHead(tr("Singlets"));
    if (data.getSingletStatesCount() == 0)
        text += tr("  none in the output\n");
    for (int i = 0; i < data.getSingletStatesCount(); ++i) {
        text += stateLine(i + 1, data.getSingletExcitateStateVector(i), data.getSingletWeights(i),
                          hasDistances ? calculation.getSingletRL(i + 1) : -1.0);
    }
    text += tableHead(tr("Triplets"));
    if (data.getTripletStatesCount() == 0)
        text += tr("  none in the output\n");
    for (int i = 0; i < data.getTripletStatesCount(); ++i) {
        text += stateLine(i + 1, data.getTripletExcitateStateVector(i), data.getTripletWeights(i),
                          hasDistances ? calculation.getTripletRL(i + 1) : -1.0);
    }
    return text;
}

/// Why there is no RL, with what the user may do about it.
QString reasonWithoutDistances(const LanqorRL &calculation, const StateProgram &program)
{
    QString reason = calculation.getLastError().simplified();
    const bool needsPointCharge = program.type == LanqorInputData::OrcaOutput &&
                                  !calculation.getInputData()->getIsOrcaTDDFT();
    if (needsPointCharge && calculation.getInputData()->getMolecularOrbitalNumber() > 0) {
        reason += tr(" It holds the place of the ion and stands beside the output, under the same "
                     "name with the suffix .pointcharge.");
    } else if (calculation.getInputData()->getMolecularOrbitalNumber() == 0) {
        reason += tr(" RL needs the table of orbital coefficients (ORCA: %output print[p_mos] 1 "
                     "end; Gaussian: pop=full).");
    }
    return reason;
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
    options.parse(arguments);
    const QString fileName =
        options.files(1, tr("one FILE is needed; see \"lanqor states --help\"")).first();
    const QString name = options.text("program");
    if (!QFileInfo::exists(fileName))
        throw cli::Failure{tr("%1 does not exist.").arg(fileName)};
    const StateProgram *program =
        name.isEmpty() ? cli::stateProgramOf(fileName) : cli::stateProgramNamed(name);
    if (!program && !name.isEmpty())
        options.refuse(tr("unknown program \"%1\"; there are orca, gaussian and zindo").arg(name));
    if (!program)
        throw cli::Failure{
            tr("%1 looks like no output of ORCA, Gaussian or ZINDO; name the program "
               "with --program")
                .arg(fileName)};

    LanqorRL calculation(nullptr, fileName);
    cli::showMessages(calculation);
    const bool hasDistances = calculation.calcRL(program->type);
    if (calculation.getSingletStatesCount() + calculation.getTripletStatesCount() == 0)
        cli::failOf(calculation);
    QString text =
        tr("Excited states of %1 (%2 output)\n").arg(fileName, QLatin1String(program->title));
    if (hasDistances) {
        text += tr("Shortest ion-ligand distance: %1 Angstrom\n")
                    .arg(calculation.getMinDistanceLnLigand(), 0, 'f', 5);
    } else {
        text += tr("RL not calculated: %1\n").arg(reasonWithoutDistances(calculation, *program));
    }
    cli::print(text + stateTables(calculation, hasDistances));
    const QString report = options.text("report");
    if (!report.isEmpty() && calculation.createOutput(report).isEmpty())
        cli::failOf(calculation);
    return cli::success;
}
