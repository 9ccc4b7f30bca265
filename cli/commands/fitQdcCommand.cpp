#include "Command.h"
#include "commands/commands.h"
#include "commands/intensityFit.h"
#include "options/OptionReader.h"
#include "options/intensityFitOptions.h"
#include "text.h"

#include <LanqorEngine/LanqorIndicesCalculation.h>
#include <LanqorEngine/LanqorParametricQDCBounded.h>

#include <algorithm>
#include <limits>

namespace {

using cli::tr;

void describe(cli::OptionReader &reader)
{
    reader.setDescription(tr(
        "Fits the parameters Q, D and C of the QDC model to measured Omega(2) and Omega(4) of a\n"
        "Eu3+ complex: by simulated annealing from several starts, each followed by a local\n"
        "minimisation. A coordinated atom with the electron population q and the\n"
        "superdelocalizability S has g = Q q and alpha = (D S + C) cubic Angstrom; the fit also\n"
        "drives Omega(6) to zero.\n\n"
        "FILE is a MOPAC output with all orbitals (keyword ALLVEC) and, for a report in QDC\n"
        "mode, the force matrix (a second job FORCE OLDGEO); Eu is atom 1 and the N coordinated\n"
        "atoms are atoms 2 to N+1.\n\n"
        "Bounds: C and D not negative; g 0.01 to 1 (F, Cl), 2 (O, S), 3 (N, P); alpha 0.005 to\n"
        "15 cubic Angstrom; D above --restriction times C during the first 100000 points. S is\n"
        "negative for donors, so that alpha needs C > D |S|: a restriction above about 2 leaves\n"
        "no point until it is lifted. The local minimisation lifts it at its first small step.\n\n"
        "Ctrl-C ends the fit and reports its best point (exit status 130).\n\n"
        "Example:\n"
        "  lanqor fit qdc complex.out --omega2 20.5 --omega4 8.1 --report complex.omg"));
    cli::addIntensityFitOptions(reader);
    reader.addOption({QStringLiteral("restriction"), tr("Lower limit of D/C, a whole number."),
                      tr("number"), QStringLiteral("1")});
}

QString parameterTable(const ParametersQDC &best)
{
    const auto line = [](const char *name, double value, const char *unit) {
        return QStringLiteral("  %1 = %2  %3\n")
            .arg(QLatin1String(name), QString::number(value, 'f', 6).rightJustified(12),
                 QLatin1String(unit));
    };
    return line("Q", best.Q, "1/electron") + line("D", best.D, "A^3 eV") +
           line("C", best.C, "A^3") +
           tr("\ng = Q q, q being an electron population of the orbitals (no charge), in "
              "electrons;\n"
              "alpha = D S + C, S in 1/eV (orbital energies of MOPAC)\n\n");
}

/// Whether the smallest polarisability takes the place of C: not in the plain annealing, and not
/// where C has a value or bounds of its own.
bool soughtByAlpha(const cli::FitOptions &options)
{
    const auto namesC = [](const QString &text) {
        return text.section(QLatin1Char('='), 0, 0).trimmed().toUpper() == QLatin1String("C");
    };
    const QStringList settings = options.fixed + options.bounds;
    return options.isPolished && std::none_of(settings.begin(), settings.end(), namesC);
}

} // namespace

int fitQdcCommand(const QStringList &arguments)
{
    cli::OptionReader reader("fit qdc");
    describe(reader);
    reader.parse(arguments);
    const int restriction =
        reader.wholeNumber("restriction", std::numeric_limits<int>::min(),
                           std::numeric_limits<int>::max(), tr("a whole number"));
    cli::IntensityFitOptions options = cli::readIntensityFitOptions(reader);
    LanqorIndicesCalculation indices(nullptr, options.geometry.get(),
                                     LanqorIndicesCalculation::MopacOutput);
    if (!indices.calculateIndices())
        cli::failOf(indices);
    if (!indices.getLastError().isEmpty())
        cli::warn(indices.getLastError());

    const bool isBounded = soughtByAlpha(options.fit);
    cli::IntensityFitKind<LanqorParametricQDC> kind;
    kind.dataCount = 3;
    kind.weight6 = 1.0;
    kind.makeFit = [&] {
        std::unique_ptr<LanqorParametricQDC> fit;
        if (isBounded)
            fit = std::make_unique<LanqorParametricQDCBounded>(nullptr, options.geometry.get(), 0);
        else
            fit = std::make_unique<LanqorParametricQDC>(nullptr, options.geometry.get(), 0);
        fit->setCoordNumber(options.coordNumber);
        fit->setRestrictionValue(restriction);
        fit->setSuperDeslocalizability(&indices);
        return fit;
    };
    kind.toSought = [](LanqorParametricQDC &fit, const QVector<FitParameter> &told) {
        auto *bounded = qobject_cast<LanqorParametricQDCBounded *>(&fit);
        return bounded ? told.mid(0, 2) + bounded->getBoundedParameters().mid(2) : told;
    };
    kind.vectorToSought = [](LanqorParametricQDC &fit, const QVector<double> &told) {
        auto *bounded = qobject_cast<LanqorParametricQDCBounded *>(&fit);
        return bounded ? bounded->fromQdc(told) : told;
    };
    kind.vectorToTold = [](LanqorParametricQDC &fit, const QVector<double> &sought) {
        auto *bounded = qobject_cast<LanqorParametricQDCBounded *>(&fit);
        return bounded ? bounded->toQdc(sought) : sought;
    };
    const auto outcome = cli::runIntensityFit(reader, options, kind);
    const QdcFitResults &results = outcome.results;
    cli::noteMissedTargets(results.omega,
                           tr("The fit weighs them against Omega(6), which it drives to zero, and "
                              "three parameters serve all atoms; more starts (--starts) may come "
                              "nearer."));
    cli::showIntensityFit<LanqorParametricQDC>(reader, options, outcome,
                                               parameterTable(results.parameters));
    return outcome.status;
}
