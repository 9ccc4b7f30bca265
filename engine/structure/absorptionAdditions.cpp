#include "LanqorNormalizePoints.h"

#include "input/spectrumTable_p.h"

#include <LanqorEngine/LanqorInputData.h>

#include <algorithm>
#include <cmath>

namespace {

/// "HOMO-1" or "LUMO+2"; the bare number without a HOMO.
QString orbitalName(int number, int homo)
{
    if (homo < 0)
        return QString::number(number);
    if (number <= homo)
        return number == homo ? QStringLiteral("HOMO")
                              : QStringLiteral("HOMO-%1").arg(homo - number);
    const int above = number - homo - 1;
    return above == 0 ? QStringLiteral("LUMO") : QStringLiteral("LUMO+%1").arg(above);
}

/// Number of the HOMO as printed; -1 where the output does not tell.
int homoOf(LanqorInputData &output, int program)
{
    if (program == LanqorInputData::OrcaOutput && !output.readMolecularOrbitalOccupancy())
        return -1;
    const bool isKnown =
        program == LanqorInputData::OrcaOutput || program == LanqorInputData::MopacIndoOutput;
    return isKnown && output.getHomoMO() > 0 ? output.getHomoMO() : -1;
}

/// The singlet of an energy, cm^-1; -1 without one. Lists of one output differ in the last digit.
int singletOf(const LanqorInputData &output, double energy)
{
    constexpr double tolerance = 2.0;
    int nearest = -1;
    double distance = tolerance;
    for (int i = 0; i < output.getSingletStatesCount(); ++i) {
        const double away = std::abs(output.getSingletExcitateStateVector(i).energy - energy);
        if (away < distance) {
            distance = away;
            nearest = i;
        }
    }
    return nearest;
}

} // namespace

void LanqorNormalizePoints::addConfigurations(AbsorptionResults &results, LanqorInputData &output,
                                              int const &program)
{
    // Singlets are there even where the reading fails afterwards, for lack of triplets.
    if (output.getSingletStatesCount() == 0 &&
        !output.readExcitedStates(static_cast<LanqorInputData::ProgramType>(program)) &&
        output.getSingletStatesCount() == 0)
        return;
    const int homo = homoOf(output, program);
    for (AbsorptionTransition &transition : results.transitions) {
        const int state = singletOf(output, transition.energy);
        if (state < 0)
            continue;
        const QVector<double> weights = output.getSingletWeights(state);
        const auto largest = std::max_element(weights.cbegin(), weights.cend());
        if (largest == weights.cend() || !(*largest > 0.0))
            continue;
        const int place = 2 * int(largest - weights.cbegin());
        const QVector<int> orbitals = output.getSingletExcitateStateVector(state).configurations;
        transition.fromOrbital = orbitals.at(place);
        transition.toOrbital = orbitals.at(place + 1);
        transition.weight = *largest;
        transition.configuration = orbitalName(transition.fromOrbital, homo) + QStringLiteral(" ") +
                                   QChar(0x2192) + QStringLiteral(" ") +
                                   orbitalName(transition.toOrbital, homo);
    }
}

bool LanqorNormalizePoints::addMeasured(AbsorptionResults &results, QString const &fileName,
                                        QString &error)
{
    constexpr double longestNm = 5000.0; // beyond, they are wavenumbers
    const SpectrumTable table = readSpectrumTable(fileName);
    error = table.error;
    if (!error.isEmpty())
        return false;
    if (table.x.front() <= 0.0 || table.x.back() >= longestNm) {
        error =
            tr("%1: the first column runs from %2 to %3; wavelengths in nm are needed.")
                .arg(fileName, QString::number(table.x.front()), QString::number(table.x.back()));
        return false;
    }
    const double low = std::min(results.rangeStart, results.rangeEnd);
    const double high = std::max(results.rangeStart, results.rangeEnd);
    double largest = 0.0;
    for (std::size_t i = 0; i < table.x.size(); ++i)
        if (table.x[i] >= low && table.x[i] <= high)
            largest = std::max(largest, table.y[i]);
    if (!(largest > 0.0)) {
        error = tr("%1: no absorption above zero between %2 and %3 nm.")
                    .arg(fileName, QString::number(low), QString::number(high));
        return false;
    }
    results.measuredFile = fileName;
    for (std::size_t i = 0; i < table.x.size(); ++i) {
        results.measuredWavelengths.append(table.x[i]);
        results.measuredAbsorption.append(table.y[i] / largest);
    }
    return true;
}
