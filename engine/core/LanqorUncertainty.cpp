#include "LanqorUncertainty.h"

#include "core/scrambledSobol_p.h"

#include <LanqorEngine/LanqorResultTables.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <boost/math/special_functions/erf.hpp>

namespace {

using Quantity = UncertaintyResults::Quantity;
using Factor = UncertaintyResults::Factor;

const double infinity = std::numeric_limits<double>::infinity();

QString tr(const char *text)
{
    return QCoreApplication::translate("LanqorUncertainty", text);
}

/// Share of a normal distribution below @p x standard deviations from its mean.
double normalShare(double x)
{
    return 0.5 * std::erfc(-x / std::sqrt(2.0));
}

double normalQuantile(double share)
{
    return -std::sqrt(2.0) * boost::math::erfc_inv(2.0 * share);
}

/// The distribution of an input, cut at what is possible.
class Distribution
{
public:
    explicit Distribution(const UncertainInput &input)
        : input(input)
    {
        const bool isLog = input.kind == UncertaintyKind::LogNormal;
        const double relative = input.standardDeviation / input.value;
        mean = isLog ? std::log(input.value) : input.value;
        deviation = isLog ? std::sqrt(std::log1p(relative * relative)) : input.standardDeviation;
        below = shareBelow(input.minimum);
        above = 1.0 - shareBelow(input.maximum);
    }

    double cutShare() const { return below + above; }
    double shareTooLow() const { return below; }
    double shareTooHigh() const { return above; }

    /// The value with the share @p u of all possible ones below it.
    double quantile(double u) const
    {
        const double share = below + u * (1.0 - above - below);
        double value = 0.0;
        if (input.kind == UncertaintyKind::Uniform)
            value = input.low + share * (input.high - input.low);
        else if (input.kind == UncertaintyKind::LogNormal)
            value = std::exp(mean + deviation * normalQuantile(share));
        else
            value = mean + deviation * normalQuantile(share);
        return std::min(std::max(value, input.minimum), input.maximum);
    }

private:
    double shareBelow(double x) const
    {
        if (std::isinf(x))
            return x < 0.0 ? 0.0 : 1.0;
        if (input.kind == UncertaintyKind::Uniform)
            return std::min(std::max((x - input.low) / (input.high - input.low), 0.0), 1.0);
        if (input.kind == UncertaintyKind::LogNormal)
            return x <= 0.0 ? 0.0 : normalShare((std::log(x) - mean) / deviation);
        return normalShare((x - mean) / deviation);
    }

    UncertainInput input;
    double mean = 0.0; // of the logarithm of a log-normal one
    double deviation = 0.0;
    double below = 0.0; // shares that are cut
    double above = 0.0;
};

/// The middle of what is possible of a range.
double middleOf(const UncertainInput &range)
{
    return 0.5 * (std::max(range.low, range.minimum) + std::min(range.high, range.maximum));
}

QString possibleValues(const UncertainInput &input)
{
    const QString least = tr("the least possible value is %1").arg(QString::number(input.minimum));
    return std::isinf(input.maximum)
               ? least
               : least + tr(", the largest %1").arg(QString::number(input.maximum));
}

/// The value with the share @p u of @p sorted below it, linear between the values (method 7 of R.
/// J. Hyndman and Y. Fan, Am. Stat. 50, 361 (1996)).
double quantileOf(const std::vector<double> &sorted, double u)
{
    const double place = u * double(sorted.size() - 1);
    const auto lower = std::size_t(place);
    const std::size_t upper = std::min(lower + 1, sorted.size() - 1);
    return sorted[lower] + (place - double(lower)) * (sorted[upper] - sorted[lower]);
}

void setIntervals(const std::vector<double> &values, Quantity &quantity)
{
    std::vector<double> sorted;
    for (const double value : values)
        if (std::isfinite(value))
            sorted.push_back(value);
    quantity.missing = int(values.size() - sorted.size());
    if (sorted.empty())
        sorted.push_back(std::numeric_limits<double>::quiet_NaN());
    std::sort(sorted.begin(), sorted.end());
    quantity.median = quantileOf(sorted, 0.5);
    quantity.low68 = quantileOf(sorted, 0.16);
    quantity.high68 = quantileOf(sorted, 0.84);
    quantity.low95 = quantileOf(sorted, 0.025);
    quantity.high95 = quantileOf(sorted, 0.975);
}

/// Appends the indices of the factor that @p ab has from @p b and the rest from @p a.
void addIndices(const std::vector<double> &a, const std::vector<double> &b,
                const std::vector<double> &ab, Quantity &quantity)
{
    double all = 0.0;
    double others = 0.0;
    double own = 0.0;
    double squares = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!std::isfinite(a[i]) || !std::isfinite(b[i]) || !std::isfinite(ab[i]))
            continue;
        all += (a[i] - b[i]) * (a[i] - b[i]);
        others += (b[i] - ab[i]) * (b[i] - ab[i]);
        own += (a[i] - ab[i]) * (a[i] - ab[i]);
        squares += a[i] * a[i] + b[i] * b[i];
    }
    constexpr double rounding = 1e-24; // squared; what is left of a result that does not vary
    const bool varies = all > rounding * squares;
    quantity.firstOrder.append(varies ? 1.0 - others / all : std::nan(""));
    quantity.total.append(varies ? own / all : std::nan(""));
}

} // namespace

class LanqorUncertaintyPrivate
{
public:
    bool refuse(const QString &message)
    {
        lastError = message;
        return false;
    }
    bool refuseRange(const UncertainInput &input)
    {
        return refuse(tr("%1: nothing from %2 to %3 can be; %4.")
                          .arg(input.name, QString::number(input.low), QString::number(input.high),
                               possibleValues(input)));
    }
    /// Sample A and sample B, point by point: values of numbers and rows of ensembles.
    std::vector<double> makePoints() const;
    /// Appends the values of factor @p number at its @p coordinate of such a point.
    void appendValues(int number, double coordinate, QVector<double> &values) const;
    QStringList warningsOfInputs() const;

    struct Ensemble
    {
        QVector<QVector<double>> rows; // none of an uncertain number
    };
    QVector<Factor> factors;
    QVector<Ensemble> ensembles; // by factor
    int samples = LanqorUncertainty::defaultSamples();
    QString lastError;
};

std::vector<double> LanqorUncertaintyPrivate::makePoints() const
{
    const int count = factors.size();
    std::vector<double> points = scrambledSobol(samples, 2 * count);
    std::vector<Distribution> distributions;
    for (const Factor &factor : factors)
        distributions.emplace_back(factor.input);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto factor = i % std::size_t(count);
        const int rows = ensembles.at(int(factor)).rows.size();
        points[i] =
            rows > 0 ? std::floor(points[i] * rows) : distributions[factor].quantile(points[i]);
    }
    return points;
}

void LanqorUncertaintyPrivate::appendValues(int number, double coordinate,
                                            QVector<double> &values) const
{
    const QVector<QVector<double>> &rows = ensembles.at(number).rows;
    if (rows.isEmpty())
        values.append(coordinate);
    else
        values += rows.at(int(coordinate));
}

QStringList LanqorUncertaintyPrivate::warningsOfInputs() const
{
    constexpr double leastTold = 0.001;
    QStringList warnings;
    for (int i = 0; i < factors.size(); ++i) {
        if (!ensembles.at(i).rows.isEmpty())
            continue;
        const UncertainInput &input = factors.at(i).input;
        const Distribution distribution(input);
        const auto percent = [](double share) { return QString::number(100.0 * share, 'g', 3); };
        if (distribution.shareTooLow() >= leastTold)
            warnings.append(tr("%1: %2 % of the distribution lie below %3, which cannot be, and "
                               "are cut off")
                                .arg(input.name, percent(distribution.shareTooLow()),
                                     QString::number(input.minimum)));
        if (distribution.shareTooHigh() >= leastTold)
            warnings.append(tr("%1: %2 % of the distribution lie above %3, which cannot be, and "
                               "are cut off")
                                .arg(input.name, percent(distribution.shareTooHigh()),
                                     QString::number(input.maximum)));
    }
    return warnings;
}

int LanqorUncertainty::defaultSamples()
{
    return 4096;
}

int LanqorUncertainty::mostSamples()
{
    return 65536;
}

LanqorUncertainty::LanqorUncertainty()
    : d(std::make_unique<LanqorUncertaintyPrivate>())
{}

LanqorUncertainty::~LanqorUncertainty() = default;

bool LanqorUncertainty::readText(const QString &text, UncertainInput &input)
{
    QString plain = text;
    plain.replace(QChar(0xb1), QStringLiteral("+-"))
        .replace(QLatin1String("+/-"), QLatin1String("+-"));
    const bool isRange = plain.contains(QLatin1Char(':'));
    const QString sign = isRange ? QStringLiteral(":") : QStringLiteral("+-");
    const QStringList parts = plain.split(sign);
    if (parts.size() != 2)
        return false;
    QString second = parts.at(1).trimmed();
    const bool isPercent = !isRange && second.endsWith(QLatin1Char('%'));
    if (isPercent)
        second.chop(1);
    bool areNumbers[2] = {};
    const double first = parts.at(0).trimmed().toDouble(&areNumbers[0]);
    const double last = second.toDouble(&areNumbers[1]);
    if (!areNumbers[0] || !areNumbers[1])
        return false;
    if (isRange) {
        input.kind = UncertaintyKind::Uniform;
        input.low = first;
        input.high = last;
        input.value = middleOf(input);
    } else {
        input.value = first;
        input.standardDeviation = isPercent ? 0.01 * last * std::abs(first) : last;
    }
    return true;
}

bool LanqorUncertainty::addInput(const UncertainInput &given)
{
    UncertainInput input = given;
    const bool isUniform = input.kind == UncertaintyKind::Uniform;
    if (isUniform)
        input.value = middleOf(input);
    if (!isUniform && !(input.standardDeviation >= 0.0 && std::isfinite(input.standardDeviation)))
        return d->refuse(tr("%1: a standard deviation of %2 cannot be; it is not below 0.")
                             .arg(input.name, QString::number(input.standardDeviation)));
    if (isUniform && !(input.low <= input.high && std::isfinite(input.high - input.low)))
        return d->refuse(
            tr("%1: the lower limit of a range stands first: %2 is not below %3.")
                .arg(input.name, QString::number(input.low), QString::number(input.high)));
    if (isUniform && (input.high < input.minimum || input.low > input.maximum))
        return d->refuseRange(input);
    const bool isLogNormal = input.kind == UncertaintyKind::LogNormal;
    if (!std::isfinite(input.value) || (isLogNormal && !(input.value > 0.0)) ||
        (!isUniform && (input.value < input.minimum || input.value > input.maximum)))
        return d->refuse(tr("%1: the value %2 cannot be; %3.")
                             .arg(input.name, QString::number(input.value), possibleValues(input)));
    const bool isFixed = isUniform ? input.low == input.high : input.standardDeviation == 0.0;
    Factor factor;
    factor.name = input.name;
    factor.input = input;
    factor.lowest = factor.highest = input.value;
    LanqorUncertaintyPrivate::Ensemble values;
    if (isFixed) {
        values.rows.append(QVector<double>{input.value});
    } else {
        constexpr double mostCut = 0.9999;
        const Distribution distribution(input);
        factor.cutShare = distribution.cutShare();
        if (factor.cutShare > mostCut)
            return d->refuseRange(input);
        factor.lowest = distribution.quantile(0.025);
        factor.highest = distribution.quantile(0.975);
    }
    d->factors.append(factor);
    d->ensembles.append(values);
    return true;
}

bool LanqorUncertainty::addEnsemble(const QString &name, const QVector<QVector<double>> &rows)
{
    const bool areEqual = std::all_of(rows.begin(), rows.end(), [&rows](const auto &row) {
        return row.size() == rows.first().size();
    });
    if (rows.isEmpty() || !areEqual)
        return d->refuse(tr("%1: an ensemble needs sets of equally many values.").arg(name));
    Factor factor;
    factor.name = name;
    factor.isEnsemble = true;
    factor.rows = rows.size();
    d->factors.append(factor);
    d->ensembles.append(LanqorUncertaintyPrivate::Ensemble{rows});
    return true;
}

void LanqorUncertainty::setSamples(const int &count)
{
    constexpr int least = 64;
    int samples = least;
    while (samples < count && samples < mostSamples())
        samples *= 2;
    d->samples = samples;
}

QString LanqorUncertainty::getLastError() const
{
    return d->lastError;
}

bool LanqorUncertainty::isEmpty() const
{
    return d->factors.isEmpty();
}

UncertaintyResults LanqorUncertainty::calculate(const QVector<ResultColumn> &quantities,
                                                const QVector<double> &values,
                                                const Model &model) const
{
    const int count = d->factors.size();
    const std::vector<double> points = d->makePoints();
    // Results of sample A (swapped: -1), or of A with one factor from B, or of B (swapped: count).
    const auto resultsOf = [&](int swapped) {
        std::vector<std::vector<double>> results(std::size_t(quantities.size()));
        for (int sample = 0; sample < d->samples; ++sample) {
            const double *point = &points[std::size_t(sample) * 2 * std::size_t(count)];
            QVector<double> inputs;
            for (int i = 0; i < count; ++i)
                d->appendValues(i, point[swapped == count || swapped == i ? count + i : i], inputs);
            const QVector<double> row = model(inputs);
            for (int q = 0; q < quantities.size(); ++q)
                results[std::size_t(q)].push_back(row.value(q, std::nan("")));
        }
        return results;
    };
    UncertaintyResults found;
    found.samples = d->samples;
    found.factors = d->factors;
    found.warnings = d->warningsOfInputs();
    const auto a = resultsOf(-1);
    const auto b = resultsOf(count);
    int missing = 0;
    for (int q = 0; q < quantities.size(); ++q) {
        Quantity quantity;
        quantity.name = quantities.at(q).key;
        quantity.unit = quantities.at(q).unit;
        quantity.value = values.value(q, std::nan(""));
        std::vector<double> both = a[std::size_t(q)];
        both.insert(both.end(), b[std::size_t(q)].begin(), b[std::size_t(q)].end());
        setIntervals(both, quantity);
        missing = std::max(missing, quantity.missing);
        found.quantities.append(quantity);
    }
    for (int i = 0; i < count; ++i) {
        const auto ab = resultsOf(i);
        for (int q = 0; q < quantities.size(); ++q)
            addIndices(a[std::size_t(q)], b[std::size_t(q)], ab[std::size_t(q)],
                       found.quantities[q]);
    }
    if (missing > 0)
        found.warnings.append(tr("%1 of %2 sets of values give no result and are left out")
                                  .arg(QString::number(missing), QString::number(2 * d->samples)));
    return found;
}
