#include "options/uncertainOptions.h"

#include "Command.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorIntensitySolutions.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QLocale>

#include <algorithm>
#include <limits>

namespace cli {

namespace {

/// What an option that gives a number has in its place.
bool looksUncertain(const QString &text)
{
    return text.contains(QLatin1String("+-")) || text.contains(QLatin1String("+/-")) ||
           text.contains(QChar(0xb1)) || text.contains(QLatin1Char(':'));
}

QString plainNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

UncertainOptions::UncertainOptions(OptionReader &reader, const QVector<UncertainOption> &options)
    : reader(reader)
    , options(options)
{
    QStringList names;
    for (const UncertainOption &option : options)
        names.append(QStringLiteral("--") + option.name);
    reader.addOption({QStringLiteral("samples"),
                      tr("Sets of values for error bars: any number of %1 may be "
                         "given as value+-sd (normal; log-normal for rates and lifetimes) or as "
                         "low:high (uniform), such as --n 1.5+-0.05; then medians, intervals and "
                         "the share of each input in the variance are told. Inputs count as "
                         "independent of each other.")
                          .arg(names.join(QStringLiteral(", "))),
                      tr("number"), QString::number(LanqorUncertainty::defaultSamples())});
}

void UncertainOptions::addPlotOption(const QString &otherwise)
{
    reader.addOption({QStringLiteral("plot"),
                      tr("Draw the error bars of uncertain numbers; without any, %1 "
                         "(.svg, .png or .pdf).")
                          .arg(otherwise),
                      tr("picture")});
}

void UncertainOptions::addSolutionsOption()
{
    reader.addOption({QStringLiteral("solutions"),
                      tr("Equally good sets of Omega, as \"lanqor fit omega --solutions\" writes "
                         "them: error bars take one or another of them in place of Omega."),
                      tr("file")});
    takesSolutions = true;
}

QStringList UncertainOptions::read(const QStringList &arguments)
{
    QStringList plain;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const QString name = argument.section(QLatin1Char('='), 0, 0);
        const auto option =
            std::find_if(options.cbegin(), options.cend(), [&name](const UncertainOption &known) {
                return name == QStringLiteral("--") + known.name;
            });
        plain.append(argument);
        const bool isJoined = name != argument;
        if (option == options.cend() || (!isJoined && i + 1 == arguments.size()))
            continue;
        const QString text = isJoined ? argument.section(QLatin1Char('='), 1) : arguments.at(++i);
        const QString value = readOption(*option, text);
        reader.keepText(option->name, text);
        if (isJoined)
            plain.last() = name + QLatin1Char('=') + value;
        else
            plain.append(value);
    }
    return plain;
}

QString UncertainOptions::readOption(const UncertainOption &option, const QString &text)
{
    // Of an option that is given twice, the last one counts.
    uncertain.erase(
        std::remove_if(uncertain.begin(), uncertain.end(),
                       [&option](const Number &number) { return number.option == option.name; }),
        uncertain.end());
    if (!looksUncertain(text))
        return text;
    QStringList entries = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (int i = 0; i < entries.size(); ++i) {
        const QString entry = entries.at(i);
        const int equals = entry.indexOf(QLatin1Char('='));
        const QString number = entry.mid(equals + 1);
        if (!looksUncertain(number))
            continue;
        const QString own = equals > 0 ? entry.left(equals).trimmed() : option.entries.value(i);
        UncertainInput input;
        input.name = own.isEmpty() ? option.name : option.name + QLatin1Char(' ') + own;
        input.unit = option.unit;
        input.kind = option.kind;
        input.minimum = option.minimum;
        input.maximum = option.maximum;
        if (!LanqorUncertainty::readText(number, input))
            throw UsageError{tr("--%1: \"%2\" is neither a number nor value+-sd nor low:high")
                                 .arg(option.name, number.trimmed())};
        LanqorUncertainty check;
        if (!check.addInput(input))
            throw UsageError{QStringLiteral("--") + check.getLastError()};
        entries[i] = entry.left(equals + 1) + plainNumber(input.value);
        uncertain.append({option.name, i, input});
    }
    return entries.join(QLatin1Char(','));
}

QVector<int> UncertainOptions::numbersOf(const QString &option) const
{
    QVector<int> places;
    for (int i = 0; i < uncertain.size(); ++i)
        if (uncertain.at(i).option == option)
            places.append(i);
    return places;
}

void UncertainOptions::check() const
{
    if (!isEmpty() || (takesSolutions && reader.isSet("solutions")))
        return;
    if (reader.isSet("samples"))
        reader.refuse(tr("--samples: no number is uncertain; give one as value+-sd or low:high"));
}

void UncertainOptions::prepare(LanqorUncertainty &uncertainty) const
{
    uncertainty.setSamples(reader.wholeNumber(
        "samples", 64, LanqorUncertainty::mostSamples(),
        tr("a whole number from 64 to %1").arg(LanqorUncertainty::mostSamples())));
    for (const Number &number : uncertain)
        uncertainty.addInput(number.input);
}

UncertainOption uncertainRefractiveIndex()
{
    constexpr double largest = 10.0;
    return {QStringLiteral("n"), QStringLiteral("1"), UncertaintyKind::Normal, 1.0, largest, {}};
}

QVector<UncertainOption> uncertainChargeFactors()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {{QStringLiteral("g"), QStringLiteral("1"), UncertaintyKind::Normal, 0.0, infinity, {}},
            {QStringLiteral("alpha"),
             QStringLiteral("Angstrom^3"),
             UncertaintyKind::Normal,
             0.0,
             infinity,
             {}}};
}

QVector<QVector<double>> readSolutions(const OptionReader &reader,
                                       const UncertainOptions &uncertain)
{
    for (const char *option : {"omega", "omega-ed", "g", "alpha"})
        if (!uncertain.numbersOf(QLatin1String(option)).isEmpty())
            reader.refuse(tr("--solutions gives the spread of Omega; uncertain numbers in --%1 do "
                             "not go with it")
                              .arg(QLatin1String(option)));
    constexpr int ranks = 3;
    QStringList columns;
    for (const char *column : {"omega_%1", "ed_share_of_omega_%1"})
        for (int i = 1; i <= ranks; ++i)
            columns.append(QString::fromLatin1(column).arg(2 * i));
    QVector<QVector<double>> rows;
    QString error;
    const QString fileName = reader.text("solutions");
    requireFile(QStringLiteral("--solutions "), fileName,
                tr("a file written by \"lanqor fit omega --solutions\""));
    if (!LanqorIntensitySolutions::readSolutions(fileName, columns, rows, error))
        throw Failure{QStringLiteral("--solutions ") + error};
    for (QVector<double> &row : rows)
        for (int i = 0; i < ranks; ++i)
            row[i + ranks] *= row.at(i); // the ED part by its share
    return rows;
}

void warnOfOtherSolutions(const QVector<QVector<double>> &solutions, const QVector<double> &omegas)
{
    constexpr double tolerance = 0.02; // of a fit that meets its targets
    for (int i = 0; i < omegas.size(); ++i) {
        double least = solutions.first().at(i);
        double largest = least;
        for (const QVector<double> &row : solutions) {
            least = std::min(least, row.at(i));
            largest = std::max(largest, row.at(i));
        }
        const double omega = omegas.at(i);
        if (omega < (1.0 - tolerance) * least || omega > (1.0 + tolerance) * largest)
            warn(tr("Omega(%1) is %2e-20 cm^2, but %3 to %4 in --solutions: of another complex or "
                    "another fit?")
                     .arg(QString::number(2 * (i + 1)), QString::number(omega, 'g', 4),
                          QString::number(least, 'g', 4), QString::number(largest, 'g', 4)));
    }
}

void addImpossibleLifetimes(UncertaintyResults &results, int impossible, int sets)
{
    constexpr double leastTold = 0.001;
    if (impossible > leastTold * sets)
        results.warnings.append(
            tr("in %1 % of the sets of values the lifetime is longer than the radiative one: a "
               "quantum efficiency above 100 %, which cannot be and is left out")
                .arg(QString::number(100.0 * impossible / sets, 'g', 2)));
}

void addErrorBars(const UncertaintyResults &results, QString &text, LanqorResultTables &tables)
{
    for (const QString &warning : results.warnings)
        warn(warning);
    text += LanqorUncertainty::makeText(results);
    tables.append(LanqorUncertainty::makeTables(results));
}

} // namespace cli
