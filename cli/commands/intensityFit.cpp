#include "commands/intensityFit.h"

#include "options/statePrograms.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorRL.h>
#include <LanqorEngine/LanqorSpectroscopicCalculation.h>
#include <LanqorEngine/YieldInputs.h>

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace cli {

namespace {

/// A target in the unit in which it is entered, to the digits that were entered.
double asEntered(double omega)
{
    return QString::number(omega / omegaUnitCm2, 'g', 15).toDouble();
}

/// What a yield depends on besides the intensity parameters.
YieldInputs yieldInputs(const IntensityFitOptions &options)
{
    constexpr double msPerSecond = 1000.0;
    const QStringList files = stateFiles(options.excited);
    LanqorInputData states(nullptr, files.first());
    states.setKeepFileOpen(true);
    const StateProgram *program = stateProgramOf(states);
    if (!program)
        throw Failure{unknownProgram(files.first())};
    readPair(states, *program, files);
    LanqorSpectroscopicCalculation calculation(nullptr, 0, program->type, options.geometry.get(),
                                               QString(), &states, 0, 0);
    if (!calculation.getLastError().isEmpty())
        failOf(calculation);
    const LanqorRL *donors = calculation.getRLCalculation();
    const QString mismatch = donors ? donors->getCompositionMismatch(*options.geometry) : QString();
    if (!mismatch.isEmpty())
        throw Failure{tr("--excited %1: %2").arg(options.excited, mismatch)};
    calculation.setLifeTime(options.lifetimeMs / msPerSecond);
    calculation.setETModel(2);
    return calculation.getYieldInputs();
}

} // namespace

QString omegaTable(const QVector<FittedOmega> &omega)
{
    QString text = tr("Intensity parameters / 1e-20 cm^2\n\n"
                      "  lambda    measured      fitted\n");
    for (const FittedOmega &each : omega)
        text += column(each.lambda, 8) +
                (std::isnan(each.measured) ? QStringLiteral("-").rightJustified(12)
                                           : column(asEntered(each.measured), 2, 12)) +
                column(each.fitted / omegaUnitCm2, 2, 12) + QLatin1Char('\n');
    return text + QLatin1Char('\n');
}

QString missedTargets(const QVector<FittedOmega> &omega)
{
    constexpr double printedHalf = 0.005;
    double largestGap = 0.0;
    for (const FittedOmega &each : omega) {
        const double gap = std::abs(each.fitted / omegaUnitCm2 - asEntered(each.measured));
        if (!std::isnan(gap))
            largestGap = std::max(largestGap, gap);
    }
    return largestGap > printedHalf
               ? tr("the targets were not reached: the best point found is off by %1e-20 cm^2.")
                     .arg(QString::number(largestGap, 'f', 2))
               : QString();
}

void noteMissedTargets(const QVector<FittedOmega> &omega, const QString &advice)
{
    const QString missed = missedTargets(omega);
    if (!missed.isEmpty())
        warn(missed + QLatin1Char(' ') + advice);
}

QString responseLine(double response, const QString &unit, qint64 points)
{
    const QString value = QString::number(response, 'g', 6);
    return tr("Response %1, best of %2 points\n")
        .arg(unit.isEmpty() ? value : value + QLatin1Char(' ') + unit, QString::number(points));
}

void describeTargets(const IntensityFitOptions &options, int dataCount, FitAccount &account)
{
    const auto target = [](const char *name, double value, double deviation) {
        const QString text = tr(name) + QLatin1Char(' ') + QString::number(value, 'g', 15);
        return deviation > 0.0 ? text + tr(" +- ") + QString::number(deviation, 'g', 15) : text;
    };
    account.targets = QStringList{target("Omega(2)", options.omega2, options.deviation2),
                                  target("Omega(4)", options.omega4, options.deviation4)};
    if (dataCount > 2)
        account.targets.append(tr("Omega(6) 0"));
    account.targets.last() += tr(" (1e-20 cm^2)");
    account.objective = options.deviation2 > 0.0
                            ? tr("response, the sum of ((computed - measured)/sd)^2")
                            : tr("response, the sum of the weighted squared differences");
    account.unit = options.deviation2 > 0.0 ? QString() : tr("(1e-20 cm^2)^2");
    account.dataCount = dataCount;
}

IntensitySolutions
sampleSolutions(const IntensityFitOptions &options,
                const LanqorIntensitySolutions::MakeDonors &make,
                const QVector<FitParameter> &sought, const QVector<FitParameter> &told,
                const std::function<QVector<double>(const QVector<double> &)> &toTold,
                const QVector<double> &weights, const QVector<QVector<double>> &known)
{
    constexpr int sampleSize = 300;
    constexpr double printedExcess = 5.0e-5; // of half a printed digit in each Omega
    LanqorIntensitySolutions solutions(options.geometry.get(), options.coordNumber, sought, make);
    solutions.setReported(told, toTold);
    solutions.setTargets(options.omega2 * omegaUnitCm2, options.omega4 * omegaUnitCm2,
                         weights.at(0), weights.at(1), weights.at(2));
    // With measured errors, what lies within one of them; else what is printed alike.
    solutions.setTolerance(
        options.deviation2 > 0.0 ? 1.0 : printedExcess * std::max(weights.at(0), weights.at(1)));
    solutions.setRefractiveIndex(options.refractiveIndex);
    solutions.setLigandAtomsByLigandVector(options.ligands);
    if (!options.excited.isEmpty())
        solutions.setYieldInputs(yieldInputs(options));
    IntensitySolutions sample = solutions.sample(known, sampleSize);
    if (!sample.groupError.isEmpty())
        throw Failure{tr("--ligands: %1").arg(sample.groupError)};
    if (!sample.yieldError.isEmpty())
        throw Failure{tr("--excited %1: %2").arg(options.excited, sample.yieldError)};
    if (!options.solutions.isEmpty())
        writeFile(options.solutions, LanqorIntensitySolutions::makeSolutionTable(sample).toCsv());
    return sample;
}

int chosenSolution(const OptionReader &reader, const QString &choice,
                   const IntensitySolutions &solutions)
{
    if (choice == QLatin1String("best"))
        return 0;
    if (choice == QLatin1String("central"))
        return solutions.central;
    const int number = choice.toInt();
    if (number > solutions.sets.size())
        reader.refuse(tr("--choose %1: there are %2 solutions")
                          .arg(choice, QString::number(solutions.sets.size())));
    return number - 1;
}

QString additions(const FitAccount &account, const IntensitySolutions &solutions,
                  const QString &choice, int chosen)
{
    const bool isNumber = choice != QLatin1String("best") && choice != QLatin1String("central");
    return LanqorFitAccount::makeText(account) + QLatin1Char('\n') +
           LanqorIntensitySolutions::makeText(solutions) +
           tr("  Reported above: solution %1 of %2%3.\n")
               .arg(QString::number(chosen + 1), QString::number(solutions.sets.size()),
                    isNumber ? QString() : tr(", the %1 one").arg(choice));
}

void checkWeights(double weight2, double weight4)
{
    if (!(weight2 >= 0.0 && weight4 >= 0.0))
        throw Failure{tr("the weights %1 and %2 of pesos.txt in the current folder: a negative "
                         "weight would reward the largest misfit; give --weights or correct the "
                         "file")
                          .arg(QString::number(weight2), QString::number(weight4))};
}

LanqorResultTables withAdditions(LanqorResultTables tables, const FitAccount &account,
                                 const IntensitySolutions &solutions, int chosen)
{
    tables.append(LanqorFitAccount::makeTables(account));
    tables.append(LanqorIntensitySolutions::makeTables(solutions, chosen));
    return tables;
}

void drawSolutions(const IntensityFitOptions &options, const IntensitySolutions &solutions,
                   const QVector<FitTrace> &traces)
{
    const QString title = QFileInfo(options.fileName).fileName();
    if (!options.fit.plot.isEmpty())
        plots::draw(plots::solutionPlane(title, solutions), options.fit.plot);
    if (!options.fit.convergencePlot.isEmpty())
        plots::draw(plots::convergence(title, tr("response"), traces), options.fit.convergencePlot);
}

} // namespace cli
