#include "LanqorRL.h"

#include "core/reportText_p.h"

namespace {

using reportText::fixed;

constexpr int stateWidth = 8;
constexpr int columnWidth = 16;

QString cell(const QString &text, int width = columnWidth)
{
    return text.rightJustified(width);
}

/// Wavelength in nm of a wavenumber in cm^-1.
constexpr double nmTimesWavenumber = 1.0e7;

QString stateRow(int number, const ExcitateState &state, double distance)
{
    const QString wavelength = state.energy > 0.0
                                   ? fixed(nmTimesWavenumber / state.energy, 1, columnWidth)
                                   : cell(QStringLiteral("-"));
    return cell(QString::number(number), stateWidth) + fixed(state.energy, 1, columnWidth) +
           wavelength + fixed(state.oscillatorStrength, 6, columnWidth) +
           fixed(distance, 4, columnWidth) + QLatin1Char('\n');
}

} // namespace

QString LanqorRL::createOutput(const QString &path)
{
    if (!isCalculated) {
        failWith(tr("\nThe distances RL have not been calculated."));
        return QString();
    }
    const QString header = cell(tr("State"), stateWidth) + cell(tr("Energy (cm-1)")) +
                           cell(tr("Wavelength (nm)")) + cell(tr("Osc. strength")) +
                           cell(tr("RL (Angstrom)")) + QLatin1Char('\n');
    const QString rule = QString(header.size() - 1, QLatin1Char('-')) + QLatin1Char('\n');

    QString text = LanqorInputData::LANQORTitle;
    text += tr("\n Donor-acceptor distances RL of the excited states\n\n");
    text += tr(" Output file of the excited states: %1\n").arg(outputPath);
    text += tr(" Shortest ion-ligand distance: %1 Angstrom\n").arg(fixed(minDistanceLnLigand, 5));
    const auto addList = [&](const QString &title, int count, auto stateAt, auto distanceAt) {
        text += QLatin1Char('\n') + title + QLatin1Char('\n') + rule + header + rule;
        for (int number = 1; number <= count; ++number)
            text += stateRow(number, stateAt(number - 1), distanceAt(number));
        text += rule;
    };
    addList(
        tr(" Singlet states"), getSingletStatesCount(),
        [this](int index) { return inputData->getSingletExcitateStateVector(index); },
        [this](int number) { return getSingletRL(number); });
    addList(
        tr(" Triplet states"), getTripletStatesCount(),
        [this](int index) { return inputData->getTripletExcitateStateVector(index); },
        [this](int number) { return getTripletRL(number); });

    QString error;
    if (!reportText::writeFile(path, text, error)) {
        failWith(tr("\nThe report of the distances RL could not be written to the file: \n") +
                 path + QLatin1Char('\n') + error);
        return QString();
    }
    return text;
}
