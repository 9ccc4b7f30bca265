#include "photophysics/donorStatesReport_p.h"

#include "core/reportText_p.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorRL.h>

namespace {

using reportText::fixed;

constexpr int stateWidth = 8;
constexpr int columnWidth = 16;

QString tr(const char *text)
{
    return LanqorRL::tr(text);
}

QString cell(const QString &text, int width = columnWidth)
{
    return text.rightJustified(width);
}

QString stateRow(int number, const LigandState &state)
{
    const QString wavelength = state.wavelength > 0.0 ? fixed(state.wavelength, 1, columnWidth)
                                                      : cell(QStringLiteral("-"));
    return cell(QString::number(number), stateWidth) + fixed(state.energy, 1, columnWidth) +
           wavelength + fixed(state.oscillatorStrength, 6, columnWidth) +
           fixed(state.rl, 4, columnWidth) + QLatin1Char('\n');
}

QString stateList(const QString &title, const QVector<LigandState> &states)
{
    const QString header = cell(tr("State"), stateWidth) + cell(tr("Energy (cm-1)")) +
                           cell(tr("Wavelength (nm)")) + cell(tr("Osc. strength")) +
                           cell(tr("RL (Angstrom)")) + QLatin1Char('\n');
    const QString rule = QString(header.size() - 1, QLatin1Char('-')) + QLatin1Char('\n');
    QString text = QLatin1Char('\n') + title + QLatin1Char('\n') + rule + header + rule;
    for (int i = 0; i < states.size(); ++i)
        text += stateRow(i + 1, states.at(i));
    return text + rule;
}

} // namespace

QString donorStatesReport(const DonorStatesResults &results)
{
    return LanqorInputData::LANQORTitle +
           tr("\n Donor-acceptor distances RL of the excited states\n\n") +
           tr(" Output file of the excited states: %1\n").arg(results.outputPath) +
           tr(" Shortest ion-ligand distance: %1 Angstrom\n")
               .arg(fixed(results.minDistanceLnLigand, 5)) +
           stateList(tr(" Singlet states"), results.singlets) +
           stateList(tr(" Triplet states"), results.triplets);
}
