#include "commands/yieldVariation.h"

#include "Command.h"
#include "commands/yieldErrorBars.h"
#include "options/OptionReader.h"
#include "options/chargeFactorSets.h"
#include "options/yieldOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorResultTables.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/LanqorYieldScan.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

using Calculation = LanqorSpectroscopicCalculation;
using cli::tr;

namespace {

constexpr double omegaUnitCm2 = 1.0e-20;
constexpr std::array<int, 3> ranks = {2, 4, 6};
const auto omegaOption = QStringLiteral("omega");
const auto omegaEdOption = QStringLiteral("omega-ed");

bool isOmega(const QString &quantity)
{
    return quantity.startsWith(omegaOption);
}

QVector<cli::UncertainOption> uncertainOptions()
{
    const QStringList entries = {QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("6")};
    QVector<cli::UncertainOption> options = cli::uncertainChargeFactors();
    for (const QString &name : {omegaOption, omegaEdOption})
        options.append({name, QStringLiteral("1e-20 cm^2"), UncertaintyKind::Normal, 0.0,
                        std::numeric_limits<double>::infinity(), entries});
    for (const YieldQuantity &quantity : Calculation::getYieldQuantities()) {
        if (isOmega(quantity.name))
            continue;
        const bool isPositive =
            quantity.unit == QLatin1String("s^-1") || quantity.name == QLatin1String("lifetime");
        options.append({quantity.name,
                        quantity.unit,
                        isPositive ? UncertaintyKind::LogNormal : UncertaintyKind::Normal,
                        LanqorYieldScan::leastOf(quantity.name),
                        LanqorYieldScan::largestOf(quantity.name),
                        {}});
    }
    return options;
}

/// The quantity of the yield that an uncertain number sets.
YieldQuantity quantityOf(const cli::UncertainOptions::Number &number)
{
    const QString name = isOmega(number.option)
                             ? number.option + QString::number(ranks.at(std::size_t(number.entry)))
                             : number.option;
    for (const YieldQuantity &quantity : Calculation::getYieldQuantities())
        if (quantity.name == name)
            return quantity;
    return {};
}

} // namespace

YieldVariation::YieldVariation(cli::OptionReader &options)
    : options(options)
    , uncertain(options, uncertainOptions())
{
    uncertain.addSolutionsOption();
    options.addOption({QStringLiteral("scan"),
                       tr("Vary an input, NAME=FROM:TO:STEP, such as "
                          "--scan triplet-energy=17500:21000:50 or temperature=77:400:10; given "
                          "twice, a map. Names are those of options of one number, and omega2 to "
                          "omega-ed6; --csv takes all points, --plot draws them."),
                       tr("range")});
}

void YieldVariation::check()
{
    uncertain.check();
    if (options.isSet("solutions"))
        solutions = cli::readSolutions(options, uncertain);
}

UncertaintyResults YieldVariation::calcUncertainty(const Calculation &calculation,
                                                   LanqorInputData &complex, int coordNumber,
                                                   const yieldOptions::Request &request) const
{
    LanqorUncertainty uncertainty;
    uncertain.prepare(uncertainty);
    if (!solutions.isEmpty())
        uncertainty.addEnsemble(QStringLiteral("solutions"), solutions);
    QVector<YieldQuantity> quantities;
    for (const cli::UncertainOptions::Number &number : uncertain.numbers())
        quantities.append(quantityOf(number));
    const bool varyFactors = !uncertain.numbersOf(QStringLiteral("g")).isEmpty() ||
                             !uncertain.numbersOf(QStringLiteral("alpha")).isEmpty();
    std::unique_ptr<cli::ChargeFactorSets> factors;
    if (varyFactors)
        factors = std::make_unique<cli::ChargeFactorSets>(uncertain, complex, coordNumber,
                                                          request.g, request.alpha);
    const YieldInputs asGiven = calculation.getYieldInputs();
    if (!solutions.isEmpty())
        cli::warnOfOtherSolutions(solutions,
                                  {asGiven.omega[2] / omegaUnitCm2, asGiven.omega[4] / omegaUnitCm2,
                                   asGiven.omega[6] / omegaUnitCm2});
    return cli::calcYieldErrorBars(
        uncertainty, calculation, [&](const QVector<double> &values, YieldInputs &inputs) {
            if (factors) {
                if (!factors->calc(values))
                    return false;
                cli::setOmegas(
                    inputs, [&](int rank) { return factors->omega().getOmega(rank); },
                    [&](int rank) { return factors->omega().getOmegaED(rank); });
            }
            for (int i = 0; i < quantities.size(); ++i)
                if (quantities.at(i).set)
                    quantities.at(i).set(inputs, values.at(i));
            if (!solutions.isEmpty()) {
                const auto first = quantities.size();
                cli::setOmegas(
                    inputs,
                    [&](int rank) { return values.at(first + rank / 2 - 1) * omegaUnitCm2; },
                    [&](int rank) { return values.at(first + rank / 2 + 2) * omegaUnitCm2; });
            }
            return true;
        });
}

QString YieldVariation::intervalOfYield() const
{
    if (uncertaintyResults.quantities.isEmpty())
        return QString();
    const UncertaintyResults::Quantity &yield = uncertaintyResults.quantities.first();
    return tr(" (68 %: %1 to %2 %)")
        .arg(cli::textOfYield(yield.low68), cli::textOfYield(yield.high68));
}

double YieldVariation::tripletDeviation() const
{
    for (const UncertaintyResults::Factor &factor : uncertaintyResults.factors) {
        if (factor.name != QLatin1String("triplet-energy"))
            continue;
        const UncertainInput &input = factor.input;
        return input.kind == UncertaintyKind::Uniform ? (input.high - input.low) / std::sqrt(12.0)
                                                      : input.standardDeviation;
    }
    return 0.0;
}

void YieldVariation::run(const Calculation &calculation, LanqorInputData &complex, int coordNumber,
                         const yieldOptions::Request &request, QString &text,
                         LanqorResultTables &tables)
{
    if (!uncertain.isEmpty() || !solutions.isEmpty()) {
        uncertaintyResults = calcUncertainty(calculation, complex, coordNumber, request);
        cli::addErrorBars(uncertaintyResults, text, tables);
    }
    if (!options.isSet("scan"))
        return;
    LanqorYieldScan scan(calculation.getYieldInputs());
    for (const QString &axis : options.texts("scan"))
        if (!scan.addAxis(axis))
            options.refuse(QStringLiteral("--scan ") + scan.getLastError());
    scanResults = scan.calculate();
    const auto &points = scanResults.points;
    if (points.size() > 1 &&
        std::all_of(points.begin(), points.end(), [&points](const YieldScanResults::Point &point) {
            return point.quantumYield == points.first().quantumYield;
        }))
        cli::note(tr("--scan: the yield does not depend on that"));
    const auto missing =
        std::count_if(points.begin(), points.end(), [](const YieldScanResults::Point &point) {
            return std::isnan(point.quantumYield);
        });
    if (missing > 0)
        cli::warn(tr("--scan: %1 of %2 points have no yield, for example because a lifetime cannot "
                     "be longer than the radiative one")
                      .arg(QString::number(missing), QString::number(points.size())));
    text += LanqorYieldScan::makeText(scanResults);
    tables.append(LanqorYieldScan::makeTables(scanResults));
}
