#include "commands/crystalFieldPictures.h"

#include "text.h"

#include <LanqorEngine/CrystalFieldResults.h>
#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <algorithm>
#include <cmath>

using LanqorSpectroscopicTermUtil::termFromLabel;
using LanqorSpectroscopicTermUtil::textOfJ;

namespace cli {

namespace {

using Level = plots::LevelDiagram::Level;

/// "⁵D(3)", from "5D(3)2".
QString termName(const QString &label)
{
    const auto term = termFromLabel(label, true);
    return plots::superscript(static_cast<int>(std::lround(2.0 * term.S)) + 1) + label.mid(1, 1) +
           (term.termIndex > 0 ? QStringLiteral("(%1)").arg(term.termIndex) : QString());
}

QString subscript(const QString &text)
{
    const QString digits = QString::fromUtf8("₀₁₂₃₄₅₆₇₈₉");
    QString lowered;
    for (const QChar character : text)
        lowered += character.isDigit() ? digits.at(character.digitValue()) : character;
    return lowered;
}

/// "⁷F₁", "⁴I₉/₂".
QString levelName(const CrystalFieldResults::FreeIonLevel &level)
{
    return termName(level.label) + subscript(textOfJ(level.J));
}

/// Whole wavenumbers; the splitting of an S term needs more.
QString textOfEnergy(double energy)
{
    return QString::number(energy, 'f', energy > 0.0 && energy < 10.0 ? 2 : 0);
}

/// "Eu(III), 4f⁶ in a crystal field".
QString titleOf(const FreeIonParameters &ion)
{
    const QString configuration = QStringLiteral("4f") + plots::superscript(ion.electrons);
    return ion.symbol.isEmpty()
               ? tr("%1 in a crystal field").arg(configuration)
               : tr("%1(III), %2 in a crystal field").arg(ion.symbol, configuration);
}

/// Mean of the energies of all states.
double barycentreOf(const FreeIonLevelsResults &results)
{
    double sum = 0.0;
    double states = 0.0;
    for (const auto &level : results.levels) {
        sum += (2.0 * level.J + 1.0) * level.energy;
        states += 2.0 * level.J + 1.0;
    }
    return sum / states;
}

/// The terms, which spin-orbit interaction splits but does not move as a whole, from the lowest
/// level of the free ion.
QVector<Level> termsOf(const FreeIonParameters &ion, double maximumEnergy)
{
    constexpr double hardlyAny = 1e-6; // cm^-1
    LanqorEnergyLevels levels(nullptr, ion.electrons);
    levels.setParameters(ion);
    if (!levels.calcEnergyLevels(-1.0))
        return {};
    const double barycentre = barycentreOf(levels.getResults());
    FreeIonParameters withoutSpinOrbit = ion;
    withoutSpinOrbit.zeta = hardlyAny;
    levels.setParameters(withoutSpinOrbit);
    if (!levels.calcEnergyLevels(-1.0))
        return {};
    const FreeIonLevelsResults results = levels.getResults();
    const double shift = barycentre - barycentreOf(results);
    QVector<Level> terms;
    for (const auto &level : results.levels) {
        const double energy = level.energy + shift;
        const bool isOfLast = !terms.isEmpty() && energy - terms.last().energy < 0.01;
        if (energy <= maximumEnergy && !isOfLast)
            terms.append({energy, termName(level.label)});
    }
    return terms;
}

} // namespace

double topOfGroundTerm(const CrystalFieldResults &results)
{
    constexpr double usual = 45000.0;
    constexpr double roomAbove = 1.12;
    double top = 0.0;
    const auto ground = termFromLabel(results.groundMultiplet, true);
    for (const auto &level : results.freeIonLevels)
        if (LanqorSpectroscopicTermUtil::isSameTerm(termFromLabel(level.label, true), ground))
            top = std::max(top, level.energy);
    return top > 0.0 ? roomAbove * top + results.crystalFieldStrength : usual;
}

plots::LevelDiagram starkDiagram(const CrystalFieldResults &results,
                                 const QVector<CrystalFieldResults::MeasuredLevel> &measured,
                                 double maximumEnergy)
{
    plots::LevelDiagram diagram;
    diagram.title = titleOf(results.ion);
    // Levels count from the lowest state, those of the free ion from its lowest level.
    const double shift = -results.lowestEnergy;
    diagram.columns.append({tr("terms"), termsOf(results.ion, maximumEnergy)});
    plots::LevelDiagram::Column freeIon{tr("free ion"), {}};
    for (const auto &level : results.freeIonLevels)
        if (level.energy <= maximumEnergy)
            freeIon.levels.append({level.energy + shift, levelName(level)});
    for (Level &level : diagram.columns.first().levels)
        level.energy += shift;
    diagram.columns.append(freeIon);
    plots::LevelDiagram::Column stark{tr("Stark levels"), {}};
    for (const auto &level : results.levels)
        if (level.energy <= maximumEnergy)
            stark.levels.append(
                {level.energy,
                 textOfEnergy(level.energy) + (level.degeneracy > 2
                                                   ? QStringLiteral(" (%1)").arg(level.degeneracy)
                                                   : QString())});
    diagram.columns.append(stark);
    if (measured.isEmpty())
        return diagram;
    plots::LevelDiagram::Column beside{tr("measured"), {}};
    for (const CrystalFieldResults::MeasuredLevel &level : measured)
        if (level.energy <= maximumEnergy)
            beside.levels.append(
                {level.energy,
                 (textOfEnergy(level.energy) + QLatin1Char(' ') + level.label).trimmed()});
    diagram.columns.append(beside);
    return diagram;
}

plots::CurvePlot susceptibilityPlot(const CrystalFieldResults &results)
{
    using Susceptibility = CrystalFieldResults::Susceptibility;
    plots::CurvePlot plot;
    plot.title = titleOf(results.ion);
    plot.xTitle = tr("<i>T</i> / K");
    plot.yTitle = QString::fromUtf8("<i>χT</i> / cm<sup>3</sup> K mol<sup>−1</sup>");
    const auto add = [&](const QString &name, double Susceptibility::*value) {
        plots::CurvePlot::Series series;
        series.name = name;
        series.style = plots::CurvePlot::Style::Curve;
        for (const Susceptibility &s : results.susceptibilities)
            series.points.append({s.T, s.*value});
        std::sort(series.points.begin(), series.points.end(),
                  [](const QPointF &a, const QPointF &b) { return a.x() < b.x(); });
        plot.series.append(series);
    };
    add(tr("powder"), &Susceptibility::chiT);
    const bool isAxial = std::all_of(
        results.susceptibilities.cbegin(), results.susceptibilities.cend(),
        [](const Susceptibility &s) { return std::abs(s.chiTx - s.chiTy) < 1e-6 * s.chiTx; });
    add(isAxial ? tr("along x, y") : tr("along x"), &Susceptibility::chiTx);
    if (!isAxial)
        add(tr("along y"), &Susceptibility::chiTy);
    add(tr("along z"), &Susceptibility::chiTz);
    if (results.vanVleckLambda > 0.0)
        add(tr("Van Vleck"), &Susceptibility::vanVleck);
    return plot;
}

} // namespace cli
