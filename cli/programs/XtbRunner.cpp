#include "programs/XtbRunner.h"

#include "programs/outputLines.h"
#include "text.h"

#include <QDir>

#include <memory>

using cli::tr;

namespace programs {

namespace {

constexpr char startName[] = "start.xyz";
constexpr char outputName[] = "xtb.out";

/// What an output of xtb holds.
struct XtbOutput
{
    bool isFinished = false; ///< "* finished run on", of a good run
    bool hasEnergy = false;
    bool hasNoNumber = false;
    bool isConverged = false; ///< the optimisation
    QStringList errors;       ///< of the lines "-3- ...", the cause last
};

XtbOutput readOutput(const QString &fileName)
{
    static const QRegularExpression error(QStringLiteral("^-\\d+- (.+)$"));
    XtbOutput output;
    forEachLine(fileName, [&](const QByteArray &line) {
        output.isFinished = output.isFinished || line.contains("* finished run on");
        output.isConverged = output.isConverged || line.contains("GEOMETRY OPTIMIZATION CONVERGED");
        output.hasEnergy = output.hasEnergy || line.contains("| TOTAL ENERGY");
        output.hasNoNumber = output.hasNoNumber || holdsNoNumber(line);
        const QRegularExpressionMatch match = error.match(QString::fromUtf8(line));
        if (match.hasMatch() && !output.errors.contains(match.captured(1).simplified()))
            output.errors.append(match.captured(1).simplified());
    });
    return output;
}

Verdict judge(const XtbOutput &output)
{
    const QString words = output.errors.join(QStringLiteral(" / "));
    const bool isScf = words.contains(QLatin1String("harge iterator did not converge"));
    if (output.hasNoNumber)
        return {tr("the output of xtb holds values that are no numbers (NaN)%1: GFN1 does so for "
                   "Eu in crowded spheres; Gd in its place or one water less usually runs")
                    .arg(words.isEmpty() ? QString() : QStringLiteral("; ") + words),
                {}};
    if (isScf)
        return {tr("the SCF of xtb did not converge: check the charge, or start from another "
                   "geometry; its own words: %1")
                    .arg(words),
                {}};
    if (!words.isEmpty())
        return {tr("xtb stopped; its own words: %1").arg(words), {}};
    if (output.isFinished && !output.hasEnergy)
        return {tr("xtb ended \"normally\" without a result: there is no total energy in its "
                   "output"),
                {}};
    if (output.isFinished && !output.isConverged)
        return {tr("the optimisation of xtb did not converge: start from another geometry"), {}};
    return {QString(), {}, output.isFinished};
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

QByteArray xyzText(const QVector<Coord> &atoms)
{
    QByteArray text = QByteArray::number(atoms.size()) + "\n\n";
    for (const Coord &atom : atoms)
        text += atom.label.toLatin1() + ' ' + QByteArray::number(atom.x, 'f', 9) + ' ' +
                QByteArray::number(atom.y, 'f', 9) + ' ' + QByteArray::number(atom.z, 'f', 9) +
                '\n';
    return text;
}

QStringList argumentsOf(const XtbRequest &request)
{
    QStringList arguments{
        QLatin1String(startName), QStringLiteral("--chrg"), QString::number(request.charge),
        QStringLiteral("--gfn"),  QStringLiteral("1"),      QStringLiteral("--opt")};
    if (request.unpairedElectrons > 0)
        arguments += {QStringLiteral("--uhf"), QString::number(request.unpairedElectrons)};
    if (!request.solvent.isEmpty())
        arguments += {QStringLiteral("--alpb"), request.solvent};
    return arguments;
}

} // namespace

ProgramJob makeXtbJob(const XtbRequest &request)
{
    const QString base = request.folder + QLatin1Char('/') + request.baseName;
    ProgramJob job;
    job.program = {QStringLiteral("xtb"), QStringLiteral("xtb"), QStringLiteral("--xtb"),
                   request.path};
    job.arguments = argumentsOf(request);
    job.inputs = {{QLatin1String(startName), xyzText(request.atoms)}};
    job.outputName = QLatin1String(outputName);
    job.stdoutName = job.outputName;
    job.stderrName = QStringLiteral("xtb.err");
    job.results = {{QLatin1String(startName), base + QStringLiteral(".start.xyz"), true},
                   {job.stderrName, base + QStringLiteral(".err"), false},
                   {QStringLiteral("charges"), base + QStringLiteral(".charges"), true},
                   {QStringLiteral("xtbopt.xyz"), base + QStringLiteral(".xyz"), true},
                   {job.outputName, base + QStringLiteral(".out"), true}};
    job.threads = request.threads;
    job.versionPattern = QRegularExpression(QStringLiteral("\\* xtb version (\\S+)"));
    const auto reader = std::make_shared<CycleReader>();
    job.readProgress = [reader](const QByteArray &line) { return reader->take(line); };
    job.judge = [](const QDir &scratch) {
        return judge(readOutput(scratch.filePath(QLatin1String(outputName))));
    };
    return job;
}

} // namespace programs
