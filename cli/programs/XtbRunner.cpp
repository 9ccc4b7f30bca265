#include "programs/XtbRunner.h"

#include "programs/ProgramRunner.h"
#include "programs/outputLines.h"

#include <LanqorEngine/LanqorXtbRun.h>

#include <QDir>
#include <QFile>

#include <memory>

namespace programs {

namespace {

constexpr char startName[] = "start.xyz";
constexpr char outputName[] = "xtb.out";
constexpr char geometryName[] = "xtbopt.xyz";
constexpr char chargesName[] = "charges";

/// Whether an output ends by a decision of xtb itself: finished, or stopped with its reasons.
bool hasEnd(const QString &fileName)
{
    bool isEnd = false;
    forEachLine(fileName, [&isEnd](const QByteArray &line) {
        isEnd = isEnd || line.contains("* finished run on") || line.startsWith("-1- ");
    });
    return isEnd;
}

/// Judges by the reader that the results go through later; @p keptOutput is where the output of a
/// failed run is found afterwards.
Verdict judge(const QDir &scratch, const QString &keptOutput)
{
    const QString output = scratch.filePath(QLatin1String(outputName));
    if (!hasEnd(output))
        return {QString(), {}, false};
    LanqorXtbRun run(nullptr, output);
    const bool hasResults = QFile::exists(scratch.filePath(QLatin1String(geometryName))) &&
                            QFile::exists(scratch.filePath(QLatin1String(chargesName)));
    const bool isGood = hasResults ? run.readOutput(scratch.filePath(QLatin1String(geometryName)),
                                                    scratch.filePath(QLatin1String(chargesName)))
                                   : run.readOutput();
    if (isGood)
        return {QString(), run.getResults().warnings, true};
    return {run.getLastError().replace(output, keptOutput), {}, true};
}

/// The cycle begins with its number, the gradient norm ends it.
class CycleReader
{
public:
    std::optional<ProgramProgress> take(const QByteArray &line)
    {
        if (line.startsWith(".....") && line.contains(" CYCLE "))
            progress.cycle = numberBehind(line, " CYCLE ").toInt();
        else if (line.startsWith(" * total energy  :"))
            progress.energy = numberBehind(line, ":").toDouble();
        else if (line.startsWith("   gradient norm :") && progress.cycle > 0) {
            progress.gradient = numberBehind(line, ":").toDouble();
            return progress;
        }
        return std::nullopt;
    }

private:
    static QByteArray numberBehind(const QByteArray &line, const QByteArray &words)
    {
        return line.mid(line.indexOf(words) + words.size()).simplified().split(' ').value(0);
    }

    ProgramProgress progress{0, 0.0, 0.0, QStringLiteral("hartree"),
                             QStringLiteral("hartree/bohr")};
};

/// Deuterium and tritium have the electrons of hydrogen.
QByteArray elementOf(const QString &label)
{
    return label == QLatin1String("D") || label == QLatin1String("T") ? QByteArray("H")
                                                                      : label.toLatin1();
}

QByteArray xyzText(const QVector<Coord> &atoms)
{
    QByteArray text = QByteArray::number(atoms.size()) + "\n\n";
    for (const Coord &atom : atoms)
        text += elementOf(atom.label) + ' ' + QByteArray::number(atom.x, 'f', 9) + ' ' +
                QByteArray::number(atom.y, 'f', 9) + ' ' + QByteArray::number(atom.z, 'f', 9) +
                '\n';
    return text;
}

/// Arguments of a single point in the gas phase.
QStringList pointArguments(const XtbRequest &request)
{
    QStringList arguments{QLatin1String(startName), QStringLiteral("--chrg"),
                          QString::number(request.charge), QStringLiteral("--gfn"),
                          QStringLiteral("1")};
    if (request.unpairedElectrons > 0)
        arguments += {QStringLiteral("--uhf"), QString::number(request.unpairedElectrons)};
    return arguments;
}

} // namespace

ProgramJob makeXtbJob(const XtbRequest &request)
{
    const QString base = request.folder + QLatin1Char('/') + request.baseName;
    ProgramJob job;
    job.program = {QStringLiteral("xtb"), QStringLiteral("xtb"), QStringLiteral("--xtb"),
                   request.path};
    job.arguments = pointArguments(request) + QStringList{QStringLiteral("--opt")};
    // In water the self-consistent calculation of a complex may collapse (-232 instead of -78
    // hartree for [Eu(acac)3(H2O)], gap 0.2 eV), but not from the wave function of the gas phase,
    // which xtb leaves in its restart file.
    if (!request.solvent.isEmpty()) {
        job.preparations.append(pointArguments(request));
        job.arguments += {QStringLiteral("--alpb"), request.solvent};
    }
    job.inputs = {{QLatin1String(startName), xyzText(request.atoms)}};
    job.outputName = QLatin1String(outputName);
    job.stdoutName = job.outputName;
    job.stderrName = QStringLiteral("xtb.err");
    job.results = {{QLatin1String(startName), base + QStringLiteral(".start.xyz"), true},
                   {job.stderrName, base + QStringLiteral(".err"), false},
                   {QLatin1String(chargesName), base + QStringLiteral(".charges"), true},
                   {QLatin1String(geometryName), base + QStringLiteral(".xyz"), true},
                   {job.outputName, base + QStringLiteral(".out"), true}};
    job.threads = request.threads;
    job.versionPattern = QRegularExpression(QStringLiteral("\\* xtb version (\\S+)"));
    const auto reader = std::make_shared<CycleReader>();
    job.readProgress = [reader](const QByteArray &line) { return reader->take(line); };
    const QString kept = nameOfFailed(base + QStringLiteral(".out"));
    job.judge = [kept](const QDir &scratch) { return judge(scratch, kept); };
    return job;
}

} // namespace programs
