#include "Command.h"
#include "commands/commands.h"
#include "commands/crystalFieldPictures.h"
#include "options/OptionReader.h"
#include "options/atomValues.h"
#include "options/complexOptions.h"
#include "options/freeIonOptions.h"
#include "options/showResults.h"
#include "plots/plots.h"
#include "text.h"

#include <LanqorEngine/LanqorBkq.h>
#include <LanqorEngine/LanqorCrystalField.h>
#include <LanqorEngine/LanqorInputData.h>
#include <LanqorEngine/LanqorResultTables.h>

#include <algorithm>
#include <limits>

namespace {

using cli::tr;

constexpr double usualMaximum = 45000.0;

void describe(cli::OptionReader &options)
{
    options.setDescription(tr(
        "All states of a lanthanide(III) ion in a crystal field (cm^-1), with g tensors and\n"
        "magnetism: the free ion in intermediate coupling, as \"lanqor levels\" has it, plus the\n"
        "field sum B(k,q) C(k)q between all of its levels, so that levels of different J mix.\n\n"
        "The field is told by one of\n"
        "  --bkq FILE              parameters in cm^-1, one a line: k, q, real part and imaginary\n"
        "                          part, which may be left out (4 -4 -1249), or B44 in place of\n"
        "                          k and q; # starts a comment\n"
        "  --complex FILE --g ...  a structure with Eu as atom 1, as \"lanqor stark\" takes it\n"
        "Normalisations of --bkq:\n"
        "  wybourne           B(k,q), the coefficient of C(k)q = sqrt(4 pi/(2k+1)) Y(k,q); of q "
        "and\n"
        "                     -q one is enough, for B(k,-q) = (-1)^q conj(B(k,q))\n"
        "  stevens            A(k,q) <r^k>, real; q < 0: sine type\n"
        "  stevens-operators  B(k,q) = theta(k) A(k,q) <r^k> of the ground multiplet, real; with\n"
        "                     --cutoff 1 that multiplet is taken alone\n"
        "The output gives them in all three. For real parameters the sign of odd q, and for all\n"
        "the sign of the imaginary parts, is a choice of axes: no level depends on it.\n\n"
        "The free-ion levels up to --cutoff are kept; the output tells what those left out would\n"
        "do in second order. T^i, M^k and P^k, orbital reduction and diamagnetism are not built.\n"
        "--plot draws terms, free-ion levels, Stark levels and those of --measured, without\n"
        "--max-energy those of the ground term.\n\n"
        "Examples:\n"
        "  lanqor crystal-field --ion Nd --bkq liyf4.bkq\n"
        "  lanqor crystal-field --ion Er --bkq liyf4.bkq --plot-chi er.svg --max-energy 500\n"
        "  lanqor crystal-field --complex complex.out --g O=0.6,N=0.9 --cutoff 25000"));
    cli::addFreeIonOptions(options);
    options.addOptions({
        {QStringLiteral("bkq"), tr("Parameters of the field."), tr("file")},
        {QStringLiteral("normalisation"),
         tr("Their normalisation: wybourne, stevens or stevens-operators."), tr("name"),
         QStringLiteral("wybourne")},
        {QStringLiteral("complex"), tr("Structure of a complex of Eu3+, in place of --bkq."),
         tr("file")},
        {QStringLiteral("g"), tr("Charge factors for --complex, e.g. O=0.6,N=0.9,5=0.4."),
         tr("list")},
        cli::overlapOption(),
        cli::coordinationOption(),
        {QStringLiteral("cutoff"),
         tr("Keep the free-ion levels up to this energy, cm^-1; 0 keeps all. Unless given all "
            "when the field connects at most 1001 states, which takes seconds, else those up to "
            "40000."),
         tr("cm^-1")},
        {QStringLiteral("max-energy"), tr("Show levels up to this energy, cm^-1."), tr("cm^-1"),
         QStringLiteral("45000")},
        {QStringLiteral("components"), tr("Largest components shown of each level; 0 shows none."),
         tr("number"), QStringLiteral("3")},
        {QStringLiteral("temperatures"),
         tr("Temperatures of the magnetism, K: 2,10,300 or first:last:step."), tr("list"),
         QStringLiteral("2,5,10,20,50,100,150,200,250,300")},
        {QStringLiteral("fields"),
         tr("Magnetic fields, tesla, for the magnetisation of the powder at those temperatures: "
            "1,3,7 or first:last:step."),
         tr("list")},
        {QStringLiteral("measured"),
         tr("Measured levels to draw beside the calculated ones: energy (cm^-1) and, if wanted, a "
            "name on each line."),
         tr("file")},
        plots::option(),
        {QStringLiteral("plot-chi"), tr("Draw chi T against T (2 to 300 K unless told)."),
         QStringLiteral("picture")},
    });
}

/// What the command line asks for.
struct Request
{
    FreeIonParameters ion;
    QVector<StarkResults::FieldParameter> field;
    FieldNormalisation normalisation = FieldNormalisation::Wybourne;
    double cutOff = -1.0;
    double maximumEnergy = 0.0;
    int components = 0;
    QVector<double> temperatures;
    QVector<double> fields;
    QVector<CrystalFieldResults::MeasuredLevel> measured;
    QString plot; ///< absolute paths, as the folder changes
    QString plotOfChi;
};

FieldNormalisation readNormalisation(const cli::OptionReader &options)
{
    const QString name = options.text("normalisation");
    if (name == QLatin1String("wybourne"))
        return FieldNormalisation::Wybourne;
    if (name == QLatin1String("stevens"))
        return FieldNormalisation::Stevens;
    if (name != QLatin1String("stevens-operators"))
        options.refuse(tr("--normalisation: \"%1\" is none of wybourne, stevens, "
                          "stevens-operators")
                           .arg(name));
    return FieldNormalisation::StevensOperators;
}

/// The field of a complex by the simple overlap model.
void readComplex(const cli::OptionReader &options, Request &request)
{
    const double ro0 = cli::readOverlap(options);
    LanqorInputData geometry(nullptr, options.text("complex"));
    geometry.setKeepFileOpen(true);
    cli::showMessages(geometry);
    const int coordNumber = cli::readSphere(options, geometry);
    const QVector<double> g =
        cli::readAtomValues(geometry, coordNumber, QStringLiteral("--g"), options.text("g"));
    LanqorBkq bkq(&geometry, coordNumber);
    if (!bkq.setChargeFactors(g) || !bkq.calculateRO(ro0))
        throw cli::Failure{bkq.getLastError()};
    for (int k = 2; k <= 6; k += 2)
        for (int q = -k; q <= k; ++q) {
            const MyComplex B = bkq.getBkq(k, q);
            request.field.append({k, q, B.real, q == 0 ? 0.0 : B.imag});
        }
}

void readField(const cli::OptionReader &options, Request &request)
{
    request.normalisation = readNormalisation(options);
    if (options.isSet("bkq") == options.isSet("complex"))
        options.refuse(tr("crystal-field needs the field, by --bkq FILE or by --complex FILE and "
                          "--g; see \"lanqor crystal-field --help\""));
    if (options.isSet("complex")) {
        if (request.ion.electrons != 6)
            options.refuse(tr("--complex: the model of the field is that of Eu3+, not of %1; give "
                              "the parameters of another ion by --bkq")
                               .arg(cli::nameOf(request.ion)));
        readComplex(options, request);
        return;
    }
    QString error;
    if (!LanqorCrystalField::readParameters(options.text("bkq"), request.normalisation,
                                            request.field, error))
        throw cli::Failure{error};
}

/// "2,10,300" or "2:300:2".
QVector<double> readList(const cli::OptionReader &options, const char *name,
                         const QString &defaultText = QString())
{
    constexpr int most = 2000;
    const QString needed = tr("numbers such as 2,10,300, or first:last:step such as 2:300:2");
    const QString text =
        options.isSet(name) || defaultText.isEmpty() ? options.text(name) : defaultText;
    const QStringList range = text.split(QLatin1Char(':'));
    QVector<double> values;
    bool isRight = true;
    const auto number = [&isRight](const QString &entry) {
        bool isNumber = false;
        const double value = entry.trimmed().toDouble(&isNumber);
        isRight = isRight && isNumber;
        return value;
    };
    if (range.size() == 3) {
        const double first = number(range.at(0));
        const double last = number(range.at(1));
        const double step = number(range.at(2));
        isRight = isRight && step > 0.0 && last >= first && (last - first) / step < most;
        for (int i = 0; isRight && first + i * step <= last + 1e-9 * step; ++i)
            values.append(first + i * step);
    } else {
        for (const QString &entry : text.split(QLatin1Char(',')))
            values.append(number(entry));
    }
    if (!isRight || values.size() > most)
        options.refuse(tr("--%1 needs %2").arg(QLatin1String(name), needed));
    return values;
}

Request readRequest(const cli::OptionReader &options)
{
    Request request;
    request.ion =
        cli::readFreeIon(options, options.isSet("complex") ? QStringLiteral("Eu") : QString());
    readField(options, request);
    const auto isEnergy = [](double energy) { return energy >= 0.0 && energy < 1e7; };
    if (options.isSet("cutoff"))
        request.cutOff = options.number("cutoff", isEnergy, tr("an energy in cm^-1, or 0"));
    request.maximumEnergy =
        options.number("max-energy", isEnergy, tr("an energy above the ground level, in cm^-1"));
    request.components =
        options.wholeNumber("components", 0, std::numeric_limits<int>::max(), tr("a whole number"));
    request.temperatures = readList(
        options, "temperatures", options.isSet("plot-chi") ? QStringLiteral("2:300:2") : QString());
    if (options.isSet("fields"))
        request.fields = readList(options, "fields");
    QString error;
    if (options.isSet("measured") &&
        !LanqorCrystalField::readMeasuredLevels(options.text("measured"), request.measured, error))
        throw cli::Failure{error};
    if (!plots::readOption(options).isEmpty())
        request.plot = options.outputFile("plot");
    if (!plots::readOption(options, "plot-chi").isEmpty())
        request.plotOfChi = options.outputFile("plot-chi");
    return request;
}

LanqorResultTables tablesOf(const CrystalFieldResults &results,
                            const QVector<CrystalFieldResults::MeasuredLevel> &measured)
{
    LanqorResultTables tables = LanqorCrystalField::makeTables(results);
    if (measured.isEmpty())
        return tables;
    QVector<QVector<QVariant>> rows;
    for (const CrystalFieldResults::MeasuredLevel &level : measured)
        rows.append({level.energy, level.label});
    tables.addTable(
        QStringLiteral("measured_levels"),
        {{QStringLiteral("energy"), QStringLiteral("cm^-1")}, {QStringLiteral("label"), QString()}},
        rows);
    return tables;
}

} // namespace

int crystalFieldCommand(const QStringList &arguments)
{
    cli::OptionReader options("crystal-field");
    describe(options);
    options.addResultOptions();
    options.setSuffixes("complex", cli::structureSuffixes());
    options.parse(arguments);
    options.files(0, tr("crystal-field takes no file; the field is told by --bkq or --complex"));
    const Request request = readRequest(options);
    cli::enterDataFolder();

    LanqorCrystalField ion(request.ion.electrons);
    ion.setFreeIon(request.ion);
    ion.setCutOff(request.cutOff);
    ion.setMaximumEnergy(std::max(request.maximumEnergy, usualMaximum));
    if (!ion.setFieldParameters(request.field, request.normalisation) ||
        !ion.setTemperatures(request.temperatures) || !ion.setMagneticFields(request.fields) ||
        !ion.calculate())
        throw cli::Failure{ion.getLastError()};
    const CrystalFieldResults all = ion.getResults();
    CrystalFieldResults shown = all;
    const auto isHigher = [&request](const auto &level) {
        return level.energy > request.maximumEnergy;
    };
    shown.levels.erase(std::find_if(shown.levels.begin(), shown.levels.end(), isHigher),
                       shown.levels.end());
    shown.freeIonLevels.erase(
        std::find_if(shown.freeIonLevels.begin(), shown.freeIonLevels.end(), isHigher),
        shown.freeIonLevels.end());
    const int highest = shown.levels.isEmpty() ? 0 : shown.levels.last().number;
    shown.gTensors.erase(std::find_if(shown.gTensors.begin(), shown.gTensors.end(),
                                      [highest](const auto &g) { return g.level > highest; }),
                         shown.gTensors.end());
    cli::showResults(options, LanqorCrystalField::makeText(shown, request.components),
                     tablesOf(shown, request.measured));
    if (!request.plot.isEmpty())
        plots::draw(cli::starkDiagram(all, request.measured,
                                      options.isSet("max-energy") ? request.maximumEnergy
                                                                  : cli::topOfGroundTerm(all)),
                    request.plot);
    if (!request.plotOfChi.isEmpty())
        plots::draw(cli::susceptibilityPlot(all), request.plotOfChi);
    return cli::success;
}
