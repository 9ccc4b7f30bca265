#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/freeIonOptions.h"
#include "options/showResults.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorEnergyLevels.h>
#include <LanqorEngine/LanqorFreeIonParameters.h>
#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicTermUtil.h>

#include <QFileInfo>
#include <QMap>

#include <algorithm>
#include <cmath>
#include <limits>

using LanqorSpectroscopicTermUtil::textOfJ;
using LanqorSpectroscopicTermUtil::textOfLevel;

namespace {

using cli::tr;

constexpr double allLevels = -1.0;
constexpr double smallestShown = 0.05; // per cent

/// What is shown of the levels.
struct Selection
{
    double J = allLevels;
    double maximumEnergy = 0.0; ///< cm^-1; 0 shows all
    int components = 4;
    bool isOfElements = false; ///< squares between levels in place of the levels
    QString from;              ///< a level by its name or number; empty: of all
    QString report;            ///< absolute path; empty without
    QString plot;              ///< likewise
};

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "Energy levels of a free lanthanide(III) ion in intermediate coupling: all levels of 4f^n\n"
        "from the Slater integrals F_2, F_4, F_6, the spin-orbit parameter zeta and the two-body\n"
        "configuration interaction alpha L(L+1) + beta G(G2) + gamma G(R7), in cm^-1.\n\n"
        "Parameters that are not given are published ones of the aqueous ion (Ce, Yb: in LaF3, "
        "zeta\n"
        "alone), with their source above the levels; --parameters lists those of all ions. They "
        "were\n"
        "fitted together: with an F_k or zeta of your own alpha, beta and gamma are 0 unless "
        "given,\n"
        "and --alpha 0 --beta 0 --gamma 0 leaves them out. T^i, M^k and P^k (three electrons,\n"
        "spin-spin and spin-other-orbit) are not built: without them sets such as those of LaF3 "
        "of\n"
        "1978 and 1989 miss their levels by 30 to 340 cm^-1.\n\n"
        "A level is named after the Russell-Saunders level on whose place its eigenvalue settled,\n"
        "(3) telling which 5D of several; where terms mix strongly look at the composition. It is\n"
        "shown in per cent (squared coefficients) after the name; --report gives the coefficients\n"
        "with their signs.\n\n"
        "Examples:\n"
        "  lanqor levels --ion Tb --max-energy 30000\n"
        "  lanqor levels --ion Er --elements --from 4I13/2 --max-energy 25000\n"
        "  lanqor levels --ion Eu --F2 401 --F4 55.4 --F6 6.06 --zeta 1326 --J 2\n"
        "  lanqor levels --ion Er --Fk2 97483 --Fk4 67904 --Fk6 54010 --zeta 2376 --J 15/2"));
    cli::addFreeIonOptions(options);
    options.addOptions({
        {QStringLiteral("parameters"),
         tr("List the published parameters of all ions with their sources, and nothing else.")},
        {QStringLiteral("J"), tr("Show only levels of this J: 2, 5/2 or 2.5."), tr("J")},
        {QStringLiteral("max-energy"), tr("Show only levels up to this energy, cm^-1."),
         tr("cm^-1")},
        {QStringLiteral("elements"),
         tr("Show the squared reduced elements of U(2), U(4), U(6) and of L + g_s S between the "
            "levels.")},
        {QStringLiteral("from"),
         tr("With --elements only those of this level, by its name (4I13/2) or number."),
         tr("level")},
        {QStringLiteral("components"), tr("Largest components shown of each level; 0 shows none."),
         tr("number"), QStringLiteral("4")},
        {QStringLiteral("report"), tr("Write all levels with all their components to this file."),
         tr("file")},
    });
}

Selection readSelection(const cli::OptionReader &options)
{
    Selection selection;
    if (options.isSet("J") && !LanqorSpectroscopicTermUtil::parseJ(options.text("J"), selection.J))
        options.refuse(tr("--J needs an angular momentum such as 2, 5/2 or 2.5"));
    if (options.isSet("max-energy"))
        selection.maximumEnergy = options.number(
            "max-energy", [](double energy) { return energy >= 0.0; },
            tr("an energy above the ground level, in cm^-1"));
    selection.components =
        options.wholeNumber("components", 0, std::numeric_limits<int>::max(), tr("a whole number"));
    selection.isOfElements = options.isSet("elements");
    selection.from = options.text("from");
    if (!selection.isOfElements && options.isSet("from"))
        options.refuse(tr("--from goes with --elements"));
    if (selection.isOfElements && options.isSet("J"))
        options.refuse(tr("--elements shows all J; --from and --max-energy choose levels"));
    selection.report = options.outputFile("report");
    if (!plots::readOption(options).isEmpty())
        selection.plot = options.outputFile("plot");
    return selection;
}

using Level = FreeIonLevelsResults::Level;

QString heading(const FreeIonParameters &ion)
{
    const auto number = [](double value) { return QString::number(value, 'g', 8); };
    QString text = tr("Free-ion levels of %1\n").arg(cli::nameOf(ion));
    text += cli::hasElectrostaticSplitting(ion)
                ? tr("F2 %1  F4 %2  F6 %3  zeta %4 cm^-1\n")
                      .arg(number(ion.F2), number(ion.F4), number(ion.F6), number(ion.zeta))
                : tr("zeta %1 cm^-1\n").arg(number(ion.zeta));
    if (ion.alpha != 0.0 || ion.beta != 0.0 || ion.gamma != 0.0)
        text += tr("alpha %1  beta %2  gamma %3 cm^-1\n")
                    .arg(number(ion.alpha), number(ion.beta), number(ion.gamma));
    if (!ion.source.isEmpty())
        text += QStringLiteral("(%1)\n").arg(ion.source);
    return text + QLatin1Char('\n');
}

/// Number in the list of all levels, energy, J, name and the largest components.
QString levelLine(const Level &level)
{
    QString text = QString::number(level.number).rightJustified(5) +
                   QString::number(level.energy, 'f', 2).rightJustified(14) +
                   textOfJ(level.J).rightJustified(6) + QStringLiteral("  ");
    QString name = textOfLevel(level.label);
    for (const CoeffAndLabel &component : level.components) {
        const double percent = 100.0 * component.coefficient * component.coefficient;
        if (percent < smallestShown)
            break;
        text += name.leftJustified(9) +
                QStringLiteral("  %1 % ").arg(QString::number(percent, 'f', 1), 5);
        name = textOfLevel(component.label);
    }
    return text + name + QLatin1Char('\n');
}

QString tableOf(const FreeIonLevelsResults &results)
{
    QString table = tr("  No.  energy/cm^-1     J  level\n");
    for (const Level &level : results.levels)
        table += levelLine(level);
    return heading(results.parameters) + table;
}

/// The levels that are shown, with the components that are.
FreeIonLevelsResults selected(const FreeIonLevelsResults &all, const Selection &selection)
{
    FreeIonLevelsResults shown = all;
    shown.levels.clear();
    for (Level level : all.levels) {
        if ((selection.J != allLevels && level.J != selection.J) ||
            (selection.maximumEnergy > 0.0 && level.energy > selection.maximumEnergy))
            continue;
        level.components = level.components.mid(0, selection.components);
        shown.levels.append(level);
    }
    return shown;
}

/// The number of the level that --from tells; 0 without it.
int numberOf(const cli::OptionReader &options, const Selection &selection,
             const LanqorEnergyLevels &levels)
{
    if (selection.from.isEmpty())
        return 0;
    const int count = levels.getMixedStatesVector().size();
    bool isNumber = false;
    const int number = selection.from.toInt(&isNumber);
    if (isNumber && (number < 1 || number > count))
        options.refuse(tr("--from %1: the levels have the numbers 1 to %2")
                           .arg(selection.from, QString::number(count)));
    const QVector<int> named = isNumber ? QVector<int>{number} : levels.findLevels(selection.from);
    if (named.isEmpty())
        options.refuse(tr("--from: no level is called %1; names and numbers are those of \"lanqor "
                          "levels\" without --elements")
                           .arg(selection.from));
    return named.first();
}

/// The squares between the levels up to the energy that is shown.
void showElements(const cli::OptionReader &options, const Selection &selection,
                  const LanqorEnergyLevels &levels)
{
    constexpr double smallest = 5e-7; // prints as 0
    const FreeIonLevelsResults results = levels.getResults();
    const double maximumEnergy = selection.maximumEnergy > 0.0
                                     ? selection.maximumEnergy
                                     : std::numeric_limits<double>::infinity();
    const int from = numberOf(options, selection, levels);
    const QVector<ReducedSquares> squares =
        levels.getAllReducedSquares(maximumEnergy, from, smallest);
    if (squares.isEmpty())
        throw cli::Failure{tr("no two of the levels that are selected have a square above 5e-7")};
    QString text = heading(results.parameters) +
                   tr("Squared reduced elements; M1: of L + g_s S, hbar^2. Without pairs of which "
                      "all are below 5e-7.\n\n"
                      "  No.  from         energy/cm^-1   No.  to           energy/cm^-1       U(2)"
                      "       U(4)       U(6)          M1\n");
    const auto name = [&results](int number) {
        const Level &level = results.levels.at(number - 1);
        return QString::number(number).rightJustified(5) + QStringLiteral("  ") +
               textOfLevel(level.label).leftJustified(11) +
               QString::number(level.energy, 'f', 2).rightJustified(14);
    };
    const auto cell = [](double value, int decimals) {
        return QString::number(value, 'f', decimals).rightJustified(decimals + 5);
    };
    for (const ReducedSquares &pair : squares)
        text += name(pair.from) + QStringLiteral(" ") + name(pair.to) + cell(pair.U2, 6) +
                cell(pair.U4, 6) + cell(pair.U6, 6) + cell(pair.magnetic, 6).rightJustified(12) +
                QLatin1Char('\n');
    cli::showResults(options, text, LanqorEnergyLevels::makeTables(results, squares));
}

/// "⁵D(3)": the name of a level without its J.
QString termName(const QString &label)
{
    const auto term = LanqorSpectroscopicTermUtil::termFromLabel(label, true);
    const int multiplicity = static_cast<int>(std::lround(2.0 * term.S)) + 1;
    return plots::superscript(multiplicity) + label.mid(1, 1) +
           (term.termIndex > 0 ? QStringLiteral("(%1)").arg(term.termIndex) : QString());
}

/// A column of levels for each J; without an energy of one's own those up to 45000 cm^-1, above
/// which names find no room and 4f levels lie among others.
plots::LevelDiagram diagramOf(const FreeIonLevelsResults &results, const Selection &selection)
{
    constexpr double usualMaximum = 45000.0;
    const auto isAbove = [&](const Level &level) {
        return selection.maximumEnergy <= 0.0 && level.energy > usualMaximum;
    };
    const auto above = std::count_if(results.levels.begin(), results.levels.end(), isAbove);
    const bool isCut = above > 0 && above < results.levels.size();
    QMap<double, plots::LevelDiagram::Column> columns;
    for (const Level &level : results.levels) {
        if (isCut && isAbove(level))
            continue;
        columns[level.J].title = textOfJ(level.J);
        columns[level.J].levels.append({level.energy, termName(level.label)});
    }
    plots::LevelDiagram diagram;
    diagram.title = tr("Free-ion levels of %1").arg(cli::nameOf(results.parameters));
    diagram.columnsTitle = tr("J");
    if (isCut)
        diagram.remark = tr("%1 levels above %2 cm⁻¹ are left out")
                             .arg(QString::number(above), QString::number(usualMaximum));
    for (const plots::LevelDiagram::Column &column : qAsConst(columns))
        diagram.columns.append(column);
    return diagram;
}

/// The published parameters, each source once.
void showParameters(const cli::OptionReader &options)
{
    constexpr int width = 11;
    QVector<FreeIonParameters> ions;
    QStringList sources;
    QString text = tr("ion  4f^n         F2         F4         F6       zeta      alpha       beta"
                      "      gamma  source\n");
    const auto cell = [](double value) {
        return (value == 0.0 ? QStringLiteral("-") : QString::number(value, 'g', 8))
            .rightJustified(width);
    };
    for (const QString &symbol : LanqorFreeIonParameters::getSymbols()) {
        const FreeIonParameters ion = LanqorFreeIonParameters::getParameters(symbol);
        ions.append(ion);
        if (!sources.contains(ion.source))
            sources.append(ion.source);
        text += symbol + QString::number(ion.electrons).rightJustified(7);
        for (const double value :
             {ion.F2, ion.F4, ion.F6, ion.zeta, ion.alpha, ion.beta, ion.gamma})
            text += cell(value);
        text += QStringLiteral("  [%1]\n").arg(sources.indexOf(ion.source) + 1);
    }
    text += tr("\ncm^-1; F_k subscript (F_2 = F^2/225, F_4 = F^4/1089, F_6 = F^6/7361.64)\n");
    for (int i = 0; i < sources.size(); ++i)
        text += QStringLiteral("[%1] %2\n").arg(QString::number(i + 1), sources.at(i));
    cli::showResults(options, text, LanqorFreeIonParameters::makeTables(ions));
}

} // namespace

int levelsCommand(const QStringList &arguments)
{
    cli::OptionReader options("levels");
    describe(options);
    options.addOption(plots::option());
    options.addResultOptions();
    options.parse(arguments);
    options.files(0, tr("levels takes no file; which ion is told by --ion"));
    if (options.isSet("parameters")) {
        showParameters(options);
        return cli::success;
    }
    const FreeIonParameters ion = cli::readFreeIon(options);
    const Selection selection = readSelection(options);
    cli::enterDataFolder();

    LanqorEnergyLevels levels(nullptr, ion.electrons);
    if (levels.getSpectroscopicTermVector().isEmpty())
        cli::failOf(levels);
    levels.setParameters(ion);
    if (!levels.calcEnergyLevels(allLevels))
        cli::failOf(levels);

    const FreeIonLevelsResults results = levels.getResults();
    const FreeIonLevelsResults shown = selected(results, selection);
    if (shown.levels.isEmpty())
        throw cli::Failure{tr("none of the %1 levels of %2 is selected")
                               .arg(QString::number(results.levels.size()), cli::nameOf(ion))};
    if (selection.isOfElements)
        showElements(options, selection, levels);
    else
        cli::showResults(options, tableOf(shown), LanqorEnergyLevels::makeTables(shown));

    if (!selection.report.isEmpty())
        cli::writeFile(selection.report, levels.createOutputFile(QString()).toUtf8());
    if (!selection.plot.isEmpty())
        plots::draw(diagramOf(shown, selection), selection.plot);
    return cli::success;
}
