#include "Command.h"
#include "commands/commands.h"
#include "options/OptionReader.h"
#include "options/complexOptions.h"
#include "options/showResults.h"
#include "options/statePrograms.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorNormalizePoints.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <QFileInfo>

namespace {

using cli::column;
using cli::tr;

struct Request
{
    QStringList files;                     ///< two of a pair of MOPAC INDO outputs
    const StateProgram *program = nullptr; ///< null: to be found out
    double width = 0.0;                    // nm
    double start = 0.0;                    // nm
    double end = 0.0;                      // nm
    QString curveFile;
    QString plotFile;
    QString measuredFile;
};

Request readRequest(const cli::OptionReader &options)
{
    Request request;
    request.files = cli::stateFiles(
        options.files(1, tr("spectrum needs one file; see \"lanqor spectrum --help\"")).first());
    const QString name = options.text("program");
    request.program = cli::stateProgramNamed(name);
    if (!request.program && !name.isEmpty())
        options.refuse(tr("--program needs to be %1").arg(cli::programNames()));
    bool ok[3] = {};
    request.width = options.text("width").toDouble(&ok[0]);
    const QStringList limits = options.text("range").split(QLatin1Char(':'));
    request.start = limits.at(0).toDouble(&ok[1]);
    request.end = limits.value(1).toDouble(&ok[2]);
    if (!ok[0])
        options.refuse(tr("--width %1 is not a number of nm").arg(options.text("width")));
    if (!ok[1] || !ok[2] || limits.size() != 2)
        options.refuse(
            tr("--range %1 is not of the form START:END (nm)").arg(options.text("range")));
    request.curveFile = options.text("out");
    request.plotFile = plots::readOption(options);
    request.measuredFile = options.text("measured");
    if (options.isSet("measured"))
        cli::requireFile(QStringLiteral("--measured "), request.measuredFile,
                         tr("a text file of two columns, wavelength in nm and absorption"));
    return request;
}

/// The transitions in the range, by wavelength.
QString transitionTable(const AbsorptionResults &results)
{
    QString text = tr("  wavelength / nm   energy / cm^-1   oscillator strength\n");
    for (const AbsorptionTransition &transition : results.transitions)
        text += column(transition.wavelength, 2, 17) + column(transition.energy, 1, 17) +
                column(transition.oscillatorStrength, 6, 22) + QLatin1Char('\n');
    return text;
}

} // namespace

int spectrumCommand(const QStringList &arguments)
{
    cli::OptionReader options("spectrum");
    options.setDescription(tr(
        "Absorption spectrum of the computed excited states of an ORCA, Gaussian, ZINDO or\n"
        "MOPAC INDO output (of singlets): a Lorentzian band for each transition, summed on 1001 "
        "points that are evenly\n"
        "spaced in wavenumber, largest value 1.\n\n"
        "The width is in nm at every band (bandWidth p^2 / 1e7 cm^-1 around p cm^-1). Each line\n"
        "of the file of --out holds a wavelength in nm and the absorption there. The transitions\n"
        "in the range go to standard output.\n\n"
        "Example: lanqor spectrum ligand.out --range 200:500 --out ligand.esp --plot "
        "ligand.svg"));
    options.addArgument(QStringLiteral("FILE"), tr("output with excited states"), QString(),
                        cli::stateSuffixes());
    options.addOption({QStringLiteral("out"), tr("File of the curve."), QStringLiteral("file")});
    options.addOption({QStringLiteral("width"), tr("Full width at half maximum, nm."),
                       QStringLiteral("nm"), QStringLiteral("25")});
    options.addOption({QStringLiteral("range"), tr("Limits of the spectrum, nm."),
                       QStringLiteral("start:end"), QStringLiteral("150:450")});
    options.addOption({QStringLiteral("program"),
                       tr("The program that wrote FILE: %1; found out when it is not named.")
                           .arg(cli::programNames()),
                       QStringLiteral("name")});
    options.addOption({QStringLiteral("measured"),
                       tr("Measured spectrum to draw with it, of two columns, wavelength in nm and "
                          "absorption; scaled to a largest value of 1 in the range."),
                       QStringLiteral("file")});
    options.addOption(plots::option());
    options.addResultOptions();
    options.parse(arguments);
    const Request request = readRequest(options);
    cli::checkStateFiles(request.files);
    LanqorInputData output(nullptr, request.files.first());
    output.setKeepFileOpen(true);
    const StateProgram *program = request.program ? request.program : cli::stateProgramOf(output);
    if (!program)
        throw cli::Failure{cli::unknownProgram(request.files.first())};
    if (request.files.size() > 1) { // the spectrum is of the first; both belong together
        LanqorInputData pair(nullptr, request.files.first());
        cli::readPair(pair, *program, request.files);
    }

    LanqorNormalizePoints points(nullptr, &output, program->type);
    cli::showMessages(points);
    points.setParametersNormalization(request.width, request.start, request.end);
    if (!points.spectrum())
        cli::failOf(points);
    AbsorptionResults results = points.getResults();
    LanqorNormalizePoints::addConfigurations(results, output, program->type);
    QString error;
    if (!request.measuredFile.isEmpty() &&
        !LanqorNormalizePoints::addMeasured(results, request.measuredFile, error))
        throw cli::Failure{error};
    cli::showResults(options, transitionTable(results), LanqorNormalizePoints::makeTables(results));
    if (!request.curveFile.isEmpty() && !points.createEspFile(request.curveFile))
        cli::failOf(points);
    if (!request.plotFile.isEmpty())
        plots::draw(results, QFileInfo(request.files.first()).fileName(), request.plotFile);
    return cli::success;
}
