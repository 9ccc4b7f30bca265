#include "programs/MopacRunner.h"

#include "programs/outputLines.h"
#include "text.h"

#include <QDir>

using cli::tr;

namespace programs {

namespace {

constexpr char inputName[] = "job.mop";
constexpr char outputName[] = "job.out";

/// What an output of MOPAC holds.
struct MopacOutput
{
    bool hasEnd = false;   ///< "JOB ENDED NORMALLY", which closes refused jobs, too
    bool isTimeUp = false; ///< MOPAC's own limit, keyword T=
    bool hasScf = false;
    bool hasNoNumber = false;
    bool isStuck = false; ///< the optimiser gave up
    int stateCount = 0;   ///< rows of the table of excited states
    double heat = 0.0;    ///< of formation, kcal/mol
    bool hasHeat = false;
    double gradient = 0.0;     ///< norm at the end, kcal/mol/Angstrom
    QStringList messages;      ///< of the box of errors, or what stands for them elsewhere
    QString endOfOptimisation; ///< its own sentence
};

/// The number behind the first '=' of a line.
double numberBehindEquals(const QByteArray &line, bool &ok)
{
    return line.mid(line.indexOf('=') + 1).simplified().split(' ').value(0).toDouble(&ok);
}

/// Reads the rows of the table of states: number, then energies with a decimal point.
class StateTable
{
public:
    int count = 0;
    void take(const QByteArray &line)
    {
        if (line.contains("CI trans.")) {
            isInside = true;
            return;
        }
        const QList<QByteArray> fields = line.simplified().split(' ');
        bool isNumber = false;
        fields.value(0).toInt(&isNumber);
        if (isInside && isNumber)
            ++count;
        else if (isInside && count > 0)
            isInside = false;
    }

private:
    bool isInside = false;
};

void takeMessage(const QByteArray &line, bool &isInBox, MopacOutput &output)
{
    if (line.contains("Error and normal termination messages")) {
        isInBox = true;
        return;
    }
    if (!isInBox)
        return;
    QString text = QString::fromUtf8(line).simplified();
    if (text.startsWith(QLatin1String("****")) || !text.startsWith(QLatin1Char('*'))) {
        isInBox = output.messages.isEmpty();
        return;
    }
    text.remove(QLatin1Char('*'));
    text = text.trimmed();
    if (!text.isEmpty() && text != QLatin1String("JOB ENDED NORMALLY"))
        output.messages.append(text);
}

MopacOutput readOutput(const QString &fileName)
{
    MopacOutput output;
    StateTable states;
    bool isInBox = false;
    forEachLine(fileName, [&](const QByteArray &line) {
        takeMessage(line, isInBox, output);
        states.take(line);
        output.hasEnd = output.hasEnd || line.contains("JOB ENDED NORMALLY");
        output.isTimeUp = output.isTimeUp || line.contains("- - TIME UP - -");
        output.hasScf = output.hasScf || line.contains("SCF FIELD WAS ACHIEVED");
        output.hasNoNumber = output.hasNoNumber || holdsNoNumber(line);
        if (line.contains("FINAL HEAT OF FORMATION"))
            output.heat = numberBehindEquals(line, output.hasHeat);
        bool isNumber = false;
        if (line.contains("GRADIENT NORM ") && line.contains('='))
            output.gradient = numberBehindEquals(line, isNumber);
        for (const char *words :
             {"BFGS FAILED", "CYCLES EXCEEDED", "EXCESS NUMBER OF OPTIMIZATION CYCLES",
              "A FAILURE HAS OCCURRED", "MESSAGE SHOULD NEVER APPEAR"})
            if (line.contains(words)) {
                output.isStuck = true;
                output.endOfOptimisation = QString::fromUtf8(line).simplified();
            }
    });
    output.stateCount = states.count;
    return output;
}

QString withMessages(const QString &text, const MopacOutput &output)
{
    return output.messages.isEmpty()
               ? text
               : tr("%1; its own words: %2").arg(text, output.messages.join(QStringLiteral(" / ")));
}

/// What is wrong with any job; empty: nothing.
QString commonFault(const MopacOutput &output)
{
    if (output.isTimeUp)
        return tr("MOPAC stopped at a time limit of its own (keyword T= of the job) before the "
                  "optimisation was done: give a longer one");
    const QString messages = output.messages.join(QLatin1Char(' '));
    if (messages.contains(QLatin1String("SELF-CONSISTENCE")) ||
        messages.contains(QLatin1String("SCF CALCULATION FAILED")))
        return withMessages(tr("the SCF of MOPAC did not converge: check the charge, or start from "
                               "another geometry or with another method"),
                            output);
    if (!output.messages.isEmpty())
        return withMessages(tr("MOPAC refused the job"), output);
    if (output.hasNoNumber)
        return tr("the output of MOPAC holds values that are no numbers (NaN): start from another "
                  "geometry or with another method");
    return QString();
}

Verdict judgeOptimisation(const MopacOutput &output)
{
    QString fault = commonFault(output);
    if (fault.isEmpty() && output.hasEnd && !(output.hasScf && output.hasHeat))
        fault = tr("MOPAC ended \"normally\" without a result: there is no %1 in its output")
                    .arg(output.hasScf ? tr("heat of formation") : tr("converged SCF"));
    constexpr double notRelaxed = 10.0; // kcal/mol/Angstrom
    if (fault.isEmpty() && output.hasEnd && (output.isStuck || output.gradient > notRelaxed))
        fault = tr("the optimisation of MOPAC did not converge (gradient norm %1 "
                   "kcal/mol/Angstrom%2): start from another geometry or with another method")
                    .arg(QString::number(output.gradient),
                         output.endOfOptimisation.isEmpty()
                             ? QString()
                             : QStringLiteral("; \"%1\"").arg(output.endOfOptimisation));
    QStringList remarks;
    constexpr double asked = 1.0; // kcal/mol/Angstrom; the jobs ask for 0.25
    if (fault.isEmpty() && output.gradient > asked)
        remarks.append(tr("the optimisation of MOPAC ended at a gradient norm of %1 "
                          "kcal/mol/Angstrom, above the one asked for")
                           .arg(output.gradient));
    return {fault, remarks, output.hasEnd};
}

Verdict judgeStates(const MopacOutput &output)
{
    QString fault = commonFault(output);
    if (fault.isEmpty() && output.hasEnd && output.stateCount == 0)
        fault = tr("MOPAC ended \"normally\" without a result: there is no table of excited states "
                   "in its output");
    return {fault, {}, output.hasEnd};
}

/// " CYCLE:   117 TIME:   0.055 TIME LEFT:  1.43W  GRAD.:     1.547 HEAT: -177.6425"
std::optional<ProgramProgress> readCycle(const QByteArray &line)
{
    static const QRegularExpression cycle(
        QStringLiteral("^ CYCLE:\\s*(\\d+) .*GRAD\\.:\\s*([-+.\\d]+) HEAT:\\s*([-+.\\d]+)"));
    if (!line.startsWith(" CYCLE:"))
        return std::nullopt;
    const QRegularExpressionMatch match = cycle.match(QString::fromLatin1(line));
    if (!match.hasMatch())
        return std::nullopt;
    return ProgramProgress{match.captured(1).toInt(), match.captured(3).toDouble(),
                           match.captured(2).toDouble(), QStringLiteral("kcal/mol"),
                           QStringLiteral("kcal/mol/Angstrom")};
}

} // namespace

ProgramJob makeMopacJob(const MopacRequest &request)
{
    const QString input = QLatin1String(inputName);
    const QString output = QLatin1String(outputName);
    const QString base = request.folder + QLatin1Char('/') + request.baseName;
    const bool isOptimisation = request.kind == MopacRequest::Kind::Optimisation;
    ProgramJob job;
    job.program = {QStringLiteral("mopac"), QStringLiteral("mopac"), QStringLiteral("--mopac"),
                   request.path};
    job.arguments = QStringList{input};
    job.inputs = {{input, request.job}};
    job.outputName = output;
    job.stdoutName = QStringLiteral("stdout");
    job.stderrName = QStringLiteral("job.log");
    job.results = {{input, base + QStringLiteral(".mop"), true},
                   {job.stderrName, base + QStringLiteral(".log"), false}};
    if (isOptimisation)
        job.results.append({QStringLiteral("job.arc"), base + QStringLiteral(".arc"), true});
    job.results.append({output, base + QStringLiteral(".out"), true});
    job.threads = request.threads;
    job.versionPattern =
        QRegularExpression(QStringLiteral("(?:MOPAC v|Version:?\\s+)(\\d[\\w.]*)"));
    job.readProgress = readCycle;
    job.judge = [isOptimisation](const QDir &scratch) {
        const MopacOutput result = readOutput(scratch.filePath(QLatin1String(outputName)));
        return isOptimisation ? judgeOptimisation(result) : judgeStates(result);
    };
    return job;
}

} // namespace programs
